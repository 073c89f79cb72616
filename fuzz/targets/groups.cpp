#include "FuzzTarget.h"

#include "promo/PromoGroups.h"

#include <QFile>

// Groups.QLN: every group read must write back as a line that reads as the same group.
QLN_FUZZ_TARGET(groups)
{
    using namespace qln;
    const QString file = fuzz::scratchDir() + QStringLiteral("Groups.QLN");
    {
        QFile out(file);
        if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        out.write(fuzz::bytes(data, size));
    }
    QList<PromoGroup> groups;
    if (!gfbGroups_read(file, groups))
        return 0;
    for (const PromoGroup &group : groups) {
        gfsGroup_choice_text(group);
        gfbGroup_code_numeric(group.sCode);
    }
    gfsGroup_codes(groups);
    return 0;
}
