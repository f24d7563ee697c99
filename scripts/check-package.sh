#!/usr/bin/env bash
# Builds the Debian package and unpacks it into a clean folder (no root, nothing installed) to
# check that it holds what a desktop needs and declares what it depends on.
set -euo pipefail
build="${1:-build}"
(cd "$build" && cpack -G DEB >/dev/null)
deb=$(ls -t "$build"/korvel_*.deb | head -n 1)
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
dpkg -x "$deb" "$root"
missing=0
for f in usr/bin/korvel usr/bin/korvel-cli usr/bin/korvel-path-tool \
         usr/share/applications/korvel.desktop \
         usr/share/icons/hicolor/scalable/apps/korvel.svg \
         usr/share/man/man1/korvel-cli.1.gz; do
  if [ ! -s "$root/$f" ]; then
    echo "package: $f missing" >&2
    missing=1
  fi
done
depends=$(dpkg-deb -f "$deb" Depends)
for d in libqt6widgets6 libqt6printsupport6 qt6-qpa-plugins libxlsxwriter4 libfreexl1 libshp2 \
         fonts-liberation2; do
  case "$depends" in *"$d"*) ;; *) echo "package: does not depend on $d" >&2; missing=1 ;; esac
done
# The unpacked command line runs and its manual page is its own help.
"$root/usr/bin/korvel-cli" --help | grep -q '^  check ' || { echo "package: korvel-cli --help" >&2; missing=1; }
zcat "$root/usr/share/man/man1/korvel-cli.1.gz" | grep -q 'check \[--drive' ||
  { echo "package: man page" >&2; missing=1; }
if command -v desktop-file-validate >/dev/null; then
  desktop-file-validate "$root/usr/share/applications/korvel.desktop"
fi
[ "$missing" = 0 ] && echo "package: $deb holds $(dpkg -c "$deb" | wc -l) entries, all in order"
exit "$missing"
