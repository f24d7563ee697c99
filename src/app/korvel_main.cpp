// korvel: the desktop program.

#include <QApplication>
#include <QProcessEnvironment>

#include "app/desktop.h"
#include "app/forms.h"
#include "attendance/child_forms.h"
#include "platform/drive_map.h"
#include "platform/executable.h"
#include "platform/process_end.h"
#include "platform/single_instance.h"
#include "shell/session.h"
#include "shell/startup.h"
#include "staff/detail_forms.h"
#include "staff/remarks_form.h"
#include "staff/sk411_inlees_form.h"
#include "ui/qt_dialogs.h"
#include "ui/staff_list_forms.h"

using namespace korvel;

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("KORVEL"));
    ui::QtDialogs dialogs;
    attendance::register_child_forms(dialogs);
    ui::register_staff_list_forms(dialogs);
    staff::register_entry_forms(dialogs);
    staff::register_detail_forms(dialogs);
    staff::register_remarks_form(dialogs);
    platform::DriveMap drives = platform::DriveMap::from_environment();
    shell::Session session(dialogs, drives);
    session.executable_path = platform::executable_windows_path(drives);
    session.afrikaans = false;  // the language before language.txt is read
    shell::Startup startup(session);
    try {
        startup.begin();
        platform::SingleInstance instance;
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
