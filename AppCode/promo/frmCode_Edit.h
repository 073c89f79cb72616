#pragma once
#include <QDialog>

class QLineEdit;
class QPushButton;

namespace qln {

// Asks for one group's code and description. The caller sets the properties, shows it,
// reads Cancelled, Code and Label, and deletes it. Neither box is validated.
class frmCode_Edit final : public QDialog {
public:
    static constexpr int kModeAdd = 0, kModeChange = 1;

    explicit frmCode_Edit(QWidget *parent = nullptr);

    int Mode = kModeAdd;
    QString Code;
    QString Label;
    QString Codes; // every code of the list, kept for the caller
    bool Cancelled = true;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void mpBox_changed(int box);
    void mpBox_enter();
    void cmdAccept_Click();

    bool mbLoaded = false;
    QLineEdit *txtEdit[2] = {};
    QPushButton *cmdAcceptCancel[2] = {};
    QPushButton *cmdHelp = nullptr;
};

} // namespace qln
