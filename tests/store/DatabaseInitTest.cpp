#include "common/ProcessState.h"
#include "platform/ProgramEnd.h"
#include "platform/Settings.h"
#include "store/Database.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

class DatabaseInit : public ::testing::Test {
protected:
    void SetUp() override
    {
        gsDataPath = db.dataPath();
        gsAppPath = db.dataPath();
        gbTraining = false;
    }
    void TearDown() override
    {
        dbaRecordset.clear();
        dbConnection().close();
        gbTraining = false;
    }
    void set(const char *key, const QString &value)
    {
        SaveSetting(kZorSettings, QStringLiteral("DATABASE"), QString::fromUtf8(key), value);
    }
    QStringList trace() const { return db.readFile(QStringLiteral("52.txt")).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts); }

    TestDatabase db;
    ScriptedMessages boxes;
};

} // namespace

TEST_F(DatabaseInit, FindsTheServerAndTheDatabaseAndTracesEachStep)
{
    set("Password", QStringLiteral("  secret  "));
    ASSERT_TRUE(gfbDB_Init());
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(gsDBPassword, QStringLiteral("secret"));
    const QStringList lines = trace();
    ASSERT_GE(lines.size(), 8);
    EXPECT_EQ(lines[0], db.info().database);
    EXPECT_TRUE(lines.contains(QStringLiteral("set Server ")));
    EXPECT_TRUE(lines.contains(QStringLiteral("Server Status = 1")));
    EXPECT_TRUE(lines.contains(QStringLiteral("Connect now ") + gsDBServer + QLatin1Char(' ') + gsDBUser + QStringLiteral(" secret")));
    EXPECT_EQ(lines.last(), QStringLiteral("Time verified"));

    gpDB_Connect(QString());
    EXPECT_TRUE(gbDBConnected);
    dbuaTable[3].sSqlFile = QStringLiteral("  ");
    EXPECT_TRUE(gfbDB_TableOpen(3)) << "a blank table name is left unopened, yet reported open";
    EXPECT_FALSE(dbaRecordset[3]);
}

TEST_F(DatabaseInit, AMissingDatabaseEndsTheProgramWithTheThreeLineBox)
{
    set("DBName", QStringLiteral("NoSuchData"));
    EXPECT_THROW(gfbDB_Init(), ProgramEnd);
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown()[0].text,
              QStringLiteral("Database not found.\r\nIf you are trying to connect to an existing database then run the Database "
                             "Configuration.\r\nTo create a new database or convert files from Pervasive run Marvane"));
    EXPECT_EQ(boxes.shown()[0].icon, MsgIcon::Critical);
    EXPECT_EQ(trace().last(), QStringLiteral("Database Create"));
}

TEST_F(DatabaseInit, TrainingUsesItsOwnDatabaseWhenItsFileIsThere)
{
    gbTraining = true;
    set("TrainingDB", QStringLiteral("Whatever"));
    if (!TestDatabase::onPostgres()) {
        EXPECT_THROW(gfbDB_Init(), ProgramEnd) << "no Training file in the data path";
        QFile::copy(QDir(db.dataPath()).filePath(db.info().database + QStringLiteral(".db")),
                    QDir(db.dataPath()).filePath(QStringLiteral("Training.db")));
        boxes.clear();
        EXPECT_TRUE(gfbDB_Init());
        EXPECT_EQ(gsDBName, QStringLiteral("Training"));
        EXPECT_EQ(GetSetting(kZorSettings, QStringLiteral("DATABASE"), QStringLiteral("DBName")), db.info().database)
            << "the live name is left alone";
    } else {
        EXPECT_THROW(gfbDB_Init(), ProgramEnd) << "no Training database on the server";
    }
}

TEST_F(DatabaseInit, AServerWithoutItsInstancePartIsReported)
{
    QString host;
    int port = 0;
    splitServer(db.info().server, host, port);
    set("Server", TestDatabase::onPostgres() ? host : QStringLiteral("localhost"));
    EXPECT_FALSE(gfbDB_ServerConnect());
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("ZOR MSDE"));
    if (!TestDatabase::onPostgres()) {
        EXPECT_EQ(boxes.shown()[0].text, QStringLiteral("Invalid procedure call or argument5"));
    }
}

TEST_F(DatabaseInit, ABlankServerAsksTheConfigurationProgramOnlyForAServerEngine)
{
    // The configuration program of the suite, as a stand-in that counts its starts.
    const QString program = QDir(gsAppPath).filePath(QStringLiteral("ZORDataConfiguration.exe"));
    const QString count = QDir(gsAppPath).filePath(QStringLiteral("asked"));
    QFile file(program);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QStringLiteral("#!/bin/sh\necho \"$*\" >> '%1'\n").arg(count).toUtf8());
    file.close();
    QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    auto asked = [&] { return db.readFile(QStringLiteral("asked")).count(QLatin1Char('\n')); };
    set("Server", QString());
    if (!TestDatabase::onPostgres()) {
        // Blank means this machine for the embedded engine.
        EXPECT_TRUE(gfbDB_ServerConnect());
        EXPECT_EQ(asked(), 0);
        EXPECT_TRUE(gsDBServer.endsWith(QStringLiteral("\\ZORSERVER")));
        return;
    }
    // Still blank after it: the program ends in silence.
    EXPECT_THROW(gfbDB_ServerConnect(), ProgramEnd);
    EXPECT_EQ(asked(), 1);
    EXPECT_EQ(db.readFile(QStringLiteral("asked")), QStringLiteral("\n")) << "all its options are empty";
    EXPECT_TRUE(boxes.shown().isEmpty());
}
