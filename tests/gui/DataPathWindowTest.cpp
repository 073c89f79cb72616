// The data path window and its browser, played by keys and clicks.
#include "config/frmSM_DATAPATH2.h"

#include "common/ProcessState.h"
#include "config/DataPath.h"
#include "config/frmSMFILE_PATH.h"
#include "platform/ModalRunner.h"
#include "platform/Settings.h"
#include "shell/ProcessReset.h"
#include "store/SafeDialog.h"
#include "support/QtPrinters.h"
#include "support/ScriptedMessages.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

template <typename T> T *child(QWidget &form, const char *name)
{
    T *widget = form.findChild<T *>(QString::fromLatin1(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
}
void typeInto(QWidget &form, const char *name, const QString &text)
{
    QLineEdit *box = child<QLineEdit>(form, name);
    box->setFocus();
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Delete);
    QTest::keyClicks(box, text);
}

class DataPathWindow : public ::testing::Test {
protected:
    void SetUp() override
    {
        qputenv("XDG_CONFIG_HOME", dir.filePath(QStringLiteral("config")).toUtf8());
        QDir().mkpath(data);
        gDataPath() = clsDataPath();
        gpDataPath_window_install();
    }
    void TearDown() override
    {
        gpDataPath_window_show = nullptr;
        gpProcess_reset();
    }

    QTemporaryDir dir;
    const QString data = dir.filePath(QStringLiteral("mv"));
    ScriptedMessages boxes;
};

} // namespace

TEST_F(DataPathWindow, AWrongPathKeepsTheWindowOnItsFieldAndARightOneIsSavedForTheNextStart)
{
    const QString wrong = dir.filePath(QStringLiteral("nowhere"));
    QString focused, label;
    bool closedOnWrong = true;
    ScopedModalScript script([&](QDialog &form) {
        EXPECT_EQ(form.windowTitle(), QStringLiteral("Set Data Path"));
        EXPECT_EQ(child<QLineEdit>(form, "txtDataPath")->text(), wrong);
        EXPECT_FALSE(child<QLineEdit>(form, "txtStationPath")->isEnabled());
        typeInto(form, "txtStation", QStringLiteral("12"));
        label = child<QLabel>(form, "lblStation")->text();
        typeInto(form, "txtDataPath", wrong + QStringLiteral("2"));
        QTest::mouseClick(child<QPushButton>(form, "cmdOK"), Qt::LeftButton);
        closedOnWrong = !form.isVisible();
        focused = form.focusWidget() ? form.focusWidget()->objectName() : QString();
        QTest::keyClick(&form, Qt::Key_F1);
        typeInto(form, "txtDataPath", data + QLatin1Char('/'));
        QTest::mouseClick(child<QPushButton>(form, "cmdOK"), Qt::LeftButton);
    });
    boxes.answer(MsgAnswer::OK);  // the start's own validation
    boxes.answer(MsgAnswer::Yes); // define it now
    EXPECT_TRUE(gpDataPathOpen(wrong, QString(), QString()));
    EXPECT_FALSE(closedOnWrong);
    EXPECT_EQ(focused, QStringLiteral("txtDataPath"));
    EXPECT_EQ(label, QStringLiteral("Station 12 of 50"));
    ASSERT_EQ(boxes.shown().size(), 4) << boxes.texts().join(QLatin1Char('|')).toStdString();
    EXPECT_EQ(boxes.shown()[2].text, QStringLiteral("Data Path Not Found.\r\rUse the Browse method to find a valid path."));
    EXPECT_EQ(boxes.shown()[3].title, QStringLiteral("Station and Data Path Help"));
    EXPECT_EQ(boxes.shown()[3].text.count(QLatin1Char('\r')), 13);
    EXPECT_EQ(gsDataPath, data);

    // A second start finds it all in the settings, the empty station path filled.
    EXPECT_EQ(GetSetting(kZorSettings, QStringLiteral("DATABASE"), QStringLiteral("STATIONPATH")), data);
    gDataPath() = clsDataPath();
    gsDataPath.clear();
    boxes.clear();
    EXPECT_TRUE(gpDataPathOpen(QString(), QString(), QString()));
    EXPECT_EQ(gsDataPath, data);
    EXPECT_EQ(gsStation, QStringLiteral("12"));
    EXPECT_TRUE(boxes.shown().isEmpty());
}

TEST_F(DataPathWindow, CancelStoresNothingAndTheTrainingBoxOnlyWarns)
{
    clsDataPath &dp = gDataPath();
    dp.DataPath = data;
    dp.TestPath = QStringLiteral("Y");
    ScopedModalScript script([&](QDialog &form) {
        QCheckBox *training = child<QCheckBox>(form, "chkTraining");
        EXPECT_TRUE(training->isChecked());
        training->click();
        typeInto(form, "txtDataPath", dir.path());
        form.grab().save(dir.filePath(QStringLiteral("window.png")));
        QTest::keyClick(&form, Qt::Key_Escape);
    });
    EXPECT_FALSE(dp.gfbZOR_DataPath_change());
    EXPECT_TRUE(dp.Cancelled);
    EXPECT_EQ(dp.DataPath, data);
    EXPECT_EQ(dp.TestPath, QStringLiteral("Y"));
    EXPECT_TRUE(GetSetting(kZorSettings, QStringLiteral("DATABASE"), QStringLiteral("DATAPATH")).isEmpty());
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("Caution"));
    if (const QString keep = qEnvironmentVariable("QUILLON_KEEP_SHOT"); !keep.isEmpty())
        QFile::copy(dir.filePath(QStringLiteral("window.png")), keep);
}

TEST_F(DataPathWindow, TheBrowserWalksFoldersAndOkGivesTheOneShown)
{
    QDir().mkpath(data + QStringLiteral("/sub"));
    QFile(data + QStringLiteral("/COMMON.ZOR")).open(QIODevice::WriteOnly);
    QStringList files;
    ScopedModalScript script([&](QDialog &form) {
        QListWidget *folders = child<QListWidget>(form, "dirFolders");
        files.clear();
        QListWidget *list = child<QListWidget>(form, "filFiles");
        for (int i = 0; i < list->count(); ++i)
            files << list->item(i)->text();
        const auto found = folders->findItems(QStringLiteral("sub"), Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1);
        emit folders->itemDoubleClicked(found[0]);
        QTest::keyClick(&form, Qt::Key_F1);
        QTest::mouseClick(child<QPushButton>(form, "cmdOK"), Qt::LeftButton);
    });
    EXPECT_EQ(gfsPath_browse(data), data + QStringLiteral("/sub"));
    EXPECT_EQ(files, QStringList{QStringLiteral("COMMON.ZOR")});
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("Path Browser Help"));
}

TEST(SafeDialogWindow, EachLetterOrButtonLeavesItsAnswerAndHidesTheWindow)
{
    for (const auto &[key, answer] : {std::pair{Qt::Key_R, "R"}, std::pair{Qt::Key_L, "L"}, std::pair{Qt::Key_X, "X"}}) {
        SafeDialog dialog;
        dialog.show();
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Network Error"));
        QTest::keyClick(&dialog, key);
        EXPECT_EQ(dialog.sAnswer, QString::fromLatin1(answer));
        EXPECT_FALSE(dialog.isVisible());
    }
    SafeDialog dialog;
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Q);
    EXPECT_TRUE(dialog.sAnswer.isEmpty()) << "another key answers nothing";
    child<QPushButton>(dialog, "CmdLocal")->click();
    EXPECT_EQ(dialog.sAnswer, QStringLiteral("L"));
}
