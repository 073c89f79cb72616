#pragma once
#include <QStringList>

#include <optional>

namespace qln {

inline const QString kProgramVersion = QStringLiteral(QUILLON_VERSION);

// The answer to "--help" or "--version" among the program's arguments (the first of them
// that is one), for stdout; nothing when the program is to start as usual.
std::optional<QString> gfsDesktopOption_answer(const QStringList &arguments);

} // namespace qln
