#include "store/Inventory.h"

#include "common/ProcessState.h"
#include "common/Text.h"
#include "platform/Recordset.h"
#include "store/Database.h"
#include "store/RecordOps.h"
#include "store/TableCreate.h"
#include "store/TableLayout.h"

#include <QHash>
#include <iterator>

namespace qln {

namespace {

using R = InventoryRecord;

constexpr int kOldItemIDWidth = 15;

const TableLayout<R> &layout()
{
    // The two item keys refuse nulls yet take the blank default all the same.
    static const TableLayout<R> columns = {
        {"SL", "CHAR (8) NOT NULL DEFAULT  ' '", &R::SL},
        {"ItemID", "CHAR (25) NOT NULL DEFAULT  ' '", &R::ItemID},
        {"Description", "CHAR (30)", &R::Description},
        {"SubDescription", "CHAR (20)", &R::SubDescription},
        {"ReorderFlag", "CHAR (1)", &R::ReorderFlag},
        {"Serialized", "CHAR (1)", &R::Serialized},
        {"HasSold", "CHAR (1)", &R::HasSold},
        {"VendorCode", "CHAR (15)", &R::VendorCode},
        {"Price", "DECIMAL (18,4)", &R::Price},
        {"Cost", "DECIMAL (18,4)", &R::Cost},
        {"QtyOnHand", "DECIMAL (18,4)", &R::QtyOnHand},
        {"MinQ", "SMALLINT", &R::MinQ},
        {"MaxQ", "INT", &R::MaxQ},
        {"QTYINPACK", "SMALLINT", &R::QTYINPACK},
        {"TaxCode", "CHAR (1)", &R::TaxCode},
        {"DeptCode", "CHAR (11)", &R::DeptCode},
        {"NotUsed", "CHAR (1)", &R::NotUsed},
        {"OnOrder", "SMALLINT", &R::OnOrder},
        {"AvgCost", "DECIMAL (18,4)", &R::AvgCost},
        {"Notes", "CHAR (1)", &R::Notes},
        {"Kit", "CHAR (1)", &R::Kit},
        {"Poll", "CHAR (1)", &R::Poll},
        {"Scalable", "CHAR(1)", &R::Scalable},
        {"FoodStamp", "CHAR(1)", &R::FoodStamp},
        {"LinkBreakPack", "CHAR(8)", &R::LinkBreakPack},
        {"LinkItem", "CHAR(8)", &R::LinkItem},
        {"LinkStock", "CHAR(8)", &R::LinkStock},
        {"FlgMatrix", "CHAR(1)", &R::FlgMatrix},
        {"FlgMatrixItem", "CHAR(1)", &R::FlgMatrixItem},
        {"AllowDiscounts", "CHAR(1)", &R::AllowDiscounts},
        {"FLAGS", "CHAR(20)", &R::FLAGS},
        {"RegionID", "SMALLINT", &R::RegionID},
        {"PriceIncTax", "DECIMAL(18,2)", &R::PriceIncTax},
        {"LastSold", "CHAR(8)", &R::LastSold},
        {"Status", "CHAR(1)", &R::Status},
        {"VolumetrcUnit", "CHAR(6)", &R::VolumetrcUnit},
        {"UOM", "CHAR(5)", &R::UOM},
        {"StoreRef", "CHAR(30)", &R::StoreRef},
        {"LocFront", "CHAR(8)", &R::LocFront},
        {"LocBack", "CHAR(8)", &R::LocBack},
        {"RecordNum", "INTEGER", &R::RecordNum},
        {"NonDecrement", "CHAR(1)", &R::NonDecrement},
        {"FlgPromoPrice", "CHAR(1)", &R::FlgPromoPrice},
        {"FlgQtyPrice", "CHAR(1)", &R::FlgQtyPrice},
        {"FlgWebEnable", "CHAR(1)", &R::FlgWebEnable},
        {"FlgPriceLevel", "CHAR(1)", &R::FlgPriceLevel},
        {"FlgBPL", "CHAR(1)", &R::FlgBPL},
        {"NeverOrder", "CHAR(1)", &R::NeverOrder},
        {"SaleCommission", "CHAR(5)", &R::SaleCommission},
        {"Class", "CHAR(2)", &R::Class},
        {"PriceFactor", "CHAR(6)", &R::PriceFactor},
        {"Price2", "DECIMAL (18,4)", &R::Price2},
        {"UnitsPerUOM", "SMALLINT", &R::UnitsPerUOM},
        {"BPL1", "INTEGER", &R::BPL1},
        {"BPL2", "INTEGER", &R::BPL2},
        {"PenLiqorUnit", "SMALLINT DEFAULT 0", &R::PenLiqorUnit},
        {"BPL3", "INTEGER DEFAULT 0", &R::BPL3},
    };
    return columns;
}

template <class T>
int ordinal(T R::*member)
{
    return layout().ordinal(member);
}

template <class T>
KeySegment segment(T R::*member)
{
    return {ordinal(member), QVariant::fromValue(gInventory.*member)};
}

// The index table: columns, and whether a value may stand only once. idx_0 is the clustered one.
struct Index {
    const char *columns;
    bool unique;
};
constexpr Index kIndexes[] = {
    {"RecordNum", true},          {"SL", true},
    {"ItemID", true},             {"Description, SL", true},
    {"SubDescription, SL", true}, {"VendorCode, SL", true},
    {"VendorCode, ItemID", true}, {"VendorCode, Description", false},
    {"DeptCode, ItemID", true},   {"PriceFactor, Description", false},
    {"LocFront, RecordNum", true}, {"LocBack, RecordNum", true},
    {"Poll, RecordNum", true},
};
constexpr int kIndexCount = int(std::size(kIndexes));

QStringList indexStatements(const QString &T)
{
    QStringList statements;
    for (int i = 0; i < kIndexCount; ++i) {
        const QString head = i == 0             ? QStringLiteral("Create UNIQUE  CLUSTERED Index ")
                             : kIndexes[i].unique ? QStringLiteral("Create UNIQUE Index ")
                                                  : QStringLiteral("Create Index ");
        statements << head + QStringLiteral("idx_") + QString::number(i) + QStringLiteral(" On ") + T + QStringLiteral(" (") +
                          QLatin1String(kIndexes[i].columns) + QLatin1Char(')');
    }
    return statements;
}

// Old tables kept the price factor in Spare1 and had a one-letter PriceFactor where NotUsed is.
void movePriceFactor(int iTable)
{
    const QString &T = dbuaTable[iTable].sSqlFile;
    if (gfsDB_FieldName(iTable, ordinal(&R::PriceFactor)) != QLatin1String("Spare1"))
        return;
    gfiDB_Execute(QStringLiteral("UPDATE ") + T + QStringLiteral(" SET Spare1 = PriceFactor where PriceFactor > ' '"));
    if (gfbDB_ColumnRename(T, QStringLiteral("PriceFactor"), QStringLiteral("NotUsed")))
        gfbDB_ColumnRename(T, QStringLiteral("Spare1"), QStringLiteral("PriceFactor"));
}

// The item identifier grew from 15 to 25 under its indexes, which have to make way.
void widenItemID(int iTable)
{
    const QString &T = dbuaTable[iTable].sSqlFile;
    if (gfvDB_FieldGet(iTable, QStringLiteral("ItemID")).toString().size() != kOldItemIDWidth)
        return;
    for (int i = 0; i < kIndexCount; ++i)
        gfiDB_Execute(QStringLiteral("Drop index ") + T + QStringLiteral(".idx_") + QString::number(i));
    gfiDB_Execute(QStringLiteral("ALTER TABLE ") + T + QStringLiteral(" ALTER COLUMN itemID CHAR(25)"));
    for (const QString &statement : indexStatements(T))
        gfiDB_Execute(statement);
}

// No version is kept: each step runs every time, and one already done fails harmlessly.
void upgrade(int iTable)
{
    const QString &T = dbuaTable[iTable].sSqlFile;
    gfiDB_Execute(QStringLiteral("ALTER TABLE ") + T + QStringLiteral(" ALTER COLUMN QtyOnHand Decimal(18,4)"));
    gfbDB_ColumnAdd(iTable, QStringLiteral("PenLiqorUnit"), QStringLiteral("SMALLINT "));
    gfbDB_ColumnAdd(iTable, QStringLiteral("BPL3"), QStringLiteral("INTEGER "));
    if (gfbDB_ColumnRename(T, QStringLiteral("Flg2"), QStringLiteral("NeverOrder")))
        gfiDB_Execute(QStringLiteral("UPDATE ") + T + QStringLiteral(" SET NeverOrder = ' '"));
    gfbDB_TableOpen(iTable);
    movePriceFactor(iTable);
    widenItemID(iTable);
}

// Runs a selection of items and, when it finds one, reads it into the buffer.
bool selectItem(const QString &sWhere)
{
    const QString sql = QStringLiteral("SELECT * from ") + dbuaTable[kInventoryTable].sSqlFile + sWhere;
    if (!gfbDB_ExecuteSQL(sql, kInventoryTable, false))
        return false;
    gpInventory_read(kInventoryTable);
    return true;
}

} // namespace

void gpInventory_Open(int iTable, const QString &sPath, const QString &sStore, const QString &sName)
{
    Q_UNUSED(sPath); // the registry writes the file path from gsDataPath
    const QString own = QStringLiteral("invt") + sStore;
    if (sName.isEmpty())
        gpDB_Table_register(iTable, QStringLiteral("INVENTRY"), own, own, QStringLiteral("Inventory"));
    else
        gpDB_Table_register(iTable, sName, own, sName, sName);
    gpDB_table_routines_set(iTable, {gpInventory_key, gpInventory_read, gpInventory_write, gfsInventory_values});
    if (kProgramName == QLatin1String("Vendors")) // that program leaves the shape alone
        return;
    if (!gfbDB_TableExists(dbuaTable[iTable].sSqlFile)) {
        gpInventory_table_create(iTable);
        gfbDB_TableCreate(iTable);
        return;
    }
    if (gfiDB_RecordCount(iTable) < 1) // an empty table keeps its old shape
        return;
    upgrade(iTable);
}

void gpInventory_table_create(int iTable)
{
    DbTable &table = dbuaTable[iTable];
    table.sCreateSql = layout().createSql(table.sSqlFile);
    table.sIndexSql.clear();
    for (const QString &statement : indexStatements(table.sSqlFile))
        table.sIndexSql += statement + QLatin1Char(';');
}

void gpInventory_key(int iTable, int iKey)
{
    // These keys compare the identifier without its leading blanks, and the buffer keeps it so.
    if (iKey == 2 || iKey == 7 || iKey == 8)
        gInventory.ItemID = gfsText_ltrim(gInventory.ItemID).leftJustified(layout().width(ordinal(&R::ItemID)));
    switch (iKey) {
    case 0: gpDB_KeySet(iTable, 1, {segment(&R::RecordNum)}); break;
    case 1: gpDB_KeySet(iTable, 1, {segment(&R::SL)}); break;
    case 2: gpDB_KeySet(iTable, 1, {segment(&R::ItemID)}); break;
    case 3: gpDB_KeySet(iTable, 2, {segment(&R::Description), segment(&R::SL)}); break;
    case 4: gpDB_KeySet(iTable, 2, {segment(&R::SubDescription), segment(&R::SL)}); break;
    case 5: gpDB_KeySet(iTable, 2, {segment(&R::VendorCode), segment(&R::Description)}); break;
    case 6: gpDB_KeySet(iTable, 2, {segment(&R::VendorCode), segment(&R::SL)}); break;
    case 7: gpDB_KeySet(iTable, 2, {segment(&R::VendorCode), segment(&R::ItemID)}); break;
    case 8: gpDB_KeySet(iTable, 2, {segment(&R::DeptCode), segment(&R::ItemID)}); break;
    case 9: gpDB_KeySet(iTable, 2, {segment(&R::PriceFactor), segment(&R::Description)}); break;
    case 10: gpDB_KeySet(iTable, 2, {segment(&R::LocBack), segment(&R::RecordNum)}); break;
    case 11: gpDB_KeySet(iTable, 2, {segment(&R::LocFront), segment(&R::RecordNum)}); break;
    case 12: gpDB_KeySet(iTable, 2, {segment(&R::Poll), segment(&R::RecordNum)}); break;
    default: break;
    }
}

void gpInventory_read(int iTable) { layout().read(iTable, gInventory); }

void gpInventory_write(int iTable) { layout().write(iTable, gInventory); }

QString gfsInventory_values() { return layout().values(gInventory); }
void gpInventory_row_put(RowSink &sink) { layout().put(gInventory, sink); }

InventoryColumns gfInventory_columns(const QStringList &names)
{
    InventoryColumns columns;
    QStringList listed;
    for (const QString &name : names) {
        for (int i = 0; i < layout().columnCount(); ++i) {
            if (name.compare(QLatin1String(layout().name(i)), Qt::CaseInsensitive) == 0) {
                columns.ordinals.push_back(i);
                listed << QLatin1String(layout().name(i));
                break;
            }
        }
    }
    columns.selectList = listed.join(QStringLiteral(", "));
    return columns;
}

void gpInventory_columns_read(int iTable, const InventoryColumns &columns) { layout().readSome(iTable, gInventory, columns.ordinals); }

int gfiInventory_ReservedSL(const QString &sSL)
{
    static const QHash<QString, int> reserved = {
        {QStringLiteral("~NONSTK"), 0}, {QStringLiteral("~ROA"), 1},    {QStringLiteral("~ROAL"), 2},
        {QStringLiteral("~DISCNT"), 3}, {QStringLiteral("~PAYROL"), 4}, {QStringLiteral("~POUT"), 5},
        {QStringLiteral("~VCOUPN"), 6}, {QStringLiteral("~SCOUPN"), 7}, {QStringLiteral("~VDSCNT"), 8},
        {QStringLiteral("~ROALTX"), 9}, {QStringLiteral("~DPOUT"), 10}, {QStringLiteral("0"), -1},
    };
    return reserved.value(sSL, 999999);
}

bool gfbInventory_ByRecordNum(qint32 lRecordNum)
{
    return selectItem(QStringLiteral(" WHERE recordnum = ") + QString::number(lRecordNum));
}

bool gfbInventory_ByRecordNumText(const QString &sRecordNum)
{
    return selectItem(QStringLiteral(" WHERE recordnum = '") + sRecordNum + QLatin1Char('\''));
}

int gfiInventory_BySL(const QString &sSL, bool bReserved)
{
    if (selectItem(QStringLiteral(" WHERE SL = '") + sSL + QLatin1Char('\'')))
        return -1;
    return bReserved ? gfiInventory_ReservedSL(sSL) : 0;
}

void gpInventory_Clear()
{
    gInventory = InventoryRecord();
    const int linkFirst = ordinal(&R::LinkBreakPack), flagsLast = ordinal(&R::FLAGS);
    for (int i = 0; i <= ordinal(&R::BPL3); ++i) {
        if (layout().width(i) == 0)
            gpDB_FieldSet(kInventoryTable, i, 0);
        else if (i <= ordinal(&R::VendorCode))
            gpDB_FieldSet(kInventoryTable, i, QString());
        else if (i >= linkFirst && i <= flagsLast)
            gpDB_FieldSet(kInventoryTable, i, QStringLiteral(" "));
    }
}

bool gfbInventory_read_in(const QString &sColumn, const QStringList &literals, const std::function<void()> &take)
{
    constexpr qsizetype kValuesPerRead = 400;
    for (qsizetype first = 0; first < literals.size(); first += kValuesPerRead) {
        const QString sql = QStringLiteral("SELECT * FROM ") + dbuaTable[kInventoryTable].sSqlFile + QStringLiteral(" WHERE ") + sColumn +
                            QStringLiteral(" IN (") + literals.mid(first, kValuesPerRead).join(QLatin1Char(',')) + QLatin1Char(')');
        gDBErr().clear();
        if (!gfbDB_RecordOp(kInventoryTable, kOpBySQL, 0, false, false, sql)) {
            if (gDBErr().isSet())
                return false;
            continue;
        }
        Recordset &set = *dbaRecordset[kInventoryTable];
        for (set.moveFirst(); !set.eof(); set.moveNext()) {
            gpDB_table_row_to_record(kInventoryTable);
            take();
        }
    }
    return true;
}

} // namespace qln
