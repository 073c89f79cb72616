#include "shell/DesktopOptions.h"

#include "common/ProcessState.h"

namespace qln {

std::optional<QString> gfsDesktopOption_answer(const QStringList &arguments)
{
    for (const QString &argument : arguments) {
        if (argument == QLatin1String("--version"))
            return kProgramName + QLatin1Char(' ') + kProgramVersion + QLatin1Char('\n');
        if (argument == QLatin1String("--help"))
            return QStringLiteral("Usage: quillon [/DATAPATH=<folder>] [other start options]\n"
                                  "Keeps the temporary prices (promos) of a store's items, departments and groups.\n\n"
                                  "  /DATAPATH=<folder>  the data path of the station's settings and files\n"
                                  "  --help              shows this text and ends\n"
                                  "  --version           shows the program's name and version and ends\n");
    }
    return std::nullopt;
}

} // namespace qln
