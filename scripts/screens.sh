#!/usr/bin/env bash
# A picture of every main screen: starts KORVEL on the demo tree under Xvfb (1366x768) with a
# small window manager, walks through the forms with the keyboard alone, as a secretary would,
# and saves a PNG of the screen at each form in .demo/screens/.
#
#   scripts/screens.sh [BUILD_DIR] [DEMO_DIR]
#
# With QT_SCALE_FACTOR=1.5 in the environment the program runs as on a 150% display and the
# pictures go to .demo/screens-1.5/. Not part of make test. Installs openbox, xdotool and
# imagemagick when they are missing.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$(cd "${1:-$root/build}" && pwd)"
mkdir -p "${2:-$root/.demo}"
demo="$(cd "${2:-$root/.demo}" && pwd)"
out="$demo/screens${QT_SCALE_FACTOR:+-$QT_SCALE_FACTOR}"

if [ -z "${KORVEL_SCREENS_INSIDE:-}" ]; then
  bash "$root/scripts/install-deps.sh" screens
  if [ ! -d "$demo/VESPARINE" ]; then
    "$build/src/app/korvel-cli" demo "$demo"
  fi
  rm -rf "$out"
  mkdir -p "$out"
  export KORVEL_SCREENS_INSIDE=1
  exec xvfb-run -a -s "-screen 0 1366x768x24 -dpi 96" bash "$0" "$build" "$demo"
fi

# Inside the X server from here on.
source "$root/scripts/demo-drive.sh"
# The forms' remembered places stay out of the user's own settings.
export XDG_CONFIG_HOME="$out-config"
rm -rf "$XDG_CONFIG_HOME"

openbox >/dev/null 2>&1 &
wm=$!
sleep 1
"$build/src/app/korvel" >"$out/korvel.log" 2>&1 &
app=$!
trap 'kill $app $wm 2>/dev/null || true' EXIT

n=0
shot() {  # shot NAME: waits for the screen to settle, then saves it
  sleep "${2:-1.5}"
  n=$((n + 1))
  import -window root "$out/$(printf '%02d' "$n")-$1.png"
  echo "  $(printf '%02d' "$n")-$1.png"
}
# Keys, then a pause: a form that saves as it closes must be gone before the next key.
key() {
  xdotool key --delay 120 "$@"
  sleep 0.8
}

echo "Screens in $out:"
# Each child form is opened from a known place: the button that opened the last one has the
# focus again once it closes, so the walk never depends on where the mouse is.
shot splash 1
key e                  # English
shot menu
key 1                  # the staff register
shot register 3
key Down Return        # the first person; the post number has the focus
shot entry
key shift+Tab shift+Tab shift+Tab
key space              # MORE DETAILS saves and opens the chooser; its first entry has the focus
shot chooser
key space              # ADDRESS AND FAMILY DETAILS
shot address
key Escape             # back on MORE DETAILS
key space              # the chooser again
key Tab space          # BANKING DETAILS
shot banking
key Escape
key space
key Tab Tab space      # QUALIFICATIONS
shot qualifications
key Escape
key space
key Tab Tab Tab space  # APPOINTMENTS
shot appointments
key Escape
key space
key Tab Tab Tab Tab space   # EXPERIENCE
shot experience
key Escape
key space
key Tab Tab Tab Tab Tab Tab space   # LEAVE
shot leave
key Escape
key shift+Tab space    # REMARKS
shot remarks
key Escape
key Escape             # back to the register
shot register-again
key Tab Tab Tab Tab space   # ATTENDANCE: the months, the month list has the focus
shot attendance 2
key Tab Tab Tab space  # REASONS
shot reasons 2
key Escape             # back on REASONS
key Escape             # closes the attendance register; back on ATTENDANCE
key space              # the months again
key Home Down Down Return   # March's grid
shot attendance-month 2
key Escape             # the exit saves; the months again
key Escape             # closes the attendance register
key shift+Tab space    # PRINT
shot print-menu 2
key space              # STAFF LIST: its choices, the list of people has the focus
shot staff-list 2
key shift+Tab shift+Tab space   # OK: where to print
shot print-target 2
key Escape
key Escape             # closes the staff list's choices
key Escape             # closes the print menu
key Escape             # closes the register (its files are compacted)
shot menu-again 3
