#include "common/NumberFormat.h"

#include <QVarLengthArray>
#include <cmath>

namespace qln {

namespace {

struct Pattern {
    int decimals = 0;
    int minWholeDigits = 0;
    bool grouped = false;
};

Pattern readPattern(QStringView sPattern)
{
    const qsizetype point = sPattern.indexOf(QLatin1Char('.'));
    const QStringView whole = point < 0 ? sPattern : sPattern.left(point);
    const QStringView fraction = point < 0 ? QStringView() : sPattern.mid(point + 1);
    return {int(fraction.count(QLatin1Char('0'))), int(whole.count(QLatin1Char('0'))), whole.contains(QLatin1Char(','))};
}

qint64 power10(int n)
{
    qint64 p = 1;
    while (n-- > 0)
        p *= 10;
    return p;
}

// `scaled` counts units of the last decimal shown. Built in one buffer: lists format a few
// amounts for each of a hundred thousand rows.
QString formatScaled(qint64 scaled, const Pattern &p)
{
    const bool negative = scaled < 0;
    const quint64 magnitude = negative ? quint64(0) - quint64(scaled) : quint64(scaled);
    const quint64 unit = quint64(power10(p.decimals));
    char whole[64]; // least significant first
    int count = 0;
    for (quint64 rest = magnitude / unit; rest > 0; rest /= 10)
        whole[count++] = char('0' + rest % 10);
    while (count < qMin(p.minWholeDigits, 40))
        whole[count++] = '0';
    QVarLengthArray<char, 96> out;
    if (negative)
        out.append('-');
    for (int i = count - 1; i >= 0; --i) {
        out.append(whole[i]);
        if (p.grouped && i > 0 && i % 3 == 0)
            out.append(',');
    }
    if (p.decimals > 0) {
        out.append('.');
        quint64 fraction = magnitude % unit;
        const qsizetype from = out.size();
        out.resize(from + p.decimals);
        for (qsizetype i = out.size() - 1; i >= from; --i, fraction /= 10)
            out[i] = char('0' + fraction % 10);
    }
    return QString::fromLatin1(out.constData(), out.size());
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
