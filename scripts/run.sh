#!/usr/bin/env bash
# Makes the demo data tree on first use and opens the program on it. Without a display the
# main job runs headless and says where its output is.
set -euo pipefail
build="$1"
demo="$2"
cli="$build/src/app/korvel-cli"

if [ ! -d "$demo/VESPARINE" ]; then
  echo "Making the demo data tree in $demo ..."
  "$cli" demo "$demo"
fi

year=$(date +%Y)
staff="$demo/VESPARINE/STAFF/P$year"
out="$demo/out"
mkdir -p "$out"
"$cli" dump PRSALG --folder "$staff" > "$out/staff.csv"
"$cli" dump SKL --folder "$demo/VESPARINE/GENERAL/G$year" --format json > "$out/school.json"
echo
echo "Demo data tree:  $demo (drive C: of the suite)"
echo "Staff records:   $(($(wc -l < "$out/staff.csv") - 1)) in $staff/prs_alg_random.txt"
echo "Dumps written:   $out/staff.csv, $out/school.json"
echo
echo "The first staff records (post number, state, surname, names):"
cut -d, -f2-5 "$out/staff.csv" | head -n 8
