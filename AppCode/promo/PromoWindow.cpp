#include "promo/PromoWindow.h"

#include "lookup/FlexGrid.h"
#include "platform/ModalRunner.h"
#include "promo/frmTags_Print.h"
#include "shell/DataPathChange.h"

#include <QCoreApplication>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>

#include <algorithm>
#include <utility>

namespace qln {

namespace {
constexpr qint64 kEventsEveryMs = 25;
}

namespace {
void mpColumn_header_set(FlexGrid &grid, int col, const PromoGridColumn &c)
{
    if (c.alignment != kAlignKeep)
        grid.setColAlignment(col, c.alignment);
    grid.setTextMatrix(0, col, QString::fromLatin1(c.header));
}
} // namespace

void gpPromoGrid_columns_set(FlexGrid &grid, std::span<const PromoGridColumn> columns, int firstCol)
{
    int col = firstCol;
    for (const PromoGridColumn &c : columns) {
        grid.setColWidth(col, c.twips);
        mpColumn_header_set(grid, col, c);
        ++col;
    }
}

void gpPromoGrid_design_set(FlexGrid &grid, std::span<const PromoGridColumn> columns, std::vector<int> &designTwips,
                            int firstCol)
{
    const size_t end = size_t(firstCol) + columns.size();
    if (designTwips.size() < end)
        designTwips.resize(end, 0);
    int col = firstCol;
    for (const PromoGridColumn &c : columns) {
        designTwips[size_t(col)] = c.twips;
        mpColumn_header_set(grid, col, c);
        ++col;
    }
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

QMenuBar *gfPromoMenu_make(QWidget *form, QPushButton *quit, const std::function<void()> &afterDataPath)
{
    auto *menuBar = new QMenuBar(form);
    QMenu *mnuFile = menuBar->addMenu(QStringLiteral("&File"));
    mnuFile->setObjectName(QStringLiteral("mnuFile"));
    QAction *datapath = mnuFile->addAction(QStringLiteral("&Data Path..."));
    datapath->setObjectName(QStringLiteral("mnuFile_datapath"));
    QAction *exit = mnuFile->addAction(QStringLiteral("E&xit"));
    exit->setObjectName(QStringLiteral("mnuFile_quit"));
    QObject::connect(datapath, &QAction::triggered, form, [afterDataPath] {
        gfbDataPath_change_run();
        afterDataPath();
    });
    QObject::connect(exit, &QAction::triggered, quit, &QPushButton::click);
    return menuBar;
}

} // namespace qln
