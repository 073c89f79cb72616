#include "lookup/InventoryPick.h"

#include "lookup/frm_Lookup.h"
#include "platform/ModalRunner.h"

namespace qln {

QString gfsInventory_Pick()
{
    iLookupFile = 1;
    bFindMode = true;
    sVendorFilter.clear();
    iVendorMode = 1;
    iFirstCol = 0;
    bUpcMode = bDeptMode = bWildcard = false;
    iSortField2 = -1;
    frm_Lookup form;
    gfiForm_show_modal(form);
    return form.sLookupResult;
}

} // namespace qln
