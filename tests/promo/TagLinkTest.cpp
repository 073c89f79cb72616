#include "promo/TagLink.h"

#include "common/ProcessState.h"
#include "platform/Settings.h"

#include "support/QtPrinters.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qln;

namespace {

void touch(const QString &file)
{
    QFile f(file);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
}

// A program folder and settings of their own.
class TagLink : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_config = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", dir.filePath(QStringLiteral("config")).toUtf8());
        QDir(dir.path()).mkpath(QStringLiteral("program"));
        QDir(dir.path()).mkpath(QStringLiteral("elsewhere"));
        gsAppPath = dir.filePath(QStringLiteral("program"));
    }
    void TearDown() override
    {
        qputenv("XDG_CONFIG_HOME", m_config);
        gsAppPath.clear();
    }
    void keep(const QString &fullName) { SaveSetting(kZorSettings, kAppPathsSection, kTagProgram, fullName); }

    QTemporaryDir dir;
    QByteArray m_config;
};

} // namespace

TEST(TagLine, FirstSixCharactersIdentifyTheItem)
{
    const QString line = gfsTagLine_make(1234567, QStringLiteral("GARDEN HOSE 50 FT"), QStringLiteral("19.99"));
    EXPECT_EQ(line, QStringLiteral("1234567      GARDEN HOSE 50 FT              19.99"));
    EXPECT_EQ(gflTagLine_item(line), 123456) << "a seventh digit is lost";
    EXPECT_EQ(gflTagLine_item(gfsTagLine_make(11, QStringLiteral("X"), QString())), 11) << "the gap follows a short number";
    EXPECT_EQ(gfsTagLine_make(12, QString(31, QLatin1Char('D')), QStringLiteral("1.00")),
              QStringLiteral("12      ") + QString(30, QLatin1Char('D')) + QStringLiteral(" 1.00"))
        << "the description is cut to its column";
}

TEST_F(TagLink, ProgramFolderComesFromTheSettingsKeyElseTheProgramsOwn)
{
    EXPECT_EQ(gfsAppPath_get(kTagProgram), gsAppPath) << "nothing kept";
    EXPECT_FALSE(gfbTagProgram_exists());
    touch(QDir(gsAppPath).filePath(kTagProgram));
    EXPECT_TRUE(gfbTagProgram_exists());

    const QString elsewhere = dir.filePath(QStringLiteral("elsewhere"));
    keep(elsewhere + QStringLiteral("/labrix.exe"));
    EXPECT_EQ(gfsAppPath_get(kTagProgram), elsewhere) << "the name is found whatever its case";
    EXPECT_FALSE(gfbTagProgram_exists()) << "the kept folder is the only one looked in";
    touch(QDir(elsewhere).filePath(kTagProgram));
    EXPECT_TRUE(gfbTagProgram_exists());

    keep(elsewhere + QStringLiteral("/OTHER.EXE"));
    EXPECT_EQ(gfsAppPath_get(kTagProgram), gsAppPath) << "a value that doesn't name the program";
    keep(kTagProgram);
    EXPECT_EQ(gfsAppPath_get(kTagProgram), QString());
    EXPECT_TRUE(gfbTagProgram_exists()) << "an empty folder is the program's own";
    EXPECT_EQ(gfsAppPath_get(QStringLiteral("OTHER.EXE"), QStringLiteral("Elsewhere")), gsAppPath);
}
