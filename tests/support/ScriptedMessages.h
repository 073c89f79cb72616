#pragma once
#include "platform/Messages.h"

#include <QList>
#include <functional>

namespace qln::test {

// Answers message boxes from a script and keeps every box shown; a box with no scripted
// answer takes its default button.
class ScriptedMessages final : public Messages {
public:
    ScriptedMessages() { installMessages(this); }
    ~ScriptedMessages() override { installMessages(nullptr); }

    void answer(MsgAnswer next) { m_answers << next; }
    // Runs `action` while the next box is up, as another station would act meanwhile.
    void meanwhile(std::function<void()> action) { m_meanwhile = std::move(action); }
    MsgAnswer show(const MessageBoxSpec &box) override;

    const QList<MessageBoxSpec> &shown() const { return m_shown; }
    QStringList texts() const;
    void clear() { m_shown.clear(); }

private:
    QList<MsgAnswer> m_answers;
    std::function<void()> m_meanwhile;
    QList<MessageBoxSpec> m_shown;
};

} // namespace qln::test
