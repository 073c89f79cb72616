#include "platform/ServerAdmin.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace qln {

namespace {

// A short-lived connection for one catalogue question.
template <typename Fn>
bool withDatabase(const ConnectionInfo &info, const QString &database, DbError &error, Fn &&fn)
{
    ConnectionInfo target = info;
    target.database = database;
    Connection connection;
    if (!connection.open(target)) {
        error = connection.lastError();
        return false;
    }
    QSqlQuery query(connection.database());
    fn(query);
    return true;
}

} // namespace

bool ServerAdmin::connect(const ConnectionInfo &info)
{
    m_info = info;
    m_status = 0;
    m_error.clear();
    if (info.provider == Provider::SQLite) {
        if (!QFileInfo(info.dataPath).isDir()) {
            m_error = {DbError::kUnspecified, QStringLiteral("Data folder \"%1\" not found").arg(info.dataPath),
                       QStringLiteral("QSQLITE")};
            return false;
        }
        m_status = 1;
        return true;
    }
    const bool ok = withDatabase(info, QStringLiteral("postgres"), m_error, [](QSqlQuery &) {});
    m_status = ok ? 1 : 0;
    return ok;
}

QList<ServerAdmin::Entry> ServerAdmin::databases()
{
    QList<Entry> list;
    m_error.clear();
    if (m_info.provider == Provider::SQLite) {
        const QFileInfoList files = QDir(m_info.dataPath).entryInfoList({QStringLiteral("*.db")}, QDir::Files, QDir::Name);
        for (const QFileInfo &f : files)
            list << Entry{f.completeBaseName(), false};
        return list;
    }
    withDatabase(m_info, QStringLiteral("postgres"), m_error, [&](QSqlQuery &q) {
        q.exec(QStringLiteral("SELECT datname, datistemplate OR datname = 'postgres' FROM pg_database ORDER BY datname"));
        while (q.next())
            list << Entry{q.value(0).toString(), q.value(1).toBool()};
    });
    return list;
}

QList<ServerAdmin::Entry> ServerAdmin::tables(const QString &database)
{
    QList<Entry> list;
    const QString sql = m_info.provider == Provider::SQLite
                            ? QStringLiteral("SELECT name, name LIKE 'sqlite_%' FROM sqlite_master WHERE type = 'table' ORDER BY name")
                            : QStringLiteral("SELECT c.relname, n.nspname <> 'public' FROM pg_class c JOIN pg_namespace n ON "
                                             "n.oid = c.relnamespace WHERE c.relkind IN ('r', 'p') AND n.nspname NOT LIKE "
                                             "'pg_toast%' ORDER BY c.relname");
    withDatabase(m_info, database, m_error, [&](QSqlQuery &q) {
        q.exec(sql);
        while (q.next())
            list << Entry{q.value(0).toString(), q.value(1).toBool()};
    });
    return list;
}

} // namespace qln
