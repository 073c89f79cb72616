#!/usr/bin/env bash
# The whole suite on SQLite, then again on a throw-away PostgreSQL server.
set -euo pipefail
build=${1:-build}
here=$(cd "$(dirname "$0")" && pwd)
export QT_QPA_PLATFORM=offscreen
jobs=$(nproc)
echo "== suite on SQLite"
(unset QUILLON_TEST_PG; ctest --test-dir "$build" --output-on-failure -j "$jobs")
echo "== suite on PostgreSQL"
"$here/with-postgres.sh" ctest --test-dir "$build" --output-on-failure -j "$jobs"
