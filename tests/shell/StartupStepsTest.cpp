#include "shell/Startup.h"

#include "platform/Settings.h"
#include "shell/ProcessReset.h"
#include "support/QtPrinters.h"
#include "support/ScriptedMessages.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qln;

namespace {

class StartupSteps : public ::testing::Test {
protected:
    void SetUp() override { qputenv("XDG_CONFIG_HOME", dir.filePath(QStringLiteral("config")).toUtf8()); }
    void TearDown() override { test::gpProcess_reset(); }
    bool open(const QString &path)
    {
        gsDataPath = path;
        return gfbStartup_DataPath_open();
    }

    QTemporaryDir dir;
    const QString data = dir.path();
    test::ScriptedMessages boxes;
};

} // namespace

TEST_F(StartupSteps, DataPathLosesItsClosingSeparatorAndFallsBackToTheSettings)
{
    EXPECT_TRUE(open(data + QLatin1Char('\\')));
    EXPECT_EQ(gsDataPath, data);
    SaveSetting(kZorSettings, QStringLiteral("DATABASE"), QStringLiteral("DATAPATH"), data + QLatin1Char('/'));
    EXPECT_TRUE(open(QString()));
    EXPECT_EQ(gsDataPath, data);

    gbTraining = true;
    EXPECT_TRUE(open(QStringLiteral("C:\\training"))) << "a training path is taken as given";
    EXPECT_TRUE(boxes.shown().isEmpty());
}

TEST_F(StartupSteps, ItemIdIsPlainForAnyFormatButExactlyYesAndAMissingZorIniIsOnlyTold)
{
    gsDataPath = data;
    gpStartup_settings_read();
    EXPECT_EQ(boxes.texts(), QStringList{QStringLiteral("Unable to open ZOR Configuration Settings File, ZOR.INI.")});
    boxes.clear();
    const std::pair<const char *, bool> cases[] = {
        {"[INVENTORY]\r\nFormat ItemID=Yes\r\n", false},
        {"[inventory]\r\nFORMAT ITEMID=yes\r\n", true},
        {"[MISCELLANEOUS]\r\nDatapath=x\r\n", false},
    };
    for (const auto &[ini, plain] : cases) {
        QFile f(data + QStringLiteral("/ZOR.INI"));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(ini);
        f.close();
        gpStartup_settings_read();
        EXPECT_EQ(gbItemID_plain, plain) << ini;
    }
    EXPECT_TRUE(boxes.shown().isEmpty());
}
