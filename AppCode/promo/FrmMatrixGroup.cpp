#include "promo/FrmMatrixGroup.h"

#include "common/Confirm.h"
#include "common/FormControls.h"
#include "common/FormLook.h"
#include "common/ProcessState.h"
#include "lookup/FGrid.h"
#include "lookup/FlexGrid.h"
#include "platform/Clock.h"
#include "platform/Messages.h"
#include "platform/ModalRunner.h"
#include "promo/FrmEdit_GroupPromo.h"
#include "promo/FrmMatrixList.h"
#include "promo/GroupMembers.h"
#include "promo/GroupMembersGrid.h"
#include "promo/MatrixPromos.h"
#include "store/Common.h"
#include "store/Inventory.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace qln {

namespace {

constexpr int cDescription = 1;

} // namespace

FrmMatrixGroup::FrmMatrixGroup(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("FrmMatrixGroup"));
    setWindowTitle(QStringLiteral("Matrix Promo Prices"));
    mpControls_create();
    mpControls_arrange();
    // Load: the selector, its first entry, the grid.
    mpChoices_fill();
    if (Combo1->count() > 0) {
        Combo1->setCurrentIndex(0);
        Combo1_Click(0);
    }
    mpGrid_layout();
    gpFont_normalise(this);
}

// The window has no key routines of its own: the keys its captions name are not bound, and
// Esc leaves it as every dialog does.
void FrmMatrixGroup::mpControls_create()
{
    lblEdit = gfForm_label(this, QStringLiteral("lblEdit"), QStringLiteral("Select Existing Matrix Promo"));
    lblEditData = gfForm_label(this, QStringLiteral("lblEditData"));
    lblEditData->setFrameShape(QFrame::Panel);
    lblEditData->setFrameShadow(QFrame::Sunken);
    LblTraining = gfForm_label(this, QStringLiteral("LblTraining"), QStringLiteral("Training"));
    LblTraining->setVisible(gbTraining);
    Combo1 = new QComboBox(this);
    Combo1->setObjectName(QStringLiteral("Combo1"));
    Combo1->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    CmdGroup1 = gfCommand_button(this, QStringLiteral("CmdGroup(1)"), QStringLiteral("F3  Add New Matrix Promo"));
    Frame1 = new QGroupBox(QStringLiteral("Matrix Group Promo Pricing"), this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    cmdEdit[0] = gfCommand_button(Frame1, QStringLiteral("cmdEdit(0)"), QStringLiteral("&Add "));
    cmdEdit[1] = gfCommand_button(Frame1, QStringLiteral("cmdEdit(1)"), QStringLiteral("&Change"));
    cmdEdit[3] = gfCommand_button(Frame1, QStringLiteral("cmdEdit(3)"), QStringLiteral("&Delete"));
    chkExpired = new QCheckBox(QStringLiteral("Show Expired promos on Grid"), this);
    chkExpired->setObjectName(QStringLiteral("chkExpired"));
    cmdPrintTags = gfCommand_button(this, QStringLiteral("cmdPrintTags"), QStringLiteral("F5  Print Tags"));
    cmdPrint = gfCommand_button(this, QStringLiteral("cmdPrint"), QStringLiteral("F9  Print List"));
    cmdQuit = gfCommand_button(this, QStringLiteral("cmdQuit"), QStringLiteral("Esc Cancel"));
    cmdHelp = gfCommand_button(this, QStringLiteral("cmdHelp"), QStringLiteral("F1 &Help"));
    fgrdItems = new FlexGrid(this);
    fgrdItems->setObjectName(QStringLiteral("fgrdItems"));
    fgrdItems->setFixedRows(1);

    connect(Combo1, &QComboBox::activated, this, [this](int index) { Combo1_Click(index); });
    connect(CmdGroup1, &QPushButton::clicked, this, [this] { CmdGroup_Click(); });
    connect(cmdEdit[0], &QPushButton::clicked, this, [this] { mpMatrixPromo_edit(0); });
    connect(cmdEdit[1], &QPushButton::clicked, this, [this] { mpMatrixPromo_edit(1); });
    connect(cmdEdit[3], &QPushButton::clicked, this, [this] { mpMatrixPromo_delete(); });
    connect(cmdQuit, &QPushButton::clicked, this, &QDialog::reject);
    // Print Tags, Print List and Help have no action here; the check box is read by the next fill.
}

void FrmMatrixGroup::mpControls_arrange()
{
    auto *choose = new QHBoxLayout;
    choose->addWidget(lblEdit);
    choose->addWidget(Combo1, 1);
    choose->addWidget(LblTraining);
    auto *top = new QVBoxLayout;
    top->addLayout(choose);
    top->addWidget(lblEditData);

    auto *editButtons = new QVBoxLayout(Frame1);
    for (int i : {0, 1, 3})
        editButtons->addWidget(cmdEdit[i]);
    auto *side = new QVBoxLayout;
    for (QWidget *w : std::initializer_list<QWidget *>{CmdGroup1, Frame1, cmdPrintTags, cmdPrint, cmdHelp})
        side->addWidget(w);
    side->addStretch();
    side->addWidget(cmdQuit);

    auto *left = new QVBoxLayout;
    left->addWidget(fgrdItems, 1);
    left->addWidget(chkExpired);
    auto *body = new QHBoxLayout;
    body->addLayout(left, 1);
    body->addLayout(side);

    auto *form = new QVBoxLayout(this);
    form->addLayout(top);
    form->addLayout(body, 1);
    resize(1040, 560);
}

// The columns keep their proportions and fill the grid, so that dates and amounts are not cut.
void FrmMatrixGroup::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    gpGrid_FitColumns(*fgrdItems);
}

void FrmMatrixGroup::mpChoices_fill()
{
    const QSignalBlocker quiet(Combo1);
    Combo1->clear();
    Combo1->addItems(gfMatrixPromo_choices());
    Combo1->setCurrentIndex(-1);
}

void FrmMatrixGroup::mpGrid_layout()
{
    gpGroupMembers_layout(*fgrdItems);
    gpGrid_FitColumns(*fgrdItems);
}

void FrmMatrixGroup::mpMatrix_list_fill()
{
    GroupMembersFill how;
    how.bReuseEmptyLine = false;
    const bool expired = chkExpired->isChecked();
    const QDate today = Clock::today();
    how.hidden = [expired, today](const PromoPriceRecord &row) {
        return !expired && (row.EndDate.date() < today || row.ChangeType == kChangeDeleted);
    };
    how.description = [] { return gInventory.Description.trimmed() + QLatin1Char(' ') + gInventory.SubDescription.trimmed(); };
    how.wording.bToAmount = false;
    how.wording.sDeletedEnd = QStringLiteral("Deleted");
    how.wording.bRegularFormatted = true;
    mbHasRows = gfbGroupMembers_fill(*fgrdItems, maMatrixRows, how);
    gpGrid_FitColumns(*fgrdItems);
}

void FrmMatrixGroup::Combo1_Click(int index)
{
    mbMatrixHasRows = false;
    maMatrixRows.clear();
    if (index < 1)
        return;
    const QString text = Combo1->itemText(index);
    lblEditData->setText(text);
    gPromo.GroupID = gfiMatrix_entry_number(text, 4);
    gPromo.StartDate = gfdMatrixPromos_since();
    gPromo.Dept = QString(11, QLatin1Char(' '));
    gPromo.SL = QString(8, QLatin1Char(' '));
    gPromo.Store = gCommon.StoreNumber;
    QList<PromoPriceRecord> rows;
    if (gfbGroupMembers_read(gPromo.GroupID, rows) && !rows.isEmpty()) {
        mbMatrixHasRows = true;
        maMatrixRows = rows;
        mpMatrix_list_fill();
        return;
    }
    // Cut to three digits here, where the choice above took four: a promo added from this
    // path finds no matrix.
    gpPromo_clear();
    gGroupPromo = gPromo;
    gGroupPromo.GroupID = gfiMatrix_entry_number(text, 3);
    mpGrid_layout();
    mpMatrixPromo_edit(0);
}

void FrmMatrixGroup::CmdGroup_Click()
{
    gGroupPromo.GroupID = 0;
    FrmMatrixList picker(this);
    gfiForm_show_modal(picker);
    if (picker.Taken)
        lblEditData->setText(picker.ChosenText);
    if (gGroupPromo.GroupID > kMatrixGroupBase) {
        mbMatrixHasRows = false;
        mpMatrixPromo_edit(0);
    }
}

void FrmMatrixGroup::mpMatrixPromo_edit(int index)
{
    if (!mbMatrixHasRows) {
        gGroupPromo.StartDate = QDateTime(Clock::today(), QTime(0, 0));
        gGroupPromo.EndDate = gGroupPromo.StartDate;
    }
    {
        FrmEdit_GroupPromo editor(lblEditData->text(), this);
        editor.Mode = index;
        gfiForm_show_modal(editor);
        if (editor.Cancelled || editor.result() != QDialog::Accepted)
            return;
    }
    if (index == FrmEdit_GroupPromo::kModeChange) {
        gpMatrixPromo_change(maMatrixRows);
        mpMatrix_list_fill();
        return;
    }
    const MatrixExpansion expansion = gfMatrixPromo_expand();
    for (int failed = expansion.failed; failed > 0; --failed)
        gfiMsgBox(QStringLiteral("record not updated"));
    if (expansion.walked)
        maMatrixRows = expansion.rows;
    mpExpansion_tell(expansion);
    if (!maMatrixRows.isEmpty()) {
        mpMatrix_list_fill();
        mpChoices_fill();
    }
}

// What the expansion could not cover is said, so that a promo on part of a matrix is never
// taken for one on all of it.
void FrmMatrixGroup::mpExpansion_tell(const MatrixExpansion &expansion)
{
    QStringList lines;
    if (!expansion.walked && expansion.notReached == 0) {
        lines << QStringLiteral("No items were found for this matrix, so no promo was added.");
    } else if (expansion.notReached > 0) {
        lines << QStringLiteral("%1 item(s) of this matrix come after items of another matrix and were not reached: they have no promo.")
                     .arg(expansion.notReached);
    }
    if (!expansion.missing.isEmpty()) {
        QStringList numbers;
        for (qint32 n : expansion.missing)
            numbers << QString::number(n);
        lines << QStringLiteral("%1 item(s) of this matrix are not in the inventory and have no promo (record numbers %2).")
                     .arg(expansion.missing.size())
                     .arg(numbers.join(QStringLiteral(", ")));
    }
    if (!lines.isEmpty())
        gfiMsgBox(lines.join(QStringLiteral("\r\r")), MsgButtons::OK, MsgIcon::Exclamation, kProgramName);
}

void FrmMatrixGroup::mpMatrixPromo_delete()
{
    const QString headline = QStringLiteral("Ready To Delete \r") + lblEditData->text().trimmed() + QLatin1Char(':');
    if (!gfbConfirm(headline, QStringLiteral("Are you sure you want to delete the promo on this matrix?")))
        return;
    const int deleted = gfiMatrixPromo_delete();
    const QString title = QStringLiteral("Promo Price Group ") + fgrdItems->TextMatrix(fgrdItems->Row(), cDescription);
    gfiMsgBox(deleted > 0 ? QString::number(deleted) + QStringLiteral(" records deleted") : QStringLiteral("No records found"),
              MsgButtons::OK, MsgIcon::None, title);
}

} // namespace qln
