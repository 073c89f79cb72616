#include "platform/Connection.h"
#include "platform/Recordset.h"
#include "support/TestDatabase.h"

#include <QSqlError>
#include <gtest/gtest.h>

using namespace qln;
using qln::test::TestDatabase;

namespace {

struct ConnectionTest : ::testing::Test {
    TestDatabase db;
    std::unique_ptr<Connection> conn = db.connect();

    void SetUp() override
    {
        ASSERT_TRUE(conn->execute(QStringLiteral("Create Table T (K CHAR (8) DEFAULT  ' ', N INTEGER, D DATETIME, A DECIMAL (18,2))")));
        ASSERT_TRUE(conn->execute(QStringLiteral("Create Index idx_0 On T (K)")));
    }
    QString one(const QString &sql, int field = 0)
    {
        Recordset rs;
        EXPECT_TRUE(rs.open(*conn, sql)) << rs.lastError().description.toStdString();
        return rs.recordCount() ? rs.value(field).toString() : QStringLiteral("<none>");
    }
};

} // namespace

TEST_F(ConnectionTest, TextComparesAsTheSuiteServerDoes)
{
    conn->execute(QStringLiteral("INSERT INTO T VALUES('abc', 1, '20261122 00:00:00', 8.4915)"));
    EXPECT_EQ(one(QStringLiteral("SELECT TOP 1 * FROM T WHERE K = 'ABC  '")), QStringLiteral("abc     "));
    EXPECT_EQ(one(QStringLiteral("SELECT * FROM T WHERE K LIKE 'AB%'"), 1), QStringLiteral("1"));
    EXPECT_EQ(one(QStringLiteral("SELECT * FROM T"), 3), QStringLiteral("8.49"));
    Recordset rs;
    ASSERT_TRUE(rs.open(*conn, QStringLiteral("SELECT * FROM T WHERE D = '2026-11-22 00:00:00'")));
    ASSERT_EQ(rs.recordCount(), 1);
    EXPECT_EQ(rs.value(2).toDateTime(), QDateTime(QDate(2026, 11, 22), QTime(0, 0)));
    // An unquoted date is an integer expression: greater than or equal for every row, never equal.
    EXPECT_EQ(one(QStringLiteral("SELECT * FROM T WHERE D >= 11/22/2026"), 1), QStringLiteral("1"));
    EXPECT_EQ(one(QStringLiteral("SELECT * FROM T WHERE D = 11/22/2026"), 1), QStringLiteral("<none>"));
}

// Whole numbers compared with a column are bound so that one prepared statement serves every
// key; the answers must stay those of the numbers written in the text.
TEST_F(ConnectionTest, ComparedNumbersAnswerAsWrittenWhateverStatementServedThem)
{
    for (int n : {-2, 3, 40})
        conn->execute(QStringLiteral("INSERT INTO T VALUES('k%1', %1, NULL, %1)").arg(n));
    EXPECT_EQ(one(QStringLiteral("SELECT * FROM T WHERE N = 3")), QStringLiteral("k3      "));
    EXPECT_EQ(one(QStringLiteral("SELECT * FROM T WHERE N = 40")), QStringLiteral("k40     "));
    EXPECT_EQ(one(QStringLiteral("SELECT * FROM T WHERE N =-2")), QStringLiteral("k-2     "));
    EXPECT_EQ(one(QStringLiteral("SELECT COUNT(*) FROM T WHERE (N > 3) OR N<-1")), QStringLiteral("2"));
    EXPECT_EQ(one(QStringLiteral("SELECT COUNT(*) FROM T WHERE N > 3AND K > ' '")), QStringLiteral("1"));
    EXPECT_EQ(one(QStringLiteral("SELECT COUNT(*) FROM T WHERE A = 40")), QStringLiteral("1"));
    EXPECT_EQ(one(QStringLiteral("SELECT TOP 2 N FROM T WHERE N >= 3 ORDER BY N")), QStringLiteral("3"));
}

TEST_F(ConnectionTest, UpdateAndDeleteActOnTheCurrentRowOnlyWhileNobodyChangedIt)
{
    conn->execute(QStringLiteral("INSERT INTO T VALUES('a', 1, NULL, 0)"));
    conn->execute(QStringLiteral("INSERT INTO T VALUES('a', 1, NULL, 0)"));
    Recordset rs;
    ASSERT_TRUE(rs.open(*conn, QStringLiteral("SELECT TOP 1 * FROM T WHERE K='a'")));
    rs.setValue(1, 7);
    ASSERT_TRUE(rs.update()) << rs.lastError().description.toStdString();
    EXPECT_EQ(one(QStringLiteral("SELECT COUNT(*) FROM T WHERE N = 7")), QStringLiteral("1"));

    auto other = db.connect();
    int affected = 0;
    EXPECT_TRUE(other->execute(QStringLiteral("UPDATE T SET A = 5 WHERE N = 7"), &affected));
    EXPECT_EQ(affected, 1);
    rs.setValue(1, 8);
    EXPECT_FALSE(rs.update());
    EXPECT_EQ(rs.lastError().number, DbError::kRowChanged);
    EXPECT_FALSE(rs.deleteCurrent());
    EXPECT_EQ(one(QStringLiteral("SELECT COUNT(*) FROM T")), QStringLiteral("2"));

    Recordset again;
    ASSERT_TRUE(again.open(*conn, QStringLiteral("SELECT TOP 1 * FROM T WHERE N = 7")));
    EXPECT_TRUE(again.deleteCurrent());
    EXPECT_EQ(one(QStringLiteral("SELECT COUNT(*) FROM T")), QStringLiteral("1"));
}

TEST_F(ConnectionTest, RefusalsComeBackAsTheSuiteProviderWordsThem)
{
    EXPECT_FALSE(conn->execute(QStringLiteral("SELECT * FROM Missing")));
    EXPECT_TRUE(conn->lastError().description.startsWith(QStringLiteral("Invalid object name")));
    conn->execute(QStringLiteral("Create UNIQUE Index idx_1 On T (N)"));
    conn->execute(QStringLiteral("INSERT INTO T VALUES('a', 1, NULL, 0)"));
    EXPECT_FALSE(conn->execute(QStringLiteral("INSERT INTO T VALUES('b', 1, NULL, 0)")));
    EXPECT_TRUE(conn->lastError().description.startsWith(QStringLiteral("Cannot insert duplicate")));
    EXPECT_FALSE(conn->execute(QStringLiteral("UPDATE & T set x")));
    EXPECT_EQ(conn->lastError().number, DbError::kSyntax) << conn->lastError().description.toStdString();
}

TEST_F(ConnectionTest, ColumnsKeepTheirDeclaredSpellingAndWidth)
{
    conn->execute(QStringLiteral("Create Table W (ItemID CHAR (15), Qty DECIMAL (18,2))"));
    conn->execute(QStringLiteral("INSERT INTO W VALUES('x', 1)"));
    EXPECT_TRUE(conn->execute(QStringLiteral("ALTER TABLE W ALTER COLUMN ItemID CHAR(25)"))) << conn->lastError().description.toStdString();
    Recordset rs;
    ASSERT_TRUE(rs.open(*conn, QStringLiteral("SELECT * FROM W")));
    EXPECT_EQ(rs.fieldName(0), QStringLiteral("ItemID"));
    EXPECT_EQ(rs.value(0).toString().size(), 25);
    EXPECT_TRUE(conn->execute(QStringLiteral("sp_RENAME 'W.Qty', 'QtyOnHand ', 'COLUMN'")));
    ASSERT_TRUE(rs.open(*conn, QStringLiteral("SELECT * FROM W")));
    EXPECT_EQ(rs.fieldName(1), QStringLiteral("QtyOnHand"));
}

// A record buffer reads its fields by typed shortcuts that skip building values; each must
// give exactly what converting the value would, for every kind of cell an engine can hold.
TEST_F(ConnectionTest, FieldReadsGiveWhatTheValuesConvertTo)
{
    conn->execute(QStringLiteral("Create Table F (K CHAR (6), V VARCHAR (20), N INTEGER, D DATETIME, P DECIMAL (18,2), "
                                 "Q DECIMAL (18,4), R FLOAT)"));
    const QStringList rows{
        QStringLiteral("'abc', 'abc', 1, '2026-11-22 00:00:00', 8.125, 9.99, 1.5"),
        QStringLiteral("'six ch', 'Zürich', -5, '2026-11-22 10:30:00.250', 8.4951, 0.00005, 2"),
        QStringLiteral("'Ünï', '', 7, NULL, 12, 123456789012.3456, NULL"),
        QStringLiteral("NULL, NULL, NULL, '2026-11-22', -0.001, -7.00005, -0.25"),
        QStringLiteral("'', 'x', 0, '2026-11-22 00:00:00', 99999999999999, 0, 0"),
    };
    for (const QString &row : rows)
        ASSERT_TRUE(conn->execute(QStringLiteral("INSERT INTO F VALUES(%1)").arg(row))) << row.toStdString();
    if (conn->provider() == Provider::SQLite) { // cells only SQLite lets a typed column hold
        ASSERT_TRUE(conn->execute(QStringLiteral("INSERT INTO F VALUES('longer than six', 12, 'seven', 'not a date', 'n/a', 1e15, 'y')")));
        ASSERT_TRUE(conn->execute(QStringLiteral("INSERT INTO F VALUES('x', 'x', 3000000000, NULL, 1e14, -1e14, 1)")));
    }

    Recordset rs;
    ASSERT_TRUE(rs.open(*conn, QStringLiteral("SELECT * FROM F")));
    ASSERT_GE(rs.recordCount(), 5);
    int row = 0;
    for (rs.moveFirst(); !rs.eof(); rs.moveNext(), ++row) {
        for (int c = 0; c < rs.fieldCount(); ++c) {
            const QVariant v = rs.value(c);
            const std::string where = QStringLiteral("row %1 column %2 (%3)").arg(row).arg(c).arg(v.toString()).toStdString();
            for (int width : {2, 6, 12}) {
                QString text = QStringLiteral("keep");
                const QString shared = text; // the read must not write through a shared copy
                rs.readText(c, width, text);
                EXPECT_EQ(text, v.toString().leftJustified(width, QLatin1Char(' '), true)) << where;
                EXPECT_EQ(shared, QStringLiteral("keep"));
                rs.readText(c, width, text); // into a field that already holds the value
                EXPECT_EQ(text, v.toString().leftJustified(width, QLatin1Char(' '), true)) << where;
            }
            EXPECT_EQ(rs.readInteger(c), v.toInt()) << where;
            EXPECT_EQ(rs.readReal(c), v.toDouble()) << where;
            EXPECT_EQ(rs.readMoney(c).units(), Money::fromVariant(v).units()) << where;
            EXPECT_EQ(rs.readDate(c), v.toDateTime()) << where;
        }
    }
    // A value set but not yet sent is what the reads see.
    rs.moveFirst();
    rs.setValue(0, QStringLiteral("new"));
    QString text;
    rs.readText(0, 6, text);
    EXPECT_EQ(text, QStringLiteral("new   "));
}

// Reads grouped in one transaction must never hold back a write: what runs outside the
// group, and everything after it, is seen at once by another station.
TEST_F(ConnectionTest, GroupedReadsLeaveNoTransactionOpen)
{
    auto other = db.connect();
    auto seenByOther = [&] {
        Recordset rs;
        EXPECT_TRUE(rs.open(*other, QStringLiteral("SELECT COUNT(*) FROM T")));
        return rs.value(0).toInt();
    };
    {
        ReadSnapshot reads(*conn);
        EXPECT_EQ(one(QStringLiteral("SELECT COUNT(*) FROM T")), QStringLiteral("0"));
        {
            ReadSnapshot inner(*conn); // inside a group: changes nothing, ends nothing
        }
        reads.outside([&] { EXPECT_TRUE(conn->execute(QStringLiteral("INSERT INTO T VALUES('a', 1, NULL, 0)"))); });
        EXPECT_EQ(seenByOther(), 1);
        EXPECT_TRUE(other->execute(QStringLiteral("INSERT INTO T VALUES('b', 2, NULL, 0)")));
        EXPECT_EQ(one(QStringLiteral("SELECT COUNT(*) FROM T")), QStringLiteral("2")); // began after the write
    }
    EXPECT_TRUE(conn->execute(QStringLiteral("INSERT INTO T VALUES('c', 3, NULL, 0)")));
    EXPECT_EQ(seenByOther(), 3);
}

TEST_F(ConnectionTest, AServerThatWentAwayIsToldFromAStatementThatFailed)
{
    if (!TestDatabase::onPostgres())
        GTEST_SKIP() << "only a server can go away";
    const QString sql = QStringLiteral("SELECT 1");
    const auto lost = [&](const char *text, const char *code) {
        return conn->errorFrom(QSqlError(QStringLiteral("QPSQL: Unable to create query"), QString::fromLatin1(text),
                                         QSqlError::StatementError, QString::fromLatin1(code)),
                               sql)
            .connectionLost;
    };
    // A fast stop says why; a server gone otherwise leaves only the client library's words.
    EXPECT_TRUE(lost("FATAL:  terminating connection due to administrator command", "57P01"));
    EXPECT_TRUE(lost("FATAL:  the database system is shutting down", "57P03"));
    EXPECT_TRUE(lost("could not send data to server: Broken pipe", ""));
    EXPECT_TRUE(lost("could not receive data from server: Connection reset by peer", ""));
    EXPECT_TRUE(lost("server closed the connection unexpectedly", ""));
    EXPECT_TRUE(lost("connection failure", "08006"));
    EXPECT_FALSE(lost("ERROR:  syntax error at or near \"x\"", "42601"));
    EXPECT_FALSE(lost("ERROR:  division by zero", "22012"));
    EXPECT_FALSE(conn->lost()) << "telling is for the caller";
}
