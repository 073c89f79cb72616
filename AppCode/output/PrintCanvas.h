#pragma once
#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QRectF>
#include <QString>

#include <optional>

class QPainter;

namespace qln {

// What a page of a list is drawn on, in twips with y going down: the screen and printers
// through a painter, PDF files through our own writer. The page layout is the same for both.
class PrintCanvas {
public:
    virtual ~PrintCanvas() = default;
    virtual void setFont(const QFont &font) = 0;
    virtual void setColour(const QColor &colour) = 0; // of the text
    // The width of `text` in the current font.
    virtual qreal advance(const QString &text) = 0;
    virtual void text(qreal x, qreal baseline, const QString &text) = 0;
    virtual void textClipped(const QRectF &clip, qreal x, qreal baseline, const QString &text) = 0;
    virtual void fill(const QRectF &rect, const QColor &colour) = 0;
    // The thinnest black line the device draws.
    virtual void line(qreal x1, qreal y1, qreal x2, qreal y2) = 0;
    virtual void frame(const QRectF &rect, const QColor &colour, qreal width) = 0;
};

class PainterCanvas final : public PrintCanvas {
public:
    explicit PainterCanvas(QPainter &painter);
    ~PainterCanvas() override;
    void setFont(const QFont &font) override;
    void setColour(const QColor &colour) override;
    qreal advance(const QString &text) override;
    void text(qreal x, qreal baseline, const QString &text) override;
    void textClipped(const QRectF &clip, qreal x, qreal baseline, const QString &text) override;
    void fill(const QRectF &rect, const QColor &colour) override;
    void line(qreal x1, qreal y1, qreal x2, qreal y2) override;
    void frame(const QRectF &rect, const QColor &colour, qreal width) override;

private:
    QPainter &m_painter;
    std::optional<QFontMetricsF> m_metrics;
};

} // namespace qln
