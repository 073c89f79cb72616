#pragma once
#include <QString>

namespace qln {

// The platform's numeric value of a text: blanks, tabs and line feeds are skipped, the leading
// number is read, and anything after it ignored ("12x" is 12, "x" is 0).
double gfdNumber_value(const QString &sText);

// Rounds half away from zero to iDigits places; the fraction is judged in single precision,
// so a value a hair below the half (1.2345 at three places) still goes up.
double gfvNumber_round(double dValue, int iDigits);

// Key filter of numeric boxes: backspace, minus, digits and (unless bNoPoint) the point pass;
// any other key becomes 0.
int gfiNumeric_key(int iKeyAscii, bool bNoPoint);

} // namespace qln
