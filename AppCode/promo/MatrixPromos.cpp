#include "promo/MatrixPromos.h"

#include "common/Numbers.h"
#include "common/ProcessState.h"
#include "platform/WriteBatch.h"
#include "platform/Recordset.h"
#include "promo/GroupMembers.h"
#include "promo/PromoWalk.h"
#include "store/Inventory.h"
#include "store/Database.h"
#include "store/FieldCodec.h"
#include "store/MatrixGroups.h"
#include "store/RecordOps.h"
#include "store/RowsDecode.h"

#include <QHash>
#include <QSet>
#include <algorithm>
#include <optional>

namespace qln {

namespace {

constexpr int kGroupStartKey = 6, kGroupSLEndKey = 5;

QString mfsMatrix_entry(qint32 groupUID, const QString &separator, const QString &name)
{
    return QString::number(groupUID + kMatrixGroupBase) + separator + name;
}

// Rows of MtxItem for a statement, in its order.
bool mfbMtxItems_read(const QString &sql, QList<MtxItemRecord> &rows)
{
    rows.clear();
    gDBErr().clear();
    if (!gfbDB_RecordOp(kMtxItemTable, kOpBySQL, 0, false, false, sql))
        return !gDBErr().isSet();
    Recordset &set = *dbaRecordset[kMtxItemTable];
    for (set.moveFirst(); !set.eof(); set.moveNext()) {
        gpDB_table_row_to_record(kMtxItemTable);
        rows << gMtxItem;
    }
    return true;
}

// The items of the given RecordNums, a few hundred to a statement; a number not in the item
// file has no entry. The item buffer holds the last item read.
bool mfbItems_read(const QList<qint32> &recordNums, QHash<qint32, InventoryRecord> &items)
{
    QStringList numbers;
    for (qint32 n : recordNums)
        numbers << QString::number(n);
    items.clear();
    return gfbInventory_read_in(QStringLiteral("RecordNum"), numbers, [&items] { items.insert(gInventory.RecordNum, gInventory); });
}

// A row's place under the "=" of key 5: the server compares SL without case and trailing blanks.
QString mfsRow_place(const PromoPriceRecord &row)
{
    QString sl = row.SL;
    while (sl.endsWith(QLatin1Char(' ')))
        sl.chop(1);
    return sl.toUpper() + QLatin1Char('|') + gfsDate_keyText(row.EndDate);
}

// The first promo row of the matrix `id` or a later one from the starting date, in gPromo.
bool mfbMatrixPromo_first(qint32 id)
{
    gPromo.GroupID = id;
    gPromo.StartDate = gfdMatrixPromos_since();
    return gfbDB_RecordOp(kPromoTable, kOpGreaterEqual, kGroupStartKey);
}

// The GroupIDs, from the first matrix's on and in order, that have a row from the starting
// date: what each matrix's keyed read would find, in one statement. None when refused.
std::optional<QList<qint32>> mfMatrixPromos_started(const QList<MatrixGroupRecord> &built)
{
    if (!gfbListSets() || built.isEmpty())
        return std::nullopt;
    qint32 from = built.first().GroupUID;
    for (const MatrixGroupRecord &matrix : built)
        from = qMin(from, matrix.GroupUID);
    Recordset rows;
    if (!rows.open(dbConnection(), QStringLiteral("SELECT GroupID FROM ") + dbuaTable[kPromoTable].sSqlFile + QStringLiteral(" WHERE GroupID >= ") +
                                       QString::number(from + kMatrixGroupBase) + QStringLiteral(" AND StartDate >= '") +
                                       gfsDate_keyText(gfdMatrixPromos_since()) + QStringLiteral("' GROUP BY GroupID ORDER BY GroupID")))
        return std::nullopt;
    QList<qint32> ids;
    for (rows.moveFirst(); !rows.eof(); rows.moveNext())
        ids << rows.readInteger(0);
    return ids;
}

// The set stood in for the keyed reads: the last of them are made, so that gPromo and the
// table's record set end as all of them leave them. A read that finds nothing changes only
// the key's fields of the buffer, which holds the row the last read before it found.
void mpMatrixPromo_reads_end(const QList<MatrixGroupRecord> &built, const QList<qint32> &started)
{
    const auto finds = [&started](qint32 uid) { return !started.isEmpty() && uid + kMatrixGroupBase <= started.last(); };
    if (!finds(built.last().GroupUID)) {
        for (qsizetype i = built.size() - 2; i >= 0; --i) {
            if (finds(built[i].GroupUID)) {
                mfbMatrixPromo_first(built[i].GroupUID + kMatrixGroupBase);
                break;
            }
        }
    }
    mfbMatrixPromo_first(built.last().GroupUID + kMatrixGroupBase);
}

// "<GroupID>  <name>" for each of the matrices found, as one "=" read on key 0 each finds
// them (GroupUID is unique); the buffer and the table's record set end as those reads
// leave them.
QStringList mfMatrices_named(const QList<qint32> &uids)
{
    const auto keyed = [](qint32 uid) {
        gMatrixGroups.GroupUID = uid;
        return gfbDB_RecordOp(kMatrixGroupsTable, kOpEqual, 0);
    };
    const auto entry = [] { return mfsMatrix_entry(gMatrixGroups.GroupUID, QStringLiteral("  "), gMatrixGroups.GroupName); };
    QHash<qint32, QString> named;
    bool sets = gfbListSets() && !uids.isEmpty();
    if (sets) {
        QStringList numbers;
        for (qint32 uid : uids)
            numbers << QString::number(uid);
        auto rows = std::make_unique<Recordset>();
        sets = rows->open(dbConnection(), QStringLiteral("SELECT * FROM ") + dbuaTable[kMatrixGroupsTable].sSqlFile +
                                              QStringLiteral(" WHERE GroupUID IN (") + numbers.join(QLatin1Char(',')) + QLatin1Char(')'));
        if (sets)
            for (rows->moveFirst(); !rows->eof(); rows->moveNext()) {
                gpDB_row_decode(kMatrixGroupsTable, rows);
                named.insert(gMatrixGroups.GroupUID, entry());
            }
    }
    QStringList entries;
    qint32 lastFound = 0;
    for (qsizetype i = 0; i < uids.size(); ++i) {
        const qint32 uid = uids[i];
        if (!sets) {
            if (keyed(uid))
                entries << entry();
        } else if (named.contains(uid)) {
            entries << named.value(uid);
            lastFound = uid;
        }
    }
    if (sets) {
        // A read that finds nothing changes only GroupUID of the matrix the read before found.
        if (!named.contains(uids.last()) && lastFound != 0)
            keyed(lastFound);
        keyed(uids.last());
    }
    return entries;
}

} // namespace

QDateTime gfdMatrixPromos_since() { return QDateTime(QDate(2009, 1, 1), QTime(0, 0)); }

QStringList gfMatrixPromo_choices()
{
    gPromo.StartDate = gfdMatrixPromos_since();
    gPromo.GroupID = kMatrixGroupBase;
    // Only the GroupID of the rows met is looked at, so rows sharing a key need no step.
    PromoWalk walk(kGroupStartKey, WalkTies::KeyOnly);
    if (!walk.begin(kOpGreaterEqual) || gPromo.GroupID < kMatrixGroupBase)
        return {kMatrixNoneExisting};
    // Rows that share GroupID and StartDate are passed over by one step of the walk, so a
    // promo of many items costs one read.
    QList<qint32> matrices;
    qint32 last = 0;
    do {
        const qint32 id = gPromo.GroupID;
        if (id > kMatrixGroupBase && id != last) {
            last = id;
            matrices << id - kMatrixGroupBase;
        }
    } while (walk.next());
    return QStringList{kMatrixSelectGroup} + mfMatrices_named(matrices);
}

QStringList gfMatrixList_entries()
{
    QStringList entries;
    gPromo.StartDate = gfdMatrixPromos_since();
    gPromo.GroupID = kMatrixGroupBase;
    if (gfiDB_RecordCount(kMatrixGroupsTable) <= 0)
        return entries;
    if (!gfbDB_RecordOp(kMatrixGroupsTable, kOpGreaterEqual, 0, false, false, QStringLiteral("SELECT * FROM MTXGRPS Label ")))
        return entries;
    QList<MatrixGroupRecord> built;
    Recordset &matrices = *dbaRecordset[kMatrixGroupsTable];
    for (matrices.moveFirst(); !matrices.eof(); matrices.moveNext()) {
        gpDB_table_row_to_record(kMatrixGroupsTable);
        if ((gMatrixGroups.MatrixExists & gMatrixGroups.MatrixBuilt) != 0)
            built << gMatrixGroups;
    }
    const std::optional<QList<qint32>> started = mfMatrixPromos_started(built);
    for (const MatrixGroupRecord &matrix : std::as_const(built)) {
        const qint32 id = matrix.GroupUID + kMatrixGroupBase;
        // The first row at or beyond the matrix's number: the keyed read, or the set's answer.
        std::optional<qint32> first;
        if (!started) {
            if (mfbMatrixPromo_first(id))
                first = gPromo.GroupID;
        } else if (const auto at = std::lower_bound(started->cbegin(), started->cend(), id); at != started->cend()) {
            first = *at;
        }
        if (!first)
            entries << mfsMatrix_entry(matrix.GroupUID, QStringLiteral("\t"), matrix.GroupName);
        else if (*first != id)
            entries << mfsMatrix_entry(matrix.GroupUID, QStringLiteral("  "), matrix.GroupName);
    }
    if (started)
        mpMatrixPromo_reads_end(built, *started);
    return entries;
}

qint32 gfiMatrix_entry_number(const QString &entry, int digits) { return qint32(gfdNumber_value(entry.left(digits))); }

bool gfbMatrix_items_walk(qint32 groupUID, QList<MtxItemRecord> &walk, int &members)
{
    walk.clear();
    members = 0;
    const QString table = dbuaTable[kMtxItemTable].sSqlFile;
    QList<MtxItemRecord> all;
    if (!mfbMtxItems_read(QStringLiteral("SELECT * FROM ") + table + QStringLiteral(" WHERE MatrixGroupUID = ") +
                              QString::number(groupUID) + QStringLiteral(" ORDER BY InvUID"),
                          all))
        return false;
    members = int(all.size());
    // Where a walk of the key would begin: the first row by InvUID of this or a later matrix.
    gDBErr().clear();
    gMtxItem.InvUID = 0;
    gMtxItem.MatrixGroupUID = groupUID;
    if (!gfbDB_RecordOp(kMtxItemTable, kOpGreaterEqual, 0))
        return !gDBErr().isSet();
    const MtxItemRecord first = gMtxItem;
    if (first.MatrixGroupUID != groupUID)
        return true;
    // Where it would end: the next row, in the key's order, of any other matrix.
    QList<MtxItemRecord> stop;
    const QString i0 = QString::number(first.InvUID), g0 = QString::number(first.MatrixGroupUID);
    if (!mfbMtxItems_read(QStringLiteral("SELECT TOP 1 * FROM ") + table + QStringLiteral(" WHERE MatrixGroupUID <> ") + g0 +
                              QStringLiteral(" AND (InvUID > ") + i0 + QStringLiteral(" OR InvUID = ") + i0 +
                              QStringLiteral(" AND MatrixGroupUID > ") + g0 +
                              QStringLiteral(") ORDER BY InvUID, MatrixGroupUID"),
                          stop))
        return false;
    for (const MtxItemRecord &row : std::as_const(all)) {
        if (row.InvUID < first.InvUID)
            continue;
        if (!stop.isEmpty() && (row.InvUID > stop[0].InvUID || (row.InvUID == stop[0].InvUID && groupUID > stop[0].MatrixGroupUID)))
            break;
        walk << row;
    }
    gMtxItem = walk.isEmpty() ? first : walk.last();
    return true;
}

MatrixExpansion gfMatrixPromo_expand()
{
    const PromoPriceRecord shared = gGroupPromo;
    MatrixExpansion result;
    const qint32 groupUID = shared.GroupID - kMatrixGroupBase;
    QList<MtxItemRecord> walk;
    int members = 0;
    if (!gfbMatrix_items_walk(groupUID, walk, members))
        return result;
    result.walked = !walk.isEmpty();
    result.notReached = members - int(walk.size());
    if (walk.isEmpty())
        return result;

    QList<qint32> numbers;
    for (const MtxItemRecord &m : std::as_const(walk))
        numbers << m.InvUID;
    QHash<qint32, InventoryRecord> items;
    QList<PromoPriceRecord> existing;
    if (!mfbItems_read(numbers, items) || !gfbGroupMembers_read(shared.GroupID, existing)) {
        result.walked = false;
        return result;
    }
    QSet<QString> placed;
    for (const PromoPriceRecord &row : std::as_const(existing))
        placed.insert(mfsRow_place(row));

    WriteBatch batch(dbConnection());
    qint32 next = 0;
    for (const MtxItemRecord &member : std::as_const(walk)) {
        const auto item = items.constFind(member.InvUID);
        if (item == items.constEnd()) {
            result.missing << member.InvUID;
            continue;
        }
        gpPromo_clear();
        PromoPriceRecord entry = gPromo;
        entry.GroupID = shared.GroupID;
        gpGroupPromo_values_apply(entry);
        entry.Invuid = member.InvUID;
        entry.Store = qint16(gfdNumber_value(gsStore));
        entry.SL = item->SL;
        result.rows << entry;
        const QString place = mfsRow_place(entry);
        if (placed.contains(place))
            continue;
        // The highest number is read once; nobody else writes while the batch is open.
        if (next == 0)
            next = gfiPromo_UniqueID_next(kPromoTable);
        gPromo = entry;
        gPromo.UniqueID = next;
        if (gfbDB_RecordOp(kPromoTable, kOpInsert, kGroupSLEndKey)) {
            ++next;
            placed.insert(place);
        } else {
            ++result.failed;
        }
    }
    return result;
}

void gpMatrixPromo_change(QList<PromoPriceRecord> &rows)
{
    for (PromoPriceRecord &entry : rows) {
        gPromo = entry;
        if (!gfbDB_RecordOp(kPromoTable, kOpEqual, kGroupSLEndKey))
            continue;
        gpGroupPromo_values_apply(entry);
        gPromo = entry;
        if (gPromo.UniqueID == 0)
            gPromo.UniqueID = gfiPromo_UniqueID_next(kPromoTable);
        gfbGroupMember_update(kGroupSLEndKey);
    }
}

int gfiMatrixPromo_delete()
{
    const PromoPriceRecord shared = gGroupPromo;
    if (!gfbDB_RecordOp(kPromoTable, kOpGetFirst, kGroupStartKey))
        return 0;
    gPromo.GroupID = shared.GroupID;
    gPromo.StartDate = shared.StartDate;
    int deleted = 0;
    while (gfbDB_RecordOp(kPromoTable, kOpEqual, kGroupStartKey)) {
        // A row the server keeps would be found again and again.
        if (!gfbDB_RecordOp(kPromoTable, kOpDelete, kGroupStartKey))
            break;
        ++deleted;
    }
    return deleted;
}

} // namespace qln
