#include "shell/QlnMain.h"

#include "DemoData.h"
#include "platform/ModalRunner.h"
#include "platform/ProgramEnd.h"
#include "shell/FrmMenu.h"
#include "shell/InstanceLock.h"
#include "store/Inventory.h"
#include "shell/ProcessReset.h"
#include "support/QtPrinters.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

QPushButton *button(QWidget &form, const QString &name) { return form.findChild<QPushButton *>(name); }
QPushButton *command1(QWidget &form, int i) { return button(form, QStringLiteral("Command1(%1)").arg(i)); }

// The program on a data set of its own; a script plays the user at each form.
class Startup : public ::testing::Test {
protected:
    void SetUp() override
    {
        gpProcess_reset();
        gsAppPath = program.path();
    }
    void TearDown() override { gpProcess_reset(); }

    void buildDemo()
    {
        demo::DemoOptions o = demo::gfDemo_options(db.info(), db.dataPath(), 200);
        demo::DemoReport report;
        QString error;
        ASSERT_TRUE(demo::gfbDemo_build(o, report, error)) << error.toStdString();
        gpProcess_reset();
    }
    // The exit code, or that of the ProgramEnd that stopped the program.
    int run(const QString &options, const std::function<void(QDialog &)> &user = {})
    {
        ScopedModalScript script([&](QDialog &form) {
            forms << form.objectName();
            if (user)
                user(form);
        });
        InstanceLock lock(program.filePath(QStringLiteral("quillon.lock")));
        ended = false;
        try {
            return gfiQlnMain(options + QStringLiteral(" /DATAPATH=") + db.dataPath() + dataPathTail, lock);
        } catch (const ProgramEnd &end) {
            ended = true;
            return end.code;
        }
    }

    TestDatabase db;
    QTemporaryDir program;
    ScriptedMessages boxes;
    QString dataPathTail;
    QStringList forms;
    bool ended = false;
};

} // namespace

TEST_F(Startup, ReachesTheMenuWithTheWindowsThatExist)
{
    buildDemo();
    dataPathTail = QStringLiteral("/");
    EXPECT_EQ(run(QStringLiteral("/InvUID=abc"), [](QDialog &menu) {
                  EXPECT_EQ(menu.windowTitle(), QStringLiteral("Quillon"));
                  EXPECT_TRUE(command1(menu, 0)->isEnabled()) << "Item Promos";
                  EXPECT_TRUE(command1(menu, 1)->isEnabled()) << "Department Promos";
                  EXPECT_TRUE(command1(menu, 2)->isEnabled()) << "Group Promos";
                  EXPECT_TRUE(command1(menu, 3)->isEnabled()) << "Matrix Promos";
                  EXPECT_TRUE(command1(menu, 4)->isEnabled()) << "Daily Promos";
              }),
              0);
    EXPECT_EQ(forms, strings({"FrmMenu"}));
    EXPECT_FALSE(ended) << "a closed menu runs the end routine";
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(gsDataPath, db.dataPath());
    EXPECT_EQ(gsStore, QStringLiteral("1"));
    EXPECT_TRUE(dbuaTable[7].bOpen);
    EXPECT_EQ(gCommon.TaxLabel2nd, QStringLiteral("TAX")) << "country settings loaded";
}

TEST_F(Startup, ExitAndEscEndTheProcessButAChosenWindowReturnsToTheMenu)
{
    buildDemo();
    EXPECT_EQ(run(QString(), [](QDialog &form) {
                  if (form.objectName() == QLatin1String("frmMain")) {
                      QTest::keyClick(&form, Qt::Key_Escape);
                      return;
                  }
                  command1(form, 0)->click();
                  EXPECT_TRUE(form.isVisible()) << "the menu is back";
                  button(form, QStringLiteral("Command2"))->click();
              }),
              0);
    EXPECT_TRUE(ended && forms == strings({"FrmMenu", "frmMain"}));
    EXPECT_EQ(run(QString(), [](QDialog &menu) { QTest::keyClick(&menu, Qt::Key_Escape); }), 0);
    EXPECT_TRUE(ended);

    QList<int> opened;
    FrmMenu::Windows windows;
    for (int i = 0; i < FrmMenu::kPromoKinds; ++i)
        windows[size_t(i)] = [&opened, i] { opened << i; };
    FrmMenu menu(windows);
    ScopedModalScript script([&](QDialog &form) {
        command1(form, 3)->click();
        EXPECT_TRUE(form.isVisible());
    });
    EXPECT_NE(gfiForm_show_modal(menu), FrmMenu::kExit);
    EXPECT_EQ(opened, QList<int>{3}) << "each button opens its own window only";
}

TEST_F(Startup, GroupPromosOfTheMenuOpenOnTheFirstGroupOfTheFile)
{
    buildDemo();
    QString group;
    run(QString(), [&](QDialog &form) {
        if (form.objectName() == QLatin1String("FrmMenu")) {
            command1(form, 2)->click();
            button(form, QStringLiteral("Command2"))->click();
            return;
        }
        if (form.objectName() == QLatin1String("frmGroup"))
            group = form.findChild<QComboBox *>(QStringLiteral("Combo1"))->currentText();
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    EXPECT_EQ(forms.value(1), QStringLiteral("frmGroup"));
    EXPECT_EQ(group, QStringLiteral("1  Summer Sale"));
}

TEST_F(Startup, DepartmentPromosOpenOnTheDepartmentOfTheCommandLine)
{
    buildDemo();
    QString shown;
    run(QStringLiteral("/Dept=002.001.000"), [&](QDialog &form) {
        if (form.objectName() == QLatin1String("frmDeptMain")) {
            shown = form.findChild<QLabel *>(QStringLiteral("lblEditData"))->text();
            QTest::keyClick(&form, Qt::Key_Escape);
            return;
        }
        command1(form, 1)->click();
        button(form, QStringLiteral("Command2"))->click();
    });
    EXPECT_EQ(forms, strings({"FrmMenu", "frmDeptMain"}));
    EXPECT_EQ(shown, QStringLiteral("002.001.000 Grocery - Canned Goods"));
}

TEST_F(Startup, DailyPromosOpenFromTheMenu)
{
    buildDemo();
    QString shown;
    run(QString(), [&](QDialog &form) {
        if (form.objectName() == QLatin1String("FrmDailyPromo")) {
            shown = form.windowTitle();
            QTest::keyClick(&form, Qt::Key_Escape);
            return;
        }
        command1(form, 4)->click();
        button(form, QStringLiteral("Command2"))->click();
    });
    EXPECT_EQ(forms, strings({"FrmMenu", "FrmDailyPromo"}));
    EXPECT_EQ(shown, QStringLiteral("Daily Promos"));
}

TEST_F(Startup, ItemModeOpensTheItemPromosWindowAloneAndItsCloseEndsTheRun)
{
    buildDemo();
    QString shown;
    EXPECT_EQ(run(QStringLiteral("/ITEM=I /InvUID=12"), [&](QDialog &form) {
                  shown = form.findChild<QLabel *>(QStringLiteral("lblEditData(0)"))->text();
                  QTest::keyClick(&form, Qt::Key_Escape);
              }),
              0);
    EXPECT_EQ(forms, strings({"frmMain"}));
    EXPECT_FALSE(ended) << "the end routine follows the window";
    EXPECT_EQ(gsSL, QStringLiteral("10000001")) << "the item read from its RecordNum";
    EXPECT_EQ(shown, gInventory.AllowDiscounts == QLatin1String("N") ? QString() : QStringLiteral("1000000.1"));
}

TEST_F(Startup, SecondInstanceIsRefusedAndTouchesNoTable)
{
    InstanceLock first(program.filePath(QStringLiteral("quillon.lock")));
    ASSERT_TRUE(first.gfbTake());
    EXPECT_EQ(run(QString()), 1);
    EXPECT_TRUE(ended && forms.isEmpty() && dbuaTable.empty());
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown()[0].text, QStringLiteral("Quillon is already running.\rThis Program Can Only Be Runing Once On This Machine"));
    EXPECT_EQ(boxes.shown()[0].icon, MsgIcon::Critical);
    EXPECT_FALSE(QFile::exists(program.filePath(QStringLiteral("52.txt")))) << "no connection was tried";
}

TEST_F(Startup, EndsWithoutAWindowWhenTheDataCannotBeOpened)
{
    dataPathTail = QStringLiteral("/gone");
    boxes.answer(MsgAnswer::OK);
    boxes.answer(MsgAnswer::No); // not defined now
    EXPECT_EQ(run(QString()), 1);
    EXPECT_EQ(boxes.texts(), (QStringList{QStringLiteral("Data Path Not Found.\r\rUse the Browse method to find a valid path."),
                                          QStringLiteral("A path to the ZOR Data Files has not been defined\r\rDo you want to define it now?")}));
    EXPECT_TRUE(dbuaTable.empty());
    EXPECT_TRUE(forms.isEmpty());

    dataPathTail.clear();
    EXPECT_EQ(run(QString()), 1) << "an empty company table";
    EXPECT_TRUE(dbuaTable[1].sSqlFile.isEmpty()) << "tables 1 to 7 stay unregistered";
    EXPECT_TRUE(forms.isEmpty());
}
