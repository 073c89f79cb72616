#include "promo/PromoExplain.h"

#include "promo/PromoReach.h"
#include "store/Database.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"

namespace qln {

namespace {
constexpr int kSLWidth = 8;
} // namespace

std::optional<QString> gfsExplain_SL_key(const QString &text)
{
    QString key = text.trimmed();
    if (key.size() >= 3 && key[key.size() - 2] == QLatin1Char('.'))
        key.remove(key.size() - 2, 1);
    if (key.isEmpty() || key.size() > kSLWidth || key.contains(QLatin1Char('\'')) || key.contains(QLatin1Char('.')))
        return std::nullopt;
    return key;
}

ExplainEnd gfePrice_explain(const QString &sl, const QDate &day, PriceExplanation &explanation)
{
    explanation = PriceExplanation();
    explanation.day = day;
    gDBErr().clear();
    if (gfiInventory_BySL(gfsDB_Quote(sl, true, 0), false) == 0)
        return gDBErr().isSet() ? ExplainEnd::ReadRefused : ExplainEnd::UnknownItem;
    const InventoryRecord item = gInventory;
    explanation.SL = item.SL.trimmed();
    explanation.description = item.Description.trimmed();
    explanation.dept = item.DeptCode.trimmed();
    explanation.regularPrice = item.Price;
    explanation.discountable = item.AllowDiscounts.trimmed() != QLatin1String("N");

    QList<PromoPriceRecord> rows;
    if (!gfbPromo_reaching_read({item.SL, item.DeptCode}, day, day, rows))
        return ExplainEnd::ReadRefused;
    for (const PromoPriceRecord &promo : std::as_const(rows)) {
        const std::optional<PromoKind> kind = gfePromo_kind(promo);
        explanation.promos << PromoPriceGiven{promo, kind.value_or(PromoKind::Item), gfcPromo_price_get(item.Price, promo)};
    }
    if (!explanation.discountable)
        return ExplainEnd::Explained;
    for (qsizetype i = 0; i < explanation.promos.size(); ++i) {
        const std::optional<Money> &price = explanation.promos[i].price;
        if (price && (!explanation.best || *price < *explanation.promos[*explanation.best].price))
            explanation.best = i;
    }
    return ExplainEnd::Explained;
}

} // namespace qln
