#include "lookup/FlexGrid.h"

#include "common/FormLook.h"

#include <QFont>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyle>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace qln {

namespace {

constexpr int kDefaultColWidth = 960;
constexpr int kAlignGeneral = 9;
constexpr quint32 kSystemColour = 0x80000000u;

bool isNumeric(const QString &text)
{
    bool ok = false;
    QLocale::c().toDouble(text.trimmed(), &ok);
    return ok;
}

// Flex alignment codes run left, centre, right in threes, each top, centre, bottom; 9 is
// "general": numbers to the right, texts to the left.
Qt::Alignment qtAlignment(int code, const QString &text)
{
    if (code < 0 || code > 8)
        return Qt::AlignVCenter | (isNumeric(text) ? Qt::AlignRight : Qt::AlignLeft);
    static const Qt::Alignment across[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
    static const Qt::Alignment down[] = {Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom};
    return across[code / 3] | down[code % 3];
}

// The platform's system colours that the grids use, in this palette's terms.
QColor systemColour(int index, const QPalette &palette)
{
    switch (index) {
    case 3:  // inactive caption: the header of the sort column
    case 13: // highlight
        return palette.color(QPalette::Highlight);
    case 5:
        return palette.color(QPalette::Base);
    case 8:
        return palette.color(QPalette::Text);
    case 14:
        return palette.color(QPalette::HighlightedText);
    case 18:
        return palette.color(QPalette::ButtonText);
    default: // 10 active border, 15 button face and the rest of the chrome
        return palette.color(QPalette::Button);
    }
}

QColor oleColour(quint32 colour, const QPalette &palette)
{
    if (colour & kSystemColour)
        return systemColour(int(colour & 0xFF), palette);
    return QColor(int(colour & 0xFF), int((colour >> 8) & 0xFF), int((colour >> 16) & 0xFF));
}

} // namespace

// The view's window on the grid's cells. It keeps the shape it last told the view, so that
// the grid can change underneath while Redraw is off without breaking the model contract.
class FlexModel final : public QAbstractTableModel {
public:
    explicit FlexModel(FlexGrid &grid) : QAbstractTableModel(&grid), m_grid(grid) {}

    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : m_rows; }
    int columnCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : m_cols; }
    QVariant data(const QModelIndex &index, int role) const override
    {
        return index.isValid() ? m_grid.cellData(index.row() + m_offset, index.column(), role) : QVariant();
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal || m_offset == 0)
            return QVariant();
        return m_grid.cellData(0, section, role);
    }
    Qt::ItemFlags flags(const QModelIndex &index) const override
    {
        return index.isValid() ? Qt::ItemIsEnabled : Qt::NoItemFlags;
    }

    int offset() const { return m_offset; }
    QModelIndex cell(int row, int col) const { return index(row - m_offset, col); }

    void rebuild()
    {
        beginResetModel();
        m_offset = m_grid.headerRows();
        m_rows = m_grid.Rows() - m_offset;
        m_cols = m_grid.Cols();
        endResetModel();
    }
    void rowInserted(int row)
    {
        beginInsertRows(QModelIndex(), row - m_offset, row - m_offset);
        ++m_rows;
        endInsertRows();
    }
    void cellsChanged(int firstRow, int firstCol, int lastRow, int lastCol)
    {
        if (firstRow < m_offset)
            emit headerDataChanged(Qt::Horizontal, firstCol, lastCol);
        firstRow = std::max(firstRow, m_offset) - m_offset;
        lastRow = std::min(lastRow - m_offset, m_rows - 1);
        if (firstRow <= lastRow)
            emit dataChanged(index(firstRow, firstCol), index(lastRow, lastCol));
    }

private:
    FlexGrid &m_grid;
    int m_offset = 0;
    int m_rows = 0;
    int m_cols = 0;
};

// Clicks and keys behave as on the flex grid: a click selects the row, arrows move it, and
// every other key goes on to the form.
class FlexView final : public QTableView {
public:
    explicit FlexView(FlexGrid &grid) : QTableView(&grid), m_grid(grid)
    {
        setSelectionMode(NoSelection);
        setSelectionBehavior(SelectRows);
        setEditTriggers(NoEditTriggers);
        setTabKeyNavigation(false);
        setAutoScroll(false);
        setWordWrap(false);
        setCornerButtonEnabled(false);
        setVerticalScrollMode(ScrollPerItem);
        setHorizontalScrollMode(ScrollPerPixel);
        verticalHeader()->hide();
        verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
        horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        horizontalHeader()->setHighlightSections(false);
        horizontalHeader()->setStretchLastSection(false);
    }

    // Geometry questions need the layout that Qt would otherwise do at the next event.
    void layoutNow()
    {
        executeDelayedItemsLayout();
        updateGeometries();
    }

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        const QModelIndex index = indexAt(event->position().toPoint());
        if (event->button() != Qt::LeftButton || !index.isValid())
            return;
        const int row = index.row() + model()->offset();
        m_grid.selectWholeRow(row);
        emit m_grid.cellClicked(row, index.column());
    }
    void mouseDoubleClickEvent(QMouseEvent *event) override
    {
        const QModelIndex index = indexAt(event->position().toPoint());
        if (event->button() == Qt::LeftButton && index.isValid())
            emit m_grid.cellDoubleClicked(index.row() + model()->offset(), index.column());
    }
    void keyPressEvent(QKeyEvent *event) override
    {
        const int first = m_grid.FixedRows();
        const int last = m_grid.Rows() - 1;
        const int page = std::max(1, viewport()->height() / verticalHeader()->defaultSectionSize());
        const int row = std::max(m_grid.Row(), first);
        int target = row;
        switch (event->key()) {
        case Qt::Key_Up: target = row - 1; break;
        case Qt::Key_Down: target = row + 1; break;
        case Qt::Key_PageUp: target = row - page; break;
        case Qt::Key_PageDown: target = row + page; break;
        case Qt::Key_Home: target = first; break;
        case Qt::Key_End: target = last; break;
        default: event->ignore(); return;
        }
        if (last >= first)
            m_grid.moveCurrentRow(std::clamp(target, first, last));
    }
    void focusInEvent(QFocusEvent *event) override
    {
        QTableView::focusInEvent(event);
        viewport()->update(); // HighLight 2 shows the selection only with focus
    }
    void focusOutEvent(QFocusEvent *event) override
    {
        QTableView::focusOutEvent(event);
        viewport()->update();
    }

private:
    FlexModel *model() const { return static_cast<FlexModel *>(QTableView::model()); }

    FlexGrid &m_grid;
};

FlexGrid::FlexGrid(QWidget *parent)
    : QWidget(parent), m_model(new FlexModel(*this)), m_view(new FlexView(*this))
{
    m_cells.resize(2, 2);
    m_colWidth.assign(2, kDefaultColWidth);
    m_colAlignment.assign(2, kAlignGeneral);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    m_view->setModel(m_model);
    setFocusProxy(m_view);
    connect(m_view->horizontalHeader(), &QHeaderView::sectionClicked, this, &FlexGrid::headerClicked);
    rebuildView();
}

// The view goes first: closing it still asks the model, which reads cells of this grid.
FlexGrid::~FlexGrid()
{
    delete m_view;
    delete m_model;
}

QTableView *FlexGrid::view() const { return m_view; }

void FlexGrid::setRows(int rows)
{
    rows = std::max(rows, m_fixedRows);
    if (rows == Rows())
        return;
    m_cells.resize(rows, Cols());
    m_row = std::min(m_row, rows - 1);
    m_rowSel = std::min(m_rowSel, rows - 1);
    shapeChanged();
}

void FlexGrid::setCols(int cols)
{
    cols = std::max(cols, std::max(m_fixedCols, 1));
    if (cols == Cols())
        return;
    m_cells.resize(Rows(), cols);
    m_colWidth.resize(size_t(cols), kDefaultColWidth);
    m_colAlignment.resize(size_t(cols), kAlignGeneral);
    m_col = std::min(m_col, cols - 1);
    m_colSel = std::min(m_colSel, cols - 1);
    shapeChanged();
}

void FlexGrid::setFixedRows(int rows)
{
    rows = std::clamp(rows, 0, Rows());
    if (rows == m_fixedRows)
        return;
    m_fixedRows = rows;
    shapeChanged();
}

void FlexGrid::setFixedCols(int cols)
{
    m_fixedCols = std::clamp(cols, 0, Cols() - 1);
    cellsChanged(0, 0, Rows() - 1, Cols() - 1);
}

void FlexGrid::setRow(int row)
{
    if (row < 0 || row >= Rows())
        return;
    m_row = m_rowSel = row;
    selectionChanged();
}

void FlexGrid::setCol(int col)
{
    if (col < 0 || col >= Cols())
        return;
    m_col = m_colSel = col;
    selectionChanged();
}

void FlexGrid::setRowSel(int row)
{
    if (row < 0 || row >= Rows())
        return;
    m_rowSel = row;
    selectionChanged();
}

void FlexGrid::setColSel(int col)
{
    if (col < 0 || col >= Cols())
        return;
    m_colSel = col;
    selectionChanged();
}

void FlexGrid::selectWholeRow(int row)
{
    setRow(row);
    setCol(m_fixedCols);
    setColSel(Cols() - 1);
}

int FlexGrid::TopRow() const
{
    m_view->layoutNow();
    return m_view->verticalScrollBar()->value() + headerRows();
}

void FlexGrid::setTopRow(int row)
{
    if (row < headerRows() || row >= Rows())
        return;
    m_view->layoutNow();
    m_view->verticalScrollBar()->setValue(row - headerRows());
}

bool FlexGrid::RowIsVisible(int row) const
{
    if (row < 0 || row >= Rows())
        return false;
    if (row < headerRows())
        return true;
    m_view->layoutNow();
    const int viewRow = row - m_model->offset();
    const int top = m_view->rowViewportPosition(viewRow);
    const int height = m_view->rowHeight(viewRow);
    return height > 0 && top >= 0 && top + height <= m_view->viewport()->height();
}

void FlexGrid::moveCurrentRow(int row)
{
    selectWholeRow(row);
    if (RowIsVisible(row))
        return;
    if (row < TopRow()) {
        setTopRow(row);
        return;
    }
    for (int col = 0; col < Cols(); ++col) {
        if (!m_view->isColumnHidden(col)) {
            m_view->scrollTo(m_model->cell(row, col), QAbstractItemView::PositionAtBottom);
            return;
        }
    }
}

void FlexGrid::setTextMatrix(int row, int col, const QString &text)
{
    if (row < 0 || row >= Rows() || col < 0 || col >= Cols())
        return;
    m_cells.setText(row, col, text);
    cellsChanged(row, col, row, col);
}

template <typename Apply>
void FlexGrid::applyToCells(Apply apply)
{
    int firstRow = m_row, lastRow = m_row, firstCol = m_col, lastCol = m_col;
    if (m_fillStyle == 1) {
        firstRow = std::min(m_row, m_rowSel);
        lastRow = std::max(m_row, m_rowSel);
        firstCol = std::min(m_col, m_colSel);
        lastCol = std::max(m_col, m_colSel);
    }
    for (int r = firstRow; r <= lastRow; ++r)
        for (int c = firstCol; c <= lastCol; ++c)
            apply(r, c);
    cellsChanged(firstRow, firstCol, lastRow, lastCol);
}

void FlexGrid::setText(const QString &text)
{
    applyToCells([&](int r, int c) { m_cells.setText(r, c, text); });
}

void FlexGrid::AddItem(const QString &item, int index)
{
    const int row = (index < 0 || index > Rows()) ? Rows() : index;
    m_cells.insertRow(row, item);
    if (!m_redraw || row < headerRows())
        shapeChanged();
    else
        m_model->rowInserted(row);
}

void FlexGrid::Clear()
{
    m_cells.clear();
    cellsChanged(0, 0, Rows() - 1, Cols() - 1);
}

void FlexGrid::Refresh() { m_view->viewport()->update(); }

void FlexGrid::setSort(int code)
{
    m_cells.sort(std::max(std::min(m_row, m_rowSel), m_fixedRows), std::max(m_row, m_rowSel),
                 std::min(m_col, m_colSel), std::max(m_col, m_colSel), code);
    shapeChanged();
}

int FlexGrid::ColWidth(int col) const
{
    return col >= 0 && col < Cols() ? m_colWidth[size_t(col)] : 0;
}

void FlexGrid::setColWidth(int col, int twips)
{
    if (col < 0 || col >= Cols())
        return;
    m_colWidth[size_t(col)] = std::max(twips, 0);
    applyColumn(col);
}

int FlexGrid::ColAlignment(int col) const
{
    return col >= 0 && col < Cols() ? m_colAlignment[size_t(col)] : kAlignGeneral;
}

void FlexGrid::setColAlignment(int col, int alignment)
{
    if (col < 0 || col >= Cols())
        return;
    m_colAlignment[size_t(col)] = alignment;
    cellsChanged(0, col, Rows() - 1, col);
}

int FlexGrid::RowHeight(int row) const
{
    if (row < headerRows())
        return m_headerHeight > 0 ? m_headerHeight : toTwips(m_view->horizontalHeader()->sizeHint().height());
    const int twips = m_cells.rowHeight(row);
    return twips >= 0 ? twips : toTwips(m_view->verticalHeader()->defaultSectionSize());
}

void FlexGrid::setRowHeight(int row, int twips)
{
    if (row < 0 || row >= Rows())
        return;
    if (row < headerRows()) {
        m_headerHeight = twips;
        m_view->horizontalHeader()->setFixedHeight(toPixels(twips));
        return;
    }
    m_cells.setRowHeight(row, twips);
    if (m_redraw && row - m_model->offset() < m_model->rowCount())
        m_view->setRowHeight(row - m_model->offset(), toPixels(twips));
    else
        shapeChanged();
}

int FlexGrid::toPixels(int twips) const { return gfiTwips_toPixels(twips, this); }

int FlexGrid::toTwips(int pixels) const { return gfiPixels_toTwips(pixels, this); }

int FlexGrid::Width() const { return toTwips(width()); }

int FlexGrid::Height() const { return toTwips(height()); }

int FlexGrid::ClientWidth() const
{
    const int scrollBar = m_view->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, m_view);
    return toTwips(std::max(0, width() - 2 * m_view->frameWidth() - scrollBar));
}

void FlexGrid::setWidth(int twips) { resize(toPixels(twips), height()); }

void FlexGrid::setHeight(int twips) { resize(width(), toPixels(twips)); }

void FlexGrid::setWordWrap(bool on)
{
    m_wordWrap = on;
    m_view->setWordWrap(on);
    cellsChanged(0, 0, 0, Cols() - 1);
}

void FlexGrid::setHighLight(int mode)
{
    m_highLight = mode;
    selectionChanged();
}

void FlexGrid::setRedraw(bool on)
{
    if (on == m_redraw)
        return;
    m_redraw = on;
    m_view->setUpdatesEnabled(on);
    if (!on)
        return;
    if (m_stale)
        rebuildView();
    else
        m_model->cellsChanged(0, 0, Rows() - 1, Cols() - 1);
    syncCurrentCell();
}

int FlexGrid::CellAlignment() const { return currentFormat().alignment.value_or(ColAlignment(m_col)); }

void FlexGrid::setCellAlignment(int alignment)
{
    applyToCells([&](int r, int c) { m_cells.formatRef(r, c).alignment = alignment; });
}

quint32 FlexGrid::CellBackColor() const
{
    const bool fixed = m_row < m_fixedRows || m_col < m_fixedCols;
    return currentFormat().backColor.value_or(kSystemColour | (fixed ? 15u : 5u));
}

void FlexGrid::setCellBackColor(quint32 colour)
{
    applyToCells([&](int r, int c) { m_cells.formatRef(r, c).backColor = colour; });
}

quint32 FlexGrid::CellForeColor() const
{
    const bool fixed = m_row < m_fixedRows || m_col < m_fixedCols;
    return currentFormat().foreColor.value_or(kSystemColour | (fixed ? 18u : 8u));
}

void FlexGrid::setCellForeColor(quint32 colour)
{
    applyToCells([&](int r, int c) { m_cells.formatRef(r, c).foreColor = colour; });
}

bool FlexGrid::CellFontBold() const { return currentFormat().bold.value_or(font().bold()); }

void FlexGrid::setCellFontBold(bool bold)
{
    applyToCells([&](int r, int c) { m_cells.formatRef(r, c).bold = bold; });
}

double FlexGrid::CellFontSize() const { return currentFormat().fontSize.value_or(font().pointSizeF()); }

void FlexGrid::setCellFontSize(double points)
{
    applyToCells([&](int r, int c) { m_cells.formatRef(r, c).fontSize = points; });
}

bool FlexGrid::isSelected(int row, int col) const
{
    return row >= std::min(m_row, m_rowSel) && row <= std::max(m_row, m_rowSel)
        && col >= std::min(m_col, m_colSel) && col <= std::max(m_col, m_colSel);
}

bool FlexGrid::highlightShown() const
{
    return m_highLight == 1 || (m_highLight == 2 && m_view->hasFocus());
}

int FlexGrid::alignmentCode(int row, int col) const
{
    return m_cells.format(row, col).alignment.value_or(ColAlignment(col));
}

QVariant FlexGrid::cellData(int row, int col, int role) const
{
    const bool fixed = row < m_fixedRows || col < m_fixedCols;
    const bool highlighted = !fixed && highlightShown() && isSelected(row, col);
    const FlexCellFormat &format = m_cells.format(row, col);
    const QPalette &palette = m_view->palette();
    switch (role) {
    case Qt::DisplayRole:
        return m_cells.text(row, col);
    case Qt::TextAlignmentRole: {
        Qt::Alignment alignment = qtAlignment(alignmentCode(row, col), m_cells.text(row, col));
        if (m_wordWrap && row < headerRows())
            alignment |= Qt::Alignment(Qt::TextWordWrap);
        return QVariant::fromValue(alignment);
    }
    case Qt::BackgroundRole:
        if (highlighted)
            return palette.brush(QPalette::Highlight);
        if (format.backColor)
            return QBrush(oleColour(*format.backColor, palette));
        if (fixed && row >= headerRows())
            return palette.brush(QPalette::Button);
        return QVariant();
    case Qt::ForegroundRole:
        if (highlighted)
            return palette.brush(QPalette::HighlightedText);
        if (format.foreColor)
            return QBrush(oleColour(*format.foreColor, palette));
        return QVariant();
    case Qt::FontRole: {
        if (!format.bold && !format.fontSize)
            return QVariant();
        QFont cellFont = m_view->font();
        if (format.bold)
            cellFont.setBold(*format.bold);
        if (format.fontSize)
            cellFont.setPointSizeF(*format.fontSize);
        return cellFont;
    }
    default:
        return QVariant();
    }
}

void FlexGrid::cellsChanged(int firstRow, int firstCol, int lastRow, int lastCol)
{
    if (m_redraw && !m_stale)
        m_model->cellsChanged(firstRow, firstCol, lastRow, lastCol);
}

void FlexGrid::shapeChanged()
{
    m_stale = true;
    if (m_redraw)
        rebuildView();
}

void FlexGrid::selectionChanged()
{
    if (!m_redraw)
        return;
    m_view->viewport()->update();
    syncCurrentCell();
}

void FlexGrid::rebuildView()
{
    m_model->rebuild();
    m_view->horizontalHeader()->setVisible(headerRows() > 0);
    for (int col = 0; col < Cols(); ++col)
        applyColumn(col);
    for (int row = headerRows(); row < Rows(); ++row)
        if (m_cells.rowHeight(row) >= 0)
            m_view->setRowHeight(row - headerRows(), toPixels(m_cells.rowHeight(row)));
    m_stale = false;
    syncCurrentCell();
}

void FlexGrid::applyColumn(int col)
{
    if (col >= m_model->columnCount())
        return;
    const int twips = m_colWidth[size_t(col)];
    if (twips > 0)
        m_view->setColumnWidth(col, toPixels(twips));
    m_view->setColumnHidden(col, twips == 0);
}

// The view's current cell carries the focus frame, as the flex grid's current cell does.
void FlexGrid::syncCurrentCell()
{
    const QModelIndex current = m_row >= headerRows() ? m_model->cell(m_row, m_col) : QModelIndex();
    m_view->selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
}

void FlexGrid::headerClicked(int col)
{
    if (m_allowBigSelection && Rows() > m_fixedRows) {
        setRow(m_fixedRows);
        setRowSel(Rows() - 1);
        setCol(col);
    }
    syncCurrentCell();
    emit cellClicked(0, col);
}

} // namespace qln
