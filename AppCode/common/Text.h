#pragma once
#include <QString>

namespace qln {

// The value behind the first occurrence of sKey (case-sensitive), up to the next one-character
// sDelimiter or the end; trailing blanks go, leading blanks stay. No key: empty.
QString gfsField_read(const QString &sText, const QString &sKey, const QString &sDelimiter);

// Pads to iWidth with the first character of sPad: mode 1 on the left, 2 on the right, 3 on both
// sides (the odd one on the right). A text already as wide is cut to iWidth from its left end.
QString gfsText_pad(const QString &sText, int iWidth, const QString &sPad, int iMode);

// The characters of sText that occur in sAllowed, in their order.
QString gfsText_keep(const QString &sText, const QString &sAllowed);
// The characters of sText that don't occur in sRemoved.
QString gfsText_drop(const QString &sText, const QString &sRemoved);

// The text without its trailing blanks (the platform's RTrim: blanks only, not tabs).
QString gfsText_rtrim(const QString &sText);
QString gfsText_ltrim(const QString &sText);

} // namespace qln
