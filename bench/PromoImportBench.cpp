// 100,000 item promos added from a file as the import verb adds them (read, checked, overlaps
// found, written in one transaction), against the same rows and item flags written by one
// prepared insert and one prepared update in one transaction.
#include "BenchDataSet.h"

#include "common/Csv.h"
#include "platform/Clock.h"
#include "platform/Connection.h"
#include "promo/PromoImport.h"
#include "store/Common.h"
#include "store/Database.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"

#include <QSqlError>
#include <QSqlQuery>
#include <benchmark/benchmark.h>

using namespace qln;

namespace {

const int kPromos = qEnvironmentVariableIsSet("QUILLON_BENCH_IMPORT_PROMOS") ? qEnvironmentVariableIntValue("QUILLON_BENCH_IMPORT_PROMOS")
                                                                             : 100000;
const QDate kStart(2031, 1, 5);

struct Item {
    qint32 recordNum;
    QString sl;
};

// Items that take discounts, one promo each, starting after the demo's own promos.
const QList<Item> &items()
{
    static const QList<Item> chosen = [] {
        QList<Item> list;
        if (!bench::gfbDemo_open())
            return list;
        QSqlQuery q(dbConnection().database());
        if (!q.exec(QStringLiteral("SELECT RecordNum, SL FROM %1 WHERE AllowDiscounts <> 'N' AND Price > 0 ORDER BY RecordNum LIMIT %2")
                        .arg(dbuaTable[kInventoryTable].sSqlFile)
                        .arg(kPromos)))
            return list;
        while (q.next())
            list << Item{q.value(0).toInt(), q.value(1).toString()};
        return list;
    }();
    return chosen;
}

QByteArray file()
{
    QString text = gfsCsv_line({QStringLiteral("Kind"), QStringLiteral("Store"), QStringLiteral("SL"), QStringLiteral("Dept"),
                                QStringLiteral("GroupID"), QStringLiteral("StartDate"), QStringLiteral("EndDate"),
                                QStringLiteral("ChangeType"), QStringLiteral("PriceChange"), QStringLiteral("PromoPrice"),
                                QStringLiteral("Poll"), QStringLiteral("UniqueID")});
    const QString start = kStart.toString(Qt::ISODate), end = kStart.addDays(6).toString(Qt::ISODate);
    for (const Item &item : items())
        text += QStringLiteral("item,1,%1,,0,%2,%3,2,10,,Y,0\r\n").arg(item.sl.trimmed(), start, end);
    return text.toUtf8();
}

// The highest UniqueID of the data set before the run.
qint32 baseline()
{
    static const qint32 highest = gfiPromo_UniqueID_next(kPromoTable) - 1;
    return highest;
}

// Back to the data set as it was: no promo of the run, and the items' flags cleared.
void reset()
{
    QSqlDatabase &db = dbConnection().database();
    db.transaction();
    gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices WHERE UniqueID > %1").arg(baseline()));
    QSqlQuery q(db);
    q.exec(QStringLiteral("UPDATE %1 SET FlgPromoPrice = ' ' WHERE RecordNum >= %2 AND RecordNum <= %3 AND AllowDiscounts <> 'N'")
               .arg(dbuaTable[kInventoryTable].sSqlFile)
               .arg(items().first().recordNum)
               .arg(items().last().recordNum));
    db.commit();
}

int written() { return gfiDB_RecordCount(kPromoTable, QStringLiteral("PromoPrices WHERE UniqueID > %1").arg(baseline())); }

void BM_PromoImport(benchmark::State &state)
{
    if (items().size() != kPromos)
        return state.SkipWithError("no data set");
    const QByteArray bytes = file();
    for (auto _ : state) {
        state.PauseTiming();
        reset();
        state.ResumeTiming();
        PromoAddition addition;
        addition.lines_take(gfCsv_read(bytes));
        QList<PromoAddition::Overlap> overlaps;
        QString error;
        if (!addition.check() || addition.refused() || !addition.overlaps_find(overlaps) || !addition.write(error))
            return state.SkipWithError((QStringLiteral("import refused: ") + error).toUtf8().constData());
    }
    state.counters["rows"] = written();
    reset();
}

// The same rows with the numbers and values the import gives them, and the same flags.
void BM_PromoImportBulkByHand(benchmark::State &state)
{
    if (items().size() != kPromos)
        return state.SkipWithError("no data set");
    for (auto _ : state) {
        state.PauseTiming();
        reset();
        state.ResumeTiming();
        QSqlDatabase &db = dbConnection().database();
        db.transaction();
        qint32 next = gfiPromo_UniqueID_next(kPromoTable);
        QSqlQuery insert(db), flag(db);
        insert.prepare(QStringLiteral("INSERT INTO PromoPrices VALUES(?,?,?,?,?,?,?,?,?,?,?,?)"));
        flag.prepare(QStringLiteral("UPDATE %1 SET FlgPromoPrice = 'Y' WHERE RecordNum = ?").arg(dbuaTable[kInventoryTable].sSqlFile));
        // Dates as the program's statements leave them in the table.
        const QString start = kStart.toString(QStringLiteral("yyyy-MM-dd 00:00:00")),
                      end = kStart.addDays(6).toString(QStringLiteral("yyyy-MM-dd 00:00:00")),
                      today = Clock::today().toString(QStringLiteral("yyyy-MM-dd 00:00:00"));
        for (const Item &item : items()) {
            for (const QVariant &v : {QVariant(gCommon.StoreNumber), QVariant(item.sl), QVariant(QStringLiteral("           ")),
                                      QVariant(start), QVariant(end), QVariant(today), QVariant(QStringLiteral("10")), QVariant(2),
                                      QVariant(QStringLiteral("Y")), QVariant(0), QVariant(item.recordNum), QVariant(next++)})
                insert.addBindValue(v);
            flag.addBindValue(item.recordNum);
            if (!insert.exec() || !flag.exec())
                return state.SkipWithError(insert.lastError().text().toUtf8().constData());
        }
        db.commit();
    }
    state.counters["rows"] = written();
    reset();
}

} // namespace

BENCHMARK(BM_PromoImportBulkByHand)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_PromoImport)->Unit(benchmark::kMillisecond)->Iterations(1);
