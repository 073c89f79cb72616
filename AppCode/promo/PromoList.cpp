#include "promo/PromoList.h"

#include "common/Confirm.h"
#include "common/DateEntry.h"
#include "common/DateForms.h"
#include "common/NumberFormat.h"
#include "config/Country.h"
#include "store/Common.h"
#include "store/Database.h"
#include "store/FieldCodec.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"

namespace qln {

QString gfsPromo_type_text(int changeType)
{
    switch (changeType) {
    case kChangeTo: return QStringLiteral("To");
    case kChangeBy: return QStringLiteral("By");
    case kChangeByPercent: return QStringLiteral("By Percent");
    default: return QString();
    }
}

QString gfsPromo_amount_text(const PromoPriceRecord &promo, bool bPercentForm)
{
    if (bPercentForm && promo.ChangeType == kChangeByPercent)
        return gfsNumber_format(promo.PriceChange, QStringLiteral("#.00")) + QLatin1Char('%');
    return gfsNumber_format(promo.PriceChange, QStringLiteral("#.00"));
}

QString gfsPromo_date_text(const QDateTime &date) { return gfsDate_short(date.date(), gCommon.USEurope); }

PromoGridLine gfPromo_grid_line(const PromoPriceRecord &promo, Money regularPrice, const QString &previousPromoPrice,
                                bool bPercentForm)
{
    const QString money = QStringLiteral("#.00");
    PromoGridLine line;
    line.regularPrice = gfsNumber_format(regularPrice, money);
    const std::optional<Money> price = gfcPromo_price_get(regularPrice, promo);
    line.promoPrice = price ? gfsNumber_format(*price, money) : previousPromoPrice;
    line.start = gfsPromo_date_text(promo.StartDate);
    line.end = promo.ChangeType == kChangeDeleted ? QStringLiteral("DELETED") : gfsPromo_date_text(promo.EndDate);
    line.type = gfsPromo_type_text(promo.ChangeType);
    line.amount = gfsPromo_amount_text(promo, bPercentForm);
    line.startKey = gfsDate_compact(promo.StartDate.date());
    line.endKey = gfsDate_compact(promo.EndDate.date());
    return line;
}

Money gfcItem_list_price() { return gbIncludeTax ? gInventory.PriceIncTax : gInventory.Price; }

bool gfbPromo_delete_confirm()
{
    return gfbConfirm(QStringLiteral("Are you sure you want to delete?"), QStringLiteral("Ready To Delete"));
}

QString gfsDate_server_text(const QDate &date) { return gfsDate_sql(QDateTime(date, QTime(0, 0))); }

std::optional<QDate> gfdDate_parse(const QString &text) { return gfdDate_typed(text, gCommon.USEurope); }

QString gfsDate_pattern_text(const QString &text)
{
    const std::optional<QDate> date = gfdDate_parse(text);
    return date ? gfsDate_compact(*date) : text;
}

qint64 gflDate_YYYYMMDD(const QDate &date) { return gfsDate_compact(date).toLongLong(); }

qint64 gflDate_YYYYYMMDD(const QDate &date)
{
    return (QString::number(date.year()) + QString::number(date.dayOfYear()) + date.toString(QStringLiteral("MMdd"))).toLongLong();
}

bool gfbPromo_rows_read(const QString &sql, QList<PromoPriceRecord> &rows)
{
    rows.clear();
    gDBErr().clear();
    if (!gfbDB_RecordOp(kPromoTable, kOpBySQL, 0, false, false, sql))
        return !gDBErr().isSet();
    Recordset &set = *dbaRecordset[kPromoTable];
    rows.reserve(set.recordCount());
    for (set.moveFirst(); !set.eof(); set.moveNext()) {
        gpDB_table_row_to_record(kPromoTable);
        rows << gPromo;
    }
    return true;
}

// "Get Next" is strict on the whole key, so a walk on (SL, StartDate) never reaches the second
// promo of an item at one date; the rows at that date are read together instead.
bool gfbPromo_same_start_find(const QString &sl, const QDateTime &start, const std::function<bool()> &wanted)
{
    const QString sql = QStringLiteral("SELECT * FROM PromoPrices WHERE SL='") + gfsDB_Quote(sl, true, 0) +
                        QStringLiteral("' AND StartDate='") + gfsDate_keyText(start) + QLatin1Char('\'');
    if (!gfbDB_RecordOp(kPromoTable, kOpBySQL, 2, false, false, sql))
        return false;
    Recordset &set = *dbaRecordset[kPromoTable];
    for (set.moveFirst(); !set.eof(); set.moveNext()) {
        gpDB_table_row_to_record(kPromoTable);
        if (wanted())
            return true;
    }
    return false;
}

QString gfsPromo_tombstone_sql(const QString &sNow, qint32 invuid, bool bSpacedWhere)
{
    return QStringLiteral("UPDATE & dbuaTable(itable).sSqlFile & set changetype =99, changeDate = ") + sNow +
           (bSpacedWhere ? QStringLiteral(",poll='Y'  WHERE invuid = ") : QStringLiteral(",poll='Y' WHERE invuid = ")) +
           QString::number(invuid);
}

QString gfsPromo_item_delete_sql(qint32 invuid)
{
    return QStringLiteral("Delete from PromoPrices WHERE invuid = ") + QString::number(invuid);
}

} // namespace qln
