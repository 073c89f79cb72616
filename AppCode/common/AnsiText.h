#pragma once
#include <QByteArray>
#include <QString>

namespace qln {

// The suite's text files (settings, country file) are in the Western Windows code page.
// Every byte decodes to one character and back to the same byte, so a file rewritten here
// keeps the bytes it didn't change; a character the code page lacks is written as "?".
QString gfsAnsi_decode(const QByteArray &bytes);
QByteArray gfsAnsi_encode(const QString &text);

} // namespace qln
