#pragma once
// The data check as a report: one row a finding (file, record, field, fault), printed page by
// page through the page engine, or into a workbook when that is the target.

#include <vector>

#include "check/data_check.h"
#include "reports/print_grid.h"
#include "reports/report_engine.h"

namespace korvel::check {

reports::PrintGrid check_grid(const std::vector<Finding>& findings, bool afrikaans);

// Prints the report on the job's device (the target chosen already): a line that says the data
// are in order when there are no findings.
void print_check_report(reports::PrintJob& job, const std::vector<Finding>& findings,
                        const QString& year);

}  // namespace korvel::check
