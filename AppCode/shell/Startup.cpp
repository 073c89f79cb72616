#include "shell/Startup.h"

#include "common/ProcessState.h"
#include "config/Country.h"
#include "config/TermDefinitions.h"
#include "platform/Messages.h"
#include "platform/Settings.h"
#include "shell/StartOptions.h"
#include "shell/Tables.h"
#include "store/Common.h"

#include <QDir>
#include <QFileInfo>

namespace qln {

bool gfbStartup_prepare(const QString &sCommandLine)
{
    gpStartOptions_read(sCommandLine);
    bool result = gfbStartup_DataPath_open();
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

bool gfbStartup_DataPath_open()
{
    if (gbTraining)
        return true;
    QString path = gsDataPath.isEmpty()
                       ? GetSetting(kZorSettings, QStringLiteral("DATABASE"), QStringLiteral("DATAPATH"))
                       : gsDataPath;
    if (path.endsWith(QLatin1Char('\\')) || path.endsWith(QLatin1Char('/')))
        path.chop(1);
    if (path.isEmpty()) {
        gfiMsgBox(QStringLiteral("A path to the ZOR Data Files has not been defined\r\r"
                                 "Start the program with /DATAPATH= and the folder of the data files."),
                  MsgButtons::OK, MsgIcon::Exclamation, kProgramName);
        return false;
    }
    if (!QFileInfo(path).isDir()) {
        gfiMsgBox(QStringLiteral("Data Path Not Found.\r\r") + path, MsgButtons::OK, MsgIcon::Exclamation,
                  QStringLiteral("Validation"));
        return false;
    }
    gsDataPath = path;
    return true;
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
