#pragma once
#include <QList>
#include <QString>
#include <QStringList>

// What the data lookup window shows: its columns by mode and the rows it reads, whole, at once.
namespace qln {

enum DataLookupMode : int {
    kLookupDepartments = 0,
    kLookupItemVendors = 1, // the vendors of one item, by its record number
    kLookupVendorItems = 2, // the items of one vendor, by its AP code
    kLookupVendors = 3,
    kLookupItems = 5
};

// The suite's vendor tables. This program creates neither: they belong to the purchasing
// program, and a database without it has none.
inline const QString kVendorTable = QStringLiteral("VENDORS");
inline const QString kItemVendorTable = QStringLiteral("ITEMVENDORS");

struct DataLookupColumn {
    QString sHeader;
    int lWidth = 0; // twips
    int iAlign = 1;
};

// Whether the caller's vendor text names one vendor ("OPEN" and "Manual" name none).
bool gfbDataLookup_VendorGiven(const QString &sVendor);
QList<DataLookupColumn> gfaDataLookup_Columns(int iMode, const QString &sVendor);
// The statement of the items of a vendor (a quote in the code doubled), or of all vendors.
QString gfsDataLookup_ItemsSql(const QString &sVendor);
// The items in column order, the entry column blank. False when the statement was refused
// (logged by the statement layer) or found nothing.
bool gfbDataLookup_Items(const QString &sVendor, QList<QStringList> &rows);
// Every department, by code.
bool gfbDataLookup_Departments(QList<QStringList> &rows);

// The table a mode reads that this program does not create, or empty.
QString gfsDataLookup_ForeignTable(int iMode);
// The statements of modes 1 to 3: of one item (its record number), of one vendor (its AP
// code, a quote doubled), of every vendor.
QString gfsDataLookup_VendorsSql(int iMode, const QString &sCode);
// The rows of modes 1 to 3 in column order; false when refused or nothing found.
bool gfbDataLookup_Vendors(int iMode, const QString &sCode, QList<QStringList> &rows);

} // namespace qln
