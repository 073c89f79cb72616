// The small parts of the command that a terminal shows: the progress bar and message boxes.
#include "cli/TerminalProgress.h"
#include "platform/StreamMessages.h"

#include <QFile>
#include <QTemporaryFile>
#include <gtest/gtest.h>

using namespace qln;

namespace {

// What was written to a stream, read back.
QString written(std::FILE *stream)
{
    std::fflush(stream);
    std::rewind(stream);
    QByteArray bytes;
    char buffer[4096];
    for (size_t n; (n = std::fread(buffer, 1, sizeof buffer, stream)) > 0;)
        bytes.append(buffer, qsizetype(n));
    return QString::fromUtf8(bytes);
}

} // namespace

TEST(TerminalProgress, DrawsOnATerminalForLongRunsOnly)
{
    {
        std::FILE *stream = std::tmpfile();
        {
            TerminalProgress bar(QStringLiteral("Reading"), 20000, stream, true);
            EXPECT_TRUE(bar.shown());
            for (qint64 i = 1; i <= 20000; ++i)
                bar.set(i);
        }
        const QString text = written(stream);
        EXPECT_EQ(text.count(QLatin1Char('\r')), 101) << "one frame for each percent from 0 to 100";
        EXPECT_TRUE(text.endsWith(QStringLiteral("100% (20000/20000)\n"))) << text.right(60).toStdString();
        EXPECT_EQ(text.count(QLatin1Char('\n')), 1);
        std::fclose(stream);
    }
    for (auto [total, terminal] : {std::pair{qint64(10000), true}, std::pair{qint64(20000), false}}) {
        std::FILE *stream = std::tmpfile();
        {
            TerminalProgress bar(QStringLiteral("Reading"), total, stream, terminal);
            EXPECT_FALSE(bar.shown());
            bar.set(total / 2);
        }
        EXPECT_TRUE(written(stream).isEmpty()) << total;
        std::fclose(stream);
    }
}

TEST(StreamMessages, TellsTheBoxAndTakesItsDefaultWithoutWaiting)
{
    std::FILE *stream = std::tmpfile();
    StreamMessages messages(stream);
    installMessages(&messages);
    EXPECT_EQ(gfiMsgBox(QStringLiteral("Delete it?\r\rSure"), MsgButtons::YesNo, MsgIcon::Question, QStringLiteral("Promo Prices"), 2),
              MsgAnswer::No);
    EXPECT_EQ(gfiMsgBox(QStringLiteral("Database not found."), MsgButtons::OK), MsgAnswer::OK);
    installMessages(nullptr);
    EXPECT_EQ(written(stream), QStringLiteral("Promo Prices: Delete it?\n\nSure [No]\nDatabase not found. [OK]\n"));
    std::fclose(stream);
}
