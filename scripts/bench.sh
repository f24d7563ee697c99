#!/usr/bin/env bash
# Runs every benchmark program of the build.
set -euo pipefail
build="$1"
for b in "$build"/bench/bench_*; do
  [ -f "$b" ] && [ -x "$b" ] || continue
  echo "== $(basename "$b")"
  "$b" --benchmark_counters_tabular=true
done
