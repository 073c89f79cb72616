// The matrix choices, the matrix picker and the tag-link list, read in sets and (the
// reference: Arg 0) by their keyed reads and walk steps, each against one hand-written query
// that gives the same rows. The run's data set gets 200 built matrices, every other one
// with a promo of 50 items.
#include "BenchDataSet.h"

#include "platform/Clock.h"
#include "platform/Connection.h"
#include "promo/MatrixPromos.h"
#include "promo/PromoItems.h"
#include "promo/PromoWalk.h"
#include "promo/TagLink.h"
#include "store/Database.h"
#include "store/Inventory.h"
#include "store/MatrixGroups.h"
#include "store/RecordOps.h"

#include <QSqlQuery>
#include <benchmark/benchmark.h>

using namespace qln;

namespace {

constexpr int kMatrices = 200, kRowsPerPromo = 50;
constexpr qint32 kFirstMatrix = 1000; // above the demo's matrices

bool prepared()
{
    static const bool done = [] {
        if (!bench::gfbDemo_open())
            return false;
        QList<std::pair<qint32, QString>> items;
        QSqlQuery q(dbConnection().database());
        if (!q.exec(QStringLiteral("SELECT RecordNum, SL FROM %1 WHERE RecordNum > 1000 ORDER BY RecordNum LIMIT %2")
                        .arg(dbuaTable[kInventoryTable].sSqlFile)
                        .arg(kRowsPerPromo * kMatrices)))
            return false;
        while (q.next())
            items << std::pair{q.value(0).toInt(), q.value(1).toString()};
        if (items.isEmpty())
            return false;
        dbConnection().database().transaction();
        gfiDB_Execute(QStringLiteral("DELETE FROM MTXGRPS WHERE GroupUID >= %1").arg(kFirstMatrix));
        gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices WHERE GroupID >= %1").arg(kFirstMatrix + kMatrixGroupBase));
        for (int m = 0; m < kMatrices; ++m) {
            gMatrixGroups = MatrixGroupRecord();
            gMatrixGroups.GroupUID = kFirstMatrix + m;
            gMatrixGroups.GroupName = QStringLiteral("Bench matrix %1").arg(m).leftJustified(32);
            gMatrixGroups.InvUID = -(kFirstMatrix + m), gMatrixGroups.ItemID = QStringLiteral("BMTX%1").arg(m).leftJustified(15);
            gMatrixGroups.MatrixExists = gMatrixGroups.MatrixBuilt = -1;
            gfbDB_RecordOp(kMatrixGroupsTable, kOpInsert);
        }
        dbConnection().database().commit();
        bench::gpPromos_add(kMatrices / 2 * kRowsPerPromo, [&items](int i) {
            const auto &[recordNum, sl] = items[(i * 2) % items.size()];
            gPromo.GroupID = kMatrixGroupBase + kFirstMatrix + i / kRowsPerPromo * 2;
            gPromo.Invuid = recordNum, gPromo.SL = sl, gPromo.Store = 1;
            gPromo.StartDate = QDateTime(Clock::today(), QTime(0, 0)), gPromo.EndDate = gPromo.StartDate.addDays(7);
            gPromo.ChangeType = kChangeByPercent, gPromo.PriceChange = Money::fromWhole(15);
        });
        return true;
    }();
    return done;
}

// The baselines of the matrix lists take no date: their bound "?" is compared with nothing.

// One list, its lines and the statements of one run counted.
void listTime(benchmark::State &state, const std::function<QStringList()> &list)
{
    if (!prepared())
        return state.SkipWithError("no data set");
    const bool sets = state.range(0) == 1;
    gpListSets_set(sets);
    gpPromoItems_batch_set(sets ? PromoItems::kDefaultBatch : 0);
    qsizetype lines = 0;
    quint64 statements = 0;
    for (auto _ : state) {
        const quint64 before = dbConnection().statementCount();
        lines = list().size();
        statements = dbConnection().statementCount() - before;
    }
    gpListSets_set(true);
    gpPromoItems_batch_set(PromoItems::kDefaultBatch);
    state.counters["rows"] = double(lines);
    state.counters["statements"] = double(statements);
}

void BM_MatrixChoices(benchmark::State &state) { listTime(state, gfMatrixPromo_choices); }

// The choices: every matrix with a promo row, by name.
void BM_MatrixChoicesQuery(benchmark::State &state)
{
    if (!prepared())
        return state.SkipWithError("no data set");
    bench::gpQuery_time(state,
                        QStringLiteral("SELECT DISTINCT p.GroupID, m.GroupName FROM PromoPrices p JOIN MTXGRPS m ON m.GroupUID = "
                                       "p.GroupID - 1000 WHERE p.GroupID > 1000 AND CAST(? AS TEXT) <> '' ORDER BY p.GroupID"),
                        2);
}

void BM_MatrixPicker(benchmark::State &state) { listTime(state, gfMatrixList_entries); }

// The picker: the built matrices with no promo row from the starting date.
void BM_MatrixPickerQuery(benchmark::State &state)
{
    if (!prepared())
        return state.SkipWithError("no data set");
    bench::gpQuery_time(state,
                        QStringLiteral("SELECT m.GroupUID, m.GroupName FROM MTXGRPS m WHERE (m.MatrixExists & m.MatrixBuilt) <> 0 AND "
                                       "NOT EXISTS (SELECT 1 FROM PromoPrices p WHERE p.GroupID = m.GroupUID + 1000 AND "
                                       "p.StartDate >= '2009-01-01 00:00:00') AND CAST(? AS TEXT) <> ''"),
                        2);
}

void BM_TagLinkList(benchmark::State &state)
{
    listTime(state, [] { return gfTagLines_read(false, Clock::today(), Clock::today()); });
}

// The tag-link list: the promos running today with their items, in the walk's order.
void BM_TagLinkQuery(benchmark::State &state)
{
    if (!prepared())
        return state.SkipWithError("no data set");
    bench::gpQuery_time(state,
                        QStringLiteral("SELECT i.RecordNum, i.Description, i.Price, p.ChangeType, p.PriceChange FROM PromoPrices p JOIN ") +
                            dbuaTable[kInventoryTable].sSqlFile +
                            QStringLiteral(" i ON i.RecordNum = p.Invuid WHERE ? BETWEEN p.StartDate AND p.EndDate ORDER BY p.Invuid, "
                                           "p.StartDate"),
                        5);
}

} // namespace

BENCHMARK(BM_MatrixChoicesQuery)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MatrixChoices)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MatrixPickerQuery)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MatrixPicker)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TagLinkQuery)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TagLinkList)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TagLinkList)->Arg(0)->Iterations(1)->Unit(benchmark::kMillisecond);
