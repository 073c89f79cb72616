#include "promo/PromoSave.h"

#include "common/ProcessState.h"
#include "platform/Clock.h"
#include "platform/Messages.h"
#include "promo/PromoPricing.h"
#include "store/Common.h"
#include "store/Departments.h"
#include "store/Inventory.h"
#include "store/RecordOps.h"

namespace qln {

namespace {
QDateTime midnight(const QDate &date) { return QDateTime(date, QTime(0, 0)); }
} // namespace

bool gfbItemPromo_write(bool bAdd, const PromoEntry &entry)
{
    PromoPriceRecord &p = gPromo;
    p.SL = gInventory.SL;
    p.Invuid = gInventory.RecordNum;
    p.StartDate = midnight(entry.start);
    p.EndDate = midnight(entry.end);
    p.Dept = QString(11, QLatin1Char(' '));
    p.ChangeDate = midnight(Clock::today());
    p.ChangeType = entry.changeType;
    p.PriceChange = entry.amount;
    p.Store = gCommon.StoreNumber;
    p.Poll = QStringLiteral("Y");
    if (p.UniqueID == 0)
        p.UniqueID = gfiPromo_UniqueID_next(kPromoTable);
    return gfbDB_RecordOp(kPromoTable, bAdd ? kOpInsert : kOpUpdate, 2);
}

bool gfbItemPromo_flag_set()
{
    if (!gfbDB_RecordOp(kInventoryTable, kOpEqual, 0))
        return true;
    gInventory.FlgPromoPrice = QStringLiteral("Y");
    return gfbDB_RecordOp(kInventoryTable, kOpUpdate, 0);
}

PromoSaveEnd gfeItemPromo_save(bool bAdd, const PromoEntry &entry)
{
    if (!gfbItemPromo_write(bAdd, entry))
        return PromoSaveEnd::RowRefused;
    return gfbItemPromo_flag_set() ? PromoSaveEnd::Saved : PromoSaveEnd::FlagRefused;
}

void gpPromoSave_tell(PromoSaveEnd end, bool bAdd)
{
    if (end == PromoSaveEnd::Saved)
        return;
    // An insert leaves its reason in gsDBLastError, an update on the error object.
    QString reason = (bAdd && end == PromoSaveEnd::RowRefused ? gsDBLastError : gDBErr().description).trimmed();
    if (!reason.isEmpty())
        reason = QStringLiteral("\r\r") + reason;
    if (end == PromoSaveEnd::RowRefused) {
        gfiMsgBox((bAdd ? QStringLiteral("Promo not inserted") : QStringLiteral("Promo not updated")) + reason, MsgButtons::OK,
                  MsgIcon::None, kProgramName);
        return;
    }
    gfiMsgBox(QStringLiteral("The promo was saved, but the item could not be marked as having a promo.") + reason,
              MsgButtons::OK, MsgIcon::Exclamation, kProgramName);
}

bool gfbDeptPromo_save(bool bAdd, const PromoEntry &entry)
{
    PromoPriceRecord &p = gPromo;
    p.StartDate = midnight(entry.start);
    p.EndDate = midnight(entry.end);
    p.Dept = gDept.DeptCode;
    // A department row has no item; the buffer may still hold the SL of the last item read.
    p.SL = QString(8, QLatin1Char(' ')); // the column's width, as a cleared buffer has it
    p.ChangeDate = midnight(Clock::today());
    p.Invuid = 0;
    p.ChangeType = entry.changeType;
    p.PriceChange = entry.amount;
    p.Store = gCommon.StoreNumber;
    p.Poll = QStringLiteral("Y");
    if (p.UniqueID == 0)
        p.UniqueID = gfiPromo_UniqueID_next(kPromoTable);
    return gfbDB_RecordOp(kPromoTable, bAdd ? kOpInsert : kOpUpdate, 3);
}

} // namespace qln
