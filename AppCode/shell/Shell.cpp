#include "shell/Shell.h"

#include <QDir>
#include <QProcess>

namespace qln {

QString gfsShell_options(const QString &sApp, const QString &sStation, const QString &sStationPath,
                         const QString &sDataPath, const QString &sAppDesc, const QString &sAppVer,
                         const QString &sSalesCode, const QString &sNetwork, const QString &sExtra)
{
    const std::pair<const char *, const QString &> options[] = {
        {"/APP=", sApp},          {"/STATION=", sStation}, {"/STATIONPATH=", sStationPath}, {"/DATAPATH=", sDataPath},
        {"/APPDESC=", sAppDesc},  {"/APPVER=", sAppVer},   {"/MVSC=", sSalesCode},          {"/NETWORK=", sNetwork},
    };
    QString line;
    for (const auto &[key, value] : options)
        if (value > QLatin1String(" "))
            line += QLatin1String(key) + value + QLatin1Char(' ');
    if (!sExtra.trimmed().isEmpty())
        line.prepend(sExtra + QLatin1Char(' '));
    return line;
}

int gfiShell_run(const QString &sFolder, const QString &sProgram, const QString &sApp, const QString &sStation,
                 const QString &sStationPath, const QString &sDataPath, const QString &sAppDesc, const QString &sAppVer,
                 const QString &sSalesCode, const QString &sNetwork, const QString &sExtra)
{
    const QString line =
        gfsShell_options(sApp, sStation, sStationPath, sDataPath, sAppDesc, sAppVer, sSalesCode, sNetwork, sExtra);
    // The receiver joins its arguments with blanks, so splitting at them hands it the line.
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedChannels);
    program.start(QDir(sFolder).filePath(sProgram), line.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    if (!program.waitForStarted() || !program.waitForFinished(-1) || program.exitStatus() != QProcess::NormalExit)
        return 0;
    return program.exitCode();
}

} // namespace qln
