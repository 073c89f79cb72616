#include "platform/SqlDialect.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace qln;

namespace {
std::string sqlite(const char *t) { return SqlDialect::create(Provider::SQLite)->rewrite(QString::fromUtf8(t)).toStdString(); }
std::string pg(const char *t) { return SqlDialect::create(Provider::Postgres)->rewrite(QString::fromUtf8(t)).toStdString(); }
} // namespace

TEST(Dialect, TopBecomesLimitAndValuesAreNeverTouched)
{
    EXPECT_EQ(sqlite("SELECT TOP 1 * FROM T WHERE A>='x TOP 2 y' ORDER BY A"),
              "SELECT * FROM T WHERE A>='x TOP 2 y' ORDER BY A LIMIT 1");
    EXPECT_EQ(sqlite("SELECT  TOP 1 * FROM T WHERE A='1234AND' AND B=1234AND C=2"),
              "SELECT * FROM T WHERE A='1234AND' AND B=1234 AND C=2 LIMIT 1");
    EXPECT_EQ(sqlite("SELECT * FROM T WHERE D >= '20261122 00:00:00'"), "SELECT * FROM T WHERE D >= '2026-11-22 00:00:00'");
    EXPECT_EQ(sqlite("SELECT * FROM T WHERE N = 'O''Brien' AND SL='20261122'"),
              "SELECT * FROM T WHERE N = 'O''Brien' AND SL='20261122'");
    // SQLite reads LEFT as the join word only.
    EXPECT_EQ(sqlite("SELECT TOP 1 * FROM U WHERE LEFT(upc,2)='03' order by UPC"),
              "SELECT * FROM U WHERE SUBSTR(upc,1,2)='03' order by UPC LIMIT 1");
    EXPECT_EQ(pg("SELECT a FROM T left join U on T.x=U.x WHERE LEFT(COALESCE(a, b), 3)='abc'"),
              "SELECT a FROM T left join U on T.x=U.x WHERE SUBSTR(COALESCE(a, b),1, 3)='abc'");
}

TEST(Dialect, TableCreationNamesIndexesPerTableAndGivesTextTheServerCollation)
{
    EXPECT_EQ(sqlite("Create Table P (Store SMALLINT, SL CHAR (8), D DATETIME, A DECIMAL (18,2), F CHAR(1) DEFAULT  ' ');"),
              "CREATE TABLE P (Store SMALLINT, SL CHAR(8) COLLATE QLN_CI, D DATETIME, A DECIMAL(18,2), F CHAR(1) COLLATE QLN_CI DEFAULT  ' ')");
    EXPECT_EQ(pg("Create Table P (D DATETIME, B BIT, M MONEY)"), "CREATE TABLE P (D TIMESTAMP, B SMALLINT, M NUMERIC(19,4))");
    EXPECT_EQ(sqlite("Create UNIQUE  CLUSTERED Index idx_1 On Departments (DeptCode);"),
              "CREATE UNIQUE INDEX Departments_idx_1 ON Departments (DeptCode)");
    EXPECT_EQ(pg("Drop index invt1.idx_0"), "DROP INDEX invt1_idx_0");
    EXPECT_EQ(pg("sp_RENAME 'invt1.Flg2', 'AllowDiscounts ', 'COLUMN'"),
              "ALTER TABLE invt1 RENAME COLUMN Flg2 TO AllowDiscounts");
    EXPECT_EQ(pg("ALTER TABLE invt1 ALTER COLUMN itemID CHAR(25)"),
              "ALTER TABLE invt1 ALTER COLUMN itemID TYPE CHAR(25) COLLATE qln_ci");
    EXPECT_EQ(pg("ALTER TABLE invt1 ADD Spare CHAR (4) DEFAULT  ' '"),
              "ALTER TABLE invt1 ADD Spare CHAR(4) COLLATE qln_ci DEFAULT  ' '");
}

TEST(Dialect, PostgresGetsTheServersLikeAndNullOrdering)
{
    EXPECT_EQ(pg("SELECT * FROM T WHERE Descript LIKE 'ab%' ORDER BY Descript"),
              "SELECT * FROM T WHERE Descript ILIKE 'ab%' COLLATE \"C\" ORDER BY Descript NULLS FIRST");
    EXPECT_EQ(pg("select top 1 * from PromoPrices order by uniqueID desc"),
              "SELECT * from PromoPrices order by uniqueID desc NULLS LAST LIMIT 1");
    EXPECT_EQ(pg("SELECT * FROM T WHERE (SELECT 1 FROM U ORDER BY a) = 1 ORDER BY ltrim(ItemID) DESC,b"),
              "SELECT * FROM T WHERE (SELECT 1 FROM U ORDER BY a NULLS FIRST) = 1 ORDER BY CAST(ltrim(ItemID) AS bpchar) COLLATE qln_ci "
              "DESC NULLS LAST,b NULLS FIRST");
    EXPECT_EQ(pg("Create  Index idx_0 On PromoPrices (SL, EndDate );"),
              "CREATE INDEX PromoPrices_idx_0 ON PromoPrices (SL NULLS FIRST, EndDate NULLS FIRST)");
    EXPECT_EQ(sqlite("SELECT * FROM T WHERE Descript LIKE 'ab%'"), "SELECT * FROM T WHERE Descript LIKE 'ab%'");
}

TEST(Dialect, WalkStatementBecomesOneSeekPerBranch)
{
    auto d = SqlDialect::create(Provider::SQLite);
    const QString literal = QStringLiteral(
        "SELECT  TOP 1 * FROM T WHERE (SELECT COUNT(*) FROM T WHERE A='a') > 1 AND A='a' AND B>'b' OR A>'a' ORDER BY A,B");
    EXPECT_EQ(d->rewrite(literal).toStdString(),
              "SELECT * FROM T WHERE rowid = (SELECT rowid FROM T WHERE (SELECT COUNT(*) FROM (SELECT 1 FROM T WHERE A='a' "
              "LIMIT 2) qln_g) > 1 AND A='a' AND B>'b' ORDER BY A,B LIMIT 1) UNION ALL SELECT * FROM T WHERE rowid = "
              "(SELECT rowid FROM T WHERE A>'a' ORDER BY A,B LIMIT 1) LIMIT 1");
    d->setIndexFriendlyWalk(false);
    EXPECT_EQ(d->rewrite(literal).toStdString(),
              "SELECT * FROM T WHERE (SELECT COUNT(*) FROM T WHERE A='a') > 1 AND A='a' AND B>'b' OR A>'a' ORDER BY A,B LIMIT 1");
}

// On the server a window of the walk is one seek from the key's values (the randomized walk
// test proves its rows); a text whose branches are not the walk's own (other columns,
// another operator, another order) keeps the union, which answers for any text.
TEST(Dialect, AWindowOfTheWalkIsOneSeekOnlyWhereItsBranchesAreTheWalks)
{
    const char *walk = "SELECT TOP 5 * FROM T WHERE A='a' AND B>'b' OR A>'a' ORDER BY A,B";
    EXPECT_EQ(pg(walk).find("UNION ALL"), std::string::npos);
    EXPECT_NE(sqlite(walk).find("UNION ALL"), std::string::npos);
    for (const char *other : {"SELECT TOP 5 * FROM T WHERE A='a' AND B>'b' OR C>'a' ORDER BY A,B",
                              "SELECT TOP 5 * FROM T WHERE A='a' AND B>='b' OR A>'a' ORDER BY A,B",
                              "SELECT TOP 5 * FROM T WHERE A='a' AND B>'b' OR A>'a' ORDER BY B,A",
                              "SELECT TOP 5 * FROM T WHERE A='a' AND B>'b' OR A<'a' ORDER BY A,B"})
        EXPECT_NE(pg(other).find("UNION ALL"), std::string::npos) << other;
}

TEST(Dialect, ATrimmedColumnStillComparesWithoutCaseAndTrailingBlanks)
{
    EXPECT_EQ(sqlite("SELECT TOP 1 * FROM I WHERE ltrim(ItemID)='ab  ' ORDER BY ltrim(ItemID)"),
              "SELECT * FROM I WHERE ltrim(ItemID) COLLATE QLN_CI='ab  ' ORDER BY ltrim(ItemID) COLLATE QLN_CI LIMIT 1");
    EXPECT_EQ(sqlite("SELECT * FROM I WHERE ltrim(ItemID) LIKE 'ab%'"), "SELECT * FROM I WHERE ltrim(ItemID) LIKE 'ab%'");
    EXPECT_EQ(sqlite("SELECT * FROM I WHERE Subltrim(ItemID)='x'"), "SELECT * FROM I WHERE Subltrim(ItemID)='x'");
}

// Only whole numbers compared with something become bound values; anything glued to a word
// or part of a decimal stays in the text.
TEST(Dialect, OnlyComparedWholeNumbersAreTakenOut)
{
    MaskedSql m(QStringLiteral("SELECT * FROM T WHERE A= 12 AND B <>-3) OR C>=4, D=5AND E=1.5 AND F='=7' AND G=8"));
    m.comparedNumbers();
    QStringList numbers;
    MaskedSql::forEachMarker(m.text, [&](QStringView, int literal) {
        if (literal >= 0 && !m.literals.value(literal).startsWith(QLatin1Char('\'')))
            numbers << m.literals.value(literal);
    });
    EXPECT_EQ(numbers, (QStringList{QStringLiteral("12"), QStringLiteral("-3"), QStringLiteral("4"), QStringLiteral("8")}));
    EXPECT_EQ(m.unmask(m.text), QStringLiteral("SELECT * FROM T WHERE A= 12 AND B <>-3) OR C>=4, D=5AND E=1.5 AND F='=7' AND G=8"));
}

TEST(Dialect, ATimeAloneAsADatesDefaultBecomesDayZeroButAValueKeepsIt)
{
    EXPECT_EQ(pg("Create Table T (D DATE DEFAULT '12:00:00 AM', N CHAR (20));"),
              "CREATE TABLE T (D DATE DEFAULT '1900-01-01', N CHAR(20) COLLATE qln_ci)");
    EXPECT_EQ(sqlite("UPDATE T SET N = '12:00:00 AM'"), "UPDATE T SET N = '12:00:00 AM'");
}
