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
    if (iMode == kLookupDepartments)
        return {{QStringLiteral("Dept. Code"), 1400, 1}, {QStringLiteral("Department"), 3000, 1}};
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
