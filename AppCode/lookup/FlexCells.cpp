#include "lookup/FlexCells.h"

#include "common/Numbers.h"

#include <QLocale>

#include <algorithm>

namespace qln {
namespace {

// One cell's sort key, worked out once per row rather than once per comparison.
struct SortKey {
    bool isNumber = false;
    double number = 0.0;
    QString text;
};

bool descending(int code)
{
    return code == flexSortGenericDescending || code == flexSortNumericDescending
        || code == flexSortStringNoCaseDescending || code == flexSortStringDescending;
}

SortKey sortKey(const QString &cell, int code)
{
    SortKey key;
    switch (code) {
    case flexSortGenericAscending:
    case flexSortGenericDescending:
        key.number = QLocale::c().toDouble(cell.trimmed(), &key.isNumber);
        if (!key.isNumber)
            key.text = cell.toCaseFolded();
        break;
    case flexSortNumericAscending:
    case flexSortNumericDescending: {
        // Most cells are plain numbers; only the others need the platform's slower reading.
        bool plain = false;
        key.number = QLocale::c().toDouble(cell.trimmed(), &plain);
        if (!plain)
            key.number = gfdNumber_value(cell);
        key.isNumber = true;
        break;
    }
    case flexSortStringNoCaseAscending:
    case flexSortStringNoCaseDescending:
        key.text = cell.toCaseFolded();
        break;
    default:
        key.text = cell;
    }
    return key;
}

// Numbers before texts, numbers by value, texts by code point.
int compareKeys(const SortKey &a, const SortKey &b)
{
    if (a.isNumber != b.isNumber)
        return a.isNumber ? -1 : 1;
    if (a.isNumber)
        return a.number < b.number ? -1 : (b.number < a.number ? 1 : 0);
    return a.text.compare(b.text);
}

} // namespace

void FlexCells::resize(int rows, int cols)
{
    rows = std::max(rows, 0);
    cols = std::max(cols, 0);
    if (cols != m_cols) {
        std::vector<QString> text(size_t(rows) * size_t(cols));
        const int keepRows = std::min(rows, this->rows());
        const int keepCols = std::min(cols, m_cols);
        for (int r = 0; r < keepRows; ++r)
            for (int c = 0; c < keepCols; ++c)
                text[size_t(r) * cols + c] = std::move(m_text[size_t(r) * m_cols + c]);
        m_text = std::move(text);
        for (RowExtras &extras : m_extras)
            extras.formats.removeIf([cols](const auto &it) { return it.key() >= cols; });
        m_cols = cols;
    } else {
        m_text.resize(size_t(rows) * size_t(cols));
    }
    m_extras.resize(size_t(rows));
}

const QString &FlexCells::text(int row, int col) const
{
    static const QString none;
    if (row < 0 || row >= rows() || col < 0 || col >= m_cols)
        return none;
    return m_text[size_t(row) * m_cols + col];
}

void FlexCells::setText(int row, int col, const QString &text)
{
    if (row >= 0 && row < rows() && col >= 0 && col < m_cols)
        m_text[size_t(row) * m_cols + col] = text;
}

const FlexCellFormat &FlexCells::format(int row, int col) const
{
    static const FlexCellFormat plain;
    if (row < 0 || row >= rows())
        return plain;
    const auto it = m_extras[row].formats.constFind(col);
    return it == m_extras[row].formats.cend() ? plain : *it;
}

FlexCellFormat &FlexCells::formatRef(int row, int col) { return m_extras[row].formats[col]; }

void FlexCells::insertRow(int row, const QString &item)
{
    row = std::clamp(row, 0, rows());
    const auto at = m_text.begin() + ptrdiff_t(row) * m_cols;
    m_text.insert(at, size_t(m_cols), QString());
    const QStringList parts = item.split(QLatin1Char('\t'));
    for (int c = 0; c < m_cols && c < parts.size(); ++c)
        m_text[size_t(row) * m_cols + c] = parts[c];
    m_extras.insert(m_extras.begin() + row, RowExtras());
}

void FlexCells::clear()
{
    std::fill(m_text.begin(), m_text.end(), QString());
    for (RowExtras &extras : m_extras)
        extras.formats.clear();
}

void FlexCells::sort(int firstRow, int lastRow, int firstCol, int lastCol, int code)
{
    firstRow = std::max(firstRow, 0);
    lastRow = std::min(lastRow, rows() - 1);
    firstCol = std::max(firstCol, 0);
    lastCol = std::min(lastCol, m_cols - 1);
    if (code < flexSortGenericAscending || code > flexSortStringDescending || firstRow >= lastRow
        || firstCol > lastCol)
        return;

    const int keyCols = lastCol - firstCol + 1;
    const int count = lastRow - firstRow + 1;
    std::vector<SortKey> keys(size_t(count) * keyCols);
    for (int r = 0; r < count; ++r)
        for (int c = 0; c < keyCols; ++c)
            keys[size_t(r) * keyCols + c] = sortKey(text(firstRow + r, firstCol + c), code);

    std::vector<int> order(static_cast<size_t>(count));
    for (int r = 0; r < count; ++r)
        order[r] = r;
    const bool down = descending(code);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        for (int c = 0; c < keyCols; ++c) {
            const int cmp = compareKeys(keys[size_t(a) * keyCols + c], keys[size_t(b) * keyCols + c]);
            if (cmp != 0)
                return down ? cmp > 0 : cmp < 0;
        }
        return false;
    });

    std::vector<QString> text(size_t(count) * m_cols);
    std::vector<RowExtras> extras(static_cast<size_t>(count));
    for (int r = 0; r < count; ++r) {
        const int from = firstRow + order[r];
        std::move(m_text.begin() + ptrdiff_t(from) * m_cols, m_text.begin() + ptrdiff_t(from + 1) * m_cols,
                  text.begin() + ptrdiff_t(r) * m_cols);
        extras[r] = std::move(m_extras[from]);
    }
    std::move(text.begin(), text.end(), m_text.begin() + ptrdiff_t(firstRow) * m_cols);
    std::move(extras.begin(), extras.end(), m_extras.begin() + firstRow);
}

} // namespace qln
