#include "config/ProfileFile.h"

#include "support/QtPrinters.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qln;

namespace {

QString s(const char *text) { return QString::fromUtf8(text); }
const QChar nul(0);

class ProfileFileTest : public ::testing::Test {
protected:
    void put(const char *bytes)
    {
        QFile f(m_file);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    QByteArray contents() const { QFile f(m_file); return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray(); }
    QString get(const ProfileArg &section, const ProfileArg &key, const ProfileArg &def = s("def"), int size = 255)
    {
        QString out;
        m_count = GetPrivateProfileString(section, key, def, out, size, m_file);
        return out;
    }
    bool write(const ProfileArg &section, const ProfileArg &key, const ProfileArg &value)
    { return WritePrivateProfileString(section, key, value, m_file); }
    QTemporaryDir m_dir;
    QString m_file = m_dir.filePath(s("ZOR.INI"));
    int m_count = 0;
};

} // namespace

TEST_F(ProfileFileTest, ReadsLikeThePlatform)
{
    put("Stray=1\r\n[Database]\r\n  SERVER  =  alpha  \r\n;Name=comment\r\nQuoted=\"  b  \"\r\nEmpty=\r\n"
        "server=second\r\n[ Misc ]\r\nDatapath=C:\\MV");
    EXPECT_EQ(get(s("DATABASE"), s("server")), s("alpha"));
    EXPECT_EQ(get(s("Database"), s("Quoted")), s("  b  "));
    EXPECT_EQ(get(s("Database"), s("Empty")), QString());
    EXPECT_EQ(get(s("Database"), s("Name")), s("def"));
    EXPECT_EQ(get(s("Database"), s("Stray")), s("def"));
    EXPECT_EQ(get(s("misc"), s("DATAPATH")), s("C:\\MV"));
    EXPECT_EQ(get(s("Misc"), s("Nothing"), s("fallback   ")), s("fallback"));
    EXPECT_EQ(get(std::nullopt, std::nullopt), s("Database") + nul + s("Misc") + nul);
    EXPECT_EQ(get(s("database"), std::nullopt), s("SERVER") + nul + s("Quoted") + nul + s("Empty") + nul);
}

TEST_F(ProfileFileTest, BufferCutsValuesAndLists)
{
    put("[S]\r\nK=abcdef\r\n[LongName]\r\n");
    EXPECT_EQ(get(s("S"), s("K"), s(""), 4), s("abc"));
    EXPECT_EQ(m_count, 3);
    EXPECT_EQ(get(std::nullopt, std::nullopt, s(""), 6), s("S") + nul + s("Lo"));
    EXPECT_EQ(m_count, 4); // size - 2: the caller must grow the buffer
}

TEST_F(ProfileFileTest, WritesKeepTheRestOfTheFile)
{
    put("; settings\r\n[A]\r\nx = 1\r\n\r\n[B]\r\ny=2");
    EXPECT_TRUE(write(s("a"), s("X"), s("10")));
    EXPECT_TRUE(write(s("A"), s("z"), s("")));
    EXPECT_TRUE(write(s("B"), s("w"), s("3")));
    EXPECT_TRUE(write(s("C"), s("v"), s("4")));
    EXPECT_EQ(contents(), QByteArray("; settings\r\n[A]\r\nx=10\r\nz=\r\n\r\n[B]\r\ny=2\r\nw=3\r\n[C]\r\nv=4\r\n"));
}

TEST_F(ProfileFileTest, NullValueDeletesKeyAndNullKeyTheSection)
{
    put("[A]\n k=1\nK=2\nm=3\n[B]\nk=4\n[a]\nk=5\n");
    EXPECT_TRUE(write(s("A"), s("k"), std::nullopt));
    EXPECT_EQ(contents(), QByteArray("[A]\nm=3\n[B]\nk=4\n[a]\nk=5\n"));
    EXPECT_TRUE(write(s("a"), std::nullopt, std::nullopt));
    EXPECT_EQ(contents(), QByteArray("[B]\nk=4\n"));
    EXPECT_FALSE(write(std::nullopt, s("k"), s("v")));
}

TEST_F(ProfileFileTest, NullWriteTestsTheFileAndWriteErrorsCarryANumber)
{
    EXPECT_FALSE(write(std::nullopt, std::nullopt, std::nullopt));
    EXPECT_EQ(get(s("S"), s("k")), s("def"));
    EXPECT_TRUE(write(s("S"), s("k"), s("v"))); // created
    EXPECT_TRUE(write(std::nullopt, std::nullopt, std::nullopt));
    EXPECT_EQ(contents(), QByteArray("[S]\r\nk=v\r\n"));
    ProfileError error;
    EXPECT_FALSE(WritePrivateProfileString(s("S"), s("k"), s("v"), m_dir.filePath(s("none/ZOR.INI")), &error));
    EXPECT_EQ(error.number, 76);
}
