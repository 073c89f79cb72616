#include "FuzzTarget.h"

#include "common/Options.h"
#include "common/ProcessState.h"
#include "shell/StartOptions.h"

// The command line as the desktop or a shortcut hands it over.
QLN_FUZZ_TARGET(options)
{
    using namespace qln;
    const QString line = QString::fromUtf8(fuzz::bytes(data, size));
    for (int option = -1; option <= 8; ++option)
        gfsCommandLine_option_get(option, line);
    gfsDataPath_option_get(line);
    gpStartOptions_read(line);
    fuzz::require(!gsStation.trimmed().isEmpty(), "a station is always named");
    return 0;
}
