#include "promo/PromoListing.h"

#include "platform/Clock.h"
#include "promo/PromoItems.h"
#include "promo/PromoList.h"

namespace qln {

namespace {

QString whereOf(const PromoListFilter &filter)
{
    QString where = QStringLiteral(" WHERE ChangeType<>99");
    if (filter.on)
        where += QStringLiteral(" AND StartDate<='") + gfsDate_server_text(*filter.on) + QStringLiteral("' AND EndDate>='") +
                 gfsDate_server_text(*filter.on) + QLatin1Char('\'');
    else if (!filter.expired)
        where += QStringLiteral(" AND EndDate>='") + gfsDate_server_text(Clock::today()) + QLatin1Char('\'');
    return where;
}

} // namespace

bool gfbPromoListing_read(const PromoListFilter &filter, QList<PromoListRow> &rows,
                          const std::function<void(qsizetype, qsizetype)> &progress)
{
    rows.clear();
    QList<PromoPriceRecord> read;
    if (!gfbPromo_rows_read(QStringLiteral("SELECT * FROM PromoPrices") + whereOf(filter) +
                                QStringLiteral(" ORDER BY StartDate, UniqueID"),
                            read))
        return false;
    std::vector<qint32> invuids;
    for (const PromoPriceRecord &promo : std::as_const(read)) {
        const std::optional<PromoKind> kind = gfePromo_kind(promo);
        if (!kind || (filter.kind && *kind != *filter.kind))
            continue;
        rows << PromoListRow{promo, *kind, std::nullopt};
        if (promo.Invuid > 0 && promo.ChangeType != kChangeTo)
            invuids.push_back(promo.Invuid);
    }
    PromoItems items(invuids);
    const qsizetype total = rows.size();
    for (qsizetype i = 0; i < total; ++i) {
        PromoListRow &row = rows[i];
        if (row.promo.ChangeType == kChangeTo)
            row.promoPrice = row.promo.PriceChange;
        else if (row.promo.Invuid > 0 && items.next())
            row.promoPrice = gfcPromo_price_get(gInventory.Price, row.promo);
        if (progress)
            progress(i + 1, total);
    }
    return true;
}

} // namespace qln
