#include "platform/RowValues.h"

#include <sqlite3.h>

namespace qln {

RowValues RowValues::fromSqlite(sqlite3_stmt *statement, int count)
{
    RowValues row;
    row.m_cells.resize(size_t(count));
    row.m_bytes.reserve(kBytesHint);
    for (int i = 0; i < count; ++i) {
        Cell &cell = row.m_cells[size_t(i)];
        switch (sqlite3_column_type(statement, i)) {
        case SQLITE_INTEGER:
            cell.kind = Integer;
            cell.integer = sqlite3_column_int64(statement, i);
            break;
        case SQLITE_FLOAT:
            cell.kind = Real;
            cell.real = sqlite3_column_double(statement, i);
            break;
        case SQLITE_NULL:
            break;
        case SQLITE_BLOB:
            cell.kind = Blob;
            row.append(cell, sqlite3_column_blob(statement, i), sqlite3_column_bytes(statement, i));
            break;
        default:
            cell.kind = Text;
            row.append(cell, sqlite3_column_text(statement, i), sqlite3_column_bytes(statement, i));
        }
    }
    return row;
}

void RowValues::append(Cell &cell, const void *data, int length)
{
    cell.text = {quint32(m_bytes.size()), quint32(length)};
    m_bytes.append(static_cast<const char *>(data), length);
}

RowValues RowValues::fromVariants(std::vector<QVariant> values)
{
    RowValues row;
    row.m_cells.resize(values.size());
    for (size_t i = 0; i < values.size(); ++i) {
        row.m_cells[i].kind = Variant;
        row.m_cells[i].variant = quint32(i);
    }
    row.m_variants = std::move(values);
    return row;
}

QByteArrayView RowValues::bytes(int column) const
{
    const Cell &cell = m_cells[size_t(column)];
    return QByteArrayView(m_bytes.constData() + cell.text.from, cell.text.length);
}

QVariant RowValues::value(int column) const
{
    const Cell &cell = m_cells[size_t(column)];
    switch (cell.kind) {
    case Null: return QVariant(QMetaType::fromType<QString>());
    case Integer: return cell.integer;
    case Real: return cell.real;
    case Text: return QString::fromUtf8(bytes(column));
    case Blob: return bytes(column).toByteArray();
    case Variant: return m_variants[cell.variant];
    }
    return QVariant();
}

void RowValues::set(int column, const QVariant &value)
{
    Cell &cell = m_cells[size_t(column)];
    if (cell.kind == Variant) {
        m_variants[cell.variant] = value;
        return;
    }
    cell.kind = Variant;
    cell.variant = quint32(m_variants.size());
    m_variants.push_back(value);
}

} // namespace qln
