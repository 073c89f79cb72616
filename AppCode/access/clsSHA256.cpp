#include "access/clsSHA256.h"

#include <openssl/evp.h>

namespace qln {

QString clsSHA256::SHA256(const QString &sText) const
{
    const QByteArray bytes = sText.toUtf8();
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int length = 0;
    if (EVP_Digest(bytes.constData(), size_t(bytes.size()), digest, &length, EVP_sha256(), nullptr) != 1)
        return QString();
    return QString::fromLatin1(QByteArray(reinterpret_cast<const char *>(digest), int(length)).toHex());
}

} // namespace qln
