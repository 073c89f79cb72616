// The answer a "why this price" window would show, read in process on the demo store.
#include "promo/PromoExplain.h"

#include "support/DemoStore.h"

#include <QTemporaryDir>

using namespace qln;
using namespace qln::test;

namespace {

const QDate kDay(2026, 5, 14);

class PriceExplain : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(gfDemoStore_open(db, program.path(), QDateTime(kDay, QTime(9, 0)), 20));
        ASSERT_GT(gfiDB_Execute(QStringLiteral("UPDATE invt1 SET AllowDiscounts='Y', Price=10, DeptCode='001.002.003' "
                                               "WHERE SL='10000007'")), 0);
    }
    void TearDown() override
    {
        gpProcess_reset();
        Clock::setFixed(QDateTime());
    }
    void add(const QString &sl, qint32 groupId, int type, Money change)
    {
        gpPromo_clear();
        gPromo.SL = sl, gPromo.Invuid = sl.isEmpty() ? 0 : 18, gPromo.GroupID = groupId;
        gPromo.StartDate = gPromo.EndDate = QDateTime(kDay, QTime(0, 0));
        gPromo.ChangeType = qint16(type), gPromo.PriceChange = change;
        gPromo.UniqueID = gfiPromo_UniqueID_next(kPromoTable);
        ASSERT_TRUE(gfbDB_RecordOp(kPromoTable, kOpInsert)) << gsDBLastError.toStdString();
    }

    TestDatabase db;
    QTemporaryDir program;
};

} // namespace

TEST(PriceExplainKey, TakesTheShownAndTheStoredFormOnly)
{
    EXPECT_EQ(gfsExplain_SL_key(QStringLiteral("1000000.7")), QStringLiteral("10000007"));
    EXPECT_EQ(gfsExplain_SL_key(QStringLiteral(" 10000007 ")), QStringLiteral("10000007"));
    EXPECT_EQ(gfsExplain_SL_key(QStringLiteral("~ABC")), QStringLiteral("~ABC"));
    for (const char *bad : {"", "123456789", "1.000007", "O'1", "12.34.5"})
        EXPECT_EQ(gfsExplain_SL_key(QString::fromLatin1(bad)), std::nullopt) << bad;
}

TEST_F(PriceExplain, TheFirstOfEqualPricesIsTheBestAndAPriceAboveTheRegularStillCounts)
{
    add(QStringLiteral("10000007"), 0, kChangeTo, Money::fromWhole(12));   // above the regular price
    PriceExplanation e;
    ASSERT_EQ(gfePrice_explain(QStringLiteral("10000007"), kDay, e), ExplainEnd::Explained);
    ASSERT_EQ(e.promos.size(), 1);
    EXPECT_EQ(e.best, 0) << "the till applies the promo; the regular price is no promo";
    EXPECT_EQ(e.price(), Money::fromWhole(12));

    add(QString(), -2, kChangeByPercent, Money::fromWhole(20));             // 8.00
    add(QStringLiteral("10000007"), 4, kChangeBy, Money::fromWhole(2));      // 8.00 too
    ASSERT_EQ(gfePrice_explain(QStringLiteral("10000007"), kDay, e), ExplainEnd::Explained);
    ASSERT_EQ(e.promos.size(), 3);
    EXPECT_EQ(e.promos[1].kind, PromoKind::Group) << "told by kind: item, group, daily";
    EXPECT_EQ(e.best, 1) << "of equal prices, the first told";
    EXPECT_EQ(e.price(), Money::fromWhole(8));
    EXPECT_EQ(e.regularPrice, Money::fromWhole(10));
    EXPECT_EQ(e.dept, QStringLiteral("001.002.003"));

    ASSERT_GT(gfiDB_Execute(QStringLiteral("UPDATE invt1 SET AllowDiscounts='N' WHERE SL='10000007'")), 0);
    ASSERT_EQ(gfePrice_explain(QStringLiteral("10000007"), kDay, e), ExplainEnd::Explained);
    EXPECT_EQ(e.promos.size(), 3) << "still told";
    EXPECT_EQ(e.best, std::nullopt);
    EXPECT_EQ(e.price(), Money::fromWhole(10));

    EXPECT_EQ(gfePrice_explain(QStringLiteral("99999999"), kDay, e), ExplainEnd::UnknownItem);
}
