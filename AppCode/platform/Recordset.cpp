#include "platform/Recordset.h"

#include <QDateTime>
#include <algorithm>
#include <array>
#include <limits>
#include <cmath>
#include <optional>
#include <type_traits>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>

namespace qln {

namespace {

// A local date and time costs a look into the time zone rules; the rows of a list repeat
// a few dates many times.
QDateTime localDateTime(const QDate &date, const QTime &time)
{
    struct Seen {
        qint64 day = std::numeric_limits<qint64>::min();
        int msecs = 0;
        QDateTime value;
    };
    static thread_local std::array<Seen, 64> seen;
    const qint64 day = date.toJulianDay();
    const int msecs = time.msecsSinceStartOfDay();
    Seen &slot = seen[(quint64(day) * 31 + quint64(msecs)) % seen.size()];
    if (slot.day != day || slot.msecs != msecs)
        slot = {day, msecs, QDateTime(date, time)};
    return slot.value;
}

// "yyyy-MM-dd HH:mm:ss", the form both engines give back, read without a format parser:
// long lists read hundreds of thousands of dates. `at` gives the character at a position.
template <class Text>
QDateTime plainDateTime(const Text &t)
{
    static constexpr int kDigits[] = {0, 1, 2, 3, 5, 6, 8, 9, 11, 12, 14, 15, 17, 18};
    auto at = [&](int i) -> char16_t {
        if constexpr (std::is_same_v<Text, QStringView>)
            return t[i].unicode();
        else
            return char16_t(uchar(t[i]));
    };
    if (t.size() != 19 || at(4) != u'-' || at(7) != u'-' || at(13) != u':' || at(16) != u':')
        return QDateTime();
    for (int i : kDigits)
        if (at(i) < u'0' || at(i) > u'9')
            return QDateTime();
    auto number = [&](int from, int length) {
        int n = 0;
        for (int i = from; i < from + length; ++i)
            n = n * 10 + (at(i) - u'0');
        return n;
    };
    const QDate date(number(0, 4), number(5, 2), number(8, 2));
    const QTime time(number(11, 2), number(14, 2), number(17, 2));
    return date.isValid() && time.isValid() ? localDateTime(date, time) : QDateTime();
}

QDateTime parseDateTime(const QString &text)
{
    if (const QDateTime plain = plainDateTime(QStringView(text)); plain.isValid())
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

// A decimal's text as the server gives it ("12.3400"), read as an amount: the digits past the
// column's scale are rounded off first. Exact where the engine's number is not close to
// half a step, which is where the text would be needed; nullopt there.
std::optional<Money> decimalMoney(double value, int decimals)
{
    static constexpr double kSteps[] = {1, 10, 100, 1000, 10000};
    if (decimals > 4 || !(std::fabs(value) < 1e14))
        return std::nullopt;
    const double scaled = value * kSteps[decimals];
    const double whole = std::nearbyint(scaled);
    if (std::fabs(scaled - whole) >= 0.25)
        return std::nullopt;
    return Money::fromUnits(qint64(whole) * qint64(kSteps[4 - decimals]));
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
    m_names = answer.names;
    if (!m_table.isEmpty()) {
        m_columns = connection.columns(m_table);
        if (m_columns.size() != m_names.size())
            m_columns.clear();
    }
    return true;
}

void Recordset::describe(const QString &table)
{
    if (!m_connection || !m_columns.isEmpty())
        return;
    const QList<ColumnInfo> &all = m_connection->columns(table);
    QList<ColumnInfo> named;
    for (const QString &name : std::as_const(m_names)) {
        const auto found = std::find_if(all.begin(), all.end(), [&](const ColumnInfo &c) { return c.name.compare(name, Qt::CaseInsensitive) == 0; });
        if (found == all.end())
            return;
        named << *found;
    }
    m_columns = named;
}

// The declared name where the table is known: PostgreSQL gives back folded names.
QString Recordset::fieldName(int ordinal) const
{
    if (ordinal < 0 || ordinal >= fieldCount())
        return QString();
    return m_columns.isEmpty() ? m_names[ordinal] : m_columns[ordinal].name;
}

int Recordset::fieldIndex(const QString &name) const
{
    for (int i = 0; i < fieldCount(); ++i)
        if (fieldName(i).compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

QVariant Recordset::normalise(int ordinal, const QVariant &raw) const
{
    if (raw.isNull() || m_columns.isEmpty())
        return raw;
    const ColumnInfo &c = m_columns[ordinal];
    switch (c.kind) {
    case ColumnInfo::Char: {
        const QString s = raw.toString();
        return s.size() < c.width ? s.leftJustified(c.width, QLatin1Char(' ')) : s;
    }
    case ColumnInfo::DateTime:
        return raw.typeId() == QMetaType::QDateTime ? raw : QVariant(parseDateTime(raw.toString()));
    case ColumnInfo::Decimal:
        return m_connection->provider() == Provider::SQLite ? QVariant(QString::number(raw.toDouble(), 'f', c.decimals)) : raw;
    case ColumnInfo::Plain: break;
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
    return normalise(ordinal, m_rows[m_position].value(ordinal));
}

const RowValues *Recordset::plainRow(int ordinal) const
{
    const bool plain = m_position >= 0 && m_position < recordCount() && ordinal >= 0 && ordinal < fieldCount() && m_dirty.empty();
    return plain ? &m_rows[m_position] : nullptr;
}

void Recordset::readText(int ordinal, int width, QString &into) const
{
    const RowValues *row = plainRow(ordinal);
    const bool plain = row && width > 0 && (kind(ordinal) == ColumnInfo::Plain || kind(ordinal) == ColumnInfo::Char) &&
                       (row->kind(ordinal) == RowValues::Text || row->kind(ordinal) == RowValues::Null);
    if (plain) {
        // A CHAR column's padding is cut or extended to the field's width all the same.
        const QByteArrayView bytes = row->kind(ordinal) == RowValues::Text ? row->bytes(ordinal) : QByteArrayView();
        const qsizetype used = qMin<qsizetype>(bytes.size(), width);
        if (std::all_of(bytes.begin(), bytes.begin() + used, [](char c) { return uchar(c) < 0x80; })) {
            auto same = [&] {
                if (into.size() != width)
                    return false;
                for (qsizetype i = 0; i < width; ++i)
                    if (into[i].unicode() != (i < used ? char16_t(bytes[i]) : u' '))
                        return false;
                return true;
            };
            if (same())
                return;
            into.resize(width);
            QChar *out = into.data();
            for (qsizetype i = 0; i < width; ++i)
                out[i] = QLatin1Char(i < used ? bytes[i] : ' ');
            return;
        }
    }
    into = value(ordinal).toString().leftJustified(width, QLatin1Char(' '), true);
}

qint32 Recordset::readInteger(int ordinal) const
{
    if (const RowValues *row = plainRow(ordinal); row && kind(ordinal) == ColumnInfo::Plain) {
        if (row->kind(ordinal) == RowValues::Integer)
            return qint32(row->integer(ordinal));
        if (row->kind(ordinal) == RowValues::Null)
            return 0;
    }
    return value(ordinal).toInt();
}

double Recordset::readReal(int ordinal) const
{
    if (const RowValues *row = plainRow(ordinal); row && kind(ordinal) == ColumnInfo::Plain) {
        switch (row->kind(ordinal)) {
        case RowValues::Real: return row->real(ordinal);
        case RowValues::Integer: return double(row->integer(ordinal));
        case RowValues::Null: return 0;
        default: break;
        }
    }
    return value(ordinal).toDouble();
}

Money Recordset::readMoney(int ordinal) const
{
    const RowValues *row = plainRow(ordinal);
    if (row && kind(ordinal) == ColumnInfo::Decimal && m_connection->provider() == Provider::SQLite) {
        const int decimals = m_columns[ordinal].decimals;
        std::optional<Money> amount;
        switch (row->kind(ordinal)) {
        case RowValues::Null: return Money();
        case RowValues::Integer: amount = decimalMoney(double(row->integer(ordinal)), decimals); break;
        case RowValues::Real: amount = decimalMoney(row->real(ordinal), decimals); break;
        default: break;
        }
        if (amount)
            return *amount;
    }
    return Money::fromVariant(value(ordinal));
}

QDateTime Recordset::readDate(int ordinal) const
{
    const RowValues *row = plainRow(ordinal);
    if (row && kind(ordinal) == ColumnInfo::DateTime) {
        if (row->kind(ordinal) == RowValues::Null)
            return QDateTime();
        if (row->kind(ordinal) == RowValues::Text)
            if (const QDateTime plain = plainDateTime(row->bytes(ordinal)); plain.isValid())
                return plain;
    }
    return value(ordinal).toDateTime();
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
    return m_connection->provider() == Provider::Postgres ? fieldName(ordinal)
                                                           : QLatin1Char('"') + fieldName(ordinal) + QLatin1Char('"');
}

QVariant Recordset::toEngine(int ordinal, const QVariant &value) const
{
    if (value.typeId() == QMetaType::QDateTime || value.typeId() == QMetaType::QDate) {
        const QDateTime dt = value.toDateTime();
        return dt.isValid() ? QVariant(dt.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))) : QVariant();
    }
    if (!m_columns.isEmpty() && m_connection->provider() == Provider::SQLite && m_columns[ordinal].kind == ColumnInfo::Decimal
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
        binds << row.value(i);
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
    if (!m_connection->reachable())
        return fail(m_connection->lastError());
    m_connection->noteStatement(QStringLiteral("UPDATE ") + m_table);
    bool changed = false;
    QVariantList returned;
    if (postgres) {
        // Prepared once per text too: a fresh statement costs three round trips, not one.
        if (!m_connection->runBoundRow(sql, binds + whereBinds, returned))
            return fail(m_connection->lastError());
        changed = !returned.isEmpty();
    } else {
        // The same text comes back for each row of a bulk write: prepared once.
        int affected = 0;
        if (!m_connection->runBound(sql, binds + whereBinds, affected))
            return fail(m_connection->lastError());
        changed = affected > 0;
    }
    if (!changed)
        return fail({DbError::kRowChanged,
                     QStringLiteral("Row cannot be located for updating. Some values may have been changed since it was last read."),
                     QStringLiteral("QSQL")});
    if (postgres) {
        m_locator[m_position] = returned.value(0);
        m_version[m_position] = returned.value(1);
    }
    for (const auto &[field, value] : m_dirty)
        m_rows[m_position].set(field, toEngine(field, value));
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
    if (!m_connection->reachable())
        return fail(m_connection->lastError());
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
