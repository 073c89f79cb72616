#include "LookupFixture.h"

#include "lookup/DataLookupRows.h"
#include "support/ScriptedMessages.h"

using namespace qln;
using namespace qln::test;

namespace {

class DataLookupRows : public LookupStore {
protected:
    // Descriptions of the rows, in the order read.
    static QStringList descriptions(const QList<QStringList> &rows)
    {
        QStringList list;
        for (const QStringList &r : rows)
            list << r.value(1);
        return list;
    }
    ScriptedMessages boxes;
};

} // namespace

TEST_F(DataLookupRows, KitsNonDecrementingItemsMatrixRootsAndDeletedItemsNeverShow)
{
    add(item(1, QStringLiteral("Plain")));
    InventoryRecord kit = item(2, QStringLiteral("Kit"));
    kit.Kit = QStringLiteral("Y");
    add(kit);
    InventoryRecord counted = item(3, QStringLiteral("Not counted"));
    counted.NonDecrement = QStringLiteral("Y");
    add(counted);
    InventoryRecord root = item(4, QStringLiteral("Root"));
    root.SubDescription = QStringLiteral("MATRIX ROOT").leftJustified(20);
    add(root);
    add(item(5, QStringLiteral("Deleted"), "ACME", "D"));
    add(item(6, QStringLiteral("Two codes")));
    addUpc(6, "012345678905");
    addUpc(6, "012345678912");

    QList<QStringList> rows;
    ASSERT_TRUE(gfbDataLookup_Items(QStringLiteral("OPEN"), rows));
    EXPECT_EQ(descriptions(rows), strings({"Plain", "Two codes", "Two codes"})) << "ordered by Item ID";
    QStringList upcs = {rows[1][7], rows[2][7]};
    upcs.sort();
    EXPECT_EQ(upcs, strings({"012345678905", "012345678912"}));
    EXPECT_EQ(rows[0], strings({"", "Plain", "2", "0", "ID001", "1000000.1", "Sub 1", "", "ACME", ".50"}));
}

TEST_F(DataLookupRows, AVendorHoldingAQuoteFindsItsItemsAndTheVendorColumnShowsOnlyForAll)
{
    add(item(1, QStringLiteral("Bolt"), "O'NEIL"));
    add(item(2, QStringLiteral("Nut"), "ACME"));
    InventoryRecord dear = item(3, QStringLiteral("Dear"), "O'NEIL");
    dear.Cost = Money::fromUnits(12345678);
    add(dear);

    QList<QStringList> rows;
    ASSERT_TRUE(gfbDataLookup_Items(QStringLiteral("O'NEIL"), rows));
    EXPECT_EQ(descriptions(rows), strings({"Bolt", "Dear"}));
    EXPECT_EQ(rows[1].size(), 9) << "no vendor column for one vendor";
    EXPECT_EQ(rows[1].last(), QStringLiteral("1234.57"));
    EXPECT_TRUE(gfsDataLookup_ItemsSql(QStringLiteral("O'NEIL")).contains(QStringLiteral("VendorCode ='O''NEIL'")));

    ASSERT_TRUE(gfbDataLookup_Items(QStringLiteral("Manual"), rows));
    EXPECT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[0].size(), 9);
    EXPECT_EQ(gfaDataLookup_Columns(kLookupItems, QStringLiteral("OPEN")).size(), 10);
    EXPECT_FALSE(gfbDataLookup_Items(QStringLiteral("NOBODY"), rows));
    EXPECT_TRUE(rows.isEmpty());
    EXPECT_TRUE(boxes.shown().isEmpty()) << "nothing found is the window's to tell";
}

TEST_F(DataLookupRows, TheItemsStatementIsTheSuitesText)
{
    const QString inv = dbuaTable[kInventoryTable].sSqlFile, upc = dbuaTable[kUpcTable].sSqlFile;
    EXPECT_EQ(gfsDataLookup_ItemsSql(QStringLiteral("OPEN")),
              QStringLiteral("SELECT Description,QtyOnHand,OnOrder,ItemID,%1.SL,SubDescription,%2.upc,VendorCode,Cost,"
                             "RecordNum FROM %1 left join %2 on %1.recordnum=%2.invuid WHERE NonDecrement<>'Y' AND "
                             "Kit<>'Y' AND Status = ' ' AND SubDescription <> 'MATRIX ROOT' ORDER BY ITEMID")
                  .arg(inv, upc));
}
