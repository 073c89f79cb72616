#include "BenchDataSet.h"

#include "DemoData.h"
#include "platform/Settings.h"
#include "shell/Startup.h"
#include "support/TestDatabase.h"

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

} // namespace qln::bench
