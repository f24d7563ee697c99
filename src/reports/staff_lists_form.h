#pragma once
// The Qt form of the staff lists (sk421_prg): the selection of a list, shown through the
// dialogs over its behaviour.

#include "ui/qt_dialogs.h"

namespace korvel::reports {

void register_staff_lists_form(ui::QtDialogs& dialogs);

}  // namespace korvel::reports
