#include "cli/TerminalProgress.h"

#include <unistd.h>

namespace qln {

namespace {
constexpr int kBarWidth = 30;
} // namespace

TerminalProgress::TerminalProgress(const QString &label, qint64 total, std::FILE *stream)
    : TerminalProgress(label, total, stream, isatty(fileno(stream)) != 0)
{
}

TerminalProgress::TerminalProgress(const QString &label, qint64 total, std::FILE *stream, bool terminal)
    : m_label(label), m_total(total), m_stream(stream), m_shown(terminal && total > kThreshold)
{
}

TerminalProgress::~TerminalProgress() { finish(); }

void TerminalProgress::set(qint64 done)
{
    if (!m_shown || m_finished)
        return;
    const int percent = int(qBound<qint64>(0, done, m_total) * 100 / m_total);
    if (percent != m_percent)
        draw(done);
}

void TerminalProgress::finish()
{
    if (!m_shown || m_finished)
        return;
    if (m_percent < 100)
        draw(m_total);
    std::fputc('\n', m_stream);
    std::fflush(m_stream);
    m_finished = true;
}

void TerminalProgress::draw(qint64 done)
{
    done = qBound<qint64>(0, done, m_total);
    m_percent = int(done * 100 / m_total);
    const int filled = int(done * kBarWidth / m_total);
    const QString line = QStringLiteral("\r%1 [%2%3] %4% (%5/%6)")
                             .arg(m_label, QString(filled, QLatin1Char('#')), QString(kBarWidth - filled, QLatin1Char('.')))
                             .arg(m_percent, 3)
                             .arg(done)
                             .arg(m_total);
    std::fputs(line.toUtf8().constData(), m_stream);
    std::fflush(m_stream);
}

} // namespace qln
