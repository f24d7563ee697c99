#!/usr/bin/env bash
# Runs each libFuzzer target for a few seconds. Each starts from the seeds shipped in
# fuzz/corpus/<target> and from what earlier runs kept in <build>/fuzz/corpus-<target>.
set -euo pipefail
build="$1"
seconds="${2:-15}"
seeds="$(cd "$(dirname "$0")/.." && pwd)/fuzz/corpus"
status=0
for f in "$build"/fuzz/fuzz_*; do
  [ -f "$f" ] && [ -x "$f" ] || continue
  name=$(basename "$f")
  corpus="$build/fuzz/corpus-$name"
  mkdir -p "$corpus"
  dirs=("$corpus")
  [ -d "$seeds/$name" ] && dirs+=("$seeds/$name")
  echo "== $name ($seconds s)"
  if ! "$f" -max_total_time="$seconds" -rss_limit_mb=2048 -print_final_stats=1 "${dirs[@]}" \
      > "$build/fuzz/$name.log" 2>&1; then
    tail -n 40 "$build/fuzz/$name.log"
    status=1
  else
    grep -E 'stat::number_of_executed_units' "$build/fuzz/$name.log" || true
  fi
done
exit $status
