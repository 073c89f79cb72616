#pragma once
#include "promo/PromoPricing.h"

#include <QList>
#include <QString>
#include <QStringList>

// What the windows that list the member items of one GroupID share (group and matrix promos):
// the rows of the group, the cells of a member's line, and the change of every member to the
// values of gGroupPromo.
namespace qln {

struct InventoryRecord;

// The rows of one GroupID, tombstones and expired ones too, in SL order. False when the
// server refused the query.
bool gfbGroupMembers_read(int iGroupID, QList<PromoPriceRecord> &rows);

// How a window words a member's line.
struct GroupMemberWording {
    bool bToAmount = true;   // "To" shows its amount in the last column
    QString sDeletedEnd;     // the end column of a tombstone; empty: its end date
};

// The eight cells of a member's line: S/L, description, regular price, promo price, start,
// end, kind of change, amount. A tombstone, or a kind the lists don't know, shows no kind nor
// amount and repeats sPromoPrice, the promo price of the line before, which each line updates.
QStringList gfGroupMember_cells(const PromoPriceRecord &row, const InventoryRecord &item, const QString &sDescription,
                                QString &sPromoPrice, const GroupMemberWording &wording = {});

// The shared values of gGroupPromo (dates, kind and amount) put into a member's row, dated
// today.
void gpGroupPromo_values_apply(PromoPriceRecord &row);
// "Update" of gPromo on the key; a refusal is told with "record not updated".
bool gfbGroupMember_update(int iKey);

} // namespace qln
