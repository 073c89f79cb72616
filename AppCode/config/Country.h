#pragma once
#include <QString>

// The country settings of Country.set, read once at start-up.
namespace qln {

inline QString gsCurrencySymbol = QStringLiteral("$");
inline bool gbCurrencyForeign = false; // country 2 gave a one-character symbol
inline bool gbIncludeTax = false;      // prices are shown with their tax
inline qint16 giRoundTo = 0;           // kept for the shell; nothing here rounds by it
inline qint16 giDrawerCount = 0;
inline QString gsCheck;
inline QString gsTaxChangeDate; // "YYYYMMDD"; before it the country's old rate applied

// The answer of a key that isn't there (or of a country file that isn't).
inline const QString kCountryNotFound = QStringLiteral("NOT FOUND");

// Fills the values above for the company's CountryID (nothing to do for 0 or less) and sets the
// company's 3-character tax label, sTaxLabel2nd.
void gpCountry_settings_load(int iCountryID, QString &sTaxLabel2nd);

// The value of sKey in the section of iCountry of Country.set in the data path, copied there
// from the program's folder when missing. A missing file is reported once per call.
QString gfsCountry_value_get(int iCountry, const QString &sKey);

} // namespace qln
