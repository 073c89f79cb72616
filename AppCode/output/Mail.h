#pragma once
#include <QDateTime>
#include <QString>

// Mail of one message through the station's SMTP settings.
namespace qln {

struct MailSettings {
    QString server;   // "SMTPServer"; a "host:port" form reaches another port
    QString port;     // "SMPTPort": read, never passed on
    QString user;     // "UserID"
    QString password; // "UserPasssword"
    QString useSsl;   // "Use SSL": read, decides nothing
    QString useTls;   // "Use TLS": "Yes" asks the server for a secure connection
};

MailSettings gfMail_settings_read();
bool gfbMail_settings_complete(const MailSettings &settings);
inline const QString ksMail_SettingsIncomplete =
    QStringLiteral("Your email settings are incomplete.\r\nPlease complete settings in Configuration(Station Settings)");

// The last error of a send: empty after a success, and after incomplete settings, whose box
// has told the user.
inline QString gsMail_LastError;

// Sends with the settings of the station; with incomplete settings it shows their box and
// sends nothing. To and CC may list several addresses split at ";", the attachments are split
// at "," and a name of no existing file is left out. A server that doesn't answer fails within
// half a minute.
bool gfbMail_Send(const QString &sSubject, const QString &sBody, const QString &sTo, const QString &sCC,
                  const QString &sFrom, const QString &sAttachments);

// The lines of "/Email.log" for one send.
QString gfsMail_LogLine(const QDateTime &when, const QString &sTo, const QString &sSubject);
QString gfsMail_FailLine(const QDateTime &when, const QString &sTo, const QString &sSubject);
QString gfsMail_ServerLine(const MailSettings &settings);

} // namespace qln
