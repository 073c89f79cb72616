#pragma once
#include "store/StoreFixture.h"

#include "lookup/DataGrid.h"
#include "lookup/GridSetUpBackOffice.h"
#include "store/Departments.h"
#include "store/Inventory.h"
#include "store/Names.h"
#include "store/Notes.h"
#include "store/Upc.h"
#include "config/TermDefinitions.h"

#include <QFile>
#include <QTemporaryDir>

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

// A names table beside the items, and the site's words for its headers: "Company" for
// business, "Surname" for last name, the default "First Name".
class NamesStore : public LookupStore {
protected:
    void SetUp() override
    {
        LookupStore::SetUp();
        gpNames_Open(kNamesTable, gsDataPath);
        ASSERT_TRUE(gfbDB_TableOpen(kNamesTable));
        QFile file(terms.filePath(QStringLiteral("SYSTERMS.MSG")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[INDEX]\r\n050=Business\r\n093=First Name\r\n094=Last Name\r\n"
                   "[DEFAULT]\r\n050=Business\r\n093=First Name\r\n094=Last Name\r\n"
                   "[DEFINED]\r\n050=Company\r\n094=Surname\r\n");
        file.close();
        ASSERT_TRUE(gfbTerms_load(terms.path()));
    }
    void TearDown() override
    {
        gaTerms.clear();
        LookupStore::TearDown();
    }

    static void addName(const char *code, const char *last, const char *first, const char *business = "",
                        const char *city = "", const char *deleted = " ")
    {
        gName = NameRecord();
        auto put = [](QString NameRecord::*field, const char *text) {
            gName.*field = gfsNames_fitted(field, QString::fromUtf8(text));
        };
        put(&NameRecord::ARCode, code);
        put(&NameRecord::LastName, last);
        put(&NameRecord::FirstName, first);
        put(&NameRecord::Business, business);
        put(&NameRecord::City, city);
        put(&NameRecord::DeleteFlag, deleted);
        put(&NameRecord::PhoneIndex, (QByteArray("555-") + code).constData());
        ASSERT_TRUE(gfbDB_RecordOp(kNamesTable, kOpInsert)) << gsDBLastError.toStdString();
    }

    // Ties, case, blanks, a quote, and deleted names at the head, among the ties and at the end
    // of the last-name order. Listed by last name: N03 N01 N02 N04 N07 N05 N06 N09 N10.
    static void addNames()
    {
        addName("N11", "", "A", "Gone Ltd", "Erie", "D");
        addName("N03", "", "Zoe", "Blank Name Co", "Denver");
        addName("N01", "Adams", "Ann", "Acme Hardware", "Boston");
        addName("N02", "ADAMS", "bob", "Adams & Sons", "Austin");
        addName("N04", "O'Brien", "Pat", "Bolt & Co", "Dublin");
        addName("N07", "smith", "Joan", "", "Salem");
        addName("N05", "Smith", "John", "Corner Shop", "Salem");
        addName("N06", "Smith", "John", "Smith Bakery", "Salem");
        addName("N08", "Smith", "John", "Old Smith", "Salem", "D");
        addName("N09", "Taylor", "Tom", "Taylor Made", "Troy");
        addName("N10", "Young", "Amy", "Young Ideas", "York");
        addName("N12", "Zimmer", "Zed", "Gone Too", "Zion", "D");
    }

    QTemporaryDir terms;
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
