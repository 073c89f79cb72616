#pragma once

namespace qln {

// Before the data path is trusted: can the server's folder be reached? When not, this
// program asks whether to try again. After a lost connection the tables are opened again.
bool gfbServer_Check();

} // namespace qln
