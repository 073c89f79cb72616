#pragma once
#include <QString>

// Starting a sibling program of the suite and waiting for it (module sm_Shell).
namespace qln {

// The option line the suite's programs read: each option whose argument is more than one
// blank, in a fixed order, each followed by a blank; sExtra, when there is any, in front.
QString gfsShell_options(const QString &sApp, const QString &sStation, const QString &sStationPath,
                         const QString &sDataPath, const QString &sAppDesc, const QString &sAppVer,
                         const QString &sSalesCode, const QString &sNetwork, const QString &sExtra);

// Runs sFolder's sProgram with that option line and waits for it to end. The result is the
// program's exit code; 0 when it could not be started, without a message.
int gfiShell_run(const QString &sFolder, const QString &sProgram, const QString &sApp, const QString &sStation,
                 const QString &sStationPath, const QString &sDataPath, const QString &sAppDesc, const QString &sAppVer,
                 const QString &sSalesCode, const QString &sNetwork, const QString &sExtra);

} // namespace qln
