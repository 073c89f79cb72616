#pragma once
#include <QString>

namespace qln {

// Per-user settings in the form of GetSetting/SaveSetting: application, section, key.
// Kept as an INI file under the XDG config folder ($XDG_CONFIG_HOME/quillon/<application>.ini).
QString GetSetting(const QString &application, const QString &section, const QString &key,
                   const QString &defaultValue = QString());
void SaveSetting(const QString &application, const QString &section, const QString &key,
                 const QString &value);
void DeleteSetting(const QString &application, const QString &section, const QString &key);
QString settingsFilePath(const QString &application);

inline const QString kZorSettings = QStringLiteral("ZOR Settings");

} // namespace qln
