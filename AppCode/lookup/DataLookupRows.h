#pragma once
#include <QList>
#include <QString>
#include <QStringList>

// What the data lookup window shows: its columns by mode and the rows it reads, whole, at once.
namespace qln {

enum DataLookupMode : int { kLookupDepartments = 0, kLookupItems = 5 };

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

} // namespace qln
