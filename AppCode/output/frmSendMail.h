#pragma once
#include <QDialog>

class QGroupBox;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

namespace qln {

// One message through the station's mail settings, with a screen keyboard for touch stations.
// It closes when the mail went out and stays open with its texts when it didn't.
class frmSendMail final : public QDialog {
    Q_OBJECT
public:
    explicit frmSendMail(QWidget *parent = nullptr);

    void mpAddresses_set(const QString &sTo, const QString &sCC, const QString &sFrom);
    void mpSubject_set(const QString &sSubject);
    void mpAttachment_set(const QString &sFiles);
    // "To", "From", "Subject", "Message" or "Attach".
    void mpFocus_set(const QString &sBox);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void mpKeyboard_create();
    void cmdSend_Click();
    void Command1_Click();
    void CmdShowKB_Click();
    void cmdKeyPad_Click(const QString &key);
    void mpKeys_case();

    QLineEdit *txtTo = nullptr;
    QLineEdit *TxtCC = nullptr;
    QLineEdit *txtFrom = nullptr;
    QLineEdit *TxtSubject = nullptr;
    QPlainTextEdit *TxtBody = nullptr;
    QLineEdit *txtAttach = nullptr;
    QPushButton *cmdSend = nullptr;
    QPushButton *cmdCancel = nullptr;
    QPushButton *Command1 = nullptr;
    QPushButton *CmdShowKB = nullptr;
    QGroupBox *FraKeyBoard = nullptr;
    QList<QPushButton *> cmdKeyPad;
    QPushButton *cmdEdit = nullptr;
    QRadioButton *optUpper = nullptr;
    QRadioButton *optLower = nullptr;
    QWidget *m_target = nullptr; // the box the screen keyboard writes to
};

} // namespace qln
