#include "StoreFixture.h"

#include "platform/Recordset.h"

#include <functional>

using namespace qln;
using namespace qln::test;

namespace {

// The rows of Walk as another station sees them: "S1=N", in key order.
QStringList tableRows(TestDatabase &db)
{
    auto station = db.connect();
    Recordset rs;
    if (!rs.open(*station, QStringLiteral("SELECT S1, N FROM Walk ORDER BY S1")))
        return {QStringLiteral("unreadable")};
    QStringList rows;
    for (rs.moveFirst(); !rs.eof(); rs.moveNext())
        rows << rs.value(0).toString().trimmed() + QLatin1Char('=') + rs.value(1).toString();
    return rows;
}

class FailedRead : public StoreFixture {
protected:
    void SetUp() override
    {
        StoreFixture::SetUp();
        ASSERT_TRUE(insert({"a"}, 1));
        ASSERT_TRUE(insert({"b"}, 2));
        ASSERT_TRUE(insert({"c"}, 3));
    }
    // Reads "b" into the buffer, as a list does before its Change or Delete.
    void readB()
    {
        seek({"b"});
        ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpEqual, 1));
        ASSERT_EQ(gWalk.n, 2);
    }
    // Neither Update nor Delete may touch any row; both tell why.
    void expectWritesRefused(const std::string &after)
    {
        gWalk.n = 99;
        EXPECT_FALSE(gfbDB_RecordOp(kWalkTable, kOpUpdate, 1)) << after;
        EXPECT_TRUE(gDBErr().description.startsWith(QStringLiteral("Row cannot be located for updating"))) << after;
        EXPECT_FALSE(gfbDB_RecordOp(kWalkTable, kOpDelete, 1)) << after;
        EXPECT_TRUE(gDBErr().description.startsWith(QStringLiteral("Row cannot be located for deletion"))) << after;
        EXPECT_EQ(tableRows(db), strings({"a=1", "b=2", "c=3"})) << after;
    }
};

} // namespace

TEST_F(FailedRead, EveryReadThatFindsNothingLeavesASetThatUpdateAndDeleteRefuse)
{
    const std::vector<std::pair<std::string, std::function<bool()>>> reads = {
        {"= on a missing key", [this] { seek({"zz"}); return gfbDB_RecordOp(kWalkTable, kOpEqual, 1); }},
        {"> past the last key", [this] { seek({"c"}); return gfbDB_RecordOp(kWalkTable, kOpGreater, 1); }},
        {"< before the first key", [this] { seek({"a"}); return gfbDB_RecordOp(kWalkTable, kOpLess, 1); }},
        {"Get Next from the last", [this] { seek({"c"}); return gfbDB_RecordOp(kWalkTable, kOpGetNext, 1); }},
        {"Get Previous from the first", [this] { seek({"a"}); return gfbDB_RecordOp(kWalkTable, kOpGetPrevious, 1); }},
        {"BySQL with no row",
         [] { return gfbDB_RecordOp(kWalkTable, kOpBySQL, 1, false, false, QStringLiteral("SELECT * FROM Walk WHERE N > 50")); }},
        {"ExecuteSQL with no row",
         [] { return gfbDB_ExecuteSQL(QStringLiteral("SELECT * FROM Walk WHERE N > 50"), kWalkTable, false); }},
    };
    for (const auto &[name, read] : reads) {
        readB();
        ASSERT_FALSE(read()) << name;
        ASSERT_TRUE(dbaRecordset[kWalkTable]) << name << ": the first-row set stays for its column names";
        EXPECT_EQ(dbaRecordset[kWalkTable]->value(6).toInt(), 1) << name;
        expectWritesRefused(name);
    }
}

TEST_F(FailedRead, ARowGoneFromAnotherStationIsNeitherUpdatedNorDeletedElsewhere)
{
    readB();
    ASSERT_TRUE(db.connect()->execute(QStringLiteral("DELETE FROM Walk WHERE S1 = 'b'")));
    seek({"b"});
    ASSERT_FALSE(gfbDB_RecordOp(kWalkTable, kOpEqual, 1));
    gWalk.n = 99;
    EXPECT_FALSE(gfbDB_RecordOp(kWalkTable, kOpUpdate, 1));
    EXPECT_FALSE(gfbDB_RecordOp(kWalkTable, kOpDelete, 1));
    EXPECT_EQ(tableRows(db), strings({"a=1", "c=3"})) << "the first row keeps its values";
}

TEST_F(FailedRead, ASuccessfulReadAfterwardsUpdatesAndDeletesExactlyItsRow)
{
    seek({"zz"});
    ASSERT_FALSE(gfbDB_RecordOp(kWalkTable, kOpEqual, 1));
    readB();
    gWalk.n = 20;
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpUpdate, 1));
    EXPECT_EQ(tableRows(db), strings({"a=1", "b=20", "c=3"}));

    seek({"zz"});
    ASSERT_FALSE(gfbDB_RecordOp(kWalkTable, kOpEqual, 1));
    seek({"c"});
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpEqual, 1));
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpDelete, 1));
    EXPECT_EQ(tableRows(db), strings({"a=1", "b=20"}));

    // A walk over a set of many rows is a read too: its rows may be changed one by one.
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpBySQL, 1, false, false, QStringLiteral("SELECT * FROM Walk ORDER BY S1")));
    dbaRecordset[kWalkTable]->moveNext();
    gpDB_table_row_to_record(kWalkTable);
    gWalk.n = 21;
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpUpdate, 1));
    EXPECT_EQ(tableRows(db), strings({"a=1", "b=21"}));
}

TEST_F(FailedRead, AFailedReadOnOneTableLeavesAnotherTablesRowWritable)
{
    gpDB_Table_register(kWalkTable + 1, QStringLiteral("Walk"), QStringLiteral("WALK"), QStringLiteral("Walk"),
                        QStringLiteral("WALK"));
    gpDB_table_routines_set(kWalkTable + 1, {walkKey, walkRead, walkWrite, walkValues});
    ASSERT_TRUE(gfbDB_TableOpen(kWalkTable + 1));
    readB();
    const WalkRecord b = gWalk;
    seek({"zz"});
    ASSERT_FALSE(gfbDB_RecordOp(kWalkTable + 1, kOpEqual, 1));
    gWalk = b;
    gWalk.n = 22;
    EXPECT_TRUE(gfbDB_RecordOp(kWalkTable, kOpUpdate, 1));
    EXPECT_EQ(tableRows(db), strings({"a=1", "b=22", "c=3"}));
}
