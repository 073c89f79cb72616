#pragma once
#include <QByteArray>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

namespace qln::test {

// A real SMTP server on 127.0.0.1 for the life of the object; it logs in "clerk" with
// "secret" and keeps what it receives.
class SmtpServer {
public:
    SmtpServer();
    ~SmtpServer();

    bool started() const { return m_port > 0; }
    QString address() const { return QStringLiteral("127.0.0.1:%1").arg(m_port); }
    int received() const;
    // Message n (1-based) as it arrived, and the recipients of its envelope.
    QByteArray message(int n) const;
    QStringList recipients(int n) const;
    // Points the station's mail settings at this server.
    void configure(const QString &user = QStringLiteral("clerk"), const QString &password = QStringLiteral("secret")) const;

private:
    QTemporaryDir m_dir;
    QProcess m_process;
    int m_port = 0;
};

} // namespace qln::test
