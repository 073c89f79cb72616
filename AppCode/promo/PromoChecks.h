#pragma once
#include "common/Money.h"

#include <QDate>
#include <QString>
#include <optional>

// The checks of the promo editors that need no window, so that every way of adding a promo
// refuses the same values with the same words.
namespace qln {

// A check of the editors that failed: the two lines of its message.
struct PromoEditorFault {
    QString headline;
    QString detail;
};

// Dates in the wrong order. The ending date is compared through the platform's "YYYYYMMDD",
// which always reads as the larger number: reversed dates pass, as they always have.
std::optional<PromoEditorFault> gfPromoEditor_reversed_fault(const QDate &start, const QDate &end);

// The percentage of a daily promo: more than 0 and less than 100, since it applies to every
// discountable item of the store at once.
std::optional<PromoEditorFault> gfPromoEditor_daily_percent_fault(const Money &percent);

// An item's promo price as the editor shows it ("##.00") against its list price: not above
// it, and above zero.
std::optional<PromoEditorFault> gfPromoEditor_price_fault(const Money &listPrice, const Money &promoShown);

} // namespace qln
