#pragma once
#include <QDate>
#include <QDialog>

class QCheckBox;
class QGroupBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace qln {

class FlexGrid;

// The promos of one department or of all departments: list, add, change, delete, purge of
// expired ones, and the way to the tag link. The current department is the code of the
// Departments buffer, shared with the rest of the program.
class frmDeptMain final : public QDialog {
public:
    explicit frmDeptMain(QWidget *parent = nullptr);

    // The caption of lblEditData that marks the all-departments view.
    static const QString kAllDeptsCaption;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void mpControls_create();
    void mpControls_arrange();
    void mpForm_load();

    void mpGrid_layout();
    void mpDeptPromos_list();
    void mpAllDeptPromos_list();
    void mpExpiredPromos_list();
    void mpRows_fill(const QString &sWhere, bool bNames, bool bProgress);
    void mpEditButtons_enable();
    void mpView_refresh();

    void CmdDept_Click(int index);
    void CmdPurge_Click(int index);
    void mpGrid_click(int row, int col);
    bool mfbRow_start_read(int row, QDate &start);
    void mpPromo_edit(int index);
    void mpPromo_delete();
    void cmdQuit_Click();

    QLabel *lblEdit = nullptr;
    QLabel *lblEditData = nullptr;
    QLabel *LblTraining = nullptr;
    QPushButton *CmdDept[2] = {};
    QPushButton *cmdEdit[3] = {};
    QPushButton *CmdPurge[3] = {};
    QPushButton *cmdPrintTags = nullptr;
    QPushButton *cmdPrint = nullptr;
    QPushButton *cmdQuit = nullptr;
    QPushButton *cmdHelp = nullptr;
    QCheckBox *chkExpired = nullptr;
    QGroupBox *Frame1 = nullptr;
    FlexGrid *fgrdItems = nullptr;
    QProgressBar *pbarProgress = nullptr;

    bool mbHasRows = false;
    bool mbPurgeMode = false;
};

} // namespace qln
