#include "output/PdfListWriter.h"

#include <QIODevice>

#include <charconv>
#include <limits>

namespace qln {

namespace {

constexpr int kCatalog = 1;
constexpr int kPageTree = 2;
constexpr int kResources = 3;
constexpr int kInfo = 4;
constexpr int kFirstFree = 5;

// The characters of codes 0x80 to 0x9F of the PDF standard Latin encoding (WinAnsiEncoding); 0 where it has none.
constexpr char16_t kHighCodes[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

const char *const kBaseFonts[4] = {"Helvetica", "Helvetica-Bold", "Courier", "Courier-Bold"};

// The code of `c`, -1 when the code page has none. Control characters print as blanks.
int codeOf(QChar c)
{
    const char16_t u = c.unicode();
    if (u < 0x20)
        return ' ';
    if (u < 0x7F || (u >= 0xA0 && u <= 0xFF))
        return u;
    for (int i = 0; i < 32; ++i)
        if (kHighCodes[i] == u && u != 0)
            return 0x80 + i;
    return -1;
}

constexpr qint16 kUnknown = std::numeric_limits<qint16>::min();

// What stands for `c` in the file: a character the page has no code for prints as "?".
int printedCode(QChar c)
{
    const int code = codeOf(c);
    return code < 0 ? '?' : code;
}

QChar charOf(int code) { return code >= 0x80 && code < 0xA0 ? QChar(kHighCodes[code - 0x80]) : QChar(char16_t(code)); }

QByteArray number(qint64 value)
{
    char buffer[24];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    return QByteArray(buffer, end - buffer);
}

QByteArray rgbOf(const QColor &c)
{
    return QByteArray::number(c.redF(), 'g', 3) + ' ' + QByteArray::number(c.greenF(), 'g', 3) + ' ' +
           QByteArray::number(c.blueF(), 'g', 3);
}

} // namespace

PdfListWriter::PdfListWriter(QIODevice &device, int pageWidth, int pageHeight)
    : m_device(device), m_width(pageWidth), m_height(pageHeight), m_offsets(kFirstFree, 0)
{
    const QByteArray head("%PDF-1.4\n%\xE2\xE3\xCF\xD3\n");
    m_ok = m_device.write(head) == head.size();
    m_written = head.size();
    m_content.reserve(1 << 16);
}

bool PdfListWriter::encodable(QStringView text)
{
    for (const QChar c : text)
        if (c.unicode() >= 0x7F && codeOf(c) < 0)
            return false;
    return true;
}

int PdfListWriter::startObject(int number)
{
    if (size_t(number) >= m_offsets.size())
        m_offsets.resize(size_t(number) + 1, 0);
    m_offsets[size_t(number)] = m_written;
    return number;
}

void PdfListWriter::writeObject(int number, const QByteArray &body)
{
    startObject(number);
    const QByteArray object = qln::number(number) + " 0 obj\n" + body + "\nendobj\n";
    if (m_ok)
        m_ok = m_device.write(object) == object.size();
    m_written += object.size();
}

void PdfListWriter::beginPage()
{
    m_content += "0.05 0 0 0.05 0 0 cm 0 w\n";
    m_inText = false;
    m_setFace = m_setSize = -1;
    m_colourSet = false;
}

void PdfListWriter::endPage()
{
    endText();
    if (m_packing.valid())
        writePage(m_packing.get());
    // Speed over size: the fastest level still takes the stream to a quarter. The page is
    // deflated beside the drawing of the next, which it costs as much as.
    m_packing = std::async(std::launch::async, [content = std::move(m_content)] { return qCompress(content, 1).mid(4); });
    m_content = QByteArray();
    m_content.reserve(1 << 16);
}

void PdfListWriter::writePage(const QByteArray &packed)
{
    const int contents = int(m_offsets.size());
    writeObject(contents, "<< /Length " + number(packed.size()) + " /Filter /FlateDecode >>\nstream\n" + packed +
                              "\nendstream");
    const int page = contents + 1;
    writeObject(page, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 " + number(m_width / 20) + ' ' +
                          number(m_height / 20) + "] /Resources 3 0 R /Contents " + number(contents) + " 0 R >>");
    m_pages.push_back(page);
}

bool PdfListWriter::finish()
{
    if (m_packing.valid())
        writePage(m_packing.get());
    QByteArray fonts;
    for (int f = 0; f < kFaces; ++f) {
        if (!m_faces[size_t(f)].metrics)
            continue;
        QByteArray widths;
        for (int code = 32; code < 256; ++code)
            widths += number(m_faces[size_t(f)].widths[size_t(code)]) + ' ';
        const int object = int(m_offsets.size());
        writeObject(object, QByteArray("<< /Type /Font /Subtype /Type1 /BaseFont /") + kBaseFonts[f] +
                                " /Encoding /WinAnsiEncoding /FirstChar 32 /LastChar 255 /Widths [" + widths + "] >>");
        fonts += "/F" + number(f) + ' ' + number(object) + " 0 R ";
    }
    writeObject(kResources, "<< /Font << " + fonts + ">> >>");
    QByteArray kids;
    for (int page : m_pages)
        kids += number(page) + " 0 R ";
    writeObject(kPageTree, "<< /Type /Pages /Kids [" + kids + "] /Count " + number(qint64(m_pages.size())) + " >>");
    writeObject(kInfo, "<< /Creator (Quillon) /Producer (Quillon) >>");
    writeObject(kCatalog, "<< /Type /Catalog /Pages 2 0 R >>");

    const qint64 xref = m_written;
    QByteArray tail = "xref\n0 " + number(qint64(m_offsets.size())) + "\n0000000000 65535 f \n";
    for (size_t i = 1; i < m_offsets.size(); ++i)
        tail += number(m_offsets[i]).rightJustified(10, '0') + " 00000 n \n";
    tail += "trailer\n<< /Size " + number(qint64(m_offsets.size())) + " /Root 1 0 R /Info 4 0 R >>\nstartxref\n" +
            number(xref) + "\n%%EOF\n";
    if (m_ok)
        m_ok = m_device.write(tail) == tail.size();
    return m_ok;
}

void PdfListWriter::setFont(const QFont &font)
{
    m_face = (font.styleHint() == QFont::TypeWriter ? 2 : 0) + (font.bold() ? 1 : 0);
    m_size = font.pixelSize() > 0 ? font.pixelSize() : qRound(font.pointSizeF() * 20);
    Face &face = m_faces[size_t(m_face)];
    if (face.metrics)
        return;
    QFont unit = font;
    unit.setPixelSize(1000);
    face.metrics.emplace(unit);
    for (int code = 32; code < 256; ++code)
        if (!charOf(code).isNull())
            face.widths[size_t(code)] = qRound(face.metrics->horizontalAdvance(charOf(code)));
    face.kerns.assign(256 * 256, kUnknown);
}

int PdfListWriter::kern(Face &face, int left, int right)
{
    qint16 &known = face.kerns[size_t(left * 256 + right)];
    if (known == kUnknown) {
        const QChar pair[2] = {charOf(left), charOf(right)};
        known = qint16(qRound(face.metrics->horizontalAdvance(QString(pair, 2))) - face.widths[size_t(left)] -
                       face.widths[size_t(right)]);
    }
    return known;
}

void PdfListWriter::setColour(const QColor &colour) { m_colour = colour; }

qreal PdfListWriter::advance(const QString &text)
{
    Face &face = m_faces[size_t(m_face)];
    qint64 sum = 0;
    int previous = -1;
    for (const QChar c : text) {
        const int code = printedCode(c);
        sum += face.widths[size_t(code)] + (previous < 0 ? 0 : kern(face, previous, code));
        previous = code;
    }
    return qreal(sum) * m_size / 1000;
}

void PdfListWriter::put(qreal value)
{
    char buffer[24];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, qRound64(value)).ptr;
    m_content.append(buffer, end - buffer);
    m_content += ' ';
}

void PdfListWriter::putColour(const QColor &colour, const char *op)
{
    m_content += rgbOf(colour) + ' ' + op + '\n';
}

void PdfListWriter::endText()
{
    if (m_inText)
        m_content += "ET\n";
    m_inText = false;
}

// The font and colour live outside text objects and survive a clip's save and restore when
// set before it.
void PdfListWriter::putState()
{
    if (m_face != m_setFace || m_size != m_setSize) {
        m_content += "/F" + number(m_face) + ' ' + number(m_size) + " Tf\n";
        m_setFace = m_face;
        m_setSize = m_size;
    }
    if (!m_colourSet || m_colour.rgb() != m_setColour) {
        putColour(m_colour, "rg");
        m_setColour = m_colour.rgb();
        m_colourSet = true;
    }
}

void PdfListWriter::putText(qreal x, qreal baseline, const QString &text)
{
    putState();
    if (!m_inText) {
        m_content += "BT\n";
        m_inText = true;
        m_lineX = m_lineY = 0;
    }
    const qint64 x0 = qRound64(x), y0 = qRound64(m_height - baseline);
    put(qreal(x0 - m_lineX));
    put(qreal(y0 - m_lineY));
    m_lineX = x0;
    m_lineY = y0;
    m_content += "Td ";
    // Most cells have no kerned pair; those that do become an array, opened when met.
    const qsizetype open = m_content.size();
    bool kerned = false;
    m_content += '(';
    Face &face = m_faces[size_t(m_face)];
    int previous = -1;
    for (const QChar c : text) {
        const int code = printedCode(c);
        if (const int k = previous < 0 ? 0 : kern(face, previous, code)) {
            if (!kerned)
                m_content.insert(open, '[');
            kerned = true;
            m_content += ") ";
            m_content += number(-k);
            m_content += " (";
        }
        if (code == '(' || code == ')' || code == '\\')
            m_content += '\\';
        m_content += char(code);
        previous = code;
    }
    m_content += kerned ? ")] TJ\n" : ") Tj\n";
}

void PdfListWriter::text(qreal x, qreal baseline, const QString &text) { putText(x, baseline, text); }

void PdfListWriter::textClipped(const QRectF &clip, qreal x, qreal baseline, const QString &text)
{
    endText();
    putState();
    m_content += "q ";
    put(clip.x());
    putY(clip.bottom());
    put(clip.width());
    put(clip.height());
    m_content += "re W n\n";
    putText(x, baseline, text);
    endText();
    m_content += "Q\n";
}

void PdfListWriter::fill(const QRectF &rect, const QColor &colour)
{
    endText();
    putColour(colour, "rg");
    m_colourSet = false;
    put(rect.x());
    putY(rect.bottom());
    put(rect.width());
    put(rect.height());
    m_content += "re f\n";
}

void PdfListWriter::line(qreal x1, qreal y1, qreal x2, qreal y2)
{
    endText();
    put(x1);
    putY(y1);
    m_content += "m ";
    put(x2);
    putY(y2);
    m_content += "l S\n";
}

void PdfListWriter::frame(const QRectF &rect, const QColor &colour, qreal width)
{
    endText();
    m_content += "q ";
    putColour(colour, "RG");
    put(width);
    m_content += "w ";
    put(rect.x());
    putY(rect.bottom());
    put(rect.width());
    put(rect.height());
    m_content += "re S Q\n";
}

} // namespace qln
