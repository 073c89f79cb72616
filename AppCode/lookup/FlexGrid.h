#pragma once
#include "lookup/FlexCells.h"

#include <QWidget>

#include <vector>

class QTableView;

namespace qln {

class FlexModel;
class FlexView;

// A grid with the flex grid's programming model over a QTableView. Rows and columns count
// from 0 and row 0 is the header (shown as the view's header while FixedRows is at least 1);
// widths and heights are in twips (FormLook.h); colours are OLE colours (FlexCells.h).
// Setting Row or Col also sets RowSel or ColSel; FillStyle 1 makes Text and the Cell
// properties apply to the whole selection instead of the current cell. While Redraw is off
// the view is told nothing, so a large fill costs no more than filling the vector.
class FlexGrid : public QWidget {
    Q_OBJECT
public:
    explicit FlexGrid(QWidget *parent = nullptr);
    ~FlexGrid() override;

    int Rows() const { return m_cells.rows(); }
    void setRows(int rows);
    int Cols() const { return m_cells.cols(); }
    void setCols(int cols);
    int FixedRows() const { return m_fixedRows; }
    void setFixedRows(int rows);
    int FixedCols() const { return m_fixedCols; }
    void setFixedCols(int cols);

    int Row() const { return m_row; }
    void setRow(int row);
    int Col() const { return m_col; }
    void setCol(int col);
    int RowSel() const { return m_rowSel; }
    void setRowSel(int row);
    int ColSel() const { return m_colSel; }
    void setColSel(int col);
    int TopRow() const;
    void setTopRow(int row);
    bool RowIsVisible(int row) const;

    QString TextMatrix(int row, int col) const { return m_cells.text(row, col); }
    void setTextMatrix(int row, int col, const QString &text);
    QString Text() const { return m_cells.text(m_row, m_col); }
    void setText(const QString &text);
    void AddItem(const QString &item, int index = -1);
    void Clear();
    void Refresh();
    void setSort(int code);

    int ColWidth(int col) const;
    void setColWidth(int col, int twips);
    int ColAlignment(int col) const;
    void setColAlignment(int col, int alignment);
    int RowHeight(int row) const;
    void setRowHeight(int row, int twips);
    int Width() const;
    void setWidth(int twips);
    int Height() const;
    void setHeight(int twips);
    // The width that columns can fill without a horizontal scroll bar, a vertical one
    // counted as shown, so that the fill holds however many rows come.
    int ClientWidth() const;

    bool WordWrap() const { return m_wordWrap; }
    void setWordWrap(bool on);
    int HighLight() const { return m_highLight; }
    void setHighLight(int mode);
    int FillStyle() const { return m_fillStyle; }
    void setFillStyle(int style) { m_fillStyle = style; }
    bool AllowBigSelection() const { return m_allowBigSelection; }
    void setAllowBigSelection(bool on) { m_allowBigSelection = on; }
    bool Redraw() const { return m_redraw; }
    void setRedraw(bool on);

    int CellAlignment() const;
    void setCellAlignment(int alignment);
    quint32 CellBackColor() const;
    void setCellBackColor(quint32 colour);
    quint32 CellForeColor() const;
    void setCellForeColor(quint32 colour);
    bool CellFontBold() const;
    void setCellFontBold(bool bold);
    double CellFontSize() const;
    void setCellFontSize(double points);

    // What a click on a data row does: the row becomes current and is selected across all
    // columns that aren't fixed.
    void selectWholeRow(int row);

    QTableView *view() const;

signals:
    // Row 0 is a click on the header.
    void cellClicked(int row, int col);
    void cellDoubleClicked(int row, int col);

private:
    friend class FlexModel;
    friend class FlexView;

    int headerRows() const { return m_fixedRows > 0 ? 1 : 0; }
    int toPixels(int twips) const;
    int toTwips(int pixels) const;
    QVariant cellData(int row, int col, int role) const;
    bool isSelected(int row, int col) const;
    bool highlightShown() const;
    int alignmentCode(int row, int col) const;
    const FlexCellFormat &currentFormat() const { return m_cells.format(m_row, m_col); }
    template <typename Apply> void applyToCells(Apply apply);

    void cellsChanged(int firstRow, int firstCol, int lastRow, int lastCol);
    void shapeChanged();
    void selectionChanged();
    void rebuildView();
    void applyColumn(int col);
    void syncCurrentCell();
    void headerClicked(int col);
    void moveCurrentRow(int row);

    FlexCells m_cells;
    std::vector<int> m_colWidth;
    std::vector<int> m_colAlignment;
    int m_fixedRows = 1;
    int m_fixedCols = 0;
    int m_row = 1;
    int m_col = 0;
    int m_rowSel = 1;
    int m_colSel = 0;
    int m_headerHeight = 0;
    bool m_wordWrap = false;
    int m_highLight = 1;
    int m_fillStyle = 0;
    bool m_allowBigSelection = false;
    bool m_redraw = true;
    bool m_stale = false;
    FlexModel *m_model;
    FlexView *m_view;
};

} // namespace qln
