#pragma once
// The Qt form of the print menu of the staff side (staff_kies_druk), shown through the dialogs
// over its behaviour.

#include "shell/session.h"
#include "ui/qt_dialogs.h"

namespace korvel::reports {

void register_print_menu_form(ui::QtDialogs& dialogs);

// The print menu of the staff side, printing through a printer of this machine, a PDF or a
// workbook as the print target form chooses.
void show_print_menu(shell::Session& session, QWidget* parent);

}  // namespace korvel::reports
