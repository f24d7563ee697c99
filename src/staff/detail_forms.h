#pragma once
// The Qt forms of the detail forms of a staff member, shown as modal child forms through the
// dialogs: the address and family details (sk412_prg) and the banking details (sk413_prg).
//
// Every box is a QLineEdit named "prs_data_" + its number, each list "ja_nee_lys_" + its number,
// each button and screen by its own name ("data_ok", "staff_exit", "screen_next", "data_raam_0").

#include "ui/qt_dialogs.h"

namespace korvel::staff {

// Registers sk412_prg and sk413_prg with the Qt dialogs.
void register_detail_forms(ui::QtDialogs& dialogs);

}  // namespace korvel::staff
