#pragma once
#include "promo/PromoKind.h"
#include "promo/PromoPricing.h"

#include <QDate>
#include <QList>
#include <QString>
#include <optional>

// Why an item rings up at its price on a day: every promo that reaches it, the price each gives
// by the program's own arithmetic, and the lowest, the "best deal" the till applies. What a
// "why this price" window would show; nothing here prints.
namespace qln {

struct PromoPriceGiven {
    PromoPriceRecord promo;
    PromoKind kind = PromoKind::Item;
    std::optional<Money> price; // none for a type the arithmetic does not know
};

struct PriceExplanation {
    QString SL; // key form
    QString description;
    QString dept;
    Money regularPrice;
    bool discountable = true; // AllowDiscounts is not "N"
    QDate day;
    QList<PromoPriceGiven> promos; // in the order of gpPromo_reach_sort
    // The promo whose price is lowest, the first of equals; none when no promo gives a price or
    // the item takes no discount, and then the regular price stands.
    std::optional<qsizetype> best;

    Money price() const { return best ? *promos[*best].price : regularPrice; }
};

// An item number as a user types it, "1234567.8" or the key "12345678", in key form; none for
// a text that cannot be one.
std::optional<QString> gfsExplain_SL_key(const QString &text);

enum class ExplainEnd { Explained, UnknownItem, ReadRefused };
// The explanation for the item with key `sl` on `day`.
ExplainEnd gfePrice_explain(const QString &sl, const QDate &day, PriceExplanation &explanation);

} // namespace qln
