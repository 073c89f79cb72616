#include "lookup/GridSetUpBackOffice.h"

#include "access/SalesCode.h"
#include "common/ProcessState.h"
#include "config/Country.h"
#include "config/IniServices.h"
#include "config/TermConstants.h"
#include "config/TermDefinitions.h"
#include "platform/Messages.h"
#include "store/Common.h"

#include <QRegularExpression>

namespace qln {

namespace {

// Field ordinals of the item record that the columns show.
enum ItemField : int {
    kSL = 0, kItemID = 1, kDescription = 2, kSubDescription = 3, kVendorCode = 7, kPrice = 8, kCost = 9,
    kQtyOnHand = 10, kDeptCode = 15, kOnOrder = 17, kPriceIncTax = 32, kRecordNum = 40,
};

enum Format : int { kText = 0, kNumber = 1, kMoney = 2, kSL_form = 4, kUpc = 6, kPriceForm = 7, kDeptName = 12 };

bool settingOn(clsINI_Services &ini, const char *key, const char *fallback = "N")
{
    const QString value = ini.GetValue(QStringLiteral("LOOKUP"), QString::fromLatin1(key), QString::fromLatin1(fallback));
    return value.trimmed().toUpper().startsWith(QLatin1Char('Y'));
}

QString doubledQuotes(QString text) { return text.replace(QLatin1Char('\''), QLatin1String("''")); }

void column(const char *caption, int width, int align, int field, int format)
{
    gaGridColumns.push_back({QString::fromLatin1(caption), field, format, width, align, 0xFFFFFF});
}

void captionsSet()
{
    LookupCaptions &c = gLookupCaptions;
    c.saAction = {QStringLiteral("View &Detail   F2"), QStringLiteral("Custom Lists"), QString(), QStringLiteral("Verify Balances"),
                  QString()};
    if (bFindMode) {
        c.sTitle = QStringLiteral("Find Inventory Item");
        c.sExit = QStringLiteral("Esc Cancel");
        return;
    }
    c.sExit = QStringLiteral("Exit");
    if (gfbCompany_head_office()) {
        c.sTitle = QStringLiteral("Inventory Lookup Store ") + gsStore;
        c.saAction[2] = QStringLiteral("Select Store");
    } else {
        c.sTitle = QStringLiteral("Inventory Lookup");
        c.saAction[2] = QStringLiteral("Pricing Utilities");
    }
}

// A sort that the table has no index for: the list is searched by scan.
void displayOnly(const char *label, const QString &field, int iField)
{
    gLookupCaptions.sSearchLabel = QString::fromLatin1(label);
    sKeyFieldName = field;
    iLookupKey = 3;
    iSortField2 = iField;
    sWhereClause = QStringLiteral(" WHERE  status <=  ' ' ");
    sOrderClause = QStringLiteral(" ORDER BY ") + field;
}

} // namespace

void gpLookupSettings_load(clsINI_Services &ini)
{
    gLookupSettings.bDeptNames = settingOn(ini, "Show Dept Name");
    gLookupSettings.bRecordNumbers = settingOn(ini, "Show UID");
    gLookupSettings.bLongDescriptions = settingOn(ini, "Long Description");
    gLookupSettings.bCostSecurity = settingOn(ini, "Cost Security");
    gLookupSettings.bScanning = settingOn(ini, "Scanning");
    gLookupSettings.bMatrixRootsHidden = !settingOn(ini, "Show Matrix Roots");
    gLookupSettings.bPhoneLookup = settingOn(ini, "Phone Lookup");
    gLookupSettings.bBalancesHidden = settingOn(ini, "Hide Verify Balances");
    gLookupSettings.sSalesHead = ini.GetValue(QStringLiteral("LOOKUP"), QStringLiteral("SALESHEAD"), QString());
}

QList<StoreChoice> gfaLookup_Stores()
{
    static const QRegularExpression numbered(QStringLiteral("^(\\d+)\\b"));
    QList<StoreChoice> stores;
    for (const QString &entry : gLookupSettings.sSalesHead.split(QLatin1Char('|'))) {
        const QString text = entry.trimmed();
        if (const QRegularExpressionMatch m = numbered.match(text); m.hasMatch())
            stores.append({text, m.captured(1).toInt()});
    }
    stores.append({QStringLiteral("HUB/*ALL"), giStore});
    return stores;
}

bool gfbLookup_CostVisible()
{
    if (!gLookupSettings.bCostSecurity)
        return true;
    return gfbSalesCode_Permission(kRightSeeCost);
}

bool gfbGridSetUp_Inventory()
{
    const int b = iFirstCol;
    const bool cost = gfbLookup_CostVisible();
    gaGridColumns.clear();
    if (b == 1)
        column("Qty", 800, 1, kNoField, kText);
    column("Description", 2400, 1, kDescription, kText);
    column("SubDesc.", 1500, 1, kSubDescription, kText);
    column(" S/L", 800, 1, kSL, kSL_form);
    column("Item ID", 1500, 1, kItemID, kText);
    column("UPC Code", 1200, 1, kItemID, kUpc);
    column("Dept Code", 1000, 1, kDeptCode, kText);
    column("Dept Name", gLookupSettings.bDeptNames ? 1300 : 0, 1, kItemID, kDeptName);
    const int priceField = gbIncludeTax ? kPriceIncTax : kPrice;
    if (b == 1) {
        // A list being built shows what is on order instead of the vendor, and cost before price.
        column("On Order", 1000, 4, kOnOrder, kNumber);
        column("On Hand", 1000, 4, kQtyOnHand, kNumber);
        if (cost)
            column("Cost", 1000, 7, kCost, kMoney);
        else
            column("Price", 1000, 7, priceField, kPriceForm);
    } else {
        // Wider than the original's 1000 and 700: vendor codes of twelve capitals, the bold
        // header, and prices up to a million read whole.
        column("F9 Vendor", 1400, 1, kVendorCode, kText);
        column("Quantity", 900, 4, kQtyOnHand, kNumber);
        column("Price", 1000, 7, priceField, kPriceForm);
        if (cost)
            column("Cost", 1000, 7, kCost, kMoney);
    }
    if (gLookupSettings.bRecordNumbers)
        column("UID", 500, 4, kRecordNum, kNumber);
    iGridCols = int(gaGridColumns.size());
    iSortField = kDescription;
    iLookupFile = 1;
    captionsSet();
    gpDataGrid_SetSortInventory(b);
    return true;
}

bool gpDataGrid_SetSortInventory(int col)
{
    if (col < 0 || col >= int(gaGridColumns.size()))
        return false;
    if (gaGridColumns[col].iField == kNoField)
        col = 1;
    const GridColumn &c = gaGridColumns[col];
    const int offset = col - iFirstCol;
    const bool vendor = !sVendorFilter.trimmed().isEmpty();
    if (offset == 6 && c.iFormat == kDeptName) {
        gfiMsgBox(QStringLiteral("Display Only - No Sorting Available"), MsgButtons::OK, MsgIcon::None,
                  QStringLiteral("Department Name"));
        return false;
    }
    if (offset == 1 && vendor && (iVendorMode == 0 || iVendorMode == 1)) {
        gfiMsgBox(QStringLiteral("Sort vendors by sub-description is not available"));
        return false;
    }
    sVendorFilter = doubledQuotes(sVendorFilter);
    const QString vendorWhere = QStringLiteral(" WHERE status <= ' ' AND vendorcode ='") + sVendorFilter + QLatin1Char('\'');
    sWhereClause.clear();
    sWhereClause2.clear();
    sOrderClause.clear();
    iSortField2 = -1;
    bUpcMode = false;
    iSortField = c.iField;
    auto keyed = [](const char *label, const char *field, int key) {
        gLookupCaptions.sSearchLabel = QString::fromLatin1(label);
        sKeyFieldName = QString::fromLatin1(field);
        iLookupKey = key;
    };
    if (offset == 0 && c.iField == kDescription) {
        keyed("--Description", "Description", 3);
        if (vendor) {
            iLookupKey = 5;
            sWhereClause = vendorWhere + QStringLiteral(" AND Description > '");
            sOrderClause = QStringLiteral(" ORDER BY Description");
        }
    } else if (offset == 1 && c.iField == kSubDescription) {
        keyed("--SubDescription", "SubDescription", 4);
    } else if (offset == 2 && c.iField == kSL) {
        keyed("--SL", "SL", 1);
        if (vendor) {
            iLookupKey = 6;
            sWhereClause = vendorWhere + QStringLiteral(" AND SL > '");
            sWhereClause2 = QStringLiteral(" AND SL <= '");
            sOrderClause = QStringLiteral(" ORDER BY SL ");
        }
    } else if (offset == 3 && c.iField == kItemID) {
        keyed("--Item ID", "ItemID", 2);
        if (vendor) {
            iLookupKey = 7;
            sWhereClause = vendorWhere + QStringLiteral(" AND ItemID > '");
            sOrderClause = QStringLiteral(" ORDER BY ItemID");
        }
    } else if (c.iFormat == kUpc) {
        keyed("--UPC", "UPC", 2);
        bUpcMode = true;
    } else if (c.iField == kDeptCode) {
        keyed("--Dept Code", "DeptCode", 8);
    } else if (c.iField == kVendorCode) {
        keyed("---Vendor", "VendorCode", 6);
    } else if (c.iField == kQtyOnHand) {
        displayOnly("--Quantity", QStringLiteral("QtyOnHand"), c.iField);
    } else if (c.iField == kPrice || c.iField == kPriceIncTax) {
        displayOnly("--Price", gbIncludeTax ? QStringLiteral("PriceIncTax") : QStringLiteral("Price"), c.iField);
    } else if (c.iField == kRecordNum) {
        keyed("--UID", "Recordnum", 0);
    } else {
        displayOnly("--Department", QString(), c.iField);
    }
    sVendorFilter.replace(QLatin1String("''"), QLatin1String("'"));
    return true;
}

bool gfbGridSetUp_Names()
{
    const QString br = QStringLiteral("\n");
    const bool phone = gLookupSettings.bPhoneLookup;
    gaGridColumns.clear();
    auto add = [](const QString &caption, int width, int field) {
        gaGridColumns.push_back({caption, field, kText, width, 1, 0xFFFFFF});
    };
    add(QStringLiteral(" F7") + br + gfsTerm(kTermBusiness), 3900, kNameBusiness);
    // Wider than the original's 1300, 700 and 450: a code of fourteen characters, a zip with
    // its extension and a four-letter mail code read whole.
    add(phone ? QStringLiteral(" AR Code") : QStringLiteral(" F6") + br + QStringLiteral(" AR Code"), phone ? 0 : 1700,
        kNameARCode);
    add(phone ? QStringLiteral(" F6") + br + QStringLiteral(" Phone") : QStringLiteral(" Phone"), phone ? 1300 : 0,
        kNamePhone);
    add(QStringLiteral(" F4") + br + gfsTerm(kTermLastName), 2200, kNameLastName);
    add(QStringLiteral(" F5") + br + gfsTerm(kTermFirstName), 1500, kNameFirstName);
    add(QStringLiteral("Street Address"), 2800, kNameAddress);
    add(QStringLiteral("City"), 1400, kNameCity);
    add(QStringLiteral("State"), 600, kNameState);
    add(QStringLiteral("Zip") + br + QStringLiteral(" F8"), 1000, kNameZip);
    add(QStringLiteral("MC") + br + QStringLiteral(" F9"), 600, kNameMail);
    iGridCols = int(gaGridColumns.size());
    iFirstCol = 0;
    iLookupFile = 99;
    iLookupKey = 1;
    iSortField = kNameLastName;
    iSortField2 = -1;
    LookupCaptions &c = gLookupCaptions;
    c.saAction = {QStringLiteral("View &Detail   F2"), QStringLiteral("Custom Lists"), QString(),
                  gLookupSettings.bBalancesHidden ? QString() : QStringLiteral("Verify Balances"), QString()};
    c.sTitle = bFindMode ? QStringLiteral("Find Customer Name") : QStringLiteral("Name Lookup");
    c.sExit = bFindMode ? QStringLiteral("Esc Cancel") : QStringLiteral("Exit");
    c.sSearchLabel = QStringLiteral("--A/R Code");
    sKeyFieldName = QStringLiteral("ARCode");
    return true;
}

void gpDataGrid_SetSortNames(int col)
{
    if (col < 0 || col >= int(gaGridColumns.size()))
        return;
    struct NameSort {
        int iField;
        const char *label;
        const char *field;
        int key; // 0: no index, sorted for display only
    };
    static constexpr NameSort sorts[] = {
        {kNameARCode, "--A/R Code", "ARCode", 1},       {kNamePhone, "--Phone", "PhoneIndex", 9},
        {kNameLastName, "--Last Name", "LastName", 2},  {kNameZip, "--Zip Code", "Zip", 3},
        {kNameBusiness, "--Business", "Business", 5},   {kNameMail, "--Mail Code", "Mail", 4},
        {kNameFirstName, "--First Name", "FirstName", 7}, {kNameAddress, "--Street", "Address", 0},
        {kNameCity, "--City", "City", 0},               {kNameState, "--State", "STATE", 0},
    };
    const int field = gaGridColumns[col].iField;
    for (const NameSort &s : sorts) {
        if (s.iField != field)
            continue;
        gLookupCaptions.sSearchLabel = QString::fromLatin1(s.label);
        sKeyFieldName = QString::fromLatin1(s.field);
        iSortField2 = s.key == 0 ? field : -1;
        iLookupKey = s.key == 0 ? 2 : s.key;
        if (s.key != 0)
            iSortField = field;
        return;
    }
}

int gfiDataGrid_ColumnOf(int iField, int iFormat)
{
    for (int col = 0; col < int(gaGridColumns.size()); ++col) {
        if (gaGridColumns[col].iField == iField && gaGridColumns[col].iFormat == iFormat)
            return col;
    }
    return -1;
}

} // namespace qln
