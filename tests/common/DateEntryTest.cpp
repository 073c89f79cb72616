#include "common/DateEntry.h"
#include "platform/Clock.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace qln;

namespace {

QDate typed(const char *text, const char *usEurope = " ")
{
    return gfdDate_typed(QString::fromLatin1(text), QString::fromLatin1(usEurope)).value_or(QDate());
}

class DateEntry : public ::testing::Test {
protected:
    void SetUp() override { Clock::setFixed(QDateTime(QDate(2026, 11, 22), QTime(9, 0))); }
    void TearDown() override { Clock::setFixed(QDateTime()); }
};

} // namespace

TEST_F(DateEntry, TypedFormsFollowTheCompanysDateOrder)
{
    EXPECT_EQ(typed("11/22/2026"), QDate(2026, 11, 22));
    EXPECT_EQ(typed(" 1-2-26 "), QDate(2026, 1, 2));
    EXPECT_EQ(typed("1.2.75"), QDate(1975, 1, 2)) << "two-digit years from 30 are last century";
    EXPECT_EQ(typed("2026-03-04"), QDate(2026, 3, 4)) << "a leading year is always year, month, day";
    EXPECT_EQ(typed("12/25"), QDate(2026, 12, 25)) << "no year is this year";
    EXPECT_EQ(typed("1/2/2026", "E"), QDate(2026, 2, 1));
    EXPECT_EQ(typed("22-06-29", "E"), QDate(2029, 6, 22));
    // Only the other order makes a date: it is taken.
    EXPECT_EQ(typed("22/11/2026"), QDate(2026, 11, 22));
    EXPECT_EQ(typed("11/22/2026", "E"), QDate(2026, 11, 22));
}

TEST_F(DateEntry, TextThatIsNoDateIsRefused)
{
    for (const char *text : {"", "abc", "13/13/2026", "2/30/2026", "1/2/3/4", "11/22/20266", "11/x/2026", "-1/2/2026", "11"})
        EXPECT_FALSE(gfdDate_typed(QString::fromLatin1(text), QStringLiteral(" "))) << text;
}

TEST_F(DateEntry, CheckedDateIsWrittenBackInTheCompanysForm)
{
    EXPECT_EQ(gfsDate_retyped(QDate(2031, 6, 2), QStringLiteral("E")), QStringLiteral("02-06-31"));
    EXPECT_EQ(gfsDate_retyped(QDate(2031, 6, 2), QStringLiteral(" ")), QStringLiteral("06-02-2031"));
}
