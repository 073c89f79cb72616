#include "config/Country.h"

#include "common/ProcessState.h"

#include "support/QtPrinters.h"
#include "support/ScriptedMessages.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qln;

namespace {

QString s(const char *text) { return QString::fromUtf8(text); }

class CountryTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        gsDataPath = m_data.path(), gsAppPath = m_program.path();
        gbCurrencyForeign = gbIncludeTax = false;
        giRoundTo = giDrawerCount = 0;
        gsTaxChangeDate.clear();
    }
    void TearDown() override { gsDataPath.clear(), gsAppPath.clear(), gsTaxChangeDate.clear(); }
    static void put(const QString &folder)
    {
        QFile f(folder + s("/Country.set"));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("[CountryNumber]1[CountryName]United States\r\n[CountryNumber]2[CountryName]New Zealand\r\n"
                "[Country]1\r\n[Currency Symbol]$\r\n[Round]Y\r\n[Round To]5\r\n"
                "[Country]2\r\n[Currency Symbol]\x80\r\n[Include Tax in Displayed Price]Y\r\n[Label For Tax]GST\r\n"
                "[DrawerCount]CNT=002\r\n[Check]Chq \r\n"
                "[Country]3\r\n[Currency Symbol]Kr\r\n[Label For Tax]VAT\r\n");
    }
    QTemporaryDir m_data, m_program;
    test::ScriptedMessages m_boxes;
    QString m_label = s("TX ");
};

} // namespace

TEST_F(CountryTest, NoCountryTouchesNoFileAndAMissingFileIsReportedOnce)
{
    gpCountry_settings_load(0, m_label);
    EXPECT_TRUE(m_boxes.shown().isEmpty());
    gpCountry_settings_load(2, m_label);
    ASSERT_EQ(m_boxes.shown().size(), 1);
    EXPECT_EQ(m_boxes.shown().first().title, s("Settings File Missing"));
    EXPECT_EQ(gsCurrencySymbol, s("$"));
    EXPECT_EQ(m_label, s("TX "));
}

TEST_F(CountryTest, ValuesAreFoundPastTheirSection)
{
    put(m_data.path());
    EXPECT_EQ(gfsCountry_value_get(1, s("Label For Tax")), s("GST")); // from country 2's section
    EXPECT_EQ(gfsCountry_value_get(3, s("Round")), kCountryNotFound);
    EXPECT_TRUE(gsTaxChangeDate.isEmpty());
    EXPECT_EQ(gfsCountry_value_get(2, s("Check")), s("Chq "));
    EXPECT_EQ(gsTaxChangeDate, s("20101001"));
}

TEST_F(CountryTest, LoadOfTheCountryWithTaxInPrices)
{
    put(m_program.path()); // copied to the data path on first read
    gpCountry_settings_load(2, m_label);
    EXPECT_TRUE(QFile::exists(m_data.filePath(s("Country.set"))));
    EXPECT_EQ(gsCurrencySymbol, s("€"));
    EXPECT_TRUE(gbCurrencyForeign);
    EXPECT_TRUE(gbIncludeTax);
    EXPECT_EQ(m_label, s("GST"));
    EXPECT_EQ(giRoundTo, 0); // no "Round" after country 2's head
    EXPECT_EQ(giDrawerCount, 2);
    EXPECT_EQ(gsCheck, s("Chq "));
    EXPECT_TRUE(m_boxes.shown().isEmpty());
}

TEST_F(CountryTest, LoadOfOtherCountries)
{
    put(m_data.path());
    gpCountry_settings_load(1, m_label);
    EXPECT_TRUE(gbIncludeTax); // taken from country 2's section
    EXPECT_EQ(giRoundTo, 5);
    gpCountry_settings_load(3, m_label);
    EXPECT_EQ(gsCurrencySymbol, s("$")); // "Kr" is not one character
    EXPECT_EQ(m_label, s("VAT"));
    gpCountry_settings_load(4, m_label); // no section at all
    EXPECT_EQ(m_label, s("NOT"));
    EXPECT_TRUE(gsCheck.isEmpty());
    EXPECT_TRUE(gsTaxChangeDate.isEmpty());
}

// Found by fuzzing: a rounding or drawer count beyond a 16-bit count was converted anyway,
// which is undefined; such a number now leaves the value as it was.
TEST_F(CountryTest, FuzzFindingCountsBeyondSixteenBitsLeaveTheValue)
{
    giRoundTo = 5, giDrawerCount = 2;
    for (const char *text : {"[Country]1\r\n[Round]Y\r\n[Round To]1e9999\r\n[DrawerCount]CNT=99999999\r\n",
                             "[Country]1\r\n[Round]Y\r\n[Round To]-40000\r\n[DrawerCount]CNT=32768\r\n"}) {
        QFile f(m_data.path() + s("/Country.set"));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(text);
        f.close();
        gpCountry_settings_load(1, m_label);
        EXPECT_EQ(giRoundTo, 5) << text;
        EXPECT_EQ(giDrawerCount, 2) << text;
    }
    QFile f(m_data.path() + s("/Country.set"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write("[Country]1\r\n[Round]Y\r\n[Round To]32767\r\n[DrawerCount]CNT=-32768\r\n");
    f.close();
    gpCountry_settings_load(1, m_label);
    EXPECT_EQ(giRoundTo, 32767);
    EXPECT_EQ(giDrawerCount, -32768);
}
