#pragma once
#include "lookup/DataGridState.h"
#include "store/Names.h"

namespace qln {

class clsINI_Services;

// The column table of the inventory lookup, and the choice of key by column.

// Reads the settings that shape the list from ZOR.INI, section "LOOKUP": "Show Dept Name",
// "Show UID", "Long Description", "Cost Security", "Scanning" ("Y" turns each on),
// "Show Matrix Roots", and the head office's store list "SALESHEAD".
void gpLookupSettings_load(clsINI_Services &ini);

// An entry of a head office's store list: its text and the store it stands for.
struct StoreChoice {
    QString sText;
    int iStore = 0;
};
// The stores of SALESHEAD, each entry a store number with an optional name after it
// ("12 Downtown" or "12"; an entry that does not begin with one is left out), then
// "HUB/*ALL" for the home store, the head office's own.
QList<StoreChoice> gfaLookup_Stores();

// Whether the current user may see cost.
bool gfbLookup_CostVisible();

// Fills the column table of file 1 for iFirstCol, sets the captions of the window, and
// the sort of column iFirstCol. True.
bool gfbGridSetUp_Inventory();

// Chooses key, search field and label for a clicked column (a column without a field
// stands for the first one). False when the column can't lead the list; a box said why.
bool gpDataGrid_SetSortInventory(int col);

// Fills the column table of file 99 (headers from the site's terms), sets the captions of the
// window and the key on A/R Code. True.
bool gfbGridSetUp_Names();

// Chooses key, search field and label for a clicked column of the names list; Street, City
// and State have no key and are sorted for display only.
void gpDataGrid_SetSortNames(int col);

// The first column showing field iField with display format iFormat; -1 when none.
int gfiDataGrid_ColumnOf(int iField, int iFormat = 0);

} // namespace qln
