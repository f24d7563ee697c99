#!/usr/bin/env bash
# Makes the demo data tree on first use and opens the program on it. Without a display the
# start-up runs headless and says where its output is.
set -euo pipefail
build="$(cd "$1" && pwd)"
mkdir -p "$2"
demo="$(cd "$2" && pwd)"
cli="$build/src/app/korvel-cli"

if [ ! -d "$demo/VESPARINE" ]; then
  echo "Making the demo data tree in $demo ..."
  "$cli" demo "$demo"
fi

source "$(dirname "$0")/demo-drive.sh"

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  echo "Opening KORVEL on $demo ..."
  exec "$build/src/app/korvel"
fi

out="$demo/out"
mkdir -p "$out"
"$cli" info > "$out/info.txt"
year=$(sed -n 's/^ledger year: //p' "$out/info.txt")
"$cli" dump PRSALG --folder "$demo/VESPARINE/STAFF/P$year" > "$out/staff.csv"
cat "$out/info.txt"
echo
echo "There is no display here, so the start-up ran headless (korvel-cli info) on the demo tree."
echo "Output: $out/info.txt and $out/staff.csv ($(($(wc -l < "$out/staff.csv") - 1)) staff records)."
echo "With a display, make run opens the program itself."
