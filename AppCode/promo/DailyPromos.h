#pragma once
#include "promo/PromoPricing.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

// The rows of the daily promos window: store-wide percentages for ranges of days, told apart
// by negative group numbers. Nothing here shows a window.
namespace qln {

// The key on GroupID and EndDate, by which the window finds, walks and writes its rows.
constexpr int kPromoByGroupEnd = 4;
// The lowest group number the column holds.
constexpr qint32 kDailyGroupID_lowest = -32768;

// The rows the window lists, in key order: from the first row of the key on, up to the first
// row of GroupID 0 (past the negative numbers into the groups when there is none). Expired
// rows and tombstones are listed alike. False when the server refused the read.
bool gfbDailyPromos_read(QList<PromoPriceRecord> &rows);

// Whether the window fills its list at load: the first row of the key is a daily promo that
// has not ended before today.
bool gfbDailyPromos_listed_at_load(const QDate &today);

// The number of a new daily promo: -1 for the first, else one below the lowest in the table.
// None when the lowest is already the lowest the column can hold.
std::optional<qint32> gfiDailyPromo_GroupID_next();

// The cells of a row: start, end, kind of change (empty for a tombstone), percentage with
// "%", GroupID.
QStringList gfDailyPromo_cells(const PromoPriceRecord &promo);

// The delete of a single store, with the date in the system's short form.
QString gfsDailyPromo_delete_sql(const QDate &end, qint32 groupId);

} // namespace qln
