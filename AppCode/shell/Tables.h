#pragma once

// The eight tables of the program, opened in their fixed order.
namespace qln {

// Connects, registers table 0 and reads the company record, then registers tables 1 to 7.
// The result is that of the company read.
bool gfbTables_open();
// Registers tables 1 to 7 in number order; the company record names the inventory table.
void gpTables_register();
// Opens tables 0 to 7 from iFirst; the first failure stops the loop. Brings an old
// PromoPrices to its numbered shape.
bool gfbTables_recordsets_open(int iFirst = 0);
void gpTables_close();
// Moves every table to its start; stops at the first failure.
bool gfbAllTables_position();

} // namespace qln
