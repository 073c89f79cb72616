#include "StoreFixture.h"

using namespace qln;
using namespace qln::test;

namespace {

class Walk : public StoreFixture {
protected:
    QStringList walk(int key, int op, int steps = 100)
    {
        QStringList seen;
        for (int i = 0; i < steps && gfbDB_RecordOp(kWalkTable, op, key); ++i)
            seen << QString::number(gWalk.n);
        return seen;
    }
    void first(int key) { ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpGetFirst, key)); }
    void last(int key) { ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpGetLast, key)); }
};

} // namespace

TEST_F(Walk, TwoAndThreeSegmentKeysVisitEveryRowInKeyOrder)
{
    insert({"b", "a", "z"}, 4);
    insert({"a", "b", "a"}, 2);
    insert({"a", "a", "b"}, 1);
    insert({"c", "a", "a"}, 6);
    insert({"a", "c", "a"}, 3);
    insert({"b", "b", "a"}, 5);
    first(3);
    EXPECT_EQ(gWalk.n, 1);
    EXPECT_EQ(walk(3, kOpGetNext), strings({"2", "3", "4", "5", "6"}));
    EXPECT_EQ(gWalk.n, 6) << "the end leaves the buffer as it was";
    EXPECT_FALSE(gfbDB_RecordOp(kWalkTable, kOpGetNext, 3));
    EXPECT_EQ(gWalk.n, 6);
    EXPECT_EQ(walk(3, kOpGetPrevious), strings({"5", "4", "3", "2", "1"}));
    EXPECT_EQ(gWalk.n, 1);
    first(2);
    EXPECT_EQ(walk(2, kOpGetNext), strings({"2", "3", "4", "5", "6"}));
}

TEST_F(Walk, EqualKeysAreSkippedAndTheGuardDropsTheFirstBranchOfAUniqueLead)
{
    insert({"a", "a"}, 1);
    insert({"a", "a"}, 2);
    insert({"a", "b"}, 3);
    insert({"b", "a"}, 4);
    first(2);
    EXPECT_EQ(walk(2, kOpGetNext), strings({"3", "4"})) << "a run of equal keys shows only its first";
    // One row leads with "c": the guard skips the branch that would find c/b after c/a.
    insert({"c", "b"}, 5);
    seek({"c", "a"});
    EXPECT_FALSE(gfbDB_RecordOp(kWalkTable, kOpGetNext, 2));
    EXPECT_EQ(gWalk.seg[1], QStringLiteral("a   "));
    seek({"b", "0"});
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpGetNext, 2));
    EXPECT_EQ(gWalk.n, 5);
}

TEST_F(Walk, FourAndFiveSegmentsSkipRowsWithALargerSecondButSmallerThirdSegment)
{
    insert({"a", "a", "b", "a", "a"}, 1);
    insert({"a", "b", "a", "b", "b"}, 2); // larger second, smaller third: skipped
    insert({"a", "b", "c", "b", "b"}, 3);
    insert({"b", "a", "a", "a", "a"}, 4);
    first(4);
    EXPECT_EQ(walk(4, kOpGetNext), strings({"3", "4"}));
    first(5);
    EXPECT_EQ(walk(5, kOpGetNext), strings({"3", "4"}));
    last(4);
    EXPECT_EQ(gWalk.n, 4);
    EXPECT_EQ(walk(4, kOpGetPrevious), strings({"3", "1"}));
}

TEST_F(Walk, OneSegmentAndTheEmptyTable)
{
    EXPECT_FALSE(gfbDB_RecordOp(kWalkTable, kOpGetFirst, 1));
    ASSERT_TRUE(dbaRecordset[kWalkTable]) << "the table's set stays open";
    EXPECT_EQ(dbaRecordset[kWalkTable]->recordCount(), 0);
    EXPECT_FALSE(gfbDB_RecordOp(kWalkTable, kOpGetNext, 1));
    insert({"m"}, 1);
    insert({"k"}, 2);
    last(1);
    EXPECT_EQ(walk(1, kOpGetPrevious), strings({"2"}));
    EXPECT_EQ(gfbDB_RecordOp(kWalkTable, kOpGetLast, -1), true);
    EXPECT_EQ(gWalk.seg[0], QStringLiteral("m   "));
}

TEST_F(Walk, KeyedReadsUpdateAndDeleteTheRowTheyFound)
{
    insert({"a"}, 1);
    insert({"b"}, 2);
    insert({"c"}, 3);
    seek({"b"});
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpGreaterEqual, 1));
    EXPECT_EQ(gWalk.n, 2);
    gWalk.n = 20;
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpUpdate, 1));
    seek({"b"});
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpLess, 1));
    EXPECT_EQ(gWalk.n, 1);
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpDelete, 1));
    EXPECT_EQ(gfiDB_RecordCount(kWalkTable), 2);
    seek({"b"});
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpEqual, 1));
    EXPECT_EQ(gWalk.n, 20);
    seek({"zz"});
    EXPECT_FALSE(gfbDB_RecordOp(kWalkTable, kOpEqual, 1));
    EXPECT_EQ(gWalk.seg[0], QStringLiteral("zz  ")) << "nothing found leaves the buffer alone";
    EXPECT_TRUE(gfbDB_RecordOp(kWalkTable, 0)) << "no-op codes answer true";
    EXPECT_TRUE(gfbDB_RecordOp(kWalkTable, 77));
}

TEST_F(Walk, BlankingAColumnThatHoldsNullWritesTheEmptyText)
{
    ASSERT_TRUE(dbConnection().execute(
        QStringLiteral("INSERT INTO Walk VALUES('a',NULL,NULL,' ',' ',' ',1)")));
    seek({"a"});
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpEqual, 1));
    gWalk.seg[2] = QStringLiteral("x   "); // a value over NULL is written as well
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpUpdate, 1));
    EXPECT_FALSE(gfbDB_ExecuteSQL(QStringLiteral("SELECT S1 FROM Walk WHERE S2 IS NULL OR S3 IS NULL"), kWalkTable, false))
        << "a blank written over NULL leaves no NULL behind";
    seek({"a"});
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpEqual, 1));
    EXPECT_EQ(gWalk.seg[2], QStringLiteral("x   "));
}

TEST_F(Walk, AnotherStationsChangeMakesUpdateAndDeleteFailWithoutWriting)
{
    insert({"a"}, 1);
    seek({"a"});
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpEqual, 1));
    auto station2 = db.connect();
    ASSERT_TRUE(station2->execute(QStringLiteral("UPDATE Walk SET N = 9")));
    gWalk.n = 5;
    EXPECT_FALSE(gfbDB_RecordOp(kWalkTable, kOpUpdate, 1));
    EXPECT_FALSE(gfbDB_RecordOp(kWalkTable, kOpDelete, 1));
    seek({"a"});
    ASSERT_TRUE(gfbDB_RecordOp(kWalkTable, kOpEqual, 1));
    EXPECT_EQ(gWalk.n, 9);
}
