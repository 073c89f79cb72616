#include "promo/PromoReach.h"

#include "promo/DeptPromos.h"
#include "promo/PromoKind.h"
#include "promo/PromoList.h"
#include "store/RecordOps.h"

#include <algorithm>

namespace qln {

namespace {

// The server compares keys without case or trailing blanks; the index must too.
QString slKey(const QString &sl) { return sl.trimmed().toUpper(); }

QString deptKey(const QString &dept)
{
    const QString code = dept.trimmed();
    return code == kNoDept ? QString() : code;
}

bool runsWithin(const PromoPriceRecord &promo, const QDate &from, const QDate &to)
{
    return promo.ChangeType != kChangeDeleted && promo.StartDate.date() <= to && promo.EndDate.date() >= from;
}

} // namespace

bool gfbPromo_reaches(const PromoPriceRecord &promo, const PromoTarget &item, const QDate &from, const QDate &to)
{
    if (!runsWithin(promo, from, to))
        return false;
    const std::optional<PromoKind> kind = gfePromo_kind(promo);
    if (!kind)
        return false;
    switch (*kind) {
    case PromoKind::Item:
    case PromoKind::Group:
    case PromoKind::Matrix: return !slKey(item.SL).isEmpty() && slKey(promo.SL) == slKey(item.SL);
    case PromoKind::Dept: return !deptKey(item.Dept).isEmpty() && deptKey(promo.Dept) == deptKey(item.Dept);
    case PromoKind::Daily: return true;
    }
    return false;
}

void gpPromo_reach_sort(QList<PromoPriceRecord> &rows)
{
    auto rank = [](const PromoPriceRecord &p) { return int(gfePromo_kind(p).value_or(PromoKind::Daily)); };
    std::stable_sort(rows.begin(), rows.end(), [&](const PromoPriceRecord &a, const PromoPriceRecord &b) {
        return std::tuple(rank(a), a.StartDate, a.UniqueID) < std::tuple(rank(b), b.StartDate, b.UniqueID);
    });
}

bool gfbPromo_reaching_read(const PromoTarget &item, const QDate &from, const QDate &to, QList<PromoPriceRecord> &rows)
{
    rows.clear();
    // Each branch of the OR stands on an index of its own: (SL, EndDate), (Dept, EndDate), (GroupID, EndDate).
    QString names = QStringLiteral("GroupID<0");
    if (!slKey(item.SL).isEmpty())
        names += QStringLiteral(" OR SL='") + gfsDB_Quote(item.SL.trimmed(), true, 0) + QLatin1Char('\'');
    if (!deptKey(item.Dept).isEmpty())
        names += QStringLiteral(" OR Dept='") + gfsDB_Quote(deptKey(item.Dept), true, 0) + QLatin1Char('\'');
    const QString sql = QStringLiteral("SELECT * FROM PromoPrices WHERE (") + names + QStringLiteral(") AND EndDate>='") +
                        gfsDate_server_text(from) + QStringLiteral("' AND StartDate<='") + gfsDate_server_text(to) +
                        QStringLiteral("' AND ChangeType<>99");
    QList<PromoPriceRecord> candidates;
    if (!gfbPromo_rows_read(sql, candidates))
        return false;
    for (const PromoPriceRecord &promo : std::as_const(candidates))
        if (gfbPromo_reaches(promo, item, from, to))
            rows << promo;
    gpPromo_reach_sort(rows);
    return true;
}

bool PromoReachIndex::load(const QDate &endingFrom)
{
    QString sql = QStringLiteral("SELECT * FROM PromoPrices WHERE ChangeType<>99");
    if (endingFrom.isValid())
        sql += QStringLiteral(" AND EndDate>='") + gfsDate_server_text(endingFrom) + QLatin1Char('\'');
    QList<PromoPriceRecord> read;
    const bool ok = gfbPromo_rows_read(sql, read);
    build(ok ? read : QList<PromoPriceRecord>());
    return ok;
}

void PromoReachIndex::build(const QList<PromoPriceRecord> &rows)
{
    m_rows.clear();
    m_bySL.clear();
    m_byDept.clear();
    m_daily.clear();
    m_rows.reserve(rows.size());
    for (const PromoPriceRecord &promo : rows) {
        const std::optional<PromoKind> kind = gfePromo_kind(promo);
        if (promo.ChangeType == kChangeDeleted || !kind)
            continue;
        const int at = int(m_rows.size());
        m_rows << promo;
        if (*kind == PromoKind::Dept)
            m_byDept[deptKey(promo.Dept)] << at;
        else if (*kind == PromoKind::Daily)
            m_daily << at;
        else
            m_bySL[slKey(promo.SL)] << at;
    }
}

QList<PromoPriceRecord> PromoReachIndex::reaching(const PromoTarget &item, const QDate &from, const QDate &to) const
{
    QList<PromoPriceRecord> found;
    auto take = [&](const QList<int> &candidates) {
        for (int at : candidates)
            if (gfbPromo_reaches(m_rows[at], item, from, to))
                found << m_rows[at];
    };
    take(m_bySL.value(slKey(item.SL)));
    take(m_byDept.value(deptKey(item.Dept)));
    take(m_daily);
    gpPromo_reach_sort(found);
    return found;
}

} // namespace qln
