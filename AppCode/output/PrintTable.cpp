#include "output/PrintTable.h"

#include "common/Csv.h"

#include <QSaveFile>

#include <algorithm>

namespace qln {

QChar gfcPrint_AlignSign(int alignment)
{
    if (alignment >= 3 && alignment <= 5)
        return QLatin1Char('^');
    if (alignment >= 6 && alignment <= 8)
        return QLatin1Char('>');
    return QLatin1Char('<');
}

int gfiPrint_FixedWidth(const PrintGridSource &grid)
{
    int width = 0;
    for (int col = 0; col < grid.fixedCols() && col < grid.cols(); ++col)
        width += grid.colWidth(col);
    return width;
}

int gfiPrint_TotalWidth(const PrintGridSource &grid)
{
    int width = 0;
    for (int col = 0; col < grid.cols(); ++col)
        width += grid.colWidth(col);
    return width;
}

int gfiGrid_LastColumnOnPage(const PrintGridSource &grid, int firstCol, int availableWidth)
{
    int used = gfiPrint_FixedWidth(grid);
    int last = firstCol;
    for (int col = firstCol; col < grid.cols(); ++col) {
        used += grid.colWidth(col);
        if (used > availableWidth && col > firstCol)
            break;
        last = col;
    }
    return last;
}

std::vector<int> gfPrint_PageColumns(const PrintGridSource &grid, int firstCol, int lastCol)
{
    std::vector<int> columns;
    for (int col = 0; col < grid.fixedCols() && col < grid.cols(); ++col)
        columns.push_back(col);
    for (int col = std::max(firstCol, grid.fixedCols()); col <= lastCol && col < grid.cols(); ++col)
        if (grid.colWidth(col) > 0)
            columns.push_back(col);
    return columns;
}

QString gfsPrint_ColumnFormat(const PrintGridSource &grid, const std::vector<int> &columns, int keepCol,
                              int availableWidth)
{
    qint64 total = 0;
    for (int col : columns)
        total += grid.colWidth(col);
    QString format;
    for (int col : columns) {
        const int width = col == keepCol || total == 0 ? grid.colWidth(col)
                                                       : int(qint64(grid.colWidth(col)) * availableWidth / total);
        format += QLatin1Char('|') + gfcPrint_AlignSign(grid.colAlignment(col)) + QString::number(width);
    }
    return format.mid(1) + QStringLiteral("\n");
}

QString gfsPrint_HeadRow(const PrintGridSource &grid, const std::vector<int> &columns)
{
    QStringList cells;
    for (int col : columns)
        cells << grid.text(0, col).trimmed();
    return cells.join(QLatin1Char('|')) + QStringLiteral("\n");
}

QString gfsPrint_Body(const PrintGridSource &grid, const std::vector<int> &columns, const std::function<void()> &tick)
{
    QString body;
    const int first = grid.fixedRows();
    const int rows = grid.rows();
    body.reserve(qsizetype(std::max(0, rows - first)) * qsizetype(columns.size()) * 12);
    for (int row = first; row < rows; ++row) {
        if (row > first)
            body += QLatin1Char('\n');
        bool firstCell = true;
        for (int col : columns) {
            if (!firstCell)
                body += QLatin1Char('|');
            firstCell = false;
            body += grid.text(row, col).trimmed();
        }
        if (tick)
            tick();
    }
    return body;
}

PrintTable::PrintTable(const QString &format, const QString &headRow, QString body) : m_body(std::move(body))
{
    QString columns = format;
    if (columns.endsWith(QLatin1Char('\n')))
        columns.chop(1);
    for (const QString &entry : columns.split(QLatin1Char('|'))) {
        PrintColumn column;
        qsizetype digits = 0;
        if (!entry.isEmpty() && !entry.front().isDigit()) {
            column.align = entry.front();
            digits = 1;
        }
        column.width = entry.mid(digits).toInt();
        m_columns.push_back(column);
    }
    QString head = headRow;
    if (head.endsWith(QLatin1Char('\n')))
        head.chop(1);
    if (!head.isEmpty())
        m_head = head.split(QLatin1Char('|'));
    if (m_body.isEmpty())
        return;
    m_rowStarts.push_back(0);
    for (qsizetype at = m_body.indexOf(QLatin1Char('\n')); at >= 0; at = m_body.indexOf(QLatin1Char('\n'), at + 1))
        m_rowStarts.push_back(at + 1);
}

PrintTable PrintTable::lines(const QStringList &lines, int width)
{
    PrintTable table(QStringLiteral("<") + QString::number(width), QString(), lines.join(QLatin1Char('\n')));
    table.m_wholeRows = true;
    return table;
}

int PrintTable::width() const
{
    int width = 0;
    for (const PrintColumn &column : m_columns)
        width += column.width;
    return width;
}

QStringList PrintTable::row(int index) const
{
    const qsizetype start = m_rowStarts[size_t(index)];
    const qsizetype end = size_t(index + 1) < m_rowStarts.size() ? m_rowStarts[size_t(index + 1)] - 1 : m_body.size();
    const QString text = QStringView(m_body).mid(start, end - start).toString();
    if (m_wholeRows)
        return {text};
    QStringList cells = text.split(QLatin1Char('|'));
    while (cells.size() < qsizetype(m_columns.size()))
        cells << QString();
    return cells;
}

int PrintTable::rowAt(qsizetype offset) const
{
    const auto next = std::upper_bound(m_rowStarts.begin(), m_rowStarts.end(), offset);
    return int(next - m_rowStarts.begin()) - 1;
}

namespace {
QByteArray csvLine(const QStringList &cells, qsizetype count)
{
    QString line;
    for (qsizetype i = 0; i < count; ++i) {
        if (i > 0)
            line += QLatin1Char(',');
        line += gfsCsv_field(cells.value(i));
    }
    return line.toUtf8() + "\r\n";
}
} // namespace

std::optional<QString> gfsPrint_Csv_write(const QString &file, const std::vector<const PrintTable *> &tables)
{
    QSaveFile out(file);
    if (!out.open(QIODevice::WriteOnly))
        return out.errorString();
    out.write("\xEF\xBB\xBF");
    for (const PrintTable *table : tables) {
        const qsizetype count = qsizetype(table->columns().size());
        if (!table->head().isEmpty())
            out.write(csvLine(table->head(), count));
        for (int row = 0; row < table->rowCount(); ++row)
            out.write(csvLine(table->row(row), count));
    }
    if (!out.commit())
        return out.errorString();
    return std::nullopt;
}

} // namespace qln
