#include "config/TermDefinitions.h"

#include "config/TermConstants.h"
#include "support/QtPrinters.h"
#include "support/ScriptedMessages.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

class TermDefinitionsTest : public ::testing::Test {
protected:
    void TearDown() override { gaTerms.clear(); }

    void write(const char *name, const QByteArray &text)
    {
        QFile file(dir.filePath(QString::fromLatin1(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    void writeSystem()
    {
        write("SYSTERMS.MSG", "[INDEX]\r\n050=Business\r\n093=First Name\r\n094=Last Name\r\n"
                              "[DEFAULT]\r\n050=Company\r\n093=First Name\r\n094=Last Name\r\n"
                              "[DEFINED]\r\n094=Surname\r\n[USE]\r\n050=Y\r\n093=Y\r\n094=Y\r\n"
                              "[LEN]\r\n050=30\r\n093=15\r\n094=20\r\n");
    }

    QTemporaryDir dir;
    ScriptedMessages boxes;
};

} // namespace

TEST_F(TermDefinitionsTest, TheSitesWordsGoOverTheSystemsAndABlankOneFallsBack)
{
    writeSystem();
    write("USRTERMS.MSG", "[DEFINED]\r\n050=Account\r\n094=   \r\n");
    ASSERT_TRUE(gfbTerms_load(dir.path()));
    EXPECT_EQ(gfsTerm(kTermBusiness), QStringLiteral("Account"));
    EXPECT_EQ(gfsTerm(kTermLastName), QStringLiteral("Last Name")) << "the site's blank undoes the system's word";
    EXPECT_EQ(gfsTerm(kTermFirstName, 1), QStringLiteral("FIRST NAME"));
    EXPECT_EQ(gfsTerm(QStringLiteral("  last NAME "), 2), QStringLiteral("last name"));
    EXPECT_EQ(gfiTerm_Index(QStringLiteral("business")), kTermBusiness);
    EXPECT_TRUE(boxes.shown().isEmpty());
}

TEST_F(TermDefinitionsTest, WithoutTheSitesFileTheSystemsWordsStand)
{
    writeSystem();
    ASSERT_TRUE(gfbTerms_load(dir.path()));
    EXPECT_EQ(gfsTerm(kTermLastName), QStringLiteral("Surname"));
    EXPECT_EQ(gfsTerm(kTermBusiness), QStringLiteral("Company"));
}

TEST_F(TermDefinitionsTest, SwitchedOffOrNarrowTermsShowTheirDefaultWithinTheirRoom)
{
    write("SYSTERMS.MSG", "[INDEX]\n001=Customer\n002=Vendor\n[DEFAULT]\n001=Customer\n002=Supplier\n"
                          "[DEFINED]\n001=Client\n002=Preferred Supplier\n[USE]\n001=N\n[LEN]\n002=9\n");
    ASSERT_TRUE(gfbTerms_load(dir.path()));
    EXPECT_EQ(gfsTerm(1), QStringLiteral("Customer"));
    EXPECT_EQ(gfsTerm(2), QStringLiteral("Preferred")) << "cut to its room, and trimmed";
}

TEST_F(TermDefinitionsTest, AnUnknownOrEmptyTermReadsErrorAndTellsEachTime)
{
    writeSystem();
    write("USRTERMS.MSG", "[INDEX]\r\n007=Empty\r\n");
    ASSERT_TRUE(gfbTerms_load(dir.path()));
    EXPECT_EQ(gfiTerm_Index(QStringLiteral("No Such Term")), 0);
    EXPECT_EQ(gfsTerm(QStringLiteral("No Such Term")), QStringLiteral("ERROR"));
    EXPECT_EQ(gfsTerm(QStringLiteral("Empty")), QStringLiteral("ERROR"));
    EXPECT_EQ(gfsTerm(500), QStringLiteral("ERROR"));
    EXPECT_EQ(gfsTerm(0), QStringLiteral("ERROR"));
    const QString box = QStringLiteral("ZOR Term 'Defined\\Default' Not Found\rCall ZOR Support");
    EXPECT_EQ(boxes.texts(), QStringList({box, box, box, box}));
}

TEST_F(TermDefinitionsTest, DamagedFilesGiveWhatCanBeReadAndNoCrash)
{
    // Duplicate numbers (the first counts), keys out of range or not numbers, a section
    // missing ([DEFINED]), CR LF and LF line ends mixed.
    write("SYSTERMS.MSG", "[INDEX]\r\n050=Business\r\n050=Firm\n99999999=Huge\nx=y\n-3=Minus\n"
                          "[DEFAULT]\n050=Company\n050=Firm\n094=Last Name\n");
    EXPECT_TRUE(gfbTerms_load(dir.path()));
    EXPECT_EQ(gfsTerm(QStringLiteral("Business")), QStringLiteral("Company"));
    EXPECT_EQ(gfiTerm_Index(QStringLiteral("Firm")), 0);
    EXPECT_EQ(gfiTerm_Index(QStringLiteral("Huge")), 0);
    EXPECT_EQ(gfsTerm(kTermLastName), QStringLiteral("Last Name")) << "a term with no name is found by number";
    EXPECT_LE(gaTerms.size(), 10000);
    EXPECT_TRUE(boxes.shown().isEmpty());

    // Lines ended by CR alone are one line to the settings reader: the section is not there,
    // and its terms are told missing when asked for.
    write("SYSTERMS.MSG", "[INDEX]\r050=Business\r[DEFAULT]\r050=Company\r");
    EXPECT_TRUE(gfbTerms_load(dir.path()));
    EXPECT_EQ(gfsTerm(kTermBusiness), QStringLiteral("ERROR"));
    EXPECT_EQ(boxes.shown().size(), 1);

    QTemporaryDir empty;
    EXPECT_FALSE(gfbTerms_load(empty.path()));
    EXPECT_TRUE(gaTerms.isEmpty());
    EXPECT_EQ(gfsTerm(kTermLastName), QStringLiteral("ERROR"));
}
