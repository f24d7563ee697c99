#include "attendance/code_list_print.h"

#include <set>

namespace korvel::attendance {

void print_code_list(reports::PrintJob& job, const CodeListPrint& list) {
    // An empty file prints nothing: the document the target opened is given up.
    if (list.lines.empty()) {
        if (job.state.to_spreadsheet) {
            job.end_spreadsheet();
        } else {
            job.device().abandon();
        }
        return;
    }
    job.print_setup();
    if (job.state.to_spreadsheet) {
        // A worksheet never pages: one header, then a row a line and a column a tab position.
        job.print_page_header(list.title);
        std::set<int> tabs;
        for (const PrintLine& line : list.lines) {
            for (const auto& [tab, text] : line.at_tabs) {
                tabs.insert(tab);
            }
        }
        reports::Sheet& sheet = job.workbook()->sheet(job.state.spreadsheet_sheet);
        for (const PrintLine& line : list.lines) {
            for (const auto& [tab, text] : line.at_tabs) {
                const auto column = static_cast<int>(std::distance(tabs.begin(), tabs.find(tab)));
                sheet.put(job.state.spreadsheet_row - 1, column, text);
            }
            ++job.state.spreadsheet_row;
        }
    } else {
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
    }
    job.finish_report();
}

}  // namespace korvel::attendance
