#include "platform/Messages.h"

namespace qln {
namespace {

QList<MsgAnswer> buttonAnswers(MsgButtons buttons)
{
    switch (buttons) {
    case MsgButtons::OK: return {MsgAnswer::OK};
    case MsgButtons::OKCancel: return {MsgAnswer::OK, MsgAnswer::Cancel};
    case MsgButtons::AbortRetryIgnore: return {MsgAnswer::Abort, MsgAnswer::Retry, MsgAnswer::Ignore};
    case MsgButtons::YesNoCancel: return {MsgAnswer::Yes, MsgAnswer::No, MsgAnswer::Cancel};
    case MsgButtons::YesNo: return {MsgAnswer::Yes, MsgAnswer::No};
    case MsgButtons::RetryCancel: return {MsgAnswer::Retry, MsgAnswer::Cancel};
    }
    return {MsgAnswer::OK};
}

class SilentMessages final : public Messages {
public:
    MsgAnswer show(const MessageBoxSpec &box) override { return defaultAnswer(box); }
};

Messages *&installed()
{
    static SilentMessages silent;
    static Messages *service = &silent;
    return service;
}

} // namespace

MsgAnswer defaultAnswer(const MessageBoxSpec &box)
{
    const QList<MsgAnswer> answers = buttonAnswers(box.buttons);
    const int index = box.defaultButton - 1;
    return answers.value(index >= 0 && index < answers.size() ? index : 0);
}

Messages &messages() { return *installed(); }

void installMessages(Messages *service)
{
    static SilentMessages silent;
    installed() = service ? service : &silent;
}

MsgAnswer gfiMsgBox(const QString &text, MsgButtons buttons, MsgIcon icon, const QString &title,
                    int defaultButton)
{
    return messages().show({text, title, icon, buttons, defaultButton});
}

} // namespace qln
