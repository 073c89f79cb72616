#pragma once
#include <QByteArrayView>
#include <QVariant>
#include <vector>

struct sqlite3_stmt;

namespace qln {

// One row of an answer. SQLite's values stay as the engine gives them (numbers as numbers,
// texts as their UTF-8 bytes in one buffer), so that a row costs two allocations however
// many columns it has; a value set later, or given by another engine, is kept as it came.
class RowValues {
public:
    enum Kind : quint8 { Null, Integer, Real, Text, Blob, Variant };

    // Columns 0 to `count` - 1 of the statement's current row.
    static RowValues fromSqlite(sqlite3_stmt *statement, int count);
    static RowValues fromVariants(std::vector<QVariant> values);

    int size() const { return int(m_cells.size()); }
    Kind kind(int column) const { return m_cells[size_t(column)].kind; }
    qint64 integer(int column) const { return m_cells[size_t(column)].integer; }
    double real(int column) const { return m_cells[size_t(column)].real; }
    QByteArrayView bytes(int column) const;

    // The value as Qt's SQLite driver gives it: a null is a null text.
    QVariant value(int column) const;
    void set(int column, const QVariant &value);

private:
    struct Span {
        quint32 from, length;
    };
    struct Cell {
        Kind kind = Null;
        union {
            qint64 integer = 0;
            double real;
            Span text;       // in m_bytes
            quint32 variant; // in m_variants
        };
    };
    void append(Cell &cell, const void *data, int length);
    static constexpr qsizetype kBytesHint = 1024; // an item row's texts, mostly

    std::vector<Cell> m_cells;
    QByteArray m_bytes;
    std::vector<QVariant> m_variants;
};

} // namespace qln
