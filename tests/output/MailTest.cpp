// Mail through a real SMTP server on this machine.
#include "output/Mail.h"

#include "platform/Settings.h"
#include "support/ScriptedMessages.h"
#include "support/SmtpServer.h"

#include "support/QtPrinters.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

class Mail : public ::testing::Test {
protected:
    void SetUp() override
    {
        qputenv("XDG_CONFIG_HOME", config.path().toUtf8());
        ASSERT_TRUE(server.started());
        server.configure();
    }
    void TearDown() override { qunsetenv("XDG_CONFIG_HOME"); }

    QString attachment(const char *name, const QByteArray &bytes)
    {
        const QString file = config.filePath(QString::fromLatin1(name));
        QFile out(file);
        out.open(QIODevice::WriteOnly);
        out.write(bytes);
        return file;
    }

    QTemporaryDir config;
    SmtpServer server;
    ScriptedMessages boxes;
};

TEST_F(Mail, RecipientsCopiesAndOnlyExistingAttachmentsGoOut)
{
    const QString report = attachment("Report.pdf", "%PDF-1.4 list");
    const QString missing = config.filePath(QStringLiteral("gone.pdf"));
    ASSERT_TRUE(gfbMail_Send(QStringLiteral("Promos for Brûlée"), QStringLiteral("The list."),
                             QStringLiteral("buyer@shop.test;owner@shop.test"), QStringLiteral("audit@shop.test"),
                             QStringLiteral("clerk@shop.test;other@shop.test"), report + QStringLiteral(", ,") + missing))
        << gsMail_LastError.toStdString();
    EXPECT_TRUE(gsMail_LastError.isEmpty());
    ASSERT_EQ(server.received(), 1);
    EXPECT_EQ(server.recipients(1), strings({"buyer@shop.test", "owner@shop.test", "audit@shop.test"}));
    const QByteArray message = server.message(1);
    EXPECT_TRUE(message.contains("From: clerk@shop.test\r\n"));
    EXPECT_TRUE(message.contains("To: buyer@shop.test, owner@shop.test\r\n"));
    EXPECT_TRUE(message.contains("Cc: audit@shop.test\r\n"));
    EXPECT_TRUE(message.contains("The list."));
    EXPECT_TRUE(message.contains("filename=\"Report.pdf\""));
    EXPECT_TRUE(message.contains(QByteArray("%PDF-1.4 list").toBase64()));
    EXPECT_FALSE(message.contains("gone.pdf"));
    EXPECT_TRUE(boxes.shown().isEmpty());
}

TEST_F(Mail, IncompleteSettingsSayWhatIsMissingAndSendNothing)
{
    // An empty port is no obstacle; an empty "Use TLS" is.
    SaveSetting(kZorSettings, QStringLiteral("EMAIL"), QStringLiteral("Use TLS"), QString());
    EXPECT_FALSE(gfbMail_Send(QStringLiteral("s"), QStringLiteral("b"), QStringLiteral("a@shop.test"), QString(),
                              QStringLiteral("c@shop.test"), QString()));
    ASSERT_EQ(boxes.texts(), QStringList{ksMail_SettingsIncomplete});
    EXPECT_EQ(server.received(), 0);
    for (const char *key : {"SMTPServer", "UserID", "UserPasssword"}) {
        server.configure();
        SaveSetting(kZorSettings, QStringLiteral("EMAIL"), QString::fromLatin1(key), QString());
        EXPECT_FALSE(gfbMail_settings_complete(gfMail_settings_read())) << key;
    }
    server.configure();
    EXPECT_TRUE(gfbMail_settings_complete(gfMail_settings_read()));
}

TEST_F(Mail, ARefusedLoginOrADeadServerFailsWithTheErrorText)
{
    server.configure(QStringLiteral("clerk"), QStringLiteral("wrong"));
    EXPECT_FALSE(gfbMail_Send(QStringLiteral("s"), QStringLiteral("b"), QStringLiteral("a@shop.test"), QString(),
                              QStringLiteral("c@shop.test"), QString()));
    EXPECT_FALSE(gsMail_LastError.isEmpty());
    EXPECT_EQ(server.received(), 0);

    SaveSetting(kZorSettings, QStringLiteral("EMAIL"), QStringLiteral("SMTPServer"), QStringLiteral("127.0.0.1:1"));
    EXPECT_FALSE(gfbMail_Send(QStringLiteral("s"), QStringLiteral("b"), QStringLiteral("a@shop.test"), QString(),
                              QStringLiteral("c@shop.test"), QString()));
    EXPECT_FALSE(gsMail_LastError.isEmpty());
}

// A server that takes the connection and never greets: the send gives up within half a minute.
TEST_F(Mail, AServerThatNeverAnswersTimesOut)
{
    QProcess silent;
    silent.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral("-c"), QStringLiteral("import socket,sys\n"
                                                       "s=socket.socket(); s.bind(('127.0.0.1',0)); s.listen()\n"
                                                       "print(s.getsockname()[1], flush=True)\n"
                                                       "c=s.accept(); sys.stdin.read()")});
    ASSERT_TRUE(silent.waitForReadyRead(10000));
    const QString port = QString::fromLatin1(silent.readLine().trimmed());
    SaveSetting(kZorSettings, QStringLiteral("EMAIL"), QStringLiteral("SMTPServer"), QStringLiteral("127.0.0.1:") + port);
    QElapsedTimer clock;
    clock.start();
    EXPECT_FALSE(gfbMail_Send(QStringLiteral("s"), QStringLiteral("b"), QStringLiteral("a@shop.test"), QString(),
                              QStringLiteral("c@shop.test"), QString()));
    EXPECT_LT(clock.elapsed(), 30000);
    EXPECT_FALSE(gsMail_LastError.isEmpty());
    silent.closeWriteChannel();
    silent.waitForFinished(5000);
}

TEST(MailLog, LinesCarryTimeRecipientAndSubject)
{
    const QDateTime when(QDate(2026, 11, 22), QTime(9, 5, 40));
    EXPECT_EQ(gfsMail_LogLine(when, QStringLiteral("a@b;c@d"), QStringLiteral("Promos")),
              QStringLiteral("2026/11/22 09:05\ta@b;c@d\tPromos"));
    EXPECT_EQ(gfsMail_FailLine(when, QStringLiteral("a@b"), QStringLiteral("Promos")),
              QStringLiteral("Send Failed:  2026/11/22 09:05\ta@b\tPromos"));
    MailSettings settings;
    settings.server = QStringLiteral("mail.shop.test"), settings.port = QStringLiteral("25"), settings.user = QStringLiteral("clerk");
    EXPECT_EQ(gfsMail_ServerLine(settings), QStringLiteral("Server: mail.shop.test\tPort:25\tUser:clerk"));
}

} // namespace
