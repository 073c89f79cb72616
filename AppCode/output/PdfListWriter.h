#pragma once
#include "output/PrintCanvas.h"

#include <QByteArray>
#include <QStringView>

#include <array>
#include <future>
#include <optional>
#include <vector>

class QIODevice;

namespace qln {

// A PDF of a list written by hand. The general PDF writer shapes every cell and places each
// glyph on its own, which made a list of 50,000 rows cost forty times its CSV; a list needs
// no more than the standard sans and mono faces, text in the PDF standard Latin encoding
// (WinAnsiEncoding), and page contents deflated fast. The faces' widths are taken from the screen fonts of the same
// metrics and written into the file, so the text sits where the layout put it.
class PdfListWriter final : public PrintCanvas {
public:
    // Sizes in twips.
    PdfListWriter(QIODevice &device, int pageWidth, int pageHeight);
    // Whether every character of `text` has a code in the faces' code page.
    static bool encodable(QStringView text);

    void beginPage();
    void endPage();
    // Writes what closes the file; false when the device refused a write.
    bool finish();

    void setFont(const QFont &font) override;
    void setColour(const QColor &colour) override;
    qreal advance(const QString &text) override;
    void text(qreal x, qreal baseline, const QString &text) override;
    void textClipped(const QRectF &clip, qreal x, qreal baseline, const QString &text) override;
    void fill(const QRectF &rect, const QColor &colour) override;
    void line(qreal x1, qreal y1, qreal x2, qreal y2) override;
    void frame(const QRectF &rect, const QColor &colour, qreal width) override;

private:
    static constexpr int kFaces = 4; // sans, sans bold, mono, mono bold
    // Widths and kerning in thousandths of the size, by code, as the screen font shapes them.
    struct Face {
        std::optional<QFontMetricsF> metrics; // of the face at a size of 1000
        std::array<int, 256> widths{};
        std::vector<qint16> kerns; // by pair of codes, read when first met
    };

    int startObject(int number);
    void writeObject(int number, const QByteArray &body);
    void endText();
    void putColour(const QColor &colour, const char *op);
    void putText(qreal x, qreal baseline, const QString &text);
    void put(qreal value);
    void putY(qreal y) { put(m_height - y); }
    void writePage(const QByteArray &packed);
    void putState();
    int kern(Face &face, int left, int right);

    QIODevice &m_device;
    int m_width;
    int m_height;
    bool m_ok = true;
    qint64 m_written = 0;
    std::vector<qint64> m_offsets; // by object number
    std::vector<int> m_pages;      // page objects
    std::array<Face, kFaces> m_faces;

    QByteArray m_content; // the current page's
    // The page before, being deflated while this one is drawn.
    std::future<QByteArray> m_packing;
    int m_face = 0;
    int m_size = 0;
    QColor m_colour = Qt::black;
    bool m_inText = false;
    // What the content last set, so a repeat costs nothing; -1 when unknown.
    int m_setFace = -1;
    int m_setSize = -1;
    QRgb m_setColour = 0;
    bool m_colourSet = false;
    qint64 m_lineX = 0; // the start of the current text line, in twips up from the foot
    qint64 m_lineY = 0;
};

} // namespace qln
