#pragma once
#include <functional>
#include "common/Money.h"

#include <QString>
#include <QStringList>
#include <vector>

// The item file of a store ("invt" and the store number) and its one record buffer.
namespace qln {

class RowSink;

constexpr int kInventoryTable = 1;

// One row of the item file, fields in column order. A fresh record is the blank buffer:
// every text blank padded to its width, every number 0.
struct InventoryRecord {
    static QString blank(int width) { return QString(width, QLatin1Char(' ')); }

    QString SL = blank(8);
    QString ItemID = blank(25);
    QString Description = blank(30);
    QString SubDescription = blank(20);
    QString ReorderFlag = blank(1);
    QString Serialized = blank(1);
    QString HasSold = blank(1);
    QString VendorCode = blank(15);
    Money Price;
    Money Cost;
    Money QtyOnHand;
    qint16 MinQ = 0;
    qint32 MaxQ = 0;
    qint16 QTYINPACK = 0;
    QString TaxCode = blank(1);
    QString DeptCode = blank(11);
    QString NotUsed = blank(1);
    qint16 OnOrder = 0;
    Money AvgCost;
    QString Notes = blank(1);
    QString Kit = blank(1);
    QString Poll = blank(1);
    QString Scalable = blank(1);
    QString FoodStamp = blank(1);
    QString LinkBreakPack = blank(8);
    QString LinkItem = blank(8);
    QString LinkStock = blank(8);
    QString FlgMatrix = blank(1);
    QString FlgMatrixItem = blank(1);
    QString AllowDiscounts = blank(1);
    QString FLAGS = blank(20);
    qint16 RegionID = 0;
    Money PriceIncTax;
    QString LastSold = blank(8);
    QString Status = blank(1);
    QString VolumetrcUnit = blank(6);
    QString UOM = blank(5);
    QString StoreRef = blank(30);
    QString LocFront = blank(8);
    QString LocBack = blank(8);
    qint32 RecordNum = 0;
    QString NonDecrement = blank(1);
    QString FlgPromoPrice = blank(1);
    QString FlgQtyPrice = blank(1);
    QString FlgWebEnable = blank(1);
    QString FlgPriceLevel = blank(1);
    QString FlgBPL = blank(1);
    QString NeverOrder = blank(1);
    QString SaleCommission = blank(5);
    QString Class = blank(2);
    QString PriceFactor = blank(6);
    Money Price2;
    qint16 UnitsPerUOM = 0;
    qint32 BPL1 = 0;
    qint32 BPL2 = 0;
    qint16 PenLiqorUnit = 0;
    qint32 BPL3 = 0;

    friend bool operator==(const InventoryRecord &, const InventoryRecord &) = default;
};

inline InventoryRecord gInventory;

// Registers the table, installs its routines, creates it when missing, and brings a table
// with rows to the present shape. A non-empty sName is the table's name and title.
void gpInventory_Open(int iTable, const QString &sPath, const QString &sStore, const QString &sName = QString());
// Fills the descriptor's create and index statements.
void gpInventory_table_create(int iTable);

void gpInventory_key(int iTable, int iKey);
void gpInventory_read(int iTable);
void gpInventory_write(int iTable);
QString gfsInventory_values();
// The buffer's values in column order, for bulk loads.
void gpInventory_row_put(RowSink &sink);

// Some columns of the item table, for lists that show a few fields of many items.
struct InventoryColumns {
    std::vector<int> ordinals;
    QString selectList; // "RecordNum, SL, ..."
};
// The columns named (as the table names them), in that order; unknown names are left out.
InventoryColumns gfInventory_columns(const QStringList &names);
// The current row of a statement that selects `columns` alone, into the buffer's fields.
void gpInventory_columns_read(int iTable, const InventoryColumns &columns);

// The number of a pseudo-item's SL: -1 for "0", 999999 for an SL that is none of them.
int gfiInventory_ReservedSL(const QString &sSL);

// Reads an item into the buffer by RecordNum, or by SL.
bool gfbInventory_ByRecordNum(qint32 lRecordNum);
bool gfbInventory_ByRecordNumText(const QString &sRecordNum);
// Found: -1 (True). Not found: the reserved number when bReserved, else 0.
int gfiInventory_BySL(const QString &sSL, bool bReserved);

// Reads the items whose sColumn holds one of the SQL literals, 400 to a statement, each into the
// buffer and then handed to take. False when the database refused a read.
bool gfbInventory_read_in(const QString &sColumn, const QStringList &literals, const std::function<void()> &take);

// Blanks the buffer and resets the current row to match (written by the next Update).
void gpInventory_Clear();

} // namespace qln
