#include "promo/PromoMembers.h"

#include "platform/Clock.h"
#include "platform/Recordset.h"
#include "promo/PromoGroups.h"
#include "promo/PromoList.h"
#include "store/Database.h"
#include "store/RecordOps.h"

#include <QStringList>

namespace qln {

namespace {
constexpr qsizetype kNumbersPerRead = 400;
}

bool gfbMembers_rows_read(int iGroupID, QList<PromoPriceRecord> &rows)
{
    return gfbPromo_rows_read(gfsGroup_rows_sql(iGroupID), rows);
}

bool gfbMembers_items_read(const QList<qint32> &recordNums, QHash<qint32, InventoryRecord> &items)
{
    items.clear();
    for (qsizetype first = 0; first < recordNums.size(); first += kNumbersPerRead) {
        QStringList numbers;
        for (qint32 n : recordNums.mid(first, kNumbersPerRead))
            numbers << QString::number(n);
        const QString sql = QStringLiteral("SELECT * FROM ") + dbuaTable[kInventoryTable].sSqlFile +
                            QStringLiteral(" WHERE RecordNum IN (") + numbers.join(QLatin1Char(',')) + QLatin1Char(')');
        gDBErr().clear();
        if (!gfbDB_RecordOp(kInventoryTable, kOpBySQL, 0, false, false, sql)) {
            if (gDBErr().isSet())
                return false;
            continue;
        }
        Recordset &set = *dbaRecordset[kInventoryTable];
        for (set.moveFirst(); !set.eof(); set.moveNext()) {
            gpDB_table_row_to_record(kInventoryTable);
            items.insert(gInventory.RecordNum, gInventory);
        }
    }
    return true;
}

void gpMember_shared_take(PromoPriceRecord &row, const PromoPriceRecord &shared)
{
    row.ChangeDate = QDateTime(Clock::today(), QTime(0, 0));
    row.ChangeType = shared.ChangeType;
    row.StartDate = shared.StartDate;
    row.EndDate = shared.EndDate;
    row.PriceChange = shared.PriceChange;
}

} // namespace qln
