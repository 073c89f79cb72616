#pragma once
#include "promo/PromoPricing.h"

#include <QDate>
#include <QList>
#include <QString>
#include <functional>
#include <optional>

// What the promo list windows share: the texts of a promo row in their grids, the reading of
// a selection of promo rows, and the statements by which expired promos go.
namespace qln {

// "To", "By", "By Percent"; empty for a tombstone or an unknown type.
QString gfsPromo_type_text(int changeType);
// PriceChange as "#.00"; with bPercentForm a "By Percent" amount shows as "#.00%".
QString gfsPromo_amount_text(const PromoPriceRecord &promo, bool bPercentForm);
// A date as the lists show it: the short date of the company's country.
QString gfsPromo_date_text(const QDateTime &date);

// The cells of one promo in the columns the item and group lists share.
struct PromoGridLine {
    QString regularPrice; // "#.00"
    QString promoPrice;   // "#.00"; a tombstone repeats the promo price of the row before
    QString start;
    QString end;          // "DELETED" for a tombstone
    QString type;
    QString amount;
    QString startKey;     // "YYYYMMDD", for sorting
    QString endKey;
};
PromoGridLine gfPromo_grid_line(const PromoPriceRecord &promo, Money regularPrice, const QString &previousPromoPrice,
                                bool bPercentForm);

// The price the lists compare and show: with tax when the country shows prices with tax.
Money gfcItem_list_price();

// The Yes/No question before a promo goes.
bool gfbPromo_delete_confirm();

// A date as the statements of the lists write it, in the form the server reads.
QString gfsDate_server_text(const QDate &date);

// A date typed into a box or shown in a list, read in the order of the company's country.
std::optional<QDate> gfdDate_parse(const QString &text);
// A date text put through the "YYYYMMDD" pattern: the digits of a date, any other text as it
// stands (so "DELETED" compares above every date).
QString gfsDate_pattern_text(const QString &text);

// A date as the editors compare it: "YYYYMMDD" as a number, and the platform's "YYYYYMMDD"
// (year, day of the year, month, day), which the ending date is put through, so that it
// always reads as the larger number.
qint64 gflDate_YYYYMMDD(const QDate &date);
qint64 gflDate_YYYYYMMDD(const QDate &date);

// Reads the rows of a query on PromoPrices, in the server's order. False when the server
// refused the query; an empty answer is true with no rows.
bool gfbPromo_rows_read(const QString &sql, QList<PromoPriceRecord> &rows);

// Of the promos of one item that start on one date, the first that `wanted` accepts (it looks
// at gPromo): it stays in the buffer and is the table's current row, ready for "Update".
// False when none is.
bool gfbPromo_same_start_find(const QString &sl, const QDateTime &start, const std::function<bool()> &wanted);

// The statement meant to turn an item's live promos into tombstones waiting to be polled.
// Its table name stands inside the text, so the server refuses it and only the log sees it;
// bSpacedWhere gives the two blanks before WHERE of the by-item and department purges.
QString gfsPromo_tombstone_sql(const QString &sNow, qint32 invuid, bool bSpacedWhere);
// Removes every promo of an item, expired or not.
QString gfsPromo_item_delete_sql(qint32 invuid);

} // namespace qln
