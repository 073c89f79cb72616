#include "common/Text.h"

namespace qln {

QString gfsField_read(const QString &sText, const QString &sKey, const QString &sDelimiter)
{
    const qsizetype at = sText.indexOf(sKey);
    if (at < 0)
        return QString();
    const qsizetype start = at + sKey.size();
    const qsizetype end = sDelimiter.isEmpty() ? -1 : sText.indexOf(sDelimiter.at(0), start);
    return gfsText_rtrim(sText.mid(start, end < 0 ? -1 : end - start));
}

QString gfsText_pad(const QString &sText, int iWidth, const QString &sPad, int iMode)
{
    if (iWidth <= 0)
        return QString();
    if (sText.size() >= iWidth)
        return sText.left(iWidth);
    const QChar pad = sPad.isEmpty() ? QLatin1Char(' ') : sPad.at(0);
    const qsizetype missing = iWidth - sText.size();
    switch (iMode) {
    case 1:
        return QString(missing, pad) + sText;
    case 2:
        return sText + QString(missing, pad);
    case 3:
        return QString(missing / 2, pad) + sText + QString(missing - missing / 2, pad);
    default:
        return sText;
    }
}

QString gfsText_keep(const QString &sText, const QString &sAllowed)
{
    QString out;
    for (const QChar c : sText)
        if (sAllowed.contains(c))
            out += c;
    return out;
}

QString gfsText_drop(const QString &sText, const QString &sRemoved)
{
    QString out;
    for (const QChar c : sText)
        if (!sRemoved.contains(c))
            out += c;
    return out;
}

QString gfsText_rtrim(const QString &sText)
{
    qsizetype n = sText.size();
    while (n > 0 && sText.at(n - 1) == QLatin1Char(' '))
        --n;
    return sText.left(n);
}

QString gfsText_ltrim(const QString &sText)
{
    qsizetype i = 0;
    while (i < sText.size() && sText.at(i) == QLatin1Char(' '))
        ++i;
    return sText.mid(i);
}

} // namespace qln
