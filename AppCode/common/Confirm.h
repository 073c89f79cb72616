#pragma once
#include <QString>

namespace qln {

// The shared Yes/No question, titled with the program's name: sIssue, two carriage returns and
// sHelp. iDefault is added to the box flags as on the platform: 0 makes Yes the default, 256 No.
// True for Yes.
bool gfbConfirm(const QString &sIssue, const QString &sHelp, int iDefault = 0);

} // namespace qln
