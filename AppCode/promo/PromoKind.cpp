#include "promo/PromoKind.h"

#include "promo/DeptPromos.h"
#include "promo/MatrixPromos.h"

#include <array>

namespace qln {

namespace {
constexpr std::array<std::pair<PromoKind, const char *>, 5> kNames = {{
    {PromoKind::Item, "item"},
    {PromoKind::Dept, "dept"},
    {PromoKind::Group, "group"},
    {PromoKind::Matrix, "matrix"},
    {PromoKind::Daily, "daily"},
}};

// "000.000.000" is how the item file says "no department"; a promo row on it reaches no item.
bool namesDept(const QString &dept)
{
    const QString code = dept.trimmed();
    return !code.isEmpty() && code != kNoDept;
}
} // namespace

std::optional<PromoKind> gfePromo_kind(const PromoPriceRecord &promo)
{
    if (promo.SL.trimmed().isEmpty()) {
        if (namesDept(promo.Dept))
            return PromoKind::Dept;
        if (promo.GroupID < 0)
            return PromoKind::Daily;
        return std::nullopt;
    }
    if (promo.GroupID >= kMatrixGroupBase)
        return PromoKind::Matrix;
    if (promo.GroupID > 0)
        return PromoKind::Group;
    return PromoKind::Item;
}

QString gfsPromoKind_name(PromoKind kind)
{
    for (const auto &[k, name] : kNames)
        if (k == kind)
            return QString::fromLatin1(name);
    return QString();
}

std::optional<PromoKind> gfePromoKind_parse(const QString &text)
{
    for (const auto &[k, name] : kNames)
        if (text == QLatin1String(name))
            return k;
    return std::nullopt;
}

} // namespace qln
