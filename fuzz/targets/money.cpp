#include "FuzzTarget.h"

#include "common/Money.h"
#include "common/NumberFormat.h"
#include "common/Numbers.h"

// An amount typed into a box or read from a file: what parses must write back as text that
// parses to the same amount.
QLN_FUZZ_TARGET(money)
{
    using namespace qln;
    const QString typed = QString::fromUtf8(fuzz::bytes(data, size));
    gfdNumber_value(typed);
    const std::optional<Money> amount = Money::parse(typed);
    if (!amount)
        return 0;
    const std::optional<Money> again = Money::parse(amount->toPlainText(4));
    fuzz::require(again && *again == *amount, "an amount's text parses to the same amount");
    amount->toText(2);
    gfsNumber_format(*amount, QStringLiteral("#,##0.00"));
    gfsNumber_format(*amount, QStringLiteral("0.0000"));
    return 0;
}
