#include "promo/PromoList.h"

#include "common/Confirm.h"
#include "common/DateEntry.h"
#include "common/DateForms.h"
#include "common/NumberFormat.h"
#include "config/Country.h"
#include "platform/Recordset.h"
#include "store/Common.h"
#include "store/Database.h"
#include "store/FieldCodec.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"
#include "store/RowsDecode.h"

#include <array>
#include <limits>

namespace qln {

namespace {

// Long lists show a few dates many times over: each date's text is made once.
class DateTexts {
public:
    template <class Make>
    QString get(const QDate &date, const QString &form, Make make)
    {
        if (!date.isValid())
            return make();
        const qint64 day = date.toJulianDay();
        Seen &slot = m_seen[quint64(day) % m_seen.size()];
        if (slot.day != day || slot.form != form)
            slot = {day, form, make()};
        return slot.text;
    }

private:
    struct Seen {
        qint64 day = std::numeric_limits<qint64>::min();
        QString form;
        QString text;
    };
    std::array<Seen, 128> m_seen;
};

QString compactDate(const QDate &date)
{
    static thread_local DateTexts seen;
    return seen.get(date, QString(), [&] { return gfsDate_compact(date); });
}

} // namespace

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

QString gfsPromo_date_text(const QDateTime &date)
{
    static thread_local DateTexts seen;
    const QDate day = date.date();
    return seen.get(day, gCommon.USEurope, [&] { return gfsDate_short(day, gCommon.USEurope); });
}

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
    line.startKey = compactDate(promo.StartDate.date());
    line.endKey = compactDate(promo.EndDate.date());
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

PromoRows::~PromoRows()
{
    if (!m_rows)
        return;
    const int last = m_rows->recordCount() - 1;
    if (last >= 0 && m_lastRead != last)
        read(last);
    gPromo.UniqueID = m_uniqueID;
    // A walk of every row leaves the set past its last row.
    while (!m_rows->eof())
        m_rows->moveNext();
    dbaRecordset[kPromoTable] = std::move(m_rows);
}

bool PromoRows::open(const QString &sql, const std::function<bool()> &listed)
{
    gDBErr().clear();
    if (!gfbDB_RecordOp(kPromoTable, kOpBySQL, 0, false, false, sql) && gDBErr().isSet())
        return false;
    Recordset &set = *dbaRecordset[kPromoTable];
    int row = 0;
    for (set.moveFirst(); !set.eof(); set.moveNext(), ++row) {
        gpPromo_row_filter_read(kPromoTable);
        if (listed()) {
            m_listed.push_back(row);
            m_items.push_back(gPromo.Invuid);
        }
    }
    m_uniqueID = gPromo.UniqueID;
    // Events while the list fills may read the table: the rows wait outside it.
    m_rows = std::exchange(dbaRecordset[kPromoTable], std::make_unique<Recordset>());
    m_rows->moveFirst();
    return true;
}

int PromoRows::size() const { return m_rows ? m_rows->recordCount() : 0; }

void PromoRows::moveTo(int row)
{
    if (row < m_at) {
        m_rows->moveFirst();
        m_at = 0;
    }
    for (; m_at < row; ++m_at)
        m_rows->moveNext();
}

void PromoRows::read(int row)
{
    moveTo(row);
    gpDB_row_decode(kPromoTable, m_rows);
    m_lastRead = row;
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
