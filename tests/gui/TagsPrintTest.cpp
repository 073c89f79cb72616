// The tag link window, driven as a user drives it, with a stand-in tag program that notes
// what it was handed.
#include "promo/frmTags_Print.h"

#include "output/PrintState.h"
#include "output/frmSMPRNT_PREVIEW.h"

#include "DemoData.h"
#include "common/ProcessState.h"
#include "platform/Clock.h"
#include "platform/Connection.h"
#include "platform/ModalRunner.h"
#include "platform/Recordset.h"
#include "platform/Settings.h"
#include "promo/PromoPricing.h"
#include "promo/TagLink.h"
#include "shell/ProcessReset.h"
#include "shell/Startup.h"
#include "store/Common.h"
#include "store/Database.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

const QDate kToday(2026, 11, 22);

template <typename T> T *child(QWidget &form, const QString &name)
{
    T *widget = form.findChild<T *>(name);
    EXPECT_NE(widget, nullptr) << name.toStdString();
    return widget;
}
QLineEdit *txtEdit(QWidget &f, int i) { return child<QLineEdit>(f, QStringLiteral("txtEdit(%1)").arg(i)); }
QPushButton *cmd(QWidget &f, const char *name) { return child<QPushButton>(f, QString::fromLatin1(name)); }
QListWidget *list(QWidget &f) { return child<QListWidget>(f, QStringLiteral("lstPromos")); }

QStringList lines(QWidget &f)
{
    QStringList texts;
    for (int i = 0; i < list(f)->count(); ++i)
        texts << list(f)->item(i)->text();
    return texts;
}

// Types both dates and presses Enter in each box, which accepts from the second.
void enterDates(QWidget &form, const QString &start, const QString &end)
{
    for (int i = 0; i < 2; ++i) {
        txtEdit(form, i)->clear();
        QTest::keyClicks(txtEdit(form, i), i == 0 ? start : end);
        QTest::keyClick(txtEdit(form, i), Qt::Key_Return);
    }
}

void typeIntoBoth(QWidget &form, const QString &start, const QString &end)
{
    for (int i = 0; i < 2; ++i)
        txtEdit(form, i)->setText(i == 0 ? start : end);
}

QString line(qint32 item, const char *description, const char *price)
{
    return gfsTagLine_make(item, QString::fromLatin1(description), QString::fromLatin1(price));
}

QByteArray contents(const QString &file)
{
    QFile f(file);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

class TagsPrint : public ::testing::Test {
protected:
    void SetUp() override
    {
        gpProcess_reset();
        Clock::setFixed(QDateTime(kToday, QTime(10, 30)));
        demo::DemoOptions o = demo::gfDemo_options(db.info(), db.dataPath(), 200);
        demo::DemoReport report;
        QString error;
        ASSERT_TRUE(demo::gfbDemo_build(o, report, error)) << error.toStdString();
        gpProcess_reset();
        ASSERT_TRUE(gfbStartup_prepare(QStringLiteral("/DATAPATH=") + db.dataPath() +
                                       QStringLiteral(" /STATION=3 /MVSC=CLERK7")));
        gsAppPath = program.path();
        boxes.clear();
    }
    void TearDown() override
    {
        gpProcess_reset();
        Clock::setFixed(QDateTime());
    }

    // The demo's promos make way for the rows a test writes.
    static void clearPromos() { gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices")); }
    static void addItem(qint32 recordNum, const char *description, const char *price)
    {
        gpInventory_Clear();
        gInventory.SL = QStringLiteral("T%1").arg(recordNum, 7, 10, QLatin1Char('0'));
        gInventory.RecordNum = recordNum;
        gInventory.ItemID = gInventory.SL.leftJustified(25);
        gInventory.Description = QString::fromLatin1(description).leftJustified(30);
        gInventory.Price = *Money::parse(QString::fromLatin1(price));
        ASSERT_TRUE(gfbDB_RecordOp(kInventoryTable, kOpInsert)) << gsDBLastError.toStdString();
    }
    static void addPromo(qint32 invuid, QDate start, QDate end, int type, const char *change, const char *dept = "")
    {
        static qint32 uniqueId = 0;
        gpPromo_clear();
        gPromo.Store = 1, gPromo.Invuid = invuid, gPromo.UniqueID = ++uniqueId;
        gPromo.SL = invuid ? QStringLiteral("T%1").arg(invuid, 7, 10, QLatin1Char('0')) : QString(8, QLatin1Char(' '));
        gPromo.Dept = QString::fromLatin1(dept).leftJustified(11);
        gPromo.StartDate = QDateTime(start, QTime(0, 0)), gPromo.EndDate = QDateTime(end, QTime(0, 0));
        gPromo.ChangeDate = QDateTime(kToday, QTime(0, 0));
        gPromo.ChangeType = qint16(type), gPromo.PriceChange = *Money::parse(QString::fromLatin1(change));
        gPromo.Poll = QStringLiteral("Y");
        ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpInsert)) << gsDBLastError.toStdString();
    }
    // A tag program that notes its arguments and how many it had, after a pause that a
    // caller not waiting for it would miss.
    void installTagProgram()
    {
        const QString name = QDir(program.path()).filePath(kTagProgram);
        QFile script(name);
        ASSERT_TRUE(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\nsleep 0.3\ndir=$(dirname \"$0\")\nprintf '%s' \"$1\" > \"$dir/args.txt\"\n"
                     "echo \"$#\" >> \"$dir/runs.txt\"\n");
        script.close();
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QString programFile(const char *name) const { return QDir(program.path()).filePath(QString::fromLatin1(name)); }

    // Shows the window with `user` playing it; returns once it is unloaded.
    void play(const std::function<void(QDialog &)> &user)
    {
        frmTags_Print form;
        ScopedModalScript script([&](QDialog &shown) {
            if (shown.objectName() != QStringLiteral("frmTags_Print"))
                return calendar ? calendar(shown) : void();
            EXPECT_TRUE(QTest::qWaitForWindowActive(&shown));
            user(shown);
        });
        gfiForm_show_modal(form);
    }

    TestDatabase db;
    QTemporaryDir program;
    ScriptedMessages boxes;
    std::function<void(QDialog &)> calendar;
};

} // namespace

TEST_F(TagsPrint, NoDatesListTheItemPromosRunningTodayOnTheDemoSet)
{
    Recordset running;
    ASSERT_TRUE(running.open(dbConnection(),
                             QStringLiteral("SELECT COUNT(*) FROM PromoPrices, ") + dbuaTable[kInventoryTable].sSqlFile +
                                 QStringLiteral(" WHERE RecordNum = Invuid AND StartDate <= '20261122 00:00:00' "
                                                "AND EndDate >= '20261122 00:00:00'")));
    const int expected = running.value(0).toInt();
    ASSERT_GT(expected, 0);

    play([&](QDialog &form) {
        EXPECT_EQ(form.windowTitle(), QStringLiteral("Labrix Link"));
        EXPECT_FALSE(cmd(form, "cmdPrint")->isEnabled());
        EXPECT_FALSE(cmd(form, "cmdPrintList")->isEnabled());
        QTest::keyClick(txtEdit(form, 1), Qt::Key_Return);
        EXPECT_EQ(list(form)->count(), expected);
        EXPECT_EQ(list(form)->selectedItems().size(), expected) << "every line starts selected";
        EXPECT_TRUE(cmd(form, "cmdPrint")->isEnabled());
        EXPECT_EQ(QApplication::focusWidget(), cmd(form, "cmdPrint"));
        EXPECT_TRUE(cmd(form, "cmdPrintList")->isEnabled());
    });
}

TEST_F(TagsPrint, EndDateAloneSelectsUntilTheCheckBoxTakesOverForGood)
{
    clearPromos();
    addItem(500001, "RUNNING", "10.00");
    addItem(500002, "COMING", "8.00");
    addItem(500003, "ENDED", "5.00");
    addPromo(500001, kToday.addDays(-2), kToday.addDays(8), kChangeTo, "7.50");
    addPromo(500002, kToday.addDays(9), kToday.addDays(18), kChangeBy, "1.00");
    addPromo(500003, kToday.addDays(-21), kToday.addDays(-7), kChangeByPercent, "10");
    addPromo(0, kToday.addDays(-2), kToday.addDays(8), kChangeByPercent, "20", "001.002.003");
    addPromo(999999, kToday.addDays(-2), kToday.addDays(8), kChangeTo, "1.00");
    const QString running = line(500001, "RUNNING", "7.50"), coming = line(500002, "COMING", "7.00"),
                  ended = line(500003, "ENDED", "4.50");

    play([&](QDialog &form) {
        cmd(form, "cmdAccept")->click();
        EXPECT_EQ(lines(form), QStringList{running}) << "no department row, no row without its item";

        enterDates(form, QStringLiteral("12/5/2026"), QStringLiteral("11/25/2026"));
        EXPECT_EQ(txtEdit(form, 0)->text(), QStringLiteral("12-05-2026"));
        EXPECT_EQ(txtEdit(form, 1)->text(), QStringLiteral("11-25-2026"));
        EXPECT_EQ(lines(form), QStringList{running}) << "a start after the end is no obstacle";
        enterDates(form, QString(), QStringLiteral("12/5/2026"));
        EXPECT_EQ(lines(form), QStringList{coming});
        enterDates(form, QStringLiteral("11/1/2026"), QStringLiteral("11/10/2026"));
        EXPECT_EQ(lines(form), QStringList{ended});
        enterDates(form, QString(), QStringLiteral("1/1/2020"));
        EXPECT_TRUE(lines(form).isEmpty());
        EXPECT_FALSE(cmd(form, "cmdPrint")->isEnabled());
        EXPECT_EQ(QApplication::focusWidget(), txtEdit(form, 0));

        child<QCheckBox>(form, QStringLiteral("SSCheck1"))->click();
        cmd(form, "cmdAccept")->click();
        EXPECT_EQ(lines(form), (QStringList{running, coming})) << "post-dated promos join the running ones";
        EXPECT_TRUE(cmd(form, "cmdPrint")->isEnabled());
        child<QCheckBox>(form, QStringLiteral("SSCheck1"))->click();
        enterDates(form, QString(), QStringLiteral("11/10/2026"));
        EXPECT_EQ(lines(form), (QStringList{running, coming})) << "the box cleared, its rule stays";
    });
}

TEST_F(TagsPrint, TombstoneCarriesThePriceOfTheLineBefore)
{
    clearPromos();
    addItem(500001, "FIRST", "10.00");
    addItem(500002, "SECOND", "8.00");
    addItem(500003, "THIRD", "5.00");
    addPromo(500001, kToday, kToday, kChangeDeleted, "2.00");
    addPromo(500002, kToday, kToday, kChangeTo, "6.00");
    addPromo(500003, kToday, kToday, kChangeDeleted, "1.00");
    play([&](QDialog &form) {
        cmd(form, "cmdAccept")->click();
        EXPECT_EQ(lines(form), (QStringList{line(500001, "FIRST", ""), line(500002, "SECOND", "6.00"),
                                            line(500003, "THIRD", "6.00")}));
    });
}

TEST_F(TagsPrint, F5HandsTheSelectedItemsOverAndUnloadTakesTheFileAway)
{
    clearPromos();
    addItem(500001, "SHORT NUMBER", "10.00");
    addItem(1234567, "LONG NUMBER", "8.00");
    addPromo(500001, kToday, kToday.addDays(3), kChangeTo, "9.00");
    addPromo(1234567, kToday, kToday.addDays(3), kChangeTo, "7.00");
    installTagProgram();
    // The settings may name another folder: the tag program runs from the program's own.
    SaveSetting(kZorSettings, kAppPathsSection, kTagProgram, QStringLiteral("/nowhere/LABRIX.EXE"));
    const QString file = db.file(QStringLiteral("ITAGS3.TMP"));

    play([&](QDialog &form) {
        cmd(form, "cmdAccept")->click();
        QTest::keyClick(&form, Qt::Key_F5);
        EXPECT_EQ(contents(programFile("runs.txt")), QByteArray("1\n")) << "the window waited for the tag program";
        EXPECT_EQ(QString::fromUtf8(contents(programFile("args.txt"))),
                  QStringLiteral("FILE=") + file + QStringLiteral("\nPATH=") + db.dataPath() +
                      QStringLiteral("\nSTORE=1\nUSER=CLERK7\n"));
        EXPECT_EQ(contents(file), QByteArray("500001\r\n123456\r\n"));

        for (int i = 0; i < list(form)->count(); ++i)
            QTest::mouseClick(list(form)->viewport(), Qt::LeftButton, {},
                              list(form)->visualItemRect(list(form)->item(i)).center());
        EXPECT_TRUE(list(form)->selectedItems().isEmpty());
        QTest::keyClick(&form, Qt::Key_F5);
        EXPECT_EQ(contents(programFile("runs.txt")), QByteArray("1\n1\n"));
        EXPECT_EQ(contents(file), QByteArray()) << "no selection hands over an empty file";
    });
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('\n')).toStdString();
}

TEST_F(TagsPrint, FileThatCannotBeWrittenIsReportedAndTheTagProgramNotRun)
{
    installTagProgram();
    ASSERT_TRUE(QDir(db.dataPath()).mkdir(QStringLiteral("ITAGS3.TMP")));
    play([&](QDialog &form) {
        cmd(form, "cmdAccept")->click();
        ASSERT_TRUE(cmd(form, "cmdPrint")->isEnabled());
        QTest::keyClick(&form, Qt::Key_F5);
    });
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("Quillon"));
    EXPECT_EQ(boxes.shown()[0].icon, MsgIcon::Critical);
    EXPECT_FALSE(boxes.shown()[0].text.isEmpty());
    EXPECT_FALSE(QFile::exists(programFile("runs.txt")));
    EXPECT_TRUE(QFileInfo(db.file(QStringLiteral("ITAGS3.TMP"))).isDir()) << "unload leaves what it didn't write";
}

TEST_F(TagsPrint, EuropeanDatesAreRewrittenAndABadDateKeepsTheFocus)
{
    clearPromos();
    addItem(500001, "RUNNING", "10.00");
    addPromo(500001, kToday.addDays(-2), kToday.addDays(8), kChangeTo, "7.50");
    gCommon.USEurope = QStringLiteral("E");
    calendar = [](QDialog &picker) { child<QPushButton>(picker, QStringLiteral("cmdOK"))->click(); };

    play([&](QDialog &form) {
        enterDates(form, QString(), QStringLiteral("25/11/2026"));
        EXPECT_EQ(txtEdit(form, 1)->text(), QStringLiteral("25-11-26"));
        EXPECT_EQ(lines(form).size(), 1);

        enterDates(form, QStringLiteral("31/31/2026"), QStringLiteral("30/11/2026"));
        EXPECT_EQ(boxes.texts(), QStringList{QStringLiteral(
                                     "'Start Date' Is Invalid\r\rReenter the date using the 'mm/dd/yyyy' format.")});
        EXPECT_EQ(QApplication::focusWidget(), txtEdit(form, 0));
        EXPECT_EQ(txtEdit(form, 1)->text(), QStringLiteral("30/11/2026")) << "nothing rewritten after a failure";
        EXPECT_EQ(lines(form).size(), 1) << "the list stands";

        QTest::keyClick(&form, Qt::Key_F2);
        EXPECT_EQ(txtEdit(form, 0)->text(), QStringLiteral("22-11-26")) << "the picker starts on today";
        EXPECT_EQ(txtEdit(form, 1)->text(), QStringLiteral("30-11-26")) << "and accepts what it chose";
        EXPECT_EQ(lines(form).size(), 1);
    });
}

TEST_F(TagsPrint, F9PrintsEveryLineAsItStandsUnderItsDates)
{
    clearPromos();
    addItem(500001, "RUNNING", "10.00");
    addItem(500002, "ALSO RUNNING", "8.00");
    addPromo(500001, kToday.addDays(-2), kToday.addDays(8), kChangeTo, "7.50");
    addPromo(500002, kToday.addDays(-2), kToday.addDays(8), kChangeBy, "1.00");
    QStringList printed, heads;
    calendar = [&](QDialog &shown) {
        auto *preview = qobject_cast<frmSMPRNT_PREVIEW *>(&shown);
        ASSERT_NE(preview, nullptr);
        const PrintTable &table = preview->engine().tables().front();
        for (int r = 0; r < table.rowCount(); ++r)
            printed << table.row(r);
        heads = gsaPrint_HeadLines;
    };
    play([&](QDialog &form) {
        QTest::keyClick(txtEdit(form, 1), Qt::Key_Return);
        list(form)->item(0)->setSelected(false);
        QTest::keyClick(&form, Qt::Key_F9);
        EXPECT_EQ(printed, lines(form)) << "selected or not";
        EXPECT_EQ(heads, QStringList{QStringLiteral("All Dates")});
        EXPECT_EQ(sPrintTitle, QStringLiteral("Promos"));
        EXPECT_EQ(sPrintHeadLeft, QStringLiteral("Quillon Demo Store"));

        printed.clear();
        typeIntoBoth(form, QStringLiteral("11/20/2026"), QString());
        QTest::keyClick(&form, Qt::Key_F9);
        EXPECT_EQ(heads, QStringList{QStringLiteral("11/20/2026")});
        typeIntoBoth(form, QStringLiteral("11/20/2026"), QStringLiteral("11/23/2026"));
        QTest::keyClick(&form, Qt::Key_F9);
        EXPECT_EQ(heads, QStringList{QStringLiteral("11/20/2026 to 11/23/2026")});
    });
}
