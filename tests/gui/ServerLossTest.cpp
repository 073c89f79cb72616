// The program against a PostgreSQL server that goes away and comes back: a cluster of the
// test's own, stopped and started under the running windows.
#include "promo/frmMain.h"

#include "DemoData.h"
#include "common/DateForms.h"
#include "common/ProcessState.h"
#include "platform/Clock.h"
#include "platform/ModalRunner.h"
#include "platform/Settings.h"
#include "promo/PromoList.h"
#include "shell/ProcessReset.h"
#include "shell/Startup.h"
#include "store/Common.h"
#include "store/RecordOps.h"
#include "support/OwnServer.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

const QDate kToday(2025, 5, 14);
const QString kSL = QStringLiteral("10000007");
constexpr int kPause = 300;

// Boxes answered by their default button, each one seen first by `act`.
class ActingMessages final : public Messages {
public:
    explicit ActingMessages(std::function<void(const MessageBoxSpec &)> act) : m_act(std::move(act)) { installMessages(this); }
    ~ActingMessages() override { installMessages(nullptr); }
    MsgAnswer show(const MessageBoxSpec &box) override
    {
        shown << box;
        m_act(box);
        return defaultAnswer(box);
    }
    QList<MessageBoxSpec> shown;

private:
    std::function<void(const MessageBoxSpec &)> m_act;
};

bool isConnectionError(const MessageBoxSpec &box)
{
    return box.title == QLatin1String("Database Connection Error") && box.text == QLatin1String("Failed to connect to database. ");
}

class ServerLoss : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!TestDatabase::onPostgres() || !OwnServer::available())
            GTEST_SKIP() << "needs a PostgreSQL server of its own";
        server = std::make_unique<OwnServer>();
        ASSERT_TRUE(server->running());
        db = std::make_unique<TestDatabase>();
        gpProcess_reset();
        Clock::setFixed(QDateTime(kToday, QTime(10, 30)));
        Connection::setReconnectPause(kPause);
        gsAppPath = program.path();
    }
    void TearDown() override
    {
        if (!server)
            return;
        if (!server->running())
            server->start();
        gpProcess_reset();
        Clock::setFixed(QDateTime());
        Connection::setReconnectPause(1000);
        db.reset(); // while its server still runs
    }

    void build(int items, int promos, const QString &database = QString())
    {
        demo::DemoOptions o = demo::gfDemo_options(db->info(), db->dataPath(), items);
        o.promos = promos;
        if (!database.isEmpty())
            o.database = database;
        demo::DemoReport report;
        QString error;
        ASSERT_TRUE(demo::gfbDemo_build(o, report, error)) << error.toStdString();
        gpProcess_reset();
    }
    void open()
    {
        ASSERT_TRUE(gfbStartup_prepare(QStringLiteral("/DATAPATH=") + db->dataPath()));
        ASSERT_GT(gfiDB_Execute(QStringLiteral("UPDATE invt1 SET AllowDiscounts='Y', Price=10, Cost=6 WHERE SL='10000007'")), 0);
        gCommon.MultiStore = QStringLiteral("N");
    }
    static QList<PromoPriceRecord> itemPromos()
    {
        QList<PromoPriceRecord> rows;
        EXPECT_TRUE(gfbPromo_rows_read(QStringLiteral("SELECT * FROM PromoPrices WHERE SL='10000007' ORDER BY UniqueID"), rows));
        return rows;
    }
    std::unique_ptr<frmMain> openOnItem()
    {
        gbItemMode = true;
        gsSL = kSL;
        auto form = std::make_unique<frmMain>();
        form->show();
        return form;
    }
    // F2, a promo of 25 percent from today, F10; true when the editor closed (saved).
    static bool addPromo(frmMain &form, int days)
    {
        bool closed = false;
        ScopedModalScript script([&](QDialog &editor) {
            editor.findChild<QRadioButton *>(QStringLiteral("Option1(2)"))->click();
            auto type = [&](int box, const QString &text) {
                QLineEdit *edit = editor.findChild<QLineEdit *>(QStringLiteral("txtEdit(%1)").arg(box));
                edit->clear();
                QTest::keyClicks(edit, text);
            };
            type(5, QStringLiteral("25"));
            type(1, gfsDate_short(kToday, QStringLiteral("N")));
            type(2, gfsDate_short(kToday.addDays(days), QStringLiteral("N")));
            QTest::keyClick(&editor, Qt::Key_F10);
            closed = !editor.isVisible();
        });
        QTest::keyClick(&form, Qt::Key_F2);
        return closed;
    }

    std::unique_ptr<OwnServer> server;
    std::unique_ptr<TestDatabase> db;
    QTemporaryDir program;
};

} // namespace

TEST_F(ServerLoss, ASaveWhileTheServerIsDownIsToldAndTheNextOneAfterItsReturnIsKept)
{
    build(60, 0);
    open();
    auto form = openOnItem();

    // A fast stop says goodbye to its sessions; an immediate one just goes.
    for (const bool immediate : {false, true}) {
        SCOPED_TRACE(immediate ? "immediate stop" : "fast stop");
        gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices"));
        ASSERT_TRUE(server->stop(immediate));
        {
            ScriptedMessages boxes;
            EXPECT_FALSE(addPromo(*form, 10)) << "the editor stays open on a failed save";
            ASSERT_FALSE(boxes.shown().isEmpty());
            EXPECT_TRUE(isConnectionError(boxes.shown()[0])) << boxes.texts().join(QLatin1Char('|')).toStdString();
            EXPECT_EQ(boxes.shown()[0].icon, MsgIcon::Critical);
        }

        ASSERT_TRUE(server->start());
        QTest::qWait(kPause + 50);
        ScriptedMessages boxes;
        EXPECT_TRUE(addPromo(*form, 20));
        EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('|')).toStdString();
        const QList<PromoPriceRecord> rows = itemPromos();
        ASSERT_EQ(rows.size(), 1) << "only the save the user was told of";
        EXPECT_EQ(rows[0].EndDate.date(), kToday.addDays(20));
        EXPECT_EQ(rows[0].PriceChange, Money::fromWhole(25));
    }
}

TEST_F(ServerLoss, AfterAReconnectTheTablesAreFreshAndNoUpdateLandsOnAnotherRow)
{
    build(20, 0);
    open();
    gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices"));
    for (int i = 1; i <= 3; ++i) {
        gpPromo_clear();
        gPromo.SL = kSL, gPromo.Store = 1, gPromo.UniqueID = i, gPromo.Poll = QStringLiteral("Y");
        gPromo.StartDate = QDateTime(kToday, QTime(0, 0)), gPromo.EndDate = QDateTime(kToday.addDays(i), QTime(0, 0));
        gPromo.PriceChange = Money::fromWhole(i);
        ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpInsert));
    }
    const auto readThird = [] {
        gpPromo_clear();
        gPromo.SL = kSL, gPromo.EndDate = QDateTime(kToday.addDays(3), QTime(0, 0));
        return gfbDB_RecordOp(kPromoTable, kOpEqual, 0) && gPromo.UniqueID == 3;
    };
    const auto changes = [] {
        QList<int> list;
        for (const PromoPriceRecord &p : itemPromos())
            list << int(p.PriceChange.units() / 10000);
        return list;
    };
    ASSERT_TRUE(readThird());

    ASSERT_TRUE(server->stop());
    ASSERT_TRUE(server->start());
    {
        ScriptedMessages boxes;
        gPromo.PriceChange = Money::fromWhole(9);
        EXPECT_FALSE(gfbDB_RecordOp(kPromoTable, kOpUpdate)) << "the first statement finds the server gone";
        EXPECT_EQ(boxes.shown().size(), 1);
        EXPECT_TRUE(!boxes.shown().isEmpty() && isConnectionError(boxes.shown()[0]))
            << boxes.texts().join(QLatin1Char('|')).toStdString();
        QTest::qWait(kPause + 50);
        // The next action reconnects on fresh record sets: the row read before is not one of them.
        EXPECT_FALSE(gfbDB_RecordOp(kPromoTable, kOpUpdate));
        EXPECT_EQ(gDBErr().number, DbError::kRowChanged);
        EXPECT_EQ(boxes.shown().size(), 1);
    }
    EXPECT_EQ(changes(), (QList<int>{1, 2, 3})) << "nothing written";
    ASSERT_TRUE(readThird());
    gPromo.PriceChange = Money::fromWhole(9);
    EXPECT_TRUE(gfbDB_RecordOp(kPromoTable, kOpUpdate));
    EXPECT_EQ(changes(), (QList<int>{1, 2, 9}));
}

TEST_F(ServerLoss, AServerKilledDuringTheAllItemsFillCostsAMessageNotTheRun)
{
    build(3000, 3000);
    open();
    auto form = openOnItem();
    form->findChild<QCheckBox *>(QStringLiteral("chkExpired"))->setChecked(true);
    const int before = int(itemPromos().size());

    {
        ScriptedMessages boxes;
        // The first event the fill lets through kills the server under it.
        QTimer::singleShot(0, [&] { server->stop(true); });
        QTest::keyClick(form.get(), Qt::Key_F4);
        ASSERT_FALSE(server->running()) << "the fill ended before the server was killed";
        ASSERT_FALSE(boxes.shown().isEmpty());
        EXPECT_TRUE(isConnectionError(boxes.shown()[0])) << boxes.texts().join(QLatin1Char('|')).toStdString();
    }

    ASSERT_TRUE(server->start());
    QTest::qWait(kPause + 50);
    ScriptedMessages boxes;
    auto again = openOnItem();
    EXPECT_TRUE(addPromo(*again, 5));
    EXPECT_EQ(int(itemPromos().size()), before + 1);
}

TEST_F(ServerLoss, AServerDownAtStartIsToldUntilItAnswers)
{
    build(20, 0);
    ASSERT_TRUE(server->stop());
    int databaseErrors = 0;
    ActingMessages boxes([&](const MessageBoxSpec &box) {
        if (box.text.startsWith(QLatin1String("Database Error\r")) && ++databaseErrors == 2)
            server->start();
    });
    EXPECT_TRUE(gfbStartup_prepare(QStringLiteral("/DATAPATH=") + db->dataPath()));
    ASSERT_GE(boxes.shown.size(), 3);
    EXPECT_EQ(boxes.shown[0].title, QStringLiteral("ZOR MSDE"));
    EXPECT_EQ(databaseErrors, 2) << "the box comes back until the server answers";
    for (const MessageBoxSpec &box : std::as_const(boxes.shown))
        EXPECT_FALSE(box.text.startsWith(QLatin1String("Database not found."))) << "the server was there all along";
    EXPECT_EQ(gCommon.StoreNumber, 1);
}

TEST_F(ServerLoss, ADatabaseIsFoundWhateverTheCaseOfItsName)
{
    const QString upper = QStringLiteral("QLN_CASE_%1").arg(QCoreApplication::applicationPid());
    build(20, 0, upper); // the builder names it in capitals, the server keeps it in small letters
    for (const QString &name : {upper, upper.toLower()}) {
        SaveSetting(kZorSettings, QStringLiteral("DATABASE"), QStringLiteral("DBName"), name);
        ScriptedMessages boxes;
        EXPECT_TRUE(gfbStartup_prepare(QStringLiteral("/DATAPATH=") + db->dataPath())) << name.toStdString();
        EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('|')).toStdString();
        EXPECT_EQ(gCommon.StoreNumber, 1);
        gpProcess_reset();
    }
    Connection admin;
    ConnectionInfo info = db->info();
    info.database = QStringLiteral("postgres");
    ASSERT_TRUE(admin.open(info));
    admin.execute(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(upper));
}
