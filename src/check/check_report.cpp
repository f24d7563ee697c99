#include "check/check_report.h"

#include "reports/grid_output.h"

namespace korvel::check {

reports::PrintGrid check_grid(const std::vector<Finding>& findings, bool afrikaans) {
    reports::PrintGrid grid;
    grid.set_format_string(afrikaans ? QStringLiteral("<LêER|>REKORD|<VELD|<FOUT")
                                     : QStringLiteral("<FILE|>RECORD|<FIELD|<FAULT"));
    if (findings.empty()) {
        grid.add_item(QStringLiteral("\t\t\t") + (afrikaans
                                                      ? QStringLiteral("GEEN FOUTE GEVIND NIE")
                                                      : QStringLiteral("NO FAULTS FOUND")));
    }
    for (const Finding& f : findings) {
        grid.add_item(f.file + u'\t' + (f.record > 0 ? QString::number(f.record) : QString()) +
                      u'\t' + f.field + u'\t' + f.problem);
    }
    return grid;
}

void print_check_report(reports::PrintJob& job, const std::vector<Finding>& findings,
                        const QString& year) {
    reports::PrintGrid grid = check_grid(findings, job.afrikaans);
    const QString title =
        job.text(QStringLiteral("DATAKONTROLE "), QStringLiteral("DATA CHECK ")) + year;
    job.state.report_name = title;
    reports::fit_grid_columns(job, grid, 0, 120);
    reports::GridPageOptions options;
    options.rule_every = 1;
    options.keep_rows = 9999;
    // A page holds at least one row, so the loop ends; the bound guards a grid that never
    // shrinks.
    const int most = grid.rows() + 2;
    for (int pages = 0; pages < most; ++pages) {
        job.state.page_pending = true;
        job.print_page_header(title, QString(), reports::kLandscapeText);
        if (!job.state.to_spreadsheet) {
            job.device().set_scale_mode(reports::ScaleMode::Characters);
            job.device().set_current_y(6);
        }
        if (reports::print_grid_pages(job, grid, options)) {
            break;
        }
        job.print_continuation_mark();
        job.device().new_page();
    }
    job.finish_report();
}

}  // namespace korvel::check
