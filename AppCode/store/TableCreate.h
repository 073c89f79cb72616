#pragma once
#include <QString>

// Creation of missing tables and the steps that bring old ones to shape.
namespace qln {

bool gfbDB_TableCreate(int iTable);
bool gfbDB_ColumnAdd(int iTable, const QString &sColumn, const QString &sType);
bool gfbDB_ColumnRename(const QString &sTable, const QString &sOldName, const QString &sNewName);

} // namespace qln
