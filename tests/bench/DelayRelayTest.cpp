#include "DelayRelay.h"

#include <QTemporaryDir>
#include <arpa/inet.h>
#include <atomic>
#include <cstring>
#include <future>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace qln::bench;
using namespace std::chrono_literals;

namespace {

// A listening unix socket standing for the server.
class Target {
public:
    Target() : m_path(m_dir.filePath(QStringLiteral("s")).toStdString())
    {
        m_fd = socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strcpy(address.sun_path, m_path.c_str());
        EXPECT_EQ(bind(m_fd, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
        EXPECT_EQ(listen(m_fd, 64), 0);
    }
    ~Target() { close(m_fd); }
    const std::string &path() const { return m_path; }
    int accept() const { return timed(::accept(m_fd, nullptr, nullptr)); }

    // Reads fail rather than hang when the relay loses something.
    static int timed(int fd)
    {
        const timeval limit{10, 0};
        setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
        return fd;
    }

private:
    QTemporaryDir m_dir;
    std::string m_path;
    int m_fd = -1;
};

int connectTo(const DelayRelay &relay)
{
    const int fd = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(quint16(relay.port()));
    EXPECT_EQ(connect(fd, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    return Target::timed(fd);
}

void sendText(int fd, const std::string &text) { ASSERT_EQ(send(fd, text.data(), text.size(), MSG_NOSIGNAL), ssize_t(text.size())); }

// Everything up to `size` bytes or the end, whichever comes first.
std::string receive(int fd, size_t size)
{
    std::string got;
    char buffer[65536];
    while (got.size() < size) {
        const ssize_t n = recv(fd, buffer, std::min(sizeof buffer, size - got.size()), 0);
        if (n <= 0)
            break;
        got.append(buffer, size_t(n));
    }
    return got;
}

bool atEnd(int fd)
{
    char c;
    return recv(fd, &c, 1, 0) == 0;
}

} // namespace

// Small writes held, then passed on in their order; a long answer arrives whole and in order;
// a half-close follows the data before it, each way.
TEST(DelayRelay, HoldsChunksInOrderAndPassesHalfClose)
{
    Target target;
    const auto hold = 30ms;
    DelayRelay relay([&] { return DelayRelay::connectUnix(target.path()); }, hold);
    ASSERT_TRUE(relay.start());
    const int client = connectTo(relay);
    const int server = target.accept();
    ASSERT_GE(server, 0);

    const auto sent = std::chrono::steady_clock::now();
    for (const char *part : {"Parse;", "Bind;", "Execute;", "Sync;"})
        sendText(client, part);
    shutdown(client, SHUT_WR);
    EXPECT_EQ(receive(server, 100), "Parse;Bind;Execute;Sync;");
    EXPECT_GE(std::chrono::steady_clock::now() - sent, hold);
    EXPECT_TRUE(atEnd(server)) << "the client's half-close was not passed on";

    std::string answer(3 * 1024 * 1024, '\0');
    for (size_t i = 0; i < answer.size(); ++i)
        answer[i] = char('a' + (i * 7 + i / 4096) % 26);
    auto reading = std::async(std::launch::async, [&] { return receive(client, answer.size() + 1); });
    sendText(server, answer);
    close(server);
    EXPECT_TRUE(reading.get() == answer) << "the answer came back changed or cut";
    close(client);
}

// Links are independent: each client meets its own server side. A target that cannot be
// reached closes the client's connection, and the relay goes on serving the next.
TEST(DelayRelay, ServesManyLinksAndClosesOnUnreachableTarget)
{
    Target target;
    std::atomic<int> tries{0};
    // The first try finds the server down.
    DelayRelay relay([&] { return tries++ == 0 ? -1 : DelayRelay::connectUnix(target.path()); }, 1ms);
    ASSERT_TRUE(relay.start());
    const int refused = connectTo(relay);
    EXPECT_TRUE(atEnd(refused));
    close(refused);

    constexpr int kLinks = 24;
    auto echo = std::async(std::launch::async, [&] {
        for (int i = 0; i < kLinks; ++i) {
            const int server = target.accept();
            const std::string got = receive(server, 8);
            sendText(server, got + "!");
            close(server);
        }
    });
    std::vector<int> clients;
    for (int i = 0; i < kLinks; ++i)
        clients.push_back(connectTo(relay));
    for (int i = 0; i < kLinks; ++i)
        sendText(clients[i], QStringLiteral("link%1").arg(i, 4, 10, QLatin1Char('0')).toStdString());
    for (int i = 0; i < kLinks; ++i) {
        EXPECT_EQ(receive(clients[i], 100), QStringLiteral("link%1!").arg(i, 4, 10, QLatin1Char('0')).toStdString());
        EXPECT_TRUE(atEnd(clients[i]));
        close(clients[i]);
    }
    echo.get();
}
