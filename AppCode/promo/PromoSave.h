#pragma once
#include "common/Money.h"

#include <QDate>

// The saves of the item and department promo editors, once their boxes have been read: the
// record buffer filled from what was typed and the keyed operations sent. Every station that
// saves a promo goes through here, with or without a window.
namespace qln {

struct PromoEntry {
    QDate start;
    QDate end;
    qint16 changeType = 0;
    Money amount;
};

// The row of an item promo for the item in gInventory: inserted, or the record set's current
// row updated. A failed operation leaves gsDBLastError or the record set's error.
bool gfbItemPromo_write(bool bAdd, const PromoEntry &entry);
// The item's promo flag set: "=" on its RecordNum, then an update. An item that isn't found
// is no failure; a refused update is.
bool gfbItemPromo_flag_set();
// How far a save got.
enum class PromoSaveEnd { Saved, RowRefused, FlagRefused };
// The whole item save: the row, then the flag. A refused flag leaves the row written.
PromoSaveEnd gfeItemPromo_save(bool bAdd, const PromoEntry &entry);
// Tells the user what a save that did not end Saved wrote and what it left undone, with the
// reason the database gave.
void gpPromoSave_tell(PromoSaveEnd end, bool bAdd);

// The row of a department promo for gDept's code, on key 3.
bool gfbDeptPromo_save(bool bAdd, const PromoEntry &entry);

} // namespace qln
