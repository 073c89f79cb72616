#include "common/Money.h"

#include <QRegularExpression>
#include <cmath>

namespace qln {

namespace {
constexpr qint64 kPowers[] = {10000, 1000, 100, 10, 1};
}

Money Money::fromDouble(double value)
{
    return Money(qint64(std::llround(value * kScale)));
}

std::optional<Money> Money::parse(const QString &text)
{
    static const QRegularExpression re(QStringLiteral("^([+-]?)(\\d*)(?:\\.(\\d*))?$"));
    const auto m = re.match(text.trimmed());
    if (!m.hasMatch() || (m.captured(2).isEmpty() && m.captured(3).isEmpty()))
        return std::nullopt;
    const QString whole = m.captured(2);
    if (whole.size() > 14)
        return std::nullopt;
    QString fraction = m.captured(3);
    qint64 units = whole.isEmpty() ? 0 : whole.toLongLong() * kScale;
    const bool roundUp = fraction.size() > 4 && fraction[4] >= QLatin1Char('5');
    fraction = fraction.left(4).leftJustified(4, QLatin1Char('0'));
    units += fraction.toLongLong() + (roundUp ? 1 : 0);
    return Money(m.captured(1) == QLatin1String("-") ? -units : units);
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
