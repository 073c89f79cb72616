#include "LookupFixture.h"

#include <QRandomGenerator>

using namespace qln;
using namespace qln::test;

namespace {

constexpr int kRows = 5; // data rows of the window under test
constexpr int kDesc = 0;

class Paging : public LookupStore {
protected:
    void SetUp() override
    {
        LookupStore::SetUp();
        iGridRowCount = kRows + 1;
        iGridRows = kRows + 1;
    }
    // Sets the columns up for a free lookup and fills the window from the top.
    bool open()
    {
        gfbGridSetUp_Inventory();
        return gfbDataGrid_Reload(view);
    }
    void move(int direction) { gpDataGrid_Move(view, direction); }
    QStringList descriptions() const { return gfsColumn_shown(kDesc); }
    // The numbers of "Item nnn" rows shown, 0 for a blank row.
    QList<int> shownNumbers() const
    {
        QList<int> numbers;
        for (const QString &d : descriptions())
            numbers << (d.isEmpty() ? 0 : d.mid(5).toInt());
        return numbers;
    }
    static QList<int> range(int first, int count, int total)
    {
        QList<int> r;
        for (int i = 0; i < count; ++i)
            r << (first + i <= total ? first + i : 0);
        return r;
    }
    RecordingView view;
};

} // namespace

TEST_F(Paging, AnEmptyTableShowsBlankRowsAndAPageDownDoesNothing)
{
    EXPECT_FALSE(open());
    EXPECT_EQ(boxes.texts(), strings({"No matching data found"}));
    EXPECT_TRUE(bAtBottom);
    EXPECT_EQ(descriptions(), QStringList(kRows));
    boxes.clear();
    const quint64 before = statements();
    move(kPageDown);
    EXPECT_EQ(statements(), before);
    EXPECT_TRUE(boxes.shown().isEmpty());
    // Typed text on the empty table: "Get First" finds nothing and the rows just go blank.
    bAtBottom = false;
    sSearchText = QStringLiteral("A");
    EXPECT_FALSE(gfvDataGrid_Find(view, false));
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('|')).toStdString();
    EXPECT_TRUE(bAtBottom);
    EXPECT_EQ(descriptions(), QStringList(kRows));
}

TEST_F(Paging, FewerRecordsThanRowsLeaveTheRestBlankAndDownStopsAtTheLast)
{
    addNumbered(3);
    ASSERT_TRUE(open());
    EXPECT_EQ(shownNumbers(), QList<int>({1, 2, 3, 0, 0}));
    move(kLineDown);
    move(kLineDown);
    EXPECT_EQ(view.current, 3);
    move(kLineDown);
    EXPECT_EQ(view.current, 3) << "the selection stays on the last item";
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown()[0].text, QStringLiteral("End of the List"));
    EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("Look Up"));
    EXPECT_TRUE(bAtBottom);
}

TEST_F(Paging, TextMatchingAVisibleRowSendsNoStatement)
{
    addNumbered(12);
    ASSERT_TRUE(open());
    const quint64 before = statements();
    sSearchText = QStringLiteral("item 004");
    EXPECT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(statements(), before);
    EXPECT_EQ(view.current, 4);

    sSearchText = QStringLiteral("Item 009");
    EXPECT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_GT(statements(), before);
    EXPECT_EQ(shownNumbers(), QList<int>({9, 10, 11, 12, 0}));
    EXPECT_EQ(view.current, 1);
}

TEST_F(Paging, PageUpNearTheHeadRefillsFromTheFirstRecordWithoutBlankRows)
{
    addNumbered(20);
    ASSERT_TRUE(open());
    gpDataGrid_SetRow(kRows, view);
    move(kLineDown);
    move(kLineDown);
    EXPECT_EQ(shownNumbers(), range(3, kRows, 20));
    move(kPageUp);
    EXPECT_EQ(shownNumbers(), range(1, kRows, 20));
    EXPECT_TRUE(bAtTop);
    EXPECT_TRUE(boxes.shown().isEmpty());
    const quint64 before = statements();
    move(kPageUp);
    EXPECT_EQ(statements(), before) << "the head is known";
    EXPECT_EQ(boxes.texts(), strings({"Top of List"}));
    EXPECT_EQ(view.current, 1);
}

// Random moves against a model of the list: the window is always a run of the list from
// some item on, blank only at the end.
TEST_F(Paging, AnyRunOfMovesShowsTheSameWindowAsTheModel)
{
    constexpr int total = 23;
    addNumbered(total);
    ASSERT_TRUE(open());
    int top = 1;
    QRandomGenerator random(7);
    for (int i = 0; i < 120; ++i) {
        const int direction = int(random.bounded(4));
        // Moves at the window's edges scroll; those inside only move the selection.
        gpDataGrid_SetRow(direction == kLineUp ? 1 : kRows, view);
        if (direction == kLineDown && top + kRows > total)
            gpDataGrid_SetRow(total - top + 1, view);
        move(direction);
        switch (direction) {
        case kLineUp: top = qMax(1, top - 1); break;
        case kPageUp: top = qMax(1, top - kRows); break;
        case kPageDown: top = top + kRows <= total ? top + kRows : top; break;
        default: top = top + kRows <= total ? top + 1 : top; break;
        }
        ASSERT_EQ(shownNumbers(), range(top, kRows, total)) << "move " << i << " direction " << direction;
    }
}

TEST_F(Paging, DeletedItemsAndMatrixRootsAreNeverShownAndCostNoRow)
{
    add(item(1, QStringLiteral("Item 001"), "ACME", "D"));
    addNumbered(4, 2);
    for (int n = 6; n <= 13; ++n)
        add(item(n, QStringLiteral("Item %1").arg(n, 3, 10, QLatin1Char('0')), "ACME", "D"));
    InventoryRecord root = item(14, QStringLiteral("Item 014"));
    root.FlgMatrix = QStringLiteral("Y");
    add(root);
    addNumbered(3, 15);
    add(item(18, QStringLiteral("Item 018"), "ACME", "D"));
    ASSERT_TRUE(open());
    EXPECT_EQ(shownNumbers(), QList<int>({2, 3, 4, 5, 15}));
    move(kPageDown);
    EXPECT_EQ(shownNumbers(), QList<int>({16, 17, 0, 0, 0}));
    EXPECT_TRUE(bAtBottom);
    move(kPageUp);
    EXPECT_EQ(shownNumbers(), QList<int>({2, 3, 4, 5, 15}));
    gpDataGrid_SetRow(1, view);
    boxes.clear();
    move(kLineUp);
    EXPECT_EQ(boxes.texts(), strings({"Top Of List"})) << "the deleted head item is stepped over";
    EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("Look Up"));
    EXPECT_EQ(shownNumbers(), QList<int>({2, 3, 4, 5, 15}));
    EXPECT_TRUE(bAtTop);
}

TEST_F(Paging, TheVendorFilterEndsTheListAtTheVendorsLastItem)
{
    for (int n = 1; n <= 3; ++n)
        add(item(n, QStringLiteral("Item %1").arg(n, 3, 10, QLatin1Char('0')), "ALPHA"));
    for (int n = 4; n <= 10; ++n)
        add(item(n, QStringLiteral("Item %1").arg(n, 3, 10, QLatin1Char('0')), "O'NEIL"));
    for (int n = 11; n <= 13; ++n)
        add(item(n, QStringLiteral("Item %1").arg(n, 3, 10, QLatin1Char('0')), "ZED"));
    sVendorFilter = QStringLiteral("O'NEIL");
    iVendorMode = 0;
    ASSERT_TRUE(open());
    EXPECT_EQ(iLookupKey, 5);
    EXPECT_EQ(sWhereClause, QStringLiteral(" WHERE status <= ' ' AND vendorcode ='O''NEIL' AND Description > '"));
    EXPECT_EQ(sVendorFilter, QStringLiteral("O'NEIL"));
    EXPECT_EQ(shownNumbers(), QList<int>({4, 5, 6, 7, 8}));
    move(kPageDown);
    EXPECT_EQ(shownNumbers(), QList<int>({9, 10, 0, 0, 0}));
    gpDataGrid_SetRow(2, view);
    move(kLineDown);
    EXPECT_EQ(boxes.texts(), strings({"End of the List"}));
    move(kPageDown);
    EXPECT_EQ(shownNumbers(), QList<int>({9, 10, 0, 0, 0})) << "no item of the next vendor";

    sSearchText = QStringLiteral("Item 010");
    EXPECT_TRUE(gfvDataGrid_Find(view, false));
    sSearchText = QStringLiteral("Item 006");
    EXPECT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(shownNumbers(), QList<int>({6, 7, 8, 9, 10}));
    gpDataGrid_SetRow(kRows, view);
    boxes.clear();
    move(kLineDown);
    EXPECT_EQ(boxes.texts(), strings({"End Of List"}));
    EXPECT_EQ(shownNumbers(), QList<int>({6, 7, 8, 9, 10}));
}

TEST_F(Paging, SearchOpensOnTheNearestItemNeverBeyondTheLastMatch)
{
    add(item(1, QStringLiteral("Apple")));
    add(item(2, QStringLiteral("Banana")));
    add(item(3, QStringLiteral("Banana split")));
    add(item(4, QStringLiteral("Date")));
    add(item(5, QStringLiteral("Endive")));
    ASSERT_TRUE(open());
    for (int i = 0; i < 4; ++i)
        move(kLineDown);
    move(kLineDown); // the window runs on to "Endive" and back is not needed
    sSearchText = QStringLiteral("C");
    EXPECT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(descriptions().first(), QStringLiteral("Banana split")) << "nothing under C: the item before";
    sSearchText = QStringLiteral("zz");
    EXPECT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(descriptions().first(), QStringLiteral("Endive")) << "past the end: the last item";
    sSearchText = QStringLiteral("ba");
    EXPECT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(descriptions().value(view.current - 1), QStringLiteral("Banana"));
}

TEST_F(Paging, ItemsAreFoundByTheirSLAndByTheirItemID)
{
    addNumbered(12);
    ASSERT_TRUE(open());
    const int slCol = gfiDataGrid_ColumnOf(0, 4), idCol = gfiDataGrid_ColumnOf(1);
    gpDataGrid_SetSortInventory(slCol);
    EXPECT_EQ(iLookupKey, 1);
    EXPECT_EQ(gLookupCaptions.sSearchLabel, QStringLiteral("--SL"));
    sSearchText = QStringLiteral("1000001.1");
    ASSERT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(gaGridText[view.current][slCol], QStringLiteral("1000001.1"));
    EXPECT_EQ(gaGridText[view.current][kDesc], QStringLiteral("Item 011"));

    gpDataGrid_SetSortInventory(idCol);
    EXPECT_EQ(iLookupKey, 2);
    sSearchText = QStringLiteral("id007");
    ASSERT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(gaGridText[view.current][idCol], QStringLiteral("ID007"));
    EXPECT_EQ(shownNumbers(), QList<int>({7, 8, 9, 10, 11}));
    move(kPageUp);
    EXPECT_EQ(shownNumbers(), QList<int>({2, 3, 4, 5, 6})) << "walks stay on the Item ID order";
}

TEST_F(Paging, ALineMoveCostsOneFetchAndItsUpcLookup)
{
    addNumbered(12);
    addUpc(6, "0600");
    ASSERT_TRUE(open());
    gpDataGrid_SetRow(kRows, view);
    QStringList sent;
    dbConnection().setStatementObserver([&](const QString &sql) { sent << sql; });
    move(kLineDown);
    dbConnection().setStatementObserver(nullptr);
    EXPECT_EQ(sent.size(), 2) << sent.join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(shownNumbers(), range(2, kRows, 12));
    EXPECT_EQ(gaGridText[kRows][4], QStringLiteral("0600"));
}

TEST_F(Paging, UpcModeListsTheItemsInCodeOrderAndSkipsCodesForNoItem)
{
    addNumbered(4);
    addUpc(3, "0100");
    addUpc(1, "0200");
    addUpc(4, "D0250");
    addUpc(2, "0300");
    add(item(9, QStringLiteral("Gone"), "ACME", "D"));
    addUpc(9, "0400");
    gfbGridSetUp_Inventory();
    const int upcCol = gfiDataGrid_ColumnOf(1, 6);
    gpDataGrid_SetSortInventory(upcCol);
    ASSERT_TRUE(bUpcMode);
    ASSERT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(gfsColumn_shown(upcCol), strings({"0100", "0200", "0300", "", ""}));
    EXPECT_EQ(shownNumbers(), QList<int>({3, 1, 2, 0, 0}));
    move(kPageDown);
    EXPECT_EQ(boxes.texts(), strings({})) << "the window already holds the end";
    sSearchText = QStringLiteral("02");
    ASSERT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(view.current, 2) << "a code on screen";
    gpDataGrid_Size();
    sSearchText = QStringLiteral("03");
    ASSERT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(gfsColumn_shown(upcCol), strings({"0300", "", "", "", ""}));
    gpDataGrid_SetRow(1, view);
    move(kLineUp);
    EXPECT_EQ(gfsColumn_shown(upcCol), strings({"0200", "0300", "", "", ""}));
}

// The search fills its window in code order by its own statement, one code after the other.
TEST_F(Paging, UpcModeSearchFillsByItsOwnStatement)
{
    addNumbered(3);
    addUpc(1, "0100");
    addUpc(2, "D0150");
    addUpc(3, "0200");
    gfbGridSetUp_Inventory();
    gpDataGrid_SetSortInventory(gfiDataGrid_ColumnOf(1, 6));
    QStringList sent;
    dbConnection().setStatementObserver([&](const QString &sql) { sent << sql; });
    ASSERT_TRUE(gfvDataGrid_Find(view, false));
    dbConnection().setStatementObserver(nullptr);
    EXPECT_EQ(shownNumbers(), QList<int>({1, 3, 0, 0, 0}));
    EXPECT_TRUE(sent.contains(QStringLiteral("SELECT TOP 1 * FROM UPC WHERE upc > '0100' order by UPC")))
        << sent.join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(sent.contains(QStringLiteral("SELECT TOP 1 * FROM UPC WHERE upc > 'D0150' order by UPC")))
        << "a code for no item is stepped over by the same statement";
}

// The column shows the item's first code, in code order, that is neither "D" nor "I" and
// carries the item's record number.
TEST_F(Paging, TheUpcColumnShowsTheFirstCodeThatStandsForTheItem)
{
    addNumbered(3);
    addUpc(1, "D0001");
    addUpc(1, "0500");
    addUpc(2, "0100");
    gUpc.UPC = QStringLiteral("0050").leftJustified(15), gUpc.InvUID = 99; // another record's code under item 2's SL
    ASSERT_TRUE(gfbDB_RecordOp(kUpcTable, kOpInsert));
    addUpc(3, "I0003");
    ASSERT_TRUE(open());
    EXPECT_EQ(gfsColumn_shown(gfiDataGrid_ColumnOf(1, 6)), strings({"0500", "0100", "", "", ""}));
}

// The engine fetches the edge row's own record before it walks, so no rows lie between. The
// sort's key comes before the Item ID: both reach that record while the Item ID is the row's
// alone, and only the sort's key does when two items share it left-trimmed.
TEST_F(Paging, RepositioningReachesTheEdgeRowsOwnRecord)
{
    constexpr int total = 17;
    for (int n = 1; n <= total; ++n) {
        InventoryRecord r = item(n, QStringLiteral("Item %1").arg(n, 3, 10, QLatin1Char('0')));
        if (n == 9)
            r.ItemID = QStringLiteral(" ID003").leftJustified(25); // item 3's, as compared left-trimmed
        add(r);
    }
    ASSERT_TRUE(open());
    for (const int col : {gfiDataGrid_ColumnOf(0, 4), gfiDataGrid_ColumnOf(2)}) {
        ASSERT_TRUE(gpDataGrid_SetSortInventory(col));
        gpDataGrid_Size();
        ASSERT_TRUE(gfbDataGrid_Reload(view));
        gpDataGrid_SetRow(kRows, view);
        move(kPageDown);
        for (int i = 0; i < 3; ++i)
            move(kLineDown);
        ASSERT_EQ(shownNumbers(), range(9, kRows, total)) << "sort column " << col;
        gpDataGrid_SetRow(1, view);
        move(kLineUp); // the cursor stands at the bottom: it goes back to item 9 first
        EXPECT_EQ(shownNumbers(), range(8, kRows, total)) << "sort column " << col;
        gpDataGrid_SetRow(kRows, view);
        move(kPageDown);
        EXPECT_EQ(shownNumbers(), range(13, kRows, total)) << "sort column " << col;
    }
}

TEST_F(Paging, AFreeLookupReopensOnTheItemLastChosen)
{
    addNumbered(20);
    sRememberedSL = QStringLiteral("10000012");
    bFindMode = false;
    ASSERT_TRUE(open());
    EXPECT_EQ(shownNumbers(), range(12, kRows, 20));
    gpLookupState_reset();
    iGridRowCount = iGridRows = kRows + 1;
    sRememberedSL = QStringLiteral("10000012");
    ASSERT_TRUE(open()) << "find mode opens at the top";
    EXPECT_EQ(shownNumbers(), range(1, kRows, 20));
}

TEST_F(Paging, TheScanSearchFindsByPartOfTheTextAndCanBeStopped)
{
    add(item(1, QStringLiteral("Green apple")));
    add(item(2, QStringLiteral("Pineapple")));
    add(item(3, QStringLiteral("Pear")));
    add(item(4, QStringLiteral("Apple pie"), "ACME", "D"));
    for (int n = 5; n <= 12; ++n)
        add(item(n, QStringLiteral("Crab apple %1").arg(n)));
    ASSERT_TRUE(open());
    bWildcard = true;
    sSearchText = QStringLiteral("APPLE");
    ASSERT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(gaInventoryHits.size(), 10);
    EXPECT_EQ(descriptions(), strings({"Crab apple 10", "Crab apple 11", "Crab apple 12", "Crab apple 5", "Crab apple 6"}));
    move(kPageDown);
    EXPECT_EQ(descriptions(), strings({"Crab apple 7", "Crab apple 8", "Crab apple 9", "Green apple", "Pineapple"}));
    EXPECT_EQ(boxes.texts(), strings({"End of List"}));

    int seen = 0;
    view.onYield = [&] {
        if (++seen == 3)
            bStop = true;
    };
    ASSERT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(gaInventoryHits.size(), 3) << "Stop Search ends the scan";

    boxes.clear();
    sSearchText = QStringLiteral("kiwi");
    EXPECT_FALSE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(boxes.texts(), strings({"No matches found"}));
    EXPECT_EQ(descriptions(), QStringList(kRows));

    boxes.clear();
    gpDataGrid_SetSortInventory(gfiDataGrid_ColumnOf(10, 1));
    EXPECT_FALSE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(boxes.texts(), strings({"Wildcard search not available on QtyOnHand"}));
}

// Notes found by the description scan name their item by "&" and its SL; an item that only
// its note matched is read in by its record number after the others.
TEST_F(Paging, TheDescriptionScanTakesItemsWhoseNoteMatches)
{
    add(item(1, QStringLiteral("Salted butter")));
    InventoryRecord plain = item(2, QStringLiteral("Butter"));
    plain.RecordNum = 702; // a record number unlike its SL
    add(plain);
    add(item(3, QStringLiteral("Cheese")));
    ASSERT_TRUE(gfbNotes_Save(QStringLiteral("I"), QStringLiteral("&10000001"), QStringLiteral("salted, from the farm")));
    ASSERT_TRUE(gfbNotes_Save(QStringLiteral("I"), QStringLiteral("&10000002"), QStringLiteral("unsalted butter")));
    gLookupSettings.bLongDescriptions = true;
    ASSERT_TRUE(open());
    bWildcard = true;
    sSearchText = QStringLiteral("salted");
    ASSERT_TRUE(gfvDataGrid_Find(view, false));
    EXPECT_EQ(descriptions(), strings({"salted, from the farm", "unsalted butter", "", "", ""}));
    ASSERT_EQ(gaWildHits.size(), 2);
    EXPECT_EQ(gaWildHits[1].sSL, QStringLiteral("&1000000"));
    EXPECT_EQ(gaWildHits[1].lRecordNum, 702);
    EXPECT_TRUE(gaWildHits[0].bUsed);
    EXPECT_FALSE(gaWildHits[1].bUsed);
}

// During a scan the last line stays free: Down scrolls from the line before it.
TEST_F(Paging, DuringAScanDownScrollsFromTheLineBeforeTheLast)
{
    for (int n = 1; n <= 8; ++n)
        add(item(n, QStringLiteral("Crab apple %1").arg(n)));
    ASSERT_TRUE(open());
    bWildcard = true;
    sSearchText = QStringLiteral("apple");
    ASSERT_TRUE(gfvDataGrid_Find(view, false));
    gpDataGrid_SetRow(kRows - 2, view);
    move(kLineDown);
    EXPECT_EQ(view.current, kRows - 1);
    move(kLineDown);
    EXPECT_EQ(view.current, kRows - 1);
    EXPECT_EQ(descriptions().first(), QStringLiteral("Crab apple 2"));
    EXPECT_TRUE(boxes.shown().isEmpty()) << boxes.texts().join(QLatin1Char('|')).toStdString();
}

TEST_F(Paging, QuantitiesTypedInTheEntryColumnComeBackAfterScrolling)
{
    addNumbered(12);
    iFirstCol = 1;
    ASSERT_TRUE(open());
    gaLookupEntries.append({QStringLiteral("10000002"), QStringLiteral("4")});
    move(kPageDown);
    EXPECT_EQ(gfsColumn_shown(0), QStringList(kRows));
    move(kPageUp);
    EXPECT_EQ(gfsColumn_shown(0), strings({"", "4", "", "", ""}));
}
