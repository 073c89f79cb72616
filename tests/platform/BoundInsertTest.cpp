#include "platform/Connection.h"
#include "platform/Recordset.h"
#include "support/TestDatabase.h"

#include <gtest/gtest.h>

using namespace qln;
using qln::test::TestDatabase;

namespace {

const QString kColumns = QStringLiteral("(K CHAR (8), V VARCHAR (20), N INTEGER, S SMALLINT, D DATETIME, P DECIMAL (18,2), "
                                        "Q DECIMAL (18,4), R FLOAT)");

struct BoundInsert : ::testing::Test {
    TestDatabase db;
    std::unique_ptr<Connection> conn = db.connect();

    void SetUp() override
    {
        ASSERT_TRUE(conn->execute(QStringLiteral("Create Table ByText ") + kColumns));
        ASSERT_TRUE(conn->execute(QStringLiteral("Create Table ByShape ") + kColumns));
    }

    // Every cell as the engine holds it: its storage class too on SQLite.
    QStringList cells(const QString &table)
    {
        QStringList columns;
        for (const char *c : {"K", "V", "N", "S", "D", "P", "Q", "R"})
            columns << (conn->provider() == Provider::SQLite ? QStringLiteral("typeof(%1) || ':' || quote(%1)")
                                                             : QStringLiteral("COALESCE(CAST(%1 AS text), 'null')"))
                               .arg(QLatin1String(c));
        Recordset rs;
        EXPECT_TRUE(rs.open(*conn, QStringLiteral("SELECT %1 FROM %2 ORDER BY N, K").arg(columns.join(QStringLiteral(", ")), table)));
        QStringList out;
        for (rs.moveFirst(); !rs.eof(); rs.moveNext()) {
            QStringList row;
            for (int i = 0; i < rs.fieldCount(); ++i)
                row << rs.value(i).toString();
            out << row.join(QLatin1Char('|'));
        }
        return out;
    }
};

} // namespace

// The same texts, by a prepared shape with values bound or as written, store the same cells:
// decimals bound for a text column would lose their zeros, integers their sign.
TEST_F(BoundInsert, StoresWhatTheTextWouldStore)
{
    QStringList rows{
        QStringLiteral("'it''s', 'x', 1, -2, '20261122 00:00:00', 10.50, 8.4951, 1.5"),
        QStringLiteral("10.50, 007, 2, 0, NULL, 10, -0.00005, 1e15"),
        QStringLiteral("'', '', -2147483648, 32767, '2031-01-05 00:00:00', -0.001, 123456789012.3456, -0.25"),
        QStringLiteral("'Zürich', 'a,b', 3, 1, '20310105 00:00:00', 3., .5, 99999999999999999999"),
    };
    for (int n = 4; n < 9; ++n) // one shape, new values each time
        rows << QStringLiteral("'k%1', 'v', %1, %1, '2031010%1 00:00:00', %1.25, -%1.5, %1.125").arg(n);
    if (conn->provider() == Provider::SQLite) // cells only SQLite lets a typed column hold
        rows << QStringLiteral("'x', 12, 'seven', 'not a number', 'not a date', 'n/a', 1e15, 'y'")
             << QStringLiteral("'x', 'x', 3000000000, 70000, NULL, 1e14, -1e14, 1");
    QStringList logged;
    conn->setStatementObserver([&](const QString &text) { logged << text; });
    for (const QString &row : std::as_const(rows)) {
        int byText = 0, byShape = 0;
        ASSERT_TRUE(conn->execute(QStringLiteral("INSERT INTO ByText VALUES(%1)").arg(row), &byText)) << row.toStdString();
        ASSERT_TRUE(conn->executeInsert(QStringLiteral("INSERT INTO ByShape VALUES(%1)").arg(row), &byShape))
            << row.toStdString() << conn->lastError().description.toStdString();
        EXPECT_EQ(byShape, byText);
        EXPECT_EQ(logged.last(), QStringLiteral("INSERT INTO ByShape VALUES(%1)").arg(row)) << "logged as written";
    }
    EXPECT_EQ(logged.size(), 2 * rows.size());
    EXPECT_EQ(cells(QStringLiteral("ByShape")), cells(QStringLiteral("ByText")));
}

// A refusal names the same reason either way; a table changed under a prepared shape takes
// the new one.
TEST_F(BoundInsert, RefusesAsTheTextIsRefusedAndFollowsTheTable)
{
    ASSERT_TRUE(conn->execute(QStringLiteral("Create UNIQUE Index idx_1 On ByShape (N)")));
    const QString row = QStringLiteral("INSERT INTO ByShape VALUES('a', 'b', 1, 1, NULL, 1, 1, 1)");
    ASSERT_TRUE(conn->executeInsert(row));
    EXPECT_FALSE(conn->executeInsert(row));
    EXPECT_TRUE(conn->lastError().description.startsWith(QStringLiteral("Cannot insert duplicate")))
        << conn->lastError().description.toStdString();

    for (const QString &bad : {QStringLiteral("INSERT INTO Missing VALUES(1, 'a')"), QStringLiteral("INSERT INTO ByShape VALUES(1, 'a', 1, 1, NULL, 1, 1, 1, 'one', 'too many')")}) {
        EXPECT_FALSE(conn->execute(bad));
        const DbError byText = conn->lastError();
        EXPECT_FALSE(conn->executeInsert(bad));
        EXPECT_EQ(conn->lastError().number, byText.number) << bad.toStdString();
        EXPECT_EQ(conn->lastError().description, byText.description) << bad.toStdString();
    }

    ASSERT_TRUE(conn->execute(QStringLiteral("ALTER TABLE ByShape ADD T CHAR (4)")));
    ASSERT_TRUE(conn->executeInsert(QStringLiteral("INSERT INTO ByShape VALUES('c', 'd', 2, 2, NULL, 2, 2, 2, 'new')")))
        << conn->lastError().description.toStdString();
    Recordset rs;
    ASSERT_TRUE(rs.open(*conn, QStringLiteral("SELECT * FROM ByShape WHERE N = 2")));
    ASSERT_EQ(rs.recordCount(), 1);
    EXPECT_EQ(rs.value(8).toString().trimmed(), QStringLiteral("new"));
}
