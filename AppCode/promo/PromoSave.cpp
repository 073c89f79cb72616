#include "promo/PromoSave.h"

#include "platform/Clock.h"
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

bool gfbItemPromo_save(bool bAdd, const PromoEntry &entry) { return gfbItemPromo_write(bAdd, entry) && gfbItemPromo_flag_set(); }

bool gfbDeptPromo_save(bool bAdd, const PromoEntry &entry)
{
    PromoPriceRecord &p = gPromo;
    p.StartDate = midnight(entry.start);
    p.EndDate = midnight(entry.end);
    p.Dept = gDept.DeptCode;
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
