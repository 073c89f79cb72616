#pragma once
#include <QString>
#include <QVariant>
#include <compare>
#include <optional>

namespace qln {

// Money as the suite's currency type: a 64-bit count of ten-thousandths.
class Money {
public:
    static constexpr qint64 kScale = 10000;

    constexpr Money() = default;
    static constexpr Money fromUnits(qint64 units) { return Money(units); }
    static constexpr Money fromWhole(qint64 whole) { return Money(whole * kScale); }
    // The nearest ten-thousandth, halves away from zero: the currency type's conversion.
    static Money fromDouble(double value);
    // "12", "-0.5", "1234.5678", " 3.10 "; more than four decimals round. Nothing else.
    static std::optional<Money> parse(const QString &text);
    // A record set value: exact decimal text, a number, or null (zero).
    static Money fromVariant(const QVariant &value);

    constexpr qint64 units() const { return m_units; }
    double toDouble() const { return double(m_units) / kScale; }
    // Rounded to `decimals` (0 to 4) places, halves away from zero.
    Money rounded(int decimals) const;
    // Plain text with exactly `decimals` places, rounded as above: "-8.49".
    QString toText(int decimals = 2) const;
    // The shortest plain text, rounded to `decimals`: "25", "8.4915", "-0.5".
    QString toPlainText(int decimals = 4) const;

    constexpr Money operator+(Money o) const { return Money(m_units + o.m_units); }
    constexpr Money operator-(Money o) const { return Money(m_units - o.m_units); }
    constexpr Money operator-() const { return Money(-m_units); }
    Money &operator+=(Money o) { m_units += o.m_units; return *this; }
    Money &operator-=(Money o) { m_units -= o.m_units; return *this; }
    constexpr auto operator<=>(const Money &) const = default;
    constexpr bool isZero() const { return m_units == 0; }

private:
    static QString unitsText(qint64 units, int decimals, bool plain);
    constexpr explicit Money(qint64 units) : m_units(units) {}
    qint64 m_units = 0;
};

} // namespace qln
