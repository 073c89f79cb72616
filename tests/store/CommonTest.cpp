#include "StoreFixture.h"

#include "store/Common.h"

#include <QFile>

using namespace qln;
using namespace qln::test;

namespace {

class CompanyTable : public ConnectedStore {
protected:
    void SetUp() override
    {
        ConnectedStore::SetUp();
        giStore = 0;
        gsStore.clear();
        gpCommon_Open(kCommonTable, gsDataPath);
        ASSERT_TRUE(gfbDB_TableOpen(kCommonTable));
    }
};

} // namespace

TEST_F(CompanyTable, IsCreatedEmptySoThatNoCompanyIsRead)
{
    EXPECT_EQ(dbuaTable[kCommonTable].sIndexSql, QStringLiteral("Create UNIQUE Index idx_0 On COMMON (DupID);"));
    EXPECT_EQ(gfiDB_RecordCount(kCommonTable), 0);
    giStore = 7;
    EXPECT_FALSE(gfbCommon_Read());
    EXPECT_EQ(gsDB_LastSql(), QStringLiteral("SELECT TOP 1 * FROM COMMON"));
    EXPECT_EQ(giStore, 7) << "nothing read, nothing kept";
    EXPECT_FALSE(gfbDB_RecordOp(kCommonTable, kOpGetFirst, -1));
}

TEST_F(CompanyTable, TheRecordGoesToItsColumnsAndGivesTheStoreNumber)
{
    gCommon = CommonRecord();
    gCommon.Cname = QStringLiteral("O'Hara Hardware");
    gCommon.StoreNumber = 12;
    gCommon.MultiStore = QStringLiteral("H");
    gCommon.USEurope = QStringLiteral("E");
    gCommon.TaxRate1 = 6.5f;
    gCommon.BreakPoint = Money::fromWhole(250);
    gCommon.TaxLabel2nd = QStringLiteral("GST");
    gCommon.CountryID = 2;
    gCommon.Spare = QStringLiteral("end");
    ASSERT_TRUE(gfbDB_RecordOp(kCommonTable, kOpInsert)) << gsDBLastError.toStdString();

    gCommon = CommonRecord();
    ASSERT_TRUE(gfbCommon_Read());
    EXPECT_EQ(giStore, 12);
    EXPECT_EQ(gsStore, QStringLiteral("12"));
    EXPECT_EQ(gCommon.Cname, QStringLiteral("O'Hara Hardware").leftJustified(40));
    EXPECT_EQ(gCommon.MultiStore, QStringLiteral("H"));
    EXPECT_EQ(gCommon.USEurope, QStringLiteral("E"));
    EXPECT_EQ(gCommon.TaxRate1, 6.5f);
    EXPECT_EQ(gCommon.BreakPoint, Money::fromWhole(250));
    EXPECT_EQ(gCommon.TaxLabel2nd, QStringLiteral("GST"));
    EXPECT_EQ(gCommon.CountryID, 2);
    EXPECT_EQ(gCommon.Spare.trimmed(), QStringLiteral("end"));

    // Other programs of the suite reach the columns by ordinal: those this program reads stand
    // where the company table has always had them.
    ASSERT_EQ(dbaRecordset[kCommonTable]->fieldCount(), 98);
    const std::pair<int, const char *> placed[] = {{0, "ProgramVersion"}, {1, "DupID"},      {2, "Cname"},
                                                   {12, "USEurope"},      {22, "StoreNumber"}, {29, "MultiStore"},
                                                   {31, "TaxRate1"},      {69, "TaxLabel2nd"}, {95, "CountryID"}};
    for (const auto &[ordinal, name] : placed)
        EXPECT_EQ(gfsDB_FieldName(kCommonTable, ordinal), QString::fromUtf8(name));

    gpCommon_Open(kCommonTable, gsDataPath);
    EXPECT_EQ(gfiDB_RecordCount(kCommonTable), 1);
    EXPECT_FALSE(QFile::exists(db.file(QStringLiteral("PVSW.log"))));
}

TEST(CompanyMode, StoreModeFromTheCompanyRecord)
{
    for (const char *single : {"N", " ", ""}) {
        gCommon.MultiStore = QString::fromLatin1(single);
        EXPECT_TRUE(gfbCompany_single_store());
        EXPECT_FALSE(gfbCompany_head_office());
    }
    gCommon.MultiStore = QStringLiteral("H");
    EXPECT_TRUE(gfbCompany_head_office() && !gfbCompany_single_store());
    gCommon.MultiStore = QStringLiteral("Y"); // neither: no polling question, and promos become tombstones
    EXPECT_FALSE(gfbCompany_head_office() || gfbCompany_single_store());
    gCommon = CommonRecord();
}
