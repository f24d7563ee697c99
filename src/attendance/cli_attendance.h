#pragma once
// The attendance reports from the command line: `korvel-cli print monthly-summary`,
// `reason-list`, `attendance-register` and `leave-totals`, to a PDF or a workbook.

#include <QStringList>
#include <QTextStream>

namespace korvel::attendance {

extern const char* const kAttendancePrintUsage;

// True for the names of the attendance reports.
bool is_attendance_report(const QString& name);
// args: "print", the report's name, then the options. The exit code.
int print_attendance_report(const QStringList& args, QTextStream& out, QTextStream& err);

}  // namespace korvel::attendance
