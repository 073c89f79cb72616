#pragma once
#include <QString>

namespace qln::bench {

// The one demo data set of a run, made on first use: QUILLON_BENCH_ITEMS items (1,000,000
// unless told) and QUILLON_BENCH_PROMOS item promos (100,000 unless told), on the engine
// QUILLON_TEST_PG selects; or the set made by quillon-demo-data that QUILLON_BENCH_DEMO
// names. Empty when it could not be made.
const QString &gsDemo_path();

// The set opened as start-up opens it; false when it could not be made or opened.
bool gfbDemo_open();

} // namespace qln::bench
