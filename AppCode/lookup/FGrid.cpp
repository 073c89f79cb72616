#include "lookup/FGrid.h"

#include "lookup/FlexGrid.h"

#include <cmath>

namespace qln {

namespace {
constexpr int kChromeTwips = 300;
constexpr quint32 kWhite = 0xFFFFFF;
constexpr quint32 kBlack = 0;
constexpr quint32 kSortHeaderBack = 0x80000003u;
constexpr quint32 kHeaderBack = 0x8000000Au;
} // namespace

void gpGrid_SelectRow(FlexGrid &grid, int row) { grid.selectWholeRow(row); }

int gfiGrid_TotalWidth(const FlexGrid &grid)
{
    int total = 0;
    for (int col = 0; col < grid.Cols(); ++col)
        total += grid.ColWidth(col);
    return total;
}

int gfiGrid_LastColumnOnPage(const FlexGrid &grid, int width, int firstCol)
{
    int used = firstCol > 0 ? grid.ColWidth(0) : 0;
    int last = firstCol;
    for (int col = firstCol; col < grid.Cols(); ++col) {
        used += grid.ColWidth(col);
        if (used > width)
            break;
        last = col;
    }
    return last;
}

void gpGrid_FitColumns(FlexGrid &grid)
{
    const int target = gfiGrid_TotalWidth(grid) + kChromeTwips;
    const int width = grid.Width();
    if (width == target)
        return;
    // A whole number of twips, rounded half to even as the platform's conversion does.
    for (int col = 0; col < grid.Cols(); ++col)
        grid.setColWidth(col, int(std::nearbyint(double(grid.ColWidth(col)) * width / target)));
}

void gpGrid_ScaleColumns(FlexGrid &grid, const std::vector<int> &designTwips)
{
    qint64 design = 0;
    for (const int twips : designTwips)
        design += twips;
    const qint64 width = grid.ClientWidth();
    for (int col = 0; col < int(designTwips.size()) && col < grid.Cols(); ++col) {
        const int base = designTwips[size_t(col)];
        grid.setColWidth(col, design > 0 ? int(base * width / design) : base);
    }
}

void gpGrid_AddRow(FlexGrid &grid, int &count)
{
    ++count;
    if (count > 1)
        grid.AddItem(QString());
}

void gpGrid_GoTop(FlexGrid &grid, int lastCol)
{
    if (grid.Rows() <= 1)
        return;
    grid.setTopRow(1);
    grid.setRow(1);
    grid.setCol(0);
    grid.setColSel(lastCol);
    grid.setHighLight(0);
}

void gpGrid_ShowRow(FlexGrid &grid, int lastCol)
{
    if (grid.Rows() <= 1)
        return;
    if (!grid.RowIsVisible(grid.Row()))
        grid.setTopRow(grid.Row());
    grid.setHighLight(1);
    grid.setCol(1);
    grid.setColSel(lastCol);
    grid.setHighLight(0);
}

void gpGrid_BoldHeader(FlexGrid &grid)
{
    const bool bigSelection = grid.AllowBigSelection();
    const int fillStyle = grid.FillStyle();
    grid.setAllowBigSelection(true);
    grid.setFillStyle(1);
    grid.setRow(0);
    grid.setCol(0);
    grid.setColSel(grid.Cols() - 1);
    grid.setCellFontBold(true);
    grid.setAllowBigSelection(bigSelection);
    grid.setFillStyle(fillStyle);
    grid.setRedraw(true);
    gpGrid_GoTop(grid, grid.Cols() - 1);
}

void gpGrid_SortColumn(FlexGrid &grid, int col, int sortCode)
{
    grid.setRedraw(false);
    grid.setRow(1);
    grid.setRowSel(grid.Rows() - 1);
    grid.setCol(col);
    grid.setSort(sortCode);
    grid.setRedraw(true);
}

void gpGrid_HeaderHighlight(FlexGrid &grid, int sortCol)
{
    const int row = grid.Row(), rowSel = grid.RowSel(), col = grid.Col(), colSel = grid.ColSel();
    const int fillStyle = grid.FillStyle();
    grid.setFillStyle(0);
    grid.setRow(0);
    for (int c = 0; c < grid.Cols(); ++c) {
        const bool sorted = c == sortCol;
        grid.setCol(c);
        grid.setCellForeColor(sorted ? kWhite : kBlack);
        grid.setCellBackColor(sorted ? kSortHeaderBack : kHeaderBack);
        grid.setCellFontBold(true);
        grid.setCellFontSize(sorted ? 8.0 : 10.0);
    }
    grid.setFillStyle(fillStyle);
    grid.setRow(row);
    grid.setRowSel(rowSel);
    grid.setCol(col);
    grid.setColSel(colSel);
}

} // namespace qln
