#pragma once
#include "promo/PromoPricing.h"

#include <QDate>
#include <QHash>
#include <QList>
#include <QString>

// Which promos reach an item over a range of days: its own item promos, its department's, the
// groups and the matrix it is a member of (rows on the item itself), and every daily promo.
// Tombstones reach nothing. Whether the item takes discounts at all is the caller's question.
namespace qln {

// What decides whether a promo reaches an item: its key and its department code.
struct PromoTarget {
    QString SL;   // key form, without the point
    QString Dept; // "DDD.CCC.SSS"; blank or "000.000.000": none
};

// Whether `promo` runs on a day from `from` to `to` (both included) and names the item.
bool gfbPromo_reaches(const PromoPriceRecord &promo, const PromoTarget &item, const QDate &from, const QDate &to);

// The order in which reaching promos are told: by kind (item, dept, group, matrix, daily), then
// start date, then row number.
void gpPromo_reach_sort(QList<PromoPriceRecord> &rows);

// One item: only the rows that may reach it are read, in one statement. False when the server
// refused it; no row reaching is true with none.
bool gfbPromo_reaching_read(const PromoTarget &item, const QDate &from, const QDate &to, QList<PromoPriceRecord> &rows);

// Many items: the table read once, indexed in memory by item, department and day range.
class PromoReachIndex {
public:
    // The live rows ending on or after `endingFrom` (every live row when it is invalid). False
    // when the server refused the read; the index is then empty.
    bool load(const QDate &endingFrom = QDate());
    // Rows already read; tombstones are left out as load leaves them out.
    void build(const QList<PromoPriceRecord> &rows);

    // As gfbPromo_reaching_read answers for the same item and days, in the same order.
    QList<PromoPriceRecord> reaching(const PromoTarget &item, const QDate &from, const QDate &to) const;

    const QList<PromoPriceRecord> &rows() const { return m_rows; }

private:
    QList<PromoPriceRecord> m_rows;
    QHash<QString, QList<int>> m_bySL;
    QHash<QString, QList<int>> m_byDept;
    QList<int> m_daily;
};

} // namespace qln
