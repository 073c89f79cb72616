#pragma once
#include <QString>
#include <QTemporaryDir>

namespace qln::test {

// A PostgreSQL cluster of the test's own, on a unix socket in a temporary folder, that the
// test may stop and start again. While it lives, QUILLON_TEST_PG names it, so that the
// databases the test makes are made there.
class OwnServer {
public:
    OwnServer();
    ~OwnServer();
    OwnServer(const OwnServer &) = delete;
    OwnServer &operator=(const OwnServer &) = delete;

    static bool available(); // the server's programs are installed
    bool running() const { return m_running; }
    const QString &server() const { return m_server; } // "<socket folder>\<port>"

    // A fast stop ends the server's sessions cleanly; an immediate one kills them.
    bool stop(bool immediate = false);
    bool start();

private:
    bool pgctl(const QStringList &arguments);

    QTemporaryDir m_dir;
    QString m_bin, m_server;
    int m_port = 0;
    bool m_running = false;
    QByteArray m_previous;
};

} // namespace qln::test
