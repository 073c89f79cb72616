#pragma once
#include "common/Money.h"

#include <QString>

// The company settings that all programs of the suite share: one record. This program reads
// it once at start-up; the store number names the inventory table.
namespace qln {

constexpr int kCommonTable = 0;

struct CommonRecord {
    QString ProgramVersion; // 10
    QString DupID; // 1
    QString Cname; // 40
    QString WebAddress; // 40
    QString Ccity; // 25
    QString Cstate; // 3
    QString Czip; // 10
    QString CPhone; // 14
    QString Cfax; // 14
    QString MandatoryName; // 1
    qint32 RequestedTicket = 0;
    qint16 MaxStations = 0;
    QString USEurope; // 1
    QString Cups; // 11
    QString ShippingSL1; // 9
    QString ShippingSL2; // 9
    QString ShippingSL3; // 9
    float ExchangeRate = 0;
    QString Back_Up; // 1
    QString PackMode; // 3
    QString Security; // 1
    qint32 PONumber = 0;
    qint16 StoreNumber = 0;
    QString Accounting; // 2
    QString AutoPhoneFormat; // 1
    QString AutoProperNames; // 1
    QString OrderOfLookup; // 1
    QString DefaultARCode; // 1
    QString D2; // 9
    QString MultiStore; // 1
    QString D5; // 2
    float TaxRate1 = 0;
    float TaxRate2 = 0;
    float TaxRate3 = 0;
    float TaxRate4 = 0;
    float TaxRate5 = 0;
    Money BreakPoint;
    float TaxRateAbove = 0;
    float TaxRate2nd = 0;
    QString TaxCity; // 1
    QString TaxRound; // 1
    QString TaxLineTot; // 1
    Money NoTaxOnFirst;
    Money TaxAdjust;
    QString PrTagTax; // 1
    QString CreditService; // 1
    QString CreditUserID; // 20
    QString CreditPwd; // 20
    QString AccessAcount; // 1
    QString AccessInventory; // 1
    QString AccessConfig; // 1
    QString AccessOrder; // 1
    QString AccessVoid; // 1
    QString AccessReports; // 1
    QString AccessMargin; // 1
    QString AccessCost; // 1
    QString AccessQty; // 1
    QString CRLimmitActive; // 1
    QString SlipPrint; // 6
    QString UpperCaseItemID; // 1
    QString UpperCaseSL; // 1
    QString POExportType; // 1
    QString NamePreFill; // 1
    QString CheckStatCode; // 2
    QString CheckCompany; // 3
    QString FullBack; // 1
    qint16 StaFullBack = 0;
    qint16 FullBackTime = 0;
    QString TaxSearch2nd; // 1
    QString TaxLabel2nd; // 3
    QString MerchantID; // 14
    QString PartnerID; // 14
    QString ReprintMessage; // 15
    QString NickelAdjust; // 1
    float TaxRate6 = 0;
    Money StartupFee;
    Money CancelFee;
    Money MinPercent;
    Money MinDollar;
    QString PullLayaway; // 1
    QString NewQty; // 1
    QString TaxCodeRateAbove; // 1
    QString BackTime; // 1
    qint16 WeeklyNum = 0;
    qint16 DailyNum = 0;
    qint16 MinFreeSpace = 0;
    QString POPrintPM; // 1
    QString MinPriceWarn; // 1
    QString PriceMethod; // 1
    float DMargin = 0;
    QString ICV; // 1
    QString WinPOFlag; // 1
    QString AllowChangeDiscount; // 1
    QString CCountry; // 20
    QString IncrementItems; // 1
    qint16 CountryID = 0;
    QString Email; // 35
    QString Spare; // 65
};

inline CommonRecord gCommon;

// Registers the table, installs its routines, and creates it, empty, when missing.
void gpCommon_Open(int iTable, const QString &sPath);
// The table is only ever read from its first row: no key.
void gpCommon_key(int iTable, int iKey);
void gpCommon_read(int iTable);
void gpCommon_write(int iTable);
QString gfsCommon_values();

// Reads the company record and keeps its store number as giStore and gsStore. False when
// the table holds no row.
bool gfbCommon_Read();

// MultiStore of the company: "N" or a blank is one store, "H" a head office.
bool gfbCompany_single_store();
bool gfbCompany_head_office();

} // namespace qln
