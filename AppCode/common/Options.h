#pragma once
#include <QString>

namespace qln {

// The options of the process as one text, the program's own name left out.
QString gfsCommandLine_get();

// Option of the family by number, "/" ending each value: 0 "/APP=", 1 "/APPDESC=", 2 "/APPVER=",
// 3 "/STATION=", 4 "/STATIONPATH=", 5 "/DATAPATH=", 6 "/MVSC=", 7 "/SL="; any other number
// gives an empty text. The first form reads sCommandLine, the second the process's own.
QString gfsCommandLine_option_get(int iOption, const QString &sCommandLine);
QString gfsCommandLine_option_get(int iOption);

} // namespace qln
