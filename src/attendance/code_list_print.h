#pragma once
// The printed list of the reasons for absence, through the page engine.

#include "attendance/reason_codes.h"
#include "reports/report_engine.h"

namespace korvel::attendance {

// Prints the list on the job's device: the page header with the list's title, then each line
// at its tab positions, a new page with its header where the page is full, then the footer. To
// a workbook the header goes once and the lines into the sheet below it. An empty list prints
// nothing.
void print_code_list(reports::PrintJob& job, const CodeListPrint& list);

}  // namespace korvel::attendance
