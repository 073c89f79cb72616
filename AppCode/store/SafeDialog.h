#pragma once
#include <QDialog>
#include <QString>

class QPushButton;

namespace qln {

// The point-of-sale programs' question when the server cannot be reached: try again, sell on
// the station's local copy, or stop. This program asks its own yes/no question instead and
// never shows it; the window is kept with the shared recovery code.
class SafeDialog final : public QDialog {
public:
    explicit SafeDialog(QWidget *parent = nullptr);

    QString sAnswer; // "R" retry, "L" local, "X" exit; empty while none was given

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void mpAnswer(const QString &letter);

    QPushButton *CmdRetry, *CmdLocal, *cmdExit;
};

} // namespace qln
