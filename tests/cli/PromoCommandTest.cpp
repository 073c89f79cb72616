// quillon-promo as a user meets it: the real command as a process, on the demo store of the
// engine under test, reading what it prints and how it exits.
#include "promo/PromoPricing.h"
#include "support/DemoStore.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

using namespace qln;
using namespace qln::test;

namespace {

const QDate kDay(2026, 5, 14);
const QDate kFar(2099, 1, 1); // ends after any day these tests run on
const QString kSL = QStringLiteral("10000007");
constexpr qint32 kInvuid = 18; // demo items are numbered from 11
const QString kDept = QStringLiteral("001.002.003");

struct Outcome {
    int code = -1;
    QString out, err;
};

class PromoCommand : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(gfDemoStore_open(db, program.path(), QDateTime(kDay, QTime(9, 0)), 30));
        ASSERT_GT(gfiDB_Execute(QStringLiteral("UPDATE invt1 SET AllowDiscounts='Y', Price=10, DeptCode='001.002.003' "
                                               "WHERE SL='10000007'")), 0);
        ASSERT_GT(gfiDB_Execute(QStringLiteral("UPDATE invt1 SET AllowDiscounts='N', Price=20, DeptCode='001.002.003' "
                                               "WHERE SL='10000008'")), 0);
    }
    void TearDown() override
    {
        gpProcess_reset();
        Clock::setFixed(QDateTime());
    }

    // A row as the editors write it; the kind follows from sl, dept and groupId.
    void add(const QString &sl, qint32 invuid, const QString &dept, qint32 groupId, QDate start, QDate end, int type,
             Money change, const QString &poll = QStringLiteral("Y"))
    {
        gpPromo_clear();
        gPromo.Store = 1, gPromo.SL = sl, gPromo.Invuid = invuid, gPromo.Dept = dept, gPromo.GroupID = groupId;
        gPromo.StartDate = QDateTime(start, QTime(0, 0)), gPromo.EndDate = QDateTime(end, QTime(0, 0));
        gPromo.ChangeDate = QDateTime(kDay, QTime(0, 0));
        gPromo.ChangeType = qint16(type), gPromo.PriceChange = change, gPromo.Poll = poll;
        gPromo.UniqueID = gfiPromo_UniqueID_next(kPromoTable);
        ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpInsert)) << gsDBLastError.toStdString();
    }
    // On kDay: an item, a department, a group and a daily promo on the first item; a tombstone.
    void addFourOnOneDay()
    {
        add(kSL, kInvuid, QString(), 0, kDay.addDays(-3), kDay, kChangeByPercent, Money::fromWhole(10));           // 9.00
        add(QString(), 0, kDept, 0, kDay, kDay.addDays(5), kChangeBy, Money::fromUnits(15000));                   // 8.50
        add(kSL, kInvuid, QString(), 7, kDay.addDays(-1), kDay.addDays(1), kChangeTo, Money::fromUnits(72500));   // 7.25
        add(QString(), 0, QString(), -1, kDay, kDay, kChangeByPercent, Money::fromWhole(20));                     // 8.00
        add(kSL, kInvuid, QString(), 0, kDay, kDay, kChangeDeleted, Money::fromWhole(5));
    }

    Outcome run(const QStringList &arguments, bool withDataPath = true) const
    {
        QProcess process;
        process.setStandardInputFile(QProcess::nullDevice()); // it must never wait for input
        process.start(QStringLiteral(QUILLON_PROMO_EXE),
                      (withDataPath ? QStringList{QStringLiteral("--datapath"), db.dataPath()} : QStringList()) + arguments);
        Outcome r;
        if (!process.waitForFinished(60000))
            return r;
        r.code = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        r.out = QString::fromUtf8(process.readAllStandardOutput());
        r.err = QString::fromUtf8(process.readAllStandardError());
        return r;
    }

    TestDatabase db;
    QTemporaryDir program;
};

QStringList linesOf(const QString &text, const QString &start)
{
    QStringList found;
    for (const QString &line : text.split(QLatin1Char('\n')))
        if (line.startsWith(start))
            found << line.simplified();
    return found;
}

} // namespace

TEST_F(PromoCommand, ExplainListsEveryKindThatReachesTheItemAndPicksTheLowest)
{
    addFourOnOneDay();
    add(kSL, kInvuid, QString(), 1003, kDay.addDays(1), kDay.addDays(9), kChangeTo, Money::fromWhole(1)); // not yet
    add(QString(), 0, QStringLiteral("001.002.000"), 0, kDay, kDay, kChangeTo, Money::fromWhole(1));     // another dept

    const Outcome shown = run({QStringLiteral("explain"), QStringLiteral("1000000.7"), QStringLiteral("--on"), QStringLiteral("2026-05-14")});
    ASSERT_EQ(shown.code, 0) << shown.err.toStdString();
    EXPECT_TRUE(shown.err.isEmpty()) << shown.err.toStdString();
    const QStringList rows = linesOf(shown.out, QStringLiteral("  ")) + linesOf(shown.out, QStringLiteral("* "));
    ASSERT_EQ(rows.size(), 5) << shown.out.toStdString(); // the header and four promos
    const QString all = rows.join(QLatin1Char('\n'));
    EXPECT_TRUE(all.contains(QStringLiteral("item the item 2026-05-11 2026-05-14 By Percent 10.00% 9.00"))) << all.toStdString();
    EXPECT_TRUE(all.contains(QStringLiteral("dept department 001.002.003 2026-05-14 2026-05-19 By 1.50 8.50"))) << all.toStdString();
    EXPECT_TRUE(all.contains(QStringLiteral("* group group 7 2026-05-13 2026-05-15 To 7.25 7.25"))) << all.toStdString();
    EXPECT_TRUE(all.contains(QStringLiteral("daily daily promo -1 2026-05-14 2026-05-14 By Percent 20.00% 8.00"))) << all.toStdString();
    EXPECT_TRUE(shown.out.contains(QStringLiteral("Best deal (*): 7.25, by the group promo"))) << shown.out.toStdString();
    EXPECT_TRUE(shown.out.contains(QStringLiteral("regular price 10.00")));

    // The item as stored names it the same; a day with nothing says so.
    EXPECT_EQ(run({QStringLiteral("explain"), kSL, QStringLiteral("--on"), QStringLiteral("2026-05-14")}).out, shown.out);
    const Outcome quiet = run({QStringLiteral("explain"), kSL, QStringLiteral("--on=2026-06-30")});
    EXPECT_EQ(quiet.code, 0);
    EXPECT_TRUE(quiet.out.contains(QStringLiteral("No promo reaches this item on 2026-06-30: the regular price 10.00 applies.")))
        << quiet.out.toStdString();

    // An item that takes no discount is reached by the department and the day all the same,
    // and says that none applies.
    const Outcome refused = run({QStringLiteral("explain"), QStringLiteral("10000008"), QStringLiteral("--on"), QStringLiteral("2026-05-14")});
    EXPECT_EQ(refused.code, 0) << refused.err.toStdString();
    EXPECT_TRUE(refused.out.contains(QStringLiteral("This item takes no discount: the regular price 20.00 applies.")))
        << refused.out.toStdString();
    EXPECT_FALSE(refused.out.contains(QStringLiteral("Best deal")));
    EXPECT_FALSE(refused.out.contains(QStringLiteral("* ")));
}

TEST_F(PromoCommand, ExplainRefusesWhatIsNoItemOrNoDay)
{
    const Outcome unknown = run({QStringLiteral("explain"), QStringLiteral("9999999.9")});
    EXPECT_EQ(unknown.code, 1);
    EXPECT_TRUE(unknown.err.contains(QStringLiteral("no item 9999999.9"))) << unknown.err.toStdString();
    EXPECT_TRUE(unknown.out.isEmpty());

    for (const QStringList &bad : {QStringList{QStringLiteral("explain"), kSL, QStringLiteral("--on"), QStringLiteral("2026-02-31")},
                                   QStringList{QStringLiteral("explain"), kSL, QStringLiteral("--on"), QStringLiteral("31/02/2026")},
                                   QStringList{QStringLiteral("explain"), QStringLiteral("O'Brien")},
                                   QStringList{QStringLiteral("explain")},
                                   QStringList{QStringLiteral("explain"), kSL, QStringLiteral("10000008")}}) {
        const Outcome r = run(bad);
        EXPECT_EQ(r.code, 2) << bad.join(QLatin1Char(' ')).toStdString() << ": " << r.err.toStdString();
        EXPECT_TRUE(r.err.startsWith(QStringLiteral("quillon-promo explain: "))) << r.err.toStdString();
        EXPECT_TRUE(r.out.isEmpty());
    }
}

TEST_F(PromoCommand, ListWritesCsvThatQuotesAndKeepsLettersAndFiltersByKindDayAndEnd)
{
    addFourOnOneDay();
    add(QStringLiteral("Ü,\"1"), 0, QString(), 0, kDay, kFar, kChangeTo, Money::fromUnits(35000), QStringLiteral(" "));
    add(QString(), 0, QStringLiteral("004.000.000"), -3, kDay.addDays(1), kFar, kChangeByPercent, Money::fromUnits(125000));

    const Outcome live = run({QStringLiteral("list"), QStringLiteral("--format"), QStringLiteral("csv")});
    ASSERT_EQ(live.code, 0) << live.err.toStdString();
    EXPECT_EQ(live.out,
              QStringLiteral("Kind,Store,SL,Dept,GroupID,StartDate,EndDate,ChangeType,PriceChange,PromoPrice,Poll,UniqueID\r\n"
                             "item,1,\"Ü,\"\"1\",,0,2026-05-14,2099-01-01,0,3.5,3.5,,6\r\n"
                             "dept,1,,004.000.000,-3,2026-05-15,2099-01-01,2,12.5,,Y,7\r\n"))
        << "only what has not ended; no price for a percentage of a department";

    const Outcome all = run({QStringLiteral("list"), QStringLiteral("--expired"), QStringLiteral("--format=csv")});
    ASSERT_EQ(all.code, 0) << all.err.toStdString();
    EXPECT_EQ(all.out.count(QStringLiteral("\r\n")), 7) << "the header and six rows; the tombstone left out";
    EXPECT_TRUE(all.out.contains(QStringLiteral("item,1,10000007,,0,2026-05-11,2026-05-14,2,10,9,Y,1\r\n"))) << all.out.toStdString();
    EXPECT_TRUE(all.out.contains(QStringLiteral("group,1,10000007,,7,2026-05-13,2026-05-15,0,7.25,7.25,Y,3\r\n")));
    EXPECT_TRUE(all.out.contains(QStringLiteral("daily,1,,,-1,2026-05-14,2026-05-14,2,20,,Y,4\r\n")));

    const Outcome onDay = run({QStringLiteral("list"), QStringLiteral("--on"), QStringLiteral("2026-05-14"), QStringLiteral("--format"),
                               QStringLiteral("csv")});
    EXPECT_EQ(onDay.out.count(QStringLiteral("\r\n")), 6) << onDay.out.toStdString(); // the four and the row that starts that day
    const Outcome dept = run({QStringLiteral("list"), QStringLiteral("--expired"), QStringLiteral("--kind"), QStringLiteral("dept"),
                              QStringLiteral("--format"), QStringLiteral("csv")});
    const QStringList deptLines = dept.out.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    ASSERT_EQ(deptLines.size(), 3) << dept.out.toStdString();
    EXPECT_TRUE(deptLines[1].startsWith(QStringLiteral("dept,1,,001.002.003,")));
    EXPECT_TRUE(deptLines[2].startsWith(QStringLiteral("dept,1,,004.000.000,")));
}

TEST_F(PromoCommand, ListAsJsonAndAsATable)
{
    addFourOnOneDay();
    add(QStringLiteral("Ü,\"1"), 0, QString(), 0, kDay, kFar, kChangeTo, Money::fromUnits(35000), QStringLiteral(" "));

    const Outcome json = run({QStringLiteral("list"), QStringLiteral("--expired"), QStringLiteral("--format"), QStringLiteral("json")});
    ASSERT_EQ(json.code, 0) << json.err.toStdString();
    QJsonParseError error;
    const QJsonArray rows = QJsonDocument::fromJson(json.out.toUtf8(), &error).array();
    ASSERT_EQ(error.error, QJsonParseError::NoError) << json.out.toStdString();
    ASSERT_EQ(rows.size(), 5);
    const QJsonObject odd = rows.last().toObject();
    EXPECT_EQ(odd.value(QStringLiteral("SL")).toString(), QStringLiteral("Ü,\"1"));
    EXPECT_EQ(odd.value(QStringLiteral("Kind")).toString(), QStringLiteral("item"));
    EXPECT_EQ(odd.value(QStringLiteral("PriceChange")).toString(), QStringLiteral("3.5"));
    EXPECT_EQ(odd.value(QStringLiteral("UniqueID")).toInt(), 6);
    EXPECT_TRUE(rows.at(3).toObject().value(QStringLiteral("PromoPrice")).isNull()) << "the daily promo";
    EXPECT_EQ(run({QStringLiteral("list"), QStringLiteral("--kind"), QStringLiteral("matrix"), QStringLiteral("--format"),
                   QStringLiteral("json")}).out,
              QStringLiteral("[]\n"));

    const Outcome table = run({QStringLiteral("list"), QStringLiteral("--expired")});
    ASSERT_EQ(table.code, 0) << table.err.toStdString();
    const QStringList lines = table.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 7) << table.out.toStdString();
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("Kind")));
    EXPECT_EQ(lines[2].simplified(), QStringLiteral("group 1000000.7 (7) 2026-05-13 2026-05-15 To 7.25 7.25 Y 3"));
    EXPECT_EQ(lines[6], QStringLiteral("5 promos"));
    // Columns line up: each row's start date sits under the header's.
    const qsizetype starts = lines[0].indexOf(QStringLiteral("Starts"));
    for (int i = 1; i < 6; ++i)
        EXPECT_EQ(lines[i].mid(starts, 4), QStringLiteral("2026")) << lines[i].toStdString();
}

TEST_F(PromoCommand, HelpAndUsageAnswerWithoutTheDatabaseAndBadPathsAreRefused)
{
    const Outcome help = run({QStringLiteral("--help")}, false);
    EXPECT_EQ(help.code, 0);
    EXPECT_TRUE(help.out.startsWith(QStringLiteral("Usage: quillon-promo"))) << help.out.toStdString();
    EXPECT_TRUE(help.out.contains(QStringLiteral("  list ")) && help.out.contains(QStringLiteral("  explain ")));
    for (const QString &verb : {QStringLiteral("list"), QStringLiteral("explain")}) {
        const Outcome own = run({verb, QStringLiteral("--help")}, false);
        EXPECT_EQ(own.code, 0);
        EXPECT_TRUE(own.out.startsWith(QStringLiteral("Usage: quillon-promo ") + verb)) << own.out.toStdString();
    }

    for (const QStringList &bad : {QStringList{}, QStringList{QStringLiteral("lst")}, QStringList{QStringLiteral("--bogus"), QStringLiteral("list")},
                                   QStringList{QStringLiteral("list"), QStringLiteral("--bogus")},
                                   QStringList{QStringLiteral("list"), QStringLiteral("--kind"), QStringLiteral("items")},
                                   QStringList{QStringLiteral("list"), QStringLiteral("--format"), QStringLiteral("xml")},
                                   QStringList{QStringLiteral("list"), QStringLiteral("--on")},
                                   QStringList{QStringLiteral("list"), QStringLiteral("--on"), QStringLiteral("2026-5-14")},
                                   QStringList{QStringLiteral("list"), QStringLiteral("extra")}}) {
        const Outcome r = run(bad);
        EXPECT_EQ(r.code, 2) << bad.join(QLatin1Char(' ')).toStdString();
        EXPECT_TRUE(r.err.startsWith(QStringLiteral("quillon-promo"))) << r.err.toStdString();
        EXPECT_TRUE(r.out.isEmpty()) << r.out.toStdString();
    }

    // A data path that is not there: the start-up's own words on stderr, no wait for an answer.
    const Outcome lost = run({QStringLiteral("--datapath"), db.dataPath() + QStringLiteral("/nowhere"), QStringLiteral("list")}, false);
    EXPECT_EQ(lost.code, 1) << lost.err.toStdString();
    EXPECT_TRUE(lost.out.isEmpty());
    EXPECT_TRUE(lost.err.contains(QStringLiteral("quillon-promo"))) << lost.err.toStdString();
}

// A listing changes nothing on disk: not the data path's ZOR.INI, not the start-up trace in the
// command's own folder (a copy here, so that the folder is this test's alone). A verb that
// writes still starts up as the program does.
TEST_F(PromoCommand, ReadingVerbsLeaveTheProgramFilesAlone)
{
    addFourOnOneDay();
    QTemporaryDir folder;
    const QString command = folder.filePath(QStringLiteral("quillon-promo")), trace = folder.filePath(QStringLiteral("52.txt"));
    ASSERT_TRUE(QFile::copy(QStringLiteral(QUILLON_PROMO_EXE), command));
    const auto runCopy = [&](const QStringList &arguments) {
        QProcess process;
        process.setStandardInputFile(QProcess::nullDevice());
        process.start(command, QStringList{QStringLiteral("--datapath"), db.dataPath()} + arguments);
        EXPECT_TRUE(process.waitForFinished(60000));
        return QString::fromUtf8(process.readAllStandardOutput());
    };
    const QString ini = db.file(QStringLiteral("ZOR.INI"));
    const QByteArray iniBefore = db.readFile(QStringLiteral("ZOR.INI")).toUtf8();
    const QDateTime iniTime = QFileInfo(ini).lastModified();

    EXPECT_EQ(runCopy({QStringLiteral("list"), QStringLiteral("--kind"), QStringLiteral("matrix"), QStringLiteral("--format"),
                       QStringLiteral("csv")}),
              QStringLiteral("Kind,Store,SL,Dept,GroupID,StartDate,EndDate,ChangeType,PriceChange,PromoPrice,Poll,UniqueID\r\n"))
        << "no row still gives the header";
    EXPECT_EQ(linesOf(runCopy({QStringLiteral("list"), QStringLiteral("--expired"), QStringLiteral("--format"), QStringLiteral("csv")}),
                      QStringLiteral("item,"))
                  .size(),
              1);
    EXPECT_TRUE(runCopy({QStringLiteral("explain"), kSL, QStringLiteral("--on"), kDay.toString(Qt::ISODate)}).contains(QStringLiteral("7.25")));
    EXPECT_FALSE(QFile::exists(trace));
    EXPECT_EQ(db.readFile(QStringLiteral("ZOR.INI")).toUtf8(), iniBefore);
    EXPECT_EQ(QFileInfo(ini).lastModified(), iniTime);

    runCopy({QStringLiteral("shift"), QStringLiteral("--kind"), QStringLiteral("item"), QStringLiteral("--from"), kDay.toString(Qt::ISODate),
             QStringLiteral("--to"), kDay.toString(Qt::ISODate), QStringLiteral("--days"), QStringLiteral("7"), QStringLiteral("--dry-run")});
    EXPECT_TRUE(QFile::exists(trace));
}

// The command is the proof that the library stands without windows: nothing of the window
// system may come into it.
TEST(PromoCommandLink, TakesNoWindowLibrary)
{
    QProcess ldd;
    ldd.start(QStringLiteral("ldd"), {QStringLiteral(QUILLON_PROMO_EXE)});
    ASSERT_TRUE(ldd.waitForFinished(30000));
    const QString libraries = QString::fromLocal8Bit(ldd.readAllStandardOutput());
    ASSERT_TRUE(libraries.contains(QStringLiteral("libQt6Core"))) << libraries.toStdString();
    EXPECT_FALSE(libraries.contains(QStringLiteral("libQt6Widgets"))) << libraries.toStdString();
    EXPECT_FALSE(libraries.contains(QStringLiteral("libQt6Gui"))) << libraries.toStdString();
}
