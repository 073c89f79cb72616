#include "BenchDelay.h"

#include "DelayRelay.h"
#include "platform/Connection.h"
#include "store/Database.h"

#include <QDir>
#include <benchmark/benchmark.h>
#include <memory>

namespace qln::bench {

namespace {

// The relay of the run, to the server the connection first reached; null when no delay
// is asked for or it could not listen.
DelayRelay *relay(double &delayMs)
{
    static double delay = 0;
    static const std::unique_ptr<DelayRelay> made = []() -> std::unique_ptr<DelayRelay> {
        bool given = false;
        delay = qEnvironmentVariable("QUILLON_BENCH_PG_DELAY_MS").toDouble(&given);
        if (!given || delay < 0 || dbConnection().provider() != Provider::Postgres)
            return nullptr;
        QString host;
        int port = 0;
        splitServer(dbConnection().info().server, host, port);
        // A host that is a folder is the server's unix socket.
        const std::string target = host.startsWith(QLatin1Char('/'))
                                       ? QDir(host).filePath(QStringLiteral(".s.PGSQL.%1").arg(port)).toStdString()
                                       : host.toStdString();
        DelayRelay::Connector connect = host.startsWith(QLatin1Char('/'))
                                            ? DelayRelay::Connector([target] { return DelayRelay::connectUnix(target); })
                                            : DelayRelay::Connector([target, port] { return DelayRelay::connectTcp(target, port); });
        auto r = std::make_unique<DelayRelay>(std::move(connect), std::chrono::microseconds(qRound64(delay * 500.0)));
        return r->start() ? std::move(r) : nullptr;
    }();
    delayMs = delay;
    return made.get();
}

QString directServer;
bool relayed = false; // a DelayedServer lives

bool reopen(const QString &server)
{
    ConnectionInfo info = dbConnection().info();
    info.server = server;
    gsDBServer = server;
    return dbConnection().open(info);
}

} // namespace

DelayedServer::DelayedServer(benchmark::State &state)
{
    double delayMs = 0;
    const DelayRelay *r = relay(delayMs);
    if (!r)
        return;
    directServer = dbConnection().info().server;
    m_through = relayed = true;
    if (!reopen(QStringLiteral("127.0.0.1\\%1").arg(r->port())))
        state.SkipWithError("the relay did not reach the server");
    state.counters["delay_ms"] = delayMs;
}

DelayedServer::~DelayedServer()
{
    if (m_through)
        reopen(directServer);
    relayed = false;
}

quint64 gfiRelay_requests()
{
    double delayMs = 0;
    const DelayRelay *r = relayed ? relay(delayMs) : nullptr;
    return r ? r->requests() : 0;
}

void gpRoundTrips_count(benchmark::State &state, quint64 before, double actions)
{
    if (relayed && actions > 0)
        state.counters["round_trips"] = double(gfiRelay_requests() - before) / actions;
}

} // namespace qln::bench
