#pragma once
#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;

namespace qln {

class clsDataPath;

// The data path and station window on the program's instance: OK checks, saves and
// closes; Cancel stores nothing.
class frmSM_DATAPATH2 final : public QDialog {
public:
    explicit frmSM_DATAPATH2(clsDataPath &dataPath, QWidget *parent = nullptr);

private:
    void mpForm_load();
    void cmdOK_Click();
    void cmdOK_run();
    void cmdBrowse_Click();
    void cmdHelp_Click();
    void chkTraining_Click();
    void mpStation_label();

    clsDataPath &m_dp;
    QLineEdit *txtDataPath;
    QLineEdit *txtStationPath;
    QLineEdit *txtStation;
    QLabel *lblStation;
    QCheckBox *chkTraining;
};

// Lets the start-up sequence and "Data Path..." show the window.
void gpDataPath_window_install();

} // namespace qln
