#include "promo/PromoListing.h"

#include "platform/Clock.h"
#include "promo/PromoItems.h"
#include "promo/PromoList.h"

#include <algorithm>

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

bool gfbPromoListing_each(const PromoListFilter &filter, const std::function<void(const PromoListRow &)> &each,
                          const std::function<void(qsizetype, qsizetype)> &progress)
{
    QList<PromoPriceRecord> read;
    if (!gfbPromo_rows_read(QStringLiteral("SELECT * FROM PromoPrices") + whereOf(filter) +
                                QStringLiteral(" ORDER BY StartDate, UniqueID"),
                            read))
        return false;
    std::vector<std::optional<PromoKind>> kinds; // none: not listed
    kinds.reserve(size_t(read.size()));
    std::vector<qint32> invuids;
    for (const PromoPriceRecord &promo : std::as_const(read)) {
        std::optional<PromoKind> kind = gfePromo_kind(promo);
        if (kind && filter.kind && *kind != *filter.kind)
            kind.reset();
        kinds.push_back(kind);
        if (kind && promo.Invuid > 0 && promo.ChangeType != kChangeTo)
            invuids.push_back(promo.Invuid);
    }
    const qsizetype total = std::count_if(kinds.cbegin(), kinds.cend(), [](const auto &k) { return k.has_value(); });
    PromoItems items(invuids);
    PromoListRow row;
    qsizetype done = 0;
    for (qsizetype i = 0; i < read.size(); ++i) {
        if (!kinds[size_t(i)])
            continue;
        row.promo = read[i];
        row.kind = *kinds[size_t(i)];
        row.promoPrice.reset();
        if (row.promo.ChangeType == kChangeTo)
            row.promoPrice = row.promo.PriceChange;
        else if (row.promo.Invuid > 0 && items.next())
            row.promoPrice = gfcPromo_price_get(gInventory.Price, row.promo);
        each(row);
        if (progress)
            progress(++done, total);
    }
    return true;
}

bool gfbPromoListing_read(const PromoListFilter &filter, QList<PromoListRow> &rows,
                          const std::function<void(qsizetype, qsizetype)> &progress)
{
    rows.clear();
    return gfbPromoListing_each(filter, [&](const PromoListRow &row) { rows << row; }, progress);
}

} // namespace qln
