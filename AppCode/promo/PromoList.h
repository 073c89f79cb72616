#pragma once
#include "promo/PromoPricing.h"

#include <QDate>
#include <QList>
#include <QString>
#include <functional>
#include <memory>
#include <vector>
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

// The rows of a query on PromoPrices for a list that shows some of them. Each row is read
// whole into gPromo only when the list shows it; gPromo and the table's record set end as
// gfbPromo_rows_read followed by a walk of its rows leaves them.
class PromoRows {
public:
    PromoRows() = default;
    ~PromoRows();
    PromoRows(const PromoRows &) = delete;
    PromoRows &operator=(const PromoRows &) = delete;

    // Runs the query and keeps the rows `listed` accepts; it looks at the fields
    // gpPromo_row_filter_read puts in gPromo. False when the server refused the query.
    bool open(const QString &sql, const std::function<bool()> &listed);
    // The kept rows, in the server's order.
    const std::vector<int> &listed() const { return m_listed; }
    // Their Invuid.
    const std::vector<qint32> &listedItems() const { return m_items; }
    int size() const;
    // A row whole into gPromo; rows are asked for in order.
    void read(int row);

private:
    void moveTo(int row);

    std::unique_ptr<class Recordset> m_rows;
    std::vector<int> m_listed;
    std::vector<qint32> m_items;
    int m_at = 0;
    int m_lastRead = -1;
    qint32 m_uniqueID = 0; // as the whole reads of every row leave it
};

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
