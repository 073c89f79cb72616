#include "platform/Clock.h"

#include <QFile>
#include <ctime>

namespace qln {
namespace {
QDateTime &fixedInstant()
{
    static QDateTime instant;
    return instant;
}
} // namespace

QDateTime Clock::now()
{
    const QDateTime &fixed = fixedInstant();
    return fixed.isValid() ? fixed : QDateTime::currentDateTime();
}

void Clock::setFixed(const QDateTime &instant) { fixedInstant() = instant; }

void Clock::advanceDays(int days)
{
    fixedInstant() = now().addDays(days);
}

void gpLocalTime_pin()
{
    if (!qEnvironmentVariableIsSet("TZ") && QFile::exists(QStringLiteral("/etc/localtime"))) {
        qputenv("TZ", ":/etc/localtime");
        tzset();
    }
}

} // namespace qln
