#pragma once
#include <QString>

namespace qln {

// SHA-256 of a text's UTF-8 bytes, as 64 lower-case hexadecimal digits.
class clsSHA256 {
public:
    QString SHA256(const QString &sText) const;
};

} // namespace qln
