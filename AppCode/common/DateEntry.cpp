#include "common/DateEntry.h"

#include "platform/Clock.h"

#include <QRegularExpression>

namespace qln {

namespace {

bool dayFirst(const QString &usEurope) { return usEurope == QLatin1String("E"); }

std::optional<int> number(const QString &part)
{
    bool ok = false;
    const int value = part.toInt(&ok);
    return ok && value >= 0 ? std::optional<int>(value) : std::nullopt;
}

int fullYear(const QString &part, int value)
{
    if (part.size() > 2)
        return value;
    return value < 30 ? 2000 + value : 1900 + value;
}

std::optional<QDate> validDate(int year, int month, int day)
{
    const QDate date(year, month, day);
    return date.isValid() ? std::optional<QDate>(date) : std::nullopt;
}

} // namespace

std::optional<QDate> gfdDate_typed(const QString &text, const QString &usEurope)
{
    static const QRegularExpression separators(QStringLiteral("[/\\-. ]+"));
    const QStringList parts = text.trimmed().split(separators);
    if (parts.size() < 2 || parts.size() > 3)
        return std::nullopt;
    QList<int> values;
    for (const QString &part : parts) {
        const std::optional<int> value = number(part);
        if (!value || part.size() > 4)
            return std::nullopt;
        values << *value;
    }
    if (parts.size() == 3 && parts[0].size() > 2)
        return validDate(values[0], values[1], values[2]);
    if (parts.size() == 3 && parts[1].size() > 2)
        return std::nullopt;
    const int year = parts.size() == 3 ? fullYear(parts[2], values[2]) : Clock::today().year();
    const int month = dayFirst(usEurope) ? values[1] : values[0];
    const int day = dayFirst(usEurope) ? values[0] : values[1];
    if (const auto date = validDate(year, month, day))
        return date;
    return validDate(year, day, month);
}

QString gfsDate_retyped(const QDate &date, const QString &usEurope)
{
    return date.toString(dayFirst(usEurope) ? QStringLiteral("dd-MM-yy") : QStringLiteral("MM-dd-yyyy"));
}

} // namespace qln
