#pragma once
#include "platform/HelpFile.h"

namespace qln {

// The guides page unless "ZOR Settings", "Help", "GuidesURL" names another.
inline const QString kDefaultGuidesUrl = QStringLiteral("https://help.quillon.example/guides/");

// Opens the online guides in the default browser. Every topic opens the same page.
void gpHelp_guides_open(const QString &sTopic);

} // namespace qln
