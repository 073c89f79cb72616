#pragma once
#include <QStringList>
#include <QTextStream>
#include <cstdio>

// quillon-promo: the promo table from the command line, on the program's own data path and
// database, with its own start-up.
namespace qln {

inline const QString kPromoCliName = QStringLiteral("quillon-promo");

// Runs the command for its arguments (the program's name left out); the exit code.
int gfiPromoCli_run(const QStringList &arguments, QTextStream &out, QTextStream &err, std::FILE *errFile);

} // namespace qln
