#pragma once
#include <QString>

namespace qln {

class InstanceLock;

// The program from its single-instance check to its end routine. The result is the exit code:
// 0 after the first window, 1 when the data path or the tables could not be opened. A second
// instance and the menu's "Exit" end the process by ProgramEnd.
int gfiQlnMain(const QString &sCommandLine, InstanceLock &lock);

// The end routine: every form still loaded is closed, pending events running after each.
void gpForms_unload();

} // namespace qln
