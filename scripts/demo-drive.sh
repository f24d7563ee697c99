# Sourced with $build and $demo set: the demo tree becomes drive C: of the suite, with the
# programs installed where the suite keeps them: the path tool in BRANTOK, KORVEL in its own
# folder.
suite="$demo/Program Files (x86)"
mkdir -p "$suite/KORVEL" "$suite/BRANTOK"
ln -sf "$build/tools/path-tool/korvel-path-tool" "$suite/BRANTOK/LINDOVER.EXE"
printf 'C:=%s\n' "$demo" > "$demo/drives.conf"
export KORVEL_DRIVES="$demo/drives.conf"
export KORVEL_EXE='C:\Program Files (x86)\KORVEL\KORVEL.EXE'
