#include "promo/FrmDept.h"

#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "lookup/FGrid.h"
#include "lookup/FlexGrid.h"
#include "platform/Recordset.h"
#include "store/Departments.h"
#include "store/RecordOps.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace qln {

namespace {

constexpr int kCodeWidth = 1500;
constexpr int kAlignLeft = 1;
constexpr quint32 kRed = 0xFF, kBlue = 0xFF0000;

} // namespace

FrmDept::FrmDept(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("FrmDept"));
    setWindowTitle(QStringLiteral("Select Department"));
    fgrdItems = new FlexGrid(this);
    fgrdItems->setObjectName(QStringLiteral("fgrdItems"));
    CmdExit[0] = gfCommand_button(this, QStringLiteral("CmdExit(0)"), QStringLiteral("F10 Accept "));
    CmdExit[1] = gfCommand_button(this, QStringLiteral("CmdExit(1)"), QStringLiteral("Esc Cancel"));
    connect(CmdExit[0], &QPushButton::clicked, this, [this] { mpDept_accept(); });
    connect(CmdExit[1], &QPushButton::clicked, this, [this] { mpDept_cancel(); });
    connect(fgrdItems, &FlexGrid::cellDoubleClicked, this, [this] { mpDept_accept(); });

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(CmdExit[0]);
    buttons->addWidget(CmdExit[1]);
    auto *form = new QVBoxLayout(this);
    form->addWidget(fgrdItems, 1);
    form->addLayout(buttons);
    resize(520, 420);
    gpFormKeys_install(this, CmdExit[1]);
    gpFont_normalise(this);
}

void FrmDept::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    layout()->activate();
    mpGrid_fill();
    fgrdItems->setFocus();
}

void FrmDept::mpGrid_fill()
{
    FlexGrid &grid = *fgrdItems;
    grid.Clear();
    grid.setCols(2);
    grid.setRows(2);
    grid.setFixedRows(1);
    grid.setColWidth(0, kCodeWidth);
    grid.setColWidth(1, grid.Width() - kCodeWidth - 50);
    grid.setColAlignment(0, kAlignLeft);
    grid.setColAlignment(1, kAlignLeft);
    grid.setTextMatrix(0, 0, QStringLiteral("Dept Code"));
    grid.setTextMatrix(0, 1, QStringLiteral("Dept Name"));
    if (gfiDB_RecordCount(kDeptTable) == 0)
        return;
    // The codes are copied first: composing a name reads the same table.
    QStringList codes;
    if (gfbDB_RecordOp(kDeptTable, kOpBySQL, 0, false, false, QStringLiteral("SELECT * FROM Departments order by DeptCode "))) {
        Recordset &set = *gfrsDB_Current(kDeptTable);
        for (set.moveFirst(); !set.eof(); set.moveNext()) {
            gpDB_table_row_to_record(kDeptTable);
            codes << gDept.DeptCode;
        }
    }
    // The names come from the table read once; the last row's by the keyed reads, which
    // leave the buffer and the table's current row where composing every row leaves them.
    DeptTable table;
    table.read();
    int count = 0;
    for (const QString &code : std::as_const(codes)) {
        const bool last = count + 1 == codes.size();
        gpGrid_AddRow(grid, count);
        const int level = gfiDept_Level(code);
        const QString shown = level == 3 ? QStringLiteral("      ") + code : level == 2 ? QStringLiteral("   ") + code : code.trimmed();
        grid.setTextMatrix(count, 0, shown);
        grid.setTextMatrix(count, 1, (last ? gfsDept_Name(code) : gfsDept_Name(code, table)).mid(12));
        if (level != 3) {
            grid.setRow(count);
            grid.setCol(0);
            grid.setCellForeColor(level == 1 ? kRed : kBlue);
        }
    }
    grid.setRow(1);
    grid.setCol(0);
    gpGrid_SelectRow(grid, 1);
}

void FrmDept::mpDept_accept()
{
    const FlexGrid &grid = *fgrdItems;
    gDept.DeptCode = grid.TextMatrix(grid.Row(), 0).trimmed();
    gDept.Department = grid.TextMatrix(grid.Row(), 1).trimmed().left(20);
    accept();
}

void FrmDept::mpDept_cancel()
{
    gDept.DeptCode.clear();
    reject();
}

} // namespace qln
