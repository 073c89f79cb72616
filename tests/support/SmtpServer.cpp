#include "support/SmtpServer.h"

#include "platform/Settings.h"

#include <QDir>
#include <QFile>

namespace qln::test {

SmtpServer::SmtpServer()
{
    // Debian's interpreter, which has the packaged mail server.
    m_process.start(QStringLiteral("/usr/bin/python3"),
                    {QStringLiteral(QUILLON_TEST_SUPPORT_DIR "/smtp_server.py"), m_dir.path()});
    if (m_process.waitForStarted() && m_process.waitForReadyRead(15000))
        m_port = m_process.readLine().trimmed().toInt();
}

SmtpServer::~SmtpServer()
{
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(5000))
        m_process.kill();
    m_process.waitForFinished();
}

int SmtpServer::received() const
{
    return int(QDir(m_dir.path()).entryList({QStringLiteral("*.eml")}, QDir::Files).size());
}

QByteArray SmtpServer::message(int n) const
{
    QFile file(m_dir.filePath(QStringLiteral("%1.eml").arg(n)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList SmtpServer::recipients(int n) const
{
    QFile file(m_dir.filePath(QStringLiteral("%1.rcpt").arg(n)));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).split(QLatin1Char('\n')) : QStringList();
}

void SmtpServer::configure(const QString &user, const QString &password) const
{
    const QString section = QStringLiteral("EMAIL");
    SaveSetting(kZorSettings, section, QStringLiteral("SMTPServer"), address());
    SaveSetting(kZorSettings, section, QStringLiteral("SMPTPort"), QString());
    SaveSetting(kZorSettings, section, QStringLiteral("UserID"), user);
    SaveSetting(kZorSettings, section, QStringLiteral("UserPasssword"), password);
    SaveSetting(kZorSettings, section, QStringLiteral("Use SSL"), QStringLiteral("Yes"));
    SaveSetting(kZorSettings, section, QStringLiteral("Use TLS"), QStringLiteral("No"));
}

} // namespace qln::test
