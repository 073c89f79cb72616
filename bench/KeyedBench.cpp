// Keyed reads and walks through the whole layer against one hand-written indexed query.
#include "BenchDatabase.h"

#include "store/FieldCodec.h"
#include "store/RecordOps.h"

#include <QSqlQuery>
#include <benchmark/benchmark.h>

using namespace qln;
using namespace qln::bench;

namespace {

struct BenchItem {
    QString sl, itemId, description, vendor, dept;
    Money price, cost;
    QString taxCode, status;
    qint32 recordNum = 0;
} gItem;

void benchKey(int iTable, int iKey)
{
    switch (iKey) {
    case 1: gpDB_KeySet(iTable, 1, {{0, gItem.sl}}); break;
    case 8: gpDB_KeySet(iTable, 2, {{4, gItem.dept}, {0, gItem.sl}}); break;
    case 6: gpDB_KeySet(iTable, 3, {{3, gItem.vendor}, {4, gItem.dept}, {0, gItem.sl}}); break;
    default: break;
    }
}

void benchRead(int t)
{
    gItem = {gfsField_text(t, 0, 8), gfsField_text(t, 1, 25), gfsField_text(t, 2, 30), gfsField_text(t, 3, 15),
             gfsField_text(t, 4, 11), gfcField_money(t, 5), gfcField_money(t, 6), gfsField_text(t, 7, 1),
             gfsField_text(t, 8, 1), gfiField_number(t, 9)};
}

void setUp()
{
    BenchDatabase::instance();
    gpDB_table_routines_set(kBenchTable, {benchKey, benchRead, nullptr, nullptr});
}

// Positions the buffer on sample row i, as a caller's key would be.
void aim(int i)
{
    const BenchDatabase &db = BenchDatabase::instance();
    if (db.sampleSLs().isEmpty())
        return;
    const int n = i % db.sampleSLs().size();
    gItem.sl = db.sampleSLs()[n];
    gItem.dept = db.sampleDepts()[n];
    gItem.vendor = db.sampleVendors()[n];
}

void keyed(benchmark::State &state, int operation, int key)
{
    setUp();
    int i = 0;
    for (auto _ : state) {
        aim(i++);
        if (!gfbDB_RecordOp(kBenchTable, operation, key))
            state.SkipWithError("no row");
    }
}

// The same rows by one prepared row-value query: the floor any layer stands on.
void handWritten(benchmark::State &state, int segments, bool forward)
{
    setUp();
    const QString columns = segments == 2 ? QStringLiteral("DeptCode, SL") : QStringLiteral("VendorCode, DeptCode, SL");
    const QString marks = segments == 2 ? QStringLiteral("?, ?") : QStringLiteral("?, ?, ?");
    // In the direction the tables' indexes keep (NULLs lowest, as the suite's server sorts).
    const bool postgres = dbConnection().provider() == Provider::Postgres;
    const QString nulls = postgres ? (forward ? QStringLiteral(" NULLS FIRST") : QStringLiteral(" NULLS LAST")) : QString();
    QString order = forward ? columns : QString(columns).replace(QStringLiteral(","), QStringLiteral(" DESC,")) + QStringLiteral(" DESC");
    order = order.replace(QStringLiteral(","), nulls + QStringLiteral(",")) + nulls;
    QSqlQuery q(dbConnection().database());
    q.prepare(QStringLiteral("SELECT * FROM BenchInvt WHERE (%1) %2 (%3) ORDER BY %4 LIMIT 1")
                  .arg(columns, forward ? QStringLiteral(">") : QStringLiteral("<"), marks, order));
    int i = 0;
    for (auto _ : state) {
        aim(i++);
        if (segments == 3)
            q.addBindValue(gItem.vendor);
        q.addBindValue(gItem.dept);
        q.addBindValue(gItem.sl);
        if (!q.exec() || !q.next())
            state.SkipWithError("no row");
        benchmark::DoNotOptimize(q.value(0));
    }
}

void BM_Equal_2seg(benchmark::State &s) { keyed(s, kOpEqual, 8); }
void BM_GreaterEqual_2seg(benchmark::State &s) { keyed(s, kOpGreaterEqual, 8); }
void BM_GetNext_2seg(benchmark::State &s) { keyed(s, kOpGetNext, 8); }
void BM_GetPrevious_2seg(benchmark::State &s) { keyed(s, kOpGetPrevious, 8); }
void BM_Equal_3seg(benchmark::State &s) { keyed(s, kOpEqual, 6); }
void BM_GreaterEqual_3seg(benchmark::State &s) { keyed(s, kOpGreaterEqual, 6); }
void BM_GetNext_3seg(benchmark::State &s) { keyed(s, kOpGetNext, 6); }
void BM_GetPrevious_3seg(benchmark::State &s) { keyed(s, kOpGetPrevious, 6); }
void BM_Baseline_Next_2seg(benchmark::State &s) { handWritten(s, 2, true); }
void BM_Baseline_Previous_2seg(benchmark::State &s) { handWritten(s, 2, false); }
void BM_Baseline_Next_3seg(benchmark::State &s) { handWritten(s, 3, true); }
void BM_Baseline_Previous_3seg(benchmark::State &s) { handWritten(s, 3, false); }

} // namespace

BENCHMARK(BM_Baseline_Next_2seg)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Baseline_Previous_2seg)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Baseline_Next_3seg)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Baseline_Previous_3seg)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Equal_2seg)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_GreaterEqual_2seg)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_GetNext_2seg)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_GetPrevious_2seg)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Equal_3seg)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_GreaterEqual_3seg)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_GetNext_3seg)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_GetPrevious_3seg)->Unit(benchmark::kMicrosecond);
