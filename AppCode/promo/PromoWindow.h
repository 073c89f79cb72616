#pragma once
#include <QElapsedTimer>
#include <QString>

#include <functional>
#include <initializer_list>
#include <span>
#include <vector>

class QMenuBar;
class QProgressBar;
class QPushButton;
class QWidget;

// What the sibling promo list windows do alike with their controls: lay out the grid from a
// table, fill it with a progress bar while the window stays alive, follow the rows found with
// their buttons, open the tag link.
namespace qln {

class FlexGrid;

// One column of a list grid: its header, its width in twips and its alignment (flex codes;
// kAlignKeep leaves the column's alignment as it is).
struct PromoGridColumn {
    const char *header;
    int twips;
    int alignment;
};
constexpr int kAlignKeep = -1, kAlignCenter = 4, kAlignRight = 7;

// Sets header, width and alignment of the columns from firstCol on, one for each entry.
void gpPromoGrid_columns_set(FlexGrid &grid, std::span<const PromoGridColumn> columns, int firstCol = 0);

// For a window whose columns are scaled to the grid's width: header and alignment go to the
// grid, the twips to the design widths the scaling reads (grown as needed).
void gpPromoGrid_design_set(FlexGrid &grid, std::span<const PromoGridColumn> columns, std::vector<int> &designTwips,
                            int firstCol = 0);

// The progress bar and the window's events of a long fill. The bar shows only when the fill
// is long; events run a few times a frame rather than after every row, so that a large list
// does not spend its time drawing a bar that moved by less than a pixel. `outside` runs the
// events (a read transaction steps aside for them). The bar is hidden at the end.
class PromoFillProgress {
public:
    using Outside = std::function<void(const std::function<void()> &events)>;
    explicit PromoFillProgress(QProgressBar *bar, Outside outside = {});
    ~PromoFillProgress();
    PromoFillProgress(const PromoFillProgress &) = delete;
    PromoFillProgress &operator=(const PromoFillProgress &) = delete;

    // A bar from 0 to max, shown or not.
    void start(int max, bool show);
    void step(int value);

private:
    QProgressBar *m_bar;
    Outside m_outside;
    QElapsedTimer m_sinceEvents;
    int m_value = 0;
};

// The edit and print buttons of a list follow whether its last fill found rows.
void gpPromoButtons_follow(bool bHasRows, std::initializer_list<QPushButton *> buttons);

// The tag link, modal over the list window.
void gpTagLink_show(QWidget *parent);

// The File menu of a list window: "&Data Path..." changes the data path, then runs
// afterDataPath whatever came of it; "E&xit" presses quit.
QMenuBar *gfPromoMenu_make(QWidget *form, QPushButton *quit, const std::function<void()> &afterDataPath);

} // namespace qln
