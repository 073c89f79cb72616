#include "common/AnsiText.h"

namespace qln {

namespace {
// 0x80 to 0x9F; the five unassigned bytes stand for themselves.
constexpr char16_t kHighControls[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};
} // namespace

QString gfsAnsi_decode(const QByteArray &bytes)
{
    QString out;
    out.reserve(bytes.size());
    for (const char b : bytes) {
        const uchar u = uchar(b);
        out += (u >= 0x80 && u <= 0x9F) ? QChar(kHighControls[u - 0x80]) : QChar(char16_t(u));
    }
    return out;
}

QByteArray gfsAnsi_encode(const QString &text)
{
    QByteArray out;
    out.reserve(text.size());
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        char byte = '?';
        if (u < 0x80 || (u >= 0xA0 && u <= 0xFF)) {
            byte = char(u);
        } else {
            for (int i = 0; i < 32; ++i)
                if (kHighControls[i] == u)
                    byte = char(0x80 + i);
        }
        out += byte;
    }
    return out;
}

} // namespace qln
