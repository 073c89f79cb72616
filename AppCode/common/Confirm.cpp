#include "common/Confirm.h"

#include "common/ProcessState.h"
#include "platform/Messages.h"

namespace qln {

namespace {
constexpr int kDefaultButtonStep = 256; // the platform's flag for the second button
}

bool gfbConfirm(const QString &sIssue, const QString &sHelp, int iDefault)
{
    QString text = sIssue + QStringLiteral("\r\r");
    if (!sHelp.trimmed().isEmpty())
        text += sHelp;
    return gfiMsgBox(text, MsgButtons::YesNo, MsgIcon::Question, kProgramName, iDefault / kDefaultButtonStep + 1)
        == MsgAnswer::Yes;
}

} // namespace qln
