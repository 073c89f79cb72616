#include "output/PrintEngine.h"

#include "output/PdfListWriter.h"
#include "output/PrintCanvas.h"

#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>

#include <algorithm>
#include <cmath>

namespace qln {

namespace {
constexpr int kPadding = 45;
constexpr int kHeadPoints = 9;
constexpr int kBodyPoints = 10;
constexpr int kFrameWidth = 25;
const QColor kFrameColour(200, 0, 0);    // 200 in the platform's BGR order
const QColor kRepeatColour(0, 0, 255);   // 0xFF0000 in the platform's BGR order
const QColor kHeadRowShade(224, 224, 224);

// The baseline of a line of `metrics` centred in a band from y of `height`.
qreal centredBaseline(const QFontMetricsF &metrics, qreal y, qreal height)
{
    return y + (height - metrics.height()) / 2 + metrics.ascent();
}

// Where a text of `advance` starts in a box from x of `width`.
qreal alignedStart(QChar sign, qreal x, qreal width, qreal advance)
{
    if (sign == QLatin1Char('^'))
        return x + (width - advance) / 2;
    if (sign == QLatin1Char('>'))
        return x + width - advance;
    return x;
}

// Painter units of twips on any device.
void scaleToTwips(QPainter &painter, const QPaintDevice &device)
{
    painter.scale(device.logicalDpiX() / 1440.0, device.logicalDpiY() / 1440.0);
}
} // namespace

void PrintEngine::clear()
{
    *this = PrintEngine();
}

void PrintEngine::setHeadLines(const QStringList &lines)
{
    m_headLines = lines;
    m_paged = false;
}

void PrintEngine::setLandscape(bool landscape)
{
    m_landscape = landscape;
    m_paged = false;
}

void PrintEngine::addTable(PrintTable table, int points, bool fixedPitch)
{
    Style body = style(points, fixedPitch);
    wrapHead(table, body);
    m_tables.push_back(std::move(table));
    m_styles.push_back(body);
    m_paged = false;
}

// Captions wider than their column go on over more lines rather than be cut; a word wider
// than the column stands on a line of its own.
void PrintEngine::wrapHead(const PrintTable &table, Style &style)
{
    QFont bold = style.font;
    bold.setBold(true);
    const QFontMetricsF metrics(bold);
    qsizetype lines = 1;
    const auto &columns = table.columns();
    for (qsizetype i = 0; i < table.head().size() && i < qsizetype(columns.size()); ++i) {
        const qreal width = columns[size_t(i)].width - 2 * kPadding;
        QStringList wrapped;
        QString line;
        for (const QString &word : table.head()[i].simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            const QString longer = line.isEmpty() ? word : line + QLatin1Char(' ') + word;
            if (!line.isEmpty() && metrics.horizontalAdvance(longer) > width) {
                wrapped << line;
                line = word;
            } else {
                line = longer;
            }
        }
        if (!line.isEmpty())
            wrapped << line;
        if (width > 0)
            lines = std::max(lines, wrapped.size());
        style.captions.push_back(wrapped);
    }
    style.headHeight = style.rowHeight + int(qreal(lines - 1) * metrics.lineSpacing());
}

PrintEngine::Style PrintEngine::style(int points, bool fixedPitch, bool bold) const
{
    QFont font(fixedPitch ? QStringLiteral("Liberation Mono") : QStringLiteral("Arial"));
    font.setStyleHint(fixedPitch ? QFont::TypeWriter : QFont::SansSerif);
    font.setPixelSize(points * 20);
    font.setBold(bold);
    return {font, int(QFontMetricsF(font).height()) + 2 * (kPadding / 2), 0, {}};
}

const std::vector<PrintPage> &PrintEngine::pages() const
{
    if (!m_paged) {
        std::vector<PrintRowHeights> heights;
        for (const Style &s : m_styles)
            heights.push_back({s.rowHeight, s.headHeight});
        const int body = pageHeight() - kMarginTop - kMarginBottom;
        m_pages = gfPrint_Pages(m_tables, heights, body, tableTop() - kMarginTop);
        m_paged = true;
    }
    return m_pages;
}

int PrintEngine::tableTop() const
{
    return kMarginTop + int(m_headLines.size()) * style(kBodyPoints).rowHeight;
}

int PrintEngine::pageCount() const { return m_tables.empty() ? 0 : int(pages().size()); }

void PrintEngine::drawParts(PrintCanvas &canvas, const QString &text, int y, int page) const
{
    const QStringList parts = QString(text).replace(QStringLiteral("%d"), QString::number(page + 1)).split(QLatin1Char('|'));
    const QChar aligns[3] = {QLatin1Char('<'), QLatin1Char('^'), QLatin1Char('>')};
    const Style s = style(kHeadPoints);
    canvas.setFont(s.font);
    const qreal baseline = centredBaseline(QFontMetricsF(s.font), y, s.rowHeight);
    for (int i = 0; i < 3 && i < parts.size(); ++i)
        if (!parts[i].isEmpty())
            canvas.text(alignedStart(aligns[i], kMarginSide, availableWidth(), canvas.advance(parts[i])), baseline, parts[i]);
}

void PrintEngine::drawHead(PrintCanvas &canvas, const PrintTable &table, const Style &style, int y) const
{
    QFont bold = style.font;
    bold.setBold(true);
    canvas.setFont(bold);
    const QFontMetricsF metrics(bold);
    int x = kMarginSide;
    const auto &columns = table.columns();
    for (size_t i = 0; i < columns.size(); ++i) {
        const int width = columns[i].width;
        const QStringList lines = i < style.captions.size() ? style.captions[i] : QStringList();
        if (width > 2 * kPadding && !lines.isEmpty()) {
            const qreal block = metrics.height() + qreal(lines.size() - 1) * metrics.lineSpacing();
            qreal baseline = centredBaseline(metrics, y + (style.headHeight - block) / 2, metrics.height());
            for (const QString &line : lines) {
                const qreal inner = width - 2 * kPadding;
                canvas.text(alignedStart(columns[i].align, x + kPadding, inner, canvas.advance(line)), baseline, line);
                baseline += metrics.lineSpacing();
            }
        }
        x += width;
    }
}

// A body row: each cell on one line. A text may run into its cell's margin; only one that
// would cross the rule is clipped, at the rule. A left-aligned one that surely fits is not
// measured.
void PrintEngine::drawLine(PrintCanvas &canvas, const QFontMetricsF &metrics, const PrintTable &table,
                           const QStringList &cells, int y, int height) const
{
    const qreal baseline = centredBaseline(metrics, y, height);
    const qreal widest = metrics.maxWidth();
    int x = kMarginSide;
    const auto &columns = table.columns();
    for (size_t i = 0; i < columns.size(); ++i) {
        const PrintColumn &column = columns[i];
        const QString &text = i < size_t(cells.size()) ? cells[qsizetype(i)] : QString();
        const qreal inner = column.width - 2 * kPadding;
        if (inner > 0 && !text.isEmpty()) {
            const bool left = column.align != QLatin1Char('^') && column.align != QLatin1Char('>');
            const qreal advance = left && text.size() * widest <= inner ? 0 : canvas.advance(text);
            const qreal start = x + kPadding;
            if (advance > inner + kPadding)
                canvas.textClipped(QRectF(x, y, column.width, height), start, baseline, text);
            else
                canvas.text(alignedStart(column.align, start, inner, advance), baseline, text);
        }
        x += column.width;
    }
}

void PrintEngine::renderPage(QPainter &painter, int index, const std::optional<PrintHit> &hit) const
{
    PainterCanvas canvas(painter);
    renderPage(canvas, index, hit);
}

void PrintEngine::renderPage(PrintCanvas &canvas, int index, const std::optional<PrintHit> &hit) const
{
    if (index < 0 || index >= pageCount())
        return;
    const PrintPage &page = pages()[size_t(index)];
    const PrintTable &table = m_tables[size_t(page.table)];
    const Style &body = m_styles[size_t(page.table)];
    canvas.setColour(Qt::black);
    drawParts(canvas, m_header, kMarginTop - style(kHeadPoints).rowHeight * 2, index);
    drawParts(canvas, m_footer, pageHeight() - kMarginBottom + style(kHeadPoints).rowHeight, index);

    // The head lines open the list; on later pages they come again in the repeat colour.
    const Style head = style(kBodyPoints, false, true);
    const QFontMetricsF headMetrics(head.font);
    const int lineHeight = style(kBodyPoints).rowHeight;
    int y = kMarginTop;
    canvas.setFont(head.font);
    canvas.setColour(index > 0 ? kRepeatColour : QColor(Qt::black));
    for (const QString &line : m_headLines) {
        canvas.text(kMarginSide, centredBaseline(headMetrics, y, head.rowHeight), line);
        y += lineHeight;
    }
    canvas.setColour(Qt::black);

    const int top = y;
    const int width = table.width();
    if (!table.head().isEmpty()) {
        canvas.fill(QRectF(kMarginSide, y, width, body.headHeight), kHeadRowShade);
        drawHead(canvas, table, body, y);
        y += body.headHeight;
    }
    const int bodyTop = y;
    canvas.setFont(body.font);
    const QFontMetricsF metrics(body.font);
    for (int row = page.firstRow; row < page.firstRow + page.rowCount; ++row, y += body.rowHeight)
        drawLine(canvas, metrics, table, table.row(row), y, body.rowHeight);

    if (m_lines && y > top) {
        canvas.line(kMarginSide, top, kMarginSide + width, top);
        for (int line = bodyTop; line <= y; line += body.rowHeight)
            canvas.line(kMarginSide, line, kMarginSide + width, line);
        int x = kMarginSide;
        canvas.line(x, top, x, y);
        for (const PrintColumn &column : table.columns()) {
            x += column.width;
            canvas.line(x, top, x, y);
        }
    }
    if (hit && hit->page == index)
        canvas.frame(hitRect(*hit), kFrameColour, kFrameWidth);
}

QRectF PrintEngine::hitRect(const PrintHit &hit) const
{
    const PrintPage &page = pages()[size_t(hit.page)];
    const PrintTable &table = m_tables[size_t(hit.table)];
    const Style &body = m_styles[size_t(hit.table)];
    int y = tableTop() + (table.head().isEmpty() ? 0 : body.headHeight) + (hit.row - page.firstRow) * body.rowHeight;
    int x = kMarginSide;
    const auto &columns = table.columns();
    for (int i = 0; i < hit.cell && i < int(columns.size()); ++i)
        x += columns[size_t(i)].width;
    const PrintColumn column = hit.cell < int(columns.size()) ? columns[size_t(hit.cell)] : PrintColumn{};
    const QString cell = table.row(hit.row).value(hit.cell);
    const QFontMetricsF metrics(body.font);
    const qreal inner = column.width - 2 * kPadding;
    const qreal full = metrics.horizontalAdvance(cell);
    const qreal start = alignedStart(column.align, x + kPadding, inner, full) + metrics.horizontalAdvance(cell.left(hit.at));
    return QRectF(start - kPadding / 2, y, metrics.horizontalAdvance(cell.mid(hit.at, hit.length)) + kPadding, body.rowHeight);
}

std::optional<PrintHit> PrintEngine::find(const QString &text, int fromPage, const std::optional<PrintHit> &after) const
{
    return gfPrint_Find(m_tables, pages(), text, fromPage, after);
}

bool PrintEngine::plainText() const
{
    const auto plain = [](const QString &text) { return PdfListWriter::encodable(text); };
    if (!plain(m_header) || !plain(m_footer) || !std::all_of(m_headLines.begin(), m_headLines.end(), plain))
        return false;
    return std::all_of(m_tables.begin(), m_tables.end(), [&](const PrintTable &table) {
        return plain(table.body()) && std::all_of(table.head().begin(), table.head().end(), plain);
    });
}

bool PrintEngine::writeOwnPdf(QIODevice &device, QString &error, const PageTick &tick) const
{
    PdfListWriter writer(device, pageWidth(), pageHeight());
    const int count = pageCount();
    for (int page = 0; page < count; ++page) {
        writer.beginPage();
        renderPage(writer, page, std::nullopt);
        writer.endPage();
        if (tick)
            tick(page + 1, count);
    }
    if (!writer.finish()) {
        error = device.errorString();
        return false;
    }
    return true;
}

// Our own writer carries lists in the Latin-1 code page; a list with other letters goes
// through the general writer, which embeds the fonts that have them.
bool PrintEngine::writePdf(QIODevice &device, QString &error, const PageTick &tick) const
{
    if (plainText())
        return writeOwnPdf(device, error, tick);
    QPdfWriter writer(&device);
    writer.setResolution(1440);
    writer.setCreator(QStringLiteral("Quillon"));
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::Letter),
                                     m_landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF()));
    QPainter painter;
    if (!painter.begin(&writer)) {
        error = QStringLiteral("The PDF could not be started.");
        return false;
    }
    const int count = pageCount();
    for (int page = 0; page < count; ++page) {
        if (page > 0)
            writer.newPage();
        renderPage(painter, page);
        if (tick)
            tick(page + 1, count);
    }
    painter.end();
    return true;
}

bool PrintEngine::writePdf(const QString &file, QString &error, const PageTick &tick) const
{
    QSaveFile out(file);
    if (!out.open(QIODevice::WriteOnly)) {
        error = out.errorString();
        return false;
    }
    if (!writePdf(out, error, tick))
        return false;
    if (!out.commit()) {
        error = out.errorString();
        return false;
    }
    return true;
}

void PrintEngine::print(QPrinter &printer, int firstPage, int lastPage, const PageTick &tick) const
{
    printer.setFullPage(true);
    printer.setPageOrientation(m_landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setCopyCount(m_copies);
    QPainter painter;
    if (!painter.begin(&printer))
        return;
    scaleToTwips(painter, printer);
    for (int page = firstPage; page <= lastPage && page < pageCount(); ++page) {
        if (page > firstPage)
            printer.newPage();
        renderPage(painter, page);
        if (tick)
            tick(page - firstPage + 1, lastPage - firstPage + 1);
    }
    painter.end();
}

std::optional<QString> PrintEngine::exportCsv(const QString &file) const
{
    std::vector<const PrintTable *> tables;
    for (const PrintTable &table : m_tables)
        tables.push_back(&table);
    return gfsPrint_Csv_write(file, tables);
}

} // namespace qln
