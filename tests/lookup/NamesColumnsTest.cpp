#include "LookupFixture.h"

#include "support/ScriptedMessages.h"

using namespace qln;
using namespace qln::test;

namespace {

// On a connected store, as the engine reads in a transaction of the connection.
class NamesColumns : public NamesStore {
protected:
    void SetUp() override
    {
        NamesStore::SetUp();
        gpLookupState_reset(false);
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
};

// The names list paged through a window of four rows, on the last-name key.
class NamesPaging : public NamesStore {
protected:
    void SetUp() override
    {
        NamesStore::SetUp();
        gpLookupState_reset(true);
        iLookupFile = kNamesTable;
        gfbGridSetUp_Names();
        gpDataGrid_SetSortNames(3);
        iGridRowCount = iGridRows = 5;
        gpDataGrid_Size();
    }

    // The A/R codes on screen, blank rows included.
    static QStringList codes() { return gfsColumn_shown(1); }
    bool find(const char *text)
    {
        sSearchText = QString::fromUtf8(text);
        return gfvDataGrid_Find(view, false);
    }
    QString selected() const { return gaGridText[view.current].value(1).trimmed(); }

    RecordingView view;
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

TEST_F(NamesPaging, AnEmptyTableShowsBlankRowsAndPagingDoesNothing)
{
    EXPECT_FALSE(gfbDataGrid_Reload(view));
    EXPECT_EQ(codes(), strings({"", "", "", ""}));
    EXPECT_TRUE(bAtBottom);
    EXPECT_EQ(boxes.texts(), strings({"No matching data found"}));
    const quint64 sent = statements();
    gpDataGrid_Move(view, kPageDown);
    EXPECT_EQ(statements(), sent);
    EXPECT_FALSE(find("smith"));
    EXPECT_EQ(codes(), strings({"", "", "", ""}));
    EXPECT_EQ(boxes.shown().size(), 1);
}

// Deleted names at the head, among ties and at the end cost no row; a tie on both names is
// ordered by the code, and case does not part two spellings of a name.
TEST_F(NamesPaging, PagingWalksTheLastNameOrderPastDeletedNames)
{
    addNames();
    ASSERT_TRUE(gfbDataGrid_Reload(view));
    EXPECT_EQ(codes(), strings({"N03", "N01", "N02", "N04"}));
    EXPECT_EQ(gfsColumn_shown(3), strings({"", "Adams", "ADAMS", "O'Brien"}));
    gpDataGrid_Move(view, kPageDown);
    EXPECT_EQ(codes(), strings({"N07", "N05", "N06", "N09"}));
    gpDataGrid_Move(view, kPageDown);
    EXPECT_EQ(codes(), strings({"N10", "", "", ""}));
    EXPECT_TRUE(bAtBottom);
    gpDataGrid_Move(view, kPageUp);
    EXPECT_EQ(codes(), strings({"N07", "N05", "N06", "N09"}));
    gpDataGrid_Move(view, kPageUp);
    EXPECT_EQ(codes(), strings({"N03", "N01", "N02", "N04"}));
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('\n')).toStdString();

    // Line by line over the same ties, both ways.
    gpDataGrid_SetRow(4, view);
    for (int i = 0; i < 4; ++i)
        gpDataGrid_Move(view, kLineDown);
    EXPECT_EQ(codes(), strings({"N07", "N05", "N06", "N09"}));
    gpDataGrid_SetRow(1, view);
    gpDataGrid_Move(view, kLineUp);
    EXPECT_EQ(codes(), strings({"N04", "N07", "N05", "N06"}));
}

TEST_F(NamesPaging, TypedTextPositionsTheListByItsKey)
{
    addNames();
    gfbDataGrid_Reload(view);
    const quint64 sent = statements();
    ASSERT_TRUE(find("o'b"));
    EXPECT_EQ(selected(), QStringLiteral("N04"));
    EXPECT_EQ(statements(), sent) << "a name on screen costs no read";

    ASSERT_TRUE(find("TAY"));
    EXPECT_EQ(codes(), strings({"N09", "N10", "", ""}));
    ASSERT_TRUE(find("o'bri"));
    EXPECT_EQ(codes(), strings({"N04", "N07", "N05", "N06"})) << "a quote in the name is read, not refused";

    // "Last, first" seeks both names.
    find("tay");
    ASSERT_TRUE(find("smith, joh"));
    EXPECT_EQ(codes().first(), QStringLiteral("N05"));

    // Business, first name and code keys each position on their own field.
    gpDataGrid_SetSortNames(0);
    ASSERT_TRUE(find("smith b"));
    EXPECT_EQ(selected(), QStringLiteral("N06"));
    gpDataGrid_SetSortNames(4);
    ASSERT_TRUE(find("joa"));
    EXPECT_EQ(selected(), QStringLiteral("N07"));
    gpDataGrid_SetSortNames(1);
    ASSERT_TRUE(find("n09"));
    EXPECT_EQ(codes(), strings({"N09", "N10", "", ""}));
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('\n')).toStdString();
}

// Street, City and State have no key: the list is a scan, in code order, of live names only.
TEST_F(NamesPaging, AScanFindsNamesByAnyPartOfAFieldInCodeOrder)
{
    addNames();
    gpDataGrid_SetSortNames(6);
    EXPECT_EQ(iSortField2, int(kNameCity));
    sSearchText = QStringLiteral("sal");
    ASSERT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(codes(), strings({"N05", "N06", "N07", ""}));
    EXPECT_EQ(boxes.texts(), strings({"End of List"}));

    gpDataGrid_SetSortNames(3);
    bWildcard = true;
    sSearchText = QStringLiteral("'b");
    ASSERT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(codes(), strings({"N04", "", "", ""}));
    sSearchText = QStringLiteral("%");
    ASSERT_TRUE(gfvDataGrid_Find(view, false)) << "a percent sign matches as the server's wildcard";
    EXPECT_EQ(codes(), strings({"N01", "N02", "N03", "N04"}));
    gpDataGrid_Move(view, kPageDown);
    EXPECT_EQ(codes(), strings({"N05", "N06", "N07", "N09"}));
}
