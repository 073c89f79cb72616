#include "promo/frmEditGroups.h"

#include "common/Confirm.h"
#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "common/Numbers.h"
#include "common/ProcessState.h"
#include "lookup/FGrid.h"
#include "lookup/FlexGrid.h"
#include "platform/Help.h"
#include "platform/HelpFile.h"
#include "platform/Messages.h"
#include "platform/ModalRunner.h"
#include "promo/frmCode_Edit.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace qln {

namespace {
constexpr int kCodeCol = 0, kLabelCol = 1;
constexpr int kAlignCentre = 4;
} // namespace

frmEditGroups::frmEditGroups(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmEditGroups"));
    setWindowTitle(QStringLiteral("Promp Price  Groups"));
    fgrdItems = new FlexGrid(this);
    fgrdItems->setObjectName(QStringLiteral("fgrdItems"));
    static const char *const captions[] = {"&Add", "&Change", "&Delete"};
    for (int i = 0; i < 3; ++i)
        cmdEdit[i] = gfCommand_button(this, QStringLiteral("cmdEdit(%1)").arg(i), QString::fromLatin1(captions[i]));
    cmdPrint = gfCommand_button(this, QStringLiteral("cmdPrint"), QStringLiteral("F9  Print"));
    cmdPrint->setToolTip(QStringLiteral("Not available yet"));
    cmdHelp = gfCommand_button(this, QStringLiteral("cmdHelp"), QStringLiteral("F1  Help"));
    cmdQuit = gfCommand_button(this, QStringLiteral("cmdQuit"), QStringLiteral("Esc Cancel"));
    connect(cmdEdit[0], &QPushButton::clicked, this, [this] { mpGroup_add(); });
    connect(cmdEdit[1], &QPushButton::clicked, this, [this] { mpGroup_change(); });
    connect(cmdEdit[2], &QPushButton::clicked, this, [this] { mpGroup_delete(); });
    connect(cmdQuit, &QPushButton::clicked, this, &QDialog::reject);
    connect(fgrdItems, &FlexGrid::cellClicked, this, [this](int row, int) {
        if (row > 0)
            gpGrid_SelectRow(*fgrdItems, row);
    });
    connect(fgrdItems, &FlexGrid::cellDoubleClicked, this, [this](int row, int) {
        if (row > 0 && cmdEdit[1]->isEnabled() && cmdEdit[1]->isVisible())
            cmdEdit[1]->click();
    });

    auto *side = new QVBoxLayout;
    for (QPushButton *b : {cmdEdit[0], cmdEdit[1], cmdEdit[2], cmdPrint, cmdHelp})
        side->addWidget(b);
    side->addStretch();
    side->addWidget(cmdQuit);
    auto *form = new QHBoxLayout(this);
    form->addWidget(fgrdItems, 1);
    form->addLayout(side);
    resize(480, 420);

    gpFormKeys_install(this, cmdQuit);
    mpGroups_load();
    gpFont_normalise(this);
}

void frmEditGroups::mpGrid_reset()
{
    FlexGrid &grid = *fgrdItems;
    grid.Clear();
    grid.setCols(2);
    grid.setRows(2);
    grid.setFixedRows(1);
    grid.setColWidth(kCodeCol, 600);
    grid.setColAlignment(kCodeCol, kAlignCentre);
    grid.setColWidth(kLabelCol, 4000);
    grid.setTextMatrix(0, kCodeCol, QStringLiteral("ID"));
    grid.setTextMatrix(0, kLabelCol, QStringLiteral("Group Name"));
    for (QPushButton *b : {cmdEdit[1], cmdEdit[2]})
        b->setEnabled(false);
    cmdPrint->setEnabled(false);
}

void frmEditGroups::mpGrid_fill(const QList<PromoGroup> &groups)
{
    FlexGrid &grid = *fgrdItems;
    grid.setRows(int(std::max<qsizetype>(groups.size(), 1)) + 1);
    for (int i = 0; i < groups.size(); ++i) {
        grid.setTextMatrix(i + 1, kCodeCol, groups[i].sCode);
        grid.setTextMatrix(i + 1, kLabelCol, groups[i].sLabel);
    }
}

QList<PromoGroup> frmEditGroups::mfaGrid_groups() const
{
    QList<PromoGroup> groups;
    for (int row = 1; row < fgrdItems->Rows(); ++row)
        groups << PromoGroup{fgrdItems->TextMatrix(row, kCodeCol), fgrdItems->TextMatrix(row, kLabelCol)};
    return groups;
}

void frmEditGroups::mpGroups_load()
{
    gpHelpFile_set(giStore);
    mbHasGroups = false;
    mpGrid_reset();
    QList<PromoGroup> groups;
    if (!gfbGroups_read(gfsGroups_file(), groups) || groups.isEmpty())
        return; // Add stays on: the first one makes the file
    mbHasGroups = true;
    mpGrid_fill(groups);
    gpGrid_SortColumn(*fgrdItems, kCodeCol, flexSortNumericAscending);
    msGroupCodes = gfsGroup_codes(mfaGrid_groups());
    gpGrid_GoTop(*fgrdItems, kLabelCol);
    for (QPushButton *b : {cmdEdit[1], cmdEdit[2]})
        b->setEnabled(mbHasGroups);
}

void frmEditGroups::mpGroups_save()
{
    gpGrid_SortColumn(*fgrdItems, kCodeCol, flexSortNumericAscending);
    const QList<PromoGroup> groups = mfaGrid_groups();
    if (!gfbGroups_write(gfsGroups_file(), groups))
        gfiMsgBox(QStringLiteral("The group list could not be written to ") + gfsGroups_file(), MsgButtons::OK,
                  MsgIcon::Exclamation, kProgramName);
    msGroupCodes = gfsGroup_codes(groups);
    fgrdItems->setFocus();
}

void frmEditGroups::mpGroup_add()
{
    FlexGrid &grid = *fgrdItems;
    if (grid.Rows() - 1 >= kGroupCodesMax) {
        gfiMsgBox(QStringLiteral("The maximum number of %1 codes has been reached\rYou cannot add any more codes").arg(kGroupCodesMax),
                  MsgButtons::OK, MsgIcon::Information, kProgramName);
        return;
    }
    // The grid is sorted, so the last code is the highest; an emptied list starts again at 1.
    const QString last = grid.TextMatrix(grid.Rows() - 1, kCodeCol).trimmed();
    frmCode_Edit dialog(this);
    dialog.Code = mbHasGroups && !last.isEmpty() ? QString::number(qint64(gfdNumber_value(last)) + 1) : QStringLiteral("1");
    dialog.Codes = msGroupCodes;
    dialog.Mode = frmCode_Edit::kModeAdd;
    gfiForm_show_modal(dialog);
    if (dialog.Cancelled)
        return;
    if (mbHasGroups)
        grid.setRows(grid.Rows() + 1);
    grid.setTextMatrix(grid.Rows() - 1, kCodeCol, dialog.Code);
    grid.setTextMatrix(grid.Rows() - 1, kLabelCol, dialog.Label);
    mpGroups_save();
    mbHasGroups = true;
    for (QPushButton *b : {cmdEdit[1], cmdEdit[2]})
        b->setEnabled(true);
}

void frmEditGroups::mpGroup_change()
{
    FlexGrid &grid = *fgrdItems;
    const int row = grid.Row();
    if (row < 1)
        return;
    frmCode_Edit dialog(this);
    dialog.Mode = frmCode_Edit::kModeChange;
    dialog.Code = grid.TextMatrix(row, kCodeCol);
    dialog.Label = grid.TextMatrix(row, kLabelCol);
    dialog.Codes = msGroupCodes;
    gfiForm_show_modal(dialog);
    if (dialog.Cancelled)
        return;
    // Promo rows under the old number stay under it.
    grid.setTextMatrix(row, kCodeCol, dialog.Code);
    grid.setTextMatrix(row, kLabelCol, dialog.Label);
    mpGroups_save();
}

void frmEditGroups::mpGroup_delete()
{
    FlexGrid &grid = *fgrdItems;
    const int row = grid.Row();
    if (row < 1)
        return;
    const QString code = grid.TextMatrix(row, kCodeCol);
    const QString label = grid.TextMatrix(row, kLabelCol);
    if (!gfbConfirm(QStringLiteral("Ready To Delete \r'") + code.trimmed() + QStringLiteral(" - ") + label.trimmed() +
                        QLatin1Char('\''),
                    QStringLiteral("Are you sure you want to delete records in this group?")))
        return;
    const int removed = gfiGroup_promos_delete(code);
    gfiMsgBox(removed < 1 ? QStringLiteral("No records found") : QString::number(removed) + QStringLiteral(" records deleted"),
              MsgButtons::OK, MsgIcon::None, QStringLiteral("Promo Price Group ") + label);
    QList<PromoGroup> groups = mfaGrid_groups();
    if (groups.size() == 1)
        groups[0] = PromoGroup();
    else
        groups.removeAt(row - 1);
    mpGrid_fill(groups);
    mpGroups_save();
}

} // namespace qln
