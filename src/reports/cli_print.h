#pragma once
// `korvel-cli print`: the staff lists without a window, to a PDF file or a workbook.

#include <QStringList>
#include <QTextStream>

namespace korvel::reports {

// args[0] is "print". Returns the exit code: 0 done, 1 failed, 2 bad arguments. PDF output
// needs a QGuiApplication (offscreen is enough) for its fonts.
int print_report(const QStringList& args, QTextStream& out, QTextStream& err);

// The usage lines of the command, for the command line's help.
extern const char* const kPrintUsage;

}  // namespace korvel::reports
