// The record lookup on a large item file: a keystroke, a page and a line move of the paging
// grid against one hand-written indexed query that returns the same window of rows. The
// argument is the most rows one statement of the walk reads: 64 (the default, by windows)
// or 0 (each step by itself, as before).
#include "BenchDataSet.h"
#include "BenchDelay.h"

#include "lookup/DataGrid.h"
#include "lookup/GridSetUpBackOffice.h"
#include "lookup/WalkWindow.h"
#include "store/Database.h"
#include "store/Inventory.h"
#include "support/ScriptedMessages.h"

#include <QSqlQuery>
#include <benchmark/benchmark.h>

using namespace qln;

namespace {

class NullView final : public DataGridView {
public:
    int row() const override { return current; }
    void selectRow(int r) override { current = r; }
    void setHighLight(int) override {}
    void paintRow(int, const QStringList &cells, int) override { benchmark::DoNotOptimize(cells.size()); }
    int current = 1;
};

// Descriptions spread over the run's data set, to type.
const QStringList &descriptions()
{
    static const QStringList typed = [] {
        QStringList list;
        if (!bench::gfbDemo_open())
            return list;
        QSqlQuery q(dbConnection().database());
        q.exec(QStringLiteral("SELECT Description FROM ") + dbuaTable[kInventoryTable].sSqlFile +
               QStringLiteral(" WHERE RecordNum % 4999 = 7 ORDER BY RecordNum"));
        while (q.next())
            list << q.value(0).toString().trimmed().left(12);
        return list;
    }();
    return typed;
}

// A find-mode lookup of 13 rows on the description, as the item promos window opens it.
void lookupOpen(NullView &view)
{
    gaGridColumns.clear();
    iLookupFile = 1, iFirstCol = 0, iVendorMode = 1, bFindMode = true;
    sVendorFilter.clear(), sSearchText.clear();
    iGridRowCount = iGridRows = 14;
    gfbGridSetUp_Inventory();
    gpDataGrid_Size();
    gfbDataGrid_Reload(view);
}

void findAt(NullView &view, int i)
{
    const QStringList &typed = descriptions();
    sSearchText = typed[i % typed.size()];
    gfvDataGrid_Find(view, false);
}

void count(benchmark::State &state, quint64 before, qint64 actions)
{
    state.counters["statements"] = benchmark::Counter(double(dbConnection().statementCount() - before) / double(actions));
}

// The lookup opened on the run's data set; false (the benchmark skipped) without one.
bool lookupReady(benchmark::State &state, NullView &view)
{
    if (descriptions().isEmpty()) {
        state.SkipWithError("no data set");
        return false;
    }
    gpWalk_window_set(int(state.range(0)));
    lookupOpen(view);
    return true;
}

// The default back for the benchmarks that follow.
struct WindowRestored {
    ~WindowRestored() { gpWalk_window_set(64); }
};

void BM_Lookup_Keystroke(benchmark::State &state)
{
    test::ScriptedMessages boxes;
    const WindowRestored restored;
    NullView view;
    if (!lookupReady(state, view))
        return;
    const bench::DelayedServer delayed(state);
    int i = 0;
    const quint64 before = dbConnection().statementCount(), sent = bench::gfiRelay_requests();
    for (auto _ : state)
        findAt(view, i++);
    count(state, before, i);
    bench::gpRoundTrips_set(state, bench::gfiRelay_requests() - sent, i);
}

void pageOrLine(benchmark::State &state, int direction)
{
    test::ScriptedMessages boxes;
    const WindowRestored restored;
    NullView view;
    if (!lookupReady(state, view))
        return;
    const bench::DelayedServer delayed(state);
    int i = 0;
    qint64 moves = 0;
    quint64 sent = 0, requests = 0;
    auto restart = [&] {
        findAt(view, i++);
        gpDataGrid_SetRow(direction == kLineUp || direction == kPageUp ? 1 : iGridRows - 1, view);
    };
    restart();
    for (auto _ : state) {
        if ((bAtTop && (direction == kLineUp || direction == kPageUp)) || (bAtBottom && direction != kLineUp && direction != kPageUp)) {
            state.PauseTiming();
            restart();
            state.ResumeTiming();
        }
        const quint64 before = dbConnection().statementCount(), requested = bench::gfiRelay_requests();
        gpDataGrid_Move(view, direction);
        sent += dbConnection().statementCount() - before;
        requests += bench::gfiRelay_requests() - requested;
        ++moves;
    }
    state.counters["statements"] = benchmark::Counter(double(sent) / double(moves));
    bench::gpRoundTrips_set(state, requests, double(moves));
}

void BM_Lookup_PageDown(benchmark::State &state) { pageOrLine(state, kPageDown); }
void BM_Lookup_PageUp(benchmark::State &state) { pageOrLine(state, kPageUp); }
void BM_Lookup_LineDown(benchmark::State &state) { pageOrLine(state, kLineDown); }

// The same thirteen items by one prepared query on the description index.
void BM_Lookup_Baseline(benchmark::State &state)
{
    if (descriptions().isEmpty())
        return state.SkipWithError("no data set");
    const bench::DelayedServer delayed(state);
    const bool postgres = dbConnection().provider() == Provider::Postgres;
    const QString nulls = postgres ? QStringLiteral(" NULLS FIRST") : QString();
    QSqlQuery q(dbConnection().database());
    q.prepare(QStringLiteral("SELECT * FROM ") + dbuaTable[kInventoryTable].sSqlFile +
              QStringLiteral(" WHERE Description >= ? ORDER BY Description") + nulls + QStringLiteral(", SL") + nulls +
              QStringLiteral(" LIMIT 13"));
    int i = 0;
    const quint64 sent = bench::gfiRelay_requests();
    for (auto _ : state) {
        q.addBindValue(descriptions()[i++ % descriptions().size()]);
        if (!q.exec())
            return state.SkipWithError("baseline refused");
        int rows = 0;
        while (q.next())
            ++rows;
        benchmark::DoNotOptimize(rows);
    }
    bench::gpRoundTrips_set(state, bench::gfiRelay_requests() - sent, double(state.iterations()));
}

} // namespace

BENCHMARK(BM_Lookup_Baseline)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Lookup_Keystroke)->Arg(64)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Lookup_PageDown)->Arg(64)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Lookup_PageUp)->Arg(64)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Lookup_LineDown)->Arg(64)->Arg(0)->Unit(benchmark::kMillisecond);
