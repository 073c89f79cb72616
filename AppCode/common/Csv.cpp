#include "common/Csv.h"

namespace qln {

QString gfsCsv_field(const QString &text)
{
    const bool quoted = text.contains(QLatin1Char(',')) || text.contains(QLatin1Char('"')) ||
                        text.contains(QLatin1Char('\n')) || text.contains(QLatin1Char('\r'));
    if (!quoted)
        return text;
    QString field = text;
    field.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + field + QLatin1Char('"');
}

QString gfsCsv_line(const QStringList &fields)
{
    QString line;
    for (qsizetype i = 0; i < fields.size(); ++i) {
        if (i > 0)
            line += QLatin1Char(',');
        line += gfsCsv_field(fields[i]);
    }
    return line + QLatin1String("\r\n");
}

} // namespace qln
