#include "common/DateForms.h"

namespace qln {

namespace {
bool dayFirst(const QString &usEurope) { return usEurope == QLatin1String("E"); }
} // namespace

QString gfsDate_compact(const QDate &date) { return date.toString(QStringLiteral("yyyyMMdd")); }

QString gfsDate_display(const QString &sDate, const QString &sForm)
{
    if (sDate.trimmed().isEmpty())
        return QStringLiteral("  ") + sDate;
    const QString month = sDate.mid(4, 2);
    const QString day = sDate.mid(6, 2);
    const QLatin1Char slash('/');
    return (dayFirst(sForm) ? day + slash + month : month + slash + day) + slash + sDate.left(4);
}

QString gfsDate_short(const QDate &date, const QString &usEurope)
{
    return date.toString(dayFirst(usEurope) ? QStringLiteral("dd/MM/yyyy") : QStringLiteral("MM/dd/yyyy"));
}

QString gfsDate_sql(const QDateTime &instant)
{
    return instant.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString gfsDate_key(const QDateTime &instant)
{
    return instant.toString(QStringLiteral("yyyyMMdd HH:mm:ss"));
}

} // namespace qln
