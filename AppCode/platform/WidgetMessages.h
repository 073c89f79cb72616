#pragma once
#include "platform/Messages.h"

namespace qln {

// Message boxes on screen. The program installs it at start; until then, and in tests, boxes
// go elsewhere.
class WidgetMessages final : public Messages {
public:
    MsgAnswer show(const MessageBoxSpec &box) override;
};

void installWidgetMessages();

} // namespace qln
