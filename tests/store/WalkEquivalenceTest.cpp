#include "StoreFixture.h"

#include <QRandomGenerator>

using namespace qln;
using namespace qln::test;

namespace {

// The key segments of the row a statement returns, or "none".
QString answer(const QString &sql, int segments)
{
    Recordset rs;
    if (!rs.open(dbConnection(), sql))
        return QStringLiteral("refused: ") + rs.lastError().description;
    if (rs.recordCount() == 0)
        return QStringLiteral("none");
    QStringList key;
    for (int i = 0; i < segments; ++i)
        key << rs.value(i).toString();
    return key.join(QLatin1Char('|'));
}

// The key segments of every row a statement returns, as the server compares them: rows
// that tie under the case-blind order may come in either order, and a window may end on
// any of them.
QString answers(const QString &sql, int segments)
{
    Recordset rs;
    if (!rs.open(dbConnection(), sql))
        return QStringLiteral("refused: ") + rs.lastError().description;
    QStringList rows;
    for (rs.moveFirst(); !rs.eof(); rs.moveNext()) {
        QStringList key;
        for (int i = 0; i < segments; ++i)
            key << (rs.value(i).isNull() ? QStringLiteral("<null>") : rs.value(i).toString().trimmed().toLower());
        rows << key.join(QLatin1Char('|'));
    }
    return rows.join(QLatin1Char(' '));
}

// The walk's statement reading `rows` rows instead of one, as the lookup's windows send it.
QString windowOf(const QString &step, int rows)
{
    QString sql = step;
    return sql.replace(QStringLiteral("SELECT  TOP 1 "), QStringLiteral("SELECT TOP %1 ").arg(rows));
}

class WalkEquivalence : public StoreFixture {};

} // namespace

// The engine runs the next/previous statements as a union of index seeks; it must return
// the row that the statement as written returns, case, blanks, ties and guard included.
TEST_F(WalkEquivalence, TheSeekFormAnswersAsTheLiteralStatement)
{
    QRandomGenerator random(20261122);
    const QStringList alphabet = strings({"a", "A", "b", "b ", "c", "", "O''", "d"});
    auto pick = [&] { return alphabet[random.bounded(int(alphabet.size()))]; };
    int compared = 0;
    for (int round = 0; round < 6; ++round) {
        ASSERT_TRUE(dbConnection().execute(QStringLiteral("DELETE FROM Walk")));
        const int rows = random.bounded(0, 40);
        for (int r = 0; r < rows; ++r) {
            QStringList values;
            for (int s = 0; s < 6; ++s)
                values << QLatin1Char('\'') + pick() + QLatin1Char('\'');
            ASSERT_TRUE(dbConnection().execute(
                QStringLiteral("INSERT INTO Walk VALUES(%1,%2)").arg(values.join(QLatin1Char(','))).arg(r)));
        }
        for (int probe = 0; probe < 40; ++probe) {
            for (QString &s : gWalk.seg)
                s = pick().replace(QStringLiteral("''"), QStringLiteral("'"));
            const int key = random.bounded(1, 6);
            // A keyed read orders by its first segment alone: that segment is its whole answer.
            for (const char *op : {">=", "<="}) {
                walkKey(kWalkTable, key);
                QString sql = gfsDB_KeySql(kWalkTable, QString::fromUtf8(op));
                if (op[0] == '<')
                    sql += QStringLiteral(" DESC");
                dbConnection().dialect().setIndexFriendlyWalk(false);
                const QString literal = answer(sql, 1);
                dbConnection().dialect().setIndexFriendlyWalk(true);
                ASSERT_EQ(answer(sql, 1), literal) << sql.toStdString();
                ++compared;
            }
            for (const char *op : {">", "<"}) {
                walkKey(kWalkTable, key);
                const QString sql = gfsDB_NextSql(kWalkTable, key, QString::fromUtf8(op));
                dbConnection().dialect().setIndexFriendlyWalk(false);
                const QString literal = answer(sql, key);
                dbConnection().dialect().setIndexFriendlyWalk(true);
                const QString seek = answer(sql, key);
                ASSERT_EQ(seek, literal) << sql.toStdString();
                ++compared;
            }
        }
    }
    EXPECT_EQ(compared, 960);
}

// A window of the walk (one seek from the key's values on the server) reads the rows the
// statement as written reads: ties across segments, case, trailing blanks, the guard on a
// key whose first segment stands once, and the table's edges.
TEST_F(WalkEquivalence, AWindowOfTheWalkReadsTheRowsOfTheLiteralStatement)
{
    QRandomGenerator random(20261123);
    const QStringList alphabet = strings({"a", "A", "b", "b ", "c", "", "O''", "d"});
    auto pick = [&] { return alphabet[random.bounded(int(alphabet.size()))]; };
    int compared = 0;
    for (int round = 0; round < 5; ++round) {
        ASSERT_TRUE(dbConnection().execute(QStringLiteral("DELETE FROM Walk")));
        const int rows = random.bounded(0, 50);
        for (int r = 0; r < rows; ++r) {
            QStringList values;
            for (int s = 0; s < 6; ++s)
                values << QLatin1Char('\'') + (s < 3 ? pick() : QString()) + QLatin1Char('\'');
            ASSERT_TRUE(dbConnection().execute(
                QStringLiteral("INSERT INTO Walk VALUES(%1,%2)").arg(values.join(QLatin1Char(','))).arg(r)));
        }
        if (round == 4) { // a null stands outside every comparison, in both forms
            ASSERT_TRUE(dbConnection().execute(QStringLiteral("UPDATE Walk SET S2 = NULL WHERE N % 3 = 0")));
        }
        for (int probe = 0; probe < 30; ++probe) {
            for (QString &s : gWalk.seg)
                s = pick().replace(QStringLiteral("''"), QStringLiteral("'"));
            const int key = random.bounded(2, 4);
            for (const char *op : {">", "<"}) {
                walkKey(kWalkTable, key);
                const QString sql = windowOf(gfsDB_NextSql(kWalkTable, key, QString::fromUtf8(op)), random.bounded(2, 20));
                dbConnection().dialect().setIndexFriendlyWalk(false);
                const QString literal = answers(sql, key);
                dbConnection().dialect().setIndexFriendlyWalk(true);
                ASSERT_EQ(answers(sql, key), literal) << sql.toStdString();
                ++compared;
            }
        }
    }
    EXPECT_EQ(compared, 300);
}
