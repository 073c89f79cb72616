#include "promo/frmDeptMain.h"

#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "common/ProcessState.h"
#include "lookup/FGrid.h"
#include "lookup/FlexGrid.h"
#include "output/PrintFlexGrid.h"
#include "output/PrintState.h"
#include "platform/Clock.h"
#include "platform/Help.h"
#include "platform/Messages.h"
#include "platform/ModalRunner.h"
#include "platform/Mouse.h"
#include "promo/DeptPromos.h"
#include "promo/FrmDept.h"
#include "promo/PromoList.h"
#include "promo/PromoWindow.h"
#include "promo/frmEdit_DeptPromo.h"
#include "store/Common.h"
#include "store/Departments.h"
#include "store/RecordOps.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QVBoxLayout>

namespace qln {

namespace {

enum Column { cStart, cEnd, cType, cAmount, cDept, cDeptName, cDelete };
constexpr int kColumns = 6, kPurgeColumns = 7;
constexpr int kProgressAbove = 50;

constexpr PromoGridColumn kPromoColumns[] = {
    {"Starting", 1000, kAlignCenter}, {"Ending", 1000, kAlignCenter}, {"Type Change", 1000, kAlignCenter}, {"Amount", 1100, kAlignCenter}};
constexpr PromoGridColumn kDeptColumns[] = {{"Dept Code", 1000, kAlignKeep}, {"Dept Name", 3000, kAlignKeep}};
constexpr PromoGridColumn kPurgeColumn[] = {{"Delete", 1000, kAlignKeep}};

QString mfsCode(const QString &text) { return text.trimmed(); }

} // namespace

const QString frmDeptMain::kAllDeptsCaption = QStringLiteral("All Departments with Promo's ");

frmDeptMain::frmDeptMain(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmDeptMain"));
    mpControls_create();
    mpControls_arrange();
    gpFormKeys_install(this, cmdQuit);
    mpForm_load();
}

void frmDeptMain::mpControls_create()
{
    lblEdit = gfForm_label(this, QStringLiteral("lblEdit"), QStringLiteral("Department"));
    lblEditData = gfForm_label(this, QStringLiteral("lblEditData"));
    lblEditData->setFrameShape(QFrame::Panel);
    lblEditData->setFrameShadow(QFrame::Sunken);
    LblTraining = gfForm_label(this, QStringLiteral("LblTraining"), QStringLiteral("Training"));
    CmdDept[0] = gfCommand_button(this, QStringLiteral("CmdDept(0)"), QStringLiteral("F2  Select Department "));
    CmdDept[1] = gfCommand_button(this, QStringLiteral("CmdDept(1)"), QStringLiteral("F3  View All Departments "));
    Frame1 = new QGroupBox(QStringLiteral(" Department Promo"), this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    static const char *const editCaptions[] = {"&Add New ", "&Change", "&Delete"};
    for (int i = 0; i < 3; ++i)
        cmdEdit[i] = gfCommand_button(Frame1, QStringLiteral("cmdEdit(%1)").arg(i), QString::fromLatin1(editCaptions[i]));
    static const char *const purgeCaptions[] = {"Purge Expired Promos", "Purge All", "Purge Selected"};
    for (int i = 0; i < 3; ++i)
        CmdPurge[i] = gfCommand_button(this, QStringLiteral("CmdPurge(%1)").arg(i), QString::fromLatin1(purgeCaptions[i]));
    chkExpired = new QCheckBox(QStringLiteral("Show Expired Promos on Grid"), this);
    chkExpired->setObjectName(QStringLiteral("chkExpired"));
    cmdPrintTags = gfCommand_button(this, QStringLiteral("cmdPrintTags"), QStringLiteral("F5  Print Tags"));
    cmdPrint = gfCommand_button(this, QStringLiteral("cmdPrint"), QStringLiteral("F9  Print List"));
    cmdQuit = gfCommand_button(this, QStringLiteral("cmdQuit"), QStringLiteral("Esc Cancel"));
    cmdHelp = gfCommand_button(this, QStringLiteral("cmdHelp"), QStringLiteral("F1 &Help"));
    fgrdItems = new FlexGrid(this);
    fgrdItems->setObjectName(QStringLiteral("fgrdItems"));
    fgrdItems->setCols(kColumns);
    fgrdItems->setFixedRows(1);
    // Code and name columns appear with the views of all departments.
    fgrdItems->setColWidth(cDept, 0);
    fgrdItems->setColWidth(cDeptName, 0);
    pbarProgress = new QProgressBar(this);
    pbarProgress->setObjectName(QStringLiteral("pbarProgress"));
    pbarProgress->hide();

    for (int i = 0; i < 2; ++i)
        connect(CmdDept[i], &QPushButton::clicked, this, [this, i] { CmdDept_Click(i); });
    connect(cmdEdit[0], &QPushButton::clicked, this, [this] { mpPromo_edit(0); });
    connect(cmdEdit[1], &QPushButton::clicked, this, [this] { mpPromo_edit(1); });
    connect(cmdEdit[2], &QPushButton::clicked, this, [this] { mpPromo_delete(); });
    for (int i = 0; i < 3; ++i)
        connect(CmdPurge[i], &QPushButton::clicked, this, [this, i] { CmdPurge_Click(i); });
    connect(chkExpired, &QCheckBox::clicked, this, [this] { mpView_refresh(); });
    connect(cmdPrintTags, &QPushButton::clicked, this, [this] { gpTagLink_show(this); });
    connect(cmdPrint, &QPushButton::clicked, this, [this] {
        gpPrint_List(*fgrdItems, gfPrintHead_store(QStringLiteral("Departments with Promo Prices")), this);
    });
    connect(cmdQuit, &QPushButton::clicked, this, [this] { cmdQuit_Click(); });
    connect(cmdHelp, &QPushButton::clicked, this, [] { gpHelp_guides_open(QStringLiteral("promoprices.htm")); });
    connect(fgrdItems, &FlexGrid::cellClicked, this, [this](int row, int col) { mpGrid_click(row, col); });
    connect(fgrdItems, &FlexGrid::cellDoubleClicked, this, [this] { mpPromo_edit(1); });
}

void frmDeptMain::mpControls_arrange()
{
    // Whether or not the path changed, the list is read again.
    QMenuBar *menuBar = gfPromoMenu_make(this, cmdQuit, [this] { mpDeptPromos_list(); });

    auto *top = new QHBoxLayout;
    top->addWidget(lblEdit);
    top->addWidget(lblEditData, 1);
    top->addWidget(LblTraining);

    auto *editButtons = new QVBoxLayout(Frame1);
    for (QPushButton *b : cmdEdit)
        editButtons->addWidget(b);
    auto *side = new QVBoxLayout;
    for (QWidget *w : std::initializer_list<QWidget *>{CmdDept[0], CmdDept[1], Frame1, CmdPurge[0], CmdPurge[1], CmdPurge[2], cmdPrintTags,
                                                       cmdPrint, cmdHelp})
        side->addWidget(w);
    side->addStretch();
    side->addWidget(cmdQuit);

    auto *left = new QVBoxLayout;
    left->addWidget(fgrdItems, 1);
    left->addWidget(chkExpired);
    left->addWidget(pbarProgress);
    auto *body = new QHBoxLayout;
    body->addLayout(left, 1);
    body->addLayout(side);

    auto *form = new QVBoxLayout(this);
    form->setMenuBar(menuBar);
    form->addLayout(top);
    form->addLayout(body, 1);
    resize(1000, 560);
}

void frmDeptMain::mpForm_load()
{
    LblTraining->setVisible(gbTraining);
    setWindowTitle(QStringLiteral("ZOR Quillon"));
    mbPurgeMode = false;
    CmdPurge[1]->hide();
    CmdPurge[2]->hide();
    cmdPrint->setEnabled(false);
    for (QPushButton *b : cmdEdit)
        b->setEnabled(false);
    const QString code = gsDept.trimmed();
    if (code.isEmpty()) {
        mpGrid_layout();
    } else if (!gfbDept_code_valid(code)) {
        // A code that would break the statements is refused before it reaches them.
        gDept.DeptCode.clear();
        mpGrid_layout();
        gfiMsgBox(QStringLiteral("The department code '") + code +
                      QStringLiteral("' is not valid.\r\rA department code has the form 000.000.000, for example 001.002.000."),
                  MsgButtons::OK, MsgIcon::Exclamation, kProgramName);
    } else {
        gDept.DeptCode = code;
        lblEditData->setText(gfsDept_Name(code));
        mpDeptPromos_list();
    }
    gpFont_normalise(this);
}

// The columns keep their proportions and fill the grid, so that dates and codes are not cut.
void frmDeptMain::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    gpGrid_FitColumns(*fgrdItems);
}

void frmDeptMain::mpGrid_layout()
{
    FlexGrid &grid = *fgrdItems;
    grid.Clear();
    grid.setRows(2);
    gpPromoGrid_columns_set(grid, kPromoColumns);
}

// Reads the rows of a WHERE text into the grid, after a count that spares the read when
// nothing is there. bNames: the code and name columns; bProgress: the bar of a long fill.
void frmDeptMain::mpRows_fill(const QString &sWhere, bool bNames, bool bProgress)
{
    const int total = gfiDB_RecordCount(kPromoTable, QStringLiteral("PromoPrices") + sWhere);
    if (total <= 0)
        return;
    FlexGrid &grid = *fgrdItems;
    QList<PromoPriceRecord> rows;
    {
        ReadSnapshot snapshot(dbConnection());
        if (!gfbPromo_rows_read(gfsDeptPromos_select(sWhere), rows))
            return;
    }
    grid.setRedraw(false);
    const auto drawn = qScopeGuard([&] { grid.setRedraw(true); });
    PromoFillProgress progress(pbarProgress);
    if (bProgress && rows.size() > kProgressAbove) {
        progress.start(int(rows.size()) + 1, true);
        progress.step(1);
    }
    DeptNames names;
    int count = 0;
    for (const PromoPriceRecord &row : std::as_const(rows)) {
        gPromo = row;
        gpGrid_AddRow(grid, count);
        const QStringList cells = gfDeptPromo_cells(row);
        for (int col = cStart; col <= cAmount; ++col)
            grid.setTextMatrix(count, col, cells[col]);
        grid.setTextMatrix(count, cDept, row.Dept);
        if (bNames)
            grid.setTextMatrix(count, cDeptName, names.text(row.Dept).trimmed().mid(11));
        mbHasRows = true;
        if (bProgress)
            progress.step(count);
    }
    names.buffer_settle();
}

void frmDeptMain::mpDeptPromos_list()
{
    mpGrid_layout();
    mbHasRows = false;
    gPromo.SL.clear();
    gPromo.Dept = gDept.DeptCode;
    gPromo.StartDate = QDateTime(QDate(1990, 1, 1), QTime(0, 0));
    gpGrid_FitColumns(*fgrdItems);
    mpRows_fill(gfsDeptPromos_where(gDept.DeptCode, chkExpired->isChecked()), false, false);
    mpEditButtons_enable();
}

void frmDeptMain::mpAllDeptPromos_list()
{
    mpGrid_layout();
    gpPromoGrid_columns_set(*fgrdItems, kDeptColumns, cDept);
    gpGrid_FitColumns(*fgrdItems);
    mbHasRows = false;
    gPromo.SL.clear();
    gPromo.Dept = kNoDept;
    gPromo.StartDate = QDateTime(QDate(1990, 1, 1), QTime(0, 0));
    gpMouse_busy();
    mpRows_fill(gfsDeptPromos_all_where(chkExpired->isChecked()), true, true);
    gpMouse_normal();
    mpEditButtons_enable();
}

// Covers every department, whatever the window shows, and keeps its seventh column for the
// rest of the run.
void frmDeptMain::mpExpiredPromos_list()
{
    mpGrid_layout();
    fgrdItems->setCols(kPurgeColumns);
    gpPromoGrid_columns_set(*fgrdItems, kDeptColumns, cDept);
    gpPromoGrid_columns_set(*fgrdItems, kPurgeColumn, cDelete);
    gpGrid_FitColumns(*fgrdItems);
    mbHasRows = false;
    gpMouse_busy();
    mpRows_fill(gfsDeptPromos_expired_where(), true, true);
    gpMouse_normal();
    mpEditButtons_enable();
}

void frmDeptMain::mpEditButtons_enable() { gpPromoButtons_follow(mbHasRows, {cmdPrint, cmdEdit[0], cmdEdit[1], cmdEdit[2]}); }

void frmDeptMain::mpView_refresh()
{
    if (lblEditData->text() == kAllDeptsCaption)
        mpAllDeptPromos_list();
    else
        mpDeptPromos_list();
}

void frmDeptMain::CmdDept_Click(int index)
{
    if (index == 0) {
        FrmDept picker(this);
        gfiForm_show_modal(picker);
        const QString code = gDept.DeptCode.trimmed();
        if (!code.isEmpty()) {
            lblEditData->setText(gfsDept_Name(code));
            mpDeptPromos_list();
            if (!mbHasRows)
                cmdEdit[0]->setEnabled(true);
        }
        CmdPurge[0]->setVisible(true);
        return;
    }
    lblEditData->setText(kAllDeptsCaption);
    mpAllDeptPromos_list();
    CmdPurge[0]->setVisible(false);
}

void frmDeptMain::CmdPurge_Click(int index)
{
    mbPurgeMode = true;
    switch (index) {
    case 0:
        CmdPurge[1]->setVisible(true);
        CmdPurge[2]->setVisible(true);
        mpExpiredPromos_list();
        break;
    case 1:
        // Only a blank is a single store here: "N" takes the head office's way.
        if (gCommon.MultiStore.trimmed().isEmpty()) {
            const std::optional<int> purged = gfiDeptPromos_purge_all_store();
            if (!purged)
                return;
            gfiMsgBox(gfsRecords_purged_text(*purged), MsgButtons::OK, MsgIcon::None, QString());
            mpExpiredPromos_list();
            mbPurgeMode = false;
        } else {
            gfbDeptPromos_purge_all_head_office();
        }
        break;
    default: {
        QStringList marked;
        const FlexGrid &grid = *fgrdItems;
        for (int row = 1; row < grid.Rows(); ++row)
            if (grid.Cols() > cDelete && grid.TextMatrix(row, cDelete) == QLatin1String("X"))
                marked << grid.TextMatrix(row, cDept);
        gfiMsgBox(gfsRecords_purged_text(gfiDeptPromos_purge_selected(marked)), MsgButtons::OK, MsgIcon::None, QString());
        mpExpiredPromos_list();
        break;
    }
    }
}

void frmDeptMain::mpGrid_click(int row, int col)
{
    if (row > 0)
        gpGrid_SelectRow(*fgrdItems, row);
    if (mbPurgeMode && col == cDelete && row > 0)
        fgrdItems->setTextMatrix(row, cDelete, QStringLiteral("X"));
}

// The start date of a row; an empty grid has none, which the user is told.
bool frmDeptMain::mfbRow_start_read(int row, QDate &start)
{
    const std::optional<QDate> date = gfdDate_parse(fgrdItems->TextMatrix(row, cStart));
    if (!date) {
        gfiMsgBox(QStringLiteral("There is no promo on this row.\r\rPick a department that has promos first."), MsgButtons::OK,
                  MsgIcon::Exclamation, kProgramName);
        return false;
    }
    start = *date;
    return true;
}

void frmDeptMain::mpPromo_edit(int index)
{
    const FlexGrid &grid = *fgrdItems;
    const int row = grid.Row();
    frmEdit_DeptPromo editor(this);
    editor.EditMode = index;
    const QString code = mfsCode(grid.TextMatrix(row, cDept));
    if (index == 0) {
        editor.setDeptText(code.isEmpty() ? lblEditData->text() : gfsDept_Name(code));
        editor.StartDateText.clear();
        editor.EndDateText.clear();
        gPromo.UniqueID = 0;
    } else {
        QDate start;
        if (!mfbRow_start_read(row, start))
            return;
        if (code.isEmpty()) {
            editor.setDeptText(lblEditData->text());
            gPromo.Dept = lblEditData->text().left(11);
        } else {
            editor.setDeptText(gfsDept_Name(code));
            gPromo.Dept = grid.TextMatrix(row, cDept);
        }
        editor.StartDateText = grid.TextMatrix(row, cStart);
        editor.EndDateText = grid.TextMatrix(row, cEnd);
        gPromo.StartDate = QDateTime(start, QTime(0, 0));
        // Rows are told apart by their end date alone, walking back from the start.
        const std::optional<QDate> end = gfdDate_parse(editor.EndDateText);
        if (gfbDB_RecordOp(kPromoTable, kOpGreaterEqual, 3)) {
            while (gPromo.EndDate.date() != end.value_or(QDate()))
                if (!gfbDB_RecordOp(kPromoTable, kOpGetPrevious, 3))
                    break;
        }
    }
    gfiForm_show_modal(editor);
    if (!editor.Cancelled)
        mpDeptPromos_list();
}

void frmDeptMain::mpPromo_delete()
{
    const FlexGrid &grid = *fgrdItems;
    const int row = grid.Row();
    QDate start;
    if (!mfbRow_start_read(row, start))
        return;
    gPromo.Dept = grid.TextMatrix(row, cDept);
    gPromo.StartDate = QDateTime(start, QTime(0, 0));
    if (!gfbPromo_delete_confirm())
        return;
    const auto failed = [] { gfiMsgBox(QStringLiteral("Unable to delete promo"), MsgButtons::OK, MsgIcon::None, QStringLiteral("Error")); };
    if (!gfbDB_RecordOp(kPromoTable, kOpEqual, 3)) {
        failed();
    } else if (gfbCompany_single_store()) {
        gfiDB_Execute(gfsDeptPromo_delete_sql(gPromo.StartDate.date(), gPromo.Dept));
    } else {
        gPromo.ChangeType = kChangeDeleted;
        gPromo.ChangeDate = QDateTime(Clock::today(), QTime(0, 0));
        gPromo.Poll = QStringLiteral("Y");
        if (!gfbDB_RecordOp(kPromoTable, kOpUpdate, 3))
            failed();
    }
    mpView_refresh();
}

void frmDeptMain::cmdQuit_Click()
{
    mbPurgeMode = false;
    gpMouse_normal();
    reject();
}

} // namespace qln
