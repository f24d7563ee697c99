#!/usr/bin/env bash
# Runs each libFuzzer target for a few seconds from its seed corpus.
set -euo pipefail
build="$1"
seconds="${2:-15}"
status=0
for f in "$build"/fuzz/fuzz_*; do
  [ -f "$f" ] && [ -x "$f" ] || continue
  name=$(basename "$f")
  corpus="$build/fuzz/corpus-$name"
  mkdir -p "$corpus"
  echo "== $name ($seconds s)"
  if ! "$f" -max_total_time="$seconds" -rss_limit_mb=2048 -print_final_stats=1 "$corpus" \
      > "$build/fuzz/$name.log" 2>&1; then
    tail -n 40 "$build/fuzz/$name.log"
    status=1
  else
    grep -E 'stat::number_of_executed_units' "$build/fuzz/$name.log" || true
  fi
done
exit $status
