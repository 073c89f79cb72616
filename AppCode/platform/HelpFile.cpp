#include "platform/HelpFile.h"

#include "common/ProcessState.h"

#include <QDir>

namespace qln {
namespace {
QString &helpFile()
{
    static QString file;
    return file;
}
} // namespace

void gpHelpFile_set(int iStore)
{
    helpFile() = QDir(gsAppPath).filePath(iStore != 0 ? QStringLiteral("Quillon.hlp") : QStringLiteral("ZORQLE.HLP"));
}

const QString &gfsHelpFile() { return helpFile(); }

} // namespace qln
