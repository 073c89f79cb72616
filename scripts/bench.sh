#!/usr/bin/env bash
# Runs the benchmarks on SQLite, then on a throw-away PostgreSQL server. Extra arguments go
# to the benchmark program (for example --benchmark_filter=Keyed).
set -euo pipefail
build=${1:-build}; shift || true
here=$(cd "$(dirname "$0")" && pwd)
args=(--benchmark_repetitions=5 --benchmark_report_aggregates_only=true --benchmark_min_time=0.3 "$@")
echo "== SQLite"
(unset QUILLON_TEST_PG; "$build/bench/quillon_bench" "${args[@]}")
echo "== PostgreSQL"
"$here/with-postgres.sh" "$build/bench/quillon_bench" "${args[@]}"
