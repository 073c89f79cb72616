#include "StoreFixture.h"

using namespace qln;
using namespace qln::test;

namespace {

class StatementText : public StoreFixture {
protected:
    void SetUp() override
    {
        StoreFixture::SetUp();
        seek({"a", "b", "c", "d", "e", "f"});
    }
    QString next(int key, const char *op)
    {
        walkKey(kWalkTable, key);
        return gfsDB_NextSql(kWalkTable, key, QString::fromUtf8(op));
    }
    QString keyed(int key, const char *op)
    {
        walkKey(kWalkTable, key);
        return gfsDB_KeySql(kWalkTable, QString::fromUtf8(op));
    }
};

const QString C = QStringLiteral("(SELECT COUNT(*) FROM Walk WHERE S1='a   ') > 1 AND ");

} // namespace

TEST_F(StatementText, NextAndPreviousByKeyLength)
{
    const QString head = QStringLiteral("SELECT  TOP 1 * FROM Walk WHERE ");
    EXPECT_EQ(next(1, ">"), head + QStringLiteral("S1>'a   ' ORDER BY S1"));
    EXPECT_EQ(next(1, "<"), head + QStringLiteral("S1<'a   ' ORDER BY S1 DESC"));
    EXPECT_EQ(next(2, ">"), head + C + QStringLiteral("S1='a   ' AND S2>'b   ' OR S1>'a   ' ORDER BY S1,S2"));
    EXPECT_EQ(next(3, ">"), head + C +
                                QStringLiteral("S1='a   ' AND S2='b   ' AND S3> 'c   ' OR S1='a   ' AND S2> 'b   ' OR "
                                               "S1>'a   ' ORDER BY S1,S2,S3"));
    EXPECT_EQ(next(3, "<"), head + C +
                                QStringLiteral("S1='a   ' AND S2='b   ' AND S3< 'c   ' OR S1='a   ' AND S2< 'b   ' OR "
                                               "S1<'a   ' ORDER BY S1 DESC,S2 DESC,S3 DESC"));
    EXPECT_EQ(next(4, ">"), head + C +
                                QStringLiteral("S1='a   ' AND S2>='b   ' AND S3>='c   ' AND S4>'d   ' OR S1>'a   ' "
                                               "ORDER BY S1,S2,S3,S4"));
    EXPECT_EQ(next(5, "<"), head + C +
                                QStringLiteral("S1='a   ' AND S2<='b   ' AND S3<='c   ' AND S4<='d   ' AND S5<'e   ' OR "
                                               "S1<'a   ' ORDER BY S1 DESC,S2 DESC,S3 DESC,S4 DESC,S5 DESC"));
    // Outside one to five segments only the guard and the last branch remain: the server refuses it.
    EXPECT_EQ(next(6, ">"), head + C + QStringLiteral(" OR S1>'a   ' ORDER BY S1,S2,S3,S4,S5,S6"));
}

TEST_F(StatementText, KeyedReadsFirstAndLast)
{
    EXPECT_EQ(keyed(2, ">="), QStringLiteral("SELECT TOP 1 * FROM Walk WHERE S1>='a   ' AND S2>='b   ' ORDER BY S1"));
    EXPECT_EQ(keyed(6, "="), QStringLiteral("SELECT TOP 1 * FROM Walk WHERE S1='a   ' AND S2='b   ' AND S3='c   ' AND "
                                            "S4='d   ' AND S5='e   ' AND S6='f   ' ORDER BY S1"));
    EXPECT_EQ(keyed(-1, "="), QStringLiteral("SELECT TOP 1 * FROM Walk WHERE "));
    EXPECT_EQ(keyed(7, ">"), QStringLiteral("SELECT TOP 1 * FROM Walk WHERE "));

    EXPECT_EQ(gfsDB_FirstSql(kWalkTable, -1), QStringLiteral("SELECT TOP 1 * FROM Walk"));
    EXPECT_EQ(gfsDB_FirstSql(kWalkTable, 3), QStringLiteral("SELECT TOP 1 * FROM Walk ORDER BY S1,S2,S3"));
    EXPECT_EQ(gfsDB_FirstSql(kWalkTable, 6), QStringLiteral("SELECT TOP 1 * FROM Walk ORDER BY "));
    EXPECT_EQ(gfsDB_LastSql(kWalkTable, -1), QStringLiteral("SELECT TOP 1 * FROM Walk ORDER BY S1 DESC"));
    EXPECT_EQ(gfsDB_LastSql(kWalkTable, 2), QStringLiteral("SELECT TOP 1 * FROM Walk ORDER BY S1 DESC,S2 DESC"));
    EXPECT_EQ(gfsDB_LastSql(kWalkTable, 6), QStringLiteral("SELECT TOP 1 * FROM Walk ORDER BY "));

    walkKey(kWalkTable, 2);
    EXPECT_FALSE(gfbDB_RecordOp(kWalkTable, kOpLessEqual, 2));
    EXPECT_EQ(gsDB_LastSql(), QStringLiteral("SELECT TOP 1 * FROM Walk WHERE S1<='a   ' AND S2<='b   ' ORDER BY S1 DESC"));
}

TEST_F(StatementText, QuotingOfKeyValues)
{
    // Apostrophes double in the first three segments and turn to blanks after.
    seek({"O'B", "O'B", "O'B", "O'B", "O'B"});
    EXPECT_EQ(keyed(5, "="), QStringLiteral("SELECT TOP 1 * FROM Walk WHERE S1='O''B' AND S2='O''B' AND S3='O''B' AND "
                                            "S4='O B ' AND S5='O B ' ORDER BY S1"));
    EXPECT_EQ(gfsDB_Quote(QStringLiteral("A, B'C"), true, 0), QStringLiteral("A,B''C"));
    EXPECT_EQ(gfsDB_Quote(QStringLiteral("A, B'C"), true, 10), QStringLiteral("A, B''C"));
    EXPECT_EQ(gfsDB_Quote(QStringLiteral("ends, '"), true, 0), QStringLiteral("ends,''"));
    EXPECT_EQ(gfsDB_Quote(QStringLiteral("x, y',"), true, 0), QStringLiteral("x,y''"));
    EXPECT_EQ(gfsDB_Quote(QStringLiteral("O''Brien's"), true, 0), QStringLiteral("O''Brien's"));
    EXPECT_EQ(gfsDB_Quote(QString(3, QChar(0)), true, 0), QStringLiteral("   "));
    EXPECT_EQ(gfsDB_Quote(QStringLiteral("plain  text"), true, 0), QStringLiteral("plain  text"));
}

TEST_F(StatementText, ItemIdComparesWithoutLeadingBlanksWhereverTheLettersStand)
{
    ASSERT_TRUE(dbConnection().execute(QStringLiteral("Create Table Items (ItemID CHAR (25) DEFAULT  ' ', SubItemID CHAR (4))")));
    ASSERT_TRUE(dbConnection().execute(QStringLiteral("INSERT INTO Items VALUES('      42', 'x')")));
    dbuaTable[5].sSqlFile = QStringLiteral("Items");
    ASSERT_TRUE(gfbDB_TableOpen(5));
    gpDB_KeySet(5, 1, {{0, QStringLiteral("42")}});
    EXPECT_TRUE(gfbDB_GetByKey(5, QStringLiteral("="), QString()));
    EXPECT_EQ(gsDB_LastSql(), QStringLiteral("SELECT TOP 1 * FROM Items WHERE ltrim(ItemID)='42' ORDER BY ltrim(ItemID)"));
    // A column whose name holds the letters is rewritten too, and refused.
    gpDB_KeySet(5, 1, {{1, QStringLiteral("x")}});
    EXPECT_FALSE(gfbDB_GetByKey(5, QStringLiteral("="), QString()));
    EXPECT_EQ(gsDB_LastSql(), QStringLiteral("SELECT TOP 1 * FROM Items WHERE Subltrim(ItemID)='x' ORDER BY Subltrim(ItemID)"));
    EXPECT_TRUE(db.readFile(QStringLiteral("PVSW.log")).contains(QStringLiteral("Subltrim(ItemID)")));
}
