#include "output/Mail.h"

#include "common/Files.h"
#include "platform/Messages.h"
#include "platform/Settings.h"

#include <QStringList>

#include <curl/curl.h>

#include <memory>
#include <mutex>

namespace qln {

namespace {

constexpr long kConnectSeconds = 10;
constexpr long kSendSeconds = 25;

QString emailSetting(const char *key) { return GetSetting(kZorSettings, QStringLiteral("EMAIL"), QString::fromLatin1(key)); }

QStringList addresses(const QString &list)
{
    QStringList parts;
    for (const QString &part : list.split(QLatin1Char(';')))
        if (!part.trimmed().isEmpty())
            parts << part.trimmed();
    return parts;
}

struct CurlDeleter {
    void operator()(CURL *curl) const { curl_easy_cleanup(curl); }
    void operator()(curl_mime *mime) const { curl_mime_free(mime); }
    void operator()(curl_slist *list) const { curl_slist_free_all(list); }
};

curl_slist *append(curl_slist *list, const QString &text) { return curl_slist_append(list, text.toUtf8().constData()); }

// A header value outside ASCII is written as an encoded word.
QString headerText(const QString &text)
{
    for (QChar c : text)
        if (c.unicode() > 126)
            return QStringLiteral("=?UTF-8?B?") + QString::fromLatin1(text.toUtf8().toBase64()) + QStringLiteral("?=");
    return text;
}

QString mailUrl(const QString &server)
{
    return server.contains(QStringLiteral("://")) ? server : QStringLiteral("smtp://") + server;
}

} // namespace

MailSettings gfMail_settings_read()
{
    return {emailSetting("SMTPServer"), emailSetting("SMPTPort"), emailSetting("UserID"),
            emailSetting("UserPasssword"), emailSetting("Use SSL"), emailSetting("Use TLS")};
}

bool gfbMail_settings_complete(const MailSettings &s)
{
    return !s.server.isEmpty() && !s.user.isEmpty() && !s.password.isEmpty() && !s.useTls.isEmpty();
}

bool gfbMail_Send(const QString &sSubject, const QString &sBody, const QString &sTo, const QString &sCC,
                  const QString &sFrom, const QString &sAttachments)
{
    static std::once_flag curlReady;
    std::call_once(curlReady, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
    gsMail_LastError.clear();
    const MailSettings settings = gfMail_settings_read();
    if (!gfbMail_settings_complete(settings)) {
        gfiMsgBox(ksMail_SettingsIncomplete);
        return false;
    }
    std::unique_ptr<CURL, CurlDeleter> curl(curl_easy_init());
    if (!curl) {
        gsMail_LastError = QStringLiteral("The mail library could not start.");
        return false;
    }
    CURL *c = curl.get();
    const QByteArray url = mailUrl(settings.server).toUtf8();
    const QByteArray user = settings.user.toUtf8();
    const QByteArray password = settings.password.toUtf8();
    curl_easy_setopt(c, CURLOPT_URL, url.constData());
    curl_easy_setopt(c, CURLOPT_USERNAME, user.constData());
    curl_easy_setopt(c, CURLOPT_PASSWORD, password.constData());
    curl_easy_setopt(c, CURLOPT_USE_SSL, long(settings.useTls == QLatin1String("Yes") ? CURLUSESSL_ALL : CURLUSESSL_NONE));
    curl_easy_setopt(c, CURLOPT_CONNECTTIMEOUT, kConnectSeconds);
    curl_easy_setopt(c, CURLOPT_TIMEOUT, kSendSeconds);
    curl_easy_setopt(c, CURLOPT_NOSIGNAL, 1L);

    const QString sender = sFrom.contains(QLatin1Char(';')) ? sFrom.section(QLatin1Char(';'), 0, 0).trimmed() : sFrom.trimmed();
    const QByteArray from = QByteArray("<") + sender.toUtf8() + ">";
    curl_easy_setopt(c, CURLOPT_MAIL_FROM, from.constData());

    const QStringList to = addresses(sTo);
    const QStringList cc = addresses(sCC);
    std::unique_ptr<curl_slist, CurlDeleter> recipients;
    for (const QString &address : to + cc)
        recipients.reset(append(recipients.release(), QLatin1Char('<') + address + QLatin1Char('>')));
    curl_easy_setopt(c, CURLOPT_MAIL_RCPT, recipients.get());

    std::unique_ptr<curl_slist, CurlDeleter> headers;
    headers.reset(append(headers.release(), QStringLiteral("From: ") + sender));
    headers.reset(append(headers.release(), QStringLiteral("To: ") + to.join(QStringLiteral(", "))));
    if (!cc.isEmpty())
        headers.reset(append(headers.release(), QStringLiteral("Cc: ") + cc.join(QStringLiteral(", "))));
    headers.reset(append(headers.release(), QStringLiteral("Subject: ") + headerText(sSubject)));
    curl_easy_setopt(c, CURLOPT_HTTPHEADER, headers.get());

    std::unique_ptr<curl_mime, CurlDeleter> mime(curl_mime_init(c));
    curl_mimepart *text = curl_mime_addpart(mime.get());
    const QByteArray body = sBody.toUtf8();
    curl_mime_data(text, body.constData(), size_t(body.size()));
    curl_mime_type(text, "text/plain; charset=utf-8");
    for (const QString &name : sAttachments.split(QLatin1Char(','))) {
        if (name.trimmed().isEmpty() || !gfb_FileExists(name.trimmed()))
            continue;
        curl_mimepart *part = curl_mime_addpart(mime.get());
        curl_mime_filedata(part, name.trimmed().toLocal8Bit().constData());
        curl_mime_encoder(part, "base64");
    }
    curl_easy_setopt(c, CURLOPT_MIMEPOST, mime.get());

    char error[CURL_ERROR_SIZE] = {};
    curl_easy_setopt(c, CURLOPT_ERRORBUFFER, error);
    const CURLcode result = curl_easy_perform(c);
    if (result == CURLE_OK)
        return true;
    gsMail_LastError = QString::fromUtf8(error[0] ? error : curl_easy_strerror(result));
    return false;
}

QString gfsMail_LogLine(const QDateTime &when, const QString &sTo, const QString &sSubject)
{
    return when.toString(QStringLiteral("yyyy/MM/dd HH:mm")) + QLatin1Char('\t') + sTo + QLatin1Char('\t') + sSubject;
}

QString gfsMail_FailLine(const QDateTime &when, const QString &sTo, const QString &sSubject)
{
    return QStringLiteral("Send Failed:  ") + gfsMail_LogLine(when, sTo, sSubject);
}

QString gfsMail_ServerLine(const MailSettings &s)
{
    return QStringLiteral("Server: ") + s.server + QStringLiteral("\tPort:") + s.port + QStringLiteral("\tUser:") + s.user;
}

} // namespace qln
