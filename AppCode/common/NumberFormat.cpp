#include "common/NumberFormat.h"

#include <cmath>

namespace qln {

namespace {

struct Pattern {
    int decimals = 0;
    int minWholeDigits = 0;
    bool grouped = false;
};

Pattern readPattern(const QString &sPattern)
{
    const qsizetype point = sPattern.indexOf(QLatin1Char('.'));
    const QString whole = point < 0 ? sPattern : sPattern.left(point);
    const QString fraction = point < 0 ? QString() : sPattern.mid(point + 1);
    return {int(fraction.count(QLatin1Char('0'))), int(whole.count(QLatin1Char('0'))),
            whole.contains(QLatin1Char(','))};
}

qint64 power10(int n)
{
    qint64 p = 1;
    while (n-- > 0)
        p *= 10;
    return p;
}

// `scaled` counts units of the last decimal shown.
QString formatScaled(qint64 scaled, const Pattern &p)
{
    const bool negative = scaled < 0;
    const quint64 magnitude = negative ? quint64(-scaled) : quint64(scaled);
    const quint64 unit = quint64(power10(p.decimals));
    QString whole = magnitude / unit == 0 ? QString() : QString::number(magnitude / unit);
    if (whole.size() < p.minWholeDigits)
        whole = QString(p.minWholeDigits - whole.size(), QLatin1Char('0')) + whole;
    if (p.grouped)
        for (qsizetype i = whole.size() - 3; i > 0; i -= 3)
            whole.insert(i, QLatin1Char(','));
    QString out = (negative ? QStringLiteral("-") : QString()) + whole;
    if (p.decimals > 0)
        out += QLatin1Char('.') + QStringLiteral("%1").arg(magnitude % unit, p.decimals, 10, QLatin1Char('0'));
    return out;
}

} // namespace

QString gfsNumber_format(Money value, const QString &sPattern)
{
    Pattern p = readPattern(sPattern);
    p.decimals = qMin(p.decimals, 4);
    return formatScaled(value.rounded(p.decimals).units() / power10(4 - p.decimals), p);
}

QString gfsNumber_format(double value, const QString &sPattern)
{
    const Pattern p = readPattern(sPattern);
    return formatScaled(std::llround(value * double(power10(p.decimals))), p);
}

} // namespace qln
