#include "LookupFixture.h"

#include "lookup/DataLookupRows.h"
#include "support/ScriptedMessages.h"

#include <algorithm>

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

namespace {

// The purchasing program's vendor tables, with the columns the lookup reads.
void vendorTablesCreate()
{
    ASSERT_TRUE(dbConnection().execute(QStringLiteral("CREATE TABLE VENDORS (VendorCode CHAR (15), APCode CHAR (10), "
                                           "Business CHAR (30), LastName CHAR (20))")));
    ASSERT_TRUE(dbConnection().execute(QStringLiteral("CREATE TABLE ITEMVENDORS (Recordnum INTEGER, VendorCode CHAR (15), "
                                           "APCode CHAR (10), VendorItemID CHAR (20), Cost DECIMAL (18,4))")));
    for (const char *row : {"'ACME','AP1','Acme Tools','Smith'", "'ONEIL','AP''2','','O''Neil'", "'ZED','AP3','Best Bolts','Zed'"})
        ASSERT_EQ(gfiDB_Execute(QStringLiteral("INSERT INTO VENDORS VALUES (%1)").arg(QLatin1String(row))), 1);
    for (const char *row : {"1,'ACME','AP1','A-1',2.5", "1,'ONEIL','AP''2','O-1',NULL", "2,'ONEIL','AP''2','O-2',1.25",
                            "3,'ZED','AP3','Z-3',4"})
        ASSERT_EQ(gfiDB_Execute(QStringLiteral("INSERT INTO ITEMVENDORS VALUES (%1)").arg(QLatin1String(row))), 1);
}

} // namespace

TEST_F(DataLookupRows, VendorModesReadThePurchasingTablesAndAQuotedAPCodeFindsItsItems)
{
    add(item(1, QStringLiteral("Bolt")));
    add(item(2, QStringLiteral("Nut")));
    vendorTablesCreate();

    QList<QStringList> rows;
    ASSERT_TRUE(gfbDataLookup_Vendors(kLookupVendors, QString(), rows));
    EXPECT_EQ(rows, (QList<QStringList>{strings({"ONEIL", "AP'2", "O'Neil", ""}), strings({"ACME", "AP1", "Acme Tools", ""}),
                                        strings({"ZED", "AP3", "Best Bolts", ""})}))
        << "by business, a blank business first, the last name standing in for it";

    ASSERT_TRUE(gfbDataLookup_Vendors(kLookupItemVendors, QStringLiteral("1"), rows));
    EXPECT_EQ(rows, (QList<QStringList>{strings({"ACME", "AP1", "A-1", "2.50"}), strings({"ONEIL", "AP'2", "O-1", "0.00"})}))
        << "no cost stored shows 0.00";

    ASSERT_TRUE(gfbDataLookup_Vendors(kLookupVendorItems, QStringLiteral("AP'2"), rows));
    ASSERT_EQ(rows.size(), 2);
    std::sort(rows.begin(), rows.end(), [](const QStringList &a, const QStringList &b) { return a[2] < b[2]; });
    EXPECT_EQ(rows[0], strings({"", "Bolt", "1000000.1", "O-1", "Sub 1", "001.000.000", "2", "0.00"}));
    EXPECT_EQ(rows[1][1], QStringLiteral("Nut"));
    EXPECT_TRUE(gfsDataLookup_VendorsSql(kLookupVendorItems, QStringLiteral("AP'2")).endsWith(QStringLiteral(" where APCODE ='AP''2'")));
    EXPECT_FALSE(gfbDataLookup_Vendors(kLookupItemVendors, QStringLiteral("99"), rows));
    EXPECT_TRUE(boxes.shown().isEmpty());
}
