#include "FuzzTarget.h"

#include "access/EncryptionOps.h"

// The cipher's hexadecimal text as stored in a row: the first byte says how many of the rest
// are the key. Whatever deciphers must encipher back to the same hexadecimal text's meaning.
QLN_FUZZ_TARGET(cipher)
{
    using namespace qln;
    if (size == 0)
        return 0;
    const std::size_t keyLength = std::min<std::size_t>(data[0] % 16, size - 1);
    const QString key = QString::fromUtf8(fuzz::bytes(data + 1, keyLength));
    const QString hex = QString::fromLatin1(fuzz::bytes(data + 1 + keyLength, size - 1 - keyLength));
    const QString plain = gfsDecrypt_Text(hex, key);
    if (!plain.isEmpty() && plain == plain.trimmed())
        fuzz::require(gfsDecrypt_Text(gfsEncrypt_Text(plain, key), key) == plain, "a deciphered text enciphers back");
    const QString typed = QString::fromUtf8(fuzz::bytes(data + 1, size - 1)).trimmed();
    if (!typed.isEmpty() && !key.isEmpty())
        fuzz::require(gfsDecrypt_Text(gfsEncrypt_Text(typed, key), key) == typed, "a text survives the cipher");
    return 0;
}
