#include "promo/GroupMembers.h"

#include "common/NumberFormat.h"
#include "platform/Clock.h"
#include "platform/Messages.h"
#include "promo/PromoGroups.h"
#include "promo/PromoList.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"

namespace qln {

bool gfbGroupMembers_read(int iGroupID, QList<PromoPriceRecord> &rows)
{
    return gfbPromo_rows_read(gfsGroup_rows_sql(iGroupID), rows);
}

QStringList gfGroupMember_cells(const PromoPriceRecord &row, const InventoryRecord &item, const QString &sDescription,
                                QString &sPromoPrice, const GroupMemberWording &wording)
{
    const QString money = QStringLiteral("#.00");
    QStringList cells(8);
    cells[0] = item.SL.left(8);
    cells[1] = sDescription;
    cells[2] = item.Price.toPlainText();
    const bool known = row.ChangeType == kChangeTo || row.ChangeType == kChangeBy || row.ChangeType == kChangeByPercent;
    if (known) {
        if (const std::optional<Money> price = gfcPromo_price_get(item.Price, row))
            sPromoPrice = gfsNumber_format(*price, money);
        cells[6] = gfsPromo_type_text(row.ChangeType);
        if (row.ChangeType != kChangeTo || wording.bToAmount)
            cells[7] = gfsPromo_amount_text(row, true);
    }
    cells[3] = sPromoPrice;
    cells[4] = gfsPromo_date_text(row.StartDate);
    cells[5] = row.ChangeType == kChangeDeleted && !wording.sDeletedEnd.isEmpty() ? wording.sDeletedEnd
                                                                                   : gfsPromo_date_text(row.EndDate);
    return cells;
}

void gpGroupPromo_values_apply(PromoPriceRecord &row)
{
    row.ChangeDate = QDateTime(Clock::today(), QTime(0, 0));
    row.ChangeType = gGroupPromo.ChangeType;
    row.StartDate = gGroupPromo.StartDate;
    row.EndDate = gGroupPromo.EndDate;
    row.PriceChange = gGroupPromo.PriceChange;
}

bool gfbGroupMember_update(int iKey)
{
    if (gfbDB_RecordOp(kPromoTable, kOpUpdate, iKey))
        return true;
    gfiMsgBox(QStringLiteral("record not updated"));
    return false;
}

} // namespace qln
