#pragma once
#include "lookup/DataGridState.h"

#include <QStringList>

// The paging grid: shows a table of any size through a window of iGridRows - 1 rows. Only
// the records on screen are held (gaGridText); every move walks the keyed operations from
// the record at the window's edge.
namespace qln {

// What the engine needs of the grid it paints; the lookup window's grid fulfils it.
class DataGridView {
public:
    virtual ~DataGridView() = default;
    virtual int row() const = 0;
    // The row becomes current, selected from column iFirstCol to the last.
    virtual void selectRow(int row) = 0;
    virtual void setHighLight(int mode) = 0;
    virtual void paintRow(int row, const QStringList &cells, int heightTwips) = 0;
    // Lets the window system run between the steps of a fill ("Stop Search", keys).
    virtual void yield() {}
    // The grid is enabled and takes the focus.
    virtual void activate() {}
    // After a move, the search box takes the focus back.
    virtual void searchFocus() {}
};

enum GridDirection : int { kLineUp = 0, kPageUp = 1, kPageDown = 2, kLineDown = 3 };

// Positions by sSearchText and fills the window; true when it filled. A text that a row on
// screen already begins with only moves the selection.
bool gfvDataGrid_Find(DataGridView &grid, bool bFromSearch);
// A fresh fill from the remembered record or the first; false when nothing matches.
bool gfbDataGrid_Reload(DataGridView &grid);
void gpDataGrid_Move(DataGridView &grid, int iDirection);
void gpDataGrid_SetRow(int iRow, DataGridView &grid);

// Sizes gaGridText for iGridRows rows (the header's included) of iGridCols blank cells.
void gpDataGrid_Size();
// What the window's grid height gives: whole part of (height - 600) / 600, plus 1.
int gfiDataGrid_RowCount(int iGridHeightTwips);
bool gfbDataGrid_RowBlank(int iRow);
// The row the selection was last left on.
int gfiDataGrid_Row();
// Empties the record arrays, the hits, and forgets the window's position.
void gpDataGrid_Unload();

// The record last chosen in free use (RememberSLCode), where a fresh fill starts.
inline QString sRememberedSL;

} // namespace qln
