#include "attendance/code_list_print.h"

namespace korvel::attendance {

void print_code_list(reports::PrintJob& job, const CodeListPrint& list) {
    job.print_setup();
    reports::PrintDevice& device = job.device();
    for (const PrintLine& line : list.lines) {
        // The page header prints at the top of a page and where the page is full.
        job.print_page_header(list.title);
        for (const auto& [tab, text] : line.at_tabs) {
            device.set_current_x(tab);
            device.print(text, true);
        }
        device.print(QString());
    }
    if (list.lines.empty()) {
        job.print_page_header(list.title);
    }
    job.finish_report();
}

}  // namespace korvel::attendance
