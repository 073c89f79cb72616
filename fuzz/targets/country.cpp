#include "FuzzTarget.h"

#include "common/ProcessState.h"
#include "config/Country.h"

#include <QFile>

// Country.set as found in a data path. The first byte picks the country asked for.
QLN_FUZZ_TARGET(country)
{
    using namespace qln;
    if (size == 0)
        return 0;
    gsDataPath = fuzz::scratchDir();
    gsAppPath = fuzz::scratchDir() + QStringLiteral("no-program-folder/");
    {
        QFile out(gsDataPath + QStringLiteral("Country.set"));
        if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        out.write(fuzz::bytes(data + 1, size - 1));
    }
    gsTaxChangeDate.clear();
    QString taxLabel;
    gpCountry_settings_load(1 + data[0] % 8, taxLabel);
    fuzz::require(taxLabel.size() >= 3, "the tax label is padded to three characters");
    return 0;
}
