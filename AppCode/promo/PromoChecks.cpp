#include "promo/PromoChecks.h"

#include "promo/PromoList.h"

namespace qln {

std::optional<PromoEditorFault> gfPromoEditor_reversed_fault(const QDate &start, const QDate &end)
{
    if (gflDate_YYYYYMMDD(end) >= gflDate_YYYYMMDD(start))
        return std::nullopt;
    return PromoEditorFault{QStringLiteral("Promo Dates Are Reversed"),
                            QStringLiteral("The promo's starting date must be before the promo's ending date.")};
}

std::optional<PromoEditorFault> gfPromoEditor_daily_percent_fault(const Money &percent)
{
    if (percent > Money() && percent < Money::fromWhole(100))
        return std::nullopt;
    return PromoEditorFault{QLatin1Char('\'') + percent.toPlainText() + QStringLiteral("%' Is Not a Daily Promo Percentage"),
                            QStringLiteral("A daily promo takes more than 0% and less than 100% off every discountable item.")};
}

std::optional<PromoEditorFault> gfPromoEditor_price_fault(const Money &listPrice, const Money &promoShown)
{
    const QString invalid = QStringLiteral("' Promo Price ' Is Not Valid");
    if (listPrice < promoShown)
        return PromoEditorFault{invalid, QStringLiteral("The 'Promo Price ' is higher than the regular price.")};
    if (promoShown <= Money())
        return PromoEditorFault{invalid, QStringLiteral("The 'Promo Price ' must be greater than zero.")};
    return std::nullopt;
}

} // namespace qln
