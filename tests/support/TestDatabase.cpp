#include "support/TestDatabase.h"

#include "platform/Settings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace qln::test {

namespace {

ConnectionInfo serverInfo(const QString &database)
{
    ConnectionInfo info;
    info.provider = Provider::Postgres;
    info.server = qEnvironmentVariable("QUILLON_TEST_PG");
    info.user = qEnvironmentVariable("QUILLON_TEST_PG_USER", QStringLiteral("postgres"));
    info.database = database;
    return info;
}

void runOnServer(const QString &sql)
{
    Connection admin;
    if (!admin.open(serverInfo(QStringLiteral("postgres"))))
        ADD_FAILURE() << "cannot reach the test server: " << admin.lastError().description.toStdString();
    else if (!admin.execute(sql))
        ADD_FAILURE() << sql.toStdString() << ": " << admin.lastError().description.toStdString();
}

} // namespace

bool TestDatabase::onPostgres() { return !qEnvironmentVariableIsEmpty("QUILLON_TEST_PG"); }

Provider TestDatabase::provider() { return onPostgres() ? Provider::Postgres : Provider::SQLite; }

TestDatabase::TestDatabase()
{
    m_dataPath = QDir(m_dir.path()).filePath(QStringLiteral("data"));
    QDir().mkpath(m_dataPath);
    QDir().mkpath(m_dir.filePath(QStringLiteral("config")));
    qputenv("XDG_CONFIG_HOME", m_dir.filePath(QStringLiteral("config")).toUtf8());

    static int counter = 0;
    const QString name = onPostgres() ? QStringLiteral("qln_t_%1_%2").arg(QCoreApplication::applicationPid()).arg(++counter)
                                      : QStringLiteral("ZORDATA1");
    if (onPostgres()) {
        runOnServer(QStringLiteral("CREATE DATABASE %1").arg(name));
        m_info = serverInfo(name);
    } else {
        sqlite3 *db = nullptr;
        sqlite3_open(QDir(m_dataPath).filePath(name + QStringLiteral(".db")).toUtf8().constData(), &db);
        sqlite3_close(db);
        m_info.provider = Provider::SQLite;
        m_info.database = name;
    }
    m_info.dataPath = m_dataPath;

    SaveSetting(kZorSettings, QStringLiteral("DATABASE"), QStringLiteral("Provider"), providerName(m_info.provider));
    SaveSetting(kZorSettings, QStringLiteral("DATABASE"), QStringLiteral("DBName"), name);
    SaveSetting(kZorSettings, QStringLiteral("DATABASE"), QStringLiteral("Server"), m_info.server);
    SaveSetting(kZorSettings, QStringLiteral("DATABASE"), QStringLiteral("UserName"), m_info.user);
}

TestDatabase::~TestDatabase()
{
    if (onPostgres())
        runOnServer(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(m_info.database));
}

QString TestDatabase::readFile(const QString &name) const
{
    QFile f(file(name));
    if (!f.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(f.readAll());
}

std::unique_ptr<Connection> TestDatabase::connect() const
{
    auto connection = std::make_unique<Connection>();
    if (!connection->open(m_info))
        ADD_FAILURE() << "cannot open test database: " << connection->lastError().description.toStdString();
    return connection;
}

} // namespace qln::test
