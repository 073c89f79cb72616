#!/usr/bin/env bash
# Runs each fuzz target of a fuzz build for FUZZ_SECONDS (60 by default), two at a time at
# most, at low priority. New inputs land in fuzz/corpus/<target>/; findings in fuzz/findings/.
# Usage: scripts/fuzz.sh <fuzz build dir> <target>...
set -uo pipefail
build=$1; shift
here=$(cd "$(dirname "$0")/.." && pwd)
seconds=${FUZZ_SECONDS:-60}
jobs=${FUZZ_JOBS:-2}
mkdir -p "$here/fuzz/findings" "$build/fuzz-logs"
run() {
  local target=$1 work="$build/fuzz-work/$1"
  mkdir -p "$work" "$here/fuzz/corpus/$target"
  nice -n 10 "$build/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout=60 -rss_limit_mb=2048 \
    -artifact_prefix="$here/fuzz/findings/$target-" -print_final_stats=1 \
    "$work" "$here/fuzz/corpus/$target" >"$build/fuzz-logs/$target.log" 2>&1
  local rc=$?
  # Only the new inputs that add coverage join the stored corpus; seeds and findings stay.
  "$build/fuzz/fuzz_$target" -merge=1 "$here/fuzz/corpus/$target" "$work" >/dev/null 2>&1
  local runs execs
  runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$build/fuzz-logs/$target.log" | grep -o '[0-9]*$')
  execs=$(grep -o 'stat::average_exec_per_sec: *[0-9]*' "$build/fuzz-logs/$target.log" | grep -o '[0-9]*$')
  echo "$(date -u +%FT%TZ) $target seconds=$seconds runs=${runs:-?} exec/s=${execs:-?} corpus=$(ls "$here/fuzz/corpus/$target" | wc -l) rc=$rc"
  return $rc
}
status=0
pids=()
for target in "$@"; do
  run "$target" &
  pids+=($!)
  if (( ${#pids[@]} >= jobs )); then
    wait "${pids[0]}" || status=1
    pids=("${pids[@]:1}")
  fi
done
for pid in "${pids[@]}"; do wait "$pid" || status=1; done
exit $status
