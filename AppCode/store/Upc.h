#pragma once
#include <QString>

// The UPC cross-reference: the codes under which each item is scanned.
namespace qln {

class RowSink;

constexpr int kUpcTable = 3;

struct UpcRecord {
    QString SL;    // 8
    QString UPC;   // 15
    QString LABEL; // 30
    QString POLL;  // 1
    qint32 InvUID = 0;
};

inline UpcRecord gUpc;

// Registers the table, installs its routines, and creates it when missing. A refused statement
// on it goes to "upcDups.txt" rather than "PVSW.log": the statement names "UPC".
void gpUpc_Open(int iTable, const QString &sPath);
// Keys: 0 SL; 1 UPC, SL; 2 UPC; 3 Poll; 4 InvUID.
void gpUpc_key(int iTable, int iKey);
void gpUpc_read(int iTable);
void gpUpc_write(int iTable);
QString gfsUpc_values();
// The buffer's values in column order, for bulk loads.
void gpUpc_row_put(RowSink &sink);

} // namespace qln
