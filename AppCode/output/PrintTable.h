#pragma once
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace qln {

// What the printing of a grid reads of it; the window's grid and plain tables in tests alike.
class PrintGridSource {
public:
    virtual ~PrintGridSource() = default;
    virtual int rows() const = 0;
    virtual int cols() const = 0;
    virtual int fixedRows() const = 0;
    virtual int fixedCols() const = 0;
    virtual QString text(int row, int col) const = 0;
    virtual int colWidth(int col) const = 0; // twips; 0 hides the column
    virtual int colAlignment(int col) const = 0;
};

// The sign of a flex grid alignment in a column format: "<", "^" or ">".
QChar gfcPrint_AlignSign(int alignment);
// The sum of the widths of the fixed columns, which repeat on every page of columns.
int gfiPrint_FixedWidth(const PrintGridSource &grid);
// The sum of all column widths.
int gfiPrint_TotalWidth(const PrintGridSource &grid);
// The last column from firstCol on that still fits beside the fixed columns; at least firstCol.
int gfiGrid_LastColumnOnPage(const PrintGridSource &grid, int firstCol, int availableWidth);
// The columns that print on the page of columns firstCol..lastCol: the fixed ones, then the
// shown ones of the page.
std::vector<int> gfPrint_PageColumns(const PrintGridSource &grid, int firstCol, int lastCol);
// "<1500|^900|>800" and a row end: each width scaled so the page's columns fill the available
// width, except keepCol's, which keeps its own.
QString gfsPrint_ColumnFormat(const PrintGridSource &grid, const std::vector<int> &columns, int keepCol,
                              int availableWidth);
// Row 0 of the page's columns, trimmed, joined by "|", and a row end.
QString gfsPrint_HeadRow(const PrintGridSource &grid, const std::vector<int> &columns);
// The data rows of the page's columns, trimmed and joined by "|", rows joined by the row end
// with none after the last. `tick` runs between rows so a long list leaves the window alive.
QString gfsPrint_Body(const PrintGridSource &grid, const std::vector<int> &columns,
                      const std::function<void()> &tick = {});

struct PrintColumn {
    QChar align = QLatin1Char('<');
    int width = 0; // twips
};

// A table as the engine takes it: a column format, a header row and the body text, rows split
// at the row end and cells at "|". The body is kept as one text with the starts of its rows;
// a "|" or a line feed inside a cell therefore starts a new cell or row, as in the engine.
class PrintTable {
public:
    PrintTable() = default;
    PrintTable(const QString &format, const QString &headRow, QString body);
    // Lines of text printed as they stand, one cell a line, in a column of `width`.
    static PrintTable lines(const QStringList &lines, int width);

    const std::vector<PrintColumn> &columns() const { return m_columns; }
    int width() const;
    const QStringList &head() const { return m_head; }
    int rowCount() const { return int(m_rowStarts.size()); }
    // The cells of a row, as many as the format has columns (missing ones empty).
    QStringList row(int index) const;
    const QString &body() const { return m_body; }
    // The row that holds position `offset` of the body.
    int rowAt(qsizetype offset) const;
    qsizetype rowStart(int index) const { return m_rowStarts[size_t(index)]; }

private:
    std::vector<PrintColumn> m_columns;
    QStringList m_head;
    QString m_body;
    std::vector<qsizetype> m_rowStarts;
    bool m_wholeRows = false;
};

// Writes the tables as CSV (UTF-8 with a byte order mark, CR LF), header rows included.
// The file appears whole or not at all; the error text is returned on failure.
std::optional<QString> gfsPrint_Csv_write(const QString &file, const std::vector<const PrintTable *> &tables);

} // namespace qln
