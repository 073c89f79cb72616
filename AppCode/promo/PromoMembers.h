#pragma once
#include "promo/PromoPricing.h"
#include "store/Inventory.h"

#include <QHash>
#include <QList>

// What the windows that list the items of one promo (a group's, a matrix's) share: the rows
// of one GroupID, the items those rows name, and the promo's shared values taken into a row.
namespace qln {

// The rows of one GroupID, tombstones and expired ones too, by SL. False when the server
// refused the query.
bool gfbMembers_rows_read(int iGroupID, QList<PromoPriceRecord> &rows);

// The items of the given RecordNums, a few hundred to a statement; a number not in the item
// file has no entry. The item buffer holds the last item read.
bool gfbMembers_items_read(const QList<qint32> &recordNums, QHash<qint32, InventoryRecord> &items);

// A member row takes the promo's dates, type and amount, and today as its ChangeDate.
void gpMember_shared_take(PromoPriceRecord &row, const PromoPriceRecord &shared);

} // namespace qln
