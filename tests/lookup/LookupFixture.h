#pragma once
#include "store/StoreFixture.h"

#include "lookup/DataGrid.h"
#include "lookup/GridSetUpBackOffice.h"
#include "store/Departments.h"
#include "store/Inventory.h"
#include "store/Notes.h"
#include "store/Upc.h"

namespace qln::test {

// The lookup's state as a fresh window of the given kind finds it.
inline void gpLookupState_reset(bool findMode = true, int firstCol = 0)
{
    gaGridColumns.clear();
    gaGridText.clear();
    gaLookupEntries.clear();
    gpDataGrid_Unload();
    iLookupFile = 1, iFirstCol = firstCol, iGridRowCount = 14, iGridRows = 14, iVendorMode = 1;
    sSearchText.clear(), sVendorFilter.clear(), sRememberedSL.clear();
    bFindMode = findMode, bWildcard = false, bUpcMode = false, bDeptMode = false, bStop = false;
    bAtTop = bAtBottom = false;
    gLookupSettings = LookupSettings();
}

// The item tables on a fresh database, and items made to order.
class LookupStore : public ConnectedStore {
protected:
    void SetUp() override
    {
        ConnectedStore::SetUp();
        gsStore = QStringLiteral("1");
        gpInventory_Open(kInventoryTable, gsDataPath, gsStore);
        gpNotes_Open(kNotesTable, gsDataPath);
        gpUpc_Open(kUpcTable, gsDataPath);
        gpDept_Open(kDeptTable, gsDataPath);
        for (int t : {kInventoryTable, kNotesTable, kUpcTable, kDeptTable})
            ASSERT_TRUE(gfbDB_TableOpen(t));
        gpLookupState_reset();
    }
    void TearDown() override
    {
        gpLookupState_reset();
        ConnectedStore::TearDown();
    }

    // Item n: SL "1000000n" (display "1000000.n" for n below 10), Item ID "ID" and n.
    static InventoryRecord item(int n, const QString &description, const char *vendor = "ACME", const char *status = " ")
    {
        InventoryRecord r;
        r.SL = QString::number(10000000 + n).leftJustified(8);
        r.ItemID = (QStringLiteral("ID") + QString::number(n).rightJustified(3, QLatin1Char('0'))).leftJustified(25);
        r.Description = description.leftJustified(30, QLatin1Char(' '), true);
        r.SubDescription = QStringLiteral("Sub %1").arg(n).leftJustified(20);
        r.VendorCode = QString::fromUtf8(vendor).leftJustified(15);
        r.DeptCode = QStringLiteral("001.000.000");
        r.Status = QString::fromLatin1(status);
        r.Price = Money::fromWhole(n);
        r.Cost = Money::fromUnits(n * 5000);
        r.QtyOnHand = Money::fromWhole(n * 2);
        r.RecordNum = n;
        return r;
    }
    static void add(const InventoryRecord &record)
    {
        gInventory = record;
        ASSERT_TRUE(gfbDB_RecordOp(kInventoryTable, kOpInsert)) << gsDBLastError.toStdString();
    }
    // Items 1 to n described "Item 001" upward.
    static void addNumbered(int n, int from = 1)
    {
        for (int i = from; i < from + n; ++i)
            add(item(i, QStringLiteral("Item %1").arg(i, 3, 10, QLatin1Char('0'))));
    }
    static void addUpc(int n, const char *upc)
    {
        gUpc = UpcRecord();
        gUpc.SL = QString::number(10000000 + n);
        gUpc.UPC = QString::fromUtf8(upc).leftJustified(15);
        gUpc.InvUID = n;
        ASSERT_TRUE(gfbDB_RecordOp(kUpcTable, kOpInsert));
    }

    quint64 statements() const { return dbConnection().statementCount(); }
};

// The grid as the engine sees it, without a display.
class RecordingView final : public DataGridView {
public:
    int row() const override { return current; }
    void selectRow(int r) override { current = r; }
    void setHighLight(int) override {}
    void paintRow(int r, const QStringList &cells, int height) override
    {
        painted[r] = cells;
        heights[r] = height;
    }
    void yield() override
    {
        if (onYield)
            onYield();
    }

    int current = 1;
    QMap<int, QStringList> painted;
    QMap<int, int> heights;
    std::function<void()> onYield;
};

// The text of one column over the window's rows, blank rows included.
inline QStringList gfsColumn_shown(int col)
{
    QStringList shown;
    for (int row = 1; row < iGridRows; ++row)
        shown << gaGridText[row].value(col).trimmed();
    return shown;
}

} // namespace qln::test
