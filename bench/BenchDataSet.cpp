#include "BenchDataSet.h"
#include "BenchDelay.h"

#include "DemoData.h"
#include "common/ProcessState.h"
#include "lookup/FlexGrid.h"
#include "platform/Clock.h"
#include "platform/Settings.h"
#include "promo/PromoPricing.h"
#include "shell/Startup.h"
#include "store/Database.h"
#include "store/RecordOps.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QAbstractButton>
#include <QSqlError>
#include <QSqlQuery>
#include <benchmark/benchmark.h>

namespace qln::bench {

namespace {

int fromEnvironment(const char *name, int fallback)
{
    const int value = qEnvironmentVariableIntValue(name);
    return value > 0 ? value : fallback;
}

} // namespace

const QString &gsDemo_path()
{
    static test::TestDatabase scratch;
    static const QString path = [] {
        const QString given = qEnvironmentVariable("QUILLON_BENCH_DEMO");
        if (!given.isEmpty()) {
            SaveSetting(kZorSettings, QStringLiteral("DATABASE"), QStringLiteral("Provider"), QStringLiteral("sqlite"));
            SaveSetting(kZorSettings, QStringLiteral("DATABASE"), QStringLiteral("DBName"), QStringLiteral("ZORDATA1"));
            return given;
        }
        demo::DemoOptions o =
            demo::gfDemo_options(scratch.info(), scratch.dataPath(), fromEnvironment("QUILLON_BENCH_ITEMS", 1000000));
        o.promos = fromEnvironment("QUILLON_BENCH_PROMOS", 100000);
        demo::DemoReport report;
        QString error;
        return demo::gfbDemo_build(o, report, error) ? o.path : QString();
    }();
    return path;
}

bool gfbDemo_open()
{
    static const bool opened = !gsDemo_path().isEmpty() && gfbStartup_prepare(QStringLiteral("/DATAPATH=") + gsDemo_path());
    return opened;
}

void gpPromos_add(int count, const std::function<void(int)> &fill)
{
    dbConnection().database().transaction();
    qint32 unique = gfiPromo_UniqueID_next(kPromoTable);
    for (int i = 0; i < count; ++i) {
        gpPromo_clear();
        fill(i);
        gPromo.UniqueID = unique++;
        gfbDB_RecordOp(kPromoTable, kOpInsert);
    }
    dbConnection().database().commit();
}

void gpClicks_time(benchmark::State &state, QAbstractButton &button, const FlexGrid &grid, const test::ScriptedMessages &boxes)
{
    quint64 statements = 0;
    const quint64 sent = gfiRelay_requests();
    for (auto _ : state) {
        const quint64 before = dbConnection().statementCount();
        button.click();
        statements = dbConnection().statementCount() - before;
    }
    gpRoundTrips_set(state, gfiRelay_requests() - sent, double(state.iterations()));
    state.counters["rows"] = grid.Rows() - 1;
    state.counters["statements"] = double(statements);
    if (!boxes.shown().isEmpty())
        state.SkipWithError(boxes.texts().join(QLatin1Char('|')).toUtf8().constData());
}

void gpQuery_time(benchmark::State &state, const QString &sql, int columns)
{
    QSqlQuery q(dbConnection().database());
    q.setForwardOnly(true);
    int rows = 0;
    const quint64 sent = gfiRelay_requests();
    for (auto _ : state) {
        q.prepare(sql);
        q.addBindValue(QDateTime(Clock::today(), QTime(0, 0)).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
        if (!q.exec())
            return state.SkipWithError(q.lastError().text().toUtf8().constData());
        rows = 0;
        while (q.next()) {
            for (int c = 0; c < columns; ++c)
                benchmark::DoNotOptimize(q.value(c));
            ++rows;
        }
    }
    state.counters["rows"] = rows;
    gpRoundTrips_set(state, gfiRelay_requests() - sent, double(state.iterations()));
}

} // namespace qln::bench
