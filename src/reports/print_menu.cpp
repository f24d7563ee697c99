#include "reports/print_menu.h"

#include "reports/list_openers.h"
#include "reports/staff_lists.h"
#include "shell/session.h"

namespace korvel::reports {

namespace {

struct ButtonText {
    const char* af;
    const char* en;
    int group;
    const char* form;  // nullptr: no form, the option is only noted
};

// clang-format off
constexpr ButtonText kButtons[kPrintMenuButtons] = {
    {"PERSONEELLYS", "STAFF LIST", 0, "sk421_prg"},
    {"ADRES- EN TELEFOONLYS", "ADDRESS AND TELEPHONE LIST", 0, "sk421_prg"},
    {"VERJAARDAG-/OUDERDOMSLYS", "BIRTHDAY/AGE LIST", 0, "sk421_prg"},
    {"PERSONEELBESONDERHEDE", "STAFF DETAILS", 0, "sk421_prg"},
    {"TOESIGROOSTER", "SUPERVISION TIME TABLE", 1, nullptr},
    {"MAANDOPSOMMING", "MONTHLY SUMMARY", 2, "sk423_prg"},
    {"REDELYS", "REASON LISTS", 2, "sk423_prg"},
    {"TEENWOORDIGHEIDSREGISTER", "ATTENDANCE REGISTER", 2, "sk423_prg"},
    {"BLANKO VORMS", "BLANK FORMS", 3, "sk424_prg"},
    {"PLIGSTATE", "DUTY SHEETS", 4, nullptr},
    {"BYWONING PUNTESTAAT", "ATTENDANCE MARK SHEET", 2, "sk425_prg"},
    {"VAK/GRAAD AANBIEDINGE", "SUBJECT/GRADE TUITION", 5, "sk426_prg"},
    {"KWALIFIKASIELYS", "QUALIFICATION LIST", 5, "sk427_prg"},
};
// clang-format on

}  // namespace

PrintMenu::PrintMenu(bool afrikaans) : afrikaans_(afrikaans) {
    for (int i = 1; i <= kPrintMenuButtons; ++i) {
        const ButtonText& b = kButtons[i - 1];
        PrintMenuButton& button = pr_option[size_t(i)];
        button.group = b.group;
        button.form = b.form ? QString::fromLatin1(b.form) : QString();
        button.available = b.form == nullptr;
    }
}

void PrintMenu::set_opener(int index, Opener opener) {
    if (index < 1 || index > kPrintMenuButtons)
        return;
    openers_[size_t(index)] = std::move(opener);
    pr_option[size_t(index)].available =
        bool(openers_[size_t(index)]) || pr_option[size_t(index)].form.isEmpty();
}

void PrintMenu::form_load() {
    auto t = [this](const char* af, const char* en) {
        return QString::fromUtf8(afrikaans_ ? af : en);
    };
    heading = t("DRUK PERSONEELBESONDERHEDE", "PRINT STAFF DETAILS");
    group_captions = {t(" ALGEMENE BESONDERHEDE ", " GENERAL DETAILS "),
                      t(" TOESIGROOSTER ", " SUPERVISION TIME TABLE "),
                      t(" AFWESIGHEDE ", " ATTENDANCE "),
                      t(" BLANKO VORMS ", " BLANK FORMS "),
                      t(" PLIGSTATE ", " DUTY SHEETS "),
                      t(" KWALIFIKASIES ", " QUALIFICATIONS ")};
    for (int i = 1; i <= kPrintMenuButtons; ++i)
        pr_option[size_t(i)].caption = t(kButtons[i - 1].af, kButtons[i - 1].en);
    enable_all(true);
    visible = true;
}

void PrintMenu::enable_all(bool on) {
    for (int i = 1; i <= kPrintMenuButtons; ++i)
        pr_option[size_t(i)].enabled = on && pr_option[size_t(i)].available;
}

void PrintMenu::pr_option_click(int index) {
    if (index < 1 || index > kPrintMenuButtons || !pr_option[size_t(index)].enabled)
        return;
    noted_option = index;
    enable_all(false);
    if (openers_[size_t(index)])
        openers_[size_t(index)](index);
    enable_all(true);
}

void register_staff_lists(PrintMenu& menu, shell::Session& session, PrintJob& job,
                          PrintTargetHost* host) {
    // Button 1 to 4 open sk421_prg on the option of the same number.
    for (int i = kStaffListOption; i <= kStaffDetailsOption; ++i) {
        menu.set_opener(i, [&session, &job, host](int option) {
            StaffLists form(session, job, option, host);
            form.form_load();
            session.dialogs().show_modal(form);
            form.exit_click();
        });
    }
    register_form_lists(menu, session, job, host);
}

void register_attendance_reports(PrintMenu& menu, shell::Session& session, PrintJob& job,
                                 PrintTargetHost* host) {
    for (int i : {6, 7, 8, 11}) {
        menu.set_opener(i, [&session, &job, host, &menu](int option) {
            ReportFormRequest request(menu.pr_option[size_t(option)].form, session, job, host,
                                      option);
            session.dialogs().show_modal(request);
        });
    }
}

}  // namespace korvel::reports
