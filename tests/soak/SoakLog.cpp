#include "SoakLog.h"

#include <QStringList>

namespace qln::soak {

QString gfsSoak_line(const LogLine &line)
{
    QString message = line.message;
    message.replace(QLatin1Char('\t'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\r'), QLatin1Char(' '));
    return QStringList{line.op, line.outcome, QString::number(line.uid), line.key, line.start.toString(Qt::ISODate),
                       line.end.toString(Qt::ISODate), QString::number(line.changeType), line.amount.toPlainText(4), message}
        .join(QLatin1Char('\t'));
}

std::optional<LogLine> gfSoak_line_parse(const QString &text)
{
    const QStringList f = text.split(QLatin1Char('\t'));
    if (f.size() != 9)
        return std::nullopt;
    LogLine line;
    line.op = f[0];
    line.outcome = f[1];
    line.uid = f[2].toInt();
    line.key = f[3];
    line.start = QDate::fromString(f[4], Qt::ISODate);
    line.end = QDate::fromString(f[5], Qt::ISODate);
    line.changeType = qint16(f[6].toInt());
    line.amount = Money::parse(f[7]).value_or(Money());
    line.message = f[8];
    return line;
}

} // namespace qln::soak
