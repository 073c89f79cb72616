// The line of a group's member, in the wordings of the group and matrix lists.
#include "promo/GroupMembers.h"

#include "store/Common.h"
#include "store/Inventory.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace qln;

namespace {

class MemberLine : public ::testing::Test {
protected:
    void SetUp() override
    {
        gCommon.USEurope = QStringLiteral("N");
        item.SL = QStringLiteral("10000042");
        item.Price = Money::parse(QStringLiteral("12.5")).value();
        row.StartDate = QDateTime(QDate(2025, 6, 1), QTime(0, 0));
        row.EndDate = QDateTime(QDate(2025, 6, 30), QTime(0, 0));
    }
    QStringList cells(int type, const char *change, const GroupMemberWording &wording = {})
    {
        row.ChangeType = qint16(type);
        row.PriceChange = Money::parse(QString::fromLatin1(change)).value();
        return gfGroupMember_cells(row, item, QStringLiteral("Widget"), promoPrice, wording);
    }

    InventoryRecord item;
    PromoPriceRecord row;
    QString promoPrice;
};

} // namespace

TEST_F(MemberLine, EachKindOfChangeGivesItsPriceAndWording)
{
    EXPECT_EQ(cells(kChangeTo, "9.99"),
              strings({"10000042", "Widget", "12.5", "9.99", "06/01/2025", "06/30/2025", "To", "9.99"}));
    EXPECT_EQ(cells(kChangeBy, "2"), strings({"10000042", "Widget", "12.5", "10.50", "06/01/2025", "06/30/2025", "By", "2.00"}));
    const QStringList percent = cells(kChangeByPercent, "20");
    EXPECT_EQ(percent[3], QStringLiteral("10.00"));
    EXPECT_EQ(percent[6], QStringLiteral("By Percent"));
    EXPECT_EQ(percent[7], QStringLiteral("20.00%"));
}

TEST_F(MemberLine, ATombstoneRepeatsThePriceAboveAndTheMatrixWordingDiffers)
{
    cells(kChangeBy, "2");
    const QStringList tomb = cells(kChangeDeleted, "5");
    EXPECT_EQ(tomb[3], QStringLiteral("10.50")) << "the promo price of the line before";
    EXPECT_TRUE(tomb[6].isEmpty());
    EXPECT_TRUE(tomb[7].isEmpty());
    EXPECT_EQ(tomb[5], QStringLiteral("06/30/2025"));

    GroupMemberWording matrix;
    matrix.bToAmount = false;
    matrix.sDeletedEnd = QStringLiteral("Deleted");
    EXPECT_EQ(cells(kChangeDeleted, "5", matrix)[5], QStringLiteral("Deleted"));
    const QStringList to = cells(kChangeTo, "7", matrix);
    EXPECT_EQ(to[6], QStringLiteral("To"));
    EXPECT_TRUE(to[7].isEmpty());
    EXPECT_EQ(to[3], QStringLiteral("7.00"));
}
