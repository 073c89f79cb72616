#include "common/Csv.h"

namespace qln {

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
