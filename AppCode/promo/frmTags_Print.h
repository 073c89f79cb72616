#pragma once
#include <QDate>
#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;

namespace qln {

// Picks promos for shelf tags and hands their items to the tag program. The hand-over file
// lives as long as the window.
class frmTags_Print final : public QDialog {
public:
    explicit frmTags_Print(QWidget *parent = nullptr);
    ~frmTags_Print() override;

private:
    void cmdAccept_Click();
    void cmdCalendar_Click();
    void cmdPrint_Click();
    void cmdPrintList_Click();
    bool mfbDates_check();
    bool mfbDate_check(int index);
    QDate mfdBox_date(int index) const;
    bool mfbList_fill();
    void mpPrint_enable(bool bEnabled);

    QLabel *lblEdit[2] = {};
    QLineEdit *txtEdit[2] = {};
    QPushButton *cmdCalendar = nullptr;
    QPushButton *cmdAccept = nullptr;
    QCheckBox *SSCheck1 = nullptr;
    QListWidget *lstPromos = nullptr;
    QProgressBar *prgRecords = nullptr;
    QPushButton *cmdPrint = nullptr;
    QPushButton *cmdPrintList = nullptr;
    QPushButton *cmdExit = nullptr;
    QPushButton *cmdHelp = nullptr;

    QString msTagFile;
    QDate mdTo; // the End Date of the last Accept; only it selects promos
    bool mbActiveOnly = false; // once set by the check box, it stays set
};

} // namespace qln
