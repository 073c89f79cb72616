#include "support/ScriptedMessages.h"

#include <utility>

namespace qln::test {

MsgAnswer ScriptedMessages::show(const MessageBoxSpec &box)
{
    m_shown << box;
    if (m_meanwhile)
        std::exchange(m_meanwhile, nullptr)();
    return m_answers.isEmpty() ? defaultAnswer(box) : m_answers.takeFirst();
}

QStringList ScriptedMessages::texts() const
{
    QStringList out;
    for (const MessageBoxSpec &b : m_shown)
        out << b.text;
    return out;
}

} // namespace qln::test
