#pragma once
#include <QString>
#include <functional>

// The folder of the suite's data files and the station number, found, checked and stored
// the way every program of the suite does it.
namespace qln {

class clsDataPath {
public:
    QString Title;
    QString Station;
    QString DataPath;  // no closing separator
    QString TestPath;  // "Y": the training flag is on
    QString AppLabel;  // application of the user settings
    QString DefaultStation;
    QString DefaultDataPath;
    bool Network = false;
    bool DefaultNetwork = false;
    QString StationPath;
    int MaxStations() const { return m_maxStations; }
    void setMaxStations(int value) { m_maxStations = value < 51 ? 50 : value; }
    QString DefaultStationPath;
    bool StationPathEnabled = false;
    bool Cancelled = false;
    QString CheckFile;             // a primary data file that must lie in the data path
    QString StationFile() const;   // "STA" station ".ZOR"
    bool SupressFileCheck = false;
    bool CreatePath = false;
    bool StationNumberEnabled = true;
    QString StationLabel() const;  // "Station 3 of 50"
    bool Valid() const { return m_valid; }
    QString FieldKey() const { return m_fieldKey; } // the field that failed

    clsDataPath();

    bool gfb_FileExists(const QString &sPath) const;
    void Save();
    void Delete();
    void Read();
    // Checks the station, the station path and the data path in turn. A failure puts every
    // value back, shows its message unless bQuiet, and leaves FieldKey on the field.
    bool Validate(bool bQuiet = false);
    // The start of every program of the suite: read, default, check, and ask when needed.
    bool gfbZOR_DataPath_open(bool bCreatePath, bool bDefaultNetwork, int iMaxStations, bool bStationNumberEnabled);
    // The path window; true when it was left by OK with valid values, which it saved.
    bool gfbZOR_DataPath_change();
    // Read, then the defaults into every field left empty.
    void gpDataPathRead();

    // The message and help line of the last failed Validate.
    const QString &ValidationMessage() const { return m_message; }
    const QString &ValidationHelp() const { return m_help; }

    // The steps the suite's start and this program's share: the settings are read by then.
    void mpOpen_setup(bool bCreatePath, bool bDefaultNetwork, int iMaxStations, bool bStationNumberEnabled);
    bool mfbPath_open();

private:
    bool pathExists(const QString &path, const QString &label);
    bool fail(const QString &fieldKey, const QString &message, const QString &help);

    int m_maxStations = 50;
    bool m_valid = false;
    QString m_fieldKey, m_message, m_help;
};

// A path without its closing "\" or "/".
QString gfsPath_closing_drop(QString sPath);

// The program's one instance.
clsDataPath &gDataPath();

// The window frmSM_DATAPATH2, shown modally on the instance; the window library installs it.
inline std::function<void(clsDataPath &)> gpDataPath_window_show;

// The recovery folder of the station, where the suite keeps its local copy of the data.
inline const QString kSafeFolder = QStringLiteral("C:/zorsafe");

// This program's start-up on the instance, with what the command line gave (empty: not
// given). True when the data path is valid; gsDataPath, gsStation and gsStationPath follow it.
bool gpDataPathOpen(const QString &sDataPath, const QString &sStation, const QString &sStationPath);

} // namespace qln
