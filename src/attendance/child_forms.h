#pragma once
// The Qt forms the attendance side shows as modal child forms through the dialogs: the reason
// codes (sk417_kodes_prg) and the leave capture (sk417_verlof_prg).

#include "ui/qt_dialogs.h"

namespace korvel::attendance {

// Registers the attendance side's child forms with the Qt dialogs.
void register_child_forms(ui::QtDialogs& dialogs);

}  // namespace korvel::attendance
