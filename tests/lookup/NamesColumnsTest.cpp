#include "LookupFixture.h"

#include "config/TermDefinitions.h"
#include "support/ScriptedMessages.h"

#include <QFile>
#include <QTemporaryDir>

using namespace qln;
using namespace qln::test;

namespace {

// On a connected store, as the engine reads in a transaction of the connection.
class NamesColumns : public LookupStore {
protected:
    void SetUp() override
    {
        LookupStore::SetUp();
        gpLookupState_reset(false);
        QFile file(dir.filePath(QStringLiteral("SYSTERMS.MSG")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[INDEX]\r\n050=Business\r\n093=First Name\r\n094=Last Name\r\n"
                   "[DEFAULT]\r\n050=Business\r\n093=First Name\r\n094=Last Name\r\n"
                   "[DEFINED]\r\n050=Company\r\n094=Surname\r\n");
        file.close();
        ASSERT_TRUE(gfbTerms_load(dir.path()));
    }
    void TearDown() override
    {
        gaTerms.clear();
        LookupStore::TearDown();
    }

    static QStringList shown()
    {
        QStringList list;
        for (const GridColumn &c : gaGridColumns) {
            if (c.lWidth > 0)
                list << c.sCaption;
        }
        return list;
    }

    QTemporaryDir dir;
    ScriptedMessages boxes;
};

} // namespace

TEST_F(NamesColumns, HeadersFollowTheSitesTermsAndPhoneStandsInForTheARCode)
{
    ASSERT_TRUE(gfbGridSetUp_Names());
    EXPECT_EQ(iLookupFile, 99);
    EXPECT_EQ(iLookupKey, 1);
    EXPECT_EQ(iSortField, kNameLastName);
    EXPECT_EQ(iGridCols, 10);
    EXPECT_EQ(shown(), strings({" F7\nCompany", " F6\n AR Code", " F4\nSurname", " F5\nFirst Name",
                                    "Street Address", "City", "State", "Zip\n F8", "MC\n F9"}));
    EXPECT_EQ(gaGridColumns[2].sCaption, QStringLiteral(" Phone"));
    EXPECT_EQ(gLookupCaptions.sTitle, QStringLiteral("Name Lookup"));
    EXPECT_EQ(gLookupCaptions.saAction[3], QStringLiteral("Verify Balances"));
    EXPECT_TRUE(boxes.shown().isEmpty());

    gLookupSettings.bPhoneLookup = gLookupSettings.bBalancesHidden = true;
    bFindMode = true;
    gfbGridSetUp_Names();
    EXPECT_EQ(gaGridColumns[1].lWidth, 0);
    EXPECT_EQ(gaGridColumns[1].sCaption, QStringLiteral(" AR Code"));
    EXPECT_EQ(gaGridColumns[2].sCaption, QStringLiteral(" F6\n Phone"));
    EXPECT_EQ(gLookupCaptions.sTitle, QStringLiteral("Find Customer Name"));
    EXPECT_EQ(gLookupCaptions.sExit, QStringLiteral("Esc Cancel"));
    EXPECT_TRUE(gLookupCaptions.saAction[3].isEmpty());
}

TEST_F(NamesColumns, AMissingTermIsToldAndTheListStaysUsable)
{
    gaTerms.clear();
    ASSERT_TRUE(gfbGridSetUp_Names());
    EXPECT_EQ(gaGridColumns[3].sCaption, QStringLiteral(" F4\nERROR"));
    EXPECT_EQ(boxes.shown().size(), 3);
}

TEST_F(NamesColumns, TypedTextFindsANameOnScreenInTheKeysColumn)
{
    gfbGridSetUp_Names();
    gpDataGrid_Size();
    const char *rows[][2] = {{"ACME HARDWARE", "Adams"}, {"BOLT & CO", "O'Brien"}, {"CORNER SHOP", "Smith"}};
    for (int r = 0; r < 3; ++r) {
        gaGridText[r + 1][0] = QString::fromLatin1(rows[r][0]);
        gaGridText[r + 1][3] = QString::fromLatin1(rows[r][1]);
    }
    RecordingView view;
    gpDataGrid_SetSortNames(3);
    sSearchText = QStringLiteral(" o'b");
    EXPECT_TRUE(gfvDataGrid_Find(view, true));
    EXPECT_EQ(view.current, 2);
    gpDataGrid_SetSortNames(0);
    sSearchText = QStringLiteral("corner");
    EXPECT_TRUE(gfvDataGrid_Find(view, true));
    EXPECT_EQ(view.current, 3);
}
