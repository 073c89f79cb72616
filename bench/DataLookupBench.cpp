// The data lookup in its items mode: every item read and shown at once, against one
// hand-written query that reads the same rows and columns.
#include "BenchDataSet.h"

#include "lookup/FlexGrid.h"
#include "lookup/frmDataLookup.h"
#include "store/Database.h"
#include "store/Inventory.h"
#include "store/Upc.h"
#include "support/ScriptedMessages.h"

#include <QSqlError>
#include <QSqlQuery>
#include <benchmark/benchmark.h>

using namespace qln;

namespace {

void BM_DataLookupItemsQuery(benchmark::State &state)
{
    if (!bench::gfbDemo_open())
        return state.SkipWithError("no data set");
    QSqlQuery q(dbConnection().database());
    q.setForwardOnly(true);
    const QString sql = QStringLiteral(
        "SELECT i.Description, i.QtyOnHand, i.OnOrder, i.ItemID, i.SL, i.SubDescription, u.upc, i.VendorCode, i.Cost "
        "FROM %1 i LEFT JOIN %2 u ON i.RecordNum = u.InvUID WHERE i.NonDecrement <> 'Y' AND i.Kit <> 'Y' "
        "AND i.Status = ' ' AND i.SubDescription <> 'MATRIX ROOT' ORDER BY i.ItemID")
        .arg(dbuaTable[kInventoryTable].sSqlFile, dbuaTable[kUpcTable].sSqlFile);
    int rows = 0;
    for (auto _ : state) {
        if (!q.exec(sql))
            return state.SkipWithError(q.lastError().text().toUtf8().constData());
        rows = 0;
        while (q.next()) {
            for (int c = 0; c < 9; ++c)
                benchmark::DoNotOptimize(q.value(c).toString());
            ++rows;
        }
    }
    state.counters["rows"] = rows;
}

// The window made, filled, sorted on Description and shown, as a caller opens it.
void BM_DataLookupItemsWindow(benchmark::State &state)
{
    if (!bench::gfbDemo_open())
        return state.SkipWithError("no data set");
    test::ScriptedMessages boxes;
    int rows = 0;
    for (auto _ : state) {
        frmDataLookup form(5, QStringLiteral("OPEN"));
        form.show();
        rows = form.findChild<FlexGrid *>(QStringLiteral("fgrdItems"))->Rows() - 1;
    }
    state.counters["rows"] = rows;
    if (!boxes.shown().isEmpty())
        state.SkipWithError(boxes.texts().join(QLatin1Char('|')).toUtf8().constData());
}

} // namespace

BENCHMARK(BM_DataLookupItemsQuery)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DataLookupItemsWindow)->Unit(benchmark::kMillisecond);
