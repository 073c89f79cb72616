#include "promo/DeptPromos.h"

#include "common/DateForms.h"
#include "platform/Clock.h"
#include "promo/PromoList.h"
#include "promo/PromoPurge.h"
#include "store/Departments.h"
#include "store/RecordOps.h"

namespace qln {

namespace {

QString mfsExpired_tail(bool bExpiredToo)
{
    QString tail;
    if (!bExpiredToo)
        tail = QStringLiteral("and EndDate >= '") + gfsDeptPromos_now() + QStringLiteral("' ");
    return tail + QStringLiteral("and ChangeType <> '") + QString::number(kChangeDeleted) + QStringLiteral("' and ChangeType > 0");
}

QString mfsAll_start() { return QStringLiteral(" WHERE Dept>'") + kNoDept + QStringLiteral("' and StartDate >'") + gfsDeptPromos_first() + QLatin1Char('\''); }

} // namespace

bool gfbDept_code_valid(const QString &sCode)
{
    if (sCode.size() != 11)
        return false;
    for (int i = 0; i < 11; ++i) {
        const QChar c = sCode.at(i);
        if ((i == 3 || i == 7) ? c != QLatin1Char('.') : !(c >= QLatin1Char('0') && c <= QLatin1Char('9')))
            return false;
    }
    return true;
}

QString gfsDeptPromos_now() { return gfsDate_server_text(Clock::today()); }
QString gfsDeptPromos_first() { return gfsDate_server_text(QDate(1990, 1, 1)); }

QString gfsDeptPromos_where(const QString &sDept, bool bExpiredToo)
{
    return QStringLiteral(" WHERE Dept='") + sDept + QStringLiteral("' and StartDate >'") + gfsDeptPromos_first() +
           QLatin1Char('\'') + mfsExpired_tail(bExpiredToo);
}

QString gfsDeptPromos_all_where(bool bExpiredToo) { return mfsAll_start() + mfsExpired_tail(bExpiredToo); }

QString gfsDeptPromos_expired_where()
{
    return mfsAll_start() + QStringLiteral("and EndDate < '") + gfsDeptPromos_now() + QStringLiteral("' and ChangeType <> 99");
}

QString gfsDeptPromos_select(const QString &sWhere)
{
    return QStringLiteral("SELECT * FROM PromoPrices") + sWhere + QStringLiteral(" order by dept");
}

QStringList gfDeptPromo_cells(const PromoPriceRecord &promo)
{
    QStringList cells{gfsPromo_date_text(promo.StartDate),
                      promo.ChangeType == kChangeDeleted ? QStringLiteral("DELETED") : gfsPromo_date_text(promo.EndDate),
                      QString(), QString()};
    if (promo.ChangeType == kChangeBy || promo.ChangeType == kChangeByPercent) {
        cells[2] = gfsPromo_type_text(promo.ChangeType);
        cells[3] = gfsPromo_amount_text(promo, true);
    }
    return cells;
}

QString DeptNames::text(const QString &sCode)
{
    m_last = sCode;
    m_asked = true;
    const auto known = m_texts.constFind(sCode);
    if (known != m_texts.constEnd())
        return *known;
    if (!m_tableRead) {
        m_table.read();
        m_tableRead = true;
    }
    return *m_texts.insert(sCode, gfsDept_Name(sCode, m_table));
}

void DeptNames::buffer_settle()
{
    if (m_asked)
        gfsDept_Name(m_last);
}

QString gfsRecords_purged_text(int n) { return QString::number(n) + QStringLiteral("Records Purged"); }

std::optional<int> gfiDeptPromos_purge_all_store()
{
    const QString where = QStringLiteral(" WHERE Dept>'") + kNoDept + QStringLiteral("' and (EndDate < '") + gfsDeptPromos_now() +
                          QStringLiteral("' OR changetype=99)");
    if (gfiDB_RecordCount(kPromoTable, QStringLiteral("PromoPrices") + where) == 0)
        return std::nullopt;
    return gfiDB_Execute(QStringLiteral("DELETE  FROM PromoPrices") + where);
}

bool gfbDeptPromos_purge_all_head_office()
{
    gfiDB_Execute(QStringLiteral("DELETE  FROM PromoPrices WHERE changetype=99 AND POLL =' '"));
    QList<PromoPriceRecord> rows;
    if (!gfbPromo_rows_read(QStringLiteral("SELECT *  FROM PromoPrices WHERE Dept>'") + kNoDept + QStringLiteral("' AND EndDate < '") +
                                gfsDeptPromos_now() + QStringLiteral("' "),
                            rows))
        return false;
    for (const PromoPriceRecord &row : std::as_const(rows))
        gpPromo_tombstone_request(row, true);
    return true;
}

int gfiDeptPromos_purge_selected(const QStringList &depts)
{
    int purged = 0;
    for (const QString &dept : depts)
        purged += gfiDB_Execute(QStringLiteral("DELETE  FROM PromoPrices WHERE Dept='") + dept + QStringLiteral("' and EndDate < '") +
                                gfsDeptPromos_now() + QStringLiteral("' "));
    return purged;
}

QString gfsDeptPromo_delete_sql(const QDate &start, const QString &sDept)
{
    return QStringLiteral("DELETE FROM PromoPrices WHERE startdate = ") + start.toString(QStringLiteral("M/d/yyyy")) +
           QStringLiteral(" AND Dept=' ") + sDept + QLatin1Char('\'');
}

} // namespace qln
