#include "SoakLog.h"

#include "DemoData.h"
#include "platform/Recordset.h"
#include "promo/PromoPricing.h"
#include "support/TestDatabase.h"

#include <QCryptographicHash>
#include <QFile>
#include <QHash>
#include <QSet>
#include <QProcess>
#include <gtest/gtest.h>
#include <memory>

using namespace qln;
using namespace qln::soak;
using namespace qln::test;

namespace {

// QUILLON_SOAK_SECONDS lengthens the run; the suite keeps it to a minute.
double soakSeconds() { return qEnvironmentVariableIsSet("QUILLON_SOAK_SECONDS") ? qEnvironmentVariable("QUILLON_SOAK_SECONDS").toDouble() : 60.0; }

struct Expected {
    LogLine line;
    int station = 0;
};

// What the stations said, added up for the report.
struct Tally {
    int operations = 0, saved = 0, failed = 0, failedFlag = 0, lost = 0, duplicateKey = 0, conflict = 0;
};

class Soak : public ::testing::Test {
protected:
    void prepare()
    {
        demo::DemoOptions options = demo::gfDemo_options(db.info(), db.dataPath(), 200);
        options.headOffice = true; // deletes mark rows for the stores: every row stays to be checked
        demo::DemoReport report;
        QString error;
        ASSERT_TRUE(demo::gfbDemo_build(options, report, error)) << error.toStdString();
        connection = db.connect();
        ASSERT_TRUE(connection);
    }

    QStringList column(const QString &sql)
    {
        Recordset rs;
        EXPECT_TRUE(rs.open(*connection, sql)) << sql.toStdString() << ": " << rs.lastError().description.toStdString();
        QStringList values;
        for (rs.moveFirst(); !rs.eof(); rs.moveNext())
            values << rs.value(0).toString();
        return values;
    }

    QString digest(const QString &sql)
    {
        Recordset rs;
        EXPECT_TRUE(rs.open(*connection, sql));
        QCryptographicHash hash(QCryptographicHash::Sha256);
        for (rs.moveFirst(); !rs.eof(); rs.moveNext())
            for (int i = 0; i < rs.fieldCount(); ++i)
                hash.addData(rs.value(i).toString().toUtf8());
        return QString::fromLatin1(hash.result().toHex());
    }

    void run(int stations);

    TestDatabase db;
    std::unique_ptr<Connection> connection;
};

void Soak::run(int stations)
{
    prepare();
    if (HasFatalFailure())
        return;
    // A dozen items and four departments for all of them: the stations meet on every one.
    const QStringList items = column(QStringLiteral("select top 12 RecordNum from invt1 order by RecordNum"));
    const QStringList depts = column(QStringLiteral("select top 4 DeptCode from Departments where DeptCode > '000.000.000' order by DeptCode"));
    ASSERT_EQ(items.size(), 12);
    ASSERT_EQ(depts.size(), 4);
    const QStringList highest = column(QStringLiteral("select top 1 UniqueID from PromoPrices order by UniqueID desc"));
    const qint32 baseline = highest.isEmpty() ? 0 : highest.first().toInt();
    const QString before = QStringLiteral("SELECT * FROM PromoPrices WHERE UniqueID <= %1 ORDER BY UniqueID").arg(baseline);
    const QString untouched = digest(before);

    std::vector<std::unique_ptr<QProcess>> processes;
    for (int s = 1; s <= stations; ++s) {
        auto process = std::make_unique<QProcess>();
        process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process->start(QStringLiteral(QUILLON_SOAK_STATION),
                       {db.dataPath(), QString::number(s), QString::number(soakSeconds()), db.file(QStringLiteral("station%1.log").arg(s)),
                        items.join(QLatin1Char(',')), depts.join(QLatin1Char(','))});
        ASSERT_TRUE(process->waitForStarted()) << process->errorString().toStdString();
        processes.push_back(std::move(process));
    }
    for (int s = 1; s <= stations; ++s) {
        QProcess &process = *processes[std::size_t(s - 1)];
        ASSERT_TRUE(process.waitForFinished(int(soakSeconds() * 1000) + 120000)) << "station " << s << " did not end";
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << "station " << s << " crashed";
        EXPECT_EQ(process.exitCode(), 0) << "station " << s;
    }

    QHash<qint32, Expected> expected;
    Tally tally;
    QSet<QString> told; // the distinct texts of failures, for the report
    for (int s = 1; s <= stations; ++s) {
        QFile file(db.file(QStringLiteral("station%1.log").arg(s)));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
        const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        ASSERT_FALSE(lines.isEmpty());
        EXPECT_EQ(lines.last(), QStringLiteral("end")) << "station " << s << " stopped early";
        for (const QString &text : lines) {
            EXPECT_FALSE(text.startsWith(QLatin1String("box\t"))) << "station " << s << " was shown: " << text.toStdString();
            const std::optional<LogLine> line = gfSoak_line_parse(text);
            if (!line)
                continue;
            ++tally.operations;
            if (line->outcome == QLatin1String("lost")) {
                ++tally.lost;
                ADD_FAILURE() << "station " << s << " lost UniqueID " << line->uid;
                continue;
            }
            if (!line->message.isEmpty())
                told.insert(line->op + QStringLiteral(" ") + line->outcome + QStringLiteral(": ") + line->message);
            if (line->outcome == QLatin1String("failed")) {
                ++tally.failed;
                EXPECT_FALSE(line->message.isEmpty()) << "a failure without the system's message: " << text.toStdString();
                if (line->message.contains(QLatin1String("duplicate"), Qt::CaseInsensitive) || line->message.contains(QLatin1String("UNIQUE")))
                    ++tally.duplicateKey;
                else
                    ++tally.conflict;
                continue;
            }
            // Saved, or written and then refused its item's flag: either way the row is there.
            line->outcome == QLatin1String("saved") ? ++tally.saved : ++tally.failedFlag;
            if (line->op.startsWith(QLatin1String("add"))) {
                EXPECT_FALSE(expected.contains(line->uid)) << "UniqueID " << line->uid << " told saved to two stations";
                expected.insert(line->uid, {*line, s});
            } else {
                ASSERT_TRUE(expected.contains(line->uid) && expected[line->uid].station == s) << text.toStdString();
                expected[line->uid].line = *line;
            }
        }
    }

    EXPECT_EQ(digest(before), untouched) << "rows from before the soak were changed";
    Recordset rows;
    ASSERT_TRUE(rows.open(*connection, QStringLiteral("SELECT * FROM PromoPrices WHERE UniqueID > %1").arg(baseline)));
    int found = 0;
    for (rows.moveFirst(); !rows.eof(); rows.moveNext()) {
        const qint32 uid = rows.value(rows.fieldIndex(QStringLiteral("UniqueID"))).toInt();
        ASSERT_TRUE(expected.contains(uid)) << "row " << uid << " was never reported saved";
        const LogLine &want = expected[uid].line;
        const bool item = want.op.endsWith(QLatin1String("item"));
        ++found;
        EXPECT_EQ(rows.value(rows.fieldIndex(item ? QStringLiteral("SL") : QStringLiteral("Dept"))).toString(), want.key) << uid;
        EXPECT_EQ(rows.value(rows.fieldIndex(QStringLiteral("StartDate"))).toDateTime().date(), want.start) << uid;
        EXPECT_EQ(rows.value(rows.fieldIndex(QStringLiteral("EndDate"))).toDateTime().date(), want.end) << uid;
        EXPECT_EQ(rows.value(rows.fieldIndex(QStringLiteral("ChangeType"))).toInt(), want.changeType) << uid;
        EXPECT_EQ(rows.readMoney(rows.fieldIndex(QStringLiteral("PriceChange"))), want.amount) << uid;
    }
    EXPECT_EQ(found, expected.size()) << "rows told saved are missing";
    EXPECT_TRUE(column(QStringLiteral("SELECT UniqueID FROM PromoPrices GROUP BY UniqueID HAVING COUNT(*) > 1")).isEmpty());
    EXPECT_EQ(column(QStringLiteral("SELECT COUNT(*) FROM invt1 WHERE (FlgPromoPrice IS NULL OR FlgPromoPrice <> 'Y') "
                                    "AND RecordNum IN (SELECT Invuid FROM PromoPrices WHERE UniqueID > %1)").arg(baseline)),
              QStringList{QStringLiteral("0")});
    std::printf("soak: engine=%s stations=%d seconds=%g operations=%d saved=%d failed=%d (duplicate key %d, other %d) "
                "written-then-refused-flag=%d rows-checked=%d lost=%d\n",
                TestDatabase::onPostgres() ? "postgres" : "sqlite", stations, soakSeconds(), tally.operations, tally.saved,
                tally.failed, tally.duplicateKey, tally.conflict, tally.failedFlag, found, tally.lost);
    for (const QString &text : told)
        std::printf("  told: %s\n", qPrintable(text));
}

} // namespace

// Whatever a station was told was saved is in the table as it wrote it; whatever failed was
// told, with the system's message, and left nothing behind.
TEST_F(Soak, EightStationsOnTheServer)
{
    if (!TestDatabase::onPostgres())
        GTEST_SKIP() << "needs the PostgreSQL server (QUILLON_TEST_PG); the SQLite soak is TwoStationsOnOneFile";
    run(8);
}

// Two writers on one embedded file: "database is locked" is waited out or told, never lost.
TEST_F(Soak, TwoStationsOnOneFile)
{
    if (TestDatabase::onPostgres())
        GTEST_SKIP() << "the embedded file only; the server soak is EightStationsOnTheServer";
    run(2);
}
