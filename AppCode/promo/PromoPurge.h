#pragma once
#include "promo/PromoPricing.h"

#include <QString>
#include <functional>

// The purges of expired item promos. Without polling expired rows go at once; with polling
// live rows are meant to become tombstones for the stores, and tombstones that have been
// polled go.
namespace qln {

enum class PurgeEnd {
    NotConfirmed,  // the user said no: nothing was read
    NothingFound,  // no expired row
    Done,
    StoreModeStopped, // by-item purge with expired rows and no polling answer: nothing touched
};

// A row put into the buffer as a tombstone, and the statement meant to mark it so sent; the
// server refuses that statement, so the row stays as it was and the log shows the text.
void gpPromo_tombstone_request(const PromoPriceRecord &row, bool bSpacedWhere);

// F6: the expired promos of one item (its SL as the key holds it).
PurgeEnd gfePromo_item_purge(const QString &sSL);
// F7: the expired promos and tombstones of all items. onConfirmed runs once the user said yes.
PurgeEnd gfePromo_all_purge(const std::function<void()> &onConfirmed);

} // namespace qln
