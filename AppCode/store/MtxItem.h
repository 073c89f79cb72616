#pragma once
#include <QString>

// The items of the matrices: one row per item, placed on up to three axes.
namespace qln {

constexpr int kMtxItemTable = 7;

struct MtxItemRecord {
    qint32 InvUID = 0;         // RecordNum of the item
    qint32 MatrixGroupUID = 0; // GroupUID of its matrix
    QString xAxisValue;        // 32
    QString yAxisValue;        // 32
    QString zAxisValue;        // 32
    qint16 xpos = 0;
    qint16 Ypos = 0;
    qint16 Zpos = 0;
};

inline MtxItemRecord gMtxItem;

// Registers the table, installs its routines, and creates it when missing.
void gpMtxItem_Open(int iTable, const QString &sPath);
// Keys: 0 InvUID, MatrixGroupUID; 1 MatrixGroupUID, x, y value; 2 the same and z value; 3 InvUID;
// 4 MatrixGroupUID and the three positions.
void gpMtxItem_key(int iTable, int iKey);
void gpMtxItem_read(int iTable);
void gpMtxItem_write(int iTable);
QString gfsMtxItem_values();

} // namespace qln
