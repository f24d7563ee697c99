#pragma once
// The Qt form of the address and family details (sk412_prg), shown as a modal child form
// through the dialogs. Every box is a QLineEdit named "prs_data_" + its number, each list
// "ja_nee_lys_" + its number, each button and screen by its own name.

#include "ui/qt_dialogs.h"

namespace korvel::staff {

void register_address_family_form(ui::QtDialogs& dialogs);

}  // namespace korvel::staff
