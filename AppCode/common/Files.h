#pragma once
#include <QString>

namespace qln {

// True when sFile names an existing file; a folder, an empty name or any failure gives false.
bool gfb_FileExists(const QString &sFile);
// Removes sFile if it exists; false only when it exists and can't be removed.
bool gfbFile_delete(const QString &sFile);

} // namespace qln
