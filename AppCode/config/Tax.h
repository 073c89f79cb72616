#pragma once
#include "common/Money.h"

#include <QDate>
#include <QString>
#include <array>

namespace qln {

// TaxRate1 to TaxRate5 of the company settings, single-precision percentages.
using TaxRates = std::array<float, 5>;

// The rate of an item's one-character TaxCode: the sum of the rates its letter selects
// (case-sensitive); any other code, a blank included, has rate 0.
float gfnTaxRate_get(const QString &sTaxCode, const TaxRates &rates);

// The tax on an amount given as text, in single precision.
float gfnTax_amount_get(const QString &sAmount, const QString &sTaxCode, const TaxRates &rates);

// curPrice with its tax. On a date before gsTaxChangeDate a taxed item pays the country's old
// rate, 12.5, whatever its code sums to. An invalid date counts as none.
Money gfcPrice_with_tax_get(Money curPrice, const QString &sTaxCode, const QDate &date, const TaxRates &rates);

// With prices shown with tax: cPrice takes its tax as above and comes back "##,##0.00";
// otherwise the text is empty and cPrice is left alone.
QString gfsPriceIncTax_text_get(const QDate &date, Money &cPrice, const QString &sTaxCode,
                                const TaxRates &rates);

} // namespace qln
