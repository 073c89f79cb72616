#pragma once
#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace qln {

// The dialog in which one department promo is added or changed: two dates and an amount off
// or a percentage. The caller sets the properties, shows it, reads Cancelled and deletes it;
// the dialog writes the row from the PromoPrices buffer itself.
class frmEdit_DeptPromo final : public QDialog {
public:
    static constexpr int kModeAdd = 0, kModeChange = 1;

    explicit frmEdit_DeptPromo(QWidget *parent = nullptr);

    int EditMode = kModeAdd;
    QString StartDateText;
    QString EndDateText;
    bool Cancelled = true; // only a successful Accept clears it

    // The department text beside "Department".
    void setDeptText(const QString &text);

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void mpForm_activate();
    void mpOption_choose(int option);
    void mpAccept_state(int changed);
    void cmdAccept_Click();
    void cmdCalendar_Click();
    bool mfbValidate();
    bool mfbSave();

    bool mbActivated = false;
    QLabel *lblEdit[9] = {};
    QLineEdit *txtEdit[6] = {};
    QRadioButton *Option1[3] = {};
    QPushButton *cmdAcceptCancel[2] = {};
    QPushButton *cmdCalendar = nullptr;
    QPushButton *cmdHelp = nullptr;
};

} // namespace qln
