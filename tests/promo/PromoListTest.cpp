#include "promo/PromoList.h"

#include "store/Common.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace qln;

namespace {

PromoPriceRecord promo(int type, Money change)
{
    PromoPriceRecord p;
    p.ChangeType = qint16(type);
    p.PriceChange = change;
    p.StartDate = QDateTime(QDate(2025, 5, 1), QTime(0, 0));
    p.EndDate = QDateTime(QDate(2025, 5, 31), QTime(0, 0));
    return p;
}

} // namespace

TEST(PromoList, GridLineOfEachTypeAndOfATombstone)
{
    gCommon.USEurope = QStringLiteral("N");
    const Money price = Money::parse(QStringLiteral("9.99")).value();
    PromoGridLine line = gfPromo_grid_line(promo(kChangeByPercent, Money::fromWhole(15)), price, QStringLiteral(".00"), true);
    EXPECT_EQ(line.promoPrice, QStringLiteral("8.49"));
    EXPECT_EQ(line.type, QStringLiteral("By Percent"));
    EXPECT_EQ(line.amount, QStringLiteral("15.00%"));
    EXPECT_EQ(line.start, QStringLiteral("05/01/2025"));
    EXPECT_EQ(line.endKey, QStringLiteral("20250531"));
    EXPECT_EQ(gfPromo_grid_line(promo(kChangeByPercent, Money::fromWhole(15)), price, QString(), false).amount, QStringLiteral("15.00"));

    line = gfPromo_grid_line(promo(kChangeBy, Money::parse(QStringLiteral("0.5")).value()), price, QString(), false);
    EXPECT_EQ(line.amount, QStringLiteral(".50")) << "no digit before the point below 1";
    EXPECT_EQ(line.regularPrice, QStringLiteral("9.99"));

    line = gfPromo_grid_line(promo(kChangeDeleted, Money::fromWhole(3)), price, QStringLiteral("7.25"), false);
    EXPECT_EQ(line.promoPrice, QStringLiteral("7.25")) << "a tombstone repeats the price of the row before";
    EXPECT_EQ(line.end, QStringLiteral("DELETED"));
    EXPECT_TRUE(line.type.isEmpty());
}

TEST(PromoList, DeletedComparesAboveEveryDateInTheOverlapTest)
{
    gCommon.USEurope = QStringLiteral("N");
    EXPECT_EQ(gfsDate_pattern_text(QStringLiteral("05/14/2025")), QStringLiteral("20250514"));
    EXPECT_GT(gfsDate_pattern_text(QStringLiteral("DELETED")), gfsDate_pattern_text(QStringLiteral("12/31/2099")));
}

TEST(PromoList, TombstoneStatementKeepsTheTableExpressionInsideItsText)
{
    EXPECT_EQ(gfsPromo_tombstone_sql(QStringLiteral("5/14/2025 10:30:00 AM"), 18, true),
              QStringLiteral("UPDATE & dbuaTable(itable).sSqlFile & set changetype =99, changeDate = 5/14/2025 10:30:00 AM,"
                             "poll='Y'  WHERE invuid = 18"));
    EXPECT_TRUE(gfsPromo_tombstone_sql(QStringLiteral("x"), 18, false).endsWith(QStringLiteral(",poll='Y' WHERE invuid = 18")));
}
