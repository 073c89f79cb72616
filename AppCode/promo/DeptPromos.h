#pragma once
#include "promo/PromoPricing.h"
#include "store/Departments.h"

#include <QDate>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

// The statements and texts of the department promos window: what it lists, how its rows
// read, and how expired department promos go. Nothing here shows a window.
namespace qln {

// The code that stands for no department; every real code compares above it.
inline const QString kNoDept = QStringLiteral("000.000.000");

// A code the window can put into a statement: "DDD.CCC.SSS", digits only.
bool gfbDept_code_valid(const QString &sCode);

// The date texts of the window's statements: a day at midnight, "YYYY-MM-DD HH:MM:SS".
QString gfsDeptPromos_now();   // today
QString gfsDeptPromos_first(); // 1/1/1990

// The WHERE texts of the three lists, each with its leading blank.
QString gfsDeptPromos_where(const QString &sDept, bool bExpiredToo);
QString gfsDeptPromos_all_where(bool bExpiredToo);
QString gfsDeptPromos_expired_where();
// The list statement of a WHERE text.
QString gfsDeptPromos_select(const QString &sWhere);

// The cells of one department promo in columns 0 to 3: start, end (or "DELETED"), the kind
// of change and its amount; the last two stay empty for any type but 1 and 2.
QStringList gfDeptPromo_cells(const PromoPriceRecord &promo);

// The composed text of a department code (code, blank, level names). Within one list a code
// is composed once, from the department table read once; the buffer ends where composing
// the last code asked for leaves it.
class DeptNames {
public:
    QString text(const QString &sCode);
    // Composes the last code asked for again by the keyed reads, so that the buffer and the
    // table's current row stand where a list that composed every row would have left them.
    void buffer_settle();

private:
    QHash<QString, QString> m_texts;
    DeptTable m_table;
    bool m_tableRead = false;
    QString m_last;
    bool m_asked = false;
};

// "12Records Purged": the count and the words with no blank between.
QString gfsRecords_purged_text(int n);

// Purge All of a single store: the rows removed, or nothing when none was expired (then
// nothing is sent but the count).
std::optional<int> gfiDeptPromos_purge_all_store();
// Purge All of a head office: polled tombstones go; expired promos are meant to become
// tombstones by a statement the server refuses, so they stay. False when the list of
// expired promos could not be read.
bool gfbDeptPromos_purge_all_head_office();
// Purge Selected: every expired promo of each department named; the rows removed.
int gfiDeptPromos_purge_selected(const QStringList &depts);

// The delete of a single store, written as the suite writes it: a blank behind the quote of
// the code and an unquoted date, so it finds no row.
QString gfsDeptPromo_delete_sql(const QDate &start, const QString &sDept);

} // namespace qln
