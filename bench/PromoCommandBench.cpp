// quillon-promo's work on a large data set, in process: explain of one item against a
// hand-written query and price sum for the same item, and the CSV of every promo against one
// hand-written join that gives the same cells.
#include "BenchDataSet.h"
#include "BenchDelay.h"

#include "common/Csv.h"
#include "platform/Clock.h"
#include "promo/PromoColumns.h"
#include "promo/PromoExplain.h"
#include "promo/PromoListing.h"
#include "promo/PromoReach.h"
#include "store/Database.h"
#include "store/Inventory.h"

#include <QSqlError>
#include <QSqlQuery>
#include <benchmark/benchmark.h>

using namespace qln;

namespace {

// A day with daily promos running on the demo set, a week on.
QDate explainDay() { return Clock::today().addDays(7); }

// Items that carry promos of their own, and plain ones, taken across the table.
const QStringList &sampleSLs()
{
    static const QStringList sls = [] {
        QStringList out;
        QSqlQuery q(dbConnection().database());
        q.exec(QStringLiteral("SELECT SL FROM PromoPrices WHERE Invuid > 10 ORDER BY UniqueID"));
        for (int i = 0; q.next(); ++i)
            if (i % 997 == 0)
                out << q.value(0).toString().trimmed();
        q.exec(QStringLiteral("SELECT SL FROM %1 WHERE RecordNum % 9973 = 0").arg(dbuaTable[kInventoryTable].sSqlFile));
        while (q.next())
            out << q.value(0).toString().trimmed();
        return out;
    }();
    return sls;
}

void BM_Explain(benchmark::State &state)
{
    if (!bench::gfbDemo_open() || sampleSLs().isEmpty())
        return state.SkipWithError("no data set");
    const bench::DelayedServer delayed(state);
    const QDate day = explainDay();
    qsizetype next = 0, promos = 0;
    const quint64 before = dbConnection().statementCount(), sent = bench::gfiRelay_requests();
    for (auto _ : state) {
        PriceExplanation e;
        if (gfePrice_explain(sampleSLs()[next++ % sampleSLs().size()], day, e) != ExplainEnd::Explained)
            return state.SkipWithError("an item was not explained");
        promos += e.promos.size();
        benchmark::DoNotOptimize(e.price());
    }
    state.counters["promos/item"] = benchmark::Counter(double(promos) / double(state.iterations()));
    state.counters["statements/item"] = double(dbConnection().statementCount() - before) / double(state.iterations());
    bench::gpRoundTrips_set(state, bench::gfiRelay_requests() - sent, double(state.iterations()));
}

// The same answer by hand: the item, then the rows that may reach it, priced and compared.
void BM_ExplainBaseline(benchmark::State &state)
{
    if (!bench::gfbDemo_open() || sampleSLs().isEmpty())
        return state.SkipWithError("no data set");
    const bench::DelayedServer delayed(state);
    const QString dayText = explainDay().toString(QStringLiteral("yyyy-MM-dd 00:00:00"));
    QSqlQuery item(dbConnection().database()), promos(dbConnection().database());
    item.prepare(QStringLiteral("SELECT Price, DeptCode, AllowDiscounts FROM %1 WHERE SL = ?").arg(dbuaTable[kInventoryTable].sSqlFile));
    promos.prepare(QStringLiteral("SELECT ChangeType, PriceChange FROM PromoPrices WHERE (GroupID < 0 OR SL = ? OR Dept = ?) "
                                  "AND EndDate >= ? AND StartDate <= ? AND ChangeType <> 99"));
    qsizetype next = 0;
    const quint64 sent = bench::gfiRelay_requests();
    for (auto _ : state) {
        const QString sl = sampleSLs()[next++ % sampleSLs().size()];
        item.addBindValue(sl);
        if (!item.exec() || !item.next())
            return state.SkipWithError(item.lastError().text().toUtf8().constData());
        const Money price = Money::fromVariant(item.value(0));
        promos.addBindValue(sl);
        promos.addBindValue(item.value(1).toString());
        promos.addBindValue(dayText);
        promos.addBindValue(dayText);
        if (!promos.exec())
            return state.SkipWithError(promos.lastError().text().toUtf8().constData());
        Money best = price;
        const bool discountable = item.value(2).toString() != QLatin1String("N");
        while (promos.next())
            if (const auto p = gfcPromo_price_get(price, Money::fromVariant(promos.value(1)), promos.value(0).toInt());
                discountable && p && *p < best)
                best = *p;
        benchmark::DoNotOptimize(best);
    }
    bench::gpRoundTrips_set(state, bench::gfiRelay_requests() - sent, double(state.iterations()));
}

// Every tenth item with its department: the lines of a large import.
const QList<PromoTarget> &manyItems()
{
    static const QList<PromoTarget> items = [] {
        QList<PromoTarget> out;
        QSqlQuery q(dbConnection().database());
        q.setForwardOnly(true);
        q.exec(QStringLiteral("SELECT SL, DeptCode FROM %1 WHERE RecordNum % 10 = 0").arg(dbuaTable[kInventoryTable].sSqlFile));
        while (q.next())
            out << PromoTarget{q.value(0).toString(), q.value(1).toString()};
        return out;
    }();
    return items;
}

// The overlap question of an import, asked for many items at once: the table read and indexed
// once, then each item's week looked up in memory.
void BM_ReachIndexed(benchmark::State &state)
{
    if (!bench::gfbDemo_open() || manyItems().isEmpty())
        return state.SkipWithError("no data set");
    const QDate from = Clock::today(), to = from.addDays(6);
    qsizetype found = 0;
    for (auto _ : state) {
        PromoReachIndex index;
        if (!index.load(from))
            return state.SkipWithError("the table was not read");
        found = 0;
        for (const PromoTarget &item : manyItems())
            found += index.reaching(item, from, to).size();
    }
    state.counters["items"] = double(manyItems().size());
    state.counters["found"] = double(found);
}

// The same question item by item through the one-item read, for the first 2,000 items.
void BM_ReachOneByOne(benchmark::State &state)
{
    if (!bench::gfbDemo_open() || manyItems().isEmpty())
        return state.SkipWithError("no data set");
    const QDate from = Clock::today(), to = from.addDays(6);
    const qsizetype count = qMin<qsizetype>(2000, manyItems().size());
    for (auto _ : state) {
        QList<PromoPriceRecord> rows;
        for (qsizetype i = 0; i < count; ++i)
            gfbPromo_reaching_read(manyItems()[i], from, to, rows);
    }
    state.counters["items"] = double(count);
}

void BM_ListCsv(benchmark::State &state)
{
    if (!bench::gfbDemo_open())
        return state.SkipWithError("no data set");
    qsizetype rows = 0, bytes = 0;
    quint64 statements = 0;
    for (auto _ : state) {
        const quint64 before = dbConnection().statementCount();
        QList<PromoListRow> listed;
        PromoListFilter all;
        all.expired = true;
        if (!gfbPromoListing_read(all, listed))
            return state.SkipWithError("the list was not read");
        QString csv = gfsCsv_line(gfPromoColumns_names());
        for (const PromoListRow &row : listed)
            csv += gfsCsv_line(gfPromoColumns_cells(row.promo, row.kind, row.promoPrice));
        rows = listed.size(), bytes = csv.toUtf8().size();
        statements = dbConnection().statementCount() - before;
    }
    state.counters["rows"] = double(rows);
    state.counters["MB"] = double(bytes) / 1e6;
    state.counters["statements"] = double(statements);
}

// One join gives each row with its item's price; the cells are made by the same code.
void BM_ListCsvBaseline(benchmark::State &state)
{
    if (!bench::gfbDemo_open())
        return state.SkipWithError("no data set");
    QSqlQuery q(dbConnection().database());
    q.setForwardOnly(true);
    const QString sql = QStringLiteral(
        "SELECT p.Store, p.SL, p.Dept, p.StartDate, p.EndDate, p.PriceChange, p.ChangeType, p.Poll, p.GroupID, p.UniqueID, "
        "i.Price FROM PromoPrices p LEFT JOIN %1 i ON i.RecordNum = p.Invuid AND p.Invuid > 0 WHERE p.ChangeType <> 99 "
        "ORDER BY p.StartDate, p.UniqueID").arg(dbuaTable[kInventoryTable].sSqlFile);
    qsizetype rows = 0;
    for (auto _ : state) {
        if (!q.exec(sql))
            return state.SkipWithError(q.lastError().text().toUtf8().constData());
        QString csv = gfsCsv_line(gfPromoColumns_names());
        rows = 0;
        while (q.next()) {
            PromoPriceRecord p;
            p.Store = qint16(q.value(0).toInt()), p.SL = q.value(1).toString(), p.Dept = q.value(2).toString();
            p.StartDate = q.value(3).toDateTime(), p.EndDate = q.value(4).toDateTime();
            p.PriceChange = Money::fromVariant(q.value(5)), p.ChangeType = qint16(q.value(6).toInt());
            p.Poll = q.value(7).toString(), p.GroupID = q.value(8).toInt(), p.UniqueID = q.value(9).toInt();
            const std::optional<PromoKind> kind = gfePromo_kind(p);
            if (!kind)
                continue;
            std::optional<Money> price;
            if (p.ChangeType == kChangeTo)
                price = p.PriceChange;
            else if (!q.value(10).isNull())
                price = gfcPromo_price_get(Money::fromVariant(q.value(10)), p);
            csv += gfsCsv_line(gfPromoColumns_cells(p, *kind, price));
            ++rows;
        }
        benchmark::DoNotOptimize(csv);
    }
    state.counters["rows"] = double(rows);
}

} // namespace

BENCHMARK(BM_ExplainBaseline)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Explain)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReachOneByOne)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_ReachIndexed)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_ListCsvBaseline)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_ListCsv)->Unit(benchmark::kMillisecond)->Iterations(1);
