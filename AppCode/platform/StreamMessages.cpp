#include "platform/StreamMessages.h"

namespace qln {

QString gfsMsgAnswer_text(MsgAnswer answer)
{
    switch (answer) {
    case MsgAnswer::OK: return QStringLiteral("OK");
    case MsgAnswer::Cancel: return QStringLiteral("Cancel");
    case MsgAnswer::Abort: return QStringLiteral("Abort");
    case MsgAnswer::Retry: return QStringLiteral("Retry");
    case MsgAnswer::Ignore: return QStringLiteral("Ignore");
    case MsgAnswer::Yes: return QStringLiteral("Yes");
    case MsgAnswer::No: return QStringLiteral("No");
    }
    return QString();
}

MsgAnswer StreamMessages::show(const MessageBoxSpec &box)
{
    // The texts carry the platform's carriage returns; a terminal wants line feeds.
    QString text = box.text.trimmed();
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    const MsgAnswer answer = defaultAnswer(box);
    const QString title = box.title.trimmed().isEmpty() ? QString() : box.title.trimmed() + QStringLiteral(": ");
    const QString line = title + text + QStringLiteral(" [") + gfsMsgAnswer_text(answer) + QStringLiteral("]\n");
    std::fputs(line.toUtf8().constData(), m_stream);
    std::fflush(m_stream);
    return answer;
}

} // namespace qln
