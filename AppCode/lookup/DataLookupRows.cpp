#include "lookup/DataLookupRows.h"

#include "common/ItemNumber.h"
#include "common/NumberFormat.h"
#include "platform/Recordset.h"
#include "store/Database.h"
#include "store/Departments.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"
#include "store/Upc.h"

namespace qln {

namespace {

// Ordinals of the items statement.
enum ItemsField : int { kDesc, kQoh, kOnOrder, kItemID, kSL, kSubDesc, kUpc, kVendor, kCost };

// Quantities show as whole numbers unless they have a fraction.
QString quantityText(const QVariant &value)
{
    QString text = value.toString().trimmed();
    if (text.contains(QLatin1Char('.'))) {
        while (text.endsWith(QLatin1Char('0')))
            text.chop(1);
        if (text.endsWith(QLatin1Char('.')))
            text.chop(1);
    }
    return text.isEmpty() || text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

// Reads a statement into the slot of iTable, handing each row's record set to `row`.
template <class Row> bool rowsRead(const QString &sql, int iTable, Row row)
{
    if (!gfbDB_ExecuteSQL(sql, iTable, false))
        return false;
    Recordset &rows = *dbaRecordset[iTable];
    for (rows.moveFirst(); !rows.eof(); rows.moveNext())
        row(std::as_const(rows));
    return true;
}

} // namespace

bool gfbDataLookup_VendorGiven(const QString &sVendor)
{
    const QString v = sVendor.trimmed();
    return !v.isEmpty() && v.compare(QLatin1String("OPEN"), Qt::CaseInsensitive) != 0 &&
           v.compare(QLatin1String("Manual"), Qt::CaseInsensitive) != 0;
}

QList<DataLookupColumn> gfaDataLookup_Columns(int iMode, const QString &sVendor)
{
    switch (iMode) {
    case kLookupDepartments:
        return {{QStringLiteral("Dept. Code"), 1400, 1}, {QStringLiteral("Department"), 3000, 1}};
    case kLookupItemVendors:
        return {{QStringLiteral("Vendor"), 1700, 1},
                {QStringLiteral("AP Code"), 1200, 1},
                {QStringLiteral("Vendor ID"), 1700, 1},
                {QStringLiteral("Cost"), 900, 7}};
    case kLookupVendorItems:
        return {{QStringLiteral("Qty"), 600, 7},       {QStringLiteral("Description"), 3000, 1},
                {QStringLiteral("SL"), 1100, 1},       {QStringLiteral("Vendor ID"), 1700, 1},
                {QStringLiteral("Sub Desc"), 1700, 1}, {QStringLiteral("Dept."), 1300, 1},
                {QStringLiteral("QOH"), 700, 7},       {QStringLiteral("Cost"), 900, 7}};
    case kLookupVendors:
        return {{QStringLiteral("Vendor"), 1700, 1},
                {QStringLiteral("AP Code"), 1200, 1},
                {QStringLiteral("Vendor Name"), 3500, 1},
                {QString(), 300, 1}};
    default: break;
    }
    QList<DataLookupColumn> columns = {
        {QStringLiteral("Qty"), 600, 7},        {QStringLiteral("Description"), 3000, 1},
        {QStringLiteral("QOH"), 700, 7},        {QStringLiteral("On Order"), 900, 7},
        {QStringLiteral("ITEM ID"), 1700, 1},   {QStringLiteral("SL"), 1100, 1},
        {QStringLiteral("Sub Desc"), 1700, 1},  {QStringLiteral("UPC"), 1500, 1},
    };
    if (sVendor.trimmed().compare(QLatin1String("OPEN"), Qt::CaseInsensitive) == 0)
        columns.append({QStringLiteral("Vendor"), 1700, 1});
    columns.append({QStringLiteral("Cost"), 900, 7});
    return columns;
}

QString gfsDataLookup_ItemsSql(const QString &sVendor)
{
    const QString inventory = dbuaTable[kInventoryTable].sSqlFile;
    const QString upc = dbuaTable[kUpcTable].sSqlFile;
    QString condition = QStringLiteral("WHERE NonDecrement<>'Y' AND Kit<>'Y' AND Status = ' '");
    if (gfbDataLookup_VendorGiven(sVendor)) {
        QString vendor = sVendor;
        condition += QStringLiteral(" AND SubDescription <> 'MATRIX ROOT' AND VendorCode ='") +
                     vendor.replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
    } else {
        condition += QStringLiteral(" AND SubDescription <> 'MATRIX ROOT'");
    }
    return QStringLiteral("SELECT Description,QtyOnHand,OnOrder,ItemID,") + inventory +
           QStringLiteral(".SL,SubDescription,") + upc + QStringLiteral(".upc,VendorCode,Cost,RecordNum ") +
           QStringLiteral("FROM ") + inventory + QStringLiteral(" left join ") + upc + QStringLiteral(" on ") + inventory +
           QStringLiteral(".recordnum=") + upc + QStringLiteral(".invuid ") + condition + QStringLiteral(" ORDER BY ITEMID");
}

bool gfbDataLookup_Items(const QString &sVendor, QList<QStringList> &rows)
{
    rows.clear();
    const bool vendorShown = gfaDataLookup_Columns(kLookupItems, sVendor).size() == 10;
    const bool read = rowsRead(gfsDataLookup_ItemsSql(sVendor), kInventoryTable, [&](const Recordset &r) {
        QStringList cells;
        cells.reserve(10);
        cells << QString() << r.value(kDesc).toString().trimmed() << quantityText(r.value(kQoh))
              << quantityText(r.value(kOnOrder)) << r.value(kItemID).toString().trimmed()
              << gfsItemID_display(r.value(kSL).toString()) << r.value(kSubDesc).toString().trimmed()
              << r.value(kUpc).toString().trimmed();
        if (vendorShown)
            cells << r.value(kVendor).toString().trimmed();
        cells << gfsNumber_format(r.readMoney(kCost), QStringLiteral("#.00"));
        rows.append(cells);
    });
    return read && !rows.isEmpty();
}

QString gfsDataLookup_ForeignTable(int iMode)
{
    switch (iMode) {
    case kLookupItemVendors:
    case kLookupVendorItems: return kItemVendorTable;
    case kLookupVendors: return kVendorTable;
    default: return QString();
    }
}

QString gfsDataLookup_VendorsSql(int iMode, const QString &sCode)
{
    if (iMode == kLookupVendors)
        return QStringLiteral("SELECT VendorCode,APCode,Business,LastName FROM ") + kVendorTable +
               QStringLiteral(" ORDER BY Business,LastName ");
    if (iMode == kLookupItemVendors)
        return QStringLiteral("SELECT VendorCode,APCode,VendorItemID,Cost FROM ") + kItemVendorTable +
               QStringLiteral(" where Recordnum =") + QString::number(sCode.trimmed().toLongLong());
    const QString inventory = dbuaTable[kInventoryTable].sSqlFile;
    QString code = sCode;
    return QStringLiteral("SELECT Description,") + inventory + QStringLiteral(".SL,VendorItemID,SubDescription,DeptCode,QtyOnHand,") +
           kItemVendorTable + QStringLiteral(".Cost FROM ") + kItemVendorTable + QStringLiteral(" left join ") + inventory +
           QStringLiteral(" on ") + kItemVendorTable + QStringLiteral(".Recordnum=") + inventory +
           QStringLiteral(".RecordNum where APCODE ='") + code.replace(QLatin1Char('\''), QLatin1String("''")) +
           QLatin1Char('\'');
}

bool gfbDataLookup_Vendors(int iMode, const QString &sCode, QList<QStringList> &rows)
{
    rows.clear();
    const auto text = [](const Recordset &r, int field) { return r.value(field).toString().trimmed(); };
    // No cost stored reads as nothing, which shows as 0.00.
    const auto cost = [](const Recordset &r, int field) { return gfsNumber_format(r.readMoney(field), QStringLiteral("0.00")); };
    const bool read = rowsRead(gfsDataLookup_VendorsSql(iMode, sCode), kInventoryTable, [&](const Recordset &r) {
        if (iMode == kLookupVendors) {
            const QString business = text(r, 2);
            rows.append({text(r, 0), text(r, 1), business.isEmpty() ? text(r, 3) : business, QString()});
        } else if (iMode == kLookupItemVendors) {
            rows.append({text(r, 0), text(r, 1), text(r, 2), cost(r, 3)});
        } else {
            rows.append({QString(), text(r, 0), gfsItemID_display(r.value(1).toString()), text(r, 2), text(r, 3),
                         text(r, 4), quantityText(r.value(5)), cost(r, 6)});
        }
    });
    return read && !rows.isEmpty();
}

bool gfbDataLookup_Departments(QList<QStringList> &rows)
{
    rows.clear();
    const QString sql = QStringLiteral("SELECT DeptCode,Department FROM ") + dbuaTable[kDeptTable].sSqlFile +
                        QStringLiteral(" ORDER BY DeptCode");
    const bool read = rowsRead(sql, kDeptTable, [&](const Recordset &r) {
        rows.append({r.value(0).toString().trimmed(), r.value(1).toString().trimmed()});
    });
    return read && !rows.isEmpty();
}

} // namespace qln
