#include "FuzzTarget.h"

#include "config/ProfileFile.h"

#include <QFile>

// A profile (INI) file as any editor could have left it: every section and key is read back,
// then a value written into it must read back as written.
QLN_FUZZ_TARGET(profile)
{
    using namespace qln;
    const QString file = fuzz::scratchDir() + QStringLiteral("fuzz.ini");
    {
        QFile out(file);
        if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        out.write(fuzz::bytes(data, size));
    }
    QString sections;
    GetPrivateProfileString(std::nullopt, std::nullopt, QString(), sections, 4096, file);
    for (const QString &section : sections.split(QChar(0), Qt::SkipEmptyParts)) {
        QString keys;
        GetPrivateProfileString(section, std::nullopt, QString(), keys, 4096, file);
        for (const QString &key : keys.split(QChar(0), Qt::SkipEmptyParts)) {
            QString value;
            GetPrivateProfileString(section, key, QStringLiteral("none"), value, 256, file);
        }
    }
    if (!WritePrivateProfileString(QStringLiteral("Fuzz Section"), QStringLiteral("Fuzz Key"), QStringLiteral("written"), file))
        return 0;
    QString back;
    GetPrivateProfileString(QStringLiteral("Fuzz Section"), QStringLiteral("Fuzz Key"), QString(), back, 64, file);
    fuzz::require(back == QLatin1String("written"), "a written value reads back");
    return 0;
}
