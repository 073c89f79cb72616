#include "support/OwnServer.h"

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <gtest/gtest.h>
#include <unistd.h>

namespace qln::test {

namespace {

QString serverBin()
{
    QStringList found = QDir(QStringLiteral("/usr/lib/postgresql")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    std::sort(found.begin(), found.end(), [](const QString &a, const QString &b) { return a.toInt() < b.toInt(); });
    return found.isEmpty() ? QString() : QStringLiteral("/usr/lib/postgresql/%1/bin").arg(found.last());
}

// The server refuses to run as root: there it runs as its own user.
bool run(const QString &program, QStringList arguments)
{
    QString command = program;
    if (geteuid() == 0) {
        arguments.prepend(program);
        arguments.prepend(QStringLiteral("--"));
        arguments.prepend(QStringLiteral("postgres"));
        arguments.prepend(QStringLiteral("-u"));
        command = QStringLiteral("runuser");
    }
    QProcess p;
    p.setProcessChannelMode(QProcess::MergedChannels);
    p.start(command, arguments);
    if (!p.waitForFinished(120000) || p.exitCode() != 0) {
        ADD_FAILURE() << program.toStdString() << ": " << p.readAll().toStdString();
        return false;
    }
    return true;
}

} // namespace

bool OwnServer::available() { return QFile::exists(serverBin() + QStringLiteral("/pg_ctl")); }

OwnServer::OwnServer() : m_bin(serverBin())
{
    m_previous = qgetenv("QUILLON_TEST_PG");
    QFile::setPermissions(m_dir.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                                            QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther);
    if (geteuid() == 0)
        QProcess::execute(QStringLiteral("chown"), {QStringLiteral("postgres:"), m_dir.path()});
    m_port = 40000 + int(QRandomGenerator::global()->bounded(20000));
    m_server = m_dir.path() + QLatin1Char('\\') + QString::number(m_port);
    if (!run(m_bin + QStringLiteral("/initdb"), {QStringLiteral("-D"), m_dir.filePath(QStringLiteral("data")), QStringLiteral("-U"),
                                                 QStringLiteral("postgres"), QStringLiteral("--auth=trust"), QStringLiteral("-E"),
                                                 QStringLiteral("UTF8"), QStringLiteral("--locale=C.UTF-8")}))
        return;
    if (start())
        qputenv("QUILLON_TEST_PG", m_server.toUtf8());
}

OwnServer::~OwnServer()
{
    if (m_running)
        stop(true);
    qputenv("QUILLON_TEST_PG", m_previous);
}

bool OwnServer::pgctl(const QStringList &arguments)
{
    return run(m_bin + QStringLiteral("/pg_ctl"), QStringList{QStringLiteral("-D"), m_dir.filePath(QStringLiteral("data"))} + arguments);
}

bool OwnServer::start()
{
    m_running = pgctl({QStringLiteral("-w"), QStringLiteral("-l"), m_dir.filePath(QStringLiteral("server.log")), QStringLiteral("-o"),
                       QStringLiteral("-k %1 -c listen_addresses='' -p %2 -c fsync=off").arg(m_dir.path()).arg(m_port),
                       QStringLiteral("start")});
    return m_running;
}

bool OwnServer::stop(bool immediate)
{
    const bool stopped = pgctl({QStringLiteral("-w"), QStringLiteral("-m"), immediate ? QStringLiteral("immediate") : QStringLiteral("fast"),
                                QStringLiteral("stop")});
    if (stopped)
        m_running = false;
    return stopped;
}

} // namespace qln::test
