#include "promo/PromoPurge.h"

#include "common/Confirm.h"
#include "common/ProcessState.h"
#include "platform/Clock.h"
#include "platform/Messages.h"
#include "promo/PromoList.h"
#include "store/Common.h"
#include "store/RecordOps.h"
#include "store/StatementLog.h"

namespace qln {

namespace {

constexpr int kNoAnswer = 0;

// The polling question of a head-office data set; kNoAnswer where it isn't asked.
int mfiPolling_answer()
{
    if (!gfbCompany_head_office())
        return kNoAnswer;
    return int(gfiMsgBox(QStringLiteral("Do you poll Promo Prices to Stores?"), MsgButtons::YesNo, MsgIcon::None,
                         QStringLiteral("Purging Promo's")));
}

// With polling: live rows are to become tombstones (a statement the server refuses, so they
// stay as they are) and polled tombstones go with every row of their item.
void mpTombstones_make(const QList<PromoPriceRecord> &rows, bool bSpacedWhere)
{
    for (const PromoPriceRecord &row : rows) {
        gPromo = row;
        if (row.ChangeType != kChangeDeleted)
            gpPromo_tombstone_request(row, bSpacedWhere);
        else if (row.Poll.trimmed().isEmpty())
            gfiDB_Execute(gfsPromo_item_delete_sql(row.Invuid));
    }
}

QString mfsToday() { return gfsDate_server_text(Clock::today()); }

} // namespace

void gpPromo_tombstone_request(const PromoPriceRecord &row, bool bSpacedWhere)
{
    gPromo = row;
    gPromo.ChangeType = kChangeDeleted;
    gPromo.ChangeDate = Clock::now();
    gfiDB_Execute(gfsPromo_tombstone_sql(gfsNow_text(), row.Invuid, bSpacedWhere));
}

PurgeEnd gfePromo_item_purge(const QString &sSL)
{
    if (!gfbConfirm(QStringLiteral("Do you want to purge?"),
                    QStringLiteral("This operation purges any expired promos for the current item.")))
        return PurgeEnd::NotConfirmed;
    gPromo.SL = sSL;
    const int answer = mfiPolling_answer();
    QList<PromoPriceRecord> rows;
    gfbPromo_rows_read(QStringLiteral("SELECT * FROM PromoPrices WHERE enddate < '") + mfsToday() +
                           QStringLiteral("' AND SL = '") + gPromo.SL + QLatin1Char('\''),
                       rows);
    if (rows.isEmpty())
        return PurgeEnd::NothingFound;
    if (answer == kNoAnswer) {
        // The polling answer this purge needs is only asked in a head-office data set.
        gfiMsgBox(QStringLiteral("Expired promos of one item can only be purged in a head office data set.\r\r"
                                 "No promo was changed. Use \"F7  Purge All Expired Promos\" instead."),
                  MsgButtons::OK, MsgIcon::Exclamation, kProgramName);
        return PurgeEnd::StoreModeStopped;
    }
    if (answer != int(MsgAnswer::Yes)) {
        for (const PromoPriceRecord &row : rows)
            gfiDB_Execute(gfsPromo_item_delete_sql(row.Invuid));
    } else {
        mpTombstones_make(rows, true);
    }
    return PurgeEnd::Done;
}

PurgeEnd gfePromo_all_purge(const std::function<void()> &onConfirmed)
{
    if (!gfbConfirm(QStringLiteral("Do you want to purge?"), QStringLiteral("This operation purges expired promos from all items.")))
        return PurgeEnd::NotConfirmed;
    if (onConfirmed)
        onConfirmed();
    const int answer = mfiPolling_answer();
    const QString where = QStringLiteral(" WHERE (enddate < '") + mfsToday() + QStringLiteral("' or  changetype =99) AND SL > ' '");
    QList<PromoPriceRecord> rows;
    gfbPromo_rows_read(QStringLiteral("SELECT * FROM PromoPrices") + where, rows);
    if (rows.isEmpty())
        return PurgeEnd::NothingFound;
    if (answer != int(MsgAnswer::Yes)) {
        gfiDB_Execute(QStringLiteral("Delete from PromoPrices") + where);
        gfiMsgBox(QString::number(rows.size()) + QStringLiteral(" Promo(s) Purged"), MsgButtons::OK, MsgIcon::Information,
                  kProgramName);
    } else {
        mpTombstones_make(rows, false);
    }
    return PurgeEnd::Done;
}

} // namespace qln
