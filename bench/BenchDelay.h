#pragma once
#include <QtGlobal>

namespace benchmark {
class State;
}

namespace qln::bench {

// While it lives, and QUILLON_BENCH_PG_DELAY_MS is set on PostgreSQL, the program's
// connection reaches the server through a relay that holds each message for half that many
// milliseconds each way ("0": the relay alone, for its own cost). Made after a benchmark's
// data is ready, so that the data set is built and changed directly. Counter: delay_ms.
class DelayedServer {
public:
    explicit DelayedServer(benchmark::State &state);
    ~DelayedServer();
    DelayedServer(const DelayedServer &) = delete;
    DelayedServer &operator=(const DelayedServer &) = delete;

private:
    bool m_through = false;
};

// Requests that went through the relay so far (0 without one): one per round trip.
quint64 gfiRelay_requests();
// Counter round_trips: `requests` per action, when there is a relay.
void gpRoundTrips_set(benchmark::State &state, quint64 requests, double actions);

} // namespace qln::bench
