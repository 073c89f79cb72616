#include "shell/Tables.h"

#include "common/ProcessState.h"
#include "promo/PromoPricing.h"
#include "store/Common.h"
#include "store/Database.h"
#include "store/Departments.h"
#include "store/Inventory.h"
#include "store/MatrixGroups.h"
#include "store/MtxItem.h"
#include "store/Notes.h"
#include "store/RecordOps.h"
#include "store/Upc.h"

namespace qln {

namespace {
constexpr int kTableCount = 8;
constexpr int kPromoFieldCount = 12;
} // namespace

bool gfbTables_open()
{
    giDBTableCount = kTableCount;
    gfbDB_Init();
    gpCommon_Open(kCommonTable, gsDataPath);
    if (!gfbDB_TableOpen(kCommonTable) || !gfbCommon_Read())
        return false;
    gpTables_register();
    return true;
}

void gpTables_register()
{
    gpInventory_Open(kInventoryTable, gsDataPath, gsStore);
    gpNotes_Open(kNotesTable, gsDataPath);
    gpUpc_Open(kUpcTable, gsDataPath);
    gpPromo_table_register(kPromoTable, gsDataPath);
    gpDept_Open(kDeptTable, gsDataPath);
    gpMatrixGroups_Open(kMatrixGroupsTable, gsDataPath);
    gpMtxItem_Open(kMtxItemTable, gsDataPath);
}

bool gfbTables_recordsets_open(int iFirst)
{
    bool result = true;
    for (int iTable = iFirst; iTable < kTableCount; ++iTable) {
        if (!gfbDB_TableOpen(iTable)) {
            result = false;
            break;
        }
    }
    const Recordset *promos = dbaRecordset[kPromoTable].get();
    if (promos && promos->fieldCount() < kPromoFieldCount)
        gfbPromo_upgrade(kPromoTable, gfiDB_RecordCount(kPromoTable));
    return result;
}

void gpTables_close()
{
    // The connection stays open for the life of the process; closing only looks at the flags.
    for (DbTable &table : dbuaTable)
        if (table.bOpen)
            table.bOpen = false;
}

bool gfbAllTables_position()
{
    for (int iTable = 0; iTable < kTableCount; ++iTable)
        if (!gfbDB_RecordOp(iTable, kOpGetFirst, -1))
            return false;
    return true;
}

} // namespace qln
