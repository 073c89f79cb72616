#include "config/DataPath.h"

#include "common/Confirm.h"
#include "common/Files.h"
#include "common/Numbers.h"
#include "common/ProcessState.h"
#include "config/ProfileFile.h"
#include "platform/Messages.h"
#include "platform/Settings.h"
#include "store/ServerCheck.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace qln {

namespace {

const QString kSection = QStringLiteral("DATABASE");
const QString kBrowseHelp = QStringLiteral("Use the Browse method to find a valid path.");

bool flag(const QString &text)
{
    const QString t = text.trimmed();
    return t.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0 || t == QLatin1String("-1") || t == QLatin1String("1");
}

} // namespace

QString gfsPath_closing_drop(QString sPath)
{
    if (sPath.endsWith(QLatin1Char('\\')) || sPath.endsWith(QLatin1Char('/')))
        sPath.chop(1);
    return sPath;
}

clsDataPath &gDataPath()
{
    static clsDataPath instance;
    return instance;
}

clsDataPath::clsDataPath()
    : AppLabel(kZorSettings), DefaultStation(QStringLiteral("1")), DefaultDataPath(QStringLiteral("C:/MV")),
      DefaultStationPath(QStringLiteral("C:/MV"))
{
}

QString clsDataPath::StationFile() const { return QStringLiteral("STA") + Station.trimmed() + QStringLiteral(".ZOR"); }

QString clsDataPath::StationLabel() const
{
    return QStringLiteral("Station ") + Station.trimmed() + QStringLiteral(" of ") + QString::number(m_maxStations);
}

bool clsDataPath::gfb_FileExists(const QString &sPath) const { return qln::gfb_FileExists(sPath); }

void clsDataPath::Save()
{
    SaveSetting(AppLabel, kSection, QStringLiteral("NETWORK"), Network ? QStringLiteral("True") : QStringLiteral("False"));
    SaveSetting(AppLabel, kSection, QStringLiteral("STATION"), Station);
    SaveSetting(AppLabel, kSection, QStringLiteral("STATIONPATH"), StationPath);
    SaveSetting(AppLabel, kSection, QStringLiteral("DATAPATH"), DataPath);
    SaveSetting(AppLabel, kSection, QStringLiteral("TESTDATA"), TestPath);
    WritePrivateProfileString(QStringLiteral("MISCELLANEOUS"), QStringLiteral("Datapath"), DataPath,
                              QDir(DataPath).filePath(QStringLiteral("ZOR.INI")));
}

void clsDataPath::Delete()
{
    for (const char *key : {"NETWORK", "STATION", "STATIONPATH", "DATAPATH", "TESTDATA"})
        DeleteSetting(AppLabel, kSection, QString::fromLatin1(key));
}

void clsDataPath::Read()
{
    Network = flag(GetSetting(AppLabel, kSection, QStringLiteral("NETWORK"), DefaultNetwork ? QStringLiteral("True") : QString()));
    Station = GetSetting(AppLabel, kSection, QStringLiteral("STATION"));
    StationPath = GetSetting(AppLabel, kSection, QStringLiteral("STATIONPATH"));
    DataPath = GetSetting(AppLabel, kSection, QStringLiteral("DATAPATH"));
    TestPath = GetSetting(AppLabel, kSection, QStringLiteral("TESTDATA"));
}

void clsDataPath::gpDataPathRead()
{
    Read();
    if (Station.trimmed().isEmpty())
        Station = DefaultStation;
    if (DataPath.trimmed().isEmpty())
        DataPath = DefaultDataPath;
    if (StationPath.trimmed().isEmpty())
        StationPath = DefaultStationPath;
}

bool clsDataPath::fail(const QString &fieldKey, const QString &message, const QString &help)
{
    m_fieldKey = fieldKey;
    m_message = message;
    m_help = help;
    return false;
}

// A folder this program can list and enter; a missing one may be made, when allowed.
bool clsDataPath::pathExists(const QString &path, const QString &label)
{
    const QFileInfo info(path);
    if (!path.trimmed().isEmpty() && info.isDir())
        return info.isReadable() && info.isExecutable();
    if (!CreatePath || path.trimmed().isEmpty() || info.exists())
        return false;
    if (!gfbConfirm(label + QStringLiteral(" Path Does Not Exist"), QStringLiteral("Do you want to create it?")))
        return false;
    if (QDir().mkpath(path))
        return true;
    gfiMsgBox(QStringLiteral("Unable To Create Path"), MsgButtons::OK, MsgIcon::Exclamation, Title);
    return false;
}

bool clsDataPath::Validate(bool bQuiet)
{
    const bool keptNetwork = Network;
    const QString keptStation = Station, keptStationPath = StationPath, keptDataPath = DataPath;
    m_valid = true;
    m_message.clear();
    m_help.clear();
    if (gfdNumber_value(Station) > m_maxStations) {
        m_fieldKey = QStringLiteral("STATION");
        Station = QStringLiteral("1");
    }
    bool ok = true;
    if (StationPathEnabled && !pathExists(StationPath, QStringLiteral("Station")))
        ok = fail(QStringLiteral("STATIONPATH"), QStringLiteral("Station Path Not Found."), kBrowseHelp);
    else if (!pathExists(DataPath, QStringLiteral("Data")))
        ok = fail(QStringLiteral("DATAPATH"), QStringLiteral("Data Path Not Found."), kBrowseHelp);
    else if (StationPathEnabled && !SupressFileCheck && !gfb_FileExists(QDir(StationPath).filePath(StationFile())))
        ok = fail(QStringLiteral("STATIONPATH"), QStringLiteral("Station ") + Station + QStringLiteral(" not in Station Path."),
                  QStringLiteral("Select another Station or change the Station Path."));
    else if (!CheckFile.isEmpty() && !SupressFileCheck && !gfb_FileExists(QDir(DataPath).filePath(CheckFile)))
        ok = fail(QStringLiteral("DATAPATH"), QStringLiteral("Primary Data File Not Found."),
                  QStringLiteral("There is no '") + CheckFile + QStringLiteral("' file in the specified data path."));
    if (ok)
        return true;
    m_valid = false;
    if (!bQuiet)
        gfiMsgBox(m_message + QStringLiteral("\r\r") + m_help, MsgButtons::OK, MsgIcon::Exclamation, QStringLiteral("Validation"));
    Network = keptNetwork;
    Station = keptStation;
    StationPath = keptStationPath;
    DataPath = keptDataPath;
    return false;
}

bool clsDataPath::gfbZOR_DataPath_change()
{
    Cancelled = true;
    if (gpDataPath_window_show)
        gpDataPath_window_show(*this);
    return !Cancelled;
}

namespace {

// The table of upper-case letters the suite's programs share, from the program's folder
// into a data path that has none.
void upperAltCopy(const QString &dataPath)
{
    const QString name = QStringLiteral("upper.alt");
    const QString target = QDir(dataPath).filePath(name);
    const QString source = QDir(gsAppPath).filePath(name);
    if (!gsAppPath.isEmpty() && !gfb_FileExists(target) && gfb_FileExists(source))
        QFile::copy(source, target);
}

// When the path is missing or wrong: define it in the window, or be told the network is down.
bool pathAsked(clsDataPath &dp)
{
    if (dp.Network) {
        gfiMsgBox(QStringLiteral("The network is currently down or is not set up properly. "
                                 "Please contact your network administrator for help."),
                  MsgButtons::OK, MsgIcon::Exclamation, QStringLiteral("Network Not Found"));
        return false;
    }
    if (!gfbConfirm(QStringLiteral("A path to the ZOR Data Files has not been defined"), QStringLiteral("Do you want to define it now?")))
        return false;
    return dp.gfbZOR_DataPath_change();
}

} // namespace

void clsDataPath::mpOpen_setup(bool bCreatePath, bool bDefaultNetwork, int iMaxStations, bool bStationNumberEnabled)
{
    AppLabel = kZorSettings;
    CreatePath = bCreatePath;
    DefaultNetwork = bDefaultNetwork;
    setMaxStations(iMaxStations);
    DefaultStation = QStringLiteral("1");
    StationNumberEnabled = bStationNumberEnabled;
}

bool clsDataPath::mfbPath_open()
{
    DataPath = gfsPath_closing_drop(DataPath);
    bool valid = false;
    if (!DataPath.isEmpty()) {
        if (QFileInfo(kSafeFolder).isDir())
            gfbServer_Check();
        valid = Validate();
        if (valid)
            upperAltCopy(DataPath);
    }
    return valid || pathAsked(*this);
}

bool clsDataPath::gfbZOR_DataPath_open(bool bCreatePath, bool bDefaultNetwork, int iMaxStations, bool bStationNumberEnabled)
{
    mpOpen_setup(bCreatePath, bDefaultNetwork, iMaxStations, bStationNumberEnabled);
    gpDataPathRead();
    return mfbPath_open();
}

bool gpDataPathOpen(const QString &sDataPath, const QString &sStation, const QString &sStationPath)
{
    clsDataPath &dp = gDataPath();
    dp.mpOpen_setup(false, false, dp.MaxStations(), true);
    dp.Read();
    // What the command line names stands above what the settings hold.
    if (!sStation.trimmed().isEmpty())
        dp.Station = sStation;
    if (!sStationPath.trimmed().isEmpty())
        dp.StationPath = sStationPath;
    if (!sDataPath.trimmed().isEmpty())
        dp.DataPath = sDataPath;
    if (dp.Station.trimmed().isEmpty())
        dp.Station = dp.DefaultStation;
    if (!dp.mfbPath_open())
        return false;
    gsDataPath = dp.DataPath;
    gsStation = dp.Station;
    gsStationPath = dp.StationPath;
    return true;
}

} // namespace qln
