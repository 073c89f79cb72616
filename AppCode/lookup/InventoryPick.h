#pragma once

#include <QString>

namespace qln {

// Lets the user choose an item in the record lookup (find mode, inventory, no vendor filter).
// Returns the item's SL in key form, or an empty text when the user cancelled.
QString gfsInventory_Pick();

} // namespace qln
