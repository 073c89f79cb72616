#pragma once
#include "platform/Messages.h"

#include <cstdio>

namespace qln {

// Message boxes for a program without windows: each box's title and text go to a stream
// (stderr), with the answer it took, its default button; it never waits for input.
class StreamMessages final : public Messages {
public:
    explicit StreamMessages(std::FILE *stream = stderr) : m_stream(stream) {}
    MsgAnswer show(const MessageBoxSpec &box) override;

private:
    std::FILE *m_stream;
};

// The name of an answer as its button shows it: "OK", "Cancel", "Yes"...
QString gfsMsgAnswer_text(MsgAnswer answer);

} // namespace qln
