#include "platform/Clock.h"

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

} // namespace qln
