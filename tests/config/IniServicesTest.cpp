#include "config/IniServices.h"

#include "support/QtPrinters.h"
#include "support/ScriptedMessages.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qln;

namespace {

QString s(const char *text) { return QString::fromUtf8(text); }

class IniServicesTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        QFile f(m_file);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("[DATABASE]\r\nServer=alpha\r\nName=Main\r\n[MISCELLANEOUS]\r\nDatapath=/mv\r\nBackup=alpha\r\n");
        f.close();
        ASSERT_TRUE(m_ini.FileOpen(m_file));
    }
    QTemporaryDir m_dir;
    QString m_file = m_dir.filePath(s("ZOR.INI"));
    test::ScriptedMessages m_boxes;
    clsINI_Services m_ini;
};

} // namespace

TEST_F(IniServicesTest, NothingHappensBeforeAFileIsOpen)
{
    clsINI_Services closed;
    EXPECT_FALSE(closed.WriteData(s("A"), s("k"), s("v")));
    EXPECT_EQ(closed.GetValue(s("DATABASE"), s("Server"), s("def")), QString());
    EXPECT_FALSE(closed.FileOpen(m_dir.filePath(s("missing.ini"))));
    EXPECT_FALSE(closed.File());
    EXPECT_TRUE(closed.File_Name().isEmpty());
    EXPECT_TRUE(m_boxes.shown().isEmpty());
}

TEST_F(IniServicesTest, ValuesAreCutAt254AndAnEmptyValueIsNotTheDefault)
{
    EXPECT_TRUE(m_ini.WriteData(s("Long"), s("k"), QString(300, QLatin1Char('x'))));
    EXPECT_EQ(m_ini.GetValue(s("long"), s("K"), QString()).size(), 254);
    EXPECT_TRUE(m_ini.WriteData(s("Long"), s("e"), QString()));
    EXPECT_EQ(m_ini.GetValue(s("Long"), s("e"), s("def")), QString());
}

TEST_F(IniServicesTest, ListsAndSearches)
{
    EXPECT_EQ(m_ini.GetAllKeysValuesInSection(s("database")),
              QList<IniPair>({{s("Server"), s("alpha")}, {s("Name"), s("Main")}}));
    EXPECT_EQ(m_ini.FindKeyInFile(s("DATAPATH")), QStringList({s("MISCELLANEOUS")}));
    EXPECT_FALSE(m_ini.FindKeyInSection(s("DATABASE"), s("Datapath")));
    EXPECT_EQ(m_ini.FindValueInFile(s("alpha")),
              QList<IniPair>({{s("DATABASE"), s("Server")}, {s("MISCELLANEOUS"), s("Backup")}}));
    for (int i = 0; i < 60; ++i) // a list longer than the first buffer
        m_ini.WriteData(s("Many"), s("Key%1").arg(i), s("v"));
    EXPECT_EQ(m_ini.GetAllKeysInSection(s("Many")).size(), 60);
}

TEST_F(IniServicesTest, DeleteAndRename)
{
    EXPECT_TRUE(m_ini.RenameKey(s("DATABASE"), s("Server"), s("Host")));
    EXPECT_EQ(m_ini.GetAllKeysValuesInSection(s("DATABASE")),
              QList<IniPair>({{s("Name"), s("Main")}, {s("Host"), s("alpha")}}));
    EXPECT_FALSE(m_ini.RenameKey(s("DATABASE"), s("Server"), s("Other")));
    EXPECT_TRUE(m_ini.RenameSection(s("database"), s("DB")));
    EXPECT_EQ(m_ini.GetAllSections(), QStringList({s("MISCELLANEOUS"), s("DB")}));
    EXPECT_EQ(m_ini.GetValue(s("DB"), s("Name"), QString()), s("Main"));
    EXPECT_TRUE(m_ini.DeleteData(s("MISCELLANEOUS"), QString()));
    EXPECT_EQ(m_ini.GetAllSections(), QStringList({s("DB")}));
}

TEST_F(IniServicesTest, AFileThatCantBeWrittenIsReportedAndStaysOpen)
{
    ASSERT_TRUE(m_dir.remove());
    EXPECT_FALSE(m_ini.WriteData(s("A"), s("k"), s("v")));
    ASSERT_EQ(m_boxes.shown().size(), 1);
    const MessageBoxSpec box = m_boxes.shown().first();
    EXPECT_EQ(box.title, s("INI Class"));
    EXPECT_EQ(box.icon, MsgIcon::Critical);
    EXPECT_TRUE(box.text.startsWith(s("Write Date Class INI\r\nError Number: 76\r\n\r\n")));
    EXPECT_TRUE(m_ini.File());
}
