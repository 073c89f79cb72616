#include "LookupFixture.h"

#include "config/Country.h"
#include "store/Common.h"

using namespace qln;
using namespace qln::test;

namespace {

QStringList captions()
{
    QStringList list;
    for (const GridColumn &c : gaGridColumns)
        list << c.sCaption;
    return list;
}

int widthOf(const char *caption)
{
    for (const GridColumn &c : gaGridColumns) {
        if (c.sCaption == QLatin1String(caption))
            return c.lWidth;
    }
    return -1;
}

using Columns = LookupStore;
using Cells = LookupStore;

} // namespace

TEST_F(Columns, TheFreeLookupAndTheListBuildingLookupHaveTheirOwnColumns)
{
    gfbGridSetUp_Inventory();
    EXPECT_EQ(captions(), strings({"Description", "SubDesc.", " S/L", "Item ID", "UPC Code", "Dept Code", "Dept Name",
                                   "F9 Vendor", "Quantity", "Price", "Cost"}));
    EXPECT_EQ(iGridCols, 11);
    EXPECT_EQ(widthOf("Dept Name"), 0);
    EXPECT_EQ(iLookupKey, 3);
    EXPECT_EQ(gLookupCaptions.sSearchLabel, QStringLiteral("--Description"));
    EXPECT_EQ(gLookupCaptions.sTitle, QStringLiteral("Find Inventory Item"));
    EXPECT_EQ(gLookupCaptions.sExit, QStringLiteral("Esc Cancel"));

    gpLookupState_reset(false, 1);
    gLookupSettings.bDeptNames = gLookupSettings.bRecordNumbers = true;
    gfbGridSetUp_Inventory();
    EXPECT_EQ(captions(), strings({"Qty", "Description", "SubDesc.", " S/L", "Item ID", "UPC Code", "Dept Code", "Dept Name",
                                   "On Order", "On Hand", "Cost", "UID"}));
    EXPECT_EQ(widthOf("Dept Name"), 1300);
    EXPECT_EQ(gLookupCaptions.sTitle, QStringLiteral("Inventory Lookup"));
    EXPECT_EQ(gLookupCaptions.saAction[2], QStringLiteral("Pricing Utilities"));
    EXPECT_EQ(iLookupKey, 3) << "the entry column sorts by description";
}

TEST_F(Columns, CostShowsUnlessSecuredAndTheUserLacksTheRight)
{
    gLookupSettings.bCostSecurity = true;
    gfbGridSetUp_Inventory();
    EXPECT_FALSE(captions().contains(QStringLiteral("Cost"))) << "a user with no sales code row is refused";
    gpLookupState_reset(true, 1);
    gLookupSettings.bCostSecurity = true;
    gfbGridSetUp_Inventory();
    EXPECT_EQ(captions().last(), QStringLiteral("Price")) << "without cost the list shows price";
}

TEST_F(Columns, SortingByColumnPicksKeyAndLabelAndRefusesTheDisplayOnlyOnes)
{
    gfbGridSetUp_Inventory();
    gpDataGrid_SetSortInventory(3);
    EXPECT_EQ(iLookupKey, 2);
    EXPECT_EQ(gLookupCaptions.sSearchLabel, QStringLiteral("--Item ID"));
    gpDataGrid_SetSortInventory(6);
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown()[0].text, QStringLiteral("Display Only - No Sorting Available"));
    EXPECT_EQ(boxes.shown()[0].title, QStringLiteral("Department Name"));
    EXPECT_EQ(iLookupKey, 2) << "the order stays";
    gpDataGrid_SetSortInventory(7);
    EXPECT_EQ(iLookupKey, 6);
    EXPECT_EQ(gLookupCaptions.sSearchLabel, QStringLiteral("---Vendor"));
    gpDataGrid_SetSortInventory(9);
    EXPECT_EQ(sKeyFieldName, QStringLiteral("Price"));
    EXPECT_EQ(iSortField2, 8);
    EXPECT_EQ(sOrderClause, QStringLiteral(" ORDER BY Price"));

    gpLookupState_reset();
    sVendorFilter = QStringLiteral("B'S");
    iVendorMode = 0;
    gfbGridSetUp_Inventory();
    gpDataGrid_SetSortInventory(2);
    EXPECT_EQ(iLookupKey, 6);
    EXPECT_EQ(sWhereClause, QStringLiteral(" WHERE status <= ' ' AND vendorcode ='B''S' AND SL > '"));
    EXPECT_EQ(sWhereClause2, QStringLiteral(" AND SL <= '"));
    EXPECT_EQ(sOrderClause, QStringLiteral(" ORDER BY SL "));
    gpDataGrid_SetSortInventory(3);
    EXPECT_EQ(sWhereClause, QStringLiteral(" WHERE status <= ' ' AND vendorcode ='B''S' AND ItemID > '"));
    boxes.clear();
    gpDataGrid_SetSortInventory(1);
    EXPECT_EQ(boxes.texts(), strings({"Sort vendors by sub-description is not available"}));
    EXPECT_EQ(iLookupKey, 7);
    EXPECT_EQ(sVendorFilter, QStringLiteral("B'S"));
}

TEST_F(Cells, EachFormatShowsItsFieldAsTheListWants)
{
    gDept = DeptRecord();
    gDept.DeptCode = QStringLiteral("002.000.000");
    gDept.Department = QStringLiteral("Bakery");
    ASSERT_TRUE(gfbDB_RecordOp(kDeptTable, kOpInsert)) << gsDBLastError.toStdString();
    InventoryRecord bread = item(1, QStringLiteral("Bread"));
    bread.DeptCode = QStringLiteral("002.000.000");
    bread.Cost = Money::fromUnits(-12345);
    bread.QtyOnHand = Money::fromUnits(25000);
    add(bread);
    addUpc(1, "012345678905");
    add(item(2, QStringLiteral("Butter")));
    addUpc(2, "I99");
    gLookupSettings.bDeptNames = true;
    gLookupSettings.bLongDescriptions = true;
    ASSERT_TRUE(gfbNotes_Save(QStringLiteral("I"), QStringLiteral("&10000002"),
                              QStringLiteral("Butter, unsalted, from the dairy farm down the road; keeps for weeks in the cold and the dark")));
    gfbGridSetUp_Inventory();
    iGridRowCount = 4;
    RecordingView view;
    ASSERT_TRUE(gfbDataGrid_Reload(view));
    EXPECT_EQ(gaGridText[1], strings({"Bread", "Sub 1", "1000000.1", "ID001", "012345678905", "002.000.000", "Bakery", "ACME",
                                      "2.5", "1.00", "-1.23"}));
    EXPECT_EQ(gaGridText[2][4], QString()) << "an internal code stands for no item";
    EXPECT_TRUE(gaGridText[2][0].startsWith(QStringLiteral("Butter, unsalted")));
    EXPECT_EQ(view.heights[1], 600);
    EXPECT_EQ(view.heights[2], 900) << "a long description makes a taller row";
}

TEST_F(Cells, PricesWithTaxTakeTheirTaxWhenNoneIsStored)
{
    gbIncludeTax = true;
    gCommon.TaxRate1 = 10;
    InventoryRecord r = item(1, QStringLiteral("Taxed"));
    r.TaxCode = QStringLiteral("A");
    add(r);
    gfbGridSetUp_Inventory();
    RecordingView view;
    const bool filled = gfbDataGrid_Reload(view);
    gbIncludeTax = false;
    gCommon.TaxRate1 = 0;
    ASSERT_TRUE(filled);
    EXPECT_EQ(gaGridText[1][9], QStringLiteral("1.10"));
}
