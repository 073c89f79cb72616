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

QString Money::toText(int decimals) const
{
    decimals = qBound(0, decimals, 4);
    const qint64 r = rounded(decimals).m_units;
    const qint64 magnitude = r < 0 ? -r : r;
    QString out = (r < 0 ? QStringLiteral("-") : QString()) + QString::number(magnitude / kScale);
    if (decimals > 0)
        out += QLatin1Char('.') + QStringLiteral("%1").arg(magnitude % kScale, 4, 10, QLatin1Char('0')).left(decimals);
    return out;
}

} // namespace qln

namespace qln {

QString Money::toPlainText(int decimals) const
{
    QString text = toText(decimals);
    if (text.contains(QLatin1Char('.'))) {
        while (text.endsWith(QLatin1Char('0')))
            text.chop(1);
        if (text.endsWith(QLatin1Char('.')))
            text.chop(1);
    }
    return text;
}

} // namespace qln
