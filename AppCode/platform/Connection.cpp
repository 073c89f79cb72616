#include "platform/Connection.h"

#include "platform/collation/QlnCollation.h"

#include <QAtomicInt>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <sqlite3.h>

namespace qln {

namespace {

QString uniqueConnectionName()
{
    static QAtomicInt counter;
    return QStringLiteral("qln-%1").arg(counter.fetchAndAddRelaxed(1));
}

ColumnInfo parseColumn(const QString &name, const QString &declared)
{
    static const QRegularExpression re(QStringLiteral("^\\s*([A-Za-z ]+?)\\s*(?:\\(\\s*(\\d+)\\s*(?:,\\s*(\\d+)\\s*)?\\))?\\s*$"));
    ColumnInfo c;
    c.name = name;
    const auto m = re.match(declared);
    if (!m.hasMatch()) {
        c.type = declared.toUpper();
        return c;
    }
    c.type = m.captured(1).toUpper();
    if (c.type == QLatin1String("CHARACTER"))
        c.type = QStringLiteral("CHAR");
    if (c.type == QLatin1String("CHARACTER VARYING"))
        c.type = QStringLiteral("VARCHAR");
    if (c.type.startsWith(QLatin1String("TIMESTAMP")))
        c.type = QStringLiteral("DATETIME");
    if (!m.captured(2).isEmpty()) {
        c.width = m.captured(2).toInt();
        if (!m.captured(3).isEmpty())
            c.scale = m.captured(3).toInt();
        else if (c.type == QLatin1String("DECIMAL") || c.type == QLatin1String("NUMERIC"))
            c.scale = 0;
    }
    if (c.type == QLatin1String("CHAR") || c.type == QLatin1String("NCHAR"))
        c.kind = ColumnInfo::Char;
    else if (c.type == QLatin1String("DATETIME"))
        c.kind = ColumnInfo::DateTime;
    else if (c.type == QLatin1String("DECIMAL") || c.type == QLatin1String("NUMERIC") || c.type == QLatin1String("MONEY")) {
        c.kind = ColumnInfo::Decimal;
        c.decimals = c.type == QLatin1String("MONEY") ? 4 : qMax(c.scale, 0);
    }
    return c;
}

} // namespace

void splitServer(const QString &server, QString &host, int &port)
{
    const int slash = server.indexOf(QLatin1Char('\\'));
    host = slash >= 0 ? server.left(slash) : server;
    bool ok = false;
    port = slash >= 0 ? server.mid(slash + 1).toInt(&ok) : 0;
    if (!ok)
        port = 5432;
}

Connection::Connection() : m_name(uniqueConnectionName()), m_dialect(SqlDialect::create(Provider::SQLite)) {}

Connection::~Connection() { close(); }

QString Connection::sqliteFile(const ConnectionInfo &info)
{
    return QDir(info.dataPath).filePath(info.database + QStringLiteral(".db"));
}

bool Connection::open(const ConnectionInfo &info)
{
    close();
    m_info = info;
    m_dialect = SqlDialect::create(info.provider);
    m_error.clear();
    if (info.provider == Provider::Postgres) {
        m_db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), m_name);
        QString host;
        int port = 5432;
        splitServer(info.server, host, port);
        m_db.setHostName(host);
        m_db.setPort(port);
        m_db.setDatabaseName(info.database);
        m_db.setUserName(info.user);
        m_db.setPassword(info.password);
        m_db.setConnectOptions(QStringLiteral("connect_timeout=%1").arg(info.timeoutSeconds));
    } else {
        m_db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
        // An open never creates a database: that is the suite's main program's job.
        const QString file = sqliteFile(info);
        if (!QFileInfo::exists(file)) {
            m_error = {DbError::kUnspecified, QStringLiteral("Cannot open database \"%1\": no such file").arg(file),
                       QStringLiteral("QSQLITE")};
            return false;
        }
        m_db.setDatabaseName(file);
        m_db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(info.timeoutSeconds * 1000));
    }
    if (!m_db.open() && !(info.provider == Provider::Postgres && reopenUnderServerSpelling())) {
        m_error = errorFrom(m_db.lastError(), QString());
        return false;
    }
    // Exact decimals from the server; SQLite stores binary reals, rounded on read.
    if (info.provider == Provider::Postgres)
        m_db.setNumericalPrecisionPolicy(QSql::HighPrecision);
    const bool ready = info.provider == Provider::Postgres ? preparePostgres() : prepareSqlite();
    if (!ready)
        close();
    m_opened = ready && info.provider == Provider::Postgres; // only a server can go away
    return ready;
}

// The suite's server finds a database named in any case; PostgreSQL folds an unquoted
// name to lower case when it creates one and then wants the name as it was stored.
bool Connection::reopenUnderServerSpelling()
{
    const QSqlError refused = m_db.lastError();
    if (refused.nativeErrorCode() != QLatin1String("3D000") && !refused.text().contains(QLatin1String("does not exist")))
        return false;
    QString stored;
    {
        QSqlDatabase maintenance = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), m_name + QStringLiteral("-names"));
        maintenance.setHostName(m_db.hostName());
        maintenance.setPort(m_db.port());
        maintenance.setDatabaseName(QStringLiteral("postgres"));
        maintenance.setUserName(m_db.userName());
        maintenance.setPassword(m_db.password());
        maintenance.setConnectOptions(m_db.connectOptions());
        if (maintenance.open()) {
            QSqlQuery q(maintenance);
            q.prepare(QStringLiteral("SELECT datname FROM pg_database WHERE upper(datname) = upper(?) ORDER BY datname"));
            q.addBindValue(m_info.database);
            if (q.exec() && q.next())
                stored = q.value(0).toString();
        }
        maintenance.close();
    }
    QSqlDatabase::removeDatabase(m_name + QStringLiteral("-names"));
    if (stored.isEmpty() || stored == m_info.database)
        return false;
    m_info.database = stored;
    m_db.setDatabaseName(stored);
    return m_db.open();
}

bool Connection::prepareSqlite()
{
    const QVariant handle = m_db.driver()->handle();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return false;
    sqlite3 *db = *static_cast<sqlite3 *const *>(handle.data());
    if (!db || sqlite3_create_collation_v2(db, "QLN_CI", SQLITE_UTF8, nullptr, qln_collation_compare, nullptr) != SQLITE_OK)
        return false;
    // Room for the texts a row's columns are copied into on their way out: a long list
    // copies dozens for each of its rows.
    sqlite3_db_config(db, SQLITE_DBCONFIG_LOOKASIDE, nullptr, 256, 2000);
    m_sqlite = db;
    QSqlQuery q(m_db);
    q.exec(QStringLiteral("PRAGMA journal_mode=WAL"));
    q.exec(QStringLiteral("PRAGMA synchronous=NORMAL"));
    // Pages read straight from the mapped file: a keyed read touches a new leaf page of a
    // large table almost every time, and a read call for each was a fifth of a long list.
    q.exec(QStringLiteral("PRAGMA mmap_size=2147418112"));
    return true;
}

// The collation and the integer-to-date cast that give the suite's answers; made once
// per database, by whoever comes first.
bool Connection::preparePostgres()
{
    QSqlQuery q(m_db);
    q.exec(QStringLiteral("SET client_min_messages = warning"));
    q.exec(QStringLiteral("SELECT 1 FROM pg_collation WHERE collname = 'qln_ci'"));
    if (!q.next())
        q.exec(QStringLiteral("CREATE COLLATION IF NOT EXISTS qln_ci (provider = icu, locale = 'und-u-ks-level2', "
                              "deterministic = false)"));
    q.exec(QStringLiteral("SELECT 1 FROM pg_cast WHERE castsource = 'integer'::regtype AND casttarget = "
                          "'timestamp'::regtype"));
    if (!q.next()) {
        q.exec(QStringLiteral("CREATE OR REPLACE FUNCTION qln_days_to_timestamp(integer) RETURNS timestamp "
                              "LANGUAGE sql IMMUTABLE AS $$ SELECT timestamp '1900-01-01' + $1 * interval '1 day' $$"));
        q.exec(QStringLiteral("CREATE CAST (integer AS timestamp) WITH FUNCTION qln_days_to_timestamp(integer) AS IMPLICIT"));
    }
    return true;
}

void Connection::close()
{
    m_opened = false;
    m_lost = false;
    m_shapes.clear();
    m_sqlite = nullptr;
    if (m_db.isValid()) {
        m_db.close();
        m_db = QSqlDatabase();
        QSqlDatabase::removeDatabase(m_name);
    }
    m_columns.clear();
}

namespace {
int reconnectPauseMs = 1000;
} // namespace

void Connection::setReconnectPause(int milliseconds) { reconnectPauseMs = milliseconds; }

void Connection::setError(const DbError &error)
{
    m_error = error;
    if (error.connectionLost)
        lose();
}

void Connection::lose()
{
    m_shapes.clear();
    m_sqlite = nullptr;
    if (m_db.isValid())
        m_db.close();
    const bool first = !m_lost;
    m_lost = true;
    if (first)
        tellLost();
}

void Connection::tellLost()
{
    if (m_lostObserver)
        m_lostObserver(m_error);
    // Counted from when the user has read the message: the rest of the same action fails
    // quietly instead of repeating it.
    m_sinceTold.start();
}

bool Connection::reachable()
{
    // The driver may close a connection whose server went away before anything said so.
    if (!m_lost && m_opened && state() != 1) {
        m_error = {DbError::kUnspecified, QStringLiteral("no connection to the server"), QStringLiteral("QPSQL"), true};
        lose();
        return false;
    }
    if (!m_lost)
        return true;
    if (m_sinceTold.isValid() && !m_sinceTold.hasExpired(reconnectPauseMs)) {
        m_error = {DbError::kUnspecified, QStringLiteral("no connection to the server"), QStringLiteral("QPSQL"), true};
        return false;
    }
    const ConnectionInfo info = m_info;
    if (open(info)) {
        m_lost = false;
        return true;
    }
    m_lost = true; // the failed open closed it as the program would
    m_error.connectionLost = true;
    tellLost();
    return false;
}

int Connection::state() const { return m_db.isValid() && m_db.isOpen() ? 1 : 0; }

void Connection::noteStatement(const QString &tsql)
{
    ++m_statements;
    if (m_observer)
        m_observer(tsql);
}

namespace {

// A server that stops fast first tells its sessions it is going (operator intervention, class
// 57P); one that is killed or unreachable leaves the client to find a closed socket (class
// 08, or only the client library's words, with no class at all).
bool serverGone(const QString &code, const QString &lower)
{
    if (code.startsWith(QLatin1String("08")) || code.startsWith(QLatin1String("57P")))
        return true;
    static const char *const words[] = {"server closed the connection", "no connection to the server",
                                        "terminating connection",       "could not send data to server",
                                        "could not receive data from server", "connection to server",
                                        "the database system is shutting down", "the database system is starting up",
                                        "ssl syscall error", "connection not open"};
    for (const char *w : words)
        if (lower.contains(QLatin1String(w)))
            return true;
    return false;
}

} // namespace

DbError Connection::errorFrom(const QSqlError &error, const QString &sql)
{
    DbError e;
    const QString engine = error.text().simplified(); // one line in the logs
    const QString code = error.nativeErrorCode();
    const QString lower = engine.toLower();
    e.source = m_info.provider == Provider::Postgres ? QStringLiteral("QPSQL") : QStringLiteral("QSQLITE");
    static const QRegularExpression objectName(QStringLiteral("(?:no such table: |relation \"|table \")([\\w.]+)"));
    if (code == QLatin1String("42P01") || lower.contains(QLatin1String("no such table"))) {
        e.number = DbError::kNoSuchObject;
        e.description = QStringLiteral("Invalid object name '%1'. [%2]").arg(objectName.match(engine).captured(1), engine);
    } else if (code == QLatin1String("23505") || lower.contains(QLatin1String("unique constraint failed"))) {
        e.number = DbError::kIntegrity;
        e.description = QStringLiteral("Cannot insert duplicate key row. [%1]").arg(engine);
    } else if (code == QLatin1String("42601") || lower.contains(QLatin1String("syntax error"))
               || lower.contains(QLatin1String("unrecognized token"))) {
        e.number = DbError::kSyntax;
        e.description = QStringLiteral("Incorrect syntax. [%1]").arg(engine);
    } else {
        e.number = DbError::kUnspecified;
        e.description = engine.isEmpty() ? QStringLiteral("Unspecified error") : engine;
    }
    // Only a server can be lost; SQLite's refusals are all about the statement.
    if (m_info.provider == Provider::Postgres && !sql.isEmpty() && (serverGone(code, lower) || !m_db.isOpen()))
        e.connectionLost = true;
    return e;
}


namespace {

// The one table of "SELECT [TOP n] * FROM T ...", where rows can be written back.
QString simpleTable(const QString &masked)
{
    static const QRegularExpression re(QStringLiteral("^\\s*SELECT\\s+(?:TOP\\s+\\d+\\s+)?\\*\\s+FROM\\s+(\\w+)(?:\\s|$)"),
                                       QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression joined(QStringLiteral("\\bJOIN\\b|^\\s*SELECT[^(]*\\bFROM\\s+\\w+\\s*,"),
                                           QRegularExpression::CaseInsensitiveOption);
    const auto m = re.match(masked);
    return m.hasMatch() && !joined.match(masked).hasMatch() ? m.captured(1) : QString();
}

// Every "SELECT * FROM <table>" of the text also selects the row's locator.
QString withLocator(const QString &masked, const QString &table, Provider provider)
{
    const QString locator = provider == Provider::Postgres
                                ? QStringLiteral("*, CAST(ctid AS text) AS %1, CAST(xmin AS text) AS %2").arg(kCtidColumn, kXminColumn)
                                : QStringLiteral("*, rowid AS %1").arg(kRowidColumn);
    const QRegularExpression re(QStringLiteral("\\bSELECT\\s+\\*\\s+FROM\\s+%1\\b(?!\\s*\\()").arg(QRegularExpression::escape(table)),
                                QRegularExpression::CaseInsensitiveOption);
    QString text = masked;
    text.replace(re, QStringLiteral("SELECT %1 FROM %2").arg(locator, table));
    return text;
}

QVariant literalValue(const QString &literal)
{
    if (!literal.startsWith(QLatin1Char('\'')))
        return literal.toLongLong(); // a whole number that MaskedSql::comparedNumbers took out
    return literal.mid(1, literal.size() - 2).replace(QLatin1String("''"), QLatin1String("'"));
}

} // namespace

bool Connection::select(const QString &tsql, SelectResult &result)
{
    result = SelectResult();
    if (!reachable())
        return false;
    m_error.clear();
    MaskedSql masked(tsql);
    masked.isoDates();
    masked.comparedNumbers();
    auto shape = m_shapes.find(masked.text);
    if (shape == m_shapes.end()) {
        Shape fresh;
        fresh.table = simpleTable(masked.text);
        QString text = m_dialect->rewriteQuery(masked.text);
        if (!fresh.table.isEmpty())
            text = withLocator(text, fresh.table, m_info.provider);
        QString placeholders;
        MaskedSql::forEachMarker(text, [&](QStringView run, int literal) {
            placeholders += run;
            if (literal >= 0) {
                placeholders += QLatin1Char('?');
                fresh.literals << literal;
            }
        });
        if (!prepareShape(fresh, placeholders)) {
            // Not preparable (or refused): run it as text, for the engine's own answer.
            result.table = fresh.table;
            QSqlQuery adhoc(m_db);
            return runRewritten(adhoc, masked.unmask(text)) && readQuery(adhoc, tsql, result);
        }
        if (m_shapes.size() > 256)
            m_shapes.clear();
        shape = m_shapes.insert(masked.text, fresh);
    }
    result.table = shape->table;
    QVariantList values;
    for (int literal : std::as_const(shape->literals))
        values << literalValue(masked.literals.value(literal));
    if (shape->statement)
        return readSqlite(*shape, values, tsql, result);
    QSqlQuery &query = *shape->query;
    for (int i = 0; i < values.size(); ++i)
        query.bindValue(i, values[i]);
    if (!query.exec())
        m_error = errorFrom(query.lastError(), tsql);
    else if (readQuery(query, tsql, result))
        return true;
    setError(m_error);
    return false;
}

bool Connection::prepareShape(Shape &shape, const QString &placeholders)
{
    if (state() != 1)
        return false;
    if (!m_sqlite) {
        shape.query = std::make_shared<QSqlQuery>(m_db);
        shape.query->setForwardOnly(true);
        return shape.query->prepare(placeholders);
    }
    sqlite3_stmt *statement = nullptr;
    const QByteArray utf8 = placeholders.toUtf8();
    const char *tail = nullptr;
    // A second statement behind the first goes the driver's way, which refuses it.
    if (sqlite3_prepare_v3(m_sqlite, utf8.constData(), int(utf8.size()), SQLITE_PREPARE_PERSISTENT, &statement, &tail)
            != SQLITE_OK
        || !statement || !QByteArray(tail).trimmed().isEmpty()) {
        sqlite3_finalize(statement);
        return false;
    }
    shape.statement = std::shared_ptr<sqlite3_stmt>(statement, sqlite3_finalize);
    for (int i = 0; i < sqlite3_column_count(statement); ++i) {
        shape.names << QString::fromUtf8(sqlite3_column_name(statement, i));
        if (shape.rowidAt < 0 && shape.names.last() == kRowidColumn)
            shape.rowidAt = i;
    }
    if (shape.rowidAt >= 0)
        shape.names = shape.names.mid(0, shape.rowidAt);
    return true;
}

namespace {
// As the driver binds: numbers as numbers, so that a compare against a numeric column holds.
void bindSqlite(sqlite3_stmt *statement, int at, const QVariant &v)
{
    if (v.isNull()) {
        sqlite3_bind_null(statement, at);
        return;
    }
    switch (v.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        sqlite3_bind_int64(statement, at, v.toLongLong());
        return;
    case QMetaType::Double:
    case QMetaType::Float:
        sqlite3_bind_double(statement, at, v.toDouble());
        return;
    case QMetaType::QByteArray: {
        const QByteArray bytes = v.toByteArray();
        sqlite3_bind_blob(statement, at, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
        return;
    }
    default: {
        // In the database's own encoding: a UTF-16 value is converted again for each compare.
        const QByteArray text = v.toString().toUtf8();
        sqlite3_bind_text(statement, at, text.constData(), int(text.size()), SQLITE_TRANSIENT);
        return;
    }
    }
}
} // namespace

bool Connection::runBound(const QString &sql, const QVariantList &binds, int &affected)
{
    affected = 0;
    m_error.clear();
    if (!m_sqlite) {
        QSqlQuery query(m_db);
        bool ran = query.prepare(sql);
        for (const QVariant &b : binds)
            query.addBindValue(b);
        if (!ran || !query.exec()) {
            m_error = errorFrom(query.lastError(), sql);
            return false;
        }
        affected = query.numRowsAffected();
        return true;
    }
    auto shape = m_shapes.find(sql);
    if (shape == m_shapes.end()) {
        Shape fresh;
        if (!prepareShape(fresh, sql)) {
            m_error = errorFrom(QSqlError(QStringLiteral("Unable to execute statement"), QString::fromUtf8(sqlite3_errmsg(m_sqlite)),
                                          QSqlError::StatementError, QString::number(sqlite3_errcode(m_sqlite))),
                                sql);
            return false;
        }
        shape = m_shapes.insert(sql, fresh);
    }
    sqlite3_stmt *statement = shape->statement.get();
    sqlite3_reset(statement);
    for (int i = 0; i < binds.size(); ++i)
        bindSqlite(statement, i + 1, binds[i]);
    const int step = sqlite3_step(statement);
    sqlite3_reset(statement);
    if (step != SQLITE_DONE) {
        m_error = errorFrom(QSqlError(QStringLiteral("Unable to fetch row"), QString::fromUtf8(sqlite3_errmsg(m_sqlite)),
                                      QSqlError::StatementError, QString::number(step)),
                            sql);
        return false;
    }
    affected = sqlite3_changes(m_sqlite);
    return true;
}

bool Connection::readSqlite(const Shape &shape, const QVariantList &values, const QString &tsql, SelectResult &result)
{
    sqlite3_stmt *statement = shape.statement.get();
    sqlite3_reset(statement);
    for (int i = 0; i < values.size(); ++i) {
        const QVariant &v = values[i];
        if (v.typeId() == QMetaType::LongLong) {
            sqlite3_bind_int64(statement, i + 1, v.toLongLong());
        } else {
            const QString text = v.toString();
            sqlite3_bind_text16(statement, i + 1, text.utf16(), int(text.size() * 2), SQLITE_TRANSIENT);
        }
    }
    result.names = shape.names;
    const int visible = int(shape.names.size());
    int step;
    while ((step = sqlite3_step(statement)) == SQLITE_ROW) {
        result.rows.push_back(RowValues::fromSqlite(statement, visible));
        result.locators.push_back(shape.rowidAt >= 0 ? QVariant(qint64(sqlite3_column_int64(statement, shape.rowidAt))) : QVariant());
        result.versions.emplace_back();
    }
    // A statement left unreset would hold its read transaction open.
    sqlite3_reset(statement);
    if (step == SQLITE_DONE)
        return true;
    m_error = errorFrom(QSqlError(QStringLiteral("Unable to fetch row"), QString::fromUtf8(sqlite3_errmsg(m_sqlite)),
                                  QSqlError::StatementError, QString::number(step)),
                        tsql);
    return false;
}

// Only where no transaction is open: one the program began is its own to end.
sqlite3 *Connection::beginRead()
{
    if (!m_sqlite || !sqlite3_get_autocommit(m_sqlite) || sqlite3_exec(m_sqlite, "BEGIN", nullptr, nullptr, nullptr) != SQLITE_OK)
        return nullptr;
    return m_sqlite;
}

void Connection::endRead(sqlite3 *began)
{
    if (began && began == m_sqlite && !sqlite3_get_autocommit(m_sqlite) &&
        sqlite3_exec(m_sqlite, "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK)
        sqlite3_exec(m_sqlite, "ROLLBACK", nullptr, nullptr, nullptr);
}

bool Connection::readQuery(QSqlQuery &query, const QString &tsql, SelectResult &result)
{
    const QSqlRecord record = query.record();
    int visible = record.count();
    const int rowidAt = record.indexOf(kRowidColumn), ctidAt = record.indexOf(kCtidColumn), xminAt = record.indexOf(kXminColumn);
    if (rowidAt >= 0)
        visible = rowidAt;
    else if (ctidAt >= 0)
        visible = ctidAt;
    for (int i = 0; i < visible; ++i)
        result.names << record.fieldName(i);
    while (query.next()) {
        std::vector<QVariant> row;
        row.reserve(size_t(visible));
        for (int i = 0; i < visible; ++i)
            row.push_back(query.value(i));
        result.rows.push_back(RowValues::fromVariants(std::move(row)));
        result.locators.push_back(rowidAt >= 0 ? query.value(rowidAt) : ctidAt >= 0 ? query.value(ctidAt) : QVariant());
        result.versions.push_back(xminAt >= 0 ? query.value(xminAt) : QVariant());
    }
    const QSqlError fetchError = query.lastError();
    query.finish(); // one active result at a time on PostgreSQL
    if (fetchError.type() == QSqlError::NoError)
        return true;
    setError(errorFrom(fetchError, tsql));
    return false;
}

bool Connection::runRewritten(QSqlQuery &query, const QString &sql)
{
    if (!reachable())
        return false;
    m_error.clear();
    if (state() != 1) {
        m_error = {DbError::kUnspecified, QStringLiteral("Operation is not allowed when the object is closed."),
                   QStringLiteral("QSQL")};
        return false;
    }
    query.setForwardOnly(true);
    if (query.exec(sql))
        return true;
    setError(errorFrom(query.lastError(), sql));
    return false;
}

bool Connection::execute(const QString &tsql, int *affected)
{
    noteStatement(tsql);
    if (affected)
        *affected = -1;
    const QString sql = m_dialect->rewrite(tsql);
    if (sql.startsWith(QLatin1String("QLN ALTER COLUMN ")))
        return alterSqliteColumn(sql);
    QSqlQuery query(m_db);
    if (!runRewritten(query, sql))
        return false;
    static const QRegularExpression ddl(QStringLiteral("^\\s*(create|alter|drop|sp_rename)\\b"),
                                        QRegularExpression::CaseInsensitiveOption);
    if (ddl.match(tsql).hasMatch()) {
        recordDeclaredNames(tsql);
        m_columns.clear();
        m_shapes.clear(); // prepared statements hold the old shape
    } else if (affected && !query.isSelect()) {
        *affected = query.numRowsAffected();
    }
    return true;
}

// PostgreSQL folds unquoted names to lower case; the program reads them back as written,
// so each column carries its declared spelling as its comment.
void Connection::recordDeclaredNames(const QString &tsql)
{
    if (m_info.provider != Provider::Postgres)
        return;
    static const QRegularExpression create(QStringLiteral("^\\s*Create\\s+Table\\s+(\\w+)\\s*\\((.*)\\)"),
                                           QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression add(QStringLiteral("^\\s*ALTER\\s+TABLE\\s+(\\w+)\\s+ADD\\s+(\\w+)"),
                                        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression rename(QStringLiteral("^\\s*sp_RENAME\\s+'(\\w+)\\.(\\w+)'\\s*,\\s*'(\\w+)\\s*'"),
                                           QRegularExpression::CaseInsensitiveOption);
    QString table;
    QStringList names;
    if (auto m = create.match(tsql); m.hasMatch()) {
        table = m.captured(1);
        for (const QString &d : splitTopLevel(MaskedSql(m.captured(2)).text, QLatin1Char(','))) {
            const QString name = d.trimmed().section(QLatin1Char(' '), 0, 0);
            if (!name.isEmpty())
                names << name;
        }
    } else if (auto m = add.match(tsql); m.hasMatch()) {
        table = m.captured(1);
        names << m.captured(2);
    } else if (auto m = rename.match(tsql); m.hasMatch()) {
        table = m.captured(1);
        names << m.captured(3);
    }
    QSqlQuery q(m_db);
    for (const QString &name : names)
        q.exec(QStringLiteral("COMMENT ON COLUMN %1.%2 IS '%3'").arg(table, name, name));
}

const QList<ColumnInfo> &Connection::columns(const QString &table)
{
    const QString key = table.trimmed().toLower();
    auto it = m_columns.find(key);
    if (it != m_columns.end())
        return *it;
    QList<ColumnInfo> list;
    QSqlQuery q(m_db);
    if (m_info.provider == Provider::Postgres) {
        q.prepare(QStringLiteral("SELECT a.attname, format_type(a.atttypid, a.atttypmod), col_description(a.attrelid, a.attnum) "
                                 "FROM pg_attribute a WHERE a.attrelid = to_regclass(?) AND a.attnum > 0 "
                                 "AND NOT a.attisdropped ORDER BY a.attnum"));
        q.addBindValue(key);
        if (q.exec())
            while (q.next()) {
                const QString declared = q.value(2).toString();
                list << parseColumn(declared.isEmpty() ? q.value(0).toString() : declared, q.value(1).toString());
            }
    } else if (q.exec(QStringLiteral("PRAGMA table_info(\"%1\")").arg(table.trimmed()))) {
        while (q.next())
            list << parseColumn(q.value(1).toString(), q.value(2).toString());
    }
    return *m_columns.insert(key, list);
}

// SQLite keeps a declared type as text only, so a new width is a new declaration.
bool Connection::alterSqliteColumn(const QString &pseudo)
{
    static const QRegularExpression re(QStringLiteral("^QLN ALTER COLUMN (\\w+) (\\w+) (.*)$"));
    const auto m = re.match(pseudo);
    const QString table = m.captured(1), column = m.captured(2), definition = m.captured(3);
    QSqlQuery q(m_db);
    auto fail = [&](const QString &why) {
        m_error = {DbError::kSyntax, why, QStringLiteral("QSQLITE")};
        return false;
    };
    if (!q.exec(QStringLiteral("SELECT sql FROM sqlite_master WHERE type = 'table' AND name = '%1' COLLATE NOCASE").arg(table)) || !q.next())
        return fail(QStringLiteral("Invalid object name '%1'.").arg(table));
    const QString createSql = q.value(0).toString();
    q.finish();
    const int open = createSql.indexOf(QLatin1Char('('));
    MaskedSql masked(createSql.mid(open + 1, createSql.lastIndexOf(QLatin1Char(')')) - open - 1));
    QStringList defs = splitTopLevel(masked.text, QLatin1Char(','));
    bool found = false;
    for (QString &d : defs) {
        const QString name = d.trimmed().section(QLatin1Char(' '), 0, 0);
        if (name.compare(column, Qt::CaseInsensitive) == 0) {
            d = QLatin1Char(' ') + name + definition.mid(column.size());
            found = true;
        }
    }
    if (!found)
        return fail(QStringLiteral("Invalid column name '%1'.").arg(column));
    const QString newSql = createSql.left(open + 1) + masked.unmask(defs.join(QLatin1Char(','))).trimmed() + QLatin1Char(')');
    q.exec(QStringLiteral("PRAGMA schema_version"));
    const int version = q.next() ? q.value(0).toInt() : 0;
    q.finish();
    bool ok = q.exec(QStringLiteral("PRAGMA writable_schema=ON"));
    QSqlQuery update(m_db);
    update.prepare(QStringLiteral("UPDATE sqlite_master SET sql = ? WHERE type = 'table' AND name = ? COLLATE NOCASE"));
    update.addBindValue(newSql);
    update.addBindValue(table);
    ok = ok && update.exec();
    ok = ok && q.exec(QStringLiteral("PRAGMA schema_version=%1").arg(version + 1));
    q.exec(QStringLiteral("PRAGMA writable_schema=OFF"));
    m_columns.clear();
    m_shapes.clear();
    if (!ok)
        return fail(update.lastError().text());
    // Reopen so that this connection reads the new declaration.
    m_db.close();
    return (m_db.open() && prepareSqlite()) || fail(m_db.lastError().text());
}

} // namespace qln
