#include "common/Money.h"

#include <cmath>

namespace qln {

namespace {
constexpr qint64 kPowers[] = {10000, 1000, 100, 10, 1};
}

Money Money::fromDouble(double value)
{
    return Money(qint64(std::llround(value * kScale)));
}

// By hand rather than by pattern: every decimal read from a table comes through here.
std::optional<Money> Money::parse(const QString &text)
{
    const QStringView t = QStringView(text).trimmed();
    qsizetype i = 0;
    const bool negative = i < t.size() && t[i] == QLatin1Char('-');
    if (i < t.size() && (t[i] == QLatin1Char('-') || t[i] == QLatin1Char('+')))
        ++i;
    qint64 whole = 0;
    int wholeDigits = 0;
    for (; i < t.size() && t[i].isDigit() && t[i].unicode() < 128; ++i, ++wholeDigits)
        whole = wholeDigits < 15 ? whole * 10 + (t[i].unicode() - '0') : whole;
    qint64 fraction = 0;
    int fractionDigits = 0;
    bool roundUp = false;
    if (i < t.size() && t[i] == QLatin1Char('.')) {
        for (++i; i < t.size() && t[i].isDigit() && t[i].unicode() < 128; ++i, ++fractionDigits) {
            if (fractionDigits < 4)
                fraction = fraction * 10 + (t[i].unicode() - '0');
            else if (fractionDigits == 4)
                roundUp = t[i] >= QLatin1Char('5');
        }
    }
    if (i != t.size() || (wholeDigits == 0 && fractionDigits == 0) || wholeDigits > 14)
        return std::nullopt;
    for (int d = fractionDigits; d < 4; ++d)
        fraction *= 10;
    const qint64 units = whole * kScale + fraction + (roundUp ? 1 : 0);
    return Money(negative ? -units : units);
}

Money Money::fromVariant(const QVariant &value)
{
    if (value.isNull())
        return Money();
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return fromDouble(value.toDouble());
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Short:
        return fromWhole(value.toLongLong());
    default:
        return parse(value.toString()).value_or(Money());
    }
}

Money Money::rounded(int decimals) const
{
    const qint64 step = kPowers[qBound(0, decimals, 4)];
    const qint64 half = step / 2;
    const qint64 magnitude = m_units < 0 ? -m_units : m_units;
    const qint64 r = (magnitude + half) / step * step;
    return Money(m_units < 0 ? -r : r);
}

// Written into one buffer by hand: item rows turn every amount they hold into text.
QString Money::unitsText(qint64 units, int decimals, bool plain)
{
    const bool negative = units < 0;
    const quint64 magnitude = negative ? quint64(0) - quint64(units) : quint64(units);
    char buffer[32];
    int at = int(sizeof buffer);
    quint64 fraction = magnitude % quint64(kScale) / quint64(kPowers[decimals]);
    int digits = decimals;
    while (plain && digits > 0 && fraction % 10 == 0)
        fraction /= 10, --digits;
    for (int i = 0; i < digits; ++i, fraction /= 10)
        buffer[--at] = char('0' + fraction % 10);
    if (digits > 0)
        buffer[--at] = '.';
    quint64 whole = magnitude / quint64(kScale);
    do
        buffer[--at] = char('0' + whole % 10);
    while ((whole /= 10) > 0);
    if (negative)
        buffer[--at] = '-';
    return QString::fromLatin1(buffer + at, qsizetype(sizeof buffer) - at);
}

QString Money::toText(int decimals) const
{
    decimals = qBound(0, decimals, 4);
    return unitsText(rounded(decimals).m_units, decimals, false);
}

QString Money::toPlainText(int decimals) const
{
    decimals = qBound(0, decimals, 4);
    return unitsText(rounded(decimals).m_units, decimals, true);
}

} // namespace qln
