#!/usr/bin/env bash
# Installs the Debian packages KORVEL needs to build, test and run; with the argument `bench`,
# also what the benchmarks' yardstick needs (LibreOffice Calc, which reads the CSV it converts);
# with `screens`, what scripts/screens.sh needs.
# Idempotent: only packages that are missing are asked for; sudo is used when not root.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config
  qt6-base-dev qt6-base-dev-tools libgl-dev
  libxlsxwriter-dev libfreexl-dev libzip-dev libshp-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  fonts-liberation2 fonts-symbola
  clang libclang-rt-14-dev
  poppler-utils python3-openpyxl python3-dbf python3-xlwt
  libreoffice-writer-nogui
  xvfb xauth
  ccache
)
if [ "${1:-}" = bench ]; then
  packages+=(libreoffice-calc-nogui)
fi
# scripts/screens.sh: a small window manager, a robot at the keyboard and a screen grabber.
if [ "${1:-}" = screens ]; then
  packages+=(openbox xdotool imagemagick)
fi

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "Installing: ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then
  sudo="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
