#include "promo/FrmDailyPromo.h"

#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "common/ProcessState.h"
#include "lookup/FGrid.h"
#include "lookup/FlexGrid.h"
#include "platform/Clock.h"
#include "platform/Messages.h"
#include "platform/ModalRunner.h"
#include "promo/DailyPromos.h"
#include "promo/FrmEdit_GroupPromo.h"
#include "promo/PromoList.h"
#include "promo/PromoWindow.h"
#include "store/Common.h"
#include "store/RecordOps.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <vector>

namespace qln {

namespace {

enum Column { cStart, cEnd, cType, cAmount, cGroupID };
constexpr int kColumns = 5;

constexpr PromoGridColumn kDailyColumns[] = {{"Starting", 1000, kAlignCenter},
                                             {"Ending", 1000, kAlignCenter},
                                             {"Type Change", 900, kAlignCenter},
                                             {"Amount", 1100, kAlignCenter},
                                             {"", 0, kAlignKeep}};

// The columns keep the proportions of their design widths at any size of the window.
void mpColumns_scale(FlexGrid &grid)
{
    std::vector<int> design;
    for (const PromoGridColumn &c : kDailyColumns)
        design.push_back(c.twips);
    gpGrid_ScaleColumns(grid, design);
}

int &miLoaded()
{
    static int loaded = 0;
    return loaded;
}

QDateTime mfdToday() { return QDateTime(Clock::today(), QTime(0, 0)); }

} // namespace

bool FrmDailyPromo::mbDailyMode() { return miLoaded() > 0; }

FrmDailyPromo::FrmDailyPromo(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("FrmDailyPromo"));
    ++miLoaded();
    mpControls_create();
    mpControls_arrange();
    gpFormKeys_install(this, cmdQuit);
    mpForm_load();
}

FrmDailyPromo::~FrmDailyPromo() { --miLoaded(); }

void FrmDailyPromo::mpControls_create()
{
    Label1 = gfForm_label(this, QStringLiteral("Label1"), QStringLiteral("These Promo's apply to ALL Discountable Inventory"));
    LblTraining = gfForm_label(this, QStringLiteral("LblTraining"), QStringLiteral("Training"));
    Frame1 = new QGroupBox(QStringLiteral("Daily Promo Details"), this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    static const char *const editCaptions[] = {"&Add ", "&Change", "&Delete"};
    for (int i = 0; i < 3; ++i)
        cmdEdit[i] = gfCommand_button(Frame1, QStringLiteral("cmdEdit(%1)").arg(i), QString::fromLatin1(editCaptions[i]));
    // Purge, print and help are on the window and do nothing.
    cmdPurge = gfCommand_button(this, QStringLiteral("cmdPurge"), QStringLiteral("F6  Purge Expired Daily Promos"));
    cmdPrint = gfCommand_button(this, QStringLiteral("cmdPrint"), QStringLiteral("F9  Print List"));
    cmdHelp = gfCommand_button(this, QStringLiteral("cmdHelp"), QStringLiteral("F1 &Help"));
    cmdQuit = gfCommand_button(this, QStringLiteral("cmdQuit"), QStringLiteral("Esc Cancel"));
    fgrdItems = new FlexGrid(this);
    fgrdItems->setObjectName(QStringLiteral("fgrdItems"));
    fgrdItems->setCols(kColumns);
    fgrdItems->setFixedRows(1);

    connect(cmdEdit[0], &QPushButton::clicked, this, [this] { mpPromo_add(); });
    connect(cmdEdit[1], &QPushButton::clicked, this, [this] { mpPromo_change(); });
    connect(cmdEdit[2], &QPushButton::clicked, this, [this] { mpPromo_delete(); });
    connect(cmdQuit, &QPushButton::clicked, this, &QDialog::reject);
    connect(fgrdItems, &FlexGrid::cellClicked, this, [this](int row, int) {
        if (row > 0)
            gpGrid_SelectRow(*fgrdItems, row);
    });
}

void FrmDailyPromo::mpControls_arrange()
{
    auto *top = new QHBoxLayout;
    top->addWidget(Label1, 1);
    top->addWidget(LblTraining);

    auto *editButtons = new QVBoxLayout(Frame1);
    for (QPushButton *b : cmdEdit)
        editButtons->addWidget(b);
    auto *side = new QVBoxLayout;
    for (QWidget *w : std::initializer_list<QWidget *>{Frame1, cmdPurge, cmdPrint, cmdHelp})
        side->addWidget(w);
    side->addStretch();
    side->addWidget(cmdQuit);

    auto *body = new QHBoxLayout;
    body->addWidget(fgrdItems, 1);
    body->addLayout(side);

    auto *form = new QVBoxLayout(this);
    form->addLayout(top);
    form->addLayout(body, 1);
    resize(720, 420);
}

void FrmDailyPromo::mpForm_load()
{
    setWindowTitle(QStringLiteral("Daily Promos"));
    LblTraining->setVisible(gbTraining);
    mpGrid_layout();
    // An expired row that sorts first keeps the others from being listed at load.
    if (gfbDailyPromos_listed_at_load(Clock::today()))
        mpDaily_list_fill();
    gpFont_normalise(this);
}

void FrmDailyPromo::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    QTimer::singleShot(0, this, [this] { mpForm_activate(); });
}

void FrmDailyPromo::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    mpColumns_scale(*fgrdItems);
}

// With no daily promo listed the window goes straight to adding one.
void FrmDailyPromo::mpForm_activate()
{
    const FlexGrid &grid = *fgrdItems;
    if (!isVisible() || mbHasRows || grid.Rows() != 2)
        return;
    for (int col = 0; col < grid.Cols(); ++col)
        if (!grid.TextMatrix(1, col).isEmpty())
            return;
    mbHasRows = true;
    mpPromo_add();
}

void FrmDailyPromo::mpGrid_layout()
{
    FlexGrid &grid = *fgrdItems;
    grid.Clear();
    grid.setRows(2);
    grid.setCols(kColumns);
    gpPromoGrid_columns_set(grid, kDailyColumns);
    mpColumns_scale(grid);
}

void FrmDailyPromo::mpDaily_list_fill()
{
    mpGrid_layout();
    QList<PromoPriceRecord> rows;
    if (!gfbDailyPromos_read(rows))
        return;
    FlexGrid &grid = *fgrdItems;
    int count = 0;
    for (const PromoPriceRecord &row : std::as_const(rows)) {
        gpGrid_AddRow(grid, count);
        const QStringList cells = gfDailyPromo_cells(row);
        for (int col = cStart; col <= cGroupID; ++col)
            grid.setTextMatrix(count, col, cells[col]);
        mbHasRows = true;
    }
}

// The editor in its daily form on gGroupPromo; true when the user accepted.
bool FrmDailyPromo::mfbEditor_run()
{
    FrmEdit_GroupPromo editor(QStringLiteral("Daily Promo"), this);
    // Closed by its frame, the editor took nothing either.
    return gfiForm_show_modal(editor) == QDialog::Accepted && !editor.Cancelled;
}

void FrmDailyPromo::mpPromo_add()
{
    gpPromo_clear();
    gGroupPromo = gPromo;
    gGroupPromo.StartDate = mfdToday();
    gGroupPromo.EndDate = mfdToday();
    gGroupPromo.Store = qint16(gsStore.trimmed().toInt());
    gGroupPromo.UniqueID = gfiPromo_UniqueID_next(kPromoTable);
    if (!mfbEditor_run())
        return;
    gGroupPromo.ChangeDate = mfdToday();
    const std::optional<qint32> groupId = gfiDailyPromo_GroupID_next();
    if (!groupId) {
        gfiMsgBox(QStringLiteral("Promo not inserted\r\rThe daily promos have used every number down to ") +
                      QString::number(kDailyGroupID_lowest) + QStringLiteral(". Delete old daily promos first."),
                  MsgButtons::OK, MsgIcon::Exclamation, kProgramName);
        return;
    }
    gGroupPromo.GroupID = *groupId;
    gPromo = gGroupPromo;
    if (!gfbDB_RecordOp(kPromoTable, kOpInsert, kPromoByGroupEnd)) {
        gfiMsgBox(QStringLiteral("Promo not inserted"), MsgButtons::OK, MsgIcon::None, kProgramName);
        return;
    }
    mpDaily_list_fill();
}

// The end date and number of a grid row; a row without them is told, not used.
bool FrmDailyPromo::mfbRow_keys_read(int row, QDate &end, qint32 &groupId)
{
    const std::optional<QDate> date = gfdDate_parse(fgrdItems->TextMatrix(row, cEnd));
    bool isNumber = false;
    groupId = fgrdItems->TextMatrix(row, cGroupID).toInt(&isNumber);
    if (!date || !isNumber) {
        gfiMsgBox(QStringLiteral("There is no daily promo on this row.\r\rAdd a daily promo first."), MsgButtons::OK,
                  MsgIcon::Exclamation, kProgramName);
        return false;
    }
    end = *date;
    return true;
}

void FrmDailyPromo::mpPromo_change()
{
    const FlexGrid &grid = *fgrdItems;
    const int row = grid.Row();
    QDate end;
    qint32 groupId = 0;
    if (!mfbRow_keys_read(row, end, groupId))
        return;
    gpPromo_clear();
    gPromo.EndDate = QDateTime(end, QTime(0, 0));
    gPromo.GroupID = groupId;
    if (gfbDB_RecordOp(kPromoTable, kOpEqual, kPromoByGroupEnd))
        gGroupPromo = gPromo;
    gGroupPromo.EndDate = QDateTime(end, QTime(0, 0));
    gGroupPromo.StartDate = QDateTime(gfdDate_parse(grid.TextMatrix(row, cStart)).value_or(end), QTime(0, 0));
    gGroupPromo.ChangeType = kChangeByPercent;
    QString amount = grid.TextMatrix(row, cAmount);
    gGroupPromo.PriceChange = Money::parse(amount.remove(QLatin1Char('%'))).value_or(Money());
    if (!mfbEditor_run())
        return;
    gGroupPromo.ChangeDate = mfdToday();
    gPromo = gGroupPromo;
    // A row gone meanwhile leaves an unread set, which the update refuses.
    if (!gfbDB_RecordOp(kPromoTable, kOpUpdate, kPromoByGroupEnd)) {
        gfiMsgBox(QStringLiteral("Promo not updated"), MsgButtons::OK, MsgIcon::None, kProgramName);
        return;
    }
    mpDaily_list_fill();
}

void FrmDailyPromo::mpPromo_delete()
{
    FlexGrid &grid = *fgrdItems;
    const int row = grid.Row();
    QDate end;
    qint32 groupId = 0;
    if (!mfbRow_keys_read(row, end, groupId))
        return;
    gPromo.GroupID = groupId;
    gPromo.EndDate = QDateTime(end, QTime(0, 0));
    if (!gfbPromo_delete_confirm())
        return;
    if (gfbCompany_single_store()) {
        // The row goes from the table; the grid keeps it until the next fill.
        gfiDB_Execute(gfsDailyPromo_delete_sql(end, groupId));
        return;
    }
    if (gfbDB_RecordOp(kPromoTable, kOpEqual, kPromoByGroupEnd)) {
        gPromo.ChangeType = kChangeDeleted;
        gPromo.ChangeDate = mfdToday();
        if (gfbDB_RecordOp(kPromoTable, kOpUpdate, kPromoByGroupEnd)) {
            grid.setRowHeight(row, 0);
            return;
        }
    }
    gfiMsgBox(QStringLiteral("Unable to delete promo"), MsgButtons::OK, MsgIcon::None, QStringLiteral("Error"));
}

} // namespace qln
