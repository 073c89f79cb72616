#include "output/PrintEngine.h"

#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>

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

Qt::Alignment alignmentOf(QChar sign)
{
    if (sign == QLatin1Char('^'))
        return Qt::AlignHCenter;
    if (sign == QLatin1Char('>'))
        return Qt::AlignRight;
    return Qt::AlignLeft;
}

int textFlags(Qt::Alignment alignment) { return int(alignment | Qt::AlignVCenter) | int(Qt::TextSingleLine); }

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
    body.headHeight = headHeight(table, body);
    m_tables.push_back(std::move(table));
    m_styles.push_back(body);
    m_paged = false;
}

// Captions wider than their column go on over more lines rather than be cut.
int PrintEngine::headHeight(const PrintTable &table, const Style &style)
{
    QFont bold = style.font;
    bold.setBold(true);
    const QFontMetricsF metrics(bold);
    qreal lines = 1;
    const auto &columns = table.columns();
    for (qsizetype i = 0; i < table.head().size() && i < qsizetype(columns.size()); ++i) {
        const qreal width = columns[size_t(i)].width - 2 * kPadding;
        if (width <= 0)
            continue;
        const QRectF bounds = metrics.boundingRect(QRectF(0, 0, width, 1e6), int(Qt::TextWordWrap), table.head()[i]);
        lines = std::max(lines, std::ceil(bounds.height() / metrics.lineSpacing()));
    }
    return style.rowHeight + int((lines - 1) * metrics.lineSpacing());
}

PrintEngine::Style PrintEngine::style(int points, bool fixedPitch, bool bold) const
{
    QFont font(fixedPitch ? QStringLiteral("Liberation Mono") : QStringLiteral("Arial"));
    font.setStyleHint(fixedPitch ? QFont::TypeWriter : QFont::SansSerif);
    font.setPixelSize(points * 20);
    font.setBold(bold);
    return {font, int(QFontMetricsF(font).height()) + 2 * (kPadding / 2)};
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

void PrintEngine::drawParts(QPainter &painter, const QString &text, int y, int page) const
{
    const QStringList parts = QString(text).replace(QStringLiteral("%d"), QString::number(page + 1)).split(QLatin1Char('|'));
    const Qt::Alignment aligns[3] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
    const Style s = style(kHeadPoints);
    painter.setFont(s.font);
    const QRectF line(kMarginSide, y, availableWidth(), s.rowHeight);
    for (int i = 0; i < 3 && i < parts.size(); ++i)
        painter.drawText(line, textFlags(aligns[i]), parts[i]);
}

void PrintEngine::drawHead(QPainter &painter, const PrintTable &table, int y, int height) const
{
    const QStringList &cells = table.head();
    int x = kMarginSide;
    const auto &columns = table.columns();
    for (size_t i = 0; i < columns.size(); ++i) {
        const int width = columns[i].width;
        if (width > 2 * kPadding && !cells.value(qsizetype(i)).isEmpty())
            painter.drawText(QRectF(x + kPadding, y, width - 2 * kPadding, height),
                             int(alignmentOf(columns[i].align) | Qt::AlignVCenter) | int(Qt::TextWordWrap), cells[qsizetype(i)]);
        x += width;
    }
}

// A body row: each cell on one line, placed by hand, since the general text layout costs
// more than the drawing; only a text too wide for its cell is clipped.
void PrintEngine::drawLine(QPainter &painter, const QFontMetricsF &metrics, const PrintTable &table,
                           const QStringList &cells, int y, int height) const
{
    const qreal baseline = y + (height - metrics.height()) / 2 + metrics.ascent();
    const qreal widest = metrics.maxWidth();
    int x = kMarginSide;
    const auto &columns = table.columns();
    for (size_t i = 0; i < columns.size(); ++i) {
        const PrintColumn &column = columns[i];
        const QString &text = i < size_t(cells.size()) ? cells[qsizetype(i)] : QString();
        const qreal inner = column.width - 2 * kPadding;
        if (inner > 0 && !text.isEmpty()) {
            const bool left = column.align != QLatin1Char('^') && column.align != QLatin1Char('>');
            const qreal advance = left && text.size() * widest <= inner ? 0 : metrics.horizontalAdvance(text);
            qreal start = x + kPadding;
            if (advance > inner) {
                painter.save();
                painter.setClipRect(QRectF(start, y, inner, height));
                painter.drawText(QPointF(start, baseline), text);
                painter.restore();
            } else {
                if (column.align == QLatin1Char('^'))
                    start += (inner - advance) / 2;
                else if (column.align == QLatin1Char('>'))
                    start += inner - advance;
                painter.drawText(QPointF(start, baseline), text);
            }
        }
        x += column.width;
    }
}

void PrintEngine::renderPage(QPainter &painter, int index, const std::optional<PrintHit> &hit) const
{
    if (index < 0 || index >= pageCount())
        return;
    const PrintPage &page = pages()[size_t(index)];
    const PrintTable &table = m_tables[size_t(page.table)];
    const Style &body = m_styles[size_t(page.table)];
    painter.save();
    painter.setPen(Qt::black);
    drawParts(painter, m_header, kMarginTop - style(kHeadPoints).rowHeight * 2, index);
    drawParts(painter, m_footer, pageHeight() - kMarginBottom + style(kHeadPoints).rowHeight, index);

    // The head lines open the list; on later pages they come again in the repeat colour.
    const Style head = style(kBodyPoints, false, true);
    int y = kMarginTop;
    painter.setFont(head.font);
    painter.setPen(index > 0 ? kRepeatColour : QColor(Qt::black));
    for (const QString &line : m_headLines) {
        painter.drawText(QRectF(kMarginSide, y, availableWidth(), head.rowHeight),
                         textFlags(Qt::AlignLeft), line);
        y += style(kBodyPoints).rowHeight;
    }
    painter.setPen(Qt::black);

    const int top = y;
    const int width = table.width();
    if (!table.head().isEmpty()) {
        painter.fillRect(QRectF(kMarginSide, y, width, body.headHeight), kHeadRowShade);
        QFont bold = body.font;
        bold.setBold(true);
        painter.setFont(bold);
        drawHead(painter, table, y, body.headHeight);
        y += body.headHeight;
    }
    const int bodyTop = y;
    painter.setFont(body.font);
    const QFontMetricsF metrics(body.font, painter.device());
    for (int row = page.firstRow; row < page.firstRow + page.rowCount; ++row, y += body.rowHeight)
        drawLine(painter, metrics, table, table.row(row), y, body.rowHeight);

    if (m_lines && y > top) {
        painter.setPen(QPen(Qt::black, 0));
        painter.drawLine(kMarginSide, top, kMarginSide + width, top);
        for (int line = bodyTop; line <= y; line += body.rowHeight)
            painter.drawLine(kMarginSide, line, kMarginSide + width, line);
        int x = kMarginSide;
        painter.drawLine(x, top, x, y);
        for (const PrintColumn &column : table.columns()) {
            x += column.width;
            painter.drawLine(x, top, x, y);
        }
    }
    if (hit && hit->page == index) {
        painter.setPen(QPen(kFrameColour, kFrameWidth));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(hitRect(*hit));
    }
    painter.restore();
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
    qreal start = x + kPadding;
    if (column.align == QLatin1Char('^'))
        start += (inner - full) / 2;
    else if (column.align == QLatin1Char('>'))
        start += inner - full;
    start += metrics.horizontalAdvance(cell.left(hit.at));
    return QRectF(start - kPadding / 2, y, metrics.horizontalAdvance(cell.mid(hit.at, hit.length)) + kPadding, body.rowHeight);
}

std::optional<PrintHit> PrintEngine::find(const QString &text, int fromPage, const std::optional<PrintHit> &after) const
{
    return gfPrint_Find(m_tables, pages(), text, fromPage, after);
}

bool PrintEngine::writePdf(QIODevice &device, QString &error, const PageTick &tick) const
{
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
