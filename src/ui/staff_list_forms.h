#pragma once
// The Qt forms of the staff lists: the print menu staff_kies_druk and the selection form
// sk421_prg, shown through the dialogs over their behaviour.

#include "shell/session.h"
#include "ui/qt_dialogs.h"

namespace korvel::ui {

// Registers the print menu and the staff list form with the Qt dialogs.
void register_staff_list_forms(QtDialogs& dialogs);

// The print menu of the staff side, printing through a printer of this machine, a PDF or a
// workbook as the print target form chooses.
void show_print_menu(shell::Session& session, QWidget* parent);

}  // namespace korvel::ui
