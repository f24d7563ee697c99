#pragma once
// `korvel-cli print` for the staff timetable, the tuition list and the qualification list.

#include <QStringList>
#include <QTextStream>

namespace korvel::reports {

// True for the report names this part of the command serves.
bool is_form_list_report(const QString& report);
// args[0] is "print", args[1] one of those names. The exit code: 0 done, 1 failed, 2 bad
// arguments.
int print_form_list_report(const QStringList& args, QTextStream& out, QTextStream& err);

extern const char* const kFormListsPrintUsage;

}  // namespace korvel::reports
