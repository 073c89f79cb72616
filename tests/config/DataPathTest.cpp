#include "config/DataPath.h"

#include "common/ProcessState.h"
#include "config/ProfileFile.h"
#include "platform/Settings.h"
#include "shell/ProcessReset.h"
#include "store/Database.h"
#include "store/ServerCheck.h"
#include "support/QtPrinters.h"
#include "support/ScriptedMessages.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

const QString kSection = QStringLiteral("DATABASE");

class DataPath : public ::testing::Test {
protected:
    void SetUp() override
    {
        qputenv("XDG_CONFIG_HOME", dir.filePath(QStringLiteral("config")).toUtf8());
        QDir().mkpath(data);
        gDataPath() = clsDataPath();
        gpDataPath_window_show = nullptr;
        previousFolder = QDir::currentPath();
        QDir::setCurrent(dir.path()); // where the recovery folder would lie
    }
    void TearDown() override
    {
        QDir::setCurrent(previousFolder);
        gpDataPath_window_show = nullptr;
        gbLocalMode = false;
        gpProcess_reset();
    }
    static void set(const char *key, const QString &value) { SaveSetting(kZorSettings, kSection, QString::fromLatin1(key), value); }
    static QString setting(const char *key) { return GetSetting(kZorSettings, kSection, QString::fromLatin1(key)); }
    static void touch(const QString &path)
    {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    }

    QTemporaryDir dir;
    const QString data = dir.filePath(QStringLiteral("data ünd 'quoted'"));
    ScriptedMessages boxes;
    QString previousFolder;
};

} // namespace

TEST_F(DataPath, ValidateChecksStationThenPathsThenFilesAndPutsBackWhatFailed)
{
    clsDataPath dp;
    dp.setMaxStations(10);
    EXPECT_EQ(dp.MaxStations(), 50);
    dp.DataPath = data;
    for (const char *station : {"abc", "-1", "50"}) {
        dp.Station = QString::fromLatin1(station);
        EXPECT_TRUE(dp.Validate(true)) << station;
        EXPECT_EQ(dp.Station, QString::fromLatin1(station));
    }
    dp.Station = QStringLiteral("99999");
    EXPECT_TRUE(dp.Validate()) << "a station above the highest is no failure";
    EXPECT_EQ(dp.Station, QStringLiteral("1"));
    EXPECT_EQ(dp.FieldKey(), QStringLiteral("STATION"));
    EXPECT_TRUE(boxes.shown().isEmpty());

    // A data path that is a file, or that is missing: told, and every value put back.
    touch(dir.filePath(QStringLiteral("a file")));
    for (const QString &path : {dir.filePath(QStringLiteral("a file")), dir.filePath(QStringLiteral("missing"))}) {
        boxes.clear();
        dp.DataPath = path;
        dp.Station = QStringLiteral("99999");
        EXPECT_FALSE(dp.Validate());
        EXPECT_FALSE(dp.Valid());
        EXPECT_EQ(dp.FieldKey(), QStringLiteral("DATAPATH"));
        EXPECT_EQ(dp.Station, QStringLiteral("99999")) << "the station change is undone with the failure";
        EXPECT_EQ(dp.DataPath, path);
        ASSERT_EQ(boxes.shown().size(), 1);
        EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("Validation"));
        EXPECT_EQ(boxes.shown()[0].text, QStringLiteral("Data Path Not Found.\r\rUse the Browse method to find a valid path."));
    }

    boxes.clear();
    dp.DataPath = data;
    dp.Station = QStringLiteral("3");
    dp.StationPathEnabled = true;
    dp.StationPath = dir.filePath(QStringLiteral("stations"));
    EXPECT_FALSE(dp.Validate(true));
    EXPECT_EQ(dp.FieldKey(), QStringLiteral("STATIONPATH"));
    EXPECT_EQ(dp.ValidationMessage(), QStringLiteral("Station Path Not Found."));
    QDir().mkpath(dp.StationPath);
    EXPECT_FALSE(dp.Validate(true));
    EXPECT_EQ(dp.ValidationMessage(), QStringLiteral("Station 3 not in Station Path."));
    EXPECT_EQ(dp.ValidationHelp(), QStringLiteral("Select another Station or change the Station Path."));
    touch(QDir(dp.StationPath).filePath(QStringLiteral("STA3.ZOR")));
    dp.CheckFile = QStringLiteral("COMMON.ZOR");
    EXPECT_FALSE(dp.Validate(true));
    EXPECT_EQ(dp.FieldKey(), QStringLiteral("DATAPATH"));
    EXPECT_EQ(dp.ValidationHelp(), QStringLiteral("There is no 'COMMON.ZOR' file in the specified data path."));
    dp.SupressFileCheck = true;
    EXPECT_TRUE(dp.Validate(true));
    EXPECT_TRUE(boxes.shown().isEmpty()) << "quiet runs show nothing";
}

TEST_F(DataPath, AMissingPathIsOfferedForCreationWhenAllowed)
{
    clsDataPath dp;
    dp.CreatePath = true;
    dp.DataPath = dir.filePath(QStringLiteral("new/mv"));
    boxes.answer(MsgAnswer::No);
    EXPECT_FALSE(dp.Validate(true));
    boxes.answer(MsgAnswer::Yes);
    EXPECT_TRUE(dp.Validate(true));
    EXPECT_TRUE(QFileInfo(dp.DataPath).isDir());
    ASSERT_EQ(boxes.shown().size(), 2);
    EXPECT_TRUE(boxes.shown()[0].text.startsWith(QStringLiteral("Data Path Does Not Exist")));
}

TEST_F(DataPath, SaveReadAndDeleteKeepTheFiveSettingsAndTheIniLine)
{
    clsDataPath dp;
    dp.Network = true;
    dp.Station = QStringLiteral("7");
    dp.StationPath = data;
    dp.DataPath = data;
    dp.TestPath = QStringLiteral("Y");
    dp.Save();
    QString datapath;
    GetPrivateProfileString(QStringLiteral("MISCELLANEOUS"), QStringLiteral("Datapath"), QString(), datapath, 255,
                            QDir(data).filePath(QStringLiteral("ZOR.INI")));
    EXPECT_EQ(datapath, data);

    clsDataPath read;
    read.Read();
    EXPECT_TRUE(read.Network);
    EXPECT_EQ(read.Station, QStringLiteral("7"));
    EXPECT_EQ(read.StationPath, data);
    EXPECT_EQ(read.DataPath, data);
    EXPECT_EQ(read.TestPath, QStringLiteral("Y"));

    read.Delete();
    clsDataPath empty;
    empty.gpDataPathRead();
    EXPECT_FALSE(empty.Network);
    EXPECT_EQ(empty.Station, QStringLiteral("1"));
    EXPECT_EQ(empty.DataPath, QStringLiteral("C:/MV"));
    EXPECT_EQ(empty.StationLabel(), QStringLiteral("Station 1 of 50"));
}

TEST_F(DataPath, StartUpTakesTheCommandLineOverTheSettingsAndDropsAClosingSeparator)
{
    set("DATAPATH", dir.filePath(QStringLiteral("elsewhere")));
    set("STATION", QStringLiteral("4"));
    EXPECT_TRUE(gpDataPathOpen(data + QLatin1Char('\\'), QString(), QString()));
    EXPECT_EQ(gsDataPath, data);
    EXPECT_EQ(gsStation, QStringLiteral("4"));
    EXPECT_TRUE(gpDataPathOpen(data + QLatin1Char('/'), QStringLiteral("9"), dir.path()));
    EXPECT_EQ(gsStation, QStringLiteral("9"));
    EXPECT_EQ(gsStationPath, dir.path());
    EXPECT_TRUE(boxes.shown().isEmpty());
    EXPECT_EQ(setting("DATAPATH"), dir.filePath(QStringLiteral("elsewhere"))) << "nothing stored by a start";

    // The table of capitals comes from the program's folder into a data path without one.
    QTemporaryDir program;
    gsAppPath = program.path();
    touch(program.filePath(QStringLiteral("upper.alt")));
    EXPECT_TRUE(gpDataPathOpen(data, QString(), QString()));
    EXPECT_TRUE(QFile::exists(QDir(data).filePath(QStringLiteral("upper.alt"))));
}

TEST_F(DataPath, WithoutAValidPathTheUserIsAskedToDefineOne)
{
    // No path anywhere; the user declines.
    boxes.answer(MsgAnswer::No);
    EXPECT_FALSE(gpDataPathOpen(QString(), QString(), QString()));
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_TRUE(boxes.shown()[0].text.startsWith(QStringLiteral("A path to the ZOR Data Files has not been defined")));

    // Yes: the window, played here by a stand-in that confirms a valid path.
    int shown = 0;
    gpDataPath_window_show = [&](clsDataPath &dp) {
        ++shown;
        dp.DataPath = data;
        ASSERT_TRUE(dp.Validate());
        dp.Save();
        dp.Cancelled = false;
    };
    boxes.clear();
    boxes.answer(MsgAnswer::Yes);
    EXPECT_TRUE(gpDataPathOpen(QString(), QString(), QString()));
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(gsDataPath, data);
    EXPECT_EQ(setting("DATAPATH"), data);

    // A garbage settings file and a wrong path on a network: the network is blamed.
    QFile settings(settingsFilePath(kZorSettings));
    ASSERT_TRUE(settings.open(QIODevice::Append));
    settings.write("\n\x01garbage line\n[DATABASE\n=nothing\n");
    settings.close();
    set("NETWORK", QStringLiteral("True"));
    set("DATAPATH", dir.filePath(QStringLiteral("gone")));
    boxes.clear();
    EXPECT_FALSE(gpDataPathOpen(QString(), QString(), QString()));
    ASSERT_EQ(boxes.shown().size(), 2);
    EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("Validation"));
    EXPECT_EQ(boxes.shown()[1].title, QStringLiteral("Network Not Found"));
    EXPECT_EQ(shown, 1);
}

TEST_F(DataPath, TheServerCheckRunsOnlyWithARecoveryFolderAndAsksWhileThePathIsAway)
{
    const QString gone = dir.filePath(QStringLiteral("server/mv"));
    // No recovery folder: no check, only the validation.
    EXPECT_FALSE(gpDataPathOpen(gone, QString(), QString()));
    ASSERT_FALSE(boxes.shown().isEmpty());
    EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("Validation"));

    ASSERT_TRUE(QDir().mkpath(kSafeFolder));
    boxes.clear();
    EXPECT_TRUE(gpDataPathOpen(data, QString(), QString())) << "a reachable path: nothing asked";
    EXPECT_TRUE(boxes.shown().isEmpty());

    // The path is away: Retry? Yes, then No; the start then fails at its next step.
    boxes.answer(MsgAnswer::Yes);
    boxes.answer(MsgAnswer::No);
    boxes.answer(MsgAnswer::OK);
    boxes.answer(MsgAnswer::No);
    EXPECT_FALSE(gpDataPathOpen(gone, QString(), QString()));
    ASSERT_GE(boxes.shown().size(), 3);
    for (int i : {0, 1}) {
        EXPECT_EQ(boxes.shown()[i].title, QStringLiteral("Network Error"));
        EXPECT_EQ(boxes.shown()[i].buttons, MsgButtons::YesNo);
        EXPECT_EQ(boxes.shown()[i].text, QStringLiteral("Server not found. Check Server and Network Connections.\r\n Retry?"));
    }
    EXPECT_EQ(boxes.shown()[2].title, QStringLiteral("Validation"));

    // The recovery folder as the data path turns on local mode.
    gDataPath().DataPath = kSafeFolder + QStringLiteral("x");
    gbLocalMode = true;
    boxes.clear();
    EXPECT_TRUE(gfbServer_Check()) << "local mode tests nothing";
    EXPECT_TRUE(boxes.shown().isEmpty());
}

TEST_F(DataPath, AFileOrAFolderThatCannotBeReadIsNoDataPath)
{
    clsDataPath dp;
    dp.Station = QStringLiteral("1");
    dp.DataPath = dir.filePath(QStringLiteral("COMMON.ZOR"));
    touch(dp.DataPath);
    EXPECT_FALSE(dp.Validate(true));
    EXPECT_EQ(dp.FieldKey(), QStringLiteral("DATAPATH"));
    EXPECT_EQ(dp.ValidationMessage(), QStringLiteral("Data Path Not Found."));

    QDir().mkpath(data);
    QFile::setPermissions(data, QFileDevice::WriteOwner);
    dp.DataPath = data;
    // The superuser reads every folder; anyone else is refused this one.
    EXPECT_EQ(dp.Validate(true), QFileInfo(data).isReadable());
    QFile::setPermissions(data, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    EXPECT_TRUE(boxes.shown().isEmpty());
}
