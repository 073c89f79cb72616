#include "output/PrintCanvas.h"

#include <QPainter>

namespace qln {

PainterCanvas::PainterCanvas(QPainter &painter) : m_painter(painter)
{
    m_painter.save();
    m_painter.setPen(Qt::black);
}

PainterCanvas::~PainterCanvas() { m_painter.restore(); }

void PainterCanvas::setFont(const QFont &font)
{
    m_painter.setFont(font);
    m_metrics.emplace(font);
}

void PainterCanvas::setColour(const QColor &colour) { m_painter.setPen(colour); }

qreal PainterCanvas::advance(const QString &text) { return m_metrics ? m_metrics->horizontalAdvance(text) : 0; }

void PainterCanvas::text(qreal x, qreal baseline, const QString &text) { m_painter.drawText(QPointF(x, baseline), text); }

void PainterCanvas::textClipped(const QRectF &clip, qreal x, qreal baseline, const QString &text)
{
    m_painter.save();
    m_painter.setClipRect(clip);
    m_painter.drawText(QPointF(x, baseline), text);
    m_painter.restore();
}

void PainterCanvas::fill(const QRectF &rect, const QColor &colour) { m_painter.fillRect(rect, colour); }

void PainterCanvas::line(qreal x1, qreal y1, qreal x2, qreal y2)
{
    const QPen pen = m_painter.pen();
    m_painter.setPen(QPen(Qt::black, 0));
    m_painter.drawLine(QPointF(x1, y1), QPointF(x2, y2));
    m_painter.setPen(pen);
}

void PainterCanvas::frame(const QRectF &rect, const QColor &colour, qreal width)
{
    m_painter.save();
    m_painter.setPen(QPen(colour, width));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(rect);
    m_painter.restore();
}

} // namespace qln
