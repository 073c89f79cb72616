#pragma once
#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace qln {

// The shared values of a group promo (dates, kind of change and amount), kept in
// gGroupPromo; the caller writes them to the rows. The caller sets Mode and the group's name,
// shows it, reads Cancelled and Changed, and deletes it.
class FrmEdit_GroupPromo final : public QDialog {
public:
    static constexpr int kModeAdd = 0, kModeChange = 1;

    explicit FrmEdit_GroupPromo(const QString &sGroupName, QWidget *parent = nullptr);

    int Mode = kModeAdd;
    bool Changed = false;
    bool Cancelled = false;

    void reject() override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void mpForm_load();
    void mpDaily_activate();
    void mpOption_choose(int option);
    void cmdAccept_Click();
    void cmdCalendar_Click();
    int mfiOption() const;

    bool mbLoaded = false;
    QLabel *lblEdit[2] = {};
    QLabel *mlblDate[2] = {};
    QLineEdit *txtEdit[6] = {};
    QRadioButton *Option1[3] = {};
    QPushButton *cmdAcceptCancel[2] = {};
    QPushButton *cmdCalendar = nullptr;
    QPushButton *cmdHelp = nullptr;
};

} // namespace qln
