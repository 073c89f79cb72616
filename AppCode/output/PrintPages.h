#pragma once
#include "output/PrintTable.h"

#include <optional>
#include <vector>

namespace qln {

// One page of a document: a run of rows of one table. Pages hold no text, so a list of any
// length costs a few numbers a page.
struct PrintPage {
    int table = 0;
    int firstRow = 0;
    int rowCount = 0;
};

// The heights of a table's rows and of its header row, which may wrap.
struct PrintRowHeights {
    int row = 0;
    int head = 0;
};

// Each table starts on a new page; a page holds as many rows of the table's height as fit
// below the head lines and the table's header row. A table with no rows still gets its page.
std::vector<PrintPage> gfPrint_Pages(const std::vector<PrintTable> &tables, const std::vector<PrintRowHeights> &heights,
                                     int bodyHeight, int headHeight);

// A piece of text found in a cell.
struct PrintHit {
    int page = 0;  // 0-based
    int table = 0;
    int row = 0;
    int cell = 0;
    qsizetype at = 0; // in the cell
    qsizetype length = 0;
    qsizetype bodyOffset = 0; // where the hit starts in the table's body
};

// The first hit of `text`, ignoring case, inside one cell, from page `fromPage` on, or after
// `after` when a search goes on.
std::optional<PrintHit> gfPrint_Find(const std::vector<PrintTable> &tables, const std::vector<PrintPage> &pages,
                                     const QString &text, int fromPage, const std::optional<PrintHit> &after);

} // namespace qln
