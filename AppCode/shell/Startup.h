#pragma once
#include "config/IniServices.h"

#include <QString>

// The start-up routine up to its first window (module qlnMain); the window itself is the
// caller's, as it needs widgets.
namespace qln {

// ZOR.INI of the data path, opened at start-up.
inline clsINI_Services gZorIni;

// From the command line to the first window: options, training test, data path, tables,
// country settings and ZOR.INI. False, after whatever the failing step told the user, when the
// data path or the tables could not be opened: no window may follow.
bool gfbStartup_prepare(const QString &sCommandLine);

// The data path: a training run takes its path as given; a normal one finds, checks and, if
// need be, asks for it, with the station, /DATAPATH=, /STATION= and /STATIONPATH= standing
// above the settings. False when there is none that is valid.
bool gfbStartup_DataPath_open(const QString &sCommandLine = QString());

// The country settings, and "Format ItemID" of ZOR.INI; a missing ZOR.INI is told and skipped.
void gpStartup_settings_read();

// gsStore from giStore, which a change of data path may have moved.
void gpStore_text_set();

} // namespace qln
