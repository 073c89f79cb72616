#include "shell/StartOptions.h"

#include "common/Numbers.h"
#include "common/Options.h"
#include "common/ProcessState.h"
#include "common/Text.h"

#include <cmath>
#include <limits>

namespace qln {

namespace {

enum FamilyOption { kStation = 3, kStationPath = 4, kSalesCode = 6, kSL = 7 };
constexpr int kSLWidth = 8;

QString option(const QString &sCommandLine, const char *key)
{
    return gfsField_read(sCommandLine, QString::fromLatin1(key), QStringLiteral("/"));
}

// The platform's assignment to a 32-bit integer: to the nearest, halves to even. Where the
// original stops on an overflow, a number out of range counts as none.
qint32 toInt32(double value)
{
    const double rounded = std::nearbyint(value);
    if (rounded < std::numeric_limits<qint32>::min() || rounded > std::numeric_limits<qint32>::max())
        return 0;
    return qint32(rounded);
}

} // namespace

QString gfsDataPath_option_get(const QString &sCommandLine)
{
    const QString key = QStringLiteral("/DATAPATH=");
    const qsizetype at = sCommandLine.indexOf(key);
    if (at < 0)
        return QString();
    const qsizetype start = at + key.size();
    const qsizetype end = sCommandLine.indexOf(QLatin1String(" /"), start);
    return gfsText_rtrim(sCommandLine.mid(start, end < 0 ? -1 : end - start));
}

void gpStartOptions_read(const QString &sCommandLine)
{
    if (!sCommandLine.isEmpty()) {
        gsDataPath = gfsDataPath_option_get(sCommandLine);
        const QString invUid = option(sCommandLine, "/InvUID=");
        if (invUid.isEmpty())
            gsSL = gfsCommandLine_option_get(kSL, sCommandLine);
        else
            glInvUID = toInt32(gfdNumber_value(invUid));
        gsDept = option(sCommandLine, "/Dept=");
        gsStation = gfsCommandLine_option_get(kStation, sCommandLine);
        gsStationPath = gfsCommandLine_option_get(kStationPath, sCommandLine);
        gsSalesCode = gfsCommandLine_option_get(kSalesCode, sCommandLine);
        gbItemMode = option(sCommandLine, "/ITEM=") == QLatin1String("I");
        // The inventory program may hand over a key without its last, blank, character.
        if (glInvUID < 1 && gsSL.size() == kSLWidth - 1)
            gsSL += QLatin1Char(' ');
    }
    if (gsStation.trimmed().isEmpty())
        gsStation = QStringLiteral("1");
    gbTraining = gsDataPath.toUpper() == QLatin1String("C:\\TRAINING");
}

} // namespace qln
