#include "BenchDelay.h"

#include "DelayRelay.h"
#include "platform/Connection.h"
#include "store/Database.h"

#include <QDir>
#include <benchmark/benchmark.h>
#include <memory>

namespace qln::bench {

namespace {

struct Relayed {
    double delayMs = 0;
    std::unique_ptr<DelayRelay> relay; // null when no delay is asked for or it could not listen
};

DelayRelay::Connector serverConnector()
{
    QString host;
    int port = 0;
    splitServer(dbConnection().info().server, host, port);
    // A host that is a folder names the server's unix socket.
    if (host.startsWith(QLatin1Char('/'))) {
        const std::string path = QDir(host).filePath(QStringLiteral(".s.PGSQL.%1").arg(port)).toStdString();
        return [path] { return DelayRelay::connectUnix(path); };
    }
    const std::string name = host.toStdString();
    return [name, port] { return DelayRelay::connectTcp(name, port); };
}

// The run's relay, to the server the connection reached first.
const Relayed &relayed()
{
    static const Relayed made = [] {
        Relayed r;
        bool given = false;
        r.delayMs = qEnvironmentVariable("QUILLON_BENCH_PG_DELAY_MS").toDouble(&given);
        if (!given || r.delayMs < 0 || dbConnection().provider() != Provider::Postgres)
            return r;
        r.relay = std::make_unique<DelayRelay>(serverConnector(), std::chrono::microseconds(qRound64(r.delayMs * 500.0)));
        if (!r.relay->start())
            r.relay.reset();
        return r;
    }();
    return made;
}

QString directServer;
bool through = false; // a DelayedServer lives

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
    const Relayed &r = relayed();
    if (!r.relay)
        return;
    directServer = dbConnection().info().server;
    m_through = through = true;
    if (!reopen(QStringLiteral("127.0.0.1\\%1").arg(r.relay->port())))
        state.SkipWithError("the relay did not reach the server");
    state.counters["delay_ms"] = r.delayMs;
}

DelayedServer::~DelayedServer()
{
    if (m_through)
        reopen(directServer);
    through = false;
}

quint64 gfiRelay_requests()
{
    return through ? relayed().relay->requests() : 0;
}

void gpRoundTrips_set(benchmark::State &state, quint64 requests, double actions)
{
    if (through && actions > 0)
        state.counters["round_trips"] = double(requests) / actions;
}

} // namespace qln::bench
