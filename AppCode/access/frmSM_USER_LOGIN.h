#pragma once
#include <QDialog>
#include <QStringList>

class QLineEdit;
class QPushButton;

namespace qln {

class clsUserLogin;

// Asks for a sales code and its password; six failed tries lock the code. The login's
// Cancel tells the caller whether to go on.
class frmSM_USER_LOGIN final : public QDialog {
    Q_OBJECT
public:
    explicit frmSM_USER_LOGIN(clsUserLogin &login, QWidget *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void accepted();
    void helpShow();

    clsUserLogin &m_login;
    QLineEdit *m_box[2];
    QPushButton *m_accept;
};

// Sets a new password: typed twice, strong, none of the last four. Empty when cancelled.
class frmPasswordEnter final : public QDialog {
    Q_OBJECT
public:
    explicit frmPasswordEnter(const QStringList &history, QWidget *parent = nullptr);
    QString result() const { return m_result; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void accepted();
    void refuse(const QString &text, const QString &title);

    QStringList m_history;
    QLineEdit *m_first;
    QLineEdit *m_second;
    QString m_result;
};

// What a caller of the login does: shows the login window and, when the check asked for
// it, the password window, whose password goes into the user's row. True when logged in;
// false means the caller ends the program.
bool gfbLogin_run(clsUserLogin &login);

} // namespace qln
