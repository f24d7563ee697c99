#!/usr/bin/env bash
# Runs every benchmark program of the build, after installing what their yardstick needs.
set -euo pipefail
build="$1"
bash "$(dirname "$0")/install-deps.sh" bench
for b in "$build"/bench/bench_*; do
  [ -f "$b" ] && [ -x "$b" ] || continue
  echo "== $(basename "$b")"
  "$b" --benchmark_counters_tabular=true
done
