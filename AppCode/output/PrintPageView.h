#pragma once
#include "output/PrintPages.h"

#include <QWidget>

#include <optional>

namespace qln {

class PrintEngine;

// One page of a document on screen at a zoom, with a found text framed.
class PrintPageView final : public QWidget {
    Q_OBJECT
public:
    explicit PrintPageView(const PrintEngine &engine, QWidget *parent = nullptr);

    int page() const { return m_page; }
    void setPage(int page);
    int zoom() const { return m_zoom; }
    void setZoom(int percent);
    void setHit(const std::optional<PrintHit> &hit);
    // Fits the widget to the page after the document changed.
    void refit();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double pixelsPerTwip() const;

    const PrintEngine &m_engine;
    int m_page = 0;
    int m_zoom = 100;
    std::optional<PrintHit> m_hit;
};

} // namespace qln
