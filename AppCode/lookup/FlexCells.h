#pragma once
#include <QHash>
#include <QString>

#include <optional>
#include <vector>

namespace qln {

// The flex grid's sort codes.
enum FlexSort {
    flexSortNone = 0,
    flexSortGenericAscending = 1,
    flexSortGenericDescending = 2,
    flexSortNumericAscending = 3,
    flexSortNumericDescending = 4,
    flexSortStringNoCaseAscending = 5,
    flexSortStringNoCaseDescending = 6,
    flexSortStringAscending = 7,
    flexSortStringDescending = 8,
};

// What a cell carries besides its text; an empty value means "as the column or grid says".
// Colours are the platform's OLE colours: 0x00BBGGRR, or 0x800000nn for system colour nn.
struct FlexCellFormat {
    std::optional<int> alignment;
    std::optional<quint32> backColor;
    std::optional<quint32> foreColor;
    std::optional<bool> bold;
    std::optional<double> fontSize;
};

// The cells of a flex grid, window-free: texts in one flat row-major vector so that a grid of
// 100,000 rows costs one allocation, and the rare formats and row heights beside each row, so
// that they travel with their row when rows are sorted or inserted.
class FlexCells {
public:
    int rows() const { return int(m_extras.size()); }
    int cols() const { return m_cols; }
    // Keeps the texts that remain inside the new bounds.
    void resize(int rows, int cols);

    const QString &text(int row, int col) const;
    void setText(int row, int col, const QString &text);

    const FlexCellFormat &format(int row, int col) const;
    FlexCellFormat &formatRef(int row, int col);

    // A row height in twips, or -1 for the grid's default.
    int rowHeight(int row) const { return m_extras[row].height; }
    void setRowHeight(int row, int twips) { m_extras[row].height = twips; }

    // A new row at `row`, its columns taken from the tab-separated `item`.
    void insertRow(int row, const QString &item);
    // Empties every text and drops every format; the shape stays.
    void clear();
    // Orders rows firstRow..lastRow on the key columns firstCol..lastCol, left to right.
    // Rows that compare equal keep their order.
    void sort(int firstRow, int lastRow, int firstCol, int lastCol, int code);

private:
    struct RowExtras {
        QHash<int, FlexCellFormat> formats;
        int height = -1;
    };
    int m_cols = 0;
    std::vector<QString> m_text;
    std::vector<RowExtras> m_extras;
};

} // namespace qln
