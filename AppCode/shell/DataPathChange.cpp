#include "shell/DataPathChange.h"

#include "common/ProcessState.h"
#include "config/DataPath.h"
#include "platform/HelpFile.h"
#include "shell/Startup.h"
#include "shell/Tables.h"

namespace qln {

bool gfbDataPath_change_run()
{
    clsDataPath &dp = gDataPath();
    if (!dp.gfbZOR_DataPath_change())
        return false;
    gsDataPath = dp.DataPath;
    gsStation = dp.Station;
    gsStationPath = dp.StationPath;
    gpTables_close();
    if (gfbTables_open())
        gfbTables_recordsets_open();
    gpStore_text_set();
    gpHelpFile_set(giStore);
    gsSL.clear();
    return true;
}

} // namespace qln
