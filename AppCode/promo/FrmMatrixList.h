#pragma once
#include <QDialog>

class QListWidget;
class QPushButton;

namespace qln {

// The picker of matrices that have no promo yet. Accept clears the shared promo record and
// gives it the chosen matrix's GroupID; the caller reads Taken and ChosenText.
class FrmMatrixList final : public QDialog {
public:
    explicit FrmMatrixList(QWidget *parent = nullptr);

    bool Taken = false;  // Accept with entries in the list
    QString ChosenText;  // the chosen entry, empty when none was chosen

protected:
    // F10 runs Accept directly.
    void keyPressEvent(QKeyEvent *event) override;

private:
    void CmdAccept_Click();

    QListWidget *LstMatrix = nullptr;
    QPushButton *CmdEdit[2] = {};
};

} // namespace qln
