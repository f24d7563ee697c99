#pragma once
// korvel-cli check: the data check of a year's tree, and its repair.

#include <QStringList>
#include <QTextStream>

namespace korvel::app {

// The help of the command, also part of korvel-cli --help.
#define KORVEL_CHECK_USAGE                                                                         \
    "  check [--drive X:=DIR ...] [--year Y] [--format text|json] [--lang af|en]\n"                \
    "        [--repair]\n"                                                                         \
    "      reads every file of the year and prints one finding a line: file, record, field and\n"  \
    "      fault; exit 0 when clean, 1 with findings, 2 when the tree cannot be read. It never\n"  \
    "      writes. With --repair it first copies the year's folders beside them and does what\n"   \
    "      opening and closing the register does, then prints what it changed and what is left.\n" \
    "      --lang af|en gives the findings in Afrikaans or English (default: English)\n"
inline constexpr const char* kCheckUsage = KORVEL_CHECK_USAGE;

int check_command(const QStringList& args, QTextStream& out, QTextStream& err);

}  // namespace korvel::app
