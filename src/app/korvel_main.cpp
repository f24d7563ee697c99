// korvel: the desktop program.

#include <QApplication>
#include <QFont>
#include <QProcessEnvironment>

#include "app/desktop.h"
#include "app/forms.h"
#include "attendance/attendance_register_form.h"
#include "attendance/attendance_reports_form.h"
#include "attendance/leave_capture_form.h"
#include "attendance/reason_codes_form.h"
#include "governing/member_register_form.h"
#include "platform/drive_map.h"
#include "platform/executable.h"
#include "platform/process_end.h"
#include "platform/single_instance.h"
#include "reports/print_menu_form.h"
#include "reports/staff_lists_form.h"
#include "shell/session.h"
#include "shell/startup.h"
#include "staff/address_family_form.h"
#include "staff/appointments_form.h"
#include "staff/banking_form.h"
#include "staff/detail_chooser_form.h"
#include "staff/experience_form.h"
#include "staff/qualifications_form.h"
#include "staff/remarks_form.h"
#include "staff/staff_entry_form.h"
#include "staff/staff_subjects_form.h"
#include "staff/subject_codes_form.h"
#include "ui/form_window.h"
#include "ui/qt_dialogs.h"

using namespace korvel;

int main(int argc, char** argv) {
    app::Application app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("KORVEL"));
    // The Windows faces the forms were drawn in, by their nearest free twins where the system
    // has no alias of its own for them.
    QFont::insertSubstitutions(QStringLiteral("Tahoma"),
                               {QStringLiteral("DejaVu Sans"), QStringLiteral("Liberation Sans")});
    QFont::insertSubstitutions(QStringLiteral("MS Sans Serif"),
                               {QStringLiteral("Liberation Sans"), QStringLiteral("DejaVu Sans")});
    ui::QtDialogs dialogs;
    attendance::register_attendance_register_form(dialogs);
    attendance::register_reason_codes_form(dialogs);
    attendance::register_leave_capture_form(dialogs);
    attendance::register_attendance_reports_form(dialogs);
    reports::register_print_menu_form(dialogs);
    reports::register_staff_lists_form(dialogs);
    staff::register_staff_entry_form(dialogs);
    staff::register_detail_chooser_form(dialogs);
    staff::register_address_family_form(dialogs);
    staff::register_banking_form(dialogs);
    staff::register_remarks_form(dialogs);
    staff::register_qualifications_form(dialogs);
    staff::register_appointments_form(dialogs);
    staff::register_experience_form(dialogs);
    staff::register_subject_codes_form(dialogs);
    governing::register_member_entry_form(dialogs);
    staff::register_staff_subjects_form(dialogs);
    platform::DriveMap drives = platform::DriveMap::from_environment();
    shell::Session session(dialogs, drives);
    session.executable_path = platform::executable_windows_path(drives);
    session.afrikaans = false;  // the language before language.txt is read
    shell::Startup startup(session);
    app::FormHeaders form_headers(session);
    app.installEventFilter(&form_headers);
    ui::FormWindows form_windows;
    app.installEventFilter(&form_windows);
    platform::SingleInstance instance;
    app.before_end = [&instance] { instance.release(); };
    try {
        startup.begin();
        if (!instance.try_acquire(startup.executable_name())) {
            dialogs.message(startup.already_loaded_message(), ui::Icon::Critical);
            return 1;
        }
        startup.locate();
        app::ShellWindow shell_window(session, startup, app::desktop_forms());
        dialogs.set_parent(&shell_window);
        shell_window.showMaximized();
        if (!shell_window.start()) {
            // The splash stays without a school: there is nothing to work on.
            return 1;
        }
        return app.exec();
    } catch (const ProcessEnd& end) {
        return end.exit_code();
    }
}
