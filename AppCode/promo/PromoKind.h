#pragma once
#include "promo/PromoPricing.h"

#include <QString>
#include <optional>

// The five kinds of promo share one table; a row's kind follows from its fields alone.
namespace qln {

enum class PromoKind { Item, Dept, Group, Matrix, Daily };

// The kind of a row: a department code without an item is a department promo, whatever its
// GroupID holds (its editor leaves the buffer's); a negative GroupID without an item is a daily
// promo; a row on an item is a matrix, group or item promo by its GroupID. None for a row that
// names neither an item, a department nor a day range.
std::optional<PromoKind> gfePromo_kind(const PromoPriceRecord &promo);

// "item", "dept", "group", "matrix", "daily".
QString gfsPromoKind_name(PromoKind kind);
// A name as above, case as given; none for any other text.
std::optional<PromoKind> gfePromoKind_parse(const QString &text);

} // namespace qln
