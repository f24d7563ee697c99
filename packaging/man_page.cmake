# Writes the manual page of korvel-cli from its own --help, so the two never differ.
#   cmake -DCLI=path/to/korvel-cli -DOUT=korvel-cli.1 -DVERSION=x.y.z -P man_page.cmake
set(ENV{QT_QPA_PLATFORM} offscreen)
execute_process(COMMAND "${CLI}" --help OUTPUT_VARIABLE help RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
    message(FATAL_ERROR "korvel-cli --help failed: ${rc}")
endif()
# roff: a backslash doubles, a line starting with a dot or quote is escaped.
string(REPLACE "\\" "\\e" help "${help}")
string(REGEX REPLACE "\n([.'])" "\n\\\\&\\1" help "${help}")
string(TIMESTAMP today "%Y-%m-%d" UTC)
file(WRITE "${OUT}" ".TH KORVEL-CLI 1 \"${today}\" \"korvel ${VERSION}\" \"User Commands\"
.SH NAME
korvel-cli \\- the KORVEL staff system from a shell: demo data, record dumps, compaction,
the data check of a year's tree and the staff lists
.SH SYNOPSIS
.B korvel-cli
.I COMMAND
[\\fIARGS\\fR]
.SH DESCRIPTION
KORVEL keeps a school's staff records in the fixed-length record files of the suite's shared
data tree. korvel-cli runs the same core without a window. Where the program would show a
message it prints the same words to standard error and exits non-zero.
.SH COMMANDS
.nf
${help}.fi
.SH ENVIRONMENT
.TP
.B KORVEL_DRIVES
a file of lines \\fBF:=/srv/school\\fR mapping the suite's drives to folders
.TP
.B KORVEL_DRIVE_\\fIX\\fR
the folder of drive \\fIX\\fR:
.SH FILES
.TP
.I ~/.config/korvel/drives.conf
the drive map when KORVEL_DRIVES is not set
.TP
.I ~/.local/share/korvel/drives/
every drive's folder when no map names it
.SH SEE ALSO
.BR korvel (1)
")
