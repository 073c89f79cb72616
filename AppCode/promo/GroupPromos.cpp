#include "promo/GroupPromos.h"

#include "common/Confirm.h"
#include "common/ItemNumber.h"
#include "platform/Clock.h"
#include "platform/Messages.h"
#include "promo/GroupMembers.h"
#include "promo/PromoList.h"
#include "store/Common.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"

namespace qln {

namespace {

QDateTime mfdToday() { return QDateTime(Clock::today(), QTime(0, 0)); }

bool mfbTombstone_polled(const PromoPriceRecord &row)
{
    return row.ChangeType == kChangeDeleted && row.Poll == QLatin1String("Y");
}

} // namespace

int gfiGroupMembers_add(const QStringList &slKeys, QList<PromoPriceRecord> &rows)
{
    int handled = 0;
    for (const QString &sl : slKeys) {
        ++handled;
        PromoPriceRecord entry = gGroupPromo;
        entry.SL = sl;
        entry.Invuid = gfiInventory_BySL(sl, false) == -1 ? gInventory.RecordNum : 0;
        entry.ChangeDate = mfdToday();
        rows << entry;
        gPromo = entry;
        if (gfbDB_RecordOp(kPromoTable, kOpEqual, 5)) {
            gfiMsgBox(QStringLiteral("Item with SL ") + sl + QStringLiteral("already exists in this Group."), MsgButtons::OK,
                      MsgIcon::None, QStringLiteral("Not Inserted"));
            rows.removeLast();
            continue;
        }
        gPromo.UniqueID = gfiPromo_UniqueID_next(kPromoTable);
        gPromo.StartDate = mfdToday(); // the list keeps the group's date
        if (!gfbDB_RecordOp(kPromoTable, kOpInsert, 5))
            gfiMsgBox(QStringLiteral("Item with SL ") + sl + QStringLiteral(" not inserted"), MsgButtons::OK, MsgIcon::None,
                      QStringLiteral("Database Error"));
    }
    return handled;
}

void gpGroupMembers_change(QList<PromoPriceRecord> &rows)
{
    for (PromoPriceRecord &entry : rows) {
        gPromo.Invuid = entry.Invuid;
        gPromo.StartDate = entry.StartDate;
        if (gfbDB_RecordOp(kPromoTable, kOpEqual, 8)) {
            gpGroupPromo_values_apply(gPromo);
            gfbGroupMember_update(8);
            entry = gPromo;
        }
        gfbDB_RecordOp(kPromoTable, kOpEqual, 5);
    }
}

QString gfsGroupMember_delete_sql(const QDate &end, int iGroupID, const QString &sSL)
{
    return QStringLiteral("DELETE FROM PromoPrices WHERE enddate = '") + gfsDate_server_text(end) + QStringLiteral("' AND groupid =") +
           QString::number(iGroupID) + QStringLiteral(" AND SL ='") + sSL + QLatin1Char('\'');
}

MemberDeleteEnd gfeGroupMember_delete(int iGroupID, const QString &sSLShown, const QDate &end)
{
    gPromo.GroupID = iGroupID;
    gPromo.EndDate = QDateTime(end, QTime(0, 0));
    gPromo.SL = gfsItemID_key(sSLShown);
    if (!gfbConfirm(QStringLiteral("Are you sure you want to delete ") + sSLShown.trimmed() + QLatin1Char('?'),
                    QStringLiteral("Ready To Delete")))
        return MemberDeleteEnd::NotConfirmed;
    const auto unable = [] { gfiMsgBox(QStringLiteral("Unable to delete promo"), MsgButtons::OK, MsgIcon::None, QStringLiteral("Error")); };
    if (!gfbDB_RecordOp(kPromoTable, kOpEqual, 5)) {
        unable();
        return MemberDeleteEnd::NotFound;
    }
    gPromo.ChangeType = kChangeDeleted;
    gPromo.ChangeDate = mfdToday();
    // Only a blank is a single store here: "N" takes the head office's way.
    if (gCommon.MultiStore.trimmed().isEmpty()) {
        if (gfiDB_Execute(gfsGroupMember_delete_sql(gPromo.EndDate.date(), gPromo.GroupID, gPromo.SL)) == 0) {
            gfiMsgBox(QStringLiteral("Error Unable to delete promo"), MsgButtons::OK, MsgIcon::None, QStringLiteral("Error"));
            return MemberDeleteEnd::NotDeleted;
        }
        return MemberDeleteEnd::Deleted;
    }
    gPromo.Poll = QStringLiteral("Y");
    if (!gfbDB_RecordOp(kPromoTable, kOpUpdate, 5)) {
        unable();
        return MemberDeleteEnd::NotFound;
    }
    return MemberDeleteEnd::Marked;
}

QString gfsGroupPurge_sql(int iGroupID) { return QStringLiteral("DELETE FROM COMMON WHERE groupid =") + QString::number(iGroupID); }

bool gfbGroupPromos_purge(int iGroupID)
{
    if (!gfbConfirm(QStringLiteral("Do you want to purge?"),
                    QStringLiteral("This operation purges any expired promos for the current group.")))
        return false;
    const QDate today = Clock::today();
    gPromo.GroupID = iGroupID;
    gPromo.EndDate = mfdToday();
    if (!gfbDB_RecordOp(kPromoTable, kOpLessEqual, 4))
        return true;
    if (gPromo.GroupID == iGroupID &&
        (gPromo.EndDate.date() < today || (gPromo.ChangeType == kChangeDeleted && gPromo.Poll != QLatin1String("Y")))) {
        gfiDB_Execute(gfsGroupPurge_sql(iGroupID));
        return true;
    }
    while (gPromo.GroupID == iGroupID) {
        if (!mfbTombstone_polled(gPromo)) {
            if (gPromo.EndDate.date() >= today)
                break;
            gPromo.ChangeType = kChangeDeleted;
            gPromo.ChangeDate = mfdToday();
            gPromo.Poll = QStringLiteral("Y");
            gfbDB_RecordOp(kPromoTable, kOpUpdate, 5);
        }
        if (!gfbDB_RecordOp(kPromoTable, kOpGetPrevious, 4))
            break;
    }
    return true;
}

} // namespace qln
