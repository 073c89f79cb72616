#include "StoreFixture.h"

#include "platform/Clock.h"

using namespace qln;
using namespace qln::test;

namespace {
class StatementLog : public StoreFixture {
protected:
    void SetUp() override
    {
        StoreFixture::SetUp();
        Clock::setFixed(QDateTime(QDate(2026, 11, 22), QTime(14, 5, 9)));
    }
    void TearDown() override
    {
        Clock::setFixed(QDateTime());
        StoreFixture::TearDown();
    }
};
} // namespace

TEST_F(StatementLog, RefusedStatementsReturnZeroAndAreLoggedInTheirFile)
{
    EXPECT_EQ(gfiDB_Execute(QStringLiteral("UPDATE & dbuaTable(itable).sSqlFile & set changetype =99")), 0);
    const QStringList lines = db.readFile(QStringLiteral("PVSW.log")).split(QStringLiteral("\r\n"));
    ASSERT_GE(lines.size(), 2);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("11/22/2026 2:05:09 PM")));
    EXPECT_EQ(lines[0].indexOf(QStringLiteral("Quillon [EXE FAIL]-2147217900 Description: ")), 42) << lines[0].toStdString();
    EXPECT_TRUE(lines[0].contains(QStringLiteral(" Source: Q")));
    EXPECT_EQ(lines[1], QStringLiteral("UPDATE & dbuaTable(itable).sSqlFile & set changetype =99"));

    EXPECT_EQ(gfiDB_Execute(QStringLiteral("INSERT INTO UPC VALUES('1')")), 0);
    const QString upc = db.readFile(QStringLiteral("upcDups.txt"));
    EXPECT_TRUE(upc.startsWith(QStringLiteral("11/22/2026 2:05:09 PM Description: Invalid object name"))) << upc.toStdString();
    EXPECT_EQ(upc.count(QStringLiteral("\r\n")), 1);

    EXPECT_EQ(gfiDB_Execute(QStringLiteral("RESTORE DATADASE x")), 0);
    EXPECT_EQ(db.readFile(QStringLiteral("PVSW.log")).count(QStringLiteral("\r\n")), 2) << "a restore is never logged";
}

TEST_F(StatementLog, AQueryThatFailsTellsTheUserWhereToLook)
{
    EXPECT_FALSE(gfbDB_ExecuteSQL(QStringLiteral("SELECT * FROM Nowhere"), kWalkTable, false));
    EXPECT_EQ(boxes.texts(), strings({"An error occurred in executing SQL. View PVSW.log in datapath for details."}));
    EXPECT_TRUE(db.readFile(QStringLiteral("PVSW.log")).contains(QStringLiteral("SELECT * FROM Nowhere")));
    insert({"a"}, 1);
    EXPECT_TRUE(gfbDB_ExecuteSQL(QStringLiteral("SELECT * FROM Walk"), kWalkTable, false));
    EXPECT_FALSE(gfbDB_ExecuteSQL(QStringLiteral("SELECT * FROM Walk"), kWalkTable, true));
    EXPECT_FALSE(gfbDB_ExecuteSQL(QStringLiteral("SELECT * FROM Walk WHERE N = 5"), kWalkTable, false));
}

TEST_F(StatementLog, DuplicateInsertIsRefusedWithItsOwnWords)
{
    ASSERT_TRUE(dbConnection().execute(QStringLiteral("Create UNIQUE Index idx_1 On Walk (N)")));
    EXPECT_TRUE(insert({"a"}, 1));
    EXPECT_FALSE(insert({"b"}, 1));
    EXPECT_EQ(gsDBLastError, QStringLiteral("Duplicate Key"));
    EXPECT_EQ(gfiDB_RecordCount(kWalkTable), 1);
    // A quote in a value is doubled by the value text and stored as it was typed.
    EXPECT_TRUE(insert({"O'B"}, 2));
    seek({"O'B"});
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpEqual, 1));
    EXPECT_EQ(gWalk.n, 2);
}

TEST_F(StatementLog, DeletingItemsLeavesARecallStatement)
{
    gpDB_table_routines_set(1, {nullptr, nullptr, nullptr, [] { return QStringLiteral("'0001',2"); }});
    dbuaTable[1].sSqlFile = QStringLiteral("Invt1");
    gfiDB_Execute(QStringLiteral("DELETE FROM Invt1 WHERE SL='0001'"));
    const QStringList lines = db.readFile(QStringLiteral("DeleteRecall.txt")).split(QStringLiteral("\r\n"));
    ASSERT_GE(lines.size(), 2);
    // Date, an empty print zone, then the name, as in the statement log.
    EXPECT_EQ(lines[0], QStringLiteral("11/22/2026 2:05:09 PM").leftJustified(42) + QStringLiteral("  Quillon"));
    EXPECT_EQ(lines[1], QStringLiteral("INSERT INTO Invt1 VALUES('0001',2)"));
    gpDB_table_routines_set(1, {});
}

TEST_F(StatementLog, TableShapeStepsReportWhetherTheyWereStillToDo)
{
    EXPECT_TRUE(gfbDB_ColumnAdd(kWalkTable, QStringLiteral("Extra"), QStringLiteral("CHAR (2) DEFAULT  ' '")));
    EXPECT_FALSE(gfbDB_ColumnAdd(kWalkTable, QStringLiteral("Extra"), QStringLiteral("CHAR (2)")));
    EXPECT_TRUE(db.readFile(QStringLiteral("PVSW.log")).contains(QStringLiteral("ALTER TABLE Walk ADD Extra CHAR (2)")));
    EXPECT_TRUE(gfbDB_ColumnRename(QStringLiteral("Walk"), QStringLiteral("Extra"), QStringLiteral("Spare")));
    EXPECT_FALSE(gfbDB_ColumnRename(QStringLiteral("Walk"), QStringLiteral("Extra"), QStringLiteral("Spare")));
    ASSERT_TRUE(gfbDB_TableOpen(kWalkTable));
    EXPECT_EQ(gfsDB_FieldName(kWalkTable, 7), QStringLiteral("Spare"));
    // An index list closed by ";" has an empty last piece, which is skipped.
    dbuaTable[kWalkTable].sCreateSql = QStringLiteral("Create Table Walk2 (A CHAR (2))");
    dbuaTable[kWalkTable].sIndexSql = QStringLiteral("Create Index idx_0 On Walk2 (A);  ;");
    gDBErr().clear();
    EXPECT_FALSE(gfbDB_TableCreate(kWalkTable));
    EXPECT_FALSE(gDBErr().isSet());
    EXPECT_TRUE(gfbDB_TableExists(QStringLiteral("WALK2")));
    EXPECT_EQ(gfsDB_TableList(QStringLiteral("walk")).split(QLatin1Char('|'), Qt::SkipEmptyParts).size(), 2);
}
