#pragma once
// staff_kies_druk: the print menu of the staff side. Thirteen buttons under six group captions;
// each opens the form of its report, or only notes its option where no form stands behind it.
// While the chosen form runs every button is disabled.
//
// Which forms exist is told by registering an opener per button; a button without one (and not
// one of the two that open nothing) stays disabled.

#include <QString>
#include <QStringList>
#include <array>
#include <functional>

#include "platform/dialogs.h"

namespace korvel::shell {
class Session;
}

namespace korvel::reports {

class PrintJob;
class PrintTargetHost;

inline constexpr int kPrintMenuButtons = 13;
inline constexpr int kPrintMenuGroups = 6;

struct PrintMenuButton {
    QString caption;
    int group = 0;           // index into PrintMenu::group_captions
    QString form;            // the form it opens; blank when none
    bool available = false;  // the form is in this build (or none is needed)
    bool enabled = false;
};

class PrintMenu : public ui::ChildForm {
  public:
    // Runs a form for the option of its button and returns when the form has closed.
    using Opener = std::function<void(int option)>;

    explicit PrintMenu(bool afrikaans);

    QString form_name() const override { return QStringLiteral("staff_kies_druk"); }

    QString heading;
    std::array<QString, kPrintMenuGroups> group_captions;
    std::array<PrintMenuButton, kPrintMenuButtons + 1> pr_option;  // 1 to 13
    int noted_option = 0;  // the option index of the last button pressed
    bool visible = false;

    // The form behind a button; makes the button available.
    void set_opener(int index, Opener opener);

    void form_load();
    void pr_option_click(int index);
    void exit_click() { visible = false; }

  private:
    void enable_all(bool on);

    bool afrikaans_;
    std::array<Opener, kPrintMenuButtons + 1> openers_;
};

// A report form of a library above this one, asked for by its name through the dialogs, which
// the program registers with its Qt side.
struct ReportFormRequest : ui::ChildForm {
    ReportFormRequest(QString form, shell::Session& s, PrintJob& j, PrintTargetHost* h, int o)
        : name(std::move(form)), session(s), job(j), host(h), option(o) {}
    QString form_name() const override { return name; }
    QString name;
    shell::Session& session;
    PrintJob& job;
    PrintTargetHost* host;
    int option;
};

// Buttons 6 to 8 and 11 ask for the attendance reports and the mark sheet.
void register_attendance_reports(PrintMenu& menu, shell::Session& session, PrintJob& job,
                                 PrintTargetHost* host);

// The openers of this library's forms: buttons 1 to 4 run sk421_prg on its option, shown
// through the session's dialogs. The job and host must outlive the menu.
void register_staff_lists(PrintMenu& menu, shell::Session& session, PrintJob& job,
                          PrintTargetHost* host);

}  // namespace korvel::reports
