#pragma once
#include <QString>

namespace qln {

// Lets the user choose a name in the record lookup (find mode, names file), the table being
// registered first. Returns the name's A/R code, trimmed, or an empty text when the user
// cancelled.
QString gfsName_Pick();

} // namespace qln
