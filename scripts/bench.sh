#!/usr/bin/env bash
# Runs every benchmark program of the build, after installing what their yardstick needs.
# Fails when a benchmark reports an error (a yardstick that converted nothing among them).
set -euo pipefail
build="$1"
bash "$(dirname "$0")/install-deps.sh" bench
log="$(mktemp)"
trap 'rm -f "$log"' EXIT
status=0
for b in "$build"/bench/bench_*; do
  [ -f "$b" ] && [ -x "$b" ] || continue
  echo "== $(basename "$b")"
  "$b" --benchmark_counters_tabular=true | tee "$log"
  if grep -q "ERROR OCCURRED" "$log"; then
    echo "== $(basename "$b"): a benchmark failed" >&2
    status=1
  fi
done
exit "$status"
