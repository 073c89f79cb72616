#include "shell/Startup.h"

#include "common/ProcessState.h"
#include "common/Options.h"
#include "config/Country.h"
#include "config/DataPath.h"
#include "config/TermDefinitions.h"
#include "platform/Messages.h"
#include "platform/Settings.h"
#include "shell/StartOptions.h"
#include "shell/Tables.h"
#include "store/Common.h"

#include <QDir>

namespace qln {

namespace {
constexpr int kStationOption = 3, kStationPathOption = 4;
} // namespace

bool gfbStartup_prepare(const QString &sCommandLine)
{
    gpStartOptions_read(sCommandLine);
    bool result = gfbStartup_DataPath_open(sCommandLine);
    if (result)
        result = gfbTables_open() && gfbTables_recordsets_open();
    gpStore_text_set();
    if (gbTraining)
        gCommon.Cname = QStringLiteral("TRAINING - Invalid "); // heads the printed lists
    if (!result)
        return false;
    gpStartup_settings_read();
    gpStore_text_set();
    return true;
}

bool gfbStartup_DataPath_open(const QString &sCommandLine)
{
    if (gbTraining) {
        clsDataPath &dp = gDataPath();
        dp.DataPath = gsDataPath;
        dp.TestPath = gsDataPath;
        dp.Station = GetSetting(kZorSettings, QStringLiteral("DATABASE"), QStringLiteral("STATION"));
        return true;
    }
    return gpDataPathOpen(gsDataPath, gfsCommandLine_option_get(kStationOption, sCommandLine),
                          gfsCommandLine_option_get(kStationPathOption, sCommandLine));
}

void gpStartup_settings_read()
{
    gpCountry_settings_load(gCommon.CountryID, gCommon.TaxLabel2nd);
    if (!gZorIni.FileOpen(QDir(gsDataPath).filePath(QStringLiteral("ZOR.INI")))) {
        gfiMsgBox(QStringLiteral("Unable to open ZOR Configuration Settings File, ZOR.INI."), MsgButtons::OK,
                  MsgIcon::None, QStringLiteral("Error"));
        return;
    }
    gbItemID_plain = gZorIni.GetValue(QStringLiteral("INVENTORY"), QStringLiteral("Format ItemID"),
                                      QStringLiteral("Yes")) != QLatin1String("Yes");
    // The site's words for the lookups of the suite; a missing file is told when a term is asked for.
    gfbTerms_load(gfsTerms_path(gZorIni, gsDataPath));
}

void gpStore_text_set() { gsStore = QString::number(giStore); }

} // namespace qln
