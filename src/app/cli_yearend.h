#pragma once
// korvel-cli year-end and use-year: the year-end closing and the choice of year, unattended.

#include <QStringList>
#include <QTextStream>

namespace korvel::app {

#define KORVEL_YEAREND_USAGE                                                                     \
    "  year-end --from Y --to Y [--overwrite|--append] [--drive X:=DIR ...] [--lang af|en]\n"    \
    "      rolls the staff records of year Y into the next; where the target year holds staff\n" \
    "      already, --overwrite or --append says what to do (without either the question is\n"   \
    "      printed and nothing changes)\n"                                                       \
    "  use-year Y [--drive X:=DIR ...] [--lang af|en]\n"                                         \
    "      the year the program works in from now on (year_used.txt, graad_jaar.txt)\n"          \
    "  export --year Y --fields all|F1,F2,... --xlsx FILE [--drive X:=DIR ...] [--lang af|en]\n" \
    "      the chosen fields (PA_VAN, ..., SACE_NR, FOR_NR, LURITS_NR) of the active staff of\n" \
    "      year Y to a workbook\n"                                                               \
    "  upgrade [--drive X:=DIR ...]\n"                                                           \
    "      opens every staff file of every year folder and lists what converted from an older\n" \
    "      layout\n"
inline constexpr const char* kYearEndUsage = KORVEL_YEAREND_USAGE;

int year_end_command(const QStringList& args, QTextStream& out, QTextStream& err);
int export_command(const QStringList& args, QTextStream& out, QTextStream& err);
int upgrade_command(const QStringList& args, QTextStream& out, QTextStream& err);
int use_year_command(const QStringList& args, QTextStream& out, QTextStream& err);

}  // namespace korvel::app
