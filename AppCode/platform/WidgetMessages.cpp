#include "platform/WidgetMessages.h"

#include <QApplication>
#include <QMessageBox>

namespace qln {
namespace {

QMessageBox::Icon qtIcon(MsgIcon icon)
{
    switch (icon) {
    case MsgIcon::Critical: return QMessageBox::Critical;
    case MsgIcon::Question: return QMessageBox::Question;
    case MsgIcon::Exclamation: return QMessageBox::Warning;
    case MsgIcon::Information: return QMessageBox::Information;
    case MsgIcon::None: break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons qtButtons(MsgButtons buttons)
{
    switch (buttons) {
    case MsgButtons::OK: return QMessageBox::Ok;
    case MsgButtons::OKCancel: return QMessageBox::Ok | QMessageBox::Cancel;
    case MsgButtons::AbortRetryIgnore: return QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore;
    case MsgButtons::YesNoCancel: return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MsgButtons::YesNo: return QMessageBox::Yes | QMessageBox::No;
    case MsgButtons::RetryCancel: return QMessageBox::Retry | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

constexpr std::pair<MsgAnswer, QMessageBox::StandardButton> kAnswers[] = {
    {MsgAnswer::OK, QMessageBox::Ok},         {MsgAnswer::Cancel, QMessageBox::Cancel},
    {MsgAnswer::Abort, QMessageBox::Abort},   {MsgAnswer::Retry, QMessageBox::Retry},
    {MsgAnswer::Ignore, QMessageBox::Ignore}, {MsgAnswer::Yes, QMessageBox::Yes},
    {MsgAnswer::No, QMessageBox::No},
};

QMessageBox::StandardButton qtButton(MsgAnswer answer)
{
    for (const auto &[a, button] : kAnswers)
        if (a == answer)
            return button;
    return QMessageBox::NoButton;
}

// The texts carry the platform's carriage returns; a label wants line feeds.
QString plainLines(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

} // namespace

MsgAnswer WidgetMessages::show(const MessageBoxSpec &box)
{
    const QString title = box.title.isEmpty() ? QGuiApplication::applicationDisplayName() : box.title;
    QMessageBox dialog(qtIcon(box.icon), title, plainLines(box.text), qtButtons(box.buttons),
                       QApplication::activeWindow());
    dialog.setTextFormat(Qt::PlainText);
    const MsgAnswer fallback = defaultAnswer(box);
    dialog.setDefaultButton(qtButton(fallback));
    dialog.exec();
    const QMessageBox::StandardButton pressed = dialog.standardButton(dialog.clickedButton());
    for (const auto &[answer, button] : kAnswers)
        if (button == pressed)
            return answer;
    return fallback;
}

void installWidgetMessages()
{
    static WidgetMessages service;
    installMessages(&service);
}

} // namespace qln
