#pragma once

namespace qln {

// "Data Path..." of the promo windows' File menu: the path window, and when it was left by
// OK, the tables of the new data path. The caller clears its item bar when this is true:
// gsSL is emptied here.
bool gfbDataPath_change_run();

} // namespace qln
