#pragma once
#include <QString>

namespace qln {

// The topic of the window whose help command runs next.
inline QString gsHelpTopic;

// The program's help file: "Quillon.hlp" in the program folder for a store's data,
// "ZORQLE.HLP" when no store is known yet.
void gpHelpFile_set(int iStore);
const QString &gfsHelpFile();

} // namespace qln
