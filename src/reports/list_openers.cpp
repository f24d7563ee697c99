#include "reports/list_openers.h"

#include "reports/blank_forms.h"
#include "reports/print_menu.h"
#include "reports/qualification_list.h"
#include "reports/tuition_list.h"
#include "shell/session.h"

namespace korvel::reports {

namespace {

// Runs the form modally through the session's dialogs.
template <class Form>
PrintMenu::Opener opener(shell::Session& session, PrintJob& job, PrintTargetHost* host) {
    return [&session, &job, host](int) {
        Form form(session, job, host);
        form.form_load();
        session.dialogs().show_modal(form);
        form.exit_click();
    };
}

}  // namespace

void register_form_lists(PrintMenu& menu, shell::Session& session, PrintJob& job,
                         PrintTargetHost* host) {
    menu.set_opener(kBlankFormsButton, opener<BlankForms>(session, job, host));
    menu.set_opener(kTuitionListButton, opener<TuitionList>(session, job, host));
    menu.set_opener(kQualificationListButton, opener<StaffQualificationList>(session, job, host));
}

}  // namespace korvel::reports
