#pragma once
#include "promo/PromoPricing.h"

#include <QDialog>
#include <QList>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;

namespace qln {

class FlexGrid;
struct MatrixExpansion;

// The promos on matrices: the rows of the chosen matrix's promo, a new promo on a matrix that
// has none (expanded at once into one row per item), change and delete of a promo's rows.
class FrmMatrixGroup final : public QDialog {
public:
    explicit FrmMatrixGroup(QWidget *parent = nullptr);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void mpControls_create();
    void mpControls_arrange();

    void mpChoices_fill();
    void mpGrid_layout();
    void mpMatrix_list_fill();
    void Combo1_Click(int index);
    void CmdGroup_Click();
    void mpMatrixPromo_edit(int index);
    void mpExpansion_tell(const MatrixExpansion &expansion);
    void mpMatrixPromo_delete();

    QLabel *lblEdit = nullptr;
    QLabel *lblEditData = nullptr;
    QLabel *LblTraining = nullptr;
    QComboBox *Combo1 = nullptr;
    QPushButton *CmdGroup1 = nullptr;
    QGroupBox *Frame1 = nullptr;
    QPushButton *cmdEdit[4] = {};
    QCheckBox *chkExpired = nullptr;
    QPushButton *cmdPrintTags = nullptr;
    QPushButton *cmdPrint = nullptr;
    QPushButton *cmdQuit = nullptr;
    QPushButton *cmdHelp = nullptr;
    FlexGrid *fgrdItems = nullptr;

    QList<PromoPriceRecord> maMatrixRows;
    bool mbMatrixHasRows = false;
    bool mbHasRows = false;
};

} // namespace qln
