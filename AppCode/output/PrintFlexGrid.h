#pragma once
#include "output/PrintState.h"

#include <QString>
#include <QStringList>

class QWidget;

namespace qln {

class FlexGrid;
class frmSMPRNT_PREVIEW;

// Renders the grid into the preview's document after the header state was set: fixed
// columns repeat on each page of columns, hidden columns drop out, a grid too wide for portrait
// turns the page, and with bPrintSplitColumns one too wide for landscape goes on over more
// pages. bDirect prints at once, iCopies times. A non-blank sExportFile also receives the
// table as CSV.
void gpPrint_FlexGrid(frmSMPRNT_PREVIEW &preview, const FlexGrid &grid, int iKeepCol, int iSpare, bool bDirect,
                      int iCopies, bool bNoLines, const QString &sExportFile);

// What a list window's "Print List" does: the head goes into the state, the grid into a
// preview, and the preview is shown.
void gpPrint_List(const FlexGrid &grid, const PrintHead &head, QWidget *parent = nullptr);

// Lines of text printed as they stand in a fixed-pitch font of `points`, one page after another.
void gpPrint_Lines(const QStringList &lines, const PrintHead &head, int points, QWidget *parent = nullptr);

} // namespace qln
