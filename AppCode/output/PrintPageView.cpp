#include "output/PrintPageView.h"

#include "output/PrintEngine.h"

#include <QPainter>

namespace qln {

PrintPageView::PrintPageView(const PrintEngine &engine, QWidget *parent) : QWidget(parent), m_engine(engine)
{
    setObjectName(QStringLiteral("vsvPrinter"));
    refit();
}

void PrintPageView::setPage(int page)
{
    m_page = page;
    update();
}

void PrintPageView::setZoom(int percent)
{
    m_zoom = percent;
    refit();
}

void PrintPageView::setHit(const std::optional<PrintHit> &hit)
{
    m_hit = hit;
    update();
}

double PrintPageView::pixelsPerTwip() const { return logicalDpiX() / 1440.0 * m_zoom / 100.0; }

void PrintPageView::refit()
{
    const double scale = pixelsPerTwip();
    setFixedSize(int(m_engine.pageWidth() * scale), int(m_engine.pageHeight() * scale));
    update();
}

void PrintPageView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    const double scale = pixelsPerTwip();
    painter.scale(scale, scale);
    m_engine.renderPage(painter, m_page, m_hit);
}

} // namespace qln
