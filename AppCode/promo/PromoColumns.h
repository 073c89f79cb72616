#pragma once
#include "common/Money.h"
#include "promo/PromoKind.h"
#include "promo/PromoPricing.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <array>
#include <optional>

// The columns in which promo rows leave the program and come back: the CSV that `list` writes
// and `import` reads, and the keys of the JSON objects `list` writes. UTF-8; CSV lines end in
// CR LF and quote as spreadsheets do (common/Csv.h).
namespace qln {

enum class PromoColumn { Kind, Store, SL, Dept, GroupID, StartDate, EndDate, ChangeType, PriceChange, PromoPrice, Poll, UniqueID };

inline constexpr std::array<const char *, 12> kPromoColumnNames = {
    "Kind", "Store", "SL", "Dept", "GroupID", "StartDate", "EndDate", "ChangeType", "PriceChange", "PromoPrice", "Poll", "UniqueID",
};
inline constexpr int kPromoColumnCount = int(kPromoColumnNames.size());

// The header line's names, in column order.
QStringList gfPromoColumns_names();

// Dates: "yyyy-MM-dd". The reading is strict: any other form, or a day the calendar lacks
// ("2026-02-31"), is none.
QString gfsPromoColumns_date(const QDateTime &date);
std::optional<QDate> gfdPromoColumns_date(const QString &text);

// Amounts: a dot and up to four decimals, no thousands separator ("8.4915", "-0.5", "25").
// The reading takes an optional minus, digits, and at most four decimals; nothing else.
QString gfsPromoColumns_money(Money amount);
std::optional<Money> gfcPromoColumns_money(const QString &text);

// The cells of one row in column order. SL is the key form, texts are trimmed, ChangeType is the
// stored number, PromoPrice is empty where none applies.
QStringList gfPromoColumns_cells(const PromoPriceRecord &promo, PromoKind kind, const std::optional<Money> &promoPrice);

// JSON: one object per row, keys in column order. Store, GroupID, ChangeType and UniqueID are
// numbers; amounts stay strings, to keep them exact; an empty PromoPrice is null.
QString gfsPromoColumns_json_object(const QStringList &cells);

} // namespace qln
