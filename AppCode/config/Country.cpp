#include "config/Country.h"

#include "common/AnsiText.h"
#include "common/Files.h"
#include "common/Numbers.h"
#include "common/ProcessState.h"
#include "common/Text.h"
#include "platform/Messages.h"

#include <QFile>
#include <QStringList>
#include <cmath>

namespace qln {

namespace {

const QString kFileName = QStringLiteral("/Country.set");
const QString kNumberTag = QStringLiteral("[CountryNumber]");
const QString kNameTag = QStringLiteral("[CountryName]");
const QString kSectionTag = QStringLiteral("[Country]");

QString countryFilePath() { return gsDataPath + kFileName; }

// The file is trusted: a number that doesn't read matches no country.
bool isCountry(const QString &number, int iCountry)
{
    bool ok = false;
    const int value = number.trimmed().toInt(&ok);
    return ok && value == iCountry;
}

QString textBehind(const QString &line, const QString &tag)
{
    const qsizetype at = line.indexOf(tag);
    return at < 0 ? QString() : line.mid(at + tag.size());
}

void noteTaxChangeDate(const QString &line, int iCountry)
{
    if (!gsTaxChangeDate.isEmpty())
        return;
    if (isCountry(gfsField_read(line, kNumberTag, QStringLiteral("[")), iCountry)
        && textBehind(line, kNameTag) == QLatin1String("New Zealand"))
        gsTaxChangeDate = QStringLiteral("20101001");
}

QStringList readLines(QFile &file)
{
    QStringList lines = gfsAnsi_decode(file.readAll()).split(QLatin1Char('\n'));
    for (QString &line : lines)
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    return lines;
}

// The platform's assignment of a number to a 16-bit integer: to the nearest, halves to even. A
// number beyond its range (the platform's overflow) leaves the value as it was.
void assignInt16(qint16 &target, double value)
{
    const double rounded = std::nearbyint(value);
    if (rounded >= -32768.0 && rounded <= 32767.0)
        target = qint16(rounded);
}

} // namespace

QString gfsCountry_value_get(int iCountry, const QString &sKey)
{
    const QString path = countryFilePath();
    const QString shipped = gsAppPath + kFileName;
    if (!gfb_FileExists(path) && gfb_FileExists(shipped))
        QFile::copy(shipped, path);
    QFile file(path);
    if (!gfb_FileExists(path) || !file.open(QIODevice::ReadOnly)) {
        gfiMsgBox(QStringLiteral("The Country Settings File cannot be found. Default Settings will be used"),
                  MsgButtons::OK, MsgIcon::None, QStringLiteral("Settings File Missing"));
        return kCountryNotFound;
    }
    const QStringList lines = readLines(file);
    const QString keyTag = QLatin1Char('[') + sKey + QLatin1Char(']');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (lines.at(i).contains(kNumberTag))
            noteTaxChangeDate(lines.at(i), iCountry);
        if (!lines.at(i).contains(kSectionTag) || !isCountry(textBehind(lines.at(i), kSectionTag), iCountry))
            continue;
        // Past the end of the section too: a key missing there is taken from a later one.
        for (++i; i < lines.size(); ++i)
            if (lines.at(i).contains(keyTag))
                return textBehind(lines.at(i), keyTag);
    }
    return kCountryNotFound;
}

void gpCountry_settings_load(int iCountryID, QString &sTaxLabel2nd)
{
    gsCurrencySymbol = QStringLiteral("$");
    if (iCountryID <= 0)
        return;
    const auto value = [iCountryID](const char *key) {
        return gfsCountry_value_get(iCountryID, QString::fromLatin1(key));
    };
    const QString symbol = value("Currency Symbol");
    if (symbol.size() == 1) {
        gsCurrencySymbol = symbol;
        if (iCountryID == 2)
            gbCurrencyForeign = true;
    }
    if (!gfb_FileExists(countryFilePath()))
        return;
    gbIncludeTax = value("Include Tax in Displayed Price") == QLatin1String("Y");
    sTaxLabel2nd = gfsText_pad(value("Label For Tax"), 3, QStringLiteral(" "), 2);
    if (value("Round") == QLatin1String("Y"))
        assignInt16(giRoundTo, gfdNumber_value(value("Round To")));
    const QString drawers = value("DrawerCount");
    if (drawers.size() > 5)
        assignInt16(giDrawerCount, gfdNumber_value(drawers.mid(4)));
    const QString check = value("Check");
    gsCheck = check == kCountryNotFound ? QString() : check;
}

} // namespace qln
