// The item promos window on a large data set: the All Items face against one hand-written
// join that returns the same rows, and the item face of an item with fifty promos.
#include "BenchDataSet.h"
#include "BenchDelay.h"

#include "common/ProcessState.h"
#include "lookup/FlexGrid.h"
#include "platform/Clock.h"
#include "promo/PromoItems.h"
#include "promo/PromoPricing.h"
#include "promo/frmMain.h"
#include "store/Database.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"
#include "support/ScriptedMessages.h"

#include <QCheckBox>
#include <QPushButton>
#include <benchmark/benchmark.h>

using namespace qln;

namespace {

constexpr qint32 kBusyItem = 11; // the first demo item carries the fifty promos

// The run's data set with fifty more promos on one item.
bool openDataSet()
{
    static const bool opened = [] {
        if (!bench::gfbDemo_open())
            return false;
        const QDate today = Clock::today();
        bench::gpPromos_add(50, [&](int i) {
            gPromo.SL = QStringLiteral("10000000"), gPromo.Invuid = kBusyItem, gPromo.Store = 1, gPromo.Poll = QStringLiteral("Y");
            gPromo.StartDate = QDateTime(today.addDays(2 * i), QTime(0, 0));
            gPromo.EndDate = QDateTime(today.addDays(2 * i + 1), QTime(0, 0));
            gPromo.ChangeType = kChangeBy, gPromo.PriceChange = Money::fromWhole(1);
        });
        return true;
    }();
    return opened;
}

// F4 with the items of the promo rows read `batch` rows to a statement (0: one keyed read
// for each row, as the window read them before).
void allItemsFace(benchmark::State &state, int batch)
{
    if (!openDataSet())
        return state.SkipWithError("no data set");
    const bench::DelayedServer delayed(state);
    test::ScriptedMessages boxes;
    gbItemMode = false;
    gpPromoItems_batch_set(batch);
    frmMain form;
    form.show();
    bench::gpClicks_time(state, *form.findChild<QPushButton *>(QStringLiteral("CmdViewAll")),
                         *form.findChild<FlexGrid *>(QStringLiteral("fgrdItems")), boxes);
    gpPromoItems_batch_set(PromoItems::kDefaultBatch);
}

void BM_AllItemsFace(benchmark::State &state) { allItemsFace(state, PromoItems::kDefaultBatch); }
void BM_AllItemsFaceRowByRow(benchmark::State &state) { allItemsFace(state, 0); }

// The same rows by one join: live promos of existing items with their item's fields.
void BM_AllItemsJoin(benchmark::State &state)
{
    if (!openDataSet())
        return state.SkipWithError("no data set");
    const bench::DelayedServer delayed(state);
    const QString sql = QStringLiteral(
        "SELECT p.*, i.SL, i.Description, i.Price, i.PriceIncTax FROM PromoPrices p JOIN %1 i ON i.RecordNum = p.Invuid "
        "WHERE p.Invuid > 10 AND p.EndDate >= ? AND p.ChangeType <> 99").arg(dbuaTable[kInventoryTable].sSqlFile);
    bench::gpQuery_time(state, sql, 16);
}

void BM_ItemFace50Promos(benchmark::State &state)
{
    if (!openDataSet())
        return state.SkipWithError("no data set");
    const bench::DelayedServer delayed(state);
    test::ScriptedMessages boxes;
    gbItemMode = true;
    gsSL = QStringLiteral("10000000");
    frmMain form;
    form.show();
    auto *expired = form.findChild<QCheckBox *>(QStringLiteral("chkExpired"));
    for (auto _ : state)
        expired->click(); // each click refills the item's list
    gbItemMode = false;
}

} // namespace

BENCHMARK(BM_AllItemsJoin)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_AllItemsFace)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_AllItemsFaceRowByRow)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_ItemFace50Promos)->Unit(benchmark::kMillisecond);
