// The All Items list of the demo set printed to PDF against the same rows written as CSV by
// the same service, with the memory each takes at its peak.
#include "BenchDataSet.h"

#include "common/ProcessState.h"
#include "lookup/FlexGrid.h"
#include "output/PrintFlexGrid.h"
#include "output/frmSMPRNT_PREVIEW.h"
#include "promo/frmMain.h"
#include "support/ScriptedMessages.h"

#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <memory>

using namespace qln;

namespace {

// The window in its All Items face, filled once for the run.
FlexGrid *allItemsGrid()
{
    static std::unique_ptr<frmMain> form;
    if (!form) {
        if (!bench::gfbDemo_open())
            return nullptr;
        gbItemMode = false;
        form = std::make_unique<frmMain>();
        form->show();
        form->findChild<QPushButton *>(QStringLiteral("CmdViewAll"))->click();
    }
    return form->findChild<FlexGrid *>(QStringLiteral("fgrdItems"));
}

qint64 statusKb(const char *field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n'))
        if (line.startsWith(field))
            return line.mid(qsizetype(qstrlen(field)) + 1).trimmed().split(' ').value(0).toLongLong();
    return 0;
}

// Starts a fresh peak of resident memory for the process.
void peakReset()
{
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    if (clear.open(QIODevice::WriteOnly))
        clear.write("5");
}

void printList(benchmark::State &state, bool pdf, const QString &company = QString())
{
    FlexGrid *grid = allItemsGrid();
    if (!grid)
        return state.SkipWithError("no data set");
    test::ScriptedMessages boxes;
    PrintHead head = gfPrintHead_store(frmMain::kAllItemsCaption.trimmed());
    if (!company.isEmpty())
        head.company = company;
    gpPrint_head_set(head);
    QTemporaryDir dir;
    const QString file = dir.filePath(pdf ? QStringLiteral("list.pdf") : QStringLiteral("list.csv"));
    qint64 growthKb = 0, peakKb = 0;
    int pages = 0;
    for (auto _ : state) {
        const qint64 before = statusKb("VmRSS:");
        peakReset();
        frmSMPRNT_PREVIEW preview;
        gpPrint_FlexGrid(preview, *grid, -1, 0, false, 1, false, pdf ? QString() : file);
        QString error;
        if (pdf && !preview.engine().writePdf(file, error))
            return state.SkipWithError(error.toUtf8().constData());
        pages = preview.engine().pageCount();
        peakKb = std::max(peakKb, statusKb("VmHWM:"));
        growthKb = std::max(growthKb, peakKb - before);
    }
    state.counters["rows"] = grid->Rows() - 1;
    state.counters["pages"] = pages;
    state.counters["file_MB"] = double(QFile(file).size()) / (1 << 20);
    // The process's resident peak during the print (grid and window included), and its rise
    // over the resident size before it.
    state.counters["peak_MB"] = double(peakKb) / 1024;
    state.counters["peak_growth_MB"] = double(growthKb) / 1024;
    if (!boxes.shown().isEmpty())
        state.SkipWithError(boxes.texts().join(QLatin1Char('|')).toUtf8().constData());
}

// The baseline: the list's rows as CSV.
void BM_AllItemsList_Csv(benchmark::State &state) { printList(state, false); }
void BM_AllItemsList_Pdf(benchmark::State &state) { printList(state, true); }
// A letter outside Latin-1 in the header sends the list through the general PDF writer.
void BM_AllItemsList_PdfGeneral(benchmark::State &state) { printList(state, true, QStringLiteral("Łódź Market")); }

} // namespace

BENCHMARK(BM_AllItemsList_Csv)->Unit(benchmark::kMillisecond)->Iterations(1)->MeasureProcessCPUTime();
BENCHMARK(BM_AllItemsList_Pdf)->Unit(benchmark::kMillisecond)->Iterations(1)->MeasureProcessCPUTime();
BENCHMARK(BM_AllItemsList_PdfGeneral)->Unit(benchmark::kMillisecond)->Iterations(1)->MeasureProcessCPUTime();
