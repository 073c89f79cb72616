#pragma once

#include <QString>
#include <QStringList>

namespace qln {

// Lets the user choose an item in the record lookup (find mode, inventory, no vendor filter).
// Returns the item's SL in key form, or an empty text when the user cancelled.
QString gfsInventory_Pick();
// Lets the user build a list of items in the record lookup, a quantity typed for each. Returns
// their SLs in key form, in the order they were given; none when the user cancelled.
QStringList gfsInventory_PickList();

} // namespace qln
