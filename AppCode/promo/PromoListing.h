#pragma once
#include "promo/PromoKind.h"
#include "promo/PromoPricing.h"

#include <QDate>
#include <QList>
#include <functional>
#include <optional>

// The promo table as one list across the five kinds, with the promo price of each row where
// one applies. Tombstones are not listed.
namespace qln {

struct PromoListFilter {
    std::optional<PromoKind> kind;
    std::optional<QDate> on; // running on that day, ended or not
    bool expired = false;    // without `on`: those that ended before today too
};

struct PromoListRow {
    PromoPriceRecord promo;
    PromoKind kind = PromoKind::Item;
    // A row on an item: its price from the item's regular price; a "To" row of any kind: its
    // amount; otherwise none (a percentage of a whole department has no one price).
    std::optional<Money> promoPrice;
};

// The rows in start-date order, then by row number. `progress` hears (rows done, rows in all)
// while the items' prices are read. False when the server refused a read.
bool gfbPromoListing_read(const PromoListFilter &filter, QList<PromoListRow> &rows,
                          const std::function<void(qsizetype, qsizetype)> &progress = {});

// The same rows handed to `each` one at a time, in the same order, none of them kept: a long
// list goes out as it is made.
bool gfbPromoListing_each(const PromoListFilter &filter, const std::function<void(const PromoListRow &)> &each,
                          const std::function<void(qsizetype, qsizetype)> &progress = {});

} // namespace qln
