#include "promo/PromoColumns.h"

#include <QRegularExpression>

namespace qln {

namespace {

const QString kDateFormat = QStringLiteral("yyyy-MM-dd");

bool isJsonNumber(PromoColumn column)
{
    return column == PromoColumn::Store || column == PromoColumn::GroupID || column == PromoColumn::ChangeType ||
           column == PromoColumn::UniqueID;
}

QString jsonString(const QString &text)
{
    QString out;
    out.reserve(text.size() + 2);
    out += QLatin1Char('"');
    for (const QChar c : text) {
        switch (c.unicode()) {
        case u'"': out += QLatin1String("\\\""); break;
        case u'\\': out += QLatin1String("\\\\"); break;
        case u'\n': out += QLatin1String("\\n"); break;
        case u'\r': out += QLatin1String("\\r"); break;
        case u'\t': out += QLatin1String("\\t"); break;
        default:
            if (c.unicode() < 0x20)
                out += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
            else
                out += c;
        }
    }
    out += QLatin1Char('"');
    return out;
}

} // namespace

QStringList gfPromoColumns_names()
{
    QStringList names;
    for (const char *name : kPromoColumnNames)
        names << QString::fromLatin1(name);
    return names;
}

QString gfsPromoColumns_date(const QDateTime &date) { return date.date().toString(kDateFormat); }

std::optional<QDate> gfdPromoColumns_date(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^\\d{4}-\\d{2}-\\d{2}$"));
    if (!form.match(text).hasMatch())
        return std::nullopt;
    const QDate date = QDate::fromString(text, kDateFormat);
    return date.isValid() ? std::optional<QDate>(date) : std::nullopt;
}

QString gfsPromoColumns_money(Money amount) { return amount.toPlainText(4); }

std::optional<Money> gfcPromoColumns_money(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^-?\\d+(\\.\\d{1,4})?$"));
    if (!form.match(text).hasMatch())
        return std::nullopt;
    return Money::parse(text);
}

QStringList gfPromoColumns_cells(const PromoPriceRecord &promo, PromoKind kind, const std::optional<Money> &promoPrice)
{
    return {
        gfsPromoKind_name(kind),
        QString::number(promo.Store),
        promo.SL.trimmed(),
        promo.Dept.trimmed(),
        QString::number(promo.GroupID),
        gfsPromoColumns_date(promo.StartDate),
        gfsPromoColumns_date(promo.EndDate),
        QString::number(promo.ChangeType),
        gfsPromoColumns_money(promo.PriceChange),
        promoPrice ? gfsPromoColumns_money(*promoPrice) : QString(),
        promo.Poll.trimmed(),
        QString::number(promo.UniqueID),
    };
}

QString gfsPromoColumns_json_object(const QStringList &cells)
{
    QString out = QStringLiteral("{");
    for (int i = 0; i < kPromoColumnCount; ++i) {
        const PromoColumn column = PromoColumn(i);
        const QString cell = cells.value(i);
        if (i > 0)
            out += QLatin1Char(',');
        out += jsonString(QString::fromLatin1(kPromoColumnNames[size_t(i)])) + QLatin1Char(':');
        if (column == PromoColumn::PromoPrice && cell.isEmpty())
            out += QLatin1String("null");
        else if (isJsonNumber(column))
            out += cell;
        else
            out += jsonString(cell);
    }
    return out + QLatin1Char('}');
}

} // namespace qln
