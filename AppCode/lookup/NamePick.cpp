#include "lookup/NamePick.h"

#include "common/ProcessState.h"
#include "lookup/frm_Lookup.h"
#include "platform/ModalRunner.h"
#include "store/Database.h"
#include "store/Names.h"

namespace qln {

QString gfsName_Pick()
{
    gpNames_Open(kNamesTable, gsDataPath);
    if (!gfbDB_TableOpen(kNamesTable))
        return QString();
    iLookupFile = kNamesTable;
    bFindMode = true;
    sVendorFilter.clear();
    iVendorMode = 1;
    iFirstCol = 0;
    bUpcMode = bDeptMode = bWildcard = false;
    iSortField2 = -1;
    QString code;
    {
        frm_Lookup form;
        gfiForm_show_modal(form);
        code = form.sLookupResult;
    }
    // The item lookups that follow expect their own file.
    iLookupFile = 1;
    return code;
}

} // namespace qln
