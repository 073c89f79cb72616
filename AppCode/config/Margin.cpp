#include "config/Margin.h"

#include "common/NumberFormat.h"

namespace qln {

std::optional<float> gfnMargin_get(Money price, Money cost)
{
    if (price <= Money())
        return std::nullopt;
    return float((price - cost).toDouble() / price.toDouble() * 100.0);
}

std::optional<QString> gfsMargin_text_get(Money price, Money cost)
{
    const std::optional<float> margin = gfnMargin_get(price, cost);
    if (!margin)
        return std::nullopt;
    return gfsNumber_format(double(*margin), QStringLiteral("##0.0")) + QLatin1Char('%');
}

} // namespace qln
