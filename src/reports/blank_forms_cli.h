#pragma once
// `korvel-cli print blank-forms`: the blank or filled capture forms without a window.

#include <QStringList>
#include <QTextStream>

namespace korvel::reports {

bool is_blank_forms_report(const QString& report);
// args[0] is "print", args[1] "blank-forms". The exit code: 0 done, 1 failed, 2 bad arguments.
int print_blank_forms(const QStringList& args, QTextStream& out, QTextStream& err);

extern const char* const kBlankFormsUsage;

}  // namespace korvel::reports
