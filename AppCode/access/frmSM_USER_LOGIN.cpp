#include "access/frmSM_USER_LOGIN.h"

#include "access/SalesCode.h"
#include "access/clsUserLogin.h"
#include "common/Buttons.h"
#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "platform/Messages.h"
#include "platform/ModalRunner.h"
#include "platform/Settings.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace qln {

namespace {

constexpr int kTriesAllowed = 6;
// The first letter of the suite's default sales code.
const QString kDefaultCode = QStringLiteral("Y");

QLineEdit *box(QWidget *form, const QString &name, bool hidden)
{
    auto *edit = new QLineEdit(form);
    edit->setObjectName(name);
    if (hidden)
        edit->setEchoMode(QLineEdit::Password);
    return edit;
}

bool isEnter(const QKeyEvent *key) { return key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter; }

} // namespace

frmSM_USER_LOGIN::frmSM_USER_LOGIN(clsUserLogin &login, QWidget *parent)
    : QDialog(parent), m_login(login), m_box{box(this, QStringLiteral("ctxtEdit(0)"), false), box(this, QStringLiteral("ctxtEdit(1)"), true)}
{
    setObjectName(QStringLiteral("frmSM_USER_LOGIN"));
    setWindowTitle(QStringLiteral("Login: ") + login.Application);
    m_accept = gfCommand_button(this, QStringLiteral("cmdOkCancel(0)"), QStringLiteral("&Accept"));
    QPushButton *cancel = gfCommand_button(this, QStringLiteral("cmdOkCancel(1)"), QStringLiteral("Cancel"));
    QPushButton *help = gfCommand_button(this, QStringLiteral("cmdHelp"), QStringLiteral("&Help"));
    gfCommand_button(this, QStringLiteral("CmdReset"), QStringLiteral("Forgotten Password?"));

    auto *grid = new QGridLayout(this);
    grid->addWidget(gfForm_label(this, QStringLiteral("lblEdit(0)"), login.CaptionUserID()), 0, 0);
    grid->addWidget(m_box[0], 0, 1);
    grid->addWidget(gfForm_label(this, QStringLiteral("lblEdit(1)"), login.CaptionPassword()), 1, 0);
    grid->addWidget(m_box[1], 1, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_accept);
    buttons->addWidget(cancel);
    buttons->addWidget(help);
    grid->addLayout(buttons, 2, 0, 1, 2);
    grid->addWidget(findChild<QPushButton *>(QStringLiteral("CmdReset")), 3, 0, 1, 2);

    connect(m_box[0], &QLineEdit::textChanged, this, [this](const QString &text) { gpAcceptButton_follow(text, m_accept); });
    connect(m_accept, &QPushButton::clicked, this, &frmSM_USER_LOGIN::accepted);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, &frmSM_USER_LOGIN::helpShow);
    for (QLineEdit *edit : m_box)
        edit->installEventFilter(this);

    m_box[0]->setText(GetSetting(kZorSettings, QStringLiteral("Login"), QStringLiteral("User ID"), kDefaultCode));
    gpAcceptButton_follow(m_box[0]->text(), m_accept);
    m_box[0]->selectAll();
    m_box[0]->setFocus();
    m_login.Cancel = true; // closing the window counts as a cancel
    gpFormKeys_install(this, cancel);
    gpFont_normalise(this);
}

bool frmSM_USER_LOGIN::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->key() == Qt::Key_F1) {
        helpShow();
        return true;
    }
    if (!isEnter(key))
        return QDialog::eventFilter(watched, event);
    if (!m_box[0]->text().trimmed().isEmpty() && m_box[1]->text().isEmpty())
        m_box[1]->setFocus();
    else if (m_accept->isEnabled())
        m_accept->click();
    return true;
}

void frmSM_USER_LOGIN::helpShow()
{
    gfiMsgBox(QStringLiteral("LOGIN\r\n\r\nEnter your sales code.  If you have not been assigned one, then use Yardo.\r\n"
                             "Sales Codes are maintained in Configuration.\r\nSelect Help, Configuration and Sales Codes.\r\n\r\n"
                             "Enter your password and Press Enter, if one has been assigned.\r\n"
                             "If not, select Accept or Press Alt A on the keyboard."),
              MsgButtons::OK, MsgIcon::None, QStringLiteral("ZOR Help"));
}

void frmSM_USER_LOGIN::accepted()
{
    const QString code = m_box[0]->text();
    m_login.UserID = code;
    m_login.Password = m_box[1]->text();
    m_login.TableIndex = 0;
    m_login.Validate();
    if (!m_login.Valid) {
        if (m_login.FailureCount() < kTriesAllowed) {
            m_box[0]->clear();
            m_box[1]->clear();
            m_box[m_login.FieldIndex]->setFocus();
            return;
        }
        m_login.Login_Log(QStringLiteral("Log in Marvane"), QStringLiteral("I"), code);
        gfiMsgBox(QStringLiteral("You have failed to log in 6 times. \r\nApplication will be closed"), MsgButtons::OK,
                  MsgIcon::None, QStringLiteral("Login Failure"));
        gpSalesCode_lock(code, m_login.StoreNumber);
        m_login.Cancel = true;
        reject();
        return;
    }
    m_login.UserID = gSalesCode.SalesCode.trimmed();
    if (gSalesCode.Status.trimmed() == QLatin1String("I")) {
        gfiMsgBox(QStringLiteral("You have been locked due to log in Failure. Application will be closed"), MsgButtons::OK,
                  MsgIcon::None, QStringLiteral("Login Failure"));
        m_login.Cancel = true;
        reject();
        return;
    }
    m_login.Cancel = false;
    SaveSetting(kZorSettings, QStringLiteral("Login"), QStringLiteral("User ID"), m_login.UserID);
    accept();
}

frmPasswordEnter::frmPasswordEnter(const QStringList &history, QWidget *parent)
    : QDialog(parent), m_history(history), m_first(box(this, QStringLiteral("txtFirst"), true)),
      m_second(box(this, QStringLiteral("txtSecond"), true))
{
    setObjectName(QStringLiteral("frmPasswordEnter"));
    setWindowTitle(QStringLiteral("Reset Password"));
    QPushButton *ok = gfCommand_button(this, QStringLiteral("cmdOkCancel(0)"), QStringLiteral("&Accept"));
    QPushButton *cancel = gfCommand_button(this, QStringLiteral("cmdOkCancel(1)"), QStringLiteral("Cancel"));
    // The screen keypad serves the till programs only.
    gfCommand_button(this, QStringLiteral("cmdKeypad"), QStringLiteral("Keypad"))->hide();

    auto *grid = new QGridLayout(this);
    grid->addWidget(gfForm_label(this, QStringLiteral("lblFirst"), QStringLiteral("Enter Password:")), 0, 0);
    grid->addWidget(m_first, 0, 1);
    grid->addWidget(gfForm_label(this, QStringLiteral("lblSecond"), QStringLiteral("Re-Enter Password:")), 1, 0);
    grid->addWidget(m_second, 1, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    grid->addLayout(buttons, 2, 0, 1, 2);

    connect(ok, &QPushButton::clicked, this, &frmPasswordEnter::accepted);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    m_first->installEventFilter(this);
    m_second->installEventFilter(this);
    m_first->setFocus();
    gpFormKeys_install(this, cancel);
    gpFont_normalise(this);
}

bool frmPasswordEnter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (isEnter(key) || key->key() == Qt::Key_Down || key->key() == Qt::Key_Up) {
            (watched == m_first ? m_second : m_first)->setFocus();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmPasswordEnter::refuse(const QString &text, const QString &title)
{
    gfiMsgBox(text, MsgButtons::OK, MsgIcon::None, title);
    m_first->clear();
    m_second->clear();
    m_first->setFocus();
}

void frmPasswordEnter::accepted()
{
    const QString text = m_first->text().trimmed();
    if (text != m_second->text().trimmed())
        return refuse(QStringLiteral("Re-Enter Password not matched. Please do again."), QStringLiteral("Password confirmmation"));
    if (!gfb_PwdStandardMet(text))
        return refuse(QStringLiteral("Minimum 7 characters combining digits and letters."), QStringLiteral("Password Setting"));
    if (m_history.contains(text))
        return refuse(QStringLiteral("You cannot use the same last 4 passwords. Please try another."), QStringLiteral("Password Setup"));
    // The column holds no more when enciphered.
    if (text.size() > kPasswordMaxLength)
        return refuse(QStringLiteral("Maximum 14 characters."), QStringLiteral("Password Setting"));
    m_result = text;
    accept();
}

bool gfbLogin_run(clsUserLogin &login)
{
    frmSM_USER_LOGIN form(login);
    gfiForm_show_modal(form);
    if (login.Cancel)
        return false;
    if (login.PasswordSetupWanted()) {
        frmPasswordEnter reset(gfaPassword_History());
        gfiForm_show_modal(reset);
        if (!reset.result().isEmpty() && !gfbSalesCode_Password_set(login.UserID, login.StoreNumber, reset.result()))
            gfiMsgBox(QStringLiteral("The new password could not be saved."), MsgButtons::OK, MsgIcon::Exclamation,
                      QStringLiteral("Password Setup"));
    }
    return true;
}

} // namespace qln
