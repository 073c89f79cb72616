#include "lookup/DataGrid.h"

#include "common/ItemNumber.h"
#include "common/NumberFormat.h"
#include "common/DateForms.h"
#include "config/Country.h"
#include "config/Tax.h"
#include "lookup/GridSetUpBackOffice.h"
#include "lookup/WalkWindow.h"
#include "platform/Clock.h"
#include "platform/Messages.h"
#include "platform/Recordset.h"
#include "store/Common.h"
#include "store/Database.h"
#include "store/Departments.h"
#include "store/Inventory.h"
#include "store/Names.h"
#include "store/Notes.h"
#include "store/RecordOps.h"
#include "store/RowsDecode.h"
#include "store/ServerCheck.h"
#include "store/TableLayout.h"
#include "store/Upc.h"

namespace qln {

namespace {

enum ItemField : int {
    kSL = 0, kItemID = 1, kDescription = 2, kSubDescription = 3, kVendorCode = 7, kTaxCode = 14, kDeptCode = 15,
    kPrice = 8, kRecordNum = 40,
};
enum Format : int { kMoney = 2, kDate = 3, kSL_form = 4, kUpc = 6, kPriceForm = 7, kDeptName = 12 };

constexpr int kRowHeight = 600;
const QString kTop = QStringLiteral("Top");
const QString kBottom = QStringLiteral("Bottom");
const QString kLookUp = QStringLiteral("Look Up");

// The window's own position and the hits of a scan being shown.
struct EngineState {
    int gridRow = 1;
    QList<int> rowHeight;
    bool scanShown = false;
    int hitTop = 0; // the hit on row 1
    QString upcSL, upcShown; // the UPC column's last lookup
};
EngineState &engine()
{
    static EngineState state;
    return state;
}

// The statements of one action read in one transaction; boxes and the window's events run
// outside it, so that nothing waits on the user while a transaction stays open.
class ActionReads {
public:
    ActionReads() : m_reads(dbConnection())
    {
        if (!s_current)
            s_current = this;
    }
    ~ActionReads()
    {
        if (s_current == this)
            s_current = nullptr;
    }
    ActionReads(const ActionReads &) = delete;
    ActionReads &operator=(const ActionReads &) = delete;

    template <class Work>
    static void outside(Work &&work)
    {
        if (s_current)
            s_current->m_reads.outside(work);
        else
            work();
    }

private:
    ReadSnapshot m_reads;
    static inline ActionReads *s_current = nullptr;
};

void message(const char *text, const QString &title = QString())
{
    ActionReads::outside([&] { gfiMsgBox(QString::fromLatin1(text), MsgButtons::OK, MsgIcon::None, title); });
}

void yieldTo(DataGridView &grid)
{
    ActionReads::outside([&] { grid.yield(); });
}

QString cut(const QString &text, int width) { return text.left(width).leftJustified(width); }

bool vendorFiltered() { return !sVendorFilter.trimmed().isEmpty() && (iVendorMode == 0 || iVendorMode == 2); }
// Keys that lead with the vendor: leaving the vendor is the end of such a list.
bool vendorKey() { return !sVendorFilter.trimmed().isEmpty() && iLookupKey >= 5 && iLookupKey <= 7; }

bool upcStandsForNoItem(const QString &upc)
{
    const QString code = upc.trimmed();
    return code.startsWith(QLatin1Char('D')) || code.startsWith(QLatin1Char('I'));
}

// The buffer's field values in column order: what a row is painted from.
class ImageSink final : public RowSink {
public:
    QVariantList values;
    void text(const QString &value) override { values << value; }
    void integer(qint32 value) override { values << value; }
    void real(double value) override { values << value; }
    void money(Money value) override { values << value.toPlainText(4); }
};

bool namesFile() { return iLookupFile == kNamesTable; }
int lookupTable() { return namesFile() ? kNamesTable : kInventoryTable; }

QVariantList currentImage()
{
    if (namesFile())
        return gfaNames_image();
    ImageSink sink;
    gpInventory_row_put(sink);
    return sink.values;
}

// ---------------------------------------------------------------- the display of a cell

QString fieldText(const QVariantList &image, int field) { return image.value(field).toString(); }

QString moneyCell(QString text)
{
    text = text.trimmed();
    text = text.mid(text.indexOf(QLatin1Char('$')) + 1);
    const bool negative = text.endsWith(QLatin1Char(')'));
    if (negative)
        text = text.remove(QLatin1Char(')')).remove(QLatin1Char('('));
    Money value = Money::parse(text).value_or(Money());
    return gfsNumber_format(negative ? -value : value, QStringLiteral("##.00"));
}

QString priceCell(const GridColumn &column, const QVariantList &image)
{
    Money value = Money::parse(fieldText(image, column.iField).trimmed()).value_or(Money());
    if (gbIncludeTax && value.isZero() && column.sCaption != QLatin1String("Cost")) {
        const TaxRates rates = {gCommon.TaxRate1, gCommon.TaxRate2, gCommon.TaxRate3, gCommon.TaxRate4, gCommon.TaxRate5};
        value = gfcPrice_with_tax_get(Money::parse(fieldText(image, kPrice).trimmed()).value_or(Money()),
                                      fieldText(image, kTaxCode), Clock::today(), rates);
    }
    if (value.isZero() && column.sCaption == QLatin1String("Sell at"))
        return QString();
    return gfsNumber_format(value, QStringLiteral("##.00"));
}

// ---------------------------------------------------------------- the UPC column by windows
// The codes of a window's items come in one statement; each row's cell is then what its
// own read would have shown, and the UPC buffer and current record end as after the last
// of those reads.

class UpcWindow {
public:
    // The reads the rows' cells will make, in order, answered ahead where that is certain.
    void prepare(const QList<QVariantList> &images)
    {
        clear();
        if (bUpcMode || namesFile() || gfiWalk_window() < 2 || !columnShown())
            return;
        QString previous = engine().upcSL;
        for (const QVariantList &image : images) {
            const QString sl = fieldText(image, kSL);
            if (sl == previous)
                continue;
            previous = sl;
            // A quote or a blank byte changes the read's literal: that read goes by itself.
            if (sl.contains(QLatin1Char('\'')) || sl.contains(QChar(0)))
                return;
            m_reads.append({sl, image.value(kRecordNum).toInt(), QString()});
        }
        if (m_reads.size() < 2 || !read())
            clear();
    }

    // The cell of the next read when it was answered ahead.
    bool answer(const QString &sl, QString &shown)
    {
        if (m_next >= m_reads.size() || m_reads[m_next].sl != sl)
            return false;
        shown = m_reads[m_next++].shown;
        return true;
    }

    // After the rows: the buffer and the current record as the last read leaves them.
    void settle()
    {
        if (m_reads.isEmpty() || m_next < m_reads.size())
            return clear();
        if (m_lastDecoded >= 0) {
            position(m_lastDecoded);
            gpDB_row_decode(kUpcTable, m_rows);
        } else {
            gUpc = m_buffer;
        }
        if (m_lastEmpty) {
            // The last read found no code: its set is the table's first row, as a read of no
            // rows leaves it.
            dbaRecordset[kUpcTable].reset();
            gfbDB_TableOpen(kUpcTable);
            gpDB_Set_unread_mark(kUpcTable);
        } else {
            position(m_lastEnd);
            dbaRecordset[kUpcTable] = std::move(m_rows);
            gpDB_Set_read(kUpcTable);
        }
        clear();
    }

private:
    struct Read {
        QString sl;
        qint32 recordNum;
        QString shown;
    };

    static bool columnShown()
    {
        for (int col = iFirstCol; col < iGridCols; ++col) {
            const GridColumn &c = gaGridColumns[col];
            if (c.iField != kNoField && c.iFormat == kUpc && c.lWidth != 0)
                return true;
        }
        return false;
    }
    // Equal for both engines' text order: letters A-Z as a-z, trailing blanks dropped.
    static QString plainForm(QString text)
    {
        while (text.endsWith(QLatin1Char(' ')))
            text.chop(1);
        for (QChar &c : text) {
            if (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
                c = QChar(c.unicode() + 32);
        }
        return text;
    }
    // Where an engine might hold two texts equal that the plain form keeps apart.
    static QString looseForm(const QString &text) { return plainForm(text).toCaseFolded().normalized(QString::NormalizationForm_KD); }

    void clear()
    {
        m_reads.clear();
        m_next = 0;
        m_rows.reset();
        m_lastDecoded = -1;
        m_lastEnd = 0;
        m_lastEmpty = false;
    }
    void position(int row)
    {
        m_rows->moveFirst();
        for (int i = 0; i < row; ++i)
            m_rows->moveNext();
    }

    bool read()
    {
        QStringList listed;
        for (const Read &r : std::as_const(m_reads)) {
            if (!listed.contains(r.sl))
                listed << r.sl;
        }
        // A fixed count of literals keeps the statement one prepared shape.
        while (listed.size() < iGridRows)
            listed << listed.last();
        const QString T = dbuaTable[kUpcTable].sSqlFile;
        const QString last = m_reads.last().sl;
        // The last read's codes come last, so that its set ends where the set ends.
        const QString sql = QStringLiteral("SELECT * FROM ") + T + QStringLiteral(" WHERE SL IN ('") +
                            listed.join(QStringLiteral("','")) + QStringLiteral("') ORDER BY CASE WHEN SL='") + last +
                            QStringLiteral("' THEN 1 ELSE 0 END, SL, UPC");
        m_rows = std::make_unique<Recordset>();
        if (!m_rows->open(dbConnection(), sql)) // not logged: the reads that stand in report
            return false;
        const int slField = m_rows->fieldIndex(QStringLiteral("SL"));
        QStringList codeSL;
        for (m_rows->moveFirst(); !m_rows->eof(); m_rows->moveNext()) {
            const QVariant value = m_rows->value(slField);
            codeSL << (value.isNull() ? QString() : value.toString());
        }
        m_buffer = gUpc;
        for (Read &r : m_reads) {
            bool decoded = false, matched = false;
            int at = -1;
            for (int i = 0; i < codeSL.size(); ++i) {
                const bool plain = plainForm(codeSL[i]) == plainForm(r.sl);
                if (!plain && looseForm(codeSL[i]) == looseForm(r.sl))
                    return false;
                if (!plain)
                    continue;
                position(i);
                gpDB_row_decode(kUpcTable, m_rows);
                decoded = true;
                at = i;
                if (!upcStandsForNoItem(gUpc.UPC) && gUpc.InvUID == r.recordNum) {
                    r.shown = gUpc.UPC.trimmed();
                    matched = true;
                    break;
                }
            }
            if (decoded)
                m_lastDecoded = at;
            m_lastEmpty = !decoded;
            m_lastEnd = matched ? at : int(codeSL.size());
        }
        gUpc = m_buffer;
        return true;
    }

    QList<Read> m_reads;
    int m_next = 0;
    std::unique_ptr<Recordset> m_rows;
    UpcRecord m_buffer;
    int m_lastDecoded = -1, m_lastEnd = 0;
    bool m_lastEmpty = false;
};

UpcWindow &upcWindow()
{
    static UpcWindow window;
    return window;
}

// ---------------------------------------------------------------- the display of a cell (cont.)

// The item's first UPC, in code order, that stands for it and carries its record number; the
// one of the row before when it is the same item.
QString upcCell(const QVariantList &image)
{
    if (bUpcMode)
        return gUpc.UPC.trimmed();
    EngineState &e = engine();
    const QString sl = fieldText(image, kSL);
    if (sl == e.upcSL)
        return e.upcShown;
    e.upcSL = sl;
    e.upcShown.clear();
    if (upcWindow().answer(sl, e.upcShown))
        return e.upcShown;
    const QString sql = QStringLiteral("SELECT * FROM ") + dbuaTable[kUpcTable].sSqlFile + QStringLiteral(" WHERE SL='") +
                        gfsDB_Quote(sl, true, 0) + QStringLiteral("' ORDER BY UPC");
    if (!gfbDB_RecordOp(kUpcTable, kOpBySQL, 2, false, false, sql))
        return e.upcShown;
    const qint32 recordNum = image.value(kRecordNum).toInt();
    Recordset &codes = *dbaRecordset[kUpcTable];
    for (codes.moveFirst(); !codes.eof(); codes.moveNext()) {
        gpUpc_read(kUpcTable);
        if (!upcStandsForNoItem(gUpc.UPC) && gUpc.InvUID == recordNum) {
            e.upcShown = gUpc.UPC.trimmed();
            break;
        }
    }
    return e.upcShown;
}

QString deptNameCell(const QString &code)
{
    gDept = DeptRecord();
    gDept.DeptCode = code;
    return gfbDB_RecordOp(kDeptTable, kOpEqual, 1) ? gDept.Department.trimmed() : QString();
}

QString plainCell(const QString &raw)
{
    const QString text = raw.trimmed();
    if (text.contains(QLatin1Char('.'))) {
        if (const auto number = Money::parse(text))
            return number->toPlainText(4);
    }
    return text;
}

// A long description makes its row taller, more so on a narrow screen.
int rowHeightFor(int length)
{
    double height = kRowHeight;
    if (gLookupSettings.dScreenRatio <= 0.71) {
        if (length > 90)
            height *= 2.3;
        if (length >= 46)
            height *= 1.5;
    } else if (length >= 81) {
        height *= 1.5;
    }
    return int(height);
}

QString enteredQty(const QString &sl)
{
    for (const LookupEntry &entry : std::as_const(gaLookupEntries)) {
        if (entry.sSL == sl)
            return entry.sQty;
    }
    return QString();
}

QStringList rowCells(const QVariantList &image, int &height)
{
    QStringList cells(iGridCols);
    height = kRowHeight;
    for (int col = iFirstCol; col < iGridCols; ++col) {
        const GridColumn &c = gaGridColumns[col];
        if (c.iField == kNoField)
            continue;
        const QString raw = fieldText(image, c.iField);
        const bool hidden = c.lWidth == 0; // a hidden column costs no lookup
        switch (hidden && (c.iFormat == kUpc || c.iFormat == kDeptName) ? -1 : c.iFormat) {
        case -1: break;
        case kMoney: cells[col] = moneyCell(raw); break;
        case kDate: cells[col] = gfsDate_display(raw, gCommon.USEurope); break;
        case kSL_form: cells[col] = gfsItemID_display(cut(raw, 8)); break;
        case kUpc: cells[col] = upcCell(image); break;
        case kPriceForm: cells[col] = priceCell(c, image); break;
        case kDeptName: cells[col] = col > 0 ? deptNameCell(fieldText(image, gaGridColumns[col - 1].iField)) : QString(); break;
        default: cells[col] = plainCell(raw); break;
        }
        if (c.iField == kDescription && iLookupFile == 1 && gLookupSettings.bLongDescriptions) {
            const QString note = gfsNotes_Read(QStringLiteral("I"), QLatin1Char('&') + fieldText(image, kSL).trimmed()).trimmed();
            if (note.size() > cells[col].size())
                cells[col] = note;
            height = rowHeightFor(int(cells[col].size()));
        }
    }
    if (iFirstCol == 1)
        cells[0] = enteredQty(fieldText(image, kSL));
    return cells;
}

// ---------------------------------------------------------------- the window's rows

void rowFill(int row, const QVariantList &image)
{
    gaGridText[row] = rowCells(image, engine().rowHeight[row]);
}

void rowFillCurrent(int row) { rowFill(row, currentImage()); }

void rowClear(int row)
{
    gaGridText[row] = QStringList(iGridCols);
    engine().rowHeight[row] = kRowHeight;
}

void rowsClear()
{
    for (int row = 1; row < iGridRows; ++row)
        rowClear(row);
}

void rowMove(int to, int from)
{
    gaGridText[to] = gaGridText[from];
    engine().rowHeight[to] = engine().rowHeight[from];
}

void paint(DataGridView &grid)
{
    for (int row = 1; row < iGridRows; ++row)
        grid.paintRow(row, gaGridText[row], engine().rowHeight[row]);
}

void select(DataGridView &grid, int row)
{
    engine().gridRow = row;
    grid.selectRow(row);
}

int lastFilledRow()
{
    int row = iGridRows - 1;
    while (row > 1 && gfbDataGrid_RowBlank(row))
        --row;
    return row;
}

// The column that shows the key's field, for matching typed text against the window.
int keyColumn()
{
    if (iLookupFile == 99) {
        static constexpr std::pair<int, int> names[] = {{1, kNameARCode},   {2, kNameLastName}, {3, kNameZip},
                                                        {4, kNameMail},     {5, kNameBusiness}, {7, kNameFirstName}};
        for (const auto &[key, field] : names) {
            if (key == iLookupKey)
                return gfiDataGrid_ColumnOf(field);
        }
        return -1;
    }
    const bool vendor = !sVendorFilter.trimmed().isEmpty();
    switch (iLookupKey) {
    case 1: return gfiDataGrid_ColumnOf(kSL, kSL_form);
    case 2: return bUpcMode ? gfiDataGrid_ColumnOf(kItemID, kUpc) : gfiDataGrid_ColumnOf(kItemID);
    case 3: case 5: return gfiDataGrid_ColumnOf(kDescription);
    case 4: return gfiDataGrid_ColumnOf(kSubDescription);
    case 6: return vendor ? gfiDataGrid_ColumnOf(kSL, kSL_form) : gfiDataGrid_ColumnOf(kVendorCode);
    case 7: return gfiDataGrid_ColumnOf(kItemID);
    case 8: return gfiDataGrid_ColumnOf(kDeptCode);
    default: return -1;
    }
}

int visibleMatch(const QString &text)
{
    const int col = keyColumn();
    const QString wanted = text.trimmed().toUpper();
    if (col < 0 || wanted.isEmpty())
        return 0;
    for (int row = 1; row < iGridRows && row < gaGridText.size(); ++row) {
        const QString cell = gaGridText[row].value(col);
        if (!gfbDataGrid_RowBlank(row) && cell.trimmed().toUpper().startsWith(wanted))
            return row;
    }
    return 0;
}

// ---------------------------------------------------------------- walks and the filter

bool fetch(int op)
{
    return bUpcMode ? gfbDB_RecordOp(kUpcTable, op, 2) : gfbDB_RecordOp(lookupTable(), op, iLookupKey);
}

enum class Verdict { Pass, Refuse, End };

Verdict judge()
{
    if (namesFile())
        return gName.DeleteFlag == QLatin1String("D") ? Verdict::Refuse : Verdict::Pass;
    if (bUpcMode) {
        if (upcStandsForNoItem(gUpc.UPC))
            return Verdict::Refuse;
        gInventory.RecordNum = gUpc.InvUID;
        if (!gfbDB_RecordOp(kInventoryTable, kOpEqual, 0))
            return Verdict::Refuse;
    }
    const InventoryRecord &r = gInventory;
    if (vendorFiltered() && r.VendorCode.trimmed().compare(sVendorFilter.trimmed(), Qt::CaseInsensitive) != 0)
        return vendorKey() ? Verdict::End : Verdict::Refuse;
    if (bDeptMode && r.DeptCode.left(3) != sSearchText.left(3))
        return Verdict::Refuse;
    if (r.Status == QLatin1String("D") || (gLookupSettings.bMatrixRootsHidden && r.FlgMatrix == QLatin1String("Y")))
        return Verdict::Refuse;
    return Verdict::Pass;
}

// The current record when it may be shown, else the next one that may, fetched with op.
bool gfbDataGrid_RecordAcceptable(int op)
{
    for (;;) {
        switch (judge()) {
        case Verdict::Pass: return true;
        case Verdict::End: return false;
        case Verdict::Refuse:
            if (!fetch(op))
                return false;
            break;
        }
    }
}

bool step(int op) { return fetch(op) && gfbDataGrid_RecordAcceptable(op); }

// Puts the cursor on the record of a window row, unless it already stands at that edge.
bool gfbDataGrid_Reposition(int row, const QString &position)
{
    if (sPosition == position)
        return true;
    const QStringList &cells = gaGridText[row];
    auto cell = [&](int field, int format = 0) {
        const int col = gfiDataGrid_ColumnOf(field, format);
        return col < 0 ? QString() : cells.value(col);
    };
    bool found;
    if (namesFile()) {
        // The A/R code is the name's own: the row's record is fetched by it alone.
        gName = NameRecord();
        gName.ARCode = gfsNames_fitted(&NameRecord::ARCode, cell(kNameARCode));
        found = gfbDB_RecordOp(kNamesTable, kOpEqual, 1);
    } else if (bUpcMode) {
        gUpc = UpcRecord();
        gUpc.UPC = cut(cell(kItemID, kUpc), 15);
        found = gfbDB_RecordOp(kUpcTable, kOpEqual, 2);
        if (found) {
            gInventory.RecordNum = gUpc.InvUID;
            found = gfbDB_RecordOp(kInventoryTable, kOpEqual, 0);
        }
    } else {
        gInventory = InventoryRecord();
        gInventory.ItemID = cut(cell(kItemID), 25);
        gInventory.Description = cut(cell(kDescription), 30);
        gInventory.SubDescription = cut(cell(kSubDescription), 20);
        gInventory.SL = cut(gfsItemID_key(cell(kSL, kSL_form)), 8);
        gInventory.VendorCode = cut(vendorKey() ? sVendorFilter : cell(kVendorCode), 15);
        gInventory.DeptCode = cut(cell(kDeptCode), 11);
        // The edge row's own record is fetched, so no rows lie between to walk. The sort's own
        // key comes first: it seeks by its index and is unique to the row, while the Item ID
        // (compared left-trimmed) reads the whole table on a large file and may be shared by
        // two items. Both reach the same record when the Item ID is the row's alone.
        found = gfbDB_RecordOp(kInventoryTable, kOpEqual, iLookupKey) || gfbDB_RecordOp(kInventoryTable, kOpEqual, 2);
    }
    sPosition = found ? position : QString();
    return found;
}

// ---------------------------------------------------------------- positioning by text

QString slKey(QString text)
{
    text.remove(QLatin1Char('.'));
    return (QStringLiteral("      ") + text.toUpper()).right(8);
}

const QString kSLFloor = QStringLiteral("      0 ");

// A name's key from typed text; on key 2 "last, first" fills both names.
void nameKeyFill(const QString &text)
{
    NameRecord &r = gName;
    auto fit = [](QString NameRecord::*field, const QString &value) { gName.*field = gfsNames_fitted(field, value); };
    r = NameRecord();
    switch (iLookupKey) {
    case 1: fit(&NameRecord::ARCode, text); break;
    case 2: {
        const qsizetype comma = text.indexOf(QLatin1Char(','));
        fit(&NameRecord::LastName, comma < 0 ? text : text.left(comma));
        if (comma >= 0)
            fit(&NameRecord::FirstName, text.mid(comma + 1).trimmed());
        break;
    }
    case 3: fit(&NameRecord::Zip, text); break;
    case 4: fit(&NameRecord::Mail, text); break;
    case 5: fit(&NameRecord::Business, text); break;
    case 7: fit(&NameRecord::FirstName, text); break;
    case 9: fit(&NameRecord::PhoneIndex, text); break;
    default: break;
    }
}

QString nameKeyFieldText()
{
    const NameRecord &r = gName;
    switch (iLookupKey) {
    case 1: return r.ARCode;
    case 2: return r.LastName;
    case 3: return r.Zip;
    case 4: return r.Mail;
    case 5: return r.Business;
    case 7: return r.FirstName;
    case 9: return r.PhoneIndex;
    default: return QString();
    }
}

void keyFill(const QString &text)
{
    if (namesFile()) {
        nameKeyFill(text);
        return;
    }
    InventoryRecord &r = gInventory;
    const bool vendor = vendorKey();
    const QString rest = QString(20, QLatin1Char(' '));
    if (vendor)
        r.VendorCode = cut(sVendorFilter, 15);
    switch (iLookupKey) {
    case 0: r.RecordNum = text.toInt(); break;
    case 1: r.SL = slKey(text); break;
    case 2: r.ItemID = cut(text.toUpper(), 25); break;
    case 3: r.Description = cut(text, 30), r.SL = kSLFloor; break;
    case 4: r.SubDescription = cut(text, 20), r.SL = kSLFloor; break;
    case 5: r.Description = text.isEmpty() ? rest : cut(text, 30); break;
    case 6:
        if (vendor)
            r.SL = text.isEmpty() ? QString(8, QLatin1Char(' ')) : slKey(text);
        else
            r.VendorCode = cut(text.toUpper(), 15), r.SL = kSLFloor;
        break;
    case 7:
        if (vendor)
            r.ItemID = text.isEmpty() ? rest : cut(text.toUpper(), 25);
        else
            r.VendorCode = cut(text.toUpper(), 15), r.ItemID = QStringLiteral("  ");
        break;
    case 8: r.DeptCode = cut(text, 11), r.ItemID = QStringLiteral("  "); break;
    default: break;
    }
}

QString keyFieldText()
{
    if (namesFile())
        return nameKeyFieldText();
    const InventoryRecord &r = gInventory;
    const bool vendor = vendorKey();
    switch (iLookupKey) {
    case 1: return r.SL;
    case 2: return r.ItemID;
    case 3: case 5: return r.Description;
    case 4: return r.SubDescription;
    case 6: return vendor ? r.SL : r.VendorCode;
    case 7: return vendor ? r.ItemID : r.VendorCode;
    case 8: return r.DeptCode;
    default: return QString();
    }
}

QChar firstLetter(const QString &text)
{
    const QString t = text.trimmed().toUpper();
    return t.isEmpty() ? QChar() : t[0];
}

// The list opens on the nearest record, never beyond the last match: a record found past
// the text's first letter gives way to the one before it.
void firstLetterCorrect(const QString &text)
{
    const QChar wanted = firstLetter(text), found = firstLetter(keyFieldText());
    if (found.isNull() || found <= wanted)
        return;
    if (gfbDB_RecordOp(lookupTable(), kOpGetPrevious, iLookupKey) && firstLetter(keyFieldText()) > wanted)
        gfbDB_RecordOp(lookupTable(), kOpGetNext, iLookupKey);
}

// Nothing at or after the text: the last record at or before it, by the sort field alone,
// whose value the set's current row carries for the raw read.
bool lastAtOrBefore()
{
    const int table = lookupTable();
    const int column = namesFile() ? gfiNames_column(iSortField) : iSortField;
    gpDB_FieldSet(table, column, currentImage().value(iSortField));
    if (!gfbDB_RecordOp(table, kOpLessEqual, column, true))
        return false;
    gpDB_table_row_to_record(table);
    return true;
}

// Typed text fills every segment of most keys: when ">=" then finds a record, the "Get
// First" before it left nothing that lasts, and reading it first would cost a statement.
bool positionedByTextAlone(const QString &text)
{
    const bool wholeKey = !namesFile() && (iLookupKey != 5 || vendorKey());
    if (text.isEmpty() || text.contains(QLatin1Char('\'')) || !wholeKey || gfiWalk_window() < 2 || !gfrsDB_Current(kInventoryTable))
        return false;
    const InventoryRecord before = gInventory;
    keyFill(text);
    if (gfbDB_RecordOp(kInventoryTable, kOpGreaterEqual, iLookupKey)) {
        firstLetterCorrect(text);
        return true;
    }
    gInventory = before;
    return false;
}

bool keyPosition(const QString &text)
{
    if (positionedByTextAlone(text))
        return true;
    // "Get First" comes before any text: on an empty table the rows just go blank.
    const bool first = gfbDB_RecordOp(lookupTable(), kOpGetFirst, iLookupKey);
    if (!first && gfiDB_RecordCount(lookupTable()) == 0)
        return false;
    if (text.isEmpty() && !vendorKey())
        return first;
    keyFill(text);
    if (gfbDB_RecordOp(lookupTable(), kOpGreaterEqual, iLookupKey)) {
        if (!text.isEmpty())
            firstLetterCorrect(text);
        return true;
    }
    if (lastAtOrBefore() || gfbDB_RecordOp(lookupTable(), kOpGetFirst, iLookupKey))
        return true;
    if (!text.isEmpty())
        message("Error No Data found in File");
    return false;
}

bool upcPosition(const QString &text)
{
    const QString T = dbuaTable[kUpcTable].sSqlFile;
    const QString sql = text.isEmpty() ? QStringLiteral("SELECT TOP 1 * FROM ") + T + QStringLiteral(" WHERE ltrim(upc) > ' ' order by UPC")
                                       : QStringLiteral("SELECT TOP 1 * FROM ") + T + QStringLiteral(" WHERE LEFT(upc,") +
                                             QString::number(text.size()) + QStringLiteral(")='") + text + QStringLiteral("'") +
                                             QStringLiteral(" order by UPC");
    if (gfbDB_ExecuteSQL(sql, kUpcTable, false)) {
        gpUpc_read(kUpcTable);
        return true;
    }
    if (gfiDB_RecordCount(kUpcTable) == 0) {
        message("No UPC Codes in UPC File");
        return false;
    }
    gUpc = UpcRecord();
    gUpc.UPC = cut(text, 15);
    return gfbDB_RecordOp(kUpcTable, kOpLessEqual, 2) || gfbDB_RecordOp(kUpcTable, kOpGetFirst, 2);
}

// The search text is a department: the first department of the text's level opens the list.
bool deptPosition(const QString &text)
{
    gDept = DeptRecord();
    bool found = gfbDB_RecordOp(kDeptTable, kOpGetFirst, 1);
    while (found && !(gDept.DeptCode.startsWith(text) && gDept.DeptCode.mid(4, 7) == QLatin1String("000.000")))
        found = gfbDB_RecordOp(kDeptTable, kOpGetNext, 1);
    if (!found) {
        message("No Matching Departments found");
        return false;
    }
    sSearchText = gDept.DeptCode.left(3);
    iLookupKey = 8;
    gInventory.DeptCode = gDept.DeptCode;
    gInventory.ItemID = QStringLiteral("  ");
    return gfbDB_RecordOp(kInventoryTable, kOpGreaterEqual, 8);
}

// The next code after the one in the buffer that stands for an item, by the search's own
// statement rather than the keyed walk.
bool upcStepBySearch()
{
    for (;;) {
        const QString sql = QStringLiteral("SELECT TOP 1 * FROM ") + dbuaTable[kUpcTable].sSqlFile + QStringLiteral(" WHERE upc > '") +
                            gUpc.UPC.trimmed() + QStringLiteral("' order by UPC");
        if (!gfbDB_ExecuteSQL(sql, kUpcTable, false))
            return false;
        gpUpc_read(kUpcTable);
        switch (judge()) {
        case Verdict::Pass: return true;
        case Verdict::End: return false;
        case Verdict::Refuse: break;
        }
    }
}

// Rows from `first` on through Get Next, or in UPC mode after a search through its
// statement; after the last record the rest is blank.
void fillForward(int first, bool bSearch = false)
{
    int row = first;
    for (; row < iGridRows; ++row) {
        if (!(bSearch && bUpcMode ? upcStepBySearch() : step(kOpGetNext)))
            break;
        rowFillCurrent(row);
    }
    for (int blank = row; blank < iGridRows; ++blank)
        rowClear(blank);
    if (row < iGridRows)
        bAtBottom = true;
}

// ---------------------------------------------------------------- windows of rows
// Item lists read a page's records and their codes by windows (see WalkWindow.h and the
// UPC column above).

// The UPC mode walks codes, not items; the names keep their own steps.
bool byWindows() { return !bUpcMode && !namesFile(); }

// The records of up to `wanted` steps of op, as the window's rows show them.
QList<QVariantList> walkImages(int op, int wanted)
{
    QList<QVariantList> images;
    const WalkVisit visit{[] {
                              switch (judge()) {
                              case Verdict::Pass: return WalkVerdict::Pass;
                              case Verdict::End: return WalkVerdict::End;
                              case Verdict::Refuse: break;
                              }
                              return WalkVerdict::Refuse;
                          },
                          [&] { images << currentImage(); }};
    gfiWalk_steps(kInventoryTable, iLookupKey, op, wanted, visit);
    return images;
}

// Fills rows[i] from images[i], in that order.
void rowsFill(const QList<int> &rows, const QList<QVariantList> &images)
{
    upcWindow().prepare(images);
    for (int i = 0; i < images.size(); ++i)
        rowFill(rows[i], images[i]);
    upcWindow().settle();
}

// The rows from the top, the rest blank; fewer records than rows is the list's end.
void fillWindow(const QList<QVariantList> &images)
{
    QList<int> rows;
    for (int i = 0; i < images.size(); ++i)
        rows << i + 1;
    rowsFill(rows, images);
    for (int blank = int(images.size()) + 1; blank < iGridRows; ++blank)
        rowClear(blank);
    if (images.size() < iGridRows - 1)
        bAtBottom = true;
}

// ---------------------------------------------------------------- windows of rows: end

// The current record on row 1 and the rest after it.
bool fillFromCurrent(DataGridView &grid, bool bSearch = false)
{
    if (!gfbDataGrid_RecordAcceptable(kOpGetNext)) {
        rowsClear();
        bAtBottom = true;
        sPosition.clear();
        paint(grid);
        return false;
    }
    if (!byWindows()) {
        rowFillCurrent(1);
        fillForward(2, bSearch);
    } else {
        QList<QVariantList> images{currentImage()};
        images += walkImages(kOpGetNext, iGridRows - 2);
        fillWindow(images);
    }
    sPosition = kBottom;
    paint(grid);
    return true;
}

// ---------------------------------------------------------------- scan search

// A note of an item ("&" and its SL) is a hit on that item, known by its record number.
void noteHitsCollect(const QString &like)
{
    const QString sql = QStringLiteral("Select * from notes where FILECODE ='I' AND NOTETEXT like '%") + like + QStringLiteral("%'");
    if (!gfbDB_ExecuteSQL(sql, kNotesTable, false))
        return;
    Recordset *notes = dbaRecordset[kNotesTable].get();
    for (; !notes->eof(); notes->moveNext()) {
        gpNotes_read(kNotesTable);
        if (gNotes.FILECODE.trimmed() != QLatin1String("I"))
            continue;
        const QString ref = gNotes.REFCODE.trimmed();
        const qint32 recordNum =
            ref.startsWith(QLatin1Char('&')) && gfiInventory_BySL(cut(ref.mid(1), 8), false) == -1 ? gInventory.RecordNum : 0;
        gaWildHits.append({ref.left(8), recordNum, gNotes.NOTETEXT.trimmed(), false});
    }
}

void hitUse(const QVariantList &image)
{
    const qint32 recordNum = image.value(kRecordNum).toInt();
    for (WildHit &hit : gaWildHits) {
        if (hit.lRecordNum == recordNum)
            hit.bUsed = true;
    }
}

void paintHits(DataGridView &grid)
{
    const int top = engine().hitTop;
    for (int row = 1; row < iGridRows; ++row) {
        const int hit = top + row - 1;
        if (hit < gaInventoryHits.size())
            rowFill(row, gaInventoryHits[hit]);
        else
            rowClear(row);
    }
    paint(grid);
}

bool scanSearch(DataGridView &grid, const QString &text)
{
    if (sKeyFieldName.isEmpty()) {
        message("Wildcard Sort not available on this field");
        return false;
    }
    if (sKeyFieldName == QLatin1String("UPC") || sKeyFieldName == QLatin1String("QtyOnHand") ||
        sKeyFieldName.startsWith(QLatin1String("Price"))) {
        gfiMsgBox(QStringLiteral("Wildcard search not available on ") + sKeyFieldName);
        return false;
    }
    QString like = text;
    like.replace(QLatin1Char('\''), QLatin1String("''"));
    gaInventoryHits.clear();
    gaWildHits.clear();
    bStop = false;
    const bool description = sKeyFieldName == QLatin1String("Description");
    if (description && gLookupSettings.bLongDescriptions && !namesFile())
        noteHitsCollect(like);
    const QString order = description ? QStringLiteral("Order BY Description,subdescription") : QStringLiteral("Order BY ") + sKeyFieldName;
    const int table = lookupTable();
    const QString head = QStringLiteral("SELECT * FROM ") + dbuaTable[table].sSqlFile + QStringLiteral(" WHERE ") + sKeyFieldName +
                         QStringLiteral(" like '%") + like;
    const QString sql = namesFile() ? head + QStringLiteral("%' And DeleteFlag <> 'D' ") + QStringLiteral("Order BY ARCode")
                                    : head + QStringLiteral("%' And status <> 'D' ") + order;
    if (gfbDB_ExecuteSQL(sql, table, false)) {
        const Recordset *rows = dbaRecordset[table].get();
        // A key handled while the window system runs may replace the set: the scan ends there.
        while (!bStop && dbaRecordset[table].get() == rows && !rows->eof()) {
            gpDB_table_row_to_record(table);
            gaInventoryHits.append(currentImage());
            hitUse(gaInventoryHits.last());
            dbaRecordset[table]->moveNext();
            yieldTo(grid);
        }
    }
    for (const WildHit &hit : std::as_const(gaWildHits)) {
        if (hit.bUsed || bStop || hit.lRecordNum == 0)
            continue;
        gInventory.RecordNum = hit.lRecordNum;
        if (!gfbDB_RecordOp(kInventoryTable, kOpEqual, 0) || gInventory.Status == QLatin1String("D"))
            continue;
        QVariantList image = currentImage();
        image[kDescription] = hit.sText;
        gaInventoryHits.append(image);
    }
    EngineState &e = engine();
    e.hitTop = 0;
    e.scanShown = true;
    bAtTop = true;
    bAtBottom = gaInventoryHits.size() <= iGridRows - 1;
    paintHits(grid);
    select(grid, 1);
    if (gaInventoryHits.isEmpty()) {
        message("No matches found");
        return false;
    }
    if (bAtBottom)
        message("End of List");
    return true;
}

// ---------------------------------------------------------------- moves

void lineUp(DataGridView &grid)
{
    grid.setHighLight(0);
    if (engine().scanShown) {
        if (engine().hitTop == 0) {
            message("Top Of List", kLookUp);
            bAtTop = true;
            return;
        }
        --engine().hitTop;
        bAtBottom = false;
        paintHits(grid);
        return;
    }
    if (!gfbDataGrid_Reposition(1, kTop)) {
        message("Top Of the List");
        sPosition = kTop;
        bAtTop = true;
        return;
    }
    if (!step(kOpGetPrevious)) {
        message("Top Of List", kLookUp);
        bAtTop = true;
        return;
    }
    for (int row = iGridRows - 1; row >= 2; --row)
        rowMove(row, row - 1);
    rowFillCurrent(1);
    sPosition = kTop;
    bAtBottom = gfbDataGrid_RowBlank(iGridRows - 1);
    paint(grid);
}

void lineDown(DataGridView &grid)
{
    grid.setHighLight(0);
    const int last = iGridRows - 1;
    if (engine().scanShown) {
        if (engine().hitTop + last >= gaInventoryHits.size()) {
            message("End Of List", kLookUp);
            bAtBottom = true;
            return;
        }
        ++engine().hitTop;
        bAtTop = false;
        paintHits(grid);
        return;
    }
    if (!gfbDataGrid_Reposition(last, kBottom) || !step(kOpGetNext)) {
        message("End Of List", kLookUp);
        bAtBottom = true;
        return;
    }
    for (int row = 1; row < last; ++row)
        rowMove(row, row + 1);
    rowFillCurrent(last);
    sPosition = kBottom;
    bAtTop = false;
    paint(grid);
}

void pageDown(DataGridView &grid, int &row)
{
    if (bAtBottom)
        return;
    grid.setHighLight(0);
    const int last = iGridRows - 1;
    if (engine().scanShown) {
        EngineState &e = engine();
        if (e.hitTop + last < gaInventoryHits.size())
            e.hitTop += last;
        paintHits(grid);
        bAtTop = false;
        if (e.hitTop + last >= gaInventoryHits.size()) {
            bAtBottom = true;
            message("End of List");
            row = int(gaInventoryHits.size()) - e.hitTop;
        }
        return;
    }
    if (!gfbDataGrid_Reposition(lastFilledRow(), kBottom)) {
        message("End of List");
        bAtBottom = true;
        return;
    }
    if (!byWindows()) {
        if (!step(kOpGetNext)) {
            message("End of List");
            bAtBottom = true;
            return;
        }
        rowFillCurrent(1);
        fillForward(2);
    } else {
        const QList<QVariantList> images = walkImages(kOpGetNext, last);
        if (images.isEmpty()) {
            message("End of List");
            bAtBottom = true;
            return;
        }
        fillWindow(images);
    }
    sPosition = kBottom;
    bAtTop = false;
    paint(grid);
    if (bAtBottom)
        row = qMin(row, lastFilledRow());
}

void pageUp(DataGridView &grid, int &row)
{
    row = engine().gridRow;
    grid.setHighLight(0);
    const int last = iGridRows - 1;
    if (engine().scanShown) {
        EngineState &e = engine();
        e.hitTop = qMax(0, e.hitTop - last);
        bAtTop = e.hitTop == 0;
        bAtBottom = false;
        paintHits(grid);
        return;
    }
    if (!gfbDataGrid_Reposition(1, kTop)) {
        message("Top of List");
        bAtTop = true;
        return;
    }
    QList<QVariantList> before; // nearest first
    if (!byWindows()) {
        while (before.size() < last && step(kOpGetPrevious))
            before.append(currentImage());
    } else {
        before = walkImages(kOpGetPrevious, last);
    }
    if (before.isEmpty()) {
        message("Top of List");
        bAtTop = true;
        return;
    }
    // Near the head the rows already shown move down under the ones found, so that no
    // blank row stands on top.
    const int n = int(before.size());
    for (int r = last; r > n; --r)
        rowMove(r, r - n);
    QList<int> rows;
    for (int i = 0; i < n; ++i)
        rows << n - i;
    rowsFill(rows, before);
    bAtTop = n < last;
    bAtBottom = gfbDataGrid_RowBlank(last);
    sPosition = kTop;
    paint(grid);
}

void scroll(DataGridView &grid, int direction, int &row)
{
    if (bAtTop && (direction == kLineUp || direction == kPageUp)) {
        message("Top of List");
        row = 1;
        return;
    }
    switch (direction) {
    case kLineUp: lineUp(grid); break;
    case kPageUp: pageUp(grid, row); break;
    case kPageDown: pageDown(grid, row); break;
    default: lineDown(grid); break;
    }
}

} // namespace

// ---------------------------------------------------------------- interface

void gpDataGrid_Size()
{
    gaGridText = QList<QStringList>(iGridRows, QStringList(iGridCols));
    engine().rowHeight = QList<int>(iGridRows, kRowHeight);
    engine().upcSL.clear();
}

int gfiDataGrid_RowCount(int iGridHeightTwips) { return qMax(2, (iGridHeightTwips - kRowHeight) / kRowHeight + 1); }

bool gfbDataGrid_RowBlank(int iRow)
{
    if (iRow < 0 || iRow >= gaGridText.size())
        return true;
    for (const QString &cell : gaGridText[iRow]) {
        if (!cell.trimmed().isEmpty())
            return false;
    }
    return true;
}

int gfiDataGrid_Row() { return engine().gridRow; }

void gpDataGrid_SetRow(int iRow, DataGridView &grid) { select(grid, iRow); }

bool gfvDataGrid_Find(DataGridView &grid, bool bFromSearch)
{
    const ActionReads reads;
    const QString text = sSearchText.trimmed();
    const bool scan = bWildcard || iSortField2 >= 0;
    if (gaGridText.size() != iGridRows)
        gpDataGrid_Size();
    if (!scan && !engine().scanShown) {
        if (const int row = visibleMatch(text)) {
            select(grid, row);
            return true;
        }
    }
    gInventory = InventoryRecord();
    gName = NameRecord();
    gUpc = UpcRecord();
    bAtTop = false;
    bAtBottom = false;
    engine().scanShown = false;
    engine().upcSL.clear();
    if (scan)
        return scanSearch(grid, text);
    const bool positioned = bUpcMode ? upcPosition(text) : bDeptMode ? deptPosition(text) : keyPosition(text);
    if (!positioned) {
        rowsClear();
        bAtBottom = true;
        sPosition.clear();
        paint(grid);
        select(grid, 1);
        return false;
    }
    const bool filled = fillFromCurrent(grid, true);
    const int row = visibleMatch(text);
    select(grid, row > 0 ? row : 1);
    yieldTo(grid);
    if (bFromSearch)
        grid.activate();
    return filled;
}

bool gfbDataGrid_Reload(DataGridView &grid)
{
    const ActionReads reads;
    if (gaGridText.size() == iGridRows && iGridRows > 1 && !gfbDataGrid_RowBlank(1))
        return true;
    iGridRows = iGridRowCount;
    grid.setHighLight(0);
    gpDataGrid_Size();
    engine().scanShown = false;
    bAtBottom = false;
    gInventory = InventoryRecord();
    bool positioned = false;
    if (!sRememberedSL.trimmed().isEmpty() && !bFindMode && !bUpcMode && !namesFile() &&
        gfiDB_RecordCount(kInventoryTable) > iGridRows - 1) {
        gInventory.SL = cut(sRememberedSL, 8);
        positioned = gfbDB_RecordOp(kInventoryTable, kOpEqual, 1);
        bAtTop = false;
    }
    if (!positioned) {
        bAtTop = true;
        positioned = bUpcMode ? upcPosition(QString()) : keyPosition(QString());
    }
    if (!positioned || !fillFromCurrent(grid)) {
        rowsClear();
        bAtBottom = true;
        paint(grid);
        message("No matching data found");
        return false;
    }
    select(grid, 1);
    return true;
}

void gpDataGrid_Move(DataGridView &grid, int iDirection)
{
    const ActionReads reads;
    EngineState &e = engine();
    int row = e.scanShown ? grid.row() : e.gridRow;
    row = qBound(1, row, qMax(1, iGridRows - 1));
    // A scan keeps the last line free: Down scrolls one row earlier.
    const int last = e.scanShown ? iGridRows - 2 : iGridRows - 1;
    switch (iDirection) {
    case kLineUp:
        if (row > 1)
            --row;
        else
            scroll(grid, iDirection, row);
        break;
    case kPageUp:
    case kPageDown:
        scroll(grid, iDirection, row);
        break;
    default:
        if (row < last) {
            if (gfbDataGrid_RowBlank(row + 1)) {
                message("End of the List", kLookUp);
                bAtBottom = true;
            } else {
                ++row;
            }
        } else {
            scroll(grid, iDirection, row);
        }
        break;
    }
    select(grid, row);
    grid.searchFocus();
}

void gpDataGrid_Unload()
{
    gaGridText.clear();
    gaInventoryHits.clear();
    gaWildHits.clear();
    engine() = EngineState();
    sPosition.clear();
}

} // namespace qln
