// A promo expanded over a matrix of 1,000 items, against the same 1,000 rows written by
// hand-written INSERT statements in one transaction, and by one prepared insert.
#include "BenchDataSet.h"

#include "platform/Clock.h"
#include "platform/Connection.h"
#include "promo/MatrixPromos.h"
#include "store/Database.h"
#include "store/Inventory.h"
#include "store/MatrixGroups.h"
#include "store/MtxItem.h"
#include "store/RecordOps.h"
#include "support/ScriptedMessages.h"

#include <QSqlError>
#include <QSqlQuery>
#include <benchmark/benchmark.h>

using namespace qln;

namespace {

constexpr qint32 kMatrix = 900; // above the demo's matrices
constexpr qint32 kGroupID = kMatrixGroupBase + kMatrix;
const int kMembers = qEnvironmentVariableIsSet("QUILLON_BENCH_MATRIX_ITEMS") ? qEnvironmentVariableIntValue("QUILLON_BENCH_MATRIX_ITEMS") : 1000;

struct Member {
    qint32 recordNum;
    QString sl;
};

// The run's data set with one more matrix, of kMembers items that belong to no other.
const QList<Member> &members()
{
    static const QList<Member> made = [] {
        QList<Member> list;
        if (!bench::gfbDemo_open())
            return list;
        QSqlQuery q(dbConnection().database());
        if (!q.exec(QStringLiteral("SELECT RecordNum, SL FROM %1 WHERE RecordNum > 1000 ORDER BY RecordNum LIMIT %2")
                        .arg(dbuaTable[kInventoryTable].sSqlFile)
                        .arg(kMembers)))
            return list;
        while (q.next())
            list << Member{q.value(0).toInt(), q.value(1).toString()};
        dbConnection().database().transaction();
        gfiDB_Execute(QStringLiteral("DELETE FROM MtxItem WHERE MatrixGroupUID = %1").arg(kMatrix));
        gfiDB_Execute(QStringLiteral("DELETE FROM MTXGRPS WHERE GroupUID = %1").arg(kMatrix));
        gMatrixGroups = MatrixGroupRecord();
        gMatrixGroups.GroupUID = kMatrix, gMatrixGroups.GroupName = QStringLiteral("Bench Matrix").leftJustified(32);
        gMatrixGroups.InvUID = -kMatrix, gMatrixGroups.ItemID = QStringLiteral("BENCHMTX").leftJustified(15);
        gMatrixGroups.MatrixExists = gMatrixGroups.MatrixBuilt = -1;
        gfbDB_RecordOp(kMatrixGroupsTable, kOpInsert);
        for (int i = 0; i < list.size(); ++i) {
            gMtxItem = MtxItemRecord();
            gMtxItem.InvUID = list[i].recordNum, gMtxItem.MatrixGroupUID = kMatrix;
            gMtxItem.xAxisValue = QStringLiteral("X%1").arg(i % 40), gMtxItem.yAxisValue = QStringLiteral("Y%1").arg(i / 40);
            gMtxItem.xpos = qint16(i % 40), gMtxItem.Ypos = qint16(i / 40);
            gfbDB_RecordOp(kMtxItemTable, kOpInsert);
        }
        dbConnection().database().commit();
        return list;
    }();
    return made;
}

PromoPriceRecord shared()
{
    gpPromo_clear();
    PromoPriceRecord values = gPromo;
    values.GroupID = kGroupID, values.ChangeType = kChangeByPercent, values.PriceChange = Money::fromWhole(15);
    values.StartDate = QDateTime(Clock::today(), QTime(0, 0));
    values.EndDate = values.StartDate.addDays(7);
    return values;
}

void clearRows() { gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices WHERE GroupID = %1").arg(kGroupID)); }

int rowsWritten() { return gfiDB_RecordCount(kPromoTable, QStringLiteral("PromoPrices WHERE GroupID = %1").arg(kGroupID)); }

// The rows the expansion writes, as PromoPriceRecords with their numbers.
QList<PromoPriceRecord> handRows()
{
    QList<PromoPriceRecord> rows;
    qint32 next = gfiPromo_UniqueID_next(kPromoTable);
    const PromoPriceRecord values = shared();
    for (const Member &m : members()) {
        PromoPriceRecord row = values;
        row.SL = m.sl, row.Invuid = m.recordNum, row.UniqueID = next++, row.Store = 1;
        row.ChangeDate = values.StartDate;
        rows << row;
    }
    return rows;
}

void BM_MatrixPromoExpand(benchmark::State &state)
{
    if (members().size() != kMembers)
        return state.SkipWithError("no data set");
    test::ScriptedMessages boxes;
    gGroupPromo = shared();
    int written = 0;
    for (auto _ : state) {
        state.PauseTiming();
        clearRows();
        state.ResumeTiming();
        const MatrixExpansion done = gfMatrixPromo_expand();
        written = int(done.rows.size()) - done.failed;
    }
    state.counters["rows"] = rowsWritten();
    if (written != kMembers)
        state.SkipWithError("not every item got its row");
    clearRows();
}

// The same rows by INSERT texts written out in full, through the program's connection, in
// one transaction.
void BM_MatrixInsertsByHand(benchmark::State &state)
{
    if (members().size() != kMembers)
        return state.SkipWithError("no data set");
    QStringList statements;
    for (const PromoPriceRecord &row : handRows()) {
        gPromo = row;
        statements << QStringLiteral("INSERT INTO PromoPrices VALUES(") + gfsPromo_values_get() + QLatin1Char(')');
    }
    for (auto _ : state) {
        state.PauseTiming();
        clearRows();
        state.ResumeTiming();
        dbConnection().database().transaction();
        for (const QString &sql : std::as_const(statements))
            dbConnection().execute(sql);
        dbConnection().database().commit();
    }
    state.counters["rows"] = rowsWritten();
    clearRows();
}

// The same rows by one prepared insert with bound values: what the engine alone costs.
void BM_MatrixInsertsPrepared(benchmark::State &state)
{
    if (members().size() != kMembers)
        return state.SkipWithError("no data set");
    const QList<PromoPriceRecord> rows = handRows();
    for (auto _ : state) {
        state.PauseTiming();
        clearRows();
        state.ResumeTiming();
        QSqlDatabase &db = dbConnection().database();
        db.transaction();
        QSqlQuery q(db);
        q.prepare(QStringLiteral("INSERT INTO PromoPrices VALUES(?,?,?,?,?,?,?,?,?,?,?,?)"));
        for (const PromoPriceRecord &r : rows) {
            for (const QVariant &v : {QVariant(r.Store), QVariant(r.SL), QVariant(r.Dept), QVariant(r.StartDate), QVariant(r.EndDate),
                                      QVariant(r.ChangeDate), QVariant(r.PriceChange.toPlainText()), QVariant(r.ChangeType),
                                      QVariant(r.Poll), QVariant(r.GroupID), QVariant(r.Invuid), QVariant(r.UniqueID)})
                q.addBindValue(v);
            if (!q.exec())
                return state.SkipWithError(q.lastError().text().toUtf8().constData());
        }
        db.commit();
    }
    state.counters["rows"] = rowsWritten();
    clearRows();
}

} // namespace

BENCHMARK(BM_MatrixInsertsPrepared)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MatrixInsertsByHand)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MatrixPromoExpand)->Unit(benchmark::kMillisecond);
