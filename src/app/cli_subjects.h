#pragma once
// korvel-cli subjects: the staff subject code list of the suite home, and the staff subjects
// rebuilt from the learner records, without a window.

#include <QStringList>
#include <QTextStream>

namespace korvel::app {

extern const char* const kSubjectsListUsage;

// A value as a field of a comma-separated line: quoted when it holds a comma or a quote.
QString csv_field(const QString& value);

// "subjects list [--lang af|en] [--drive X:=DIR ...]": one line a code, "code,grade,name", the
// name in the language asked for (default: the program's). A missing list prints nothing.
int subjects_list(const QStringList& args, QTextStream& out, QTextStream& err);

// args[0] is "subjects", args[1] "rebuild". Merges into the subject file unless --recreate is
// given. Returns the exit code: 0 done, 1 failed, 2 bad arguments.
int subjects_rebuild(const QStringList& args, QTextStream& out, QTextStream& err);

inline constexpr const char* kSubjectsRebuildUsage =
    "  subjects rebuild [--recreate] [--drive X:=DIR ...]\n"
    "      the staff subjects rebuilt from the learner records: merged into the subject file,\n"
    "      or with --recreate a new file holding only what the learner records give\n";

}  // namespace korvel::app
