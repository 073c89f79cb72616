#include "StoreFixture.h"

#include "store/Inventory.h"

#include <QFile>
#include <QRegularExpression>

using namespace qln;
using namespace qln::test;

namespace {

QString pad(const QString &text, int width) { return text.leftJustified(width, QLatin1Char(' '), true); }

// An item whose every field holds a value of its own, so that a column read into the wrong
// field shows.
InventoryRecord item(int n)
{
    const QString k = QString::number(n);
    auto text = [&](const char *start, int width) { return pad(QString::fromUtf8(start) + k, width); };
    auto plain = [](const char *c) { return QString::fromUtf8(c); };
    InventoryRecord r;
    r.SL = text("0000100", 8); r.ItemID = text("ITEM-", 25); r.Description = text("O'Brien's Bread ", 30);
    r.SubDescription = text("Rye ", 20); r.VendorCode = text("BAKERY", 15); r.DeptCode = plain("001.002.003");
    r.ReorderFlag = plain("R"); r.Serialized = plain("S"); r.HasSold = plain("H"); r.TaxCode = plain("T");
    r.Price = Money::fromUnits(123456); r.Cost = Money::fromUnits(45000); r.QtyOnHand = Money::fromUnits(-22500);
    r.MinQ = -3; r.MaxQ = 100000; r.QTYINPACK = 12; r.NotUsed = plain("u"); r.OnOrder = 5; r.AvgCost = Money::fromUnits(41234);
    r.Notes = plain("n"); r.Kit = plain("k"); r.Poll = plain("Y"); r.Scalable = plain("s"); r.FoodStamp = plain("f");
    r.LinkBreakPack = text("LBP", 8); r.LinkItem = text("LI", 8); r.LinkStock = text("LS", 8);
    r.FlgMatrix = plain("m"); r.FlgMatrixItem = plain("i"); r.AllowDiscounts = plain("Y"); r.FLAGS = text("FLAGS ", 20);
    r.RegionID = 7; r.PriceIncTax = Money::fromUnits(135700); r.LastSold = plain("20261122"); r.Status = plain("A");
    r.VolumetrcUnit = pad(plain("ML"), 6); r.UOM = pad(plain("EACH"), 5); r.StoreRef = text("Aisle ", 30);
    r.LocFront = text("F", 8); r.LocBack = text("B", 8); r.RecordNum = n;
    r.NonDecrement = plain("d"); r.FlgPromoPrice = plain("p"); r.FlgQtyPrice = plain("q"); r.FlgWebEnable = plain("w");
    r.FlgPriceLevel = plain("l"); r.FlgBPL = plain("b"); r.NeverOrder = plain("o"); r.SaleCommission = pad(plain("5.0"), 5);
    r.Class = plain("CL"); r.PriceFactor = pad(plain("1.25"), 6); r.Price2 = Money::fromUnits(99900); r.UnitsPerUOM = 6;
    r.BPL1 = 70000; r.BPL2 = -1; r.PenLiqorUnit = 2; r.BPL3 = 123456;
    return r;
}

// The value text of a record, for a readable difference.
std::string valuesOf(const InventoryRecord &record)
{
    const InventoryRecord kept = gInventory;
    gInventory = record;
    const QString text = gfsInventory_values();
    gInventory = kept;
    return text.toStdString();
}

class InventoryStore : public ConnectedStore {
protected:
    void SetUp() override
    {
        ConnectedStore::SetUp();
        gInventory = InventoryRecord();
    }
    void TearDown() override
    {
        dbConnection().setStatementObserver(nullptr);
        ConnectedStore::TearDown();
    }

    static void open() { gpInventory_Open(kInventoryTable, gsDataPath, QStringLiteral("1")); }

    static bool insert(const InventoryRecord &record)
    {
        gInventory = record;
        return gfbDB_RecordOp(kInventoryTable, kOpInsert);
    }

    // Opens the table and adds the given items.
    static void openWith(std::initializer_list<int> items)
    {
        open();
        ASSERT_TRUE(gfbDB_TableOpen(kInventoryTable));
        for (int n : items)
            ASSERT_TRUE(insert(item(n))) << gsDBLastError.toStdString();
    }

    // Every statement sent from here on, as the program wrote it.
    void recordStatements()
    {
        sent.clear();
        dbConnection().setStatementObserver([this](const QString &sql) { sent << sql; });
    }

    static QStringList columnNames(int iTable = kInventoryTable)
    {
        QStringList names;
        EXPECT_TRUE(gfbDB_TableOpen(iTable));
        for (int i = 0; i < dbaRecordset[iTable]->fieldCount(); ++i)
            names << gfsDB_FieldName(iTable, i);
        return names;
    }

    QStringList sent;
};

using InventoryTable = InventoryStore;
using InventoryLookup = InventoryStore;
using InventoryUpgrade = InventoryStore;

} // namespace

TEST_F(InventoryTable, AMissingTableIsRegisteredAndCreatedWithTheSuitesStatements)
{
    open();
    const DbTable &t = dbuaTable[kInventoryTable];
    EXPECT_EQ(t.sName, QStringLiteral("INVENTRY"));
    EXPECT_EQ(t.sFilePath, gsDataPath + QStringLiteral("\\invt1.ZOR"));
    EXPECT_EQ(t.sSqlFile, QStringLiteral("invt1"));
    EXPECT_EQ(t.sTitle, QStringLiteral("Inventory"));
    EXPECT_EQ(t.sCreateSql,
              QStringLiteral(
                  "Create Table invt1 (SL CHAR (8) NOT NULL DEFAULT  ' ', ItemID CHAR (25) NOT NULL DEFAULT  ' ', "
                  "Description CHAR (30) DEFAULT  ' ', SubDescription CHAR (20) DEFAULT  ' ', ReorderFlag CHAR (1) DEFAULT  ' ', "
                  "Serialized CHAR (1) DEFAULT  ' ', HasSold CHAR (1) DEFAULT  ' ', VendorCode CHAR (15) DEFAULT  ' ', "
                  "Price DECIMAL (18,4), Cost DECIMAL (18,4), QtyOnHand DECIMAL (18,4), MinQ SMALLINT, MaxQ INT, "
                  "QTYINPACK SMALLINT, TaxCode CHAR (1) DEFAULT  ' ', DeptCode CHAR (11) DEFAULT  ' ', NotUsed CHAR (1) DEFAULT  ' ', "
                  "OnOrder SMALLINT, AvgCost DECIMAL (18,4), Notes CHAR (1) DEFAULT  ' ', Kit CHAR (1) DEFAULT  ' ', "
                  "Poll CHAR (1) DEFAULT  ' ', Scalable CHAR(1) DEFAULT  ' ', FoodStamp CHAR(1) DEFAULT  ' ', "
                  "LinkBreakPack CHAR(8) DEFAULT  ' ', LinkItem CHAR(8) DEFAULT  ' ', LinkStock CHAR(8) DEFAULT  ' ', "
                  "FlgMatrix CHAR(1) DEFAULT  ' ', FlgMatrixItem CHAR(1) DEFAULT  ' ', AllowDiscounts CHAR(1) DEFAULT  ' ', "
                  "FLAGS CHAR(20) DEFAULT  ' ', RegionID SMALLINT, PriceIncTax DECIMAL(18,2), LastSold CHAR(8) DEFAULT  ' ', "
                  "Status CHAR(1) DEFAULT  ' ', VolumetrcUnit CHAR(6) DEFAULT  ' ', UOM CHAR(5) DEFAULT  ' ', "
                  "StoreRef CHAR(30) DEFAULT  ' ', LocFront CHAR(8) DEFAULT  ' ', LocBack CHAR(8) DEFAULT  ' ', RecordNum INTEGER, "
                  "NonDecrement CHAR(1) DEFAULT  ' ', FlgPromoPrice CHAR(1) DEFAULT  ' ', FlgQtyPrice CHAR(1) DEFAULT  ' ', "
                  "FlgWebEnable CHAR(1) DEFAULT  ' ', FlgPriceLevel CHAR(1) DEFAULT  ' ', FlgBPL CHAR(1) DEFAULT  ' ', "
                  "NeverOrder CHAR(1) DEFAULT  ' ', SaleCommission CHAR(5) DEFAULT  ' ', Class CHAR(2) DEFAULT  ' ', "
                  "PriceFactor CHAR(6) DEFAULT  ' ', Price2 DECIMAL (18,4), UnitsPerUOM SMALLINT, BPL1 INTEGER, BPL2 INTEGER, "
                  "PenLiqorUnit SMALLINT DEFAULT 0, BPL3 INTEGER DEFAULT 0);"));
    EXPECT_EQ(t.sIndexSql,
              QStringLiteral("Create UNIQUE  CLUSTERED Index idx_0 On invt1 (RecordNum);"
                             "Create UNIQUE Index idx_1 On invt1 (SL);"
                             "Create UNIQUE Index idx_2 On invt1 (ItemID);"
                             "Create UNIQUE Index idx_3 On invt1 (Description, SL);"
                             "Create UNIQUE Index idx_4 On invt1 (SubDescription, SL);"
                             "Create UNIQUE Index idx_5 On invt1 (VendorCode, SL);"
                             "Create UNIQUE Index idx_6 On invt1 (VendorCode, ItemID);"
                             "Create Index idx_7 On invt1 (VendorCode, Description);"
                             "Create UNIQUE Index idx_8 On invt1 (DeptCode, ItemID);"
                             "Create Index idx_9 On invt1 (PriceFactor, Description);"
                             "Create UNIQUE Index idx_10 On invt1 (LocFront, RecordNum);"
                             "Create UNIQUE Index idx_11 On invt1 (LocBack, RecordNum);"
                             "Create UNIQUE Index idx_12 On invt1 (Poll, RecordNum);"));
    EXPECT_TRUE(gfbDB_TableExists(QStringLiteral("invt1")));
    EXPECT_EQ(columnNames().size(), 57);
    for (const QString &index : t.sIndexSql.split(QLatin1Char(';'), Qt::SkipEmptyParts))
        EXPECT_FALSE(dbConnection().execute(index)) << "not created: " << index.toStdString();
    EXPECT_FALSE(QFile::exists(db.file(QStringLiteral("PVSW.log"))));

    // A name of the caller's own is the table's name, server name and title; the file stays the store's.
    gpInventory_Open(kInventoryTable, gsDataPath, QStringLiteral("1"), QStringLiteral("InvtCopy"));
    EXPECT_EQ(t.sName, QStringLiteral("InvtCopy"));
    EXPECT_EQ(t.sSqlFile, QStringLiteral("InvtCopy"));
    EXPECT_EQ(t.sTitle, QStringLiteral("InvtCopy"));
    EXPECT_EQ(t.sFilePath, gsDataPath + QStringLiteral("\\invt1.ZOR"));
    EXPECT_TRUE(gfbDB_TableExists(QStringLiteral("InvtCopy")));
}

TEST_F(InventoryTable, AnInsertedItemReadsBackAsItWasWrittenQuoteIncluded)
{
    openWith({});
    const InventoryRecord written = item(1);
    ASSERT_TRUE(insert(written)) << gsDBLastError.toStdString();
    EXPECT_EQ(gInventory.Description, QStringLiteral("O''Brien''s Bread 1")) << "the value text keeps its escaping";

    gInventory = InventoryRecord();
    gInventory.SL = written.SL;
    ASSERT_TRUE(gfbDB_RecordOp(kInventoryTable, kOpEqual, 1));
    EXPECT_TRUE(gInventory == written) << valuesOf(gInventory) << "\n" << valuesOf(written);

    // An Update sends the buffer back column by column.
    InventoryRecord changed = written;
    changed.Price = Money::fromUnits(15000);
    changed.BPL3 = 7;
    changed.StoreRef = pad(QStringLiteral("Back room"), 30);
    gInventory = changed;
    ASSERT_TRUE(gfbDB_RecordOp(kInventoryTable, kOpUpdate));
    gInventory = InventoryRecord();
    ASSERT_TRUE(gfbInventory_ByRecordNum(1));
    EXPECT_TRUE(gInventory == changed) << valuesOf(gInventory) << "\n" << valuesOf(changed);
}

TEST_F(InventoryTable, EachKeyFindsTheItemOnItsOwnColumns)
{
    openWith({1, 2});
    const std::vector<QStringList> columns = {
        strings({"RecordNum"}),           strings({"SL"}),
        strings({"ltrim(ItemID)"}),       strings({"Description", "SL"}),
        strings({"SubDescription", "SL"}), strings({"VendorCode", "Description"}),
        strings({"VendorCode", "SL"}),     strings({"VendorCode", "ltrim(ItemID)"}),
        strings({"DeptCode", "ltrim(ItemID)"}), strings({"PriceFactor", "Description"}),
        strings({"LocBack", "RecordNum"}), strings({"LocFront", "RecordNum"}),
        strings({"Poll", "RecordNum"}),
    };
    static const QRegularExpression compared(QStringLiteral("(\\S+)='"));
    for (int key = 0; key < int(columns.size()); ++key) {
        gInventory = item(2);
        EXPECT_TRUE(gfbDB_RecordOp(kInventoryTable, kOpEqual, key)) << "key " << key << ": " << gsDB_LastSql().toStdString();
        EXPECT_EQ(gInventory.RecordNum, 2) << "key " << key;
        QStringList names;
        for (const auto &m : compared.globalMatch(gsDB_LastSql()))
            names << m.captured(1);
        EXPECT_EQ(names, columns[key]) << "key " << key;
    }
    gInventory = item(2);
    dbuaTable[kInventoryTable].iKeySegments = 9;
    gpInventory_key(kInventoryTable, 13);
    EXPECT_EQ(dbuaTable[kInventoryTable].iKeySegments, 9) << "no key 13";
}

TEST_F(InventoryTable, AnItemIDWithLeadingBlanksIsFoundByTheTrimmedValue)
{
    openWith({});
    InventoryRecord stored = item(1);
    stored.ItemID = pad(QStringLiteral("   ABC-7"), 25);
    ASSERT_TRUE(insert(stored));

    gInventory = InventoryRecord();
    gInventory.ItemID = pad(QStringLiteral(" ABC-7"), 25);
    ASSERT_TRUE(gfbDB_RecordOp(kInventoryTable, kOpEqual, 2)) << gsDB_LastSql().toStdString();
    EXPECT_EQ(gInventory.SL, stored.SL);
    EXPECT_EQ(gInventory.ItemID, stored.ItemID) << "the row's value, blanks and all";

    // The buffer keeps the trimmed identifier, at its width, also when nothing is found.
    for (int key : {2, 7, 8}) {
        gInventory = item(3);
        gInventory.ItemID = pad(QStringLiteral("  NONE"), 25);
        EXPECT_FALSE(gfbDB_RecordOp(kInventoryTable, kOpEqual, key));
        EXPECT_EQ(gInventory.ItemID, pad(QStringLiteral("NONE"), 25)) << "key " << key;
    }
    gInventory.ItemID = pad(QStringLiteral("  NONE"), 25);
    gpInventory_key(kInventoryTable, 1);
    EXPECT_EQ(gInventory.ItemID, pad(QStringLiteral("  NONE"), 25)) << "other keys leave it alone";
}

TEST_F(InventoryLookup, ReservedSLNumbers)
{
    const std::vector<std::pair<const char *, int>> reserved = {
        {"~NONSTK", 0}, {"~ROA", 1},    {"~ROAL", 2},    {"~DISCNT", 3}, {"~PAYROL", 4}, {"~POUT", 5},
        {"~VCOUPN", 6}, {"~SCOUPN", 7}, {"~VDSCNT", 8}, {"~ROALTX", 9}, {"~DPOUT", 10}, {"0", -1},
    };
    for (const auto &[sl, number] : reserved)
        EXPECT_EQ(gfiInventory_ReservedSL(QString::fromUtf8(sl)), number) << sl;
    for (const char *other : {"", "00001001", "~ROA ", "~roa", "~NONSTOCK"})
        EXPECT_EQ(gfiInventory_ReservedSL(QString::fromUtf8(other)), 999999) << other;
}

TEST_F(InventoryLookup, ByRecordNumAndBySLReadTheItemIntoTheBuffer)
{
    openWith({1, 2});
    recordStatements();
    EXPECT_TRUE(gfbInventory_ByRecordNum(2));
    EXPECT_TRUE(gInventory == item(2)) << valuesOf(gInventory);
    EXPECT_TRUE(gfbInventory_ByRecordNumText(QStringLiteral("1")));
    EXPECT_TRUE(gInventory == item(1)) << valuesOf(gInventory);
    EXPECT_EQ(gfiInventory_BySL(QStringLiteral("00001002"), true), -1);
    EXPECT_EQ(sent, strings({"SELECT * from invt1 WHERE recordnum = 2", "SELECT * from invt1 WHERE recordnum = '1'",
                             "SELECT * from invt1 WHERE SL = '00001002'"}));

    EXPECT_FALSE(gfbInventory_ByRecordNum(99));
    EXPECT_FALSE(gfbInventory_ByRecordNumText(QStringLiteral("99")));
    EXPECT_TRUE(gInventory == item(2)) << "nothing found leaves the buffer";

    EXPECT_EQ(gfiInventory_BySL(QStringLiteral("~ROA"), true), 1);
    EXPECT_EQ(gfiInventory_BySL(QStringLiteral("~ROA"), false), 0);
    EXPECT_EQ(gfiInventory_BySL(QStringLiteral("99999999"), true), 999999);
    EXPECT_TRUE(gInventory == item(2));
}

TEST_F(InventoryLookup, ClearBlanksTheBufferAndResetsOnlyItsColumnsOfTheRow)
{
    openWith({1});
    ASSERT_TRUE(gfbInventory_ByRecordNum(1));
    gpInventory_Clear();
    EXPECT_TRUE(gInventory == InventoryRecord());
    EXPECT_EQ(gInventory.Description, QString(30, QLatin1Char(' ')));

    // The row as the next Update would send it.
    gpInventory_read(kInventoryTable);
    InventoryRecord expected = item(1);
    for (QString *text : {&expected.SL, &expected.ItemID, &expected.Description, &expected.SubDescription, &expected.ReorderFlag,
                          &expected.Serialized, &expected.HasSold, &expected.VendorCode, &expected.LinkBreakPack,
                          &expected.LinkItem, &expected.LinkStock, &expected.FlgMatrix, &expected.FlgMatrixItem,
                          &expected.AllowDiscounts, &expected.FLAGS})
        text->fill(QLatin1Char(' '));
    expected.Price = expected.Cost = expected.QtyOnHand = expected.AvgCost = expected.PriceIncTax = expected.Price2 = Money();
    expected.MinQ = expected.QTYINPACK = expected.OnOrder = expected.RegionID = expected.UnitsPerUOM = expected.PenLiqorUnit = 0;
    expected.MaxQ = expected.RecordNum = expected.BPL1 = expected.BPL2 = expected.BPL3 = 0;
    EXPECT_TRUE(gInventory == expected) << valuesOf(gInventory) << "\n" << valuesOf(expected);
}

namespace {

// The table as older programs left it: a one-letter PriceFactor where NotUsed is, the price
// factor in Spare1, Flg2 before NeverOrder, a 15-letter ItemID, no PenLiqorUnit and BPL3.
void createOldTable()
{
    ASSERT_TRUE(dbConnection().execute(QStringLiteral(
        "Create Table invt1 (SL CHAR (8) NOT NULL, ItemID CHAR (15) NOT NULL, Description CHAR (30), SubDescription CHAR (20), "
        "ReorderFlag CHAR (1), Serialized CHAR (1), HasSold CHAR (1), VendorCode CHAR (15), Price DECIMAL (18,4), "
        "Cost DECIMAL (18,4), QtyOnHand INT, MinQ SMALLINT, MaxQ INT, QTYINPACK SMALLINT, TaxCode CHAR (1), "
        "DeptCode CHAR (11), PriceFactor CHAR (1), OnOrder SMALLINT, AvgCost DECIMAL (18,4), Notes CHAR (1), Kit CHAR (1), "
        "Poll CHAR (1), Scalable CHAR(1), FoodStamp CHAR(1), LinkBreakPack CHAR(8), LinkItem CHAR(8), LinkStock CHAR(8), "
        "FlgMatrix CHAR(1), FlgMatrixItem CHAR(1), AllowDiscounts CHAR(1), FLAGS CHAR(20), RegionID SMALLINT, "
        "PriceIncTax DECIMAL(18,2), LastSold CHAR(8), Status CHAR(1), VolumetrcUnit CHAR(6), UOM CHAR(5), StoreRef CHAR(30), "
        "LocFront CHAR(8), LocBack CHAR(8), RecordNum INTEGER, NonDecrement CHAR(1), FlgPromoPrice CHAR(1), "
        "FlgQtyPrice CHAR(1), FlgWebEnable CHAR(1), FlgPriceLevel CHAR(1), FlgBPL CHAR(1), Flg2 CHAR(1), "
        "SaleCommission CHAR(5), Class CHAR(2), Spare1 CHAR(6), Price2 DECIMAL (18,4), UnitsPerUOM SMALLINT, BPL1 INTEGER, "
        "BPL2 INTEGER)")));
    // Its indexes stood on the same columns as today's.
    dbuaTable[kInventoryTable].sSqlFile = QStringLiteral("invt1");
    gpInventory_table_create(kInventoryTable);
    for (const QString &index : dbuaTable[kInventoryTable].sIndexSql.split(QLatin1Char(';'), Qt::SkipEmptyParts))
        ASSERT_TRUE(dbConnection().execute(index)) << index.toStdString();
}

void addOldRows()
{
    ASSERT_TRUE(dbConnection().execute(QStringLiteral(
        "INSERT INTO invt1 (SL, ItemID, Description, QtyOnHand, PriceFactor, Flg2, Spare1, RecordNum) "
        "VALUES ('00001001', 'ABCDEFGHIJKLMNO', 'Rye', 7, 'P', 'Y', ' ', 1)")));
    ASSERT_TRUE(dbConnection().execute(QStringLiteral(
        "INSERT INTO invt1 (SL, ItemID, Description, QtyOnHand, PriceFactor, Flg2, Spare1, RecordNum) "
        "VALUES ('00001002', 'X2', 'Wheat', -4, ' ', 'N', 'KEEP', 2)")));
}

} // namespace

TEST_F(InventoryUpgrade, AnOldTableWithRowsIsBroughtToShapeAndItsDataMovedOnce)
{
    createOldTable();
    addOldRows();
    recordStatements();
    open();
    gpInventory_table_create(kInventoryTable);
    const QStringList indexes = dbuaTable[kInventoryTable].sIndexSql.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    QStringList expected = strings({
        "SELECT COUNT(*) FROM invt1",
        "ALTER TABLE invt1 ALTER COLUMN QtyOnHand Decimal(18,4)",
        "ALTER TABLE invt1 ADD PenLiqorUnit SMALLINT ",
        "ALTER TABLE invt1 ADD BPL3 INTEGER ",
        "sp_RENAME 'invt1.Flg2', 'NeverOrder ', 'COLUMN'",
        "UPDATE invt1 SET NeverOrder = ' '",
        "SELECT TOP 1 * FROM invt1",
        "UPDATE invt1 SET Spare1 = PriceFactor where PriceFactor > ' '",
        "sp_RENAME 'invt1.PriceFactor', 'NotUsed ', 'COLUMN'",
        "sp_RENAME 'invt1.Spare1', 'PriceFactor ', 'COLUMN'",
    });
    for (int i = 0; i <= 12; ++i)
        expected << QStringLiteral("Drop index invt1.idx_") + QString::number(i);
    expected << QStringLiteral("ALTER TABLE invt1 ALTER COLUMN itemID CHAR(25)") << indexes;
    EXPECT_EQ(sent, expected);
    EXPECT_FALSE(QFile::exists(db.file(QStringLiteral("PVSW.log")))) << "every step was still to do";

    // The shape of a table made today, with the indexes back.
    const QStringList upgraded = columnNames();
    EXPECT_EQ(gfvDB_FieldGet(kInventoryTable, QStringLiteral("ItemID")).toString().size(), 25);
    for (const QString &index : indexes)
        EXPECT_FALSE(dbConnection().execute(index)) << "missing: " << index.toStdString();
    gpInventory_Open(2, gsDataPath, QStringLiteral("2"));
    EXPECT_EQ(upgraded, columnNames(2));
    gpDB_table_routines_set(2, {});

    // The data, moved.
    ASSERT_TRUE(gfbInventory_ByRecordNum(1));
    const InventoryRecord first = gInventory;
    EXPECT_EQ(first.ItemID, pad(QStringLiteral("ABCDEFGHIJKLMNO"), 25));
    EXPECT_EQ(first.PriceFactor, pad(QStringLiteral("P"), 6));
    EXPECT_EQ(first.NotUsed, QStringLiteral("P"));
    EXPECT_EQ(first.NeverOrder, QStringLiteral(" "));
    EXPECT_EQ(first.QtyOnHand, Money::fromWhole(7));
    EXPECT_EQ(first.PenLiqorUnit, 0);
    ASSERT_TRUE(gfbInventory_ByRecordNum(2));
    const InventoryRecord second = gInventory;
    EXPECT_EQ(second.PriceFactor, pad(QStringLiteral("KEEP"), 6)) << "a blank old factor moves nothing";
    EXPECT_EQ(second.NeverOrder, QStringLiteral(" "));
    EXPECT_EQ(second.QtyOnHand, Money::fromWhole(-4));

    // Once done, a further start only logs the columns that are there already.
    recordStatements();
    open();
    EXPECT_EQ(sent, strings({"SELECT COUNT(*) FROM invt1", "ALTER TABLE invt1 ALTER COLUMN QtyOnHand Decimal(18,4)",
                             "ALTER TABLE invt1 ADD PenLiqorUnit SMALLINT ", "ALTER TABLE invt1 ADD BPL3 INTEGER ",
                             "sp_RENAME 'invt1.Flg2', 'NeverOrder ', 'COLUMN'", "SELECT TOP 1 * FROM invt1"}));
    const QStringList log = db.readFile(QStringLiteral("PVSW.log")).split(QStringLiteral("\r\n"));
    EXPECT_EQ(log.size(), 5);
    EXPECT_EQ(log.value(1), QStringLiteral("ALTER TABLE invt1 ADD PenLiqorUnit SMALLINT "));
    EXPECT_EQ(log.value(3), QStringLiteral("ALTER TABLE invt1 ADD BPL3 INTEGER "));
    ASSERT_TRUE(gfbInventory_ByRecordNum(1));
    EXPECT_TRUE(gInventory == first);
    ASSERT_TRUE(gfbInventory_ByRecordNum(2));
    EXPECT_TRUE(gInventory == second);
}

TEST_F(InventoryUpgrade, AnEmptyOldTableIsLeftAsItIs)
{
    createOldTable();
    const QStringList before = columnNames();
    recordStatements();
    open();
    EXPECT_EQ(sent, strings({"SELECT COUNT(*) FROM invt1"}));
    EXPECT_EQ(columnNames(), before);
    EXPECT_EQ(before.value(47), QStringLiteral("Flg2"));
}
