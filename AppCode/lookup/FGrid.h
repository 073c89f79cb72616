#pragma once
#include <vector>

namespace qln {

class FlexGrid;

// The helpers that every list window shares for its grid.

void gpGrid_SelectRow(FlexGrid &grid, int row);
int gfiGrid_TotalWidth(const FlexGrid &grid);
// The last column, from firstCol on, that still fits in `width` twips beside column 0 (which a
// page after the first repeats). At least firstCol, so that a page always takes a column.
int gfiGrid_LastColumnOnPage(const FlexGrid &grid, int width, int firstCol);
// Scales the columns so that they fill the grid's width, less 300 twips for its chrome.
void gpGrid_FitColumns(FlexGrid &grid);
// Sets the columns to `designTwips` scaled so that together they fill the grid's client width:
// a window whose columns scale with it takes the sum of its design widths as the grid's width
// at load, so the columns fill the grid from the first show on and keep their proportions.
void gpGrid_ScaleColumns(FlexGrid &grid, const std::vector<int> &designTwips);
// Counts a new row in `count`; the first one reuses the blank row that a fresh grid has.
void gpGrid_AddRow(FlexGrid &grid, int &count);
void gpGrid_GoTop(FlexGrid &grid, int lastCol);
void gpGrid_ShowRow(FlexGrid &grid, int lastCol);
void gpGrid_BoldHeader(FlexGrid &grid);
void gpGrid_SortColumn(FlexGrid &grid, int col, int sortCode);
// Marks the sort column's header cell and sets every other header cell back.
void gpGrid_HeaderHighlight(FlexGrid &grid, int sortCol);

} // namespace qln
