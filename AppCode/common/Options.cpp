#include "common/Options.h"

#include "common/Text.h"

#include <QCoreApplication>
#include <QStringList>
#include <iterator>

namespace qln {

QString gfsCommandLine_get()
{
    QStringList arguments = QCoreApplication::arguments();
    if (!arguments.isEmpty())
        arguments.removeFirst();
    return arguments.join(QLatin1Char(' '));
}

QString gfsCommandLine_option_get(int iOption, const QString &sCommandLine)
{
    static const QLatin1String keys[] = {
        QLatin1String("/APP="),  QLatin1String("/APPDESC="),     QLatin1String("/APPVER="),
        QLatin1String("/STATION="), QLatin1String("/STATIONPATH="), QLatin1String("/DATAPATH="),
        QLatin1String("/MVSC="), QLatin1String("/SL="),
    };
    if (iOption < 0 || iOption >= int(std::size(keys)))
        return QString();
    return gfsField_read(sCommandLine, keys[iOption], QStringLiteral("/"));
}

QString gfsCommandLine_option_get(int iOption)
{
    return gfsCommandLine_option_get(iOption, gfsCommandLine_get());
}

} // namespace qln
