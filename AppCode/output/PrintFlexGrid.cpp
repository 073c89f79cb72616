#include "output/PrintFlexGrid.h"

#include "lookup/FlexGrid.h"
#include "output/PrintEngine.h"
#include "output/PrintTable.h"
#include "output/frmSMPRNT_PREVIEW.h"
#include "platform/Messages.h"
#include "platform/ModalRunner.h"

#include <QCoreApplication>

#include <algorithm>
#include <QElapsedTimer>

namespace qln {

namespace {

constexpr qint64 kEventsEveryMs = 50;

class FlexGridSource final : public PrintGridSource {
public:
    explicit FlexGridSource(const FlexGrid &grid) : m_grid(grid) {}
    int rows() const override { return m_grid.Rows(); }
    int cols() const override { return m_grid.Cols(); }
    int fixedRows() const override { return m_grid.FixedRows(); }
    int fixedCols() const override { return m_grid.FixedCols(); }
    QString text(int row, int col) const override { return m_grid.TextMatrix(row, col); }
    int colWidth(int col) const override { return std::max(0, m_grid.ColWidth(col)); }
    int colAlignment(int col) const override { return m_grid.ColAlignment(col); }

private:
    const FlexGrid &m_grid;
};

} // namespace

void gpPrint_FlexGrid(frmSMPRNT_PREVIEW &preview, const FlexGrid &grid, int iKeepCol, int, bool bDirect, int iCopies,
                      bool bNoLines, const QString &sExportFile)
{
    PrintEngine &engine = preview.engine();
    preview.mpDocument_clear();
    const FlexGridSource source(grid);
    if (bDirect)
        engine.setCopies(std::max(1, iCopies));

    const int total = gfiPrint_TotalWidth(source);
    engine.setLandscape(total > PrintEngine::kPageShort - 2 * PrintEngine::kMarginSide);
    const int available = engine.availableWidth();
    iPrintLastCol = grid.Cols() - 1;
    if (bPrintSplitColumns && total > available)
        iPrintLastCol = gfiGrid_LastColumnOnPage(source, grid.FixedCols(), available);

    engine.setHeader(gfsPrint_Header());
    engine.setFooter(gfsPrint_Footer());
    engine.setHeadLines(gsaPrint_HeadLines);
    engine.setLines(!bNoLines);

    QElapsedTimer sinceEvents;
    sinceEvents.start();
    const auto tick = [&sinceEvents] {
        if (sinceEvents.elapsed() < kEventsEveryMs)
            return;
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        sinceEvents.restart();
    };
    int firstCol = grid.FixedCols();
    for (;;) {
        const std::vector<int> columns = gfPrint_PageColumns(source, firstCol, iPrintLastCol);
        sPrintColumnFormat = gfsPrint_ColumnFormat(source, columns, iKeepCol, available);
        sPrintHeadRow = gfsPrint_HeadRow(source, columns);
        engine.addTable(PrintTable(sPrintColumnFormat, sPrintHeadRow, gfsPrint_Body(source, columns, tick)));
        if (iPrintLastCol >= grid.Cols() - 1)
            break;
        firstCol = iPrintLastCol + 1;
        iPrintLastCol = gfiGrid_LastColumnOnPage(source, firstCol, available);
    }
    preview.mpDocument_ended();

    if (!sExportFile.trimmed().isEmpty())
        if (const std::optional<QString> error = engine.exportCsv(sExportFile))
            gfiMsgBox(QStringLiteral("Unable to write ") + sExportFile + QStringLiteral(": ") + *error,
                      MsgButtons::OK, MsgIcon::Exclamation, QStringLiteral("Export"));
    if (bDirect)
        preview.mpPrint_direct();
}

void gpPrint_List(const FlexGrid &grid, const PrintHead &head, QWidget *parent)
{
    gpPrint_head_set(head);
    frmSMPRNT_PREVIEW preview(parent);
    gpPrint_FlexGrid(preview, grid, -1, 0, false, 1, false, QString());
    gfiForm_show_modal(preview);
}

void gpPrint_Lines(const QStringList &lines, const PrintHead &head, int points, QWidget *parent)
{
    gpPrint_head_set(head);
    frmSMPRNT_PREVIEW preview(parent);
    preview.mpDocument_clear();
    PrintEngine &engine = preview.engine();
    engine.setHeader(gfsPrint_Header());
    engine.setFooter(gfsPrint_Footer());
    engine.setHeadLines(gsaPrint_HeadLines);
    engine.setLines(false);
    engine.addTable(PrintTable::lines(lines, engine.availableWidth()), points, true);
    preview.mpDocument_ended();
    gfiForm_show_modal(preview);
}

} // namespace qln
