// A full open of the eight tables on a demo data set, as start-up does it.
#include "BenchDataSet.h"

#include "common/ProcessState.h"
#include "shell/Tables.h"
#include "store/Database.h"

#include <benchmark/benchmark.h>

using namespace qln;

namespace {

void BM_OpenAllTables(benchmark::State &state)
{
    const QString &path = bench::gsDemo_path();
    if (path.isEmpty())
        return state.SkipWithError("no data set");
    for (auto _ : state) {
        dbaRecordset.clear();
        dbConnection().close();
        gsDataPath = path;
        const quint64 before = dbConnection().statementCount();
        if (!gfbTables_open() || !gfbTables_recordsets_open(0))
            state.SkipWithError("open failed");
        state.counters["statements"] = double(dbConnection().statementCount() - before);
    }
}

} // namespace

BENCHMARK(BM_OpenAllTables)->Unit(benchmark::kMillisecond)->Iterations(5);
