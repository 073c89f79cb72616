#include "store/SafeDialog.h"

#include "common/FormControls.h"
#include "common/FormLook.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace qln {

SafeDialog::SafeDialog(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("SafeDialog"));
    setWindowTitle(QStringLiteral("Network Error"));
    auto *layout = new QVBoxLayout(this);
    for (const char *line : {"Server not found. Check server and network connections. ", "Make Sales in LOCAL mode? ",
                             "Operations that require the network, such as credit cards, will not be available"})
        layout->addWidget(new QLabel(QString::fromLatin1(line), this));
    auto *buttons = new QHBoxLayout;
    CmdRetry = gfCommand_button(this, QStringLiteral("CmdRetry"), QStringLiteral("&Retry"));
    CmdLocal = gfCommand_button(this, QStringLiteral("CmdLocal"), QStringLiteral("&Local"));
    cmdExit = gfCommand_button(this, QStringLiteral("cmdExit"), QStringLiteral("E&xit"));
    for (auto [button, letter] : {std::pair{CmdRetry, "R"}, std::pair{CmdLocal, "L"}, std::pair{cmdExit, "X"}}) {
        buttons->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, letter] { mpAnswer(QString::fromLatin1(letter)); });
    }
    layout->addLayout(buttons);
    gpFont_normalise(this);
}

void SafeDialog::mpAnswer(const QString &letter)
{
    sAnswer = letter;
    hide();
    done(QDialog::Accepted);
}

void SafeDialog::keyPressEvent(QKeyEvent *event)
{
    const QString letter = event->text().toUpper();
    if (letter == QLatin1String("R") || letter == QLatin1String("L") || letter == QLatin1String("X"))
        mpAnswer(letter);
    else
        QDialog::keyPressEvent(event);
}

} // namespace qln
