#include "promo/frmMain.h"

#include "common/DateForms.h"
#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "common/ItemNumber.h"
#include "common/NumberFormat.h"
#include "common/Numbers.h"
#include "common/ProcessState.h"
#include "config/Country.h"
#include "config/Tax.h"
#include "lookup/FGrid.h"
#include "lookup/FlexGrid.h"
#include "lookup/InventoryPick.h"
#include "output/PrintFlexGrid.h"
#include "platform/Clock.h"
#include "platform/Messages.h"
#include "platform/ModalRunner.h"
#include "platform/Mouse.h"
#include "promo/PromoItems.h"
#include "promo/PromoList.h"
#include "promo/PromoPurge.h"
#include "promo/PromoWindow.h"
#include "promo/TagLink.h"
#include "promo/frmEdit_Promo.h"
#include "store/Common.h"
#include "store/Database.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QVBoxLayout>

namespace qln {

namespace {

enum Column { cSL, cDescription, cRegular, cPromo, cStart, cEnd, cType, cAmount, cStartKey, cEndKey, kColumns };

// The item face hides the item's own columns; the All Items face shows them and narrows
// the prices to make room.
constexpr PromoGridColumn kItemFaceColumns[kColumns] = {
    {"", 0, kAlignKeep},         {"", 0, kAlignKeep},     {"Reg. Price", 1100, kAlignKeep}, {"Promo Price", 1100, kAlignKeep},
    {"Starting", 1000, kAlignKeep}, {"Ending", 1000, kAlignKeep}, {"Type Change", 900, kAlignKeep}, {"Amount", 1100, kAlignKeep},
    {"", 0, kAlignKeep},         {"", 0, kAlignKeep}};
constexpr PromoGridColumn kAllItemsColumns[] = {
    {"S/L", 800, kAlignKeep}, {"Description", 2200, kAlignKeep}, {"Reg. Price", 825, kAlignKeep}, {"Promo Price", 935, kAlignKeep}};
constexpr PromoGridColumn kAllItemsAmount[] = {{"Amount", 825, kAlignKeep}};
constexpr int kSortAscending = 1, kSortDescending = 2;
const QString kPriceForm = QStringLiteral("#######.00");

QString mfsSearch_caption(int col)
{
    switch (col) {
    case cSL: return QStringLiteral("Search SL for");
    case cDescription: return QStringLiteral("Search Description for");
    case cStart: return QStringLiteral("Search starting Date for");
    default: return QStringLiteral("Search ending Date for");
    }
}

QDateTime mfdMidnight(const QString &dateText)
{
    return QDateTime(gfdDate_parse(dateText).value_or(QDate()), QTime(0, 0));
}

} // namespace

const QString frmMain::kAllItemsCaption = QStringLiteral("All Items with Promo's ");

frmMain::frmMain(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmMain"));
    mpControls_create();
    mpControls_arrange();
    gpFormKeys_install(this, cmdQuit);
    mpForm_load();
}

void frmMain::mpControls_create()
{
    static const char *const itemCaptions[] = {"S/L", "Item ID", "Description"};
    for (int i = 0; i < 3; ++i) {
        lblEdit[i] = new QLabel(QString::fromLatin1(itemCaptions[i]), this);
        lblEdit[i]->setObjectName(QStringLiteral("lblEdit(%1)").arg(i));
        lblEditData[i] = new QLabel(this);
        lblEditData[i]->setObjectName(QStringLiteral("lblEditData(%1)").arg(i));
        lblEditData[i]->setFrameShape(QFrame::Panel);
        lblEditData[i]->setFrameShadow(QFrame::Sunken);
    }
    // The boxes hold an S/L and an Item ID whole while still empty, so the bar doesn't jump.
    lblEditData[0]->setMinimumWidth(gfiTwips_toPixels(1000, this));
    lblEditData[1]->setMinimumWidth(gfiTwips_toPixels(1500, this));
    LblTraining = new QLabel(QStringLiteral("Training"), this);
    LblTraining->setObjectName(QStringLiteral("LblTraining"));
    cmdItem = gfCommand_button(this, QStringLiteral("cmdItem"), QStringLiteral("F3  Select Item"));
    CmdViewAll = gfCommand_button(this, QStringLiteral("CmdViewAll"), QStringLiteral("F4  View All Items"));
    Frame1 = new QGroupBox(QStringLiteral(" Item Promo"), this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    static const char *const editCaptions[] = {"F2 Add New ", "F8 Change", "F5 Delete"};
    for (int i = 0; i < 3; ++i)
        cmdEdit[i] = gfCommand_button(Frame1, QStringLiteral("cmdEdit(%1)").arg(i), QString::fromLatin1(editCaptions[i]));
    cmdPurge[0] = gfCommand_button(Frame1, QStringLiteral("cmdPurge(0)"), QStringLiteral("F6  Purge Expired Promos by Item"));
    cmdPurge[1] = gfCommand_button(this, QStringLiteral("cmdPurge(1)"), QStringLiteral("F7  Purge All Expired Promos"));
    cmdPrintTags = gfCommand_button(this, QStringLiteral("cmdPrintTags"), QStringLiteral("F9  Print Tags"));
    cmdPrint = gfCommand_button(this, QStringLiteral("cmdPrint"), QStringLiteral("F11  Print List"));
    cmdPrint->setEnabled(false);
    cmdQuit = gfCommand_button(this, QStringLiteral("cmdQuit"), QStringLiteral("Esc Cancel"));
    chkExpired = new QCheckBox(QStringLiteral("Show Expired Promos on Grid"), this);
    chkExpired->setObjectName(QStringLiteral("chkExpired"));
    FraSearch = new QGroupBox(QStringLiteral("Search"), this);
    FraSearch->setObjectName(QStringLiteral("FraSearch"));
    txtSearch = new QLineEdit(FraSearch);
    txtSearch->setObjectName(QStringLiteral("txtSearch"));
    fgrdItems = new FlexGrid(this);
    fgrdItems->setObjectName(QStringLiteral("fgrdItems"));
    pbarProgress = new QProgressBar(this);
    pbarProgress->setObjectName(QStringLiteral("pbarProgress"));
    pbarProgress->hide();

    connect(cmdItem, &QPushButton::clicked, this, [this] { mpItem_select(); });
    connect(CmdViewAll, &QPushButton::clicked, this, [this] { CmdViewAll_Click(); });
    connect(cmdEdit[0], &QPushButton::clicked, this, [this] { mpPromo_add(); });
    connect(cmdEdit[1], &QPushButton::clicked, this, [this] { mpPromo_change(); });
    connect(cmdEdit[2], &QPushButton::clicked, this, [this] { mpPromo_delete(); });
    connect(cmdPurge[0], &QPushButton::clicked, this, [this] { mpPurge_item(); });
    connect(cmdPurge[1], &QPushButton::clicked, this, [this] { mpPurge_all(); });
    connect(cmdPrintTags, &QPushButton::clicked, this, [this] { gpTagLink_show(this); });
    connect(cmdPrint, &QPushButton::clicked, this, [this] { cmdPrint_Click(); });
    connect(cmdQuit, &QPushButton::clicked, this, [this] { cmdQuit_Click(); });
    connect(chkExpired, &QCheckBox::clicked, this, [this] { chkExpired_Click(); });
    connect(txtSearch, &QLineEdit::textChanged, this, [this](const QString &text) { txtSearch_Change(text); });
    connect(fgrdItems, &FlexGrid::cellClicked, this, [this](int row, int col) { mpGrid_click(row, col); });
    connect(fgrdItems, &FlexGrid::cellDoubleClicked, this, [this](int row, int) {
        if (row > 0)
            cmdEdit[1]->click();
    });
}

void frmMain::mpControls_arrange()
{
    auto *top = new QGridLayout;
    for (int i = 0; i < 3; ++i) {
        top->addWidget(lblEdit[i], 0, i);
        top->addWidget(lblEditData[i], 1, i);
    }
    top->setColumnStretch(2, 1);
    top->addWidget(LblTraining, 1, 3);

    auto *itemButtons = new QVBoxLayout(Frame1);
    for (QPushButton *b : {cmdEdit[0], cmdEdit[1], cmdEdit[2], cmdPurge[0]})
        itemButtons->addWidget(b);
    auto *search = new QVBoxLayout(FraSearch);
    search->addWidget(txtSearch);

    auto *side = new QVBoxLayout;
    for (QWidget *w : std::initializer_list<QWidget *>{cmdItem, CmdViewAll, Frame1, cmdPurge[1], cmdPrintTags, cmdPrint, FraSearch})
        side->addWidget(w);
    side->addStretch();
    side->addWidget(cmdQuit);

    auto *body = new QHBoxLayout;
    auto *left = new QVBoxLayout;
    left->addWidget(fgrdItems, 1);
    left->addWidget(chkExpired);
    left->addWidget(pbarProgress);
    body->addLayout(left, 1);
    body->addLayout(side);

    auto *form = new QVBoxLayout(this);
    form->addLayout(top);
    form->addLayout(body, 1);
    resize(960, 560);
}

void frmMain::mpForm_load()
{
    setWindowTitle(QStringLiteral("ZOR Quillon"));
    bool listed = false;
    if (gbItemMode) {
        bool found = false;
        if (!gsSL.trimmed().isEmpty()) {
            found = gfiInventory_BySL(gsSL, true) == -1;
            if (found)
                glInvUID = gInventory.RecordNum;
        } else if (glInvUID > 0) {
            found = gfbInventory_ByRecordNum(glInvUID);
            if (found)
                gsSL = gInventory.SL;
        }
        // Without an item the window opens on an empty grid.
        if (found) {
            mfbItem_show();
            mpItem_list_fill(true);
            listed = true;
        }
    }
    if (!listed) {
        mpGrid_layout();
        mpButtons_state();
    }
    LblTraining->setVisible(gbTraining);
    gpFont_normalise(this);
}

bool frmMain::mfbItemFace() const { return !cmdEdit[0]->isHidden(); }

void frmMain::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    layout()->activate();
    mpColumns_scale();
}

void frmMain::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    layout()->activate(); // the grid takes its new width before the columns follow it
    mpColumns_scale();
}

// The grid's width at load is taken as the sum of the face's columns, so that they fill it.
void frmMain::mpColumns_scale() { gpGrid_ScaleColumns(*fgrdItems, miColumnWidths); }

void frmMain::mpGrid_layout()
{
    FlexGrid &grid = *fgrdItems;
    grid.Clear();
    grid.setCols(kColumns);
    grid.setRows(2);
    grid.setFixedRows(1);
    miColumnWidths.clear();
    gpPromoGrid_design_set(grid, kItemFaceColumns, miColumnWidths);
    mpColumns_scale();
}

void frmMain::mpRow_add(int &count, const QString &previousPromo, bool bAllItems)
{
    FlexGrid &grid = *fgrdItems;
    gpGrid_AddRow(grid, count);
    const int row = count;
    const PromoGridLine line = gfPromo_grid_line(gPromo, gfcItem_list_price(), previousPromo, bAllItems);
    if (bAllItems) {
        grid.setTextMatrix(row, cSL, gfsItemID_display(gInventory.SL));
        grid.setTextMatrix(row, cDescription, gInventory.Description.trimmed());
    }
    grid.setTextMatrix(row, cRegular, line.regularPrice);
    grid.setTextMatrix(row, cPromo, line.promoPrice);
    grid.setTextMatrix(row, cStart, line.start);
    grid.setTextMatrix(row, cEnd, line.end);
    grid.setTextMatrix(row, cType, line.type);
    grid.setTextMatrix(row, cAmount, line.amount);
    grid.setTextMatrix(row, cStartKey, line.startKey);
    grid.setTextMatrix(row, cEndKey, line.endKey);
    mbHasRows = true;
}

void frmMain::mpItem_list_fill(bool bQuiet)
{
    if (mbFilling)
        return;
    mbHasRows = false;
    mpGrid_layout();
    if (gfiDB_RecordCount(kPromoTable) > 0) {
        QString sql = QStringLiteral("SELECT * FROM PromoPrices WHERE Invuid=") + QString::number(gInventory.RecordNum);
        // Today at midnight, not this moment: a promo still runs on its last day.
        if (!chkExpired->isChecked())
            sql += QStringLiteral("AND EndDate >='") + gfsDate_sql(QDateTime(Clock::today(), QTime(0, 0))) + QLatin1Char('\'');
        QList<PromoPriceRecord> rows;
        gfbPromo_rows_read(sql, rows);
        int count = 0;
        QString previousPromo = QStringLiteral(".00");
        for (const PromoPriceRecord &row : rows) {
            gPromo = row;
            mpRow_add(count, previousPromo, false);
            previousPromo = fgrdItems->TextMatrix(count, cPromo);
        }
        if (!bQuiet)
            mpOverlaps_warn();
    }
    mpButtons_state();
    if (!gsSL.trimmed().isEmpty() && !mbHasRows)
        cmdEdit[0]->setEnabled(true);
}

// Neighbours only, in the order the server gave: the till applies the best deal anyway.
void frmMain::mpOverlaps_warn()
{
    const FlexGrid &grid = *fgrdItems;
    for (int row = 1; row < grid.Rows() - 1; ++row) {
        if (gfsDate_pattern_text(grid.TextMatrix(row, cEnd)) >= gfsDate_pattern_text(grid.TextMatrix(row + 1, cStart)))
            gfiMsgBox(QStringLiteral("You have over-lapping date ranges on your Items.\r\n'Best Deal' price will be applied on Selling"),
                      MsgButtons::OK, MsgIcon::Information, QStringLiteral("Promo Prices"));
    }
}

void frmMain::mpAll_list_fill()
{
    if (mbFilling)
        return;
    mbHasRows = false;
    mpGrid_layout();
    gpPromoGrid_design_set(*fgrdItems, kAllItemsColumns, miColumnWidths, cSL);
    gpPromoGrid_design_set(*fgrdItems, kAllItemsAmount, miColumnWidths, cAmount);
    mpColumns_scale();

    const int total = gfiDB_RecordCount(kPromoTable);
    if (total == 0) {
        mpButtons_state(); // the rows of the previous face are gone
        return;
    }
    gpMouse_busy();
    const bool filled = mfbAll_rows_add(total);
    gpMouse_normal();
    // A failed fill ends with its own message; the buttons still follow what the grid holds.
    if (!filled)
        gfiMsgBox(QStringLiteral("Error occured while populating Grid"));
    else if (!mbHasRows)
        gfiMsgBox(QStringLiteral("No Active Promo Prices found"), MsgButtons::OK, MsgIcon::None,
                  QStringLiteral("All Item Promos have expired"));
    mpButtons_state();
}

// The rows of every item with the item of each; false when the server refused the list.
bool frmMain::mfbAll_rows_add(int total)
{
    mbFilling = true;
    const auto filled = qScopeGuard([this] {
        mbFilling = false;
        fgrdItems->setRedraw(true);
    });
    const bool expiredToo = chkExpired->isChecked();
    QString sql = QStringLiteral("SELECT * FROM PromoPrices WHERE Invuid> 10 ");
    if (!expiredToo)
        sql += QStringLiteral("AND EndDate >=") + gfsPromo_date_text(Clock::now());
    ReadSnapshot snapshot(dbConnection());
    PromoFillProgress progress(pbarProgress, [&](const std::function<void()> &events) { snapshot.outside(events); });
    progress.start(total + 1, total + 1 > 100);
    const QDate today = Clock::today();
    PromoRows rows;
    if (!rows.open(sql, [&] { return expiredToo || (gPromo.EndDate.date() >= today && gPromo.ChangeType != kChangeDeleted); }))
        return false;
    // The grid repaints once at the end.
    fgrdItems->setRedraw(false);
    // The columns mpRow_add shows of an item.
    PromoItems items(rows.listedItems(), {QStringLiteral("SL"), QStringLiteral("Description"), QStringLiteral("Price"),
                                          QStringLiteral("PriceIncTax")});
    int count = 0;
    QString previousPromo = QStringLiteral(".00");
    for (const int row : rows.listed()) {
        // The bar counts every row of the answer, shown or not.
        progress.step(row + 1);
        rows.read(row);
        if (!items.next())
            continue;
        mpRow_add(count, previousPromo, true);
        previousPromo = fgrdItems->TextMatrix(count, cPromo);
    }
    progress.step(rows.size());
    return true;
}

void frmMain::mpButtons_state()
{
    gpPromoButtons_follow(mbHasRows, {cmdEdit[0], cmdEdit[1], cmdEdit[2], cmdPurge[0], cmdPrint});
    cmdPurge[1]->setEnabled(true);
    cmdPrintTags->setEnabled(gfbTagProgram_exists());
}

bool frmMain::mfbItem_show()
{
    lblEditData[2]->setText(gInventory.Description);
    if (gInventory.AllowDiscounts == QLatin1String("N")) {
        gfiMsgBox(QStringLiteral("Discounts not allowed on this item"));
        lblEditData[2]->clear();
        return false;
    }
    lblEditData[0]->setText(gfsItemID_display(gInventory.SL));
    lblEditData[1]->setText(gInventory.ItemID.trimmed());
    return true;
}

void frmMain::mpItem_select()
{
    cmdPurge[0]->setVisible(true);
    cmdEdit[0]->setVisible(true);
    const QString sl = gfsInventory_Pick();
    if (!sl.isEmpty()) {
        gsSL = sl;
        if (gfiInventory_BySL(gsSL, true) == -1)
            glInvUID = gInventory.RecordNum;
        if (mfbItem_show()) {
            mpItem_list_fill(true);
        } else {
            // No list and no add for an item that takes no discount.
            mbHasRows = false;
            mpGrid_layout();
            mpButtons_state();
        }
    }
    fgrdItems->setFocus();
}

void frmMain::CmdViewAll_Click()
{
    lblEditData[0]->setText(QStringLiteral(" "));
    lblEditData[1]->setText(QStringLiteral(" "));
    lblEditData[2]->setText(kAllItemsCaption);
    mpAll_list_fill();
    cmdPurge[0]->setVisible(false);
    cmdEdit[0]->setVisible(false);
}

// With an empty grid nothing refills, so expired promos of an item whose promos have all
// expired only come up once something else has filled the grid.
void frmMain::chkExpired_Click()
{
    if (!mbHasRows)
        return;
    if (lblEditData[2]->text() == kAllItemsCaption)
        mpAll_list_fill();
    else
        mpItem_list_fill(false);
}

void frmMain::mpGrid_click(int row, int col)
{
    FlexGrid &grid = *fgrdItems;
    if (row > 0) {
        gpGrid_SelectRow(grid, row);
        return;
    }
    if (mfbItemFace() || (col != cSL && col != cDescription && col != cStart && col != cEnd))
        return;
    miSortDir = col == miSortCol && miSortDir == kSortAscending ? kSortDescending : kSortAscending;
    miSortCol = col;
    // Dates sort on their "YYYYMMDD" twins.
    gpGrid_SortColumn(grid, col == cStart ? cStartKey : col == cEnd ? cEndKey : col, miSortDir);
    FraSearch->setTitle(mfsSearch_caption(col));
    txtSearch->clear();
    gpGrid_GoTop(grid, kColumns - 1);
    txtSearch->setFocus();
}

void frmMain::txtSearch_Change(const QString &text)
{
    FlexGrid &grid = *fgrdItems;
    const QString wanted = text.toUpper();
    for (int row = 1; row < grid.Rows(); ++row) {
        if (grid.TextMatrix(row, miSortCol).trimmed().toUpper().startsWith(wanted)) {
            gpGrid_SelectRow(grid, row);
            if (!grid.RowIsVisible(row))
                grid.setTopRow(row);
            return;
        }
    }
}

void frmMain::mpPromo_add()
{
    if (gsSL.trimmed().isEmpty())
        return;
    frmEdit_Promo editor(this);
    editor.miMode = frmEdit_Promo::kModeAdd;
    editor.msDescription = lblEditData[2]->text();
    editor.msSL = gfsItemID_key(lblEditData[0]->text());
    Money listPrice = gInventory.Price;
    if (gbIncludeTax)
        gfsPriceIncTax_text_get(Clock::today(), listPrice, gInventory.TaxCode,
                                {gCommon.TaxRate1, gCommon.TaxRate2, gCommon.TaxRate3, gCommon.TaxRate4, gCommon.TaxRate5});
    editor.msListPrice = gfsNumber_format(listPrice, kPriceForm);
    editor.msCost = gfsNumber_format(gInventory.Cost, kPriceForm);
    // A new item promo starts from a clear buffer: no group, and the next UniqueID.
    gpPromo_clear();
    mpEditor_run(editor);
}

// Finds the promo behind a grid row. In the item face, and for a delete, the promos of the
// item at the row's start date are looked at first, by end date and amount, so that each of
// two promos with one start date can be reached. Then "=" on its SL and start date, and a
// walk on key 2 for the row whose end and amount match. The walk stays within the item, so
// that another item's promo is never taken; when nothing matched, the buffer keeps the key
// it looked for.
bool frmMain::mfbGrid_row_find(int row, bool bItemFace, bool bLiveOnly)
{
    const FlexGrid &grid = *fgrdItems;
    const QString sl = bItemFace ? gfsItemID_key(lblEditData[0]->text()) : gfsItemID_key(grid.TextMatrix(row, cSL));
    const QDateTime start = mfdMidnight(grid.TextMatrix(row, cStart));
    const QDateTime end = mfdMidnight(grid.TextMatrix(row, cEnd));
    const Money amount = Money::fromDouble(gfdNumber_value(grid.TextMatrix(row, cAmount)));
    auto matches = [&] {
        return gPromo.EndDate == end && gPromo.PriceChange == amount && (!bLiveOnly || gPromo.ChangeType != kChangeDeleted);
    };
    const bool byEndAndAmount = bItemFace || bLiveOnly;
    if (byEndAndAmount && gfbPromo_same_start_find(sl, start, matches))
        return true;
    gPromo.SL = sl;
    gPromo.StartDate = start;
    bool found = gfbDB_RecordOp(kPromoTable, kOpEqual, 2);
    if (!byEndAndAmount)
        return found; // the All Items face takes the first promo at that date
    while (found && gPromo.SL.trimmed() == sl.trimmed() && !matches())
        found = gfbDB_RecordOp(kPromoTable, kOpGetNext, 2);
    if (found && gPromo.SL.trimmed() == sl.trimmed())
        return true;
    gPromo.SL = sl;
    gPromo.StartDate = start;
    return false;
}

void frmMain::mpPromo_change()
{
    const FlexGrid &grid = *fgrdItems;
    const int row = grid.Row();
    frmEdit_Promo editor(this);
    editor.miMode = frmEdit_Promo::kModeChange;
    if (!mfbGrid_row_find(row, mfbItemFace(), false)) {
        gfiMsgBox(QStringLiteral("PromoPrice record not retrieved"));
        return;
    }
    if (gPromo.GroupID > 0) {
        const QString question = grid.TextMatrix(row, cDescription) + QStringLiteral(" is a member of Group ") +
                                 QString::number(gPromo.GroupID) + QStringLiteral("\r\nChanging this item will remove it from the group.\r\nChange Item?");
        if (gfiMsgBox(question, MsgButtons::YesNo, MsgIcon::None, QStringLiteral("Group Item Selected")) != MsgAnswer::Yes)
            return;
        gPromo.GroupID = 0;
    }
    editor.msListPrice = grid.TextMatrix(row, cRegular);
    editor.msPromoPrice = grid.TextMatrix(row, cPromo);
    editor.msSL = gPromo.SL;
    if (gfiInventory_BySL(gPromo.SL, false) == -1) {
        editor.msCost = gInventory.Cost.toText(2);
        editor.msDescription = gInventory.Description;
    }
    editor.msStart = grid.TextMatrix(row, cStart);
    editor.msEnd = grid.TextMatrix(row, cEnd);
    mpEditor_run(editor);
}

void frmMain::mpEditor_run(frmEdit_Promo &editor)
{
    gfiForm_show_modal(editor);
    if (editor.mbCancelled)
        return;
    mpList_refill();
}

void frmMain::mpList_refill()
{
    if (mfbItemFace())
        mpItem_list_fill(false);
    else
        mpAll_list_fill();
}

void frmMain::mpPromo_delete()
{
    const bool found = mfbGrid_row_find(fgrdItems->Row(), mfbItemFace(), true);
    if (!gfbPromo_delete_confirm())
        return;
    if (gfbCompany_single_store()) {
        gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices WHERE startdate = '") + gfsDate_server_text(gPromo.StartDate.date()) +
                      QStringLiteral("' AND sl ='") + gPromo.SL + QLatin1Char('\''));
    } else {
        gPromo.ChangeType = kChangeDeleted;
        gPromo.ChangeDate = QDateTime(Clock::today(), QTime(0, 0));
        // Only the row found is marked: with none, the user hears that it is gone, and
        // "Unable to delete promo" stays for an update the server refused.
        if (!found)
            gfiMsgBox(QStringLiteral("PromoPrice record not retrieved"));
        else if (!gfbDB_RecordOp(kPromoTable, kOpUpdate, 2))
            gfiMsgBox(QStringLiteral("Unable to delete promo"), MsgButtons::OK, MsgIcon::None, QStringLiteral("Error"));
    }
    mpList_refill();
}

void frmMain::mpPurge_item()
{
    if (gfePromo_item_purge(gsSL) == PurgeEnd::Done)
        mpItem_list_fill(false);
}

void frmMain::mpPurge_all()
{
    const PurgeEnd end = gfePromo_all_purge([this] {
        pbarProgress->setValue(0);
        pbarProgress->setRange(0, gfiDB_RecordCount(kInventoryTable));
    });
    if (end == PurgeEnd::NotConfirmed)
        return;
    mpItem_list_fill(false);
    gpMouse_normal();
}

void frmMain::cmdPrint_Click()
{
    const QString itemId = lblEditData[0]->text().trimmed();
    const QString subtitle = itemId.isEmpty() ? lblEditData[1]->text().trimmed() : itemId;
    gpPrint_List(*fgrdItems, gfPrintHead_store(lblEditData[2]->text().trimmed(), subtitle), this);
}

void frmMain::cmdQuit_Click()
{
    gpMouse_normal();
    reject();
}

} // namespace qln
