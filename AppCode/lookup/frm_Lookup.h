#pragma once
#include "lookup/DataGrid.h"

#include <QDialog>
#include <array>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace qln {

class FlexGrid;

// Builds the grid from the column table (made first when empty): header, widths, alignment.
void gpDataGrid_Setup(FlexGrid &grid);

// The record lookup of the inventory (file 1) or the names (file 99). The caller sets
// iLookupFile, bFindMode, sVendorFilter, iVendorMode and iFirstCol before making it, and reads
// sLookupResult (the chosen item's SL or name's A/R code, empty when cancelled) or, with an
// entry column, gaLookupEntries afterwards.
class frm_Lookup final : public QDialog {
public:
    explicit frm_Lookup(QWidget *parent = nullptr);
    ~frm_Lookup() override;

    QString sLookupResult;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void reject() override;

private:
    class GridView;

    void mpControls_make();
    void mpActivate();
    void mpGrid_resize();
    bool mfbKey_handle(QObject *watched, int key, Qt::KeyboardModifiers modifiers);
    void mpSort_set(int col);
    void txtEditValue_Change();
    void txtEditValue_Enter();
    void mpSearch_run();
    void mpRow_choose();
    void mpEntry_open(int row);
    void mpEntry_follow();
    void mpEntry_close(bool keep);
    void mpEntry_set(const QString &sl, const QString &qty);
    QString mfsRow_SL(int row) const;
    int mfiEntry_row() const;
    void mpScan_toggle();
    void mpScan_enter();
    void mpSearch_clear();
    void cmdEdit_Click();
    void cmdExit_Click();
    void mpWildcard_follow();
    void mpStore_show();
    void mpStore_choose(int index);
    int mfiGridRow() const;

    FlexGrid *fgrdItems = nullptr;
    QLineEdit *txtEditValue = nullptr;
    QLabel *lblSearchField = nullptr;
    QCheckBox *ckWildcard = nullptr;
    QPushButton *cmdSearch = nullptr, *cmdStop = nullptr, *cmdEdit = nullptr, *cmdAdd = nullptr;
    QPushButton *cmdAltVendor = nullptr, *cmdExit = nullptr, *cmdHelp = nullptr, *cmdScan = nullptr;
    std::array<QPushButton *, 5> cmdAction{};
    std::array<QPushButton *, 2> cmdPage{};
    QSpinBox *SpnGrid = nullptr;
    QGroupBox *FraScan = nullptr;
    QLineEdit *TxtScan = nullptr, *TxtText = nullptr;
    QLabel *Lblwait = nullptr, *LblTraining = nullptr;
    QComboBox *CboStore = nullptr;
    GridView *m_view = nullptr;
    int m_sortCol = 0;
    QString m_entrySL; // the item the quantity box was opened for
    int m_store = 0; // whose list a head office looks at; the home store at first
    bool m_shown = false;
    bool m_erasing = false;
};

} // namespace qln
