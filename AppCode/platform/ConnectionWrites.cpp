// The connection's writes that come back with one text for each row of a bulk write: each
// shape is prepared once and its values bound, with what the engine stores unchanged.
#include "platform/Connection.h"

#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <sqlite3.h>

namespace qln {

namespace {

const QLatin1Char kMarkerMark('\x01');

// "INSERT INTO T VALUES(...)" and nothing else: the table, and where its values begin.
QString insertTable(const QString &masked, qsizetype &valuesAt)
{
    static const QRegularExpression re(QStringLiteral("^\\s*INSERT\\s+INTO\\s+(\\w+)\\s+VALUES\\s*\\((.*)\\)\\s*;?\\s*$"),
                                       QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    const auto m = re.match(masked);
    if (!m.hasMatch())
        return QString();
    // A comparison would leave the dialect a date to read; such a text runs as it is.
    const QString values = m.captured(2);
    if (values.contains(QLatin1Char('=')) || values.contains(QLatin1Char('<')) || values.contains(QLatin1Char('>')))
        return QString();
    valuesAt = m.capturedStart(2);
    return m.captured(1);
}

// A column of decimals converts a text as it converts the literal ("10.50" to 10.5); a text
// column would keep the text as it stands, an integer column on PostgreSQL would refuse it.
bool takesDecimals(const ColumnInfo &column)
{
    const QString &t = column.type;
    return column.kind == ColumnInfo::Decimal || t.contains(QLatin1String("REAL")) || t.contains(QLatin1String("FLOA")) ||
           t.contains(QLatin1String("DOUB"));
}

// Whole numbers of the value list become literals, and so do decimals bound for a column that
// takes decimals, so that every row of a bulk write has the same shape.
void maskValueNumbers(MaskedSql &masked, qsizetype valuesAt, const QList<ColumnInfo> &columns)
{
    static const QRegularExpression whole(QStringLiteral("^-?\\d+$"));
    static const QRegularExpression decimal(QStringLiteral("^-?\\d*\\.\\d+(?:[eE][-+]?\\d+)?$|^-?\\d+\\.\\d*(?:[eE][-+]?\\d+)?$"));
    const qsizetype close = masked.text.lastIndexOf(QLatin1Char(')'));
    QStringList values = splitTopLevel(masked.text.mid(valuesAt, close - valuesAt), QLatin1Char(','));
    bool changed = false;
    for (qsizetype i = 0; i < values.size(); ++i) {
        const QString number = values[i].trimmed();
        if (number.isEmpty() || number.contains(kMarkerMark))
            continue;
        bool fits = false;
        if (whole.match(number).hasMatch())
            number.toLongLong(&fits);
        else if (i < columns.size() && takesDecimals(columns[i]) && decimal.match(number).hasMatch())
            fits = true;
        if (!fits)
            continue;
        masked.literals << number;
        values[i] = MaskedSql::marker(int(masked.literals.size()) - 1);
        changed = true;
    }
    if (changed)
        masked.text = masked.text.left(valuesAt) + values.join(QLatin1Char(',')) + masked.text.mid(close);
}

// Quoted literals as their text, whole numbers as numbers, decimals as their text for the
// column to convert as it would convert the literal.
QVariant boundValue(const QString &literal)
{
    if (literal.startsWith(QLatin1Char('\'')))
        return literal.mid(1, literal.size() - 2).replace(QLatin1String("''"), QLatin1String("'"));
    bool whole = false;
    const qlonglong number = literal.toLongLong(&whole);
    return whole ? QVariant(number) : QVariant(literal);
}

void bindWritten(sqlite3_stmt *statement, int at, const QVariant &value)
{
    if (value.typeId() == QMetaType::LongLong) {
        sqlite3_bind_int64(statement, at, value.toLongLong());
        return;
    }
    const QByteArray text = value.toString().toUtf8(); // the database's own encoding
    sqlite3_bind_text(statement, at, text.constData(), int(text.size()), SQLITE_TRANSIENT);
}

} // namespace

bool Connection::executeInsert(const QString &tsql, int *affected)
{
    if (m_info.provider == Provider::SqlServer)
        return execute(tsql, affected);
    MaskedSql masked(tsql);
    qsizetype valuesAt = 0;
    const QString table = insertTable(masked.text, valuesAt);
    if (table.isEmpty())
        return execute(tsql, affected);
    noteStatement(tsql);
    if (affected)
        *affected = -1;
    if (!reachable())
        return false;
    m_error.clear();
    masked.isoDates();
    maskValueNumbers(masked, valuesAt, columns(table));
    auto shape = m_shapes.find(masked.text);
    if (shape == m_shapes.end()) {
        Shape fresh;
        QString placeholders;
        MaskedSql::forEachMarker(m_dialect->rewriteQuery(masked.text), [&](QStringView run, int literal) {
            placeholders += run;
            if (literal >= 0) {
                placeholders += QLatin1Char('?');
                fresh.literals << literal;
            }
        });
        if (!prepareShape(fresh, placeholders)) {
            // Refused as a shape: the text itself gives the engine's own answer.
            QSqlQuery query(m_db);
            if (!runRewritten(query, m_dialect->rewrite(tsql)))
                return false;
            if (affected)
                *affected = query.numRowsAffected();
            return true;
        }
        if (m_shapes.size() > 256)
            m_shapes.clear();
        shape = m_shapes.insert(masked.text, fresh);
    }
    const Shape held = *shape; // a lost server clears the shapes under a running statement
    if (held.statement) {
        sqlite3_stmt *statement = held.statement.get();
        sqlite3_reset(statement);
        for (int i = 0; i < held.literals.size(); ++i)
            bindWritten(statement, i + 1, boundValue(masked.literals.value(held.literals[i])));
        const int step = sqlite3_step(statement);
        sqlite3_reset(statement);
        sqlite3_clear_bindings(statement);
        if (step != SQLITE_DONE) {
            m_error = errorFrom(QSqlError(QStringLiteral("Unable to fetch row"), QString::fromUtf8(sqlite3_errmsg(m_sqlite)),
                                          QSqlError::StatementError, QString::number(step)),
                                tsql);
            return false;
        }
        if (affected)
            *affected = sqlite3_changes(m_sqlite);
        return true;
    }
    QSqlQuery &query = *held.query;
    for (int i = 0; i < held.literals.size(); ++i)
        query.bindValue(i, boundValue(masked.literals.value(held.literals[i])));
    if (!query.exec()) {
        setError(errorFrom(query.lastError(), tsql));
        return false;
    }
    if (affected)
        *affected = query.numRowsAffected();
    query.finish();
    return true;
}

bool Connection::runBoundRow(const QString &sql, const QVariantList &binds, QVariantList &row)
{
    row.clear();
    m_error.clear();
    auto shape = m_shapes.find(sql);
    if (shape == m_shapes.end()) {
        Shape fresh;
        fresh.query = std::make_shared<QSqlQuery>(m_db);
        fresh.query->setForwardOnly(true);
        if (!fresh.query->prepare(sql)) {
            m_error = errorFrom(fresh.query->lastError(), sql);
            return false;
        }
        if (m_shapes.size() > 256)
            m_shapes.clear();
        shape = m_shapes.insert(sql, fresh);
    }
    const std::shared_ptr<QSqlQuery> query = shape->query;
    for (int i = 0; i < binds.size(); ++i)
        query->bindValue(i, binds[i]);
    if (!query->exec()) {
        m_error = errorFrom(query->lastError(), sql);
        return false;
    }
    if (query->next())
        for (int i = 0; i < query->record().count(); ++i)
            row << query->value(i);
    query->finish(); // one active result at a time on PostgreSQL
    return true;
}

} // namespace qln
