// Two short lists: the member grid of a group of QUILLON_BENCH_GRID_MEMBERS items (500 unless
// told) against one join that gives the same rows, and the daily promos list against one
// query. The grid argument is the rows whose items share a statement (0: a keyed read each).
#include "BenchDataSet.h"
#include "BenchDelay.h"

#include "lookup/FlexGrid.h"
#include "platform/Clock.h"
#include "promo/DailyPromos.h"
#include "promo/GroupMembers.h"
#include "promo/GroupMembersGrid.h"
#include "promo/PromoItems.h"
#include "promo/PromoPricing.h"
#include "store/Database.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"
#include "support/ScriptedMessages.h"

#include <QSqlError>
#include <QSqlQuery>
#include <benchmark/benchmark.h>

using namespace qln;

namespace {

constexpr qint32 kGroup = 13; // past the demo's groups and the group benchmark's

// The run's data set with a group whose members are spread over the item table.
bool groupReady()
{
    static const bool ready = [] {
        if (!bench::gfbDemo_open())
            return false;
        const int wanted = qEnvironmentVariableIsSet("QUILLON_BENCH_GRID_MEMBERS")
                               ? qEnvironmentVariableIntValue("QUILLON_BENCH_GRID_MEMBERS")
                               : 500;
        QList<std::pair<QString, qint32>> live, items;
        QSqlQuery q(dbConnection().database());
        q.setForwardOnly(true);
        if (!q.exec(QStringLiteral("SELECT SL, RecordNum FROM %1 WHERE Status <> 'D' ORDER BY RecordNum").arg(dbuaTable[kInventoryTable].sSqlFile)))
            return false;
        while (q.next())
            live.append({q.value(0).toString(), q.value(1).toInt()});
        for (qsizetype i = 0; i < wanted && wanted <= live.size(); ++i)
            items.append(live[i * live.size() / wanted]);
        gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices WHERE GroupID = %1").arg(kGroup));
        const QDateTime start(Clock::today(), QTime(0, 0));
        bench::gpPromos_add(int(items.size()), [&](int i) {
            gPromo.SL = items[i].first, gPromo.Invuid = items[i].second, gPromo.GroupID = kGroup, gPromo.Store = 1;
            gPromo.StartDate = gPromo.ChangeDate = start, gPromo.EndDate = start.addDays(30);
            gPromo.ChangeType = kChangeByPercent, gPromo.PriceChange = Money::fromWhole(15);
        });
        return items.size() == wanted;
    }();
    return ready;
}

void BM_GroupMemberGrid(benchmark::State &state)
{
    if (!groupReady())
        return state.SkipWithError("no data set");
    const bench::DelayedServer delayed(state);
    test::ScriptedMessages boxes;
    gpPromoItems_batch_set(int(state.range(0)));
    FlexGrid grid;
    quint64 statements = 0;
    const quint64 sent = bench::gfiRelay_requests();
    for (auto _ : state) {
        const quint64 before = dbConnection().statementCount();
        QList<PromoPriceRecord> rows;
        if (!gfbGroupMembers_read(kGroup, rows))
            return state.SkipWithError("the members were not read");
        gfbGroupMembers_fill(grid, rows, GroupMembersFill());
        statements = dbConnection().statementCount() - before;
    }
    gpPromoItems_batch_set(PromoItems::kDefaultBatch);
    bench::gpRoundTrips_set(state, bench::gfiRelay_requests() - sent, double(state.iterations()));
    state.counters["rows"] = grid.Rows() - 1;
    state.counters["statements"] = double(statements);
    if (!boxes.shown().isEmpty())
        state.SkipWithError(boxes.texts().join(QLatin1Char('|')).toUtf8().constData());
}

// The same rows with their items' fields, in the grid's order.
void BM_GroupMemberJoin(benchmark::State &state)
{
    if (!groupReady())
        return state.SkipWithError("no data set");
    const bench::DelayedServer delayed(state);
    bench::gpQuery_time(state,
                        QStringLiteral("SELECT p.*, i.SL, i.Description, i.Price FROM PromoPrices p LEFT JOIN %1 i ON i.RecordNum = "
                                       "p.Invuid WHERE p.GroupID = %2 AND p.EndDate >= ? ORDER BY p.SL")
                            .arg(dbuaTable[kInventoryTable].sSqlFile)
                            .arg(kGroup),
                        15);
}

void BM_DailyList(benchmark::State &state)
{
    if (!bench::gfbDemo_open())
        return state.SkipWithError("no data set");
    const bench::DelayedServer delayed(state);
    qsizetype rows = 0;
    quint64 statements = 0;
    const quint64 sent = bench::gfiRelay_requests();
    for (auto _ : state) {
        const quint64 before = dbConnection().statementCount();
        QList<PromoPriceRecord> daily;
        if (!gfbDailyPromos_read(daily))
            return state.SkipWithError("the list was not read");
        for (const PromoPriceRecord &row : std::as_const(daily))
            benchmark::DoNotOptimize(gfDailyPromo_cells(row));
        rows = daily.size();
        statements = dbConnection().statementCount() - before;
    }
    state.counters["rows"] = double(rows);
    state.counters["statements"] = double(statements);
    bench::gpRoundTrips_set(state, bench::gfiRelay_requests() - sent, double(state.iterations()));
}

// The same rows, expired ones too, in the key's order.
void BM_DailyQuery(benchmark::State &state)
{
    if (!bench::gfbDemo_open())
        return state.SkipWithError("no data set");
    const bench::DelayedServer delayed(state);
    QSqlQuery q(dbConnection().database());
    q.setForwardOnly(true);
    int rows = 0;
    const quint64 sent = bench::gfiRelay_requests();
    for (auto _ : state) {
        if (!q.exec(QStringLiteral("SELECT * FROM PromoPrices WHERE GroupID < 0 ORDER BY GroupID, EndDate")))
            return state.SkipWithError(q.lastError().text().toUtf8().constData());
        for (rows = 0; q.next(); ++rows)
            for (int c = 0; c < 12; ++c)
                benchmark::DoNotOptimize(q.value(c));
    }
    state.counters["rows"] = rows;
    bench::gpRoundTrips_set(state, bench::gfiRelay_requests() - sent, double(state.iterations()));
}

} // namespace

BENCHMARK(BM_GroupMemberJoin)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GroupMemberGrid)->Arg(PromoItems::kDefaultBatch)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DailyQuery)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DailyList)->Unit(benchmark::kMillisecond);
