#include "promo/PromoWindow.h"

#include "lookup/FlexGrid.h"
#include "platform/ModalRunner.h"
#include "promo/frmTags_Print.h"

#include <QCoreApplication>
#include <QProgressBar>
#include <QPushButton>

#include <algorithm>
#include <utility>

namespace qln {

namespace {
constexpr qint64 kEventsEveryMs = 25;

// The last column is as wide as the regular price.
constexpr PromoGridColumn kMemberColumns[] = {
    {"S/L", 800, kAlignKeep},         {"Description", 2200, kAlignKeep}, {"Reg. Price", 825, kAlignRight},
    {"Promo Price", 935, kAlignRight}, {"Starting", 1000, kAlignCenter}, {"Ending", 1000, kAlignCenter},
    {"Type Change", 900, kAlignCenter}, {"Amount", 825, kAlignCenter}};
} // namespace

void gpPromoGrid_columns_set(FlexGrid &grid, std::span<const PromoGridColumn> columns, int firstCol)
{
    int col = firstCol;
    for (const PromoGridColumn &c : columns) {
        grid.setColWidth(col, c.twips);
        if (c.alignment != kAlignKeep)
            grid.setColAlignment(col, c.alignment);
        grid.setTextMatrix(0, col, QString::fromLatin1(c.header));
        ++col;
    }
}

void gpPromoMembers_grid_layout(FlexGrid &grid)
{
    grid.Clear();
    grid.setRows(2);
    grid.setCols(int(std::size(kMemberColumns)));
    gpPromoGrid_columns_set(grid, kMemberColumns);
}

PromoFillProgress::PromoFillProgress(QProgressBar *bar, Outside outside) : m_bar(bar), m_outside(std::move(outside))
{
    m_sinceEvents.start();
}

void PromoFillProgress::start(int max, bool show)
{
    m_bar->setRange(0, max);
    m_bar->setValue(0);
    m_bar->setVisible(show);
}

PromoFillProgress::~PromoFillProgress()
{
    m_bar->setValue(std::min(m_value, m_bar->maximum()));
    m_bar->hide();
}

void PromoFillProgress::step(int value)
{
    m_value = value;
    if (m_sinceEvents.elapsed() < kEventsEveryMs)
        return;
    m_bar->setValue(std::min(value, m_bar->maximum()));
    const auto events = [] { QCoreApplication::processEvents(); };
    if (m_outside)
        m_outside(events);
    else
        events();
    m_sinceEvents.restart();
}

void gpPromoButtons_follow(bool bHasRows, std::initializer_list<QPushButton *> buttons)
{
    for (QPushButton *b : buttons)
        b->setEnabled(bHasRows);
}

void gpTagLink_show(QWidget *parent)
{
    frmTags_Print tags(parent);
    gfiForm_show_modal(tags);
}

} // namespace qln
