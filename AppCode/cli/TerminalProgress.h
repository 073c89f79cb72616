#pragma once
#include <QString>
#include <QtGlobal>
#include <cstdio>

namespace qln {

// A progress bar for long runs of a command: drawn on one line of a terminal, redrawn when the
// percentage moves, ended by a line break. Off when the stream is no terminal (a pipe or a
// file would keep every frame) and for runs of kThreshold steps or fewer.
class TerminalProgress {
public:
    static constexpr qint64 kThreshold = 10000;

    TerminalProgress(const QString &label, qint64 total, std::FILE *stream = stderr);
    // As above, with the terminal test answered by the caller.
    TerminalProgress(const QString &label, qint64 total, std::FILE *stream, bool terminal);
    ~TerminalProgress();
    TerminalProgress(const TerminalProgress &) = delete;
    TerminalProgress &operator=(const TerminalProgress &) = delete;

    bool shown() const { return m_shown; }
    void set(qint64 done);
    // The bar at its end and the line closed; the destructor does it when nobody did.
    void finish();

private:
    void draw(qint64 done);

    QString m_label;
    qint64 m_total;
    std::FILE *m_stream;
    bool m_shown;
    bool m_finished = false;
    int m_percent = -1;
};

} // namespace qln
