#include "access/EncryptionOps.h"

#include "access/clsEncryption.h"
#include "access/clsSHA256.h"

namespace qln {

namespace {

QByteArray utf16Bytes(const QString &text)
{
    QByteArray bytes;
    bytes.reserve(text.size() * 2);
    for (const QChar c : text) {
        bytes.append(char(c.unicode() & 0xFF));
        bytes.append(char(c.unicode() >> 8));
    }
    return bytes;
}

QString fromUtf16Bytes(const QByteArray &bytes)
{
    QString text;
    for (qsizetype i = 0; i + 1 < bytes.size(); i += 2)
        text.append(QChar(char16_t(quint8(bytes[i]) | (quint8(bytes[i + 1]) << 8))));
    return text;
}

bool isHex(const QString &text)
{
    for (const QChar c : text) {
        const char16_t u = c.toUpper().unicode();
        if (!((u >= '0' && u <= '9') || (u >= 'A' && u <= 'F')))
            return false;
    }
    return true;
}

} // namespace

QString gfsEncrypt_Text(const QString &sText, const QString &sKey)
{
    clsEncryption cipher;
    QByteArray out;
    if (!cipher.EncryptData(utf16Bytes(sText.trimmed()), utf16Bytes(sKey), out))
        return QString();
    return QString::fromLatin1(out.toHex().toUpper());
}

QString gfsDecrypt_Text(const QString &sHex, const QString &sKey)
{
    const QString hex = sHex.trimmed();
    if (hex.size() % 2 != 0 || !isHex(hex))
        return QString();
    clsEncryption cipher;
    QByteArray out;
    if (!cipher.DecryptData(QByteArray::fromHex(hex.toLatin1()), utf16Bytes(sKey), out))
        return QString();
    return fromUtf16Bytes(out);
}

QString gfsRowKey_plain(const QString &sSalesCode, const QString &sStore, const QString &sShortCut)
{
    // One word for each decimal digit; the first digit of the store picks it.
    static const char *const words[10] = {"vo", "qe", "zu", "ky", "wa", "jo", "xi", "fe", "ub", "ha"};
    QString word;
    for (const QChar c : sStore) {
        if (c.isDigit() && c.unicode() < 128) {
            word = QString::fromLatin1(words[c.unicode() - '0']);
            break;
        }
    }
    return sSalesCode.trimmed() + word + sShortCut.trimmed();
}

QString gfsRowKey_current(const QString &sSalesCode, const QString &sStore, const QString &sShortCut)
{
    return clsSHA256().SHA256(gfsRowKey_plain(sSalesCode, sStore, sShortCut));
}

QString gfsRowKey_oldest(const QString &sSalesCode) { return sSalesCode.trimmed(); }

} // namespace qln
