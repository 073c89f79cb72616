#pragma once
#include "platform/DbError.h"
#include "platform/RowValues.h"
#include "platform/SqlDialect.h"

#include <QElapsedTimer>
#include <QHash>
#include <QSqlDatabase>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <memory>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace qln {

struct ConnectionInfo {
    Provider provider = Provider::SQLite;
    QString server;   // PostgreSQL: "host\port" (host may be a socket folder); SQLite: unused
    QString database; // PostgreSQL: database name; SQLite: "<database>.db" in dataPath
    QString user;
    QString password;
    QString dataPath;
    int timeoutSeconds = 25;
};

// Column facts the suite's server would give and an engine may not: the declared spelling
// of a column name, a CHAR width, a DECIMAL scale, a date column.
struct ColumnInfo {
    QString name;
    QString type; // upper-cased declared type name
    int width = 0;
    int scale = -1;
    // How a record set gives the column's values back (see Recordset::value).
    enum Kind : quint8 { Plain, Char, DateTime, Decimal } kind = Plain;
    int decimals = 0; // of a Decimal
};

// The answer to a query, read whole.
struct SelectResult {
    QString table;     // the one table whose rows can be written back; empty for others
    QStringList names; // the columns as the engine names them
    std::vector<RowValues> rows;
    std::vector<QVariant> locators; // each row's rowid or ctid, when `table` is set
    std::vector<QVariant> versions; // each row's xmin on PostgreSQL
};

// The one connection of the program over Qt Sql. Every text given to it is the suite's
// own; the dialect adapts it just before it runs.
class Connection {
public:
    Connection();
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    bool open(const ConnectionInfo &info);
    void close();
    int state() const; // 1 open, 0 closed
    const ConnectionInfo &info() const { return m_info; }
    SqlDialect &dialect() { return *m_dialect; }
    Provider provider() const { return m_info.provider; }

    // Runs one statement; false with lastError() set when the engine refuses it.
    // `affected` gets the records it changed, or -1 where it changes none by count
    // (definitions, queries), as the suite's provider tells it.
    bool execute(const QString &tsql, int *affected = nullptr);

    const DbError &lastError() const { return m_error; }
    QSqlDatabase &database() { return m_db; }

    // Statements sent so far, and a hook that sees each as the program wrote it.
    quint64 statementCount() const { return m_statements; }
    void setStatementObserver(std::function<void(const QString &)> observer) { m_observer = std::move(observer); }

    const QList<ColumnInfo> &columns(const QString &table);
    void forgetSchema() { m_columns.clear(); }

    // Runs a query of the suite's text for a record set; false with lastError() set. Each
    // shape of statement is prepared once and its literals are bound; on SQLite it runs
    // through the engine's own calls, which spares the driver's per-run column set-up.
    bool select(const QString &tsql, SelectResult &result);
    bool runRewritten(class QSqlQuery &query, const QString &sql);
    // Runs a write of the engine's own text with values bound; `affected` gets the rows it
    // changed. On SQLite each text is prepared once for the life of the connection.
    bool runBound(const QString &sql, const QVariantList &binds, int &affected);
    // "INSERT INTO T VALUES(...)" as execute() runs it, each shape prepared once with its
    // values bound; any other text goes to execute().
    bool executeInsert(const QString &tsql, int *affected = nullptr);
    // A write of the engine's own text that gives back a row (RETURNING), prepared once per
    // text; `row` is empty when it gave none.
    bool runBoundRow(const QString &sql, const QVariantList &binds, QVariantList &row);
    void noteStatement(const QString &tsql);
    DbError errorFrom(const class QSqlError &error, const QString &sql);
    // A refusal that names a lost server also closes the connection.
    void setError(const DbError &error);

    // A server that went away is tried again by the next statement, at most once in each
    // pause; false, with lastError() set, while it stays away. Each loss and each failed
    // try is told to the observer.
    bool reachable();
    bool lost() const { return m_lost; }
    void setLostObserver(std::function<void(const DbError &)> observer) { m_lostObserver = std::move(observer); }
    static void setReconnectPause(int milliseconds);

    static QString sqliteFile(const ConnectionInfo &info);

private:
    friend class ReadSnapshot;
    sqlite3 *beginRead();
    void endRead(sqlite3 *began);

    bool prepareSqlite();
    bool preparePostgres();
    bool reopenUnderServerSpelling();
    void lose();
    void tellLost();
    bool alterSqliteColumn(const QString &pseudo);
    void recordDeclaredNames(const QString &tsql);

    ConnectionInfo m_info;
    QString m_name;
    QSqlDatabase m_db;
    std::unique_ptr<SqlDialect> m_dialect;
    DbError m_error;
    quint64 m_statements = 0;
    std::function<void(const QString &)> m_observer;
    QHash<QString, QList<ColumnInfo>> m_columns;

    struct Shape {
        std::shared_ptr<class QSqlQuery> query;  // PostgreSQL
        std::shared_ptr<sqlite3_stmt> statement; // SQLite
        QStringList names;                       // SQLite: the columns, read once
        int rowidAt = -1;                        // SQLite: the locator's column
        QList<int> literals; // the literal bound to each placeholder, in order
        QString table;
    };
    bool prepareShape(Shape &shape, const QString &placeholders);
    bool readSqlite(const Shape &shape, const QVariantList &values, const QString &tsql, SelectResult &result);
    bool readQuery(class QSqlQuery &query, const QString &tsql, SelectResult &result);

    sqlite3 *m_sqlite = nullptr;
    QHash<QString, Shape> m_shapes;

    bool m_opened = false; // a server connection opened and not closed by the program
    bool m_lost = false;
    QElapsedTimer m_sinceTold;
    std::function<void(const DbError &)> m_lostObserver;
};

// Keeps the reads of a run that no event and no write interrupts in one read transaction:
// on SQLite each statement would otherwise begin and end its own, a third of the time of a
// keyed read. PostgreSQL is left as it is, a statement there being a round trip anyway.
class ReadSnapshot {
public:
    explicit ReadSnapshot(Connection &connection) : m_connection(connection) { m_began = connection.beginRead(); }
    ~ReadSnapshot() { m_connection.endRead(m_began); }
    ReadSnapshot(const ReadSnapshot &) = delete;
    ReadSnapshot &operator=(const ReadSnapshot &) = delete;

    // Runs `work` (events, most often) outside the transaction: it may write, and it sees
    // what other stations wrote meanwhile.
    template <class Work>
    void outside(Work &&work)
    {
        m_connection.endRead(m_began);
        work();
        m_began = m_connection.beginRead();
    }

private:
    Connection &m_connection;
    sqlite3 *m_began;
};

// Names of the hidden columns that locate a record set's rows.
inline const QString kRowidColumn = QStringLiteral("qln_rowid");
inline const QString kCtidColumn = QStringLiteral("qln_ctid");
inline const QString kXminColumn = QStringLiteral("qln_xmin");

// "host\port" or "host" for PostgreSQL.
void splitServer(const QString &server, QString &host, int &port);

} // namespace qln
