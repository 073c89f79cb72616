#pragma once
#include "common/Money.h"

#include <QString>

namespace qln {

// A number in one of the display patterns of the suite ("#.00", "##,##0.00", "##0.0",
// "#######.00"): one decimal for each "0" behind the point, rounded half away from zero; at
// least as many digits before the point as there are "0"s there, so "#.00" shows 0.5 as ".50";
// thousands separated by "," when the pattern has one.
QString gfsNumber_format(Money value, const QString &sPattern);
QString gfsNumber_format(double value, const QString &sPattern);

} // namespace qln
