#include "lookup/frm_Lookup.h"

#include "common/FormControls.h"
#include "common/FormLook.h"
#include "common/ItemNumber.h"
#include "common/ProcessState.h"
#include "lookup/FGrid.h"
#include "lookup/FlexGrid.h"
#include "lookup/GridSetUpBackOffice.h"
#include "platform/Help.h"
#include "platform/Messages.h"
#include "platform/Mouse.h"
#include "platform/Settings.h"
#include "shell/Startup.h"
#include "store/Common.h"
#include "store/Database.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"
#include "store/Upc.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSpinBox>
#include <QTableView>
#include <QVBoxLayout>

namespace qln {

namespace {

constexpr int kDataRowHeight = 600;
constexpr int kHeaderHeight = 700;
const QString kRememberKey = QStringLiteral("RememberSLCode");
const QString kRememberNameKey = QStringLiteral("RememberARCode");

bool namesLookup() { return iLookupFile == kNamesTable; }

// A digit of the main keys or the number pad.
bool isDigitKey(int key) { return key >= Qt::Key_0 && key <= Qt::Key_9; }

// The UPC-A check digit of eleven digits.
QChar checkDigit(const QString &digits)
{
    int sum = 0;
    for (int i = 0; i < digits.size(); ++i)
        sum += digits[i].digitValue() * (i % 2 == 0 ? 3 : 1);
    return QChar(u'0' + (10 - sum % 10) % 10);
}

} // namespace

void gpDataGrid_Setup(FlexGrid &grid)
{
    if (gaGridColumns.empty()) {
        if (namesLookup())
            gfbGridSetUp_Names();
        else
            gfbGridSetUp_Inventory();
    }
    iGridRows = iGridRowCount;
    gpDataGrid_Size();
    grid.setRedraw(false);
    grid.Clear();
    grid.setRows(iGridRows + 1);
    grid.setCols(iGridCols);
    grid.setRow(0);
    grid.setWordWrap(true);
    grid.setRowHeight(0, kHeaderHeight);
    int width = 0;
    for (int col = 0; col < iGridCols; ++col) {
        const GridColumn &c = gaGridColumns[col];
        grid.setColWidth(col, c.lWidth);
        grid.setColAlignment(col, c.iAlign);
        grid.setCol(col);
        grid.setCellAlignment(4);
        grid.setText(c.sCaption);
        width += c.lWidth;
        for (int row = 1; row < iGridRows; ++row) {
            grid.setRow(row);
            grid.setCellBackColor(c.lBackColor);
        }
        grid.setRow(0);
    }
    grid.setWidth(width);
    grid.setRow(0);
    grid.setCol(0);
    grid.setRedraw(true);
}

// The engine's view of the window's grid.
class frm_Lookup::GridView final : public DataGridView {
public:
    GridView(frm_Lookup &form, FlexGrid &grid) : m_form(form), m_grid(grid) {}
    int row() const override { return m_grid.Row(); }
    void selectRow(int row) override
    {
        if (row < 1 || row >= m_grid.Rows())
            return;
        m_grid.setRow(row);
        m_grid.setCol(iFirstCol);
        m_grid.setColSel(iGridCols - 1);
    }
    void setHighLight(int mode) override { m_grid.setHighLight(mode); }
    void paintRow(int row, const QStringList &cells, int heightTwips) override
    {
        if (row >= m_grid.Rows())
            return;
        for (int col = 0; col < cells.size() && col < m_grid.Cols(); ++col)
            m_grid.setTextMatrix(row, col, cells[col]);
        m_grid.setRowHeight(row, heightTwips);
        m_form.mpEntry_follow();
    }
    void yield() override
    {
        if (m_yielding)
            return;
        m_yielding = true;
        QCoreApplication::processEvents();
        m_yielding = false;
    }
    void activate() override
    {
        m_grid.setEnabled(true);
        m_grid.setFocus();
    }
    void searchFocus() override
    {
        if (m_form.txtEditValue->isEnabled() && m_form.txtEditValue->isVisible())
            m_form.txtEditValue->setFocus();
    }

private:
    frm_Lookup &m_form;
    FlexGrid &m_grid;
    bool m_yielding = false;
};

frm_Lookup::frm_Lookup(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frm_Lookup"));
    if (gZorIni.File())
        gpLookupSettings_load(gZorIni);
    if (const QScreen *screen = QGuiApplication::primaryScreen(); screen && screen->size().height() > 0)
        gLookupSettings.dScreenRatio = double(screen->size().width()) / screen->size().height();
    mpControls_make();
    m_view = new GridView(*this, *fgrdItems);
    m_store = giStore;
    LblTraining->setVisible(gbTraining);
    gaGridColumns.clear();
    gaLookupEntries.clear();
    iGridRowCount = 14;
    gpDataGrid_Setup(*fgrdItems);
    m_sortCol = namesLookup() ? gfiDataGrid_ColumnOf(kNameARCode) : iFirstCol;
    ckWildcard->setVisible(true);
    if (!bFindMode && !namesLookup())
        sRememberedSL = GetSetting(kZorSettings, QStringLiteral("DATABASE"), kRememberKey);
    sSearchText.clear();
    bWildcard = false;
    mpActivate();
    gpFont_normalise(this);
    // Wide enough for every column and the scroll bar beside the buttons, still free to be
    // made narrower.
    const QTableView *view = fgrdItems->view();
    fgrdItems->setMinimumWidth(fgrdItems->width() + 2 * view->frameWidth() + view->verticalScrollBar()->sizeHint().width());
    resize(qMax(width(), minimumSizeHint().width()), 560);
    fgrdItems->setMinimumWidth(0);
}

frm_Lookup::~frm_Lookup()
{
    gpDataGrid_Unload();
    delete m_view;
}

void frm_Lookup::mpControls_make()
{
    auto *layout = new QVBoxLayout(this);
    auto *top = new QHBoxLayout;
    auto *searchCaption = new QLabel(QStringLiteral("Search Criteria"), this);
    searchCaption->setObjectName(QStringLiteral("lblSearch"));
    lblSearchField = new QLabel(this);
    lblSearchField->setObjectName(QStringLiteral("lblSearchField"));
    txtEditValue = new QLineEdit(this);
    txtEditValue->setObjectName(QStringLiteral("txtEditValue"));
    ckWildcard = new QCheckBox(QStringLiteral("F3 Use Wildcard Search"), this);
    ckWildcard->setObjectName(QStringLiteral("ckWildcard"));
    cmdSearch = gfCommand_button(this, QStringLiteral("cmdSearch"), QStringLiteral("Search Now"));
    cmdStop = gfCommand_button(this, QStringLiteral("cmdStop"), QStringLiteral("Stop Search"));
    cmdEdit = gfCommand_button(this, QStringLiteral("cmdEdit"), QStringLiteral("Clear"));
    Lblwait = new QLabel(QStringLiteral("Searching..."), this);
    Lblwait->setObjectName(QStringLiteral("Lblwait"));
    Lblwait->hide();
    LblTraining = new QLabel(QStringLiteral("Training"), this);
    LblTraining->setObjectName(QStringLiteral("LblTraining"));
    for (QWidget *w : std::initializer_list<QWidget *>{searchCaption, lblSearchField, txtEditValue, ckWildcard, cmdSearch, cmdStop,
                                                       cmdEdit, Lblwait, LblTraining})
        top->addWidget(w);
    layout->addLayout(top);

    FraScan = new QGroupBox(QStringLiteral("Scan Code"), this);
    FraScan->setObjectName(QStringLiteral("FraScan"));
    auto *scanLayout = new QHBoxLayout(FraScan);
    TxtScan = new QLineEdit(FraScan);
    TxtScan->setObjectName(QStringLiteral("TxtScan"));
    scanLayout->addWidget(TxtScan);
    FraScan->hide();
    layout->addWidget(FraScan);

    auto *middle = new QHBoxLayout;
    fgrdItems = new FlexGrid(this);
    fgrdItems->setObjectName(QStringLiteral("fgrdItems"));
    middle->addWidget(fgrdItems, 1);
    auto *paging = new QVBoxLayout;
    cmdPage[0] = gfCommand_button(this, QStringLiteral("cmdPage(0)"), QStringLiteral("Page Up"));
    cmdPage[1] = gfCommand_button(this, QStringLiteral("cmdPage(1)"), QStringLiteral("Page Down"));
    SpnGrid = new QSpinBox(this);
    SpnGrid->setObjectName(QStringLiteral("SpnGrid"));
    SpnGrid->setRange(0, 2);
    SpnGrid->setValue(1);
    SpnGrid->setButtonSymbols(QAbstractSpinBox::UpDownArrows);
    paging->addWidget(cmdPage[0]);
    paging->addWidget(SpnGrid);
    paging->addWidget(cmdPage[1]);
    paging->addStretch();
    middle->addLayout(paging);
    layout->addLayout(middle, 1);

    auto *buttons = new QHBoxLayout;
    for (int i = 0; i < 5; ++i) {
        cmdAction[i] = gfCommand_button(this, QStringLiteral("cmdAction(%1)").arg(i), gLookupCaptions.saAction[i]);
        buttons->addWidget(cmdAction[i]);
    }
    CboStore = new QComboBox(this);
    CboStore->setObjectName(QStringLiteral("CboStore"));
    CboStore->hide();
    buttons->addWidget(CboStore);
    cmdAdd = gfCommand_button(this, QStringLiteral("cmdAdd"), QStringLiteral("Add New Item"));
    cmdAltVendor = gfCommand_button(this, QStringLiteral("cmdAltVendor"), QStringLiteral("Alternate Vendor"));
    cmdAltVendor->hide();
    cmdScan = gfCommand_button(this, QStringLiteral("cmdScan"), QStringLiteral("Scan Code"));
    cmdHelp = gfCommand_button(this, QStringLiteral("cmdHelp"), QStringLiteral("Help"));
    cmdExit = gfCommand_button(this, QStringLiteral("cmdExit"), QStringLiteral("Exit"));
    for (QWidget *w : std::initializer_list<QWidget *>{cmdAdd, cmdAltVendor, cmdScan, cmdHelp, cmdExit})
        buttons->addWidget(w);
    layout->addLayout(buttons);

    TxtText = new QLineEdit(fgrdItems);
    TxtText->setObjectName(QStringLiteral("TxtText"));
    TxtText->hide();

    connect(txtEditValue, &QLineEdit::textChanged, this, &frm_Lookup::txtEditValue_Change);
    connect(ckWildcard, &QCheckBox::toggled, this, &frm_Lookup::mpWildcard_follow);
    connect(cmdSearch, &QPushButton::clicked, this, &frm_Lookup::mpSearch_run);
    connect(cmdStop, &QPushButton::clicked, this, [] { bStop = true; });
    connect(cmdEdit, &QPushButton::clicked, this, &frm_Lookup::cmdEdit_Click);
    connect(cmdExit, &QPushButton::clicked, this, &frm_Lookup::cmdExit_Click);
    connect(cmdHelp, &QPushButton::clicked, this, [] {
        gpHelp_guides_open(namesLookup() ? QStringLiteral("namelookup.htm") : QStringLiteral("look_up_items.htm"));
    });
    connect(cmdAction[0], &QPushButton::clicked, this, &frm_Lookup::mpRow_choose);
    connect(cmdAction[2], &QPushButton::clicked, this, &frm_Lookup::mpStore_show);
    connect(CboStore, &QComboBox::activated, this, &frm_Lookup::mpStore_choose);
    connect(cmdAltVendor, &QPushButton::clicked, this, [this] { QDialog::reject(); });
    connect(cmdScan, &QPushButton::clicked, this, &frm_Lookup::mpScan_toggle);
    connect(cmdPage[0], &QPushButton::clicked, this, [this] { gpDataGrid_Move(*m_view, kPageUp); });
    connect(cmdPage[1], &QPushButton::clicked, this, [this] { gpDataGrid_Move(*m_view, kPageDown); });
    connect(SpnGrid, &QSpinBox::valueChanged, this, [this](int value) {
        if (value == 1)
            return;
        gpDataGrid_Move(*m_view, value > 1 ? kLineUp : kLineDown);
        SpnGrid->setValue(1);
    });
    connect(fgrdItems, &FlexGrid::cellClicked, this, [this](int row, int col) {
        if (row == 0) {
            mpSort_set(col);
            return;
        }
        gpDataGrid_SetRow(row, *m_view);
        if (iFirstCol == 1)
            mpEntry_open(row);
    });
    connect(fgrdItems, &FlexGrid::cellDoubleClicked, this, [this](int row, int) {
        if (row == 0)
            return;
        gpDataGrid_SetRow(row, *m_view);
        if (iFirstCol != 1)
            mpRow_choose();
    });
    for (QObject *watched : std::initializer_list<QObject *>{this, txtEditValue, TxtScan, TxtText, fgrdItems->view(), ckWildcard})
        watched->installEventFilter(this);
    for (QPushButton *b : findChildren<QPushButton *>())
        b->installEventFilter(this);
}

// What each showing of the window sets: captions and the buttons of the mode.
void frm_Lookup::mpActivate()
{
    sWhereClause.clear();
    sWhereClause2.clear();
    setWindowTitle(gLookupCaptions.sTitle);
    cmdExit->setText(gLookupCaptions.sExit);
    lblSearchField->setText(gLookupCaptions.sSearchLabel);
    for (int i = 0; i < 5; ++i)
        cmdAction[i]->setText(gLookupCaptions.saAction[i]);
    if (bFindMode) {
        cmdAction[0]->setText(QStringLiteral("F10 Accept"));
        for (int i = 2; i < 5; ++i)
            cmdAction[i]->hide();
        cmdAdd->hide(); // only the purchasing program adds items from here
    } else if (namesLookup()) {
        cmdAction[4]->hide();
        cmdAdd->setText(QStringLiteral("Add New Name"));
    } else {
        cmdAction[4]->setText(QStringLiteral("Pricing Utilities"));
        cmdAdd->setText(QStringLiteral("Add New Item"));
    }
    // The inventory program's own actions have no counterpart here, but for a head office's
    // choice of store. Adding stays off whatever the store.
    const bool storeChoice = !bFindMode && gfbCompany_head_office();
    for (QPushButton *b : {cmdAction[1], cmdAction[2], cmdAction[3], cmdAction[4], cmdAdd}) {
        const bool available = b == cmdAction[2] && storeChoice;
        b->setEnabled(available);
        b->setToolTip(available ? QString() : QStringLiteral("Not available in this program"));
    }
    const bool scanning = gLookupSettings.bScanning && iLookupFile == 1 && iFirstCol == 1;
    cmdScan->setVisible(scanning);
    const bool scanSearch = bWildcard || iSortField2 >= 0;
    cmdSearch->setVisible(scanSearch);
    cmdStop->setVisible(scanSearch);
    txtEditValue->setFocus();
}

void frm_Lookup::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (m_shown)
        return;
    m_shown = true;
    mpGrid_resize();
    if (!gfbDataGrid_Reload(*m_view) && !sVendorFilter.trimmed().isEmpty()) {
        cmdAltVendor->show();
        cmdAltVendor->setFocus();
    }
    gpGrid_HeaderHighlight(*fgrdItems, m_sortCol);
    gpDataGrid_SetRow(1, *m_view);
    txtEditValue->setFocus();
}

void frm_Lookup::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    if (!m_shown)
        return;
    const int before = iGridRowCount;
    mpGrid_resize();
    if (iGridRowCount != before && !gaGridText.isEmpty()) {
        iGridRows = iGridRowCount;
        gpDataGrid_Size();
        gfvDataGrid_Find(*m_view, false);
    }
    mpEntry_follow();
}

void frm_Lookup::mpGrid_resize()
{
    iGridRowCount = gfiDataGrid_RowCount(fgrdItems->Height());
    fgrdItems->setRows(iGridRowCount + 1);
    for (int row = 1; row <= iGridRowCount; ++row)
        fgrdItems->setRowHeight(row, kDataRowHeight);
}

int frm_Lookup::mfiGridRow() const { return qMax(1, fgrdItems->Row()); }

bool frm_Lookup::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        return mfbKey_handle(watched, key->key(), key->modifiers());
    }
    return QDialog::eventFilter(watched, event);
}

bool frm_Lookup::mfbKey_handle(QObject *watched, int key, Qt::KeyboardModifiers modifiers)
{
    if (watched == TxtText) {
        if (key == Qt::Key_Return || key == Qt::Key_Enter)
            mpEntry_close(true);
        else if (key == Qt::Key_Escape)
            mpEntry_close(false);
        else
            return false;
        return true;
    }
    if (watched == TxtScan) {
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            mpScan_enter();
            return true;
        }
        if (isDigitKey(key))
            return false;
    }
    if (modifiers & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier))
        return false;
    auto sortBy = [this](int offset) {
        mpSearch_clear();
        mpSort_set(iFirstCol + offset);
    };
    // The columns F4 to F9 lead with, by file: the names list's headers name their keys.
    const bool names = namesLookup();
    switch (key) {
    case Qt::Key_F2: cmdAction[0]->click(); return true;
    case Qt::Key_F3: ckWildcard->setChecked(true); return true;
    case Qt::Key_F4: sortBy(names ? 3 : 0); return true;
    case Qt::Key_F5: sortBy(names ? 4 : 1); return true;
    case Qt::Key_F6: sortBy(names ? (gLookupSettings.bPhoneLookup ? 2 : 1) : 2); return true;
    case Qt::Key_F7: sortBy(names ? 0 : 3); return true;
    case Qt::Key_F8: sortBy(names ? 8 : 5); return true;
    case Qt::Key_F9: sortBy(names ? 9 : 6); return true;
    case Qt::Key_F10:
        if (cmdStop->isVisible())
            cmdStop->click();
        else
            cmdAction[0]->click();
        return true;
    case Qt::Key_F11: cmdSearch->click(); return true;
    case Qt::Key_F12: cmdEdit->click(); return true;
    case Qt::Key_Up: gpDataGrid_Move(*m_view, kLineUp); return true;
    case Qt::Key_PageUp: gpDataGrid_Move(*m_view, kPageUp); return true;
    case Qt::Key_PageDown: gpDataGrid_Move(*m_view, kPageDown); return true;
    case Qt::Key_Down: gpDataGrid_Move(*m_view, kLineDown); return true;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        m_erasing = true;
        return false;
    case Qt::Key_Escape: cmdExit_Click(); return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (watched == txtEditValue || watched == fgrdItems->view()) {
            txtEditValue_Enter();
            return true;
        }
        focusNextChild();
        return true;
    default: return false;
    }
}

// A column becomes the sort: the header shows it and the list opens from the top.
void frm_Lookup::mpSort_set(int col)
{
    if (col < 0 || col >= iGridCols)
        return;
    if (namesLookup())
        gpDataGrid_SetSortNames(col);
    else if (!gpDataGrid_SetSortInventory(col))
        return; // refused: the header and the list stay as they are
    m_sortCol = gaGridColumns[col].iField == kNoField ? 1 : col;
    gpGrid_HeaderHighlight(*fgrdItems, m_sortCol);
    lblSearchField->setText(gLookupCaptions.sSearchLabel);
    mpActivate();
    gpDataGrid_Size();
    if (iSortField2 < 0)
        gfbDataGrid_Reload(*m_view);
    else
        ckWildcard->setChecked(true);
}

void frm_Lookup::txtEditValue_Change()
{
    QString text = txtEditValue->text();
    m_erasing = false;
    const bool vendor = !sVendorFilter.trimmed().isEmpty();
    if (namesLookup()) {
        if (text.endsWith(QLatin1Char('?')))
            return; // a question to the names list, not a name to look for
    } else if (iLookupKey == 1 || (iLookupKey == 6 && vendor))
        text = gfsItemID_normalise(text);
    else if (iLookupKey == 2 || (iLookupKey == 7 && vendor))
        text = gfsItemID_format(text, false).trimmed();
    if (text.trimmed().isEmpty())
        text.clear();
    if (text == sSearchText)
        return;
    sSearchText = text;
    if (bWildcard || iSortField2 >= 0) {
        ckWildcard->setChecked(true);
        return; // the scan waits for "Search Now"
    }
    gpMouse_busy();
    gfvDataGrid_Find(*m_view, false);
    gpMouse_normal();
    txtEditValue->setFocus();
}

void frm_Lookup::txtEditValue_Enter()
{
    if (cmdSearch->isVisible()) {
        mpSearch_run();
        return;
    }
    if (iFirstCol == 1) {
        mpEntry_open(gfiDataGrid_Row());
        return;
    }
    mpRow_choose();
}

void frm_Lookup::mpSearch_run()
{
    Lblwait->show();
    gpMouse_busy();
    gfvDataGrid_Find(*m_view, true);
    gpMouse_normal();
    Lblwait->hide();
}

void frm_Lookup::mpWildcard_follow()
{
    bWildcard = ckWildcard->isChecked();
    const bool scanSearch = bWildcard || iSortField2 >= 0;
    cmdSearch->setVisible(scanSearch);
    cmdStop->setVisible(scanSearch);
}

// The stores are listed on first use; the list opens on the store shown.
void frm_Lookup::mpStore_show()
{
    if (CboStore->count() == 0) {
        for (const StoreChoice &store : gfaLookup_Stores())
            CboStore->addItem(store.sText, store.iStore);
        CboStore->setCurrentIndex(CboStore->findData(m_store));
    }
    CboStore->show();
    CboStore->setFocus();
}

// Only the inventory program opens the chosen store's tables; here the list is read again
// from the same ones, so nothing of a change can fail. The rows on screen are forgotten first,
// or a search text they already show would only move the selection.
void frm_Lookup::mpStore_choose(int index)
{
    const int store = CboStore->itemData(index).toInt();
    if (store == m_store)
        return;
    m_store = store;
    CboStore->hide();
    gpDataGrid_Size();
    gfvDataGrid_Find(*m_view, false);
    gLookupCaptions.sTitle = QString::number(store) + QStringLiteral(" Lookup Store ") + kProgramName;
    setWindowTitle(gLookupCaptions.sTitle);
    txtEditValue->setFocus();
}

void frm_Lookup::mpRow_choose()
{
    const int row = qMax(1, gfiDataGrid_Row());
    if (iFirstCol == 1) {
        if (!gaLookupEntries.isEmpty())
            accept();
        return;
    }
    if (gfbDataGrid_RowBlank(row))
        return;
    if (namesLookup()) {
        sLookupResult = gaGridText[row].value(gfiDataGrid_ColumnOf(kNameARCode)).trimmed();
    } else {
        const int slCol = gfiDataGrid_ColumnOf(0, 4);
        sLookupResult = gfsItemID_key(gaGridText[row].value(slCol).trimmed());
    }
    bWildcard = false;
    if (!bFindMode)
        SaveSetting(kZorSettings, QStringLiteral("DATABASE"), namesLookup() ? kRememberNameKey : kRememberKey, sLookupResult);
    accept();
}

QString frm_Lookup::mfsRow_SL(int row) const
{
    return gfsItemID_key(gaGridText[row].value(gfiDataGrid_ColumnOf(0, 4)).trimmed());
}

// The row on screen that shows the item the box was opened for; 0 when the window was paged
// or made smaller since and the item is out of sight.
int frm_Lookup::mfiEntry_row() const
{
    const int rows = int(qMin<qsizetype>(iGridRows, gaGridText.size()));
    for (int row = 1; row < rows; ++row)
        if (!gfbDataGrid_RowBlank(row) && mfsRow_SL(row) == m_entrySL)
            return row;
    return 0;
}

// The quantity box over column 0 of a row; a row that holds a quantity is cleared instead.
void frm_Lookup::mpEntry_open(int row)
{
    if (row < 1 || gfbDataGrid_RowBlank(row))
        return;
    if (!gaGridText[row].value(0).isEmpty()) {
        mpEntry_set(mfsRow_SL(row), QString());
        return;
    }
    m_entrySL = mfsRow_SL(row);
    TxtText->setToolTip(QStringLiteral("Quantity for S/L ") + gfsItemID_display(m_entrySL));
    TxtText->clear();
    TxtText->show();
    mpEntry_follow();
    TxtText->raise();
    TxtText->setFocus();
}

// The box stays over its item's row while the rows move under it; out of sight, it stays
// where it was and still belongs to that item.
void frm_Lookup::mpEntry_follow()
{
    if (!TxtText->isVisible())
        return;
    const int row = mfiEntry_row();
    if (row < 1 || row >= fgrdItems->Rows())
        return;
    QTableView *view = fgrdItems->view();
    const QRect cell = view->visualRect(view->model()->index(row - 1, 0));
    TxtText->setGeometry(QRect(view->viewport()->mapTo(fgrdItems, cell.topLeft()), cell.size()));
}

void frm_Lookup::mpEntry_close(bool keep)
{
    if (!keep) {
        TxtText->hide();
        txtEditValue->setFocus();
        return;
    }
    QString qty = TxtText->text().trimmed();
    if (qty == QLatin1String("0"))
        qty.clear();
    bool number = true;
    if (!qty.isEmpty())
        qty.toDouble(&number);
    if (!number) {
        gfiMsgBox(QStringLiteral("Please insert a quantity number in this field or leave blank."));
        TxtText->setFocus();
        return;
    }
    TxtText->hide();
    mpEntry_set(m_entrySL, qty);
    if (const int row = mfiEntry_row(); row > 0) {
        gpDataGrid_SetRow(row, *m_view);
        gpDataGrid_Move(*m_view, kLineDown);
    } else {
        txtEditValue->setFocus();
    }
}

// The quantity belongs to the item; its cell shows it while the item is on screen.
void frm_Lookup::mpEntry_set(const QString &sl, const QString &qty)
{
    gaLookupEntries.removeIf([&](const LookupEntry &e) { return e.sSL == sl; });
    if (!qty.isEmpty())
        gaLookupEntries.append({sl, qty});
    const int rows = int(qMin<qsizetype>(iGridRows, gaGridText.size()));
    for (int row = 1; row < rows && row < fgrdItems->Rows(); ++row) {
        if (!gfbDataGrid_RowBlank(row) && mfsRow_SL(row) == sl) {
            gaGridText[row][0] = qty;
            fgrdItems->setTextMatrix(row, 0, qty);
        }
    }
}

void frm_Lookup::mpScan_toggle()
{
    if (FraScan->isVisible()) {
        TxtScan->clear();
        FraScan->hide();
        cmdScan->setText(QStringLiteral("Scan Code"));
        txtEditValue->setFocus();
        return;
    }
    FraScan->show();
    cmdScan->setText(QStringLiteral("Clear Scan"));
    sSearchText.clear();
    gfvDataGrid_Find(*m_view, false);
    TxtScan->setFocus();
}

// A scanned code: the UPC table names the item.
void frm_Lookup::mpScan_enter()
{
    const QString code = TxtScan->text().trimmed();
    if (code.isEmpty())
        return;
    auto upcRead = [](const QString &upc) {
        if (!gfbDB_ExecuteSQL(QStringLiteral("SELECT * FROM ") + dbuaTable[kUpcTable].sSqlFile + QStringLiteral(" WHERE UPC= '") +
                                  upc + QLatin1Char('\''),
                              kUpcTable, false))
            return false;
        gpUpc_read(kUpcTable);
        return true;
    };
    bool found = upcRead(code);
    // A code stored without its check digit answers to the scanned code less its last digit.
    if (!found && code.size() == 12 && upcRead(code.left(11))) {
        found = true;
        gfiMsgBox(QStringLiteral("The UPC code in the Inventory Record is missing the check digits.\rThe correct UPC should be ") +
                      code.left(11) + checkDigit(code.left(11)) + QStringLiteral(" NOT ") + gUpc.UPC.trimmed(),
                  MsgButtons::OK, MsgIcon::None, QStringLiteral("Please correct UPC"));
    }
    if (found)
        found = gfbDB_ExecuteSQL(QStringLiteral("SELECT * FROM ") + dbuaTable[kInventoryTable].sSqlFile +
                                     QStringLiteral(" WHERE Recordnum= '") + QString::number(gUpc.InvUID) + QLatin1Char('\''),
                                 kInventoryTable, false);
    if (!found) {
        gfiMsgBox(QStringLiteral("item not found"));
        TxtScan->clear();
        return;
    }
    gpInventory_read(kInventoryTable);
    sLookupResult = gInventory.SL;
    mpScan_toggle();
}

void frm_Lookup::mpSearch_clear()
{
    txtEditValue->blockSignals(true);
    txtEditValue->clear();
    txtEditValue->blockSignals(false);
    sSearchText.clear();
    ckWildcard->setChecked(false);
}

void frm_Lookup::cmdEdit_Click()
{
    mpSearch_clear();
    gpDataGrid_Size();
    gfbDataGrid_Reload(*m_view);
    txtEditValue->setFocus();
}

void frm_Lookup::cmdExit_Click()
{
    if (TxtText->isVisible()) {
        mpEntry_close(false);
        return;
    }
    sWhereClause.clear();
    sWhereClause2.clear();
    if (bFindMode) {
        sLookupResult.clear();
        gaInventoryHits.clear();
        QDialog::reject();
        return;
    }
    if (gfiMsgBox(QStringLiteral("Do you want to exit now?"), MsgButtons::YesNo) == MsgAnswer::Yes)
        QDialog::reject();
}

void frm_Lookup::reject() { cmdExit_Click(); }

} // namespace qln
