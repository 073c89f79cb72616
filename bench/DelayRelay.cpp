#include "DelayRelay.h"

#include <arpa/inet.h>
#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <deque>
#include <mutex>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <time.h>
#include <unistd.h>

namespace qln::bench {

namespace {

using Clock = std::chrono::steady_clock;

struct Chunk {
    Clock::time_point due;
    std::string bytes; // empty: the sender half-closed
};

// One direction: a reader that stamps what it reads, a writer that sends it when due.
struct Pipe {
    int from = -1, to = -1;
    std::mutex mutex;
    std::condition_variable ready;
    std::deque<Chunk> chunks;
};

void noDelay(int fd)
{
    const int on = 1;
    setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

void readLoop(Pipe &pipe, std::chrono::microseconds hold, std::atomic<std::uint64_t> *reads)
{
    std::string buffer(256 * 1024, '\0');
    for (;;) {
        const ssize_t n = recv(pipe.from, buffer.data(), buffer.size(), 0);
        if (n < 0 && errno == EINTR)
            continue;
        if (n > 0 && reads)
            reads->fetch_add(1, std::memory_order_relaxed);
        Chunk chunk{Clock::now() + hold, n > 0 ? buffer.substr(0, size_t(n)) : std::string()};
        {
            const std::lock_guard lock(pipe.mutex);
            pipe.chunks.push_back(std::move(chunk));
        }
        pipe.ready.notify_one();
        if (n <= 0)
            return;
    }
}

bool sendAll(int fd, const std::string &bytes)
{
    for (size_t sent = 0; sent < bytes.size();) {
        const ssize_t n = send(fd, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        sent += size_t(n);
    }
    return true;
}

void sleepUntil(Clock::time_point due)
{
    // steady_clock is CLOCK_MONOTONIC here; an absolute sleep does not drift on EINTR.
    const auto ns = std::chrono::duration_cast<std::chrono::nanoseconds>(due.time_since_epoch()).count();
    const timespec at{time_t(ns / 1000000000), long(ns % 1000000000)};
    while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &at, nullptr) == EINTR) {
    }
}

// Returns when the reader's end was passed on, or the other side would take no more (then
// both sockets are shut, which ends the other three loops of the link as well).
void writeLoop(Pipe &pipe)
{
    // The default slack of 50 us would be most of a short hold.
    prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL);
    for (;;) {
        Chunk chunk;
        {
            std::unique_lock lock(pipe.mutex);
            pipe.ready.wait(lock, [&] { return !pipe.chunks.empty(); });
            chunk = std::move(pipe.chunks.front());
            pipe.chunks.pop_front();
        }
        // The last moments are waited awake: on a busy machine a sleeper's wake-up comes tens
        // of microseconds late, on every message.
        const Clock::time_point wake = chunk.due - std::chrono::microseconds(100);
        if (Clock::now() < wake)
            sleepUntil(wake);
        while (Clock::now() < chunk.due)
            std::this_thread::yield();
        if (chunk.bytes.empty()) {
            shutdown(pipe.to, SHUT_WR);
            return;
        }
        if (!sendAll(pipe.to, chunk.bytes)) {
            shutdown(pipe.to, SHUT_RDWR);
            shutdown(pipe.from, SHUT_RDWR);
            return;
        }
    }
}

} // namespace

struct DelayRelay::Link {
    int client = -1, server = -1;
    Pipe up, down;
    std::thread threads[4];
    std::atomic<int> running{4};

    Link(int c, int s, std::chrono::microseconds hold, std::atomic<std::uint64_t> &requests) : client(c), server(s)
    {
        up.from = down.to = client;
        up.to = down.from = server;
        auto run = [this](auto work) {
            return std::thread([this, work] {
                work();
                running.fetch_sub(1);
            });
        };
        threads[0] = run([this, hold, &requests] { readLoop(up, hold, &requests); });
        threads[1] = run([this] { writeLoop(up); });
        threads[2] = run([this, hold] { readLoop(down, hold, nullptr); });
        threads[3] = run([this] { writeLoop(down); });
    }

    ~Link()
    {
        shutdown(client, SHUT_RDWR);
        shutdown(server, SHUT_RDWR);
        for (std::thread &t : threads)
            t.join();
        close(client);
        close(server);
    }
};

DelayRelay::DelayRelay(Connector target, std::chrono::microseconds hold) : m_target(std::move(target)), m_hold(hold) {}

DelayRelay::~DelayRelay()
{
    m_stopping = true;
    if (m_listen >= 0) {
        shutdown(m_listen, SHUT_RDWR); // wakes the acceptor
        m_acceptor.join();
        close(m_listen);
    }
    reap(true);
}

bool DelayRelay::start()
{
    m_listen = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (m_listen < 0)
        return false;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (bind(m_listen, reinterpret_cast<sockaddr *>(&address), length) != 0 || listen(m_listen, 64) != 0 ||
        getsockname(m_listen, reinterpret_cast<sockaddr *>(&address), &length) != 0) {
        close(m_listen);
        m_listen = -1;
        return false;
    }
    m_port = ntohs(address.sin_port);
    m_acceptor = std::thread([this] { acceptLoop(); });
    return true;
}

void DelayRelay::acceptLoop()
{
    while (!m_stopping) {
        const int client = accept4(m_listen, nullptr, nullptr, SOCK_CLOEXEC);
        if (client < 0) {
            if (errno != EINTR && !m_stopping)
                std::this_thread::sleep_for(std::chrono::milliseconds(10)); // out of descriptors: let links end
            continue;
        }
        reap(false);
        const int server = m_target();
        if (server < 0) {
            close(client);
            continue;
        }
        noDelay(client);
        m_links.push_back(std::make_unique<Link>(client, server, m_hold, m_requests));
    }
}

void DelayRelay::reap(bool all)
{
    std::erase_if(m_links, [all](const std::unique_ptr<Link> &link) { return all || link->running == 0; });
}

int DelayRelay::connectUnix(const std::string &path)
{
    sockaddr_un address{};
    if (path.size() >= sizeof address.sun_path)
        return -1;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (fd >= 0 && connect(fd, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0)
        return fd;
    if (fd >= 0)
        close(fd);
    return -1;
}

int DelayRelay::connectTcp(const std::string &host, int port)
{
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo *found = nullptr;
    if (getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &found) != 0)
        return -1;
    int fd = -1;
    for (addrinfo *a = found; a && fd < 0; a = a->ai_next) {
        fd = socket(a->ai_family, a->ai_socktype | SOCK_CLOEXEC, a->ai_protocol);
        if (fd >= 0 && connect(fd, a->ai_addr, a->ai_addrlen) != 0) {
            close(fd);
            fd = -1;
        }
    }
    freeaddrinfo(found);
    if (fd >= 0)
        noDelay(fd);
    return fd;
}

} // namespace qln::bench
