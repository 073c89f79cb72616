#include "platform/Settings.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>

namespace qln {

QString settingsFilePath(const QString &application)
{
    QString base = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (base.isEmpty())
        base = QDir::homePath() + QStringLiteral("/.config");
    return base + QStringLiteral("/quillon/") + application + QStringLiteral(".ini");
}

namespace {
QString settingsKey(const QString &section, const QString &key)
{
    return section + QLatin1Char('/') + key;
}
} // namespace

QString GetSetting(const QString &application, const QString &section, const QString &key,
                   const QString &defaultValue)
{
    QSettings store(settingsFilePath(application), QSettings::IniFormat);
    return store.value(settingsKey(section, key), defaultValue).toString();
}

void SaveSetting(const QString &application, const QString &section, const QString &key,
                 const QString &value)
{
    QSettings store(settingsFilePath(application), QSettings::IniFormat);
    store.setValue(settingsKey(section, key), value);
    store.sync();
}

void DeleteSetting(const QString &application, const QString &section, const QString &key)
{
    QSettings store(settingsFilePath(application), QSettings::IniFormat);
    store.remove(settingsKey(section, key));
    store.sync();
}

} // namespace qln
