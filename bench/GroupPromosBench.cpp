// Members added to a group promo in one pass of the lookup, against the same rows written by
// hand-made inserts in one transaction.
#include "BenchDataSet.h"

#include "lookup/DataGridState.h"
#include "lookup/FlexGrid.h"
#include "platform/Clock.h"
#include "platform/ModalRunner.h"
#include "promo/PromoGroups.h"
#include "promo/PromoPricing.h"
#include "promo/frmGroup.h"
#include "store/Database.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"
#include "support/ScriptedMessages.h"

#include <QDialog>
#include <QPushButton>
#include <QSqlError>
#include <QSqlQuery>
#include <benchmark/benchmark.h>

using namespace qln;

namespace {

constexpr int kGroup = 12;

struct Member {
    QString sl;
    qint32 recordNum;
};

int members() { return qEnvironmentVariableIsSet("QUILLON_BENCH_MEMBERS") ? qEnvironmentVariableIntValue("QUILLON_BENCH_MEMBERS") : 500; }

// Items spread over the inventory, and the group's file entry.
const QList<Member> &memberItems()
{
    static const QList<Member> items = [] {
        QList<Member> list;
        if (!bench::gfbDemo_open())
            return list;
        gfbGroups_write(gfsGroups_file(), {{QString::number(kGroup), QStringLiteral("Bench Group")}});
        QSqlQuery q(dbConnection().database());
        const int step = qMax(1, gfiDB_RecordCount(kInventoryTable) / (members() * 2));
        if (!q.exec(QStringLiteral("SELECT SL, RecordNum FROM ") + dbuaTable[kInventoryTable].sSqlFile +
                    QStringLiteral(" WHERE Status <> 'D' ORDER BY RecordNum")))
            return list;
        for (int i = 0; q.next() && list.size() < members(); ++i)
            if (i % step == 0)
                list << Member{q.value(0).toString(), q.value(1).toInt()};
        return list;
    }();
    return items;
}

void groupRowsClear() { gfiDB_Execute(QStringLiteral("DELETE FROM PromoPrices WHERE GroupID = ") + QString::number(kGroup)); }

void groupPromoSet()
{
    gGroupPromo = PromoPriceRecord();
    gGroupPromo.GroupID = kGroup;
    gGroupPromo.Store = 1;
    gGroupPromo.StartDate = QDateTime(Clock::today(), QTime(0, 0));
    gGroupPromo.EndDate = gGroupPromo.StartDate.addDays(30);
    gGroupPromo.ChangeType = kChangeByPercent;
    gGroupPromo.PriceChange = Money::fromWhole(15);
}

// The window with an empty group; the lookup hands back every member at once, as a user who
// typed a quantity for each would.
void BM_GroupMembersAdd(benchmark::State &state)
{
    const QList<Member> &items = memberItems();
    if (items.size() < members())
        return state.SkipWithError("no data set");
    groupRowsClear();
    test::ScriptedMessages boxes;
    boxes.answer(MsgAnswer::Yes); // "Add Items?"
    ScopedModalScript script([&](QDialog &form) {
        if (form.objectName() != QLatin1String("frm_Lookup")) {
            // The editor asked for at the first choice of an empty group: cancelled.
            form.findChild<QPushButton *>(QStringLiteral("cmdAcceptCancel(1)"))->click();
            return;
        }
        gaLookupEntries.clear();
        for (const Member &m : items)
            gaLookupEntries.append({m.sl, QStringLiteral("1")});
        form.accept();
    });
    frmGroup form;
    form.show();
    groupPromoSet();
    auto *add = form.findChild<QPushButton *>(QStringLiteral("CmdAddItem"));
    for (auto _ : state)
        add->click();
    state.counters["rows"] = gfiDB_RecordCount(kPromoTable, QStringLiteral("PromoPrices WHERE GroupID = 12"));
    state.counters["gridRows"] = form.findChild<FlexGrid *>(QStringLiteral("fgrdItems"))->Rows() - 1;
    if (boxes.shown().size() != 1)
        state.SkipWithError(boxes.texts().join(QLatin1Char('|')).toUtf8().constData());
    groupRowsClear();
}

// The same rows by prepared inserts in one transaction.
void BM_GroupMembersInsertByHand(benchmark::State &state)
{
    const QList<Member> &items = memberItems();
    if (items.size() < members())
        return state.SkipWithError("no data set");
    groupRowsClear();
    groupPromoSet();
    QSqlDatabase db = dbConnection().database();
    QSqlQuery q(db);
    for (auto _ : state) {
        qint32 unique = gfiPromo_UniqueID_next(kPromoTable);
        db.transaction();
        q.prepare(QStringLiteral("INSERT INTO PromoPrices (Store, SL, Dept, StartDate, EndDate, ChangeDate, PriceChange, ChangeType, "
                                 "Poll, GroupID, Invuid, UniqueID) VALUES (?, ?, ' ', ?, ?, ?, ?, ?, ' ', ?, ?, ?)"));
        for (const Member &m : items) {
            q.addBindValue(gGroupPromo.Store);
            q.addBindValue(m.sl);
            q.addBindValue(gGroupPromo.StartDate.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
            q.addBindValue(gGroupPromo.EndDate.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
            q.addBindValue(gGroupPromo.StartDate.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
            q.addBindValue(gGroupPromo.PriceChange.toPlainText());
            q.addBindValue(gGroupPromo.ChangeType);
            q.addBindValue(kGroup);
            q.addBindValue(m.recordNum);
            q.addBindValue(unique++);
            if (!q.exec())
                return state.SkipWithError(q.lastError().text().toUtf8().constData());
        }
        db.commit();
    }
    state.counters["rows"] = gfiDB_RecordCount(kPromoTable, QStringLiteral("PromoPrices WHERE GroupID = 12"));
    groupRowsClear();
}

} // namespace

BENCHMARK(BM_GroupMembersInsertByHand)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_GroupMembersAdd)->Unit(benchmark::kMillisecond)->Iterations(1);
