#pragma once
#include <QString>

namespace qln {

// Fills the process-wide values of the command line (ProcessState.h): data path, item by
// RecordNum or key, department, station, station path, sales code and item mode. Then, whatever
// the command line held, a blank station becomes "1" and a data path of "C:\TRAINING", in any
// case, makes the run a training run.
void gpStartOptions_read(const QString &sCommandLine);

// The value of "/DATAPATH=". Every other option ends at the next "/", which would cut a path of
// this platform at its first folder; this one runs to the next blank followed by "/" (the next
// option) or to the end of the command line.
QString gfsDataPath_option_get(const QString &sCommandLine);

} // namespace qln
