#pragma once
#include "common/Money.h"
#include "platform/Connection.h"

#include <QDateTime>
#include <QVariant>
#include <vector>

namespace qln {

// A client-side record set: the rows of one statement, a current row, fields by ordinal
// and by name, and Update/Delete of the current row with an optimistic check.
class Recordset {
public:
    // Runs the statement; false with lastError() set when the engine refuses it.
    bool open(Connection &connection, const QString &tsql);

    const QString &source() const { return m_source; }
    int recordCount() const { return int(m_rows.size()); }
    bool eof() const { return m_position >= recordCount(); }
    bool bof() const { return m_position < 0 || recordCount() == 0; }
    void moveFirst() { m_position = 0; }
    void moveNext() { if (m_position < recordCount()) ++m_position; }

    int fieldCount() const { return int(m_names.size()); }
    QString fieldName(int ordinal) const;
    int fieldIndex(const QString &name) const; // -1 when absent; case-insensitive

    // The current row's value, as the suite's server gives it: CHAR blank padded, dates as
    // date-times, decimals as exact text. Null outside the rows.
    QVariant value(int ordinal) const;
    // The current row's value as a record field takes it, without going through value()
    // where the engine's value allows: a text cut or blank padded to `width` (written into
    // `into`, which keeps its storage when it can), a whole number, a real, an amount, a
    // date (invalid for a null or a text that is not one).
    void readText(int ordinal, int width, QString &into) const;
    qint32 readInteger(int ordinal) const;
    double readReal(int ordinal) const;
    Money readMoney(int ordinal) const;
    QDateTime readDate(int ordinal) const;

    // Changes the current row's value in the set; Update sends it.
    void setValue(int ordinal, const QVariant &value);

    // Writes the changed fields of the current row, or removes the row. Both fail, and
    // write nothing, when another station changed or removed the row since it was read.
    bool update();
    bool deleteCurrent();

    const DbError &lastError() const { return m_error; }

private:
    QVariant normalise(int ordinal, const QVariant &raw) const;
    // The current row's engine values when the column is one of them and nothing overrides
    // them, else null.
    const RowValues *plainRow(int ordinal) const;
    ColumnInfo::Kind kind(int ordinal) const { return m_columns.isEmpty() ? ColumnInfo::Plain : m_columns[ordinal].kind; }
    QVariant toEngine(int ordinal, const QVariant &value) const;
    QString columnRef(int ordinal) const;
    bool rowCondition(QString &where, QVariantList &binds) const;
    bool fail(const DbError &error);

    Connection *m_connection = nullptr;
    QString m_source;
    QString m_table; // the one table of a simple SELECT, for Update and Delete
    QStringList m_names;         // as the engine names them
    QList<ColumnInfo> m_columns; // by ordinal, where the table is known
    std::vector<RowValues> m_rows;
    std::vector<QVariant> m_locator;           // rowid, or ctid
    std::vector<QVariant> m_version;           // PostgreSQL's xmin
    std::vector<std::pair<int, QVariant>> m_dirty;
    int m_position = 0;
    DbError m_error;
};

} // namespace qln
