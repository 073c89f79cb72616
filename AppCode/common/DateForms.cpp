#include "common/DateForms.h"

namespace qln {

namespace {

bool dayFirst(const QString &usEurope) { return usEurope == QLatin1String("E"); }

// The numeric forms ("yyyy", "MM", "dd", "HH", "mm", "ss" and separators) written by hand:
// Qt's formatter consults the calendar and the locale for every date, and lists show
// hundreds of thousands. Qt's answer where the year needs more than four digits.
QString numericForm(const QDate &date, const QTime &time, QLatin1StringView form)
{
    if (!date.isValid() || date.year() < 0 || date.year() > 9999)
        return QDateTime(date, time).toString(form);
    QString out(form.size(), Qt::Uninitialized);
    QChar *o = out.data();
    auto put = [&](qsizetype at, int value, int digits) {
        for (qsizetype i = at + digits - 1; i >= at; --i, value /= 10)
            o[i] = QLatin1Char(char('0' + value % 10));
    };
    for (qsizetype i = 0; i < form.size();) {
        const QLatin1StringView rest = form.sliced(i);
        if (rest.startsWith(QLatin1StringView("yyyy")))
            put(i, date.year(), 4), i += 4;
        else if (rest.startsWith(QLatin1StringView("MM")))
            put(i, date.month(), 2), i += 2;
        else if (rest.startsWith(QLatin1StringView("dd")))
            put(i, date.day(), 2), i += 2;
        else if (rest.startsWith(QLatin1StringView("HH")))
            put(i, time.hour(), 2), i += 2;
        else if (rest.startsWith(QLatin1StringView("mm")))
            put(i, time.minute(), 2), i += 2;
        else if (rest.startsWith(QLatin1StringView("ss")))
            put(i, time.second(), 2), i += 2;
        else
            o[i] = form[i], ++i;
    }
    return out;
}

} // namespace

QString gfsDate_compact(const QDate &date) { return numericForm(date, QTime(0, 0), QLatin1StringView("yyyyMMdd")); }

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
    return numericForm(date, QTime(0, 0), dayFirst(usEurope) ? QLatin1StringView("dd/MM/yyyy") : QLatin1StringView("MM/dd/yyyy"));
}

QString gfsDate_sql(const QDateTime &instant)
{
    return instant.isValid() ? numericForm(instant.date(), instant.time(), QLatin1StringView("yyyy-MM-dd HH:mm:ss")) : QString();
}

QString gfsDate_key(const QDateTime &instant)
{
    return instant.isValid() ? numericForm(instant.date(), instant.time(), QLatin1StringView("yyyyMMdd HH:mm:ss")) : QString();
}

} // namespace qln
