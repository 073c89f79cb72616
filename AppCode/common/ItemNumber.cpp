#include "common/ItemNumber.h"

#include "common/Numbers.h"
#include "common/Text.h"

namespace qln {

namespace {
const QString kNumericChars = QStringLiteral(" .0123456789");
const QLatin1Char kBlank(' ');
const QLatin1Char kPoint('.');

bool isNumericText(const QString &sText) { return gfsText_drop(sText, kNumericChars).isEmpty(); }
} // namespace

QString gfsItemID_display(const QString &sSL)
{
    if (sSL.trimmed().startsWith(QLatin1Char('~')))
        return sSL;
    return sSL.left(7) + kPoint + sSL.right(1);
}

QString gfsItemID_key(const QString &sText) { return sText.left(7) + sText.right(1); }

QString gfsItemID_normalise(const QString &sText)
{
    if (!isNumericText(sText)) {
        QString free = sText;
        free.replace(kPoint, kBlank);
        const qsizetype blank = free.indexOf(kBlank);
        if (blank > 0)
            free.truncate(blank);
        return gfsText_pad(free, 7, QString(kBlank), 1) + QStringLiteral(". ");
    }
    // "0012." keeps its zeros: only the point goes.
    QString number = sText.startsWith(QLatin1Char('0')) && sText.endsWith(kPoint)
                         ? sText.chopped(1)
                         : QString::number(gfdNumber_value(sText), 'g', 15);
    const qsizetype point = number.indexOf(kPoint);
    if (point >= 0)
        return number.left(point + 2);
    return number.size() < 8 ? number + kBlank + kPoint : number;
}

QString gfsItemID_format(const QString &sText, bool bPlain)
{
    if (!bPlain && !gbItemID_plain && isNumericText(sText))
        return gfsText_pad(gfsText_rtrim(sText), 25, QString(kBlank), 1);
    return gfsText_ltrim(sText).left(25);
}

} // namespace qln
