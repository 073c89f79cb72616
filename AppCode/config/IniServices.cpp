#include "config/IniServices.h"

#include "platform/Messages.h"

namespace qln {

namespace {

constexpr int kBufferSize = 255;
// Tells a missing value from an empty one when moving keys.
const QString kMissing = QStringLiteral("dummy");

bool reported(const ProfileError &error, const QString &routine)
{
    if (!error)
        return false;
    QString text = routine + QStringLiteral("\r\nError Number: ") + QString::number(error.number);
    if (!error.text.isEmpty())
        text += QStringLiteral("\r\n\r\n") + error.text;
    gfiMsgBox(text, MsgButtons::OK, MsgIcon::Critical, QStringLiteral("INI Class"));
    return true;
}

QString beforeNul(const QString &text) { return text.section(QChar(0), 0, 0); }

} // namespace

bool clsINI_Services::FileOpen(const QString &sFile)
{
    m_fileName = sFile;
    m_open = true;
    ProfileError error;
    const bool ok = WritePrivateProfileString(std::nullopt, std::nullopt, std::nullopt, sFile, &error);
    if (reported(error, QStringLiteral("Checkexist")) || !ok) {
        m_fileName.clear();
        m_open = false;
    }
    return m_open;
}

bool clsINI_Services::WriteData(const QString &sSection, const QString &sKey, const QString &sValue)
{
    return write(sSection, sKey, sValue, QStringLiteral("Write Date Class INI"));
}

bool clsINI_Services::DeleteData(const QString &sSection, const QString &sKey)
{
    return write(sSection, sKey.isEmpty() ? ProfileArg() : ProfileArg(sKey), std::nullopt,
                 QStringLiteral("Delete Data Class INI"));
}

QStringList clsINI_Services::GetAllSections()
{
    return listRead(std::nullopt, QStringLiteral("GetAllSections Class INI "));
}

QStringList clsINI_Services::GetAllKeysInSection(const QString &sSection)
{
    return listRead(sSection, QStringLiteral("KeysIn Section Class INI"));
}

QList<IniPair> clsINI_Services::GetAllKeysValuesInSection(const QString &sSection)
{
    const QString routine = QStringLiteral("Get All KeyValues Class INI");
    QList<IniPair> pairs;
    for (const QString &key : listRead(sSection, routine))
        pairs.append({key, valueRead(sSection, key, QString(), routine)});
    return pairs;
}

QString clsINI_Services::GetValue(const QString &sSection, const QString &sKey, const QString &sDefault)
{
    return valueRead(sSection, sKey, sDefault, QStringLiteral("Get Value Class ini"));
}

QStringList clsINI_Services::FindKeyInFile(const QString &sKey)
{
    const QString routine = QStringLiteral("Find Key IN File Class ini");
    QStringList sections;
    for (const QString &section : listRead(std::nullopt, routine))
        if (listRead(section, routine).contains(sKey, Qt::CaseInsensitive))
            sections << section;
    return sections;
}

bool clsINI_Services::FindKeyInSection(const QString &sSection, const QString &sKey)
{
    return listRead(sSection, QStringLiteral("Find Key In Section Class INI")).contains(sKey, Qt::CaseInsensitive);
}

QStringList clsINI_Services::FindValueInSection(const QString &sSection, const QString &sValue)
{
    const QString routine = QStringLiteral("Find Value in Section");
    QStringList keys;
    for (const QString &key : listRead(sSection, routine))
        if (valueRead(sSection, key, QString(), routine) == sValue)
            keys << key;
    return keys;
}

QList<IniPair> clsINI_Services::FindValueInFile(const QString &sValue)
{
    QList<IniPair> found;
    for (const QString &section : GetAllSections())
        for (const QString &key : FindValueInSection(section, sValue))
            found.append({section, key});
    return found;
}

bool clsINI_Services::RenameSection(const QString &sOld, const QString &sNew)
{
    if (!GetAllSections().contains(sOld, Qt::CaseInsensitive))
        return false;
    for (const QString &key : GetAllKeysInSection(sOld)) {
        const QString value = GetValue(sOld, key, kMissing);
        if (value != kMissing && !WriteData(sNew, key, value))
            return false;
    }
    return DeleteData(sOld, QString());
}

bool clsINI_Services::RenameKey(const QString &sSection, const QString &sOld, const QString &sNew)
{
    const QString value = GetValue(sSection, sOld, kMissing);
    return value != kMissing && WriteData(sSection, sNew, value) && DeleteData(sSection, sOld);
}

QStringList clsINI_Services::listRead(const ProfileArg &section, const QString &routine)
{
    if (!m_open)
        return {};
    QString buffer;
    ProfileError error;
    int size = kBufferSize;
    int copied = 0;
    // A list that fills the buffer to size - 2 may have been cut: grow and read again.
    while ((copied = GetPrivateProfileString(section, std::nullopt, QString(), buffer, size, m_fileName, &error)) == size - 2
           && !error)
        size *= 2;
    if (reported(error, routine))
        return {};
    return buffer.left(copied).split(QChar(0), Qt::SkipEmptyParts);
}

QString clsINI_Services::valueRead(const QString &section, const QString &key,
                                   const QString &defaultValue, const QString &routine)
{
    if (!m_open)
        return QString();
    QString buffer;
    ProfileError error;
    GetPrivateProfileString(section, key, defaultValue, buffer, kBufferSize, m_fileName, &error);
    return reported(error, routine) ? QString() : beforeNul(buffer);
}

bool clsINI_Services::write(const ProfileArg &section, const ProfileArg &key, const ProfileArg &value,
                            const QString &routine)
{
    if (!m_open)
        return false;
    ProfileError error;
    const bool ok = WritePrivateProfileString(section, key, value, m_fileName, &error);
    return !reported(error, routine) && ok;
}

} // namespace qln
