#pragma once
#include <QString>
#include <functional>

class QAbstractButton;
namespace benchmark {
class State;
}
namespace qln {
class FlexGrid;
namespace test {
class ScriptedMessages;
}
} // namespace qln

namespace qln::bench {

// The one demo data set of a run, made on first use: QUILLON_BENCH_ITEMS items (1,000,000
// unless told) and QUILLON_BENCH_PROMOS item promos (100,000 unless told), on the engine
// QUILLON_TEST_PG selects; or the set made by quillon-demo-data that QUILLON_BENCH_DEMO
// names. Empty when it could not be made.
const QString &gsDemo_path();

// The set opened as start-up opens it; false when it could not be made or opened.
bool gfbDemo_open();

// Adds `count` promos in one transaction: each starts from a clear buffer, `fill` sets its
// values, and it takes the next UniqueID.
void gpPromos_add(int count, const std::function<void(int)> &fill);

// A window's list action timed: `button` clicked once per iteration. Counters: the rows the
// grid shows, the statements of one click; a message box `boxes` saw fails the run.
void gpClicks_time(benchmark::State &state, QAbstractButton &button, const FlexGrid &grid, const test::ScriptedMessages &boxes);

// The baseline of a list: `sql`, whose one "?" is today at midnight, run once per iteration
// with the first `columns` columns of every row read. Counter: the rows.
void gpQuery_time(benchmark::State &state, const QString &sql, int columns);

} // namespace qln::bench
