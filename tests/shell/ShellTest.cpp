#include "shell/Shell.h"

#include "common/ProcessState.h"
#include "platform/Settings.h"
#include "store/Database.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

void writeProgram(const QString &path, const QString &body)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write((QStringLiteral("#!/bin/sh\n") + body).toUtf8());
    file.close();
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QString readText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

TEST(Shell, TheOptionLineLeavesOutBlankArgumentsAndPutsTheExtraInFront)
{
    const QString b = QStringLiteral(" ");
    EXPECT_EQ(gfsShell_options(QStringLiteral("QLN"), QStringLiteral("3"), b, QStringLiteral("/data/mv"), QString(),
                               QStringLiteral("1.2"), QStringLiteral("SC"), QStringLiteral("Y"), QString()),
              QStringLiteral("/APP=QLN /STATION=3 /DATAPATH=/data/mv /APPVER=1.2 /MVSC=SC /NETWORK=Y "));
    EXPECT_EQ(gfsShell_options(b, b, QStringLiteral("/sta"), b, QStringLiteral("Promos"), b, b, b, QStringLiteral("  /SL=1 ")),
              QStringLiteral("  /SL=1  /STATIONPATH=/sta /APPDESC=Promos "));
    EXPECT_EQ(gfsShell_options(b, b, b, b, b, b, b, b, b), QString());
}

TEST(Shell, RunsTheProgramWithItsOptionsAndWaits)
{
    QTemporaryDir folder;
    const QString seen = folder.filePath(QStringLiteral("seen"));
    writeProgram(folder.filePath(QStringLiteral("Sibling.exe")), QStringLiteral("sleep 0.2\necho \"$*\" > '%1'\nexit 7\n").arg(seen));
    const QString n;
    EXPECT_EQ(gfiShell_run(folder.path(), QStringLiteral("Sibling.exe"), QStringLiteral("QLN"), QStringLiteral("2"), n, n, n, n, n, n, n), 7);
    EXPECT_EQ(readText(seen), QStringLiteral("/APP=QLN /STATION=2\n")) << "finished before the call returned";
    EXPECT_EQ(gfiShell_run(folder.path(), QStringLiteral("Missing.exe"), n, n, n, n, n, n, n, n, n), 0);
}

// With no server set, the configuration program of the suite sets one, and the connection
// goes on with what it set.
TEST(Shell, TheConfigurationProgramSetsTheServerThatStartUpThenUses)
{
    if (!TestDatabase::onPostgres())
        GTEST_SKIP() << "the embedded engine needs no server";
    TestDatabase db;
    ScriptedMessages boxes;
    QTemporaryDir program;
    gsAppPath = program.path();
    gsDataPath = db.dataPath();
    const QString settings = settingsFilePath(kZorSettings);
    const QString configured = program.filePath(QStringLiteral("configured.ini"));
    ASSERT_TRUE(QFile::copy(settings, configured));
    SaveSetting(kZorSettings, QStringLiteral("DATABASE"), QStringLiteral("Server"), QString());
    writeProgram(program.filePath(QStringLiteral("ZORDataConfiguration.exe")),
                 QStringLiteral("cp '%1' '%2'\n").arg(configured, settings));

    EXPECT_TRUE(gfbDB_ServerConnect()) << boxes.texts().join(QLatin1Char('|')).toStdString();
    EXPECT_EQ(gsDBServer, db.info().server);
    EXPECT_TRUE(gfbDB_Exists());
    gsAppPath.clear();
    gsDataPath.clear();
}
