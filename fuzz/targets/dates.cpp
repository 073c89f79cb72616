#include "FuzzTarget.h"

#include "common/DateEntry.h"

// A date typed into a box, read in both orders; a date read must read again as itself once
// written back the way the box shows it.
QLN_FUZZ_TARGET(dates)
{
    using namespace qln;
    const QString typed = QString::fromUtf8(fuzz::bytes(data, size));
    for (const QString &order : {QStringLiteral("U"), QStringLiteral("E")}) {
        const std::optional<QDate> date = gfdDate_typed(typed, order);
        if (!date)
            continue;
        fuzz::require(date->isValid(), "a date read is a valid date");
        const QString retyped = gfsDate_retyped(*date, order);
        const std::optional<QDate> again = gfdDate_typed(retyped, order);
        fuzz::require(again.has_value(), "a retyped date reads again");
    }
    return 0;
}
