#pragma once
#include "common/Money.h"

#include <QString>

// The matrices of the back office: families of items that differ by up to three attributes.
// This program only reads them.
namespace qln {

constexpr int kMatrixGroupsTable = 6;

struct MatrixGroupRecord {
    qint32 GroupUID = 0;
    QString GroupName;  // 32
    QString xAxisLabel; // 32
    QString yAxisLabel; // 32
    QString zAxisLabel; // 32
    qint32 InvUID = 0;  // the matrix's own inventory record
    QString ItemID;     // 15
    Money Cost;
    Money Price;
    qint16 MatrixExists = 0; // non-zero once defined
    qint16 MatrixBuilt = 0;  // non-zero once its items are built
};

inline MatrixGroupRecord gMatrixGroups;

// Registers the table, "MTXGRPS" on the server, installs its routines, and creates it when missing.
void gpMatrixGroups_Open(int iTable, const QString &sPath);
// Keys: 0 GroupUID; 1 GroupName; 2, 3, 4 GroupUID and the x, y, z label; 5 InvUID; 6 ItemID.
void gpMatrixGroups_key(int iTable, int iKey);
void gpMatrixGroups_read(int iTable);
void gpMatrixGroups_write(int iTable);
QString gfsMatrixGroups_values();

} // namespace qln
