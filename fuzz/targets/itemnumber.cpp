#include "FuzzTarget.h"

#include "common/ItemNumber.h"

// An item number as a user types it or a scanner sends it.
QLN_FUZZ_TARGET(itemnumber)
{
    using namespace qln;
    const QString typed = QString::fromUtf8(fuzz::bytes(data, size));
    const QString shown = gfsItemID_normalise(typed);
    gfsItemID_key(shown);
    gfsItemID_display(typed);
    gfsItemID_key(typed);
    gfsItemID_format(typed, false);
    gfsItemID_format(typed, true);
    return 0;
}
