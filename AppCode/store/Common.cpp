#include "store/Common.h"

#include "common/ProcessState.h"
#include "store/Database.h"
#include "store/RecordOps.h"
#include "store/TableLayout.h"

namespace qln {

namespace {

using C = CommonRecord;

const TableLayout<C> &layout()
{
    static const TableLayout<C> columns = {
        {"ProgramVersion", "CHAR (10)", &C::ProgramVersion}, {"DupID", "CHAR (1)", &C::DupID},
        {"Cname", "CHAR (40)", &C::Cname}, {"WebAddress", "CHAR (40)", &C::WebAddress},
        {"Ccity", "CHAR (25)", &C::Ccity}, {"Cstate", "CHAR (3)", &C::Cstate},
        {"Czip", "CHAR (10)", &C::Czip}, {"CPhone", "CHAR (14)", &C::CPhone},
        {"Cfax", "CHAR (14)", &C::Cfax}, {"MandatoryName", "CHAR (1)", &C::MandatoryName},
        {"RequestedTicket", "INTEGER", &C::RequestedTicket}, {"MaxStations", "SMALLINT", &C::MaxStations},
        {"USEurope", "CHAR (1)", &C::USEurope}, {"Cups", "CHAR (11)", &C::Cups},
        {"ShippingSL1", "CHAR (9)", &C::ShippingSL1}, {"ShippingSL2", "CHAR (9)", &C::ShippingSL2},
        {"ShippingSL3", "CHAR (9)", &C::ShippingSL3}, {"ExchangeRate", "REAL", &C::ExchangeRate},
        {"Back_Up", "CHAR (1)", &C::Back_Up}, {"PackMode", "CHAR (3)", &C::PackMode},
        {"Security", "CHAR (1)", &C::Security}, {"PONumber", "INTEGER", &C::PONumber},
        {"StoreNumber", "SMALLINT", &C::StoreNumber}, {"Accounting", "CHAR (2)", &C::Accounting},
        {"AutoPhoneFormat", "CHAR (1)", &C::AutoPhoneFormat}, {"AutoProperNames", "CHAR (1)", &C::AutoProperNames},
        {"OrderOfLookup", "CHAR (1)", &C::OrderOfLookup}, {"DefaultARCode", "CHAR (1)", &C::DefaultARCode},
        {"D2", "CHAR (9)", &C::D2}, {"MultiStore", "CHAR (1)", &C::MultiStore},
        {"D5", "CHAR (2)", &C::D5}, {"TaxRate1", "REAL", &C::TaxRate1},
        {"TaxRate2", "REAL", &C::TaxRate2}, {"TaxRate3", "REAL", &C::TaxRate3},
        {"TaxRate4", "REAL", &C::TaxRate4}, {"TaxRate5", "REAL", &C::TaxRate5},
        {"BreakPoint", "DECIMAL", &C::BreakPoint}, {"TaxRateAbove", "REAL", &C::TaxRateAbove},
        {"TaxRate2nd", "REAL", &C::TaxRate2nd}, {"TaxCity", "CHAR (1)", &C::TaxCity},
        {"TaxRound", "CHAR (1)", &C::TaxRound}, {"TaxLineTot", "CHAR (1)", &C::TaxLineTot},
        {"NoTaxOnFirst", "decimal", &C::NoTaxOnFirst}, {"TaxAdjust", "DECIMAL", &C::TaxAdjust},
        {"PrTagTax", "CHAR (1)", &C::PrTagTax}, {"CreditService", "CHAR (1)", &C::CreditService},
        {"CreditUserID", "CHAR (20)", &C::CreditUserID}, {"CreditPwd", "CHAR (20)", &C::CreditPwd},
        {"AccessAcount", "CHAR (1)", &C::AccessAcount}, {"AccessInventory", "CHAR (1)", &C::AccessInventory},
        {"AccessConfig", "CHAR (1)", &C::AccessConfig}, {"AccessOrder", "CHAR (1)", &C::AccessOrder},
        {"AccessVoid", "CHAR (1)", &C::AccessVoid}, {"AccessReports", "CHAR (1)", &C::AccessReports},
        {"AccessMargin", "CHAR (1)", &C::AccessMargin}, {"AccessCost", "CHAR (1)", &C::AccessCost},
        {"AccessQty", "CHAR (1)", &C::AccessQty}, {"CRLimmitActive", "CHAR (1)", &C::CRLimmitActive},
        {"SlipPrint", "CHAR (6)", &C::SlipPrint}, {"UpperCaseItemID", "CHAR (1)", &C::UpperCaseItemID},
        {"UpperCaseSL", "CHAR (1)", &C::UpperCaseSL}, {"POExportType", "CHAR (1)", &C::POExportType},
        {"NamePreFill", "CHAR (1)", &C::NamePreFill}, {"CheckStatCode", "CHAR (2)", &C::CheckStatCode},
        {"CheckCompany", "CHAR (3)", &C::CheckCompany}, {"FullBack", "CHAR (1)", &C::FullBack},
        {"StaFullBack", "SMALLINT", &C::StaFullBack}, {"FullBackTime", "SMALLINT", &C::FullBackTime},
        {"TaxSearch2nd", "CHAR (1)", &C::TaxSearch2nd}, {"TaxLabel2nd", "CHAR (3)", &C::TaxLabel2nd},
        {"MerchantID", "CHAR (14)", &C::MerchantID}, {"PartnerID", "CHAR (14)", &C::PartnerID},
        {"ReprintMessage", "CHAR (15)", &C::ReprintMessage}, {"NickelAdjust", "CHAR (1)", &C::NickelAdjust},
        {"TaxRate6", "REAL", &C::TaxRate6}, {"StartupFee", "DECIMAL", &C::StartupFee},
        {"CancelFee", "DECIMAL", &C::CancelFee}, {"MinPercent", "DECIMAL", &C::MinPercent},
        {"MinDollar", "DECIMAL", &C::MinDollar}, {"PullLayaway", "CHAR (1)", &C::PullLayaway},
        {"NewQty", "CHAR (1)", &C::NewQty}, {"TaxCodeRateAbove", "CHAR (1)", &C::TaxCodeRateAbove},
        {"BackTime", "CHAR (1)", &C::BackTime}, {"WeeklyNum", "SMALLINT", &C::WeeklyNum},
        {"DailyNum", "SMALLINT", &C::DailyNum}, {"MinFreeSpace", "SMALLINT", &C::MinFreeSpace},
        {"POPrintPM", "CHAR (1)", &C::POPrintPM}, {"MinPriceWarn", "CHAR (1)", &C::MinPriceWarn},
        {"PriceMethod", "CHAR (1)", &C::PriceMethod}, {"DMargin", "REAL", &C::DMargin},
        {"ICV", "CHAR (1)", &C::ICV}, {"WinPOFlag", "CHAR (1)", &C::WinPOFlag},
        {"AllowChangeDiscount", "CHAR (1)", &C::AllowChangeDiscount}, {"CCountry", "CHAR (20)", &C::CCountry},
        {"IncrementItems", "CHAR (1)", &C::IncrementItems}, {"CountryID", "SMALLINT", &C::CountryID},
        {"Email", "CHAR (35)", &C::Email}, {"Spare", "CHAR (65)", &C::Spare},
    };
    return columns;
}

} // namespace

void gpCommon_Open(int iTable, const QString &sPath)
{
    Q_UNUSED(sPath);
    gpDB_Table_register(iTable, QStringLiteral("COMMON"), QStringLiteral("COMMON"), QStringLiteral("COMMON"),
                        QStringLiteral("Common"));
    gpDB_table_routines_set(iTable, {gpCommon_key, gpCommon_read, gpCommon_write, gfsCommon_values});
    const QString &t = dbuaTable[iTable].sSqlFile;
    const QString indexes = gfsIndex_statement("Create UNIQUE Index idx_0", t, "DupID");
    gfbDB_TableCreate_missing(iTable, layout().createSql(t), indexes);
}

void gpCommon_key(int, int) {}

void gpCommon_read(int iTable) { layout().read(iTable, gCommon); }

void gpCommon_write(int iTable) { layout().write(iTable, gCommon); }

QString gfsCommon_values() { return layout().values(gCommon); }

bool gfbCommon_Read()
{
    constexpr int kGetFirst = 33; // the code the suite's programs read this table with
    if (!gfbDB_RecordOp(kCommonTable, kGetFirst, -1))
        return false;
    giStore = gCommon.StoreNumber;
    gsStore = QString::number(giStore);
    return true;
}

bool gfbCompany_single_store() { return gCommon.MultiStore.trimmed().isEmpty() || gCommon.MultiStore == QLatin1String("N"); }

bool gfbCompany_head_office() { return gCommon.MultiStore == QLatin1String("H"); }

} // namespace qln
