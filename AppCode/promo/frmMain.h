#pragma once
#include <QDialog>

#include <vector>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

namespace qln {

class FlexGrid;
class frmEdit_Promo;

// The promos of one item (item face) or of all items (All Items face): list, add, change,
// delete, purge, and the way to the tag link.
class frmMain final : public QDialog {
public:
    explicit frmMain(QWidget *parent = nullptr);

    // The caption of lblEditData(2) that marks the All Items face.
    static const QString kAllItemsCaption;

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void mpControls_create();
    void mpControls_arrange();
    void mpForm_load();
    bool mfbItemFace() const;

    void mpGrid_layout();
    void mpColumns_scale();
    void mpItem_list_fill(bool bQuiet);
    void mpOverlaps_warn();
    void mpAll_list_fill();
    bool mfbAll_rows_add();
    void mpRow_add(int &count, const QString &previousPromo, bool bAllItems);
    void mpButtons_state();
    bool mfbItem_show();
    void mpItem_select();
    void CmdViewAll_Click();
    void chkExpired_Click();
    void mpGrid_click(int row, int col);
    void txtSearch_Change(const QString &text);

    void mpPromo_add();
    void mpPromo_change();
    bool mfbGrid_row_find(int row, bool bItemFace, bool bLiveOnly);
    void mpEditor_run(frmEdit_Promo &editor);
    void mpList_refill();
    void mpPromo_delete();
    void mpPurge_item();
    void mpPurge_all();
    void cmdPrintTags_Click();
    void cmdQuit_Click();

    QLabel *lblEdit[3] = {};
    QLabel *lblEditData[3] = {};
    QLabel *LblTraining = nullptr;
    QPushButton *cmdItem = nullptr;
    QPushButton *CmdViewAll = nullptr;
    QPushButton *cmdEdit[3] = {};
    QPushButton *cmdPurge[2] = {};
    QPushButton *cmdPrintTags = nullptr;
    QPushButton *cmdPrint = nullptr;
    QPushButton *cmdQuit = nullptr;
    QCheckBox *chkExpired = nullptr;
    QGroupBox *Frame1 = nullptr;
    QGroupBox *FraSearch = nullptr;
    QLineEdit *txtSearch = nullptr;
    FlexGrid *fgrdItems = nullptr;
    QProgressBar *pbarProgress = nullptr;

    bool mbHasRows = false;
    bool mbFilling = false;
    int miSortCol = 0;
    int miSortDir = 0;
    std::vector<int> miColumnWidths; // twips, in the face's design proportions
};

} // namespace qln
