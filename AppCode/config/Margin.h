#pragma once
#include "common/Money.h"

#include <QString>
#include <optional>

namespace qln {

// The margin on a price, (price - cost) / price * 100 in single precision, shown "##0.0" and
// "%"; nothing for a price that isn't above 0, where the shown margin stays as it was.
std::optional<float> gfnMargin_get(Money price, Money cost);
std::optional<QString> gfsMargin_text_get(Money price, Money cost);

} // namespace qln
