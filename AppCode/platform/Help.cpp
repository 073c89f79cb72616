#include "platform/Help.h"

#include "platform/Settings.h"

#include <QDesktopServices>
#include <QUrl>

namespace qln {

void gpHelp_guides_open(const QString &)
{
    const QString address = GetSetting(kZorSettings, QStringLiteral("Help"), QStringLiteral("GuidesURL"), kDefaultGuidesUrl);
    QDesktopServices::openUrl(QUrl(address));
}

} // namespace qln
