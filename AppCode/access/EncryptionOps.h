#pragma once
#include <QString>

// Texts through the cipher: a text becomes upper-case hexadecimal text and back.
namespace qln {

// The trimmed text's UTF-16 bytes enciphered under the key text's first 8 characters;
// empty for an empty text or key.
QString gfsEncrypt_Text(const QString &sText, const QString &sKey);
// The text back; empty when the hexadecimal text is odd, not hexadecimal, or does not
// decipher under this key.
QString gfsDecrypt_Text(const QString &sHex, const QString &sKey);

// The three forms of a row's key, built from its own fields (never stored): the plain form
// is the code, a word picked by the store's first digit, and the shortcut; the current one
// is the plain form's SHA-256; the oldest is the code alone.
QString gfsRowKey_plain(const QString &sSalesCode, const QString &sStore, const QString &sShortCut);
QString gfsRowKey_current(const QString &sSalesCode, const QString &sStore, const QString &sShortCut);
QString gfsRowKey_oldest(const QString &sSalesCode);

} // namespace qln
