// A full open of the eight tables on a demo data set, as start-up does it.
#include "DemoData.h"

#include "common/ProcessState.h"
#include "platform/Settings.h"
#include "shell/Tables.h"
#include "store/Database.h"
#include "support/TestDatabase.h"

#include <QDir>
#include <QFileInfo>
#include <benchmark/benchmark.h>

using namespace qln;

namespace {

// QUILLON_BENCH_DEMO names a data path made by quillon-demo-data; without it a set of
// QUILLON_BENCH_ITEMS items is made in a temporary folder first.
QString demoPath()
{
    static test::TestDatabase scratch;
    static QString path = [] {
        const QString given = qEnvironmentVariable("QUILLON_BENCH_DEMO");
        if (!given.isEmpty())
            return given;
        demo::DemoOptions o;
        o.path = scratch.dataPath();
        o.items = qEnvironmentVariableIntValue("QUILLON_BENCH_ITEMS") > 0 ? qEnvironmentVariableIntValue("QUILLON_BENCH_ITEMS") : 100000;
        o.provider = scratch.info().provider;
        o.server = scratch.info().server;
        o.user = scratch.info().user;
        o.database = scratch.info().database;
        demo::DemoReport report;
        QString error;
        demo::gfbDemo_build(o, report, error);
        return o.path;
    }();
    return path;
}

void BM_OpenAllTables(benchmark::State &state)
{
    const QString path = demoPath();
    if (!qEnvironmentVariableIsEmpty("QUILLON_BENCH_DEMO") && !qEnvironmentVariableIsSet("QUILLON_TEST_PG")) {
        SaveSetting(kZorSettings, QStringLiteral("DATABASE"), QStringLiteral("Provider"), QStringLiteral("sqlite"));
        SaveSetting(kZorSettings, QStringLiteral("DATABASE"), QStringLiteral("DBName"), QStringLiteral("ZORDATA1"));
    }
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
