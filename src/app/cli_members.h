#pragma once
// korvel-cli members: the governing body register's jobs without a window.

#include <QStringList>
#include <QTextStream>

namespace korvel::app {

inline constexpr const char* kMembersUsage =
    "  members list|from-staff POST...|close [--lang af|en] [--drive X:=DIR ...]\n"
    "      the governing body register: its rows (no,type,state,surname,initials,title,id,\n"
    "      gender), members made from the staff records of the post numbers, or the members'\n"
    "      file compacted as closing the register does\n";

inline constexpr const char* kImportLuritsUsage =
    "  import-lurits FILE [--yes] [--drive X:=DIR ...]\n"
    "      staff records from a LURITS staff workbook (.xls or .xlsx), post numbers L1 on;\n"
    "      without --yes the question is answered No and nothing is imported\n";

// args[0] is "import-lurits".
int import_lurits_command(const QStringList& args, QTextStream& out, QTextStream& err);

// args[0] is "members". Returns the exit code: 0 done, 1 failed, 2 bad arguments.
int members_command(const QStringList& args, QTextStream& out, QTextStream& err);

}  // namespace korvel::app
