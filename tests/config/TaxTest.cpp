#include "config/Country.h"
#include "config/Margin.h"
#include "config/Tax.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace qln;

namespace {
QString s(const char *text) { return QString::fromUtf8(text); }
Money money(const char *text) { return *Money::parse(s(text)); }
} // namespace

TEST(TaxRate, TableAsItStands)
{
    const TaxRates rates = {5, 6, 7, 8, 9};
    const std::pair<const char *, float> expected[] = {
        {"A", 5}, {"O", 17}, {"P", 18}, {"S", 18}, {"T", 21}, {"a", 27},
        {"b", 28}, {"c", 28}, {"d", 35}, {"e", 0}, {" ", 0}, {"AB", 0},
    };
    for (const auto &[code, rate] : expected)
        EXPECT_FLOAT_EQ(gfnTaxRate_get(s(code), rates), rate) << code;
    EXPECT_FLOAT_EQ(gfnTax_amount_get(s("200 x"), s("B"), rates), 12);
}

TEST(PriceWithTax, RoundedToTheTenThousandthAndOldRateBeforeTheChangeDate)
{
    const TaxRates rates = {15, 0, 0, 0, 0};
    EXPECT_EQ(gfcPrice_with_tax_get(money("9.99"), s("A"), QDate(2010, 9, 30), rates), money("11.4885"));
    gsTaxChangeDate = s("20101001");
    EXPECT_EQ(gfcPrice_with_tax_get(money("100"), s("A"), QDate(2010, 9, 30), rates), money("112.5"));
    EXPECT_EQ(gfcPrice_with_tax_get(money("100"), s("A"), QDate(2010, 10, 1), rates), money("115"));
    EXPECT_EQ(gfcPrice_with_tax_get(money("100"), s("B"), QDate(2010, 9, 30), rates), money("100"));
    gsTaxChangeDate.clear();
}

TEST(PriceWithTax, TextOnlyWhenPricesShowWithTax)
{
    Money price = money("1234.5");
    EXPECT_EQ(gfsPriceIncTax_text_get(QDate(2026, 1, 1), price, s("A"), {10, 0, 0, 0, 0}), QString());
    EXPECT_EQ(price, money("1234.5"));
    gbIncludeTax = true;
    EXPECT_EQ(gfsPriceIncTax_text_get(QDate(2026, 1, 1), price, s("A"), {10, 0, 0, 0, 0}), s("1,357.95"));
    EXPECT_EQ(price, money("1357.95"));
    gbIncludeTax = false;
}

TEST(Margin, OnThePromoPrice)
{
    EXPECT_EQ(gfsMargin_text_get(money("3"), money("2")), s("33.3%"));
    EXPECT_EQ(gfsMargin_text_get(money("4"), money("6")), s("-50.0%"));
    EXPECT_FALSE(gfsMargin_text_get(money("0"), money("6")));
}
