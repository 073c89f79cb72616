#pragma once
#include "output/PrintPages.h"
#include "output/PrintTable.h"

#include <QFont>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

class QFontMetricsF;
class QIODevice;
class QPainter;
class QPrinter;

namespace qln {

class PrintCanvas;

// A paged list: header and footer of three parts split at "|" ("%d" the page number), head
// lines, and tables, each starting on a new page. Pages are laid out by arithmetic and drawn
// on demand, so a long list costs its text and a few numbers a page. Every length is in
// twips on a letter sheet.
class PrintEngine {
public:
    static constexpr int kPageShort = 12240;
    static constexpr int kPageLong = 15840;
    static constexpr int kMarginSide = 720;
    static constexpr int kMarginTop = 1080;
    static constexpr int kMarginBottom = 1080;

    void clear();
    void setHeader(const QString &header) { m_header = header; }
    void setFooter(const QString &footer) { m_footer = footer; }
    void setHeadLines(const QStringList &lines);
    void setLandscape(bool landscape);
    bool landscape() const { return m_landscape; }
    void setLines(bool lines) { m_lines = lines; }
    void setCopies(int copies) { m_copies = copies; }
    int copies() const { return m_copies; }
    int pageWidth() const { return m_landscape ? kPageLong : kPageShort; }
    int pageHeight() const { return m_landscape ? kPageShort : kPageLong; }
    int availableWidth() const { return pageWidth() - 2 * kMarginSide; }

    // A table in the body font of `points`; a fixed-pitch one for lines that line up by blanks.
    void addTable(PrintTable table, int points = 10, bool fixedPitch = false);
    const std::vector<PrintTable> &tables() const { return m_tables; }

    int pageCount() const;
    // Draws page `index` (0-based) on a painter whose units are twips, with a frame round `hit`.
    void renderPage(QPainter &painter, int index, const std::optional<PrintHit> &hit = std::nullopt) const;
    std::optional<PrintHit> find(const QString &text, int fromPage, const std::optional<PrintHit> &after) const;

    // Called after each page drawn with its number and the count; events may run there.
    using PageTick = std::function<void(int page, int count)>;
    // The whole document as PDF; false with the error text when it can't be written.
    bool writePdf(QIODevice &device, QString &error, const PageTick &tick = {}) const;
    bool writePdf(const QString &file, QString &error, const PageTick &tick = {}) const;
    void print(QPrinter &printer, int firstPage, int lastPage, const PageTick &tick = {}) const;
    std::optional<QString> exportCsv(const QString &file) const;

private:
    struct Style {
        QFont font;
        int rowHeight = 0;
        int headHeight = 0;               // the header row's, whose captions wrap
        std::vector<QStringList> captions; // the header row's, in their lines
    };
    const std::vector<PrintPage> &pages() const;
    Style style(int points, bool fixedPitch = false, bool bold = false) const;
    void renderPage(PrintCanvas &canvas, int index, const std::optional<PrintHit> &hit) const;
    void drawParts(PrintCanvas &canvas, const QString &text, int y, int page) const;
    void drawHead(PrintCanvas &canvas, const PrintTable &table, const Style &style, int y) const;
    void drawLine(PrintCanvas &canvas, const QFontMetricsF &metrics, const PrintTable &table, const QStringList &cells,
                  int y, int height) const;
    static void wrapHead(const PrintTable &table, Style &style);
    // Whether our own PDF writer can carry every text of the document.
    bool plainText() const;
    bool writeOwnPdf(QIODevice &device, QString &error, const PageTick &tick) const;
    QRectF hitRect(const PrintHit &hit) const;
    int tableTop() const;

    QString m_header;
    QString m_footer;
    QStringList m_headLines;
    bool m_landscape = false;
    bool m_lines = true;
    int m_copies = 1;
    std::vector<PrintTable> m_tables;
    std::vector<Style> m_styles;
    mutable std::vector<PrintPage> m_pages;
    mutable bool m_paged = false;
};

} // namespace qln
