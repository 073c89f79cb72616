#pragma once
#include "platform/Connection.h"

#include <QList>
#include <QString>

namespace qln {

// What start-up asks of the server: is it running, which databases and tables it holds.
class ServerAdmin {
public:
    struct Entry {
        QString name;
        bool system = false;
    };

    // Connects to the server itself (PostgreSQL: its maintenance database; SQLite: the data
    // path of this machine). Status 1 is running.
    bool connect(const ConnectionInfo &info);
    int status() const { return m_status; }
    const DbError &lastError() const { return m_error; }

    QList<Entry> databases();
    QList<Entry> tables(const QString &database);

private:
    ConnectionInfo m_info;
    int m_status = 0;
    DbError m_error;
};

} // namespace qln
