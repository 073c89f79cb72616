#include "lookup/InventoryPick.h"

#include "lookup/frm_Lookup.h"
#include "platform/ModalRunner.h"

namespace qln {

namespace {

// The lookup of the inventory as a finder; iEntryCol 1 gives the quantity column.
void mpFinder_set(int iEntryCol)
{
    iLookupFile = 1;
    bFindMode = true;
    sVendorFilter.clear();
    iVendorMode = 1;
    iFirstCol = iEntryCol;
    bUpcMode = bDeptMode = bWildcard = false;
    iSortField2 = -1;
}

} // namespace

QString gfsInventory_Pick()
{
    mpFinder_set(0);
    frm_Lookup form;
    gfiForm_show_modal(form);
    return form.sLookupResult;
}

QStringList gfsInventory_PickList()
{
    mpFinder_set(1);
    QStringList keys;
    {
        frm_Lookup form;
        if (gfiForm_show_modal(form) == QDialog::Accepted)
            for (const LookupEntry &entry : std::as_const(gaLookupEntries))
                keys << entry.sSL;
    }
    gaLookupEntries.clear();
    iFirstCol = 0;
    return keys;
}

} // namespace qln
