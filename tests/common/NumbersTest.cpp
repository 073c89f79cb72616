#include "common/AnsiText.h"
#include "common/DateForms.h"
#include "common/Files.h"
#include "common/NumberFormat.h"
#include "common/Numbers.h"

#include "support/QtPrinters.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qln;

namespace {
QString s(const char *text) { return QString::fromUtf8(text); }
Money money(const char *text) { return *Money::parse(s(text)); }
} // namespace

TEST(MoneyText, FourDecimalsKeptTheFifthRoundsAndAnythingElseIsRefused)
{
    EXPECT_EQ(money(" 12.3456 ").units(), 123456);
    EXPECT_EQ(money("-0.00005").units(), -1);
    EXPECT_EQ(money("+.5").units(), 5000);
    EXPECT_EQ(money("7.").units(), 70000);
    EXPECT_EQ(money("99999999999999.9999").units(), 999999999999999999LL);
    for (const char *bad : {"", ".", "-", "1.2.3", "12x", "1 2", "123456789012345"})
        EXPECT_FALSE(Money::parse(s(bad))) << bad;
}

TEST(NumberValue, LeadingNumberWithBlanksSkipped)
{
    EXPECT_EQ(gfdNumber_value(s("12x")), 12.0);
    EXPECT_EQ(gfdNumber_value(s("x")), 0.0);
    EXPECT_EQ(gfdNumber_value(s(" - 1 2.5 ")), -12.5);
    EXPECT_EQ(gfdNumber_value(s("1.2.3")), 1.2);
}

TEST(NumberRound, HalvesAwayFromZeroJudgedInSinglePrecision)
{
    EXPECT_DOUBLE_EQ(gfvNumber_round(-2.5, 0), -3.0);
    // 1.2345 * 1000 is 1234.4999999999998 in double; in single the fraction is 0.5.
    EXPECT_DOUBLE_EQ(gfvNumber_round(1.2345, 3), 1.235);
    EXPECT_DOUBLE_EQ(gfvNumber_round(-1.2344, 3), -1.234);
}

TEST(NumberFormat, DisplayPatterns)
{
    EXPECT_EQ(gfsNumber_format(money("8.4915"), s("#.00")), s("8.49"));
    EXPECT_EQ(gfsNumber_format(money("-0.125"), s("##.00")), s("-.13"));
    EXPECT_EQ(gfsNumber_format(money("1234567.005"), s("##,##0.00")), s("1,234,567.01"));
    EXPECT_EQ(gfsNumber_format(money("-0.004"), s("##,##0.00")), s("0.00"));
    EXPECT_EQ(gfsNumber_format(33.349998, s("##0.0")), s("33.3"));
    EXPECT_EQ(gfsNumber_format(Money::fromUnits(-123456789012345678), s("#,##0.0000")), s("-12,345,678,901,234.5678"));
    EXPECT_EQ(gfsNumber_format(money("5"), s("0000")), s("0005"));
}

TEST(DateForms, EightDigitsShortFormAndSql)
{
    const QDateTime instant(QDate(2026, 3, 7), QTime(15, 5, 1));
    EXPECT_EQ(gfsDate_display(gfsDate_compact(instant.date()), s("")), s("03/07/2026"));
    EXPECT_EQ(gfsDate_display(s("20260307"), s("E")), s("07/03/2026"));
    EXPECT_EQ(gfsDate_display(s(" "), s("")), s("   "));
    EXPECT_EQ(gfsDate_short(instant.date(), s("E")), s("07/03/2026"));
    EXPECT_EQ(gfsDate_sql(instant), s("2026-03-07 15:05:01"));
    EXPECT_EQ(gfsDate_key(instant), s("20260307 15:05:01"));
    // Early, late and missing dates come out as Qt writes them.
    for (const QDate &date : {QDate(45, 1, 2), QDate(999, 12, 31), QDate(12026, 3, 7), QDate()}) {
        EXPECT_EQ(gfsDate_short(date, s("")), date.toString(s("MM/dd/yyyy")));
        EXPECT_EQ(gfsDate_compact(date), date.toString(s("yyyyMMdd")));
        EXPECT_EQ(gfsDate_sql(QDateTime(date, QTime(1, 2))), QDateTime(date, QTime(1, 2)).toString(s("yyyy-MM-dd HH:mm:ss")));
    }
}

TEST(Files, ExistsIsForFilesAndDeleteIsQuietWhenNothingIsThere)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(s("a.txt"));
    EXPECT_FALSE(gfb_FileExists(dir.path()));
    EXPECT_TRUE(QFile(file).open(QIODevice::WriteOnly) && gfb_FileExists(file));
    EXPECT_TRUE(gfbFile_delete(file) && !gfb_FileExists(file) && gfbFile_delete(file));
}

TEST(AnsiText, EveryByteSurvivesTheRoundTrip)
{
    QByteArray all;
    for (int b = 0; b < 256; ++b)
        all += char(b);
    EXPECT_EQ(gfsAnsi_encode(gfsAnsi_decode(all)), all);
    EXPECT_EQ(gfsAnsi_decode(QByteArray("\x80\xA3")), s("€£"));
    EXPECT_EQ(gfsAnsi_encode(s("€→")), QByteArray("\x80?"));
}
