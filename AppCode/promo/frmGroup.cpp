#include "promo/frmGroup.h"

#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "common/ProcessState.h"
#include "lookup/FGrid.h"
#include "lookup/FlexCells.h"
#include "lookup/FlexGrid.h"
#include "lookup/InventoryPick.h"
#include "output/PrintFlexGrid.h"
#include "output/PrintState.h"
#include "platform/Clock.h"
#include "platform/Help.h"
#include "platform/Messages.h"
#include "platform/ModalRunner.h"
#include "promo/FrmEdit_GroupPromo.h"
#include "promo/GroupMembersGrid.h"
#include "promo/GroupPromos.h"
#include "promo/PromoGroups.h"
#include "promo/PromoList.h"
#include "promo/PromoWindow.h"
#include "promo/frmEditGroups.h"
#include "store/Common.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QPalette>
#include <QPushButton>
#include <QVBoxLayout>

namespace qln {

namespace {

enum Column { cSL, cDescription, cRegular, cPromo, cStart, cEnd, cType, cAmount };

QDateTime mfdDay(const QDate &date) { return QDateTime(date, QTime(0, 0)); }

// A code that can stand in GroupID beside the numbers of matrices and daily promos.
bool mfbGroup_code_valid(const QString &sCode)
{
    bool number = false;
    const int code = sCode.trimmed().toInt(&number);
    return number && code >= 1 && code <= kGroupCodesMax;
}

quint32 mfiColour(const QColor &colour) { return quint32(colour.rgb() & 0xFFFFFF); }

} // namespace

frmGroup::frmGroup(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmGroup"));
    mpControls_create();
    mpControls_arrange();
    gpFormKeys_install(this, cmdQuit);
    setWindowTitle(QStringLiteral("ZOR Quillon"));
    mbActivated = false;
    mpButtons_state(false);
    mpGroups_load();
    gpGroupMembers_layout(*fgrdItems);
    gpFont_normalise(this);
}

void frmGroup::mpControls_create()
{
    Combo1 = new QComboBox(this);
    Combo1->setObjectName(QStringLiteral("Combo1"));
    Combo1->setMinimumContentsLength(36);
    lblEdit[0] = gfForm_label(this, QStringLiteral("lblEdit(0)"), QStringLiteral("Group"));
    lblEdit[1] = gfForm_label(this, QStringLiteral("lblEdit(1)"), QStringLiteral("Select Group"));
    lblEditData = gfForm_label(this, QStringLiteral("lblEditData"));
    lblEditData->setFrameShape(QFrame::Panel);
    lblEditData->setFrameShadow(QFrame::Sunken);
    CmdGroup = gfCommand_button(this, QStringLiteral("CmdGroup(1)"), QStringLiteral("F3  Edit/Add/Delete Groups"));
    Frame2 = new QGroupBox(QStringLiteral("Group Items"), this);
    Frame2->setObjectName(QStringLiteral("Frame2"));
    CmdAddItem = gfCommand_button(Frame2, QStringLiteral("CmdAddItem"), QStringLiteral("Add Item"));
    cmdEdit[2] = gfCommand_button(Frame2, QStringLiteral("cmdEdit(2)"), QStringLiteral("&Delete"));
    Frame1 = new QGroupBox(QStringLiteral("Group Pricing Details"), this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    cmdEdit[0] = gfCommand_button(Frame1, QStringLiteral("cmdEdit(0)"), QStringLiteral("&Add "));
    cmdEdit[1] = gfCommand_button(Frame1, QStringLiteral("cmdEdit(1)"), QStringLiteral("&Change"));
    cmdPurge = gfCommand_button(this, QStringLiteral("cmdPurge"), QStringLiteral("F6  Purge Expired GroupPromos "));
    cmdPrintTags = gfCommand_button(this, QStringLiteral("cmdPrintTags"), QStringLiteral("F5  Print Tags"));
    cmdPrint = gfCommand_button(this, QStringLiteral("cmdPrint"), QStringLiteral("F9  Print List"));
    cmdQuit = gfCommand_button(this, QStringLiteral("cmdQuit"), QStringLiteral("Esc Cancel"));
    cmdHelp = gfCommand_button(this, QStringLiteral("cmdHelp"), QStringLiteral("F1 &Help"));
    Label1 = gfForm_label(this, QStringLiteral("Label1"), QStringLiteral("Click on Header to sort by Stock Locator or Description"));
    fgrdItems = new FlexGrid(this);
    fgrdItems->setObjectName(QStringLiteral("fgrdItems"));
    fgrdItems->setFixedRows(1);

    connect(Combo1, &QComboBox::activated, this, [this] { mpGroup_choose(); });
    connect(CmdGroup, &QPushButton::clicked, this, [this] { CmdGroup_Click(); });
    connect(CmdAddItem, &QPushButton::clicked, this, [this] {
        if (mfbItems_add())
            mpGroup_list_fill();
    });
    connect(cmdEdit[0], &QPushButton::clicked, this, [this] { mpGroupPromo_edit(0); });
    connect(cmdEdit[1], &QPushButton::clicked, this, [this] { mpGroupPromo_edit(1); });
    connect(cmdEdit[2], &QPushButton::clicked, this, [this] { mpPromo_delete(); });
    // Without a group chosen the walk would reach the rows of item promos (GroupID 0).
    connect(cmdPurge, &QPushButton::clicked, this, [this] {
        if (miGroupID > 0)
            gfbGroupPromos_purge(miGroupID);
    });
    connect(cmdPrintTags, &QPushButton::clicked, this, [this] { gpTagLink_show(this); });
    connect(cmdPrint, &QPushButton::clicked, this, [this] {
        gpPrint_List(*fgrdItems, gfPrintHead_store(QStringLiteral("Promo Prices for Group ") + lblEditData->text().trimmed()), this);
    });
    connect(cmdQuit, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdHelp, &QPushButton::clicked, this, [] { gpHelp_guides_open(QStringLiteral("promoprices.htm")); });
    connect(fgrdItems, &FlexGrid::cellClicked, this, [this](int row, int col) {
        if (row == 0)
            mpHeader_click(col);
        else
            gpGrid_SelectRow(*fgrdItems, row);
    });
    connect(fgrdItems, &FlexGrid::cellDoubleClicked, this, [this] { mpGroupPromo_edit(1); });
}

void frmGroup::mpControls_arrange()
{
    // The data path changes under the window: the groups are those of the new path.
    QMenuBar *menuBar = gfPromoMenu_make(this, cmdQuit, [this] {
        mpGroups_load();
        mpGroup_choose();
    });

    auto *top = new QHBoxLayout;
    top->addWidget(lblEdit[1]);
    top->addWidget(Combo1);
    top->addSpacing(12);
    top->addWidget(lblEdit[0]);
    top->addWidget(lblEditData, 1);

    auto *items = new QVBoxLayout(Frame2);
    items->addWidget(CmdAddItem);
    items->addWidget(cmdEdit[2]);
    auto *pricing = new QVBoxLayout(Frame1);
    pricing->addWidget(cmdEdit[0]);
    pricing->addWidget(cmdEdit[1]);
    auto *side = new QVBoxLayout;
    for (QWidget *w : std::initializer_list<QWidget *>{CmdGroup, Frame2, Frame1, cmdPurge, cmdPrintTags, cmdPrint, cmdHelp})
        side->addWidget(w);
    side->addStretch();
    side->addWidget(cmdQuit);

    auto *left = new QVBoxLayout;
    left->addWidget(fgrdItems, 1);
    left->addWidget(Label1);
    auto *body = new QHBoxLayout;
    body->addLayout(left, 1);
    body->addLayout(side);

    auto *form = new QVBoxLayout(this);
    form->setMenuBar(menuBar);
    form->addLayout(top);
    form->addLayout(body, 1);
    resize(1060, 560);
}

void frmGroup::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (mbActivated)
        return;
    mbActivated = true;
    if (Combo1->count() > 0 && !Combo1->currentText().trimmed().isEmpty())
        mpGroup_choose();
    else
        CmdGroup_Click();
}

// The columns keep their proportions and fill the grid, so that dates and amounts are not cut.
void frmGroup::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    gpGrid_FitColumns(*fgrdItems);
}

void frmGroup::mpGroups_load()
{
    Combo1->setVisible(true);
    lblEdit[1]->setVisible(true);
    Combo1->clear();
    QList<PromoGroup> groups;
    if (!gfbGroups_read(gfsGroups_file(), groups)) {
        Combo1->setVisible(false);
        lblEdit[1]->setVisible(false);
        return;
    }
    Combo1->setEnabled(true);
    for (const PromoGroup &group : std::as_const(groups))
        Combo1->addItem(gfsGroup_choice_text(group), group.sCode);
    Combo1->setCurrentIndex(Combo1->count() > 0 ? 0 : -1);
}

void frmGroup::mpGroup_choose()
{
    miGroupID = 0;
    mbGroupHasRows = false;
    mbActivated = true;
    maGroupRows.clear();
    const QString text = Combo1->currentText();
    if (text.trimmed().isEmpty())
        return;
    lblEditData->setText(text.mid(3));
    // A code that is no number from 1 to 999 would read, or write, rows of another group.
    const QString code = Combo1->currentData().toString();
    if (!mfbGroup_code_valid(code)) {
        gpGroupMembers_layout(*fgrdItems);
        mpButtons_state(false);
        gfiMsgBox(QStringLiteral("The group code '") + code +
                      QStringLiteral("' is not a number from 1 to 999.\r\rCorrect it in the list of groups (F3)."),
                  MsgButtons::OK, MsgIcon::Exclamation, kProgramName);
        return;
    }
    miGroupID = int(text.left(3).trimmed().toInt());
    gPromo.GroupID = miGroupID;
    gPromo.StartDate = mfdDay(QDate(2009, 1, 1));
    gPromo.Dept.clear();
    gPromo.SL.clear();
    gPromo.Store = gCommon.StoreNumber;
    if (!gfbGroupMembers_read(miGroupID, maGroupRows)) {
        gfiMsgBox(QStringLiteral("The promos of this group could not be read.\r\rNothing was changed; try again."), MsgButtons::OK,
                  MsgIcon::Exclamation, kProgramName);
        return;
    }
    if (!maGroupRows.isEmpty()) {
        mbGroupHasRows = true;
        mpGroup_list_fill();
        return;
    }
    const MsgAnswer answer = gfiMsgBox(QStringLiteral("No items in this Group. Add Items?"), MsgButtons::YesNo, MsgIcon::None,
                                       QStringLiteral("Promo Group ") + lblEditData->text());
    if (answer == MsgAnswer::Yes) {
        gGroupPromo.GroupID = gPromo.GroupID;
        Frame2->setVisible(true);
        CmdAddItem->setEnabled(true);
    } else {
        // The group can't be shown without a promo, so its definition follows either way.
        gpPromo_clear();
        gGroupPromo = gPromo;
        gGroupPromo.GroupID = miGroupID;
        gpGroupMembers_layout(*fgrdItems);
    }
    mpGroupPromo_edit(0);
}

void frmGroup::mpGroup_list_fill()
{
    mbHasRows = false;
    if (!maGroupRows.isEmpty()) {
        const PromoPriceRecord &first = maGroupRows.first();
        gGroupPromo.GroupID = first.GroupID;
        gGroupPromo.ChangeDate = first.ChangeDate;
        gGroupPromo.StartDate = first.StartDate;
        gGroupPromo.Store = first.Store;
        gGroupPromo.EndDate = first.EndDate;
        gGroupPromo.ChangeType = first.ChangeType;
        gGroupPromo.PriceChange = first.PriceChange;
    }
    mbHasRows = gfbGroupMembers_fill(*fgrdItems, maGroupRows, GroupMembersFill());
    gpGrid_FitColumns(*fgrdItems);
    mpButtons_state(mbHasRows);
    if (!mbHasRows)
        CmdAddItem->setEnabled(true);
}

void frmGroup::mpButtons_state(bool bHasRows)
{
    gpPromoButtons_follow(bHasRows, {cmdPrint, CmdAddItem, cmdEdit[0], cmdEdit[1], cmdEdit[2]});
}

void frmGroup::mpGroupPromo_edit(int index)
{
    if (!mbGroupHasRows) {
        gGroupPromo.StartDate = gGroupPromo.EndDate = mfdDay(Clock::today());
        gGroupPromo.Store = qint16(gsStore.trimmed().toInt());
    }
    bool cancelled = true;
    {
        FrmEdit_GroupPromo editor(lblEditData->text(), this);
        editor.Mode = index;
        // Closed by its window frame, the editor took nothing either.
        cancelled = gfiForm_show_modal(editor) != QDialog::Accepted || editor.Cancelled;
    }
    if (cancelled)
        return;
    if (index == 0)
        mfbItems_add();
    else
        gpGroupMembers_change(maGroupRows);
    mpGroup_list_fill();
}

bool frmGroup::mfbItems_add()
{
    const QStringList keys = gfsInventory_PickList();
    return gfiGroupMembers_add(keys, maGroupRows) > 0;
}

void frmGroup::mpPromo_delete()
{
    const FlexGrid &grid = *fgrdItems;
    const int row = grid.Row();
    const std::optional<QDate> end = gfdDate_parse(grid.TextMatrix(row, cEnd));
    if (row < 1 || !end) {
        gfiMsgBox(QStringLiteral("There is no promo on this row."), MsgButtons::OK, MsgIcon::Exclamation, kProgramName);
        return;
    }
    // A store's row goes at once and stays in sight until the group is chosen again; a head
    // office's tombstone leaves the list.
    if (gfeGroupMember_delete(miGroupID, grid.TextMatrix(row, cSL), *end) == MemberDeleteEnd::Marked)
        fgrdItems->setRowHeight(row, 0);
}

// The S/L and Description headers sort their columns; the header cell shows it while it sorts.
void frmGroup::mpHeader_click(int col)
{
    if (col != cSL && col != cDescription)
        return;
    FlexGrid &grid = *fgrdItems;
    const int fillStyle = grid.FillStyle();
    grid.setFillStyle(0);
    grid.setRow(0);
    grid.setCol(col);
    const quint32 back = grid.CellBackColor(), fore = grid.CellForeColor();
    grid.setCellBackColor(mfiColour(palette().color(QPalette::Highlight)));
    grid.setCellForeColor(mfiColour(palette().color(QPalette::HighlightedText)));
    gpGrid_SortColumn(grid, col, flexSortStringNoCaseAscending);
    grid.setRow(0);
    grid.setCol(col);
    grid.setCellBackColor(back);
    grid.setCellForeColor(fore);
    grid.setFillStyle(fillStyle);
    gpGrid_SelectRow(grid, 1);
}

void frmGroup::CmdGroup_Click()
{
    {
        frmEditGroups groups(this);
        gfiForm_show_modal(groups);
    }
    mpGroups_load();
    mpGroup_choose();
}

} // namespace qln
