#include "promo/PromoImport.h"

#include "common/ItemNumber.h"
#include "common/ProcessState.h"
#include "config/Country.h"
#include "config/Tax.h"
#include "platform/Clock.h"
#include "platform/Connection.h"
#include "platform/Recordset.h"
#include "promo/DailyPromos.h"
#include "promo/DeptPromos.h"
#include "promo/PromoChecks.h"
#include "promo/PromoColumns.h"
#include "promo/PromoList.h"
#include "promo/PromoReach.h"
#include "promo/PromoSave.h"
#include "store/Common.h"
#include "store/Database.h"
#include "store/Departments.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"

#include <QRegularExpression>
#include <QSet>
#include <QSqlError>

namespace qln {

namespace {

QString mfsLine(int line) { return QStringLiteral("line ") + QString::number(line); }
QString mfsKey(const QString &sl) { return sl.trimmed().toUpper(); }
QString mfsMoney(const Money &m) { return m.toText(2); }

// The columns an addition reads; the others of a listed file are the table's own to assign.
const QStringList &neededColumns()
{
    static const QStringList columns = {QStringLiteral("Kind"),    QStringLiteral("SL"),         QStringLiteral("Dept"),
                                        QStringLiteral("StartDate"), QStringLiteral("EndDate"), QStringLiteral("ChangeType"),
                                        QStringLiteral("PriceChange")};
    return columns;
}

// The types of change each kind's editor offers.
bool mfbChangeType_offered(PromoKind kind, int type)
{
    switch (kind) {
    case PromoKind::Item: return type >= kChangeTo && type <= kChangeByPercent;
    case PromoKind::Dept: return type == kChangeBy || type == kChangeByPercent;
    case PromoKind::Daily: return type == kChangeByPercent;
    case PromoKind::Group:
    case PromoKind::Matrix: break;
    }
    return false;
}

QString mfsFault_text(const PromoEditorFault &fault) { return fault.headline.trimmed() + QStringLiteral(": ") + fault.detail; }

} // namespace

void PromoAddition::lines_take(const CsvText &csv)
{
    for (const CsvProblem &problem : csv.problems)
        refuse(mfsLine(problem.line), problem.text);
    if (csv.records.isEmpty()) {
        refuse(mfsLine(1), QStringLiteral("the file has no header line"));
        return;
    }
    const CsvRecord &header = csv.records.first();
    QHash<QString, qsizetype> at;
    for (qsizetype i = 0; i < header.fields.size(); ++i)
        at.insert(header.fields.at(i).trimmed().toLower(), i);
    bool complete = true;
    for (const QString &column : neededColumns())
        if (!at.contains(column.toLower())) {
            refuse(mfsLine(header.line), QStringLiteral("the header has no column ") + column);
            complete = false;
        }
    if (!complete)
        return;

    for (qsizetype r = 1; r < csv.records.size(); ++r) {
        const CsvRecord &record = csv.records.at(r);
        const QString origin = mfsLine(record.line);
        if (record.fields.size() != header.fields.size()) {
            refuse(origin, QStringLiteral("%1 fields where the header has %2").arg(record.fields.size()).arg(header.fields.size()));
            continue;
        }
        const auto value = [&](const QString &column) { return record.fields.at(at.value(column.toLower())).trimmed(); };
        const qsizetype before = m_notes.size();
        PromoDraft draft;
        draft.origin = origin;

        const QString kind = value(QStringLiteral("Kind")).toLower();
        const std::optional<PromoKind> parsed = gfePromoKind_parse(kind);
        if (!parsed) {
            refuse(origin, QStringLiteral("Kind '%1' is none of item, dept, group, matrix, daily").arg(value(QStringLiteral("Kind"))));
            continue;
        }
        if (*parsed == PromoKind::Group || *parsed == PromoKind::Matrix) {
            refuse(origin, QStringLiteral("a %1 promo is kept for all members of its group at once: add it in the %2 window")
                               .arg(kind, *parsed == PromoKind::Group ? QStringLiteral("Group Promos") : QStringLiteral("Matrix Promos")));
            continue;
        }
        draft.kind = *parsed;

        const auto date = [&](const QString &column, QDate &into) {
            if (const std::optional<QDate> d = gfdPromoColumns_date(value(column)))
                into = *d;
            else
                refuse(origin, QStringLiteral("%1 '%2' is not a date of the form yyyy-MM-dd").arg(column, value(column)));
        };
        date(QStringLiteral("StartDate"), draft.start);
        date(QStringLiteral("EndDate"), draft.end);
        if (draft.start.isValid() && draft.end.isValid() && draft.end < draft.start)
            refuse(origin, QStringLiteral("EndDate is before StartDate"));

        bool typeRead = false;
        const int type = value(QStringLiteral("ChangeType")).toInt(&typeRead);
        if (!typeRead || !mfbChangeType_offered(draft.kind, type))
            refuse(origin, QStringLiteral("ChangeType '%1' is not offered for a %2 promo").arg(value(QStringLiteral("ChangeType")), kind));
        else
            draft.changeType = qint16(type);

        if (const std::optional<Money> amount = gfcPromoColumns_money(value(QStringLiteral("PriceChange"))))
            draft.amount = *amount;
        else
            refuse(origin, QStringLiteral("PriceChange '%1' is not an amount like 12.5 or 0.9975").arg(value(QStringLiteral("PriceChange"))));

        if (draft.kind == PromoKind::Item) {
            QString sl = value(QStringLiteral("SL"));
            if (sl.contains(QLatin1Char('.')))
                sl = gfsItemID_key(sl);
            if (sl.isEmpty() || sl.size() > 8)
                refuse(origin, QStringLiteral("SL '%1' is no item key").arg(value(QStringLiteral("SL"))));
            draft.sl = sl;
        } else if (draft.kind == PromoKind::Dept) {
            draft.dept = value(QStringLiteral("Dept"));
            if (!gfbDept_code_valid(draft.dept) || draft.dept == kNoDept)
                refuse(origin, QStringLiteral("Dept '%1' is no department code DDD.CCC.SSS").arg(draft.dept));
        }
        if (m_notes.size() == before)
            m_drafts << draft;
    }
}

bool PromoAddition::items_read()
{
    QStringList quoted;
    QSet<QString> seen;
    for (const PromoDraft &draft : std::as_const(m_drafts))
        if (draft.kind == PromoKind::Item && !seen.contains(mfsKey(draft.sl))) {
            seen.insert(mfsKey(draft.sl));
            quoted << QLatin1Char('\'') + QString(draft.sl).replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
        }
    m_items.clear();
    return gfbInventory_read_in(QStringLiteral("SL"), quoted, [this] { m_items.insert(mfsKey(gInventory.SL), gInventory); });
}

bool PromoAddition::check()
{
    if (!items_read())
        return false;
    DeptTable depts;
    bool deptsRead = false;
    const TaxRates rates{gCommon.TaxRate1, gCommon.TaxRate2, gCommon.TaxRate3, gCommon.TaxRate4, gCommon.TaxRate5};
    QList<PromoDraft> passed;
    for (PromoDraft draft : std::as_const(m_drafts)) {
        const qsizetype before = m_notes.size();
        if (draft.kind == PromoKind::Item) {
            const auto item = m_items.constFind(mfsKey(draft.sl));
            if (item == m_items.constEnd()) {
                refuse(draft.origin, QStringLiteral("SL '%1' is no item of this store").arg(draft.sl));
            } else if (item->AllowDiscounts == QLatin1String("N")) {
                refuse(draft.origin, QStringLiteral("Discounts not allowed on this item"));
            } else {
                draft.sl = item->SL;
                draft.invuid = item->RecordNum;
                Money listPrice = item->Price;
                if (gbIncludeTax)
                    gfsPriceIncTax_text_get(Clock::today(), listPrice, item->TaxCode, rates);
                // The editor compares what it shows, to the cent.
                const Money shown = gfcPromo_price_get(item->Price, draft.amount, draft.changeType).value_or(Money()).rounded(2);
                if (const auto fault = gfPromoEditor_price_fault(listPrice.rounded(2), shown))
                    refuse(draft.origin, mfsFault_text(*fault) + QStringLiteral(" (promo %1, regular %2)").arg(mfsMoney(shown), mfsMoney(listPrice)));
                else if (item->Cost.rounded(2) >= shown)
                    m_notes << PromoAddNote{draft.origin, QStringLiteral("Promo Price Is Below Cost (promo %1, cost %2)").arg(mfsMoney(shown), mfsMoney(item->Cost)), false};
            }
        } else if (draft.kind == PromoKind::Dept) {
            if (!deptsRead) {
                depts.read();
                deptsRead = true;
            }
            if (depts.find(draft.dept))
                draft.dept = gDept.DeptCode;
            else
                refuse(draft.origin, QStringLiteral("department '%1' does not exist").arg(draft.dept));
        } else if (const auto fault = gfPromoEditor_daily_percent_fault(draft.amount)) {
            refuse(draft.origin, mfsFault_text(*fault));
        }
        bool refusedNow = false;
        for (qsizetype i = before; i < m_notes.size(); ++i)
            refusedNow = refusedNow || m_notes.at(i).refused;
        if (!refusedNow)
            passed << draft;
    }
    m_drafts = passed;
    return true;
}

bool PromoAddition::overlaps_find(QList<Overlap> &overlaps)
{
    overlaps.clear();
    if (m_drafts.isEmpty())
        return true;
    QDate first = m_drafts.first().start;
    for (const PromoDraft &draft : std::as_const(m_drafts))
        first = std::min(first, draft.start);
    PromoReachIndex index;
    if (!index.load(first))
        return false;
    for (const PromoDraft &draft : std::as_const(m_drafts)) {
        // A department promo meets the promos of its department and the daily ones; a daily
        // promo the other daily ones.
        PromoTarget target{QString(), draft.dept};
        if (draft.kind == PromoKind::Item)
            target = PromoTarget{draft.sl, m_items.value(mfsKey(draft.sl)).DeptCode};
        for (const PromoPriceRecord &row : index.reaching(target, draft.start, draft.end))
            overlaps << Overlap{draft.origin, row};
    }
    return true;
}

bool PromoAddition::refused() const
{
    for (const PromoAddNote &note : m_notes)
        if (note.refused)
            return true;
    return false;
}

bool PromoAddition::draft_write(const PromoDraft &draft, qint32 uniqueID, qint32 &dailyGroupID)
{
    gpPromo_clear();
    gPromo.UniqueID = uniqueID;
    const PromoEntry entry{draft.start, draft.end, draft.changeType, draft.amount};
    switch (draft.kind) {
    case PromoKind::Item:
        gInventory = m_items.value(mfsKey(draft.sl));
        if (!gfbItemPromo_write(true, entry))
            return false;
        if (gInventory.FlgPromoPrice == QLatin1String("Y"))
            return true;
        if (!gfbItemPromo_flag_set())
            return false;
        // The next promo of the same item finds its flag set.
        m_items[mfsKey(draft.sl)].FlgPromoPrice = QStringLiteral("Y");
        return true;
    case PromoKind::Dept:
        gDept.DeptCode = draft.dept;
        return gfbDeptPromo_save(true, entry);
    case PromoKind::Daily:
        gPromo.Store = qint16(gsStore.trimmed().toInt());
        gPromo.StartDate = QDateTime(draft.start, QTime(0, 0));
        gPromo.EndDate = QDateTime(draft.end, QTime(0, 0));
        gPromo.ChangeDate = QDateTime(Clock::today(), QTime(0, 0));
        gPromo.ChangeType = kChangeByPercent;
        gPromo.PriceChange = draft.amount;
        gPromo.GroupID = dailyGroupID--;
        return gfbDB_RecordOp(kPromoTable, kOpInsert, kPromoByGroupEnd);
    case PromoKind::Group:
    case PromoKind::Matrix: break;
    }
    return false;
}

bool PromoAddition::write(QString &error, const std::function<void(qsizetype)> &progress)
{
    QSqlDatabase &db = dbConnection().database();
    if (!db.transaction()) {
        error = QStringLiteral("the database would not begin a transaction: ") + db.lastError().text();
        return false;
    }
    const auto fail = [&](const QString &why) {
        db.rollback();
        error = why;
        return false;
    };
    qint32 uniqueID = gfiPromo_UniqueID_next(kPromoTable);
    qint32 dailyGroupID = -1;
    const bool daily = std::any_of(m_drafts.cbegin(), m_drafts.cend(), [](const PromoDraft &d) { return d.kind == PromoKind::Daily; });
    if (daily) {
        const std::optional<qint32> next = gfiDailyPromo_GroupID_next();
        if (!next)
            return fail(QStringLiteral("the daily promos have used every number down to %1").arg(kDailyGroupID_lowest));
        dailyGroupID = *next;
    }
    for (qsizetype i = 0; i < m_drafts.size(); ++i) {
        const PromoDraft &draft = m_drafts.at(i);
        if (draft.kind == PromoKind::Daily && dailyGroupID < kDailyGroupID_lowest)
            return fail(draft.origin + QStringLiteral(": the daily promos have used every number down to %1").arg(kDailyGroupID_lowest));
        gsDBLastError.clear();
        gDBErr().clear();
        if (!draft_write(draft, uniqueID++, dailyGroupID)) {
            // An insert leaves its reason in gsDBLastError, an update on the error object.
            QString why = gsDBLastError.trimmed();
            if (why.isEmpty())
                why = (gDBErr().isSet() ? gDBErr().description : dbConnection().lastError().description).trimmed();
            return fail(draft.origin + QStringLiteral(": the database refused it") + (why.isEmpty() ? QString() : QStringLiteral(" (") + why + QLatin1Char(')')));
        }
        if (progress)
            progress(i + 1);
    }
    if (!db.commit())
        return fail(QStringLiteral("the database would not commit: ") + db.lastError().text());
    return true;
}

bool gfbPromoShift_take(PromoAddition &addition, PromoKind kind, const QDate &from, const QDate &to, int days)
{
    QList<PromoPriceRecord> rows;
    if (!gfbPromo_rows_read(QStringLiteral("SELECT * FROM PromoPrices WHERE StartDate>='") + gfsDate_server_text(from) +
                                QStringLiteral("' AND StartDate<='") + gfsDate_server_text(to) +
                                QStringLiteral("' AND ChangeType<>99 ORDER BY StartDate,UniqueID"),
                            rows))
        return false;
    for (const PromoPriceRecord &row : std::as_const(rows)) {
        if (gfePromo_kind(row) != kind)
            continue;
        PromoDraft draft;
        draft.origin = QStringLiteral("UniqueID ") + QString::number(row.UniqueID);
        draft.kind = kind;
        draft.sl = row.SL.trimmed();
        draft.dept = row.Dept.trimmed();
        draft.start = row.StartDate.date().addDays(days);
        draft.end = row.EndDate.date().addDays(days);
        draft.changeType = row.ChangeType;
        draft.amount = row.PriceChange;
        addition.draft_take(draft);
    }
    return true;
}

} // namespace qln
