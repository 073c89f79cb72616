#include "promo/DeptPromos.h"

#include "platform/Clock.h"
#include "store/Common.h"
#include "store/Departments.h"
#include "store/StoreFixture.h"

using namespace qln;
using namespace qln::test;

namespace {

class DeptStatements : public ::testing::Test {
protected:
    void SetUp() override { Clock::setFixed(QDateTime(QDate(2025, 5, 14), QTime(10, 30))); }
    void TearDown() override { Clock::setFixed(QDateTime()); }
};

class DeptNameTable : public ConnectedStore {
protected:
    void SetUp() override
    {
        ConnectedStore::SetUp();
        gpDept_Open(kDeptTable, gsDataPath);
        ASSERT_TRUE(gfbDB_TableOpen(kDeptTable));
        for (const auto &[code, name] : {std::pair{"002.000.000", "Grocery"}, {"002.001.000", "Canned"}, {"002.001.002", "Soup"}}) {
            gDept = DeptRecord();
            gDept.DeptCode = QString::fromLatin1(code);
            gDept.Department = QString::fromLatin1(name);
            ASSERT_TRUE(gfbDB_RecordOp(kDeptTable, kOpInsert, 1));
        }
    }
};

} // namespace

TEST_F(DeptStatements, ListTextsStandToTheCharacter)
{
    EXPECT_EQ(gfsDeptPromos_where(QStringLiteral("002.001.000"), false),
              QStringLiteral(" WHERE Dept='002.001.000' and StartDate >'1990-01-01 00:00:00'and EndDate >= '2025-05-14 00:00:00' "
                             "and ChangeType <> '99' and ChangeType > 0"));
    EXPECT_EQ(gfsDeptPromos_all_where(true),
              QStringLiteral(" WHERE Dept>'000.000.000' and StartDate >'1990-01-01 00:00:00'and ChangeType <> '99' and ChangeType > 0"));
    EXPECT_EQ(gfsDeptPromos_select(gfsDeptPromos_expired_where()),
              QStringLiteral("SELECT * FROM PromoPrices WHERE Dept>'000.000.000' and StartDate >'1990-01-01 00:00:00'"
                             "and EndDate < '2025-05-14 00:00:00' and ChangeType <> 99 order by dept"));
    EXPECT_EQ(gfsDeptPromo_delete_sql(QDate(2025, 5, 4), QStringLiteral("002.001.000")),
              QStringLiteral("DELETE FROM PromoPrices WHERE startdate = 5/4/2025 AND Dept=' 002.001.000'"));
    EXPECT_EQ(gfsRecords_purged_text(12), QStringLiteral("12Records Purged"));
}

TEST_F(DeptStatements, OnlyAWellFormedCodeIsValid)
{
    EXPECT_TRUE(gfbDept_code_valid(QStringLiteral("002.001.000")));
    for (const char *bad : {"002.001.00'", "002.001", "002-001-000", "002.001.0000", "", "abc.def.ghi"})
        EXPECT_FALSE(gfbDept_code_valid(QString::fromLatin1(bad))) << bad;
}

TEST_F(DeptStatements, CellsOfEachKindOfChange)
{
    gCommon.USEurope = QStringLiteral("N");
    PromoPriceRecord p;
    p.StartDate = QDateTime(QDate(2025, 5, 1), QTime(0, 0));
    p.EndDate = QDateTime(QDate(2025, 5, 31), QTime(0, 0));
    p.PriceChange = Money::fromWhole(25);
    p.ChangeType = kChangeByPercent;
    EXPECT_EQ(gfDeptPromo_cells(p), strings({"05/01/2025", "05/31/2025", "By Percent", "25.00%"}));
    p.ChangeType = kChangeBy;
    EXPECT_EQ(gfDeptPromo_cells(p).mid(2), strings({"By", "25.00"}));
    p.ChangeType = kChangeTo;
    EXPECT_EQ(gfDeptPromo_cells(p).mid(2), strings({"", ""})) << "a department promo never sets a price";
    p.ChangeType = kChangeDeleted;
    EXPECT_EQ(gfDeptPromo_cells(p)[1], QStringLiteral("DELETED"));
}

TEST_F(DeptNameTable, NamesComposeOnceAndLeaveTheBufferWhereComposingWould)
{
    DeptNames names;
    EXPECT_EQ(names.text(QStringLiteral("002.001.002")), QStringLiteral("002.001.002 Grocery - Canned - Soup"));
    EXPECT_EQ(names.text(QStringLiteral("002.000.000")), QStringLiteral("002.000.000 Grocery"));
    gfiDB_Execute(QStringLiteral("UPDATE Departments SET Department='Tins' WHERE DeptCode='002.001.000'"));
    EXPECT_EQ(names.text(QStringLiteral("002.001.002")), QStringLiteral("002.001.002 Grocery - Canned - Soup")) << "read once a list";
    EXPECT_EQ(gDept.DeptCode.trimmed(), QStringLiteral("002.000.000"));
    names.buffer_settle();
    EXPECT_EQ(gDept.DeptCode.trimmed(), QStringLiteral("002.001.002"));
    EXPECT_TRUE(names.text(QStringLiteral("009.000.000")).isEmpty());
}
