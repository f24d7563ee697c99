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
files="prs_alg_random.txt prs_nme_random.txt prs_vak_random.txt"

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
  # A compaction is deterministic: the files must be those of one compaction, byte for byte.
  for file in $files; do
    if ! cmp -s "$work/once/$file" "$work/t/$file"; then
      echo "trial $i: $file differs from one compaction's"
      exit 1
    fi
  done
  if ls "$work/t" | grep -Eq '\.(new|lock|rmlock)$'; then
    echo "trial $i: left behind: $(ls "$work/t" | grep -E '\.(new|lock|rmlock)$')"
    exit 1
  fi
done
echo "$trials trials, none lost a record; $skipped runs found the other compacting and skipped"
