#pragma once
#include "platform/DbError.h"

#include <QString>
#include <QStringList>

// The logs of refused statements and deleted items, in the data path.
namespace qln {

// "\PVSW.log", or "\upcDups.txt" for a statement that names "UPC".
void gpDB_LogRefused(const QString &sSQL, const DbError &error);
// Always "\PVSW.log" (the form the query routine writes).
void gpDB_LogRefusedQuery(const QString &sSQL, const DbError &error);
// Fields joined as the platform's print statement joins comma-separated items: each
// starts at the next 14-column zone.
QString gfsPrint_zones(const QStringList &fields);
// The present date and time in the platform's general form.
QString gfsNow_text();
void gpFile_append(const QString &path, const QStringList &lines);
QString gfsDataPath_file(const QString &name);

} // namespace qln
