#pragma once

namespace qln {

// The screen's mouse pointer: an hourglass while the program works, and back. Like the
// platform's pointer property these set a state; they don't count.
void gpMouse_busy();
void gpMouse_normal();

} // namespace qln
