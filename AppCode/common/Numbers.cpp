#include "common/Numbers.h"

#include <QRegularExpression>
#include <cmath>

namespace qln {

double gfdNumber_value(const QString &sText)
{
    QString packed = sText;
    static const QRegularExpression blanks(QStringLiteral("[ \\t\\n]"));
    packed.remove(blanks);
    static const QRegularExpression number(
        QStringLiteral("^[+-]?(\\d+\\.?\\d*|\\.\\d+)([eEdD][+-]?\\d+)?"));
    const QRegularExpressionMatch m = number.match(packed);
    if (!m.hasMatch())
        return 0.0;
    QString text = m.captured(0);
    text.replace(QLatin1Char('d'), QLatin1Char('e')).replace(QLatin1Char('D'), QLatin1Char('e'));
    return text.toDouble();
}

double gfvNumber_round(double dValue, int iDigits)
{
    const double power = std::pow(10.0, iDigits);
    const double scaled = std::fabs(dValue) * power;
    double whole = std::floor(scaled);
    if (float(scaled - whole) >= 0.5f)
        whole += 1.0;
    return std::copysign(whole / power, dValue);
}

int gfiNumeric_key(int iKeyAscii, bool bNoPoint)
{
    const bool digit = iKeyAscii >= '0' && iKeyAscii <= '9';
    if (digit || iKeyAscii == 8 || iKeyAscii == '-' || (iKeyAscii == '.' && !bNoPoint))
        return iKeyAscii;
    return 0;
}

} // namespace qln
