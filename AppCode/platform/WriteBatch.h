#pragma once
#include "platform/Connection.h"

#include <QSqlDatabase>

namespace qln {

// Keeps the writes of one run (the rows of a promo over many items) in one transaction on
// SQLite, which otherwise commits each statement alone. A refused statement still fails
// alone. PostgreSQL is left as it is: a refusal there would end the whole transaction.
// Inside a transaction already open, it does nothing.
class WriteBatch {
public:
    explicit WriteBatch(Connection &connection) : m_connection(connection)
    {
        m_began = connection.provider() == Provider::SQLite && connection.database().transaction();
    }
    ~WriteBatch()
    {
        if (m_began && !m_connection.database().commit())
            m_connection.database().rollback();
    }
    WriteBatch(const WriteBatch &) = delete;
    WriteBatch &operator=(const WriteBatch &) = delete;

private:
    Connection &m_connection;
    bool m_began = false;
};

} // namespace qln
