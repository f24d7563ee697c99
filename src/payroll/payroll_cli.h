#pragma once
// `korvel-cli print payslips|salary-summary|letterhead-frame`: the payroll's reports without a
// window, to a PDF file or a workbook.

#include <QStringList>
#include <QTextStream>

namespace korvel::payroll {

bool is_payroll_report(const QString& name);
// args[0] is "print". Exit code: 0 done, 1 failed, 2 bad arguments.
int print_payroll_report(const QStringList& args, QTextStream& out, QTextStream& err);

extern const char* const kPayrollPrintUsage;

}  // namespace korvel::payroll
