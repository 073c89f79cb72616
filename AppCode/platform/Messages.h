#pragma once
#include <QString>
#include <QStringList>

namespace qln {

enum class MsgIcon { None, Critical, Question, Exclamation, Information };
enum class MsgButtons { OK, OKCancel, AbortRetryIgnore, YesNoCancel, YesNo, RetryCancel };
enum class MsgAnswer { OK = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

struct MessageBoxSpec {
    QString text;
    QString title;
    MsgIcon icon = MsgIcon::None;
    MsgButtons buttons = MsgButtons::OK;
    int defaultButton = 1; // 1-based, as the platform counts
};

// Every message box of the program goes through the installed service; the window
// library installs the real one, tests install a scripted one.
class Messages {
public:
    virtual ~Messages() = default;
    virtual MsgAnswer show(const MessageBoxSpec &box) = 0;
};

// The installed service; with none installed, boxes answer their default button.
Messages &messages();
void installMessages(Messages *service);

MsgAnswer gfiMsgBox(const QString &text, MsgButtons buttons = MsgButtons::OK,
                    MsgIcon icon = MsgIcon::None, const QString &title = QString(),
                    int defaultButton = 1);

// The answer a box gives when nobody is there to press a button.
MsgAnswer defaultAnswer(const MessageBoxSpec &box);

} // namespace qln
