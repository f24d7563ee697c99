#pragma once
// korvel-cli subjects list: the staff subject code list of the suite home.

#include <QStringList>
#include <QTextStream>

namespace korvel::app {

extern const char* const kSubjectsListUsage;

// "subjects list [--lang af|en] [--drive X:=DIR ...]": one line a code, "code,grade,name", the
// name in the language asked for (default: the program's). A missing list prints nothing.
int subjects_list(const QStringList& args, QTextStream& out, QTextStream& err);

}  // namespace korvel::app
