#include "output/frmSendMail.h"

#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "output/Mail.h"
#include "platform/Clock.h"
#include "platform/Messages.h"
#include "platform/ModalRunner.h"
#include "store/StatementLog.h"

#include <QEvent>
#include <QFileDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace qln {

namespace {
const QString kKeys = QStringLiteral("1234567890QWERTYUIOPASDFGHJKL@ZXCVBNM.-_;,");
constexpr int kKeysPerLine = 10;

QLineEdit *lineBox(QWidget *form, const char *name)
{
    auto *box = new QLineEdit(form);
    box->setObjectName(QString::fromLatin1(name));
    return box;
}
} // namespace

frmSendMail::frmSendMail(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmSendMail"));
    setWindowTitle(QStringLiteral("Send"));
    txtTo = lineBox(this, "txtTo");
    TxtCC = lineBox(this, "TxtCC");
    txtFrom = lineBox(this, "txtFrom");
    TxtSubject = lineBox(this, "TxtSubject");
    TxtBody = new QPlainTextEdit(this);
    TxtBody->setObjectName(QStringLiteral("TxtBody"));
    txtAttach = lineBox(this, "txtAttach");
    Command1 = gfCommand_button(this, QStringLiteral("Command1"), QStringLiteral("..."));
    cmdSend = gfCommand_button(this, QStringLiteral("cmdSend"), QStringLiteral("&Send"));
    cmdCancel = gfCommand_button(this, QStringLiteral("cmdCancel"), QStringLiteral("Esc Cancel"));
    CmdShowKB = gfCommand_button(this, QStringLiteral("CmdShowKB"), QStringLiteral("Show Keyboard"));

    auto *attach = new QHBoxLayout;
    attach->addWidget(txtAttach, 1);
    attach->addWidget(Command1);
    auto *fields = new QFormLayout;
    fields->addRow(QStringLiteral("To:"), txtTo);
    fields->addRow(QStringLiteral("CC:"), TxtCC);
    fields->addRow(QStringLiteral("From:"), txtFrom);
    fields->addRow(QStringLiteral("Subject:"), TxtSubject);
    fields->addRow(QStringLiteral("Message:"), TxtBody);
    fields->addRow(QStringLiteral("Attach:"), attach);
    mpKeyboard_create();
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(CmdShowKB);
    buttons->addStretch(1);
    buttons->addWidget(cmdSend);
    buttons->addWidget(cmdCancel);
    auto *form = new QVBoxLayout(this);
    form->addLayout(fields);
    form->addWidget(FraKeyBoard);
    form->addLayout(buttons);

    for (QWidget *box : std::initializer_list<QWidget *>{txtTo, TxtCC, txtFrom, TxtSubject, TxtBody, txtAttach})
        box->installEventFilter(this);
    connect(cmdSend, &QPushButton::clicked, this, [this] { cmdSend_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(CmdShowKB, &QPushButton::clicked, this, [this] { CmdShowKB_Click(); });
    gpFormKeys_install(this, cmdCancel);
    gpFont_normalise(this);
    resize(560, 420);
}

void frmSendMail::mpKeyboard_create()
{
    FraKeyBoard = new QGroupBox(this);
    FraKeyBoard->setObjectName(QStringLiteral("FraKeyBoard"));
    auto *grid = new QGridLayout(FraKeyBoard);
    for (int i = 0; i < kKeys.size(); ++i) {
        QPushButton *key = gfCommand_button(FraKeyBoard, QStringLiteral("cmdKeyPad(%1)").arg(i), kKeys.mid(i, 1));
        key->setFocusPolicy(Qt::NoFocus);
        connect(key, &QPushButton::clicked, this, [this, key] { cmdKeyPad_Click(key->text()); });
        grid->addWidget(key, i / kKeysPerLine, i % kKeysPerLine);
        cmdKeyPad << key;
    }
    const int line = int(kKeys.size()) / kKeysPerLine + 1;
    cmdEdit = gfCommand_button(FraKeyBoard, QStringLiteral("cmdEdit"), QStringLiteral("Clear"));
    cmdEdit->setFocusPolicy(Qt::NoFocus);
    optUpper = new QRadioButton(QStringLiteral("Upper Case"), FraKeyBoard);
    optUpper->setObjectName(QStringLiteral("optUpper"));
    optUpper->setChecked(true);
    optLower = new QRadioButton(QStringLiteral("Lower Case"), FraKeyBoard);
    optLower->setObjectName(QStringLiteral("optLower"));
    grid->addWidget(optUpper, line, 0, 1, 3);
    grid->addWidget(optLower, line, 3, 1, 3);
    grid->addWidget(cmdEdit, line, 7, 1, 3);
    connect(optLower, &QRadioButton::toggled, this, [this] { mpKeys_case(); });
    connect(cmdEdit, &QPushButton::clicked, this, [this] {
        if (auto *box = qobject_cast<QLineEdit *>(m_target))
            box->clear();
        else if (auto *body = qobject_cast<QPlainTextEdit *>(m_target))
            body->clear();
    });
    FraKeyBoard->hide();
}

void frmSendMail::mpAddresses_set(const QString &sTo, const QString &sCC, const QString &sFrom)
{
    txtTo->setText(sTo);
    TxtCC->setText(sCC);
    txtFrom->setText(sFrom);
}

void frmSendMail::mpSubject_set(const QString &sSubject) { TxtSubject->setText(sSubject); }

void frmSendMail::mpAttachment_set(const QString &sFiles) { txtAttach->setText(sFiles); }

void frmSendMail::mpFocus_set(const QString &sBox)
{
    const QList<std::pair<QString, QWidget *>> boxes = {{QStringLiteral("To"), txtTo},
                                                         {QStringLiteral("From"), txtFrom},
                                                         {QStringLiteral("Subject"), TxtSubject},
                                                         {QStringLiteral("Message"), TxtBody},
                                                         {QStringLiteral("Attach"), txtAttach}};
    for (const auto &[name, box] : boxes)
        if (name == sBox) {
            box->setFocus();
            m_target = box;
        }
}

bool frmSendMail::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::MouseButtonPress)
        m_target = qobject_cast<QWidget *>(watched);
    return QDialog::eventFilter(watched, event);
}

void frmSendMail::cmdSend_Click()
{
    const QString to = txtTo->text();
    const QString subject = TxtSubject->text();
    const bool sent = gfbMail_Send(subject, TxtBody->toPlainText(), to, TxtCC->text(), txtFrom->text(), txtAttach->text());
    const QString log = gfsDataPath_file(QStringLiteral("Email.log"));
    if (sent) {
        gpFile_append(log, {gfsMail_LogLine(Clock::now(), to, subject)});
        accept();
        return;
    }
    gpFile_append(log, {gfsMail_FailLine(Clock::now(), to, subject), gfsMail_ServerLine(gfMail_settings_read())});
    if (!gsMail_LastError.isEmpty())
        gfiMsgBox(gsMail_LastError, MsgButtons::OK, MsgIcon::Exclamation, QStringLiteral("Error sending Email"));
}

void frmSendMail::Command1_Click()
{
    QFileDialog dialog(this, QString(), QString(),
                       QStringLiteral("All Files (*)"));
    dialog.setNameFilters({QStringLiteral("All Files (*.*)"), QStringLiteral("Text Files (*.txt)"),
                           QStringLiteral("Batch Files (*.bat)")});
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (gfiForm_show_modal(dialog) != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    const QString file = dialog.selectedFiles().constFirst();
    txtAttach->setText(txtAttach->text().isEmpty() ? file : txtAttach->text() + QLatin1Char(',') + file);
}

void frmSendMail::CmdShowKB_Click()
{
    FraKeyBoard->setVisible(!FraKeyBoard->isVisible());
    CmdShowKB->setText(FraKeyBoard->isVisible() ? QStringLiteral("Hide Keyboard") : QStringLiteral("Show Keyboard"));
    if (m_target)
        m_target->setFocus();
}

void frmSendMail::cmdKeyPad_Click(const QString &key)
{
    if (auto *box = qobject_cast<QLineEdit *>(m_target))
        box->setText(box->text() + key);
    else if (auto *body = qobject_cast<QPlainTextEdit *>(m_target))
        body->setPlainText(body->toPlainText() + key);
}

void frmSendMail::mpKeys_case()
{
    for (QPushButton *key : cmdKeyPad)
        key->setText(optLower->isChecked() ? key->text().toLower() : key->text().toUpper());
}

} // namespace qln
