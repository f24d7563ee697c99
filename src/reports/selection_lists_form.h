#pragma once
// The Qt forms of the tuition list (sk426_prg) and the qualification list (sk427_prg): the
// selection the staff lists share, shown through the dialogs over their behaviour.

#include "ui/qt_dialogs.h"

namespace korvel::reports {

void register_selection_lists_forms(ui::QtDialogs& dialogs);

}  // namespace korvel::reports
