#pragma once
#include <QDate>
#include <QString>
#include <optional>

// Dates as users type them into text boxes.
namespace qln {

// The date a typed text names, read the way the platform reads dates: month first, or day
// first when usEurope is "E", with the two swapped when only that order makes a date;
// "yyyy-mm-dd"; a missing year is this year; a two-digit year below 30 is in this century.
// Separators "/", "-", "." or blanks. Nothing for any other text.
std::optional<QDate> gfdDate_typed(const QString &text, const QString &usEurope);
// A checked date written back into its box: "dd-mm-yy" when usEurope is "E", else "mm-dd-yyyy".
QString gfsDate_retyped(const QDate &date, const QString &usEurope);

} // namespace qln
