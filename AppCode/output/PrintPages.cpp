#include "output/PrintPages.h"

#include <algorithm>

namespace qln {

std::vector<PrintPage> gfPrint_Pages(const std::vector<PrintTable> &tables, const std::vector<PrintRowHeights> &heights,
                                     int bodyHeight, int headHeight)
{
    std::vector<PrintPage> pages;
    for (int t = 0; t < int(tables.size()); ++t) {
        const PrintTable &table = tables[size_t(t)];
        const int rowHeight = std::max(1, heights[size_t(t)].row);
        const int tableHead = table.head().isEmpty() ? 0 : heights[size_t(t)].head;
        const int perPage = std::max(1, (bodyHeight - headHeight - tableHead) / rowHeight);
        int row = 0;
        do {
            const int count = std::min(perPage, table.rowCount() - row);
            pages.push_back({t, row, count});
            row += count;
        } while (row < table.rowCount());
    }
    return pages;
}

namespace {
int pageOf(const std::vector<PrintPage> &pages, int table, int row)
{
    const auto it = std::find_if(pages.begin(), pages.end(), [&](const PrintPage &p) {
        return p.table == table && row >= p.firstRow && row < p.firstRow + p.rowCount;
    });
    return int(it - pages.begin());
}

bool isSeparator(QChar c) { return c == QLatin1Char('|') || c == QLatin1Char('\n'); }
} // namespace

std::optional<PrintHit> gfPrint_Find(const std::vector<PrintTable> &tables, const std::vector<PrintPage> &pages,
                                     const QString &text, int fromPage, const std::optional<PrintHit> &after)
{
    if (text.isEmpty() || fromPage < 0 || fromPage >= int(pages.size()))
        return std::nullopt;
    int table = pages[size_t(fromPage)].table;
    const PrintTable &startTable = tables[size_t(table)];
    qsizetype from = pages[size_t(fromPage)].rowCount > 0 ? startTable.rowStart(pages[size_t(fromPage)].firstRow) : 0;
    if (after) {
        table = after->table;
        from = after->bodyOffset + 1;
    }
    for (; table < int(tables.size()); ++table, from = 0) {
        const QString &body = tables[size_t(table)].body();
        for (qsizetype at = body.indexOf(text, from, Qt::CaseInsensitive); at >= 0;
             at = body.indexOf(text, at + 1, Qt::CaseInsensitive)) {
            const QStringView hit = QStringView(body).mid(at, text.size());
            if (std::any_of(hit.begin(), hit.end(), isSeparator))
                continue;
            const PrintTable &t = tables[size_t(table)];
            const int row = t.rowAt(at);
            const qsizetype rowStart = t.rowStart(row);
            const QStringView before = QStringView(body).mid(rowStart, at - rowStart);
            const int cell = int(before.count(QLatin1Char('|')));
            const qsizetype cellStart = before.lastIndexOf(QLatin1Char('|')) + 1;
            return PrintHit{pageOf(pages, table, row), table, row, cell, at - rowStart - cellStart, text.size(), at};
        }
    }
    return std::nullopt;
}

} // namespace qln
