#include "check/data_check_form.h"

#include "check/check_report.h"
#include "platform/user.h"
#include "reports/print_target.h"
#include "reports/print_target_host.h"
#include "reports/school_report.h"

namespace korvel::check {

CheckTree tree_of(const shell::Session& session) {
    const QString user = session.user_name.isEmpty() ? platform::current_user() : session.user_name;
    return {session.fs().drives(),    session.folders, session.ledger_year,
            user.trimmed().toUpper(), session.today(), program_running_here,
            session.afrikaans};
}

QWidget* open_data_check(shell::Session& session, QWidget* parent) {
    std::vector<Finding> findings;
    {
        const std::unique_ptr<ui::Progress> bar =
            session.dialogs().progress(check_title(session.afrikaans), kCheckStages, false);
        findings = check_tree(tree_of(session), bar.get());
    }
    reports::QtPrintTargetHost host(parent);
    reports::PrintJob job(host.job_device(), session.dialogs(), reports::report_school(session),
                          session.afrikaans);
    job.general_year_folder = session.fs().native(session.folders.general_year);
    job.state.report_name = session.ledger_year + check_title(session.afrikaans);
    if (reports::ask_print_target(job, host, session.fs().native(session.folders.workstation))) {
        print_check_report(job, findings, session.ledger_year);
    }
    return nullptr;
}

}  // namespace korvel::check
