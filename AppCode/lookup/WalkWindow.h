#pragma once
#include <functional>

// Runs of keyed-walk steps read as windows: one statement gives the rows the steps would
// read one by one, where nothing about the rows could make a step answer otherwise.
namespace qln {

enum class WalkVerdict { Pass, Refuse, End };

// What a run of steps does with each record it reads; the record is in the table's buffer.
struct WalkVisit {
    std::function<WalkVerdict()> judge; // Refuse: step on; End: the run stops on this record
    std::function<void()> take;         // a record that passed
};

// Up to `iWanted` steps (Get Next or Get Previous on iKey) from the record in the table's
// buffer, each stepping over the records judge refuses. Reads what the steps one by one
// would read, in that order, and leaves the buffer and the table's current record as they
// would; returns the records taken.
int gfiWalk_steps(int iTable, int iKey, int iOp, int iWanted, const WalkVisit &visit);

// Steps that share one statement at most; 0 sends each step by itself, the reference the
// equivalence tests and the benchmarks compare against. On by default.
void gpWalk_window_set(int iRows);
int gfiWalk_window();

} // namespace qln
