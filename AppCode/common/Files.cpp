#include "common/Files.h"

#include <QFile>
#include <QFileInfo>

namespace qln {

bool gfb_FileExists(const QString &sFile)
{
    return !sFile.isEmpty() && QFileInfo(sFile).isFile();
}

bool gfbFile_delete(const QString &sFile)
{
    return !gfb_FileExists(sFile) || QFile::remove(sFile);
}

} // namespace qln
