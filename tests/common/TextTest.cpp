#include "common/ItemNumber.h"
#include "common/Options.h"
#include "common/Text.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace qln;

namespace {
QString s(const char *text) { return QString::fromUtf8(text); }
} // namespace

TEST(FieldRead, ValueRunsToTheDelimiterAndLosesOnlyTrailingBlanks)
{
    EXPECT_EQ(gfsField_read(s("/ITEM=I /SL= 1234567 /X=1"), s("/SL="), s("/")), s(" 1234567"));
    EXPECT_EQ(gfsField_read(s("/SL=/ITEM=I"), s("/SL="), s("/")), QString());
    EXPECT_EQ(gfsField_read(s("/sl=1"), s("/SL="), s("/")), QString());
    EXPECT_EQ(gfsField_read(s("[CODE]12 [LABEL]Summer Sale"), s("[LABEL]"), s("[")), s("Summer Sale"));
}

TEST(CommandLine, OptionsByNumber)
{
    const QString line = s("/STATIONPATH=/srv/st /DATAPATH=c:\\training /STATION=3 /SL=1234567");
    EXPECT_EQ(gfsCommandLine_option_get(3, line), s("3"));
    EXPECT_EQ(gfsCommandLine_option_get(4, line), QString()); // "/" ends every value
    EXPECT_EQ(gfsCommandLine_option_get(5, line), s("c:\\training"));
}

TEST(TextPad, ModesAndTheCutOfAWideText)
{
    EXPECT_EQ(gfsText_pad(s("12"), 5, s("0x"), 1), s("00012"));
    EXPECT_EQ(gfsText_pad(s("12"), 5, s("*"), 2), s("12***"));
    EXPECT_EQ(gfsText_pad(s("12"), 5, s("*"), 3), s("*12**"));
    EXPECT_EQ(gfsText_pad(s("123456"), 4, s("*"), 1), s("1234"));
}

TEST(ItemID, DisplayAndKey)
{
    EXPECT_EQ(gfsItemID_display(s("1234567 ")), s("1234567. "));
    EXPECT_EQ(gfsItemID_display(s(" ~NONSTK ")), s(" ~NONSTK "));
    EXPECT_EQ(gfsItemID_key(gfsItemID_display(s("ABC1234X"))), s("ABC1234X"));
}

TEST(ItemID, Normalise)
{
    EXPECT_EQ(gfsItemID_normalise(s("AB.CD")), s("     AB. "));
    EXPECT_EQ(gfsItemID_normalise(s(" AB")), s("     AB. ")); // a leading blank doesn't cut
    EXPECT_EQ(gfsItemID_normalise(s("ABCDEFGHIJ")), s("ABCDEFG. "));
    EXPECT_EQ(gfsItemID_normalise(s("001234.56")), s("1234.5"));
    EXPECT_EQ(gfsItemID_normalise(s("0012.")), s("0012 ."));
    EXPECT_EQ(gfsItemID_normalise(s("1234567")), s("1234567 ."));
    EXPECT_EQ(gfsItemID_normalise(s("12345678")), s("12345678"));
}

TEST(ItemID, FormatRightAlignsNumericIdsUnlessPlain)
{
    EXPECT_EQ(gfsItemID_format(s(" 12.5  "), false), QString(20, QLatin1Char(' ')) + s(" 12.5"));
    EXPECT_EQ(gfsItemID_format(s("  AB-12 "), false), s("AB-12 "));
    EXPECT_EQ(gfsItemID_format(s(" 12"), true), s("12"));
    gbItemID_plain = true;
    EXPECT_EQ(gfsItemID_format(s(" 12"), false), s("12"));
    gbItemID_plain = false;
}
