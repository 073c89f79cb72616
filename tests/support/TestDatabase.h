#pragma once
#include "platform/Connection.h"

#include "support/QtPrinters.h"

#include <QTemporaryDir>
#include <memory>

namespace qln::test {

// A fresh, empty database for one test on the engine under test: a SQLite file in a
// temporary data path, or a new database on the PostgreSQL server that QUILLON_TEST_PG
// names. Settings ("ZOR Settings", section "DATABASE") point at it, in a temporary
// XDG_CONFIG_HOME.
class TestDatabase {
public:
    TestDatabase();
    ~TestDatabase();

    static bool onPostgres();
    static Provider provider();

    const QString &dataPath() const { return m_dataPath; }
    const ConnectionInfo &info() const { return m_info; }
    QString file(const QString &name) const { return m_dataPath + QLatin1Char('/') + name; }
    QString readFile(const QString &name) const;

    // A connection of its own, as a second station would have.
    std::unique_ptr<Connection> connect() const;

private:
    QTemporaryDir m_dir;
    QString m_dataPath;
    ConnectionInfo m_info;
};

} // namespace qln::test
