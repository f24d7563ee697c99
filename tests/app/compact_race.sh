#!/usr/bin/env bash
# Two `korvel-cli compact` at once on one staff folder, many times over: each trial must end
# with the records one compaction alone leaves, and neither run may fail.
set -euo pipefail
cli="$1"
trials="${2:-100}"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$cli" demo "$work/demo" > "$work/demo.txt"
staff=$(sed -n 's/^staff folder: //p' "$work/demo.txt")
cp -r "$staff" "$work/pristine"
cp -r "$work/pristine" "$work/once"
"$cli" compact --folder "$work/once" > /dev/null
"$cli" dump PRSALG --folder "$work/once" > "$work/expected.csv"
"$cli" dump PRSNME --folder "$work/once" > "$work/expected-names.csv"

skipped=0
for ((i = 1; i <= trials; i++)); do
  rm -rf "$work/t"
  cp -r "$work/pristine" "$work/t"
  "$cli" compact --folder "$work/t" > "$work/a.out" 2>&1 &
  a=$!
  "$cli" compact --folder "$work/t" > "$work/b.out" 2>&1 &
  b=$!
  for run in "$a:a" "$b:b"; do
    if ! wait "${run%%:*}"; then
      echo "trial $i: a compaction failed:"
      cat "$work/${run##*:}.out"
      exit 1
    fi
  done
  skipped=$((skipped + $(cat "$work/a.out" "$work/b.out" | grep -c '^compaction skipped' || true)))
  "$cli" dump PRSALG --folder "$work/t" > "$work/got.csv"
  "$cli" dump PRSNME --folder "$work/t" > "$work/got-names.csv"
  if ! cmp -s "$work/expected.csv" "$work/got.csv" ||
     ! cmp -s "$work/expected-names.csv" "$work/got-names.csv"; then
    echo "trial $i: the staff files differ from one compaction's"
    diff "$work/expected.csv" "$work/got.csv" | head -n 20
    exit 1
  fi
  if ls "$work/t" | grep -Eq '\.(new|lock|rmlock)$'; then
    echo "trial $i: left behind: $(ls "$work/t" | grep -E '\.(new|lock|rmlock)$')"
    exit 1
  fi
done
echo "$trials trials, none lost a record; $skipped runs found the other compacting and skipped"
