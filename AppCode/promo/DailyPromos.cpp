#include "promo/DailyPromos.h"

#include "promo/PromoList.h"
#include "store/RecordOps.h"

namespace qln {

namespace {

// The walk steps on by a strictly greater key: a row whose key does not rise above the one
// before it in the same group is stepped over (two rows on one key, or one after a missing
// end date).
bool mfbWalk_steps_onto(const PromoPriceRecord &previous, const PromoPriceRecord &row)
{
    if (row.GroupID != previous.GroupID)
        return true;
    return previous.EndDate.isValid() && row.EndDate.isValid() && row.EndDate > previous.EndDate;
}

} // namespace

bool gfbDailyPromos_read(QList<PromoPriceRecord> &rows)
{
    rows.clear();
    // The first row of the key decides: a group number of 0 (or none) ends the walk at once.
    if (!gfbDB_RecordOp(kPromoTable, kOpGetFirst, kPromoByGroupEnd) || gPromo.GroupID == 0)
        return true;
    // One read for the whole walk: the daily rows, and the groups behind them when no row of
    // GroupID 0 would stop it.
    QList<PromoPriceRecord> read;
    if (!gfbPromo_rows_read(QStringLiteral("SELECT * FROM PromoPrices WHERE GroupID < 0 OR NOT EXISTS "
                                           "(SELECT * FROM PromoPrices WHERE GroupID = 0) ORDER BY GroupID,EndDate"),
                            read))
        return false;
    for (const PromoPriceRecord &row : std::as_const(read))
        if (rows.isEmpty() || mfbWalk_steps_onto(rows.last(), row))
            rows << row;
    return true;
}

bool gfbDailyPromos_listed_at_load(const QDate &today)
{
    return gfbDB_RecordOp(kPromoTable, kOpGetFirst, kPromoByGroupEnd) && gPromo.GroupID < 0 &&
           gPromo.EndDate.date() >= today;
}

std::optional<qint32> gfiDailyPromo_GroupID_next()
{
    if (!gfbDB_RecordOp(kPromoTable, kOpGetFirst, kPromoByGroupEnd) || gPromo.GroupID >= 0)
        return -1;
    if (gPromo.GroupID <= kDailyGroupID_lowest)
        return std::nullopt;
    return gPromo.GroupID - 1;
}

QStringList gfDailyPromo_cells(const PromoPriceRecord &promo)
{
    return {gfsPromo_date_text(promo.StartDate), gfsPromo_date_text(promo.EndDate), gfsPromo_type_text(promo.ChangeType),
            promo.PriceChange.toPlainText() + QLatin1Char('%'), QString::number(promo.GroupID)};
}

QString gfsDailyPromo_delete_sql(const QDate &end, qint32 groupId)
{
    // The system's short date; the server reads it month first.
    return QStringLiteral("DELETE FROM PromoPrices WHERE enddate = '") + end.toString(QStringLiteral("M/d/yyyy")) +
           QStringLiteral("' AND groupid =") + QString::number(groupId);
}

} // namespace qln
