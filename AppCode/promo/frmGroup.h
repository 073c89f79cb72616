#pragma once
#include "promo/PromoPricing.h"

#include <QDialog>
#include <QList>

class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;

namespace qln {

class FlexGrid;

// The promos of a named group of items (Groups.QLN): one PromoPrices row per member, all with
// the group's number and the same dates and change, kept together in gGroupPromo. Choose a
// group, define its promo, add members from the lookup, change or remove them, purge, print,
// and the way to the tag link.
class frmGroup final : public QDialog {
public:
    explicit frmGroup(QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void mpControls_create();
    void mpControls_arrange();
    void mpGroups_load();
    void mpGroup_choose();
    void mpGroup_list_fill();
    void mpButtons_state(bool bHasRows);
    void mpGroupPromo_edit(int index);
    bool mfbItems_add();
    void mpPromo_delete();
    void mpHeader_click(int col);
    void CmdGroup_Click();

    QComboBox *Combo1 = nullptr;
    QLabel *lblEdit[2] = {};
    QLabel *lblEditData = nullptr;
    QLabel *Label1 = nullptr;
    QPushButton *CmdGroup = nullptr;
    QGroupBox *Frame1 = nullptr;
    QGroupBox *Frame2 = nullptr;
    QPushButton *CmdAddItem = nullptr;
    QPushButton *cmdEdit[3] = {};
    QPushButton *cmdPurge = nullptr;
    QPushButton *cmdPrintTags = nullptr;
    QPushButton *cmdPrint = nullptr;
    QPushButton *cmdQuit = nullptr;
    QPushButton *cmdHelp = nullptr;
    FlexGrid *fgrdItems = nullptr;

    QList<PromoPriceRecord> maGroupRows;
    int miGroupID = 0;
    bool mbGroupHasRows = false;
    bool mbHasRows = false;
    bool mbActivated = false;
};

} // namespace qln
