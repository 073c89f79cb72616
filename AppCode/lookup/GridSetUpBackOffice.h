#pragma once
#include "lookup/DataGridState.h"

namespace qln {

class clsINI_Services;

// The column table of the inventory lookup, and the choice of key by column.

// Reads the settings that shape the list from ZOR.INI, section "LOOKUP": "Show Dept Name",
// "Show UID", "Long Description", "Cost Security", "Scanning" ("Y" turns each on) and
// "Show Matrix Roots".
void gpLookupSettings_load(clsINI_Services &ini);

// Whether the current user may see cost.
bool gfbLookup_CostVisible();

// Fills the column table of file 1 for iFirstCol, sets the captions of the window, and
// the sort of column iFirstCol. True.
bool gfbGridSetUp_Inventory();

// Chooses key, search field and label for a clicked column (a column without a field
// stands for the first one).
void gpDataGrid_SetSortInventory(int col);

// The first column showing field iField with display format iFormat; -1 when none.
int gfiDataGrid_ColumnOf(int iField, int iFormat = 0);

} // namespace qln
