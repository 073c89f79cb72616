#pragma once
#include "config/ProfileFile.h"

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

namespace qln {

using IniPair = QPair<QString, QString>;

// Access to one settings file of sections and keys (ZOR.INI). Every operation does nothing
// until FileOpen has succeeded; a file that can't be read or written is reported in a box
// titled "INI Class" and the operation gives False or nothing, the file staying open.
class clsINI_Services {
public:
    QString File_Name() const { return m_fileName; }
    bool File() const { return m_open; }

    bool FileOpen(const QString &sFile);
    bool WriteData(const QString &sSection, const QString &sKey, const QString &sValue);
    // An empty key removes the whole section.
    bool DeleteData(const QString &sSection, const QString &sKey);
    QStringList GetAllSections();
    QStringList GetAllKeysInSection(const QString &sSection);
    QList<IniPair> GetAllKeysValuesInSection(const QString &sSection);
    // At most 254 characters, as the read buffer holds 255.
    QString GetValue(const QString &sSection, const QString &sKey, const QString &sDefault);
    QStringList FindKeyInFile(const QString &sKey);
    bool FindKeyInSection(const QString &sSection, const QString &sKey);
    QStringList FindValueInSection(const QString &sSection, const QString &sValue);
    // Pairs of section and key.
    QList<IniPair> FindValueInFile(const QString &sValue);
    bool RenameSection(const QString &sOld, const QString &sNew);
    bool RenameKey(const QString &sSection, const QString &sOld, const QString &sNew);

private:
    QStringList listRead(const ProfileArg &section, const QString &routine);
    QString valueRead(const QString &section, const QString &key, const QString &defaultValue,
                      const QString &routine);
    bool write(const ProfileArg &section, const ProfileArg &key, const ProfileArg &value,
               const QString &routine);

    QString m_fileName;
    bool m_open = false;
};

} // namespace qln
