#pragma once
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace qln::bench {

// A TCP relay on 127.0.0.1 that holds every chunk it reads for a fixed time before passing
// it on, in both directions: the latency of a distant server added to a local one. Chunks
// keep their order and are held from the moment they were read, so a long answer is late by
// the hold once, not once per chunk. A half-close is passed on after the chunks before it;
// a target that cannot be reached closes the client's connection.
class DelayRelay {
public:
    // A socket connected to the target, or -1.
    using Connector = std::function<int()>;

    DelayRelay(Connector target, std::chrono::microseconds hold);
    ~DelayRelay(); // every link closed, every thread joined
    DelayRelay(const DelayRelay &) = delete;
    DelayRelay &operator=(const DelayRelay &) = delete;

    // Listening on an unused port; false when no socket could be had.
    bool start();
    int port() const { return m_port; }
    // Reads from the clients so far: a client that waits for each answer before it writes
    // again makes one per round trip.
    std::uint64_t requests() const { return m_requests.load(); }

    static int connectUnix(const std::string &path);
    static int connectTcp(const std::string &host, int port);

private:
    struct Link;
    void acceptLoop();
    void reap(bool all);

    Connector m_target;
    std::chrono::microseconds m_hold;
    int m_listen = -1;
    int m_port = 0;
    std::atomic<bool> m_stopping{false};
    std::atomic<std::uint64_t> m_requests{0};
    std::thread m_acceptor;
    std::vector<std::unique_ptr<Link>> m_links; // the acceptor's, until it is joined
};

} // namespace qln::bench
