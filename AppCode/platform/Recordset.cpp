#include "platform/Recordset.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>

namespace qln {

namespace {

// "yyyy-MM-dd HH:mm:ss", the form both engines give back, read without a format parser:
// long lists read hundreds of thousands of dates.
QDateTime plainDateTime(const QString &t)
{
    static constexpr int kDigits[] = {0, 1, 2, 3, 5, 6, 8, 9, 11, 12, 14, 15, 17, 18};
    if (t.size() != 19 || t[4] != QLatin1Char('-') || t[7] != QLatin1Char('-') || t[13] != QLatin1Char(':') || t[16] != QLatin1Char(':'))
        return QDateTime();
    for (int i : kDigits)
        if (!t[i].isDigit())
            return QDateTime();
    auto number = [&](int from, int length) { return QStringView(t).mid(from, length).toInt(); };
    const QDate date(number(0, 4), number(5, 2), number(8, 2));
    const QTime time(number(11, 2), number(14, 2), number(17, 2));
    return date.isValid() && time.isValid() ? QDateTime(date, time) : QDateTime();
}

QDateTime parseDateTime(const QString &text)
{
    if (const QDateTime plain = plainDateTime(text); plain.isValid())
        return plain;
    QString t = text.trimmed();
    t.replace(QLatin1Char('T'), QLatin1Char(' '));
    for (const char *form : {"yyyy-MM-dd HH:mm:ss.zzz", "yyyy-MM-dd HH:mm:ss", "yyyy-MM-dd HH:mm", "yyyy-MM-dd"}) {
        const QDateTime dt = QDateTime::fromString(t, QLatin1String(form));
        if (dt.isValid())
            return dt;
    }
    return QDateTime();
}

bool isDecimalType(const QString &type)
{
    return type == QLatin1String("DECIMAL") || type == QLatin1String("NUMERIC") || type == QLatin1String("MONEY");
}

} // namespace

bool Recordset::fail(const DbError &error)
{
    m_error = error;
    if (m_connection)
        m_connection->setError(error);
    return false;
}

bool Recordset::open(Connection &connection, const QString &tsql)
{
    m_connection = &connection;
    m_source = tsql;
    m_rows.clear();
    m_locator.clear();
    m_version.clear();
    m_dirty.clear();
    m_names.clear();
    m_columns.clear();
    m_position = 0;
    m_error.clear();

    connection.noteStatement(tsql);
    SelectResult answer;
    if (!connection.select(tsql, answer)) {
        m_error = connection.lastError();
        return false;
    }
    m_table = answer.table;
    m_rows = std::move(answer.rows);
    m_locator = std::move(answer.locators);
    m_version = std::move(answer.versions);
    const int visible = int(answer.names.size());
    if (!m_table.isEmpty()) {
        m_columns = connection.columns(m_table);
        if (m_columns.size() != visible)
            m_columns.clear();
    }
    for (int i = 0; i < visible; ++i)
        m_names << (m_columns.isEmpty() ? answer.names[i] : m_columns[i].name);
    return true;
}

int Recordset::fieldIndex(const QString &name) const
{
    for (int i = 0; i < m_names.size(); ++i)
        if (m_names[i].compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

QVariant Recordset::normalise(int ordinal, const QVariant &raw) const
{
    if (raw.isNull() || m_columns.isEmpty())
        return raw;
    const ColumnInfo &c = m_columns[ordinal];
    if (c.type == QLatin1String("CHAR") || c.type == QLatin1String("NCHAR")) {
        const QString s = raw.toString();
        return s.size() < c.width ? s.leftJustified(c.width, QLatin1Char(' ')) : s;
    }
    if (c.type == QLatin1String("DATETIME") && raw.typeId() != QMetaType::QDateTime)
        return parseDateTime(raw.toString());
    if (isDecimalType(c.type) && m_connection->provider() == Provider::SQLite) {
        const int scale = c.type == QLatin1String("MONEY") ? 4 : qMax(c.scale, 0);
        return QString::number(raw.toDouble(), 'f', scale);
    }
    return raw;
}

QVariant Recordset::value(int ordinal) const
{
    if (m_position < 0 || m_position >= recordCount() || ordinal < 0 || ordinal >= fieldCount())
        return QVariant();
    for (const auto &[field, value] : m_dirty)
        if (field == ordinal)
            return value;
    return normalise(ordinal, m_rows[m_position][ordinal]);
}

void Recordset::setValue(int ordinal, const QVariant &value)
{
    if (ordinal < 0 || ordinal >= fieldCount())
        return;
    for (auto &[field, pending] : m_dirty)
        if (field == ordinal) {
            pending = value;
            return;
        }
    m_dirty.emplace_back(ordinal, value);
}

// PostgreSQL knows the columns by their folded names, SQLite by their declared ones.
QString Recordset::columnRef(int ordinal) const
{
    return m_connection->provider() == Provider::Postgres ? m_names[ordinal]
                                                           : QLatin1Char('"') + m_names[ordinal] + QLatin1Char('"');
}

QVariant Recordset::toEngine(int ordinal, const QVariant &value) const
{
    if (value.typeId() == QMetaType::QDateTime || value.typeId() == QMetaType::QDate) {
        const QDateTime dt = value.toDateTime();
        return dt.isValid() ? QVariant(dt.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))) : QVariant();
    }
    if (!m_columns.isEmpty() && m_connection->provider() == Provider::SQLite && isDecimalType(m_columns[ordinal].type)
        && !value.isNull())
        return QVariant(value.toString().trimmed().toDouble());
    return value;
}

bool Recordset::rowCondition(QString &where, QVariantList &binds) const
{
    if (m_table.isEmpty() || m_position < 0 || m_position >= recordCount() || !m_locator[m_position].isValid())
        return false;
    if (m_connection->provider() == Provider::Postgres) {
        where = QStringLiteral("ctid = CAST(? AS tid) AND CAST(xmin AS text) = ?");
        binds << m_locator[m_position] << m_version[m_position];
        return true;
    }
    // SQLite has no row version: the row must still hold every value it was read with.
    QStringList terms{QStringLiteral("rowid = ?")};
    binds << m_locator[m_position];
    const auto &row = m_rows[m_position];
    for (int i = 0; i < fieldCount(); ++i) {
        terms << columnRef(i) + QStringLiteral(" IS ?");
        binds << row[i];
    }
    where = terms.join(QStringLiteral(" AND "));
    return true;
}

bool Recordset::update()
{
    if (m_dirty.empty())
        return true;
    QString where;
    QVariantList whereBinds;
    if (!rowCondition(where, whereBinds))
        return fail({DbError::kRowChanged, QStringLiteral("Insufficient key column information for updating or refreshing."),
                     QStringLiteral("QSQL")});
    QStringList sets;
    QVariantList binds;
    for (const auto &[field, value] : m_dirty) {
        sets << columnRef(field) + QStringLiteral(" = ?");
        binds << toEngine(field, value);
    }
    const bool postgres = m_connection->provider() == Provider::Postgres;
    const QString sql = QStringLiteral("UPDATE %1 SET %2 WHERE %3%4")
                            .arg(m_table, sets.join(QStringLiteral(", ")), where,
                                 postgres ? QStringLiteral(" RETURNING CAST(ctid AS text), CAST(xmin AS text)") : QString());
    m_connection->noteStatement(QStringLiteral("UPDATE ") + m_table);
    QSqlQuery query(m_connection->database());
    bool ran = query.prepare(sql);
    for (const QVariant &b : binds + whereBinds)
        query.addBindValue(b);
    if (!ran || !query.exec())
        return fail(m_connection->errorFrom(query.lastError(), sql));
    const bool changed = postgres ? query.next() : query.numRowsAffected() > 0;
    if (!changed)
        return fail({DbError::kRowChanged,
                     QStringLiteral("Row cannot be located for updating. Some values may have been changed since it was last read."),
                     QStringLiteral("QSQL")});
    if (postgres) {
        m_locator[m_position] = query.value(0);
        m_version[m_position] = query.value(1);
    }
    for (const auto &[field, value] : m_dirty)
        m_rows[m_position][field] = toEngine(field, value);
    m_dirty.clear();
    return true;
}

bool Recordset::deleteCurrent()
{
    QString where;
    QVariantList binds;
    if (!rowCondition(where, binds))
        return fail({DbError::kRowChanged, QStringLiteral("Insufficient key column information for updating or refreshing."),
                     QStringLiteral("QSQL")});
    const QString sql = QStringLiteral("DELETE FROM %1 WHERE %2").arg(m_table, where);
    m_connection->noteStatement(QStringLiteral("DELETE ") + m_table);
    QSqlQuery query(m_connection->database());
    bool ran = query.prepare(sql);
    for (const QVariant &b : binds)
        query.addBindValue(b);
    if (!ran || !query.exec())
        return fail(m_connection->errorFrom(query.lastError(), sql));
    if (query.numRowsAffected() < 1)
        return fail({DbError::kRowChanged,
                     QStringLiteral("Row cannot be located for deletion. Some values may have been changed since it was last read."),
                     QStringLiteral("QSQL")});
    m_rows.erase(m_rows.begin() + m_position);
    m_locator.erase(m_locator.begin() + m_position);
    m_version.erase(m_version.begin() + m_position);
    m_dirty.clear();
    return true;
}

} // namespace qln
