#pragma once
// The Qt form of the chooser of a staff member's detail forms (staff_kies_inlees), shown
// modally through the dialogs over its behaviour.

#include "ui/qt_dialogs.h"

namespace korvel::staff {

void register_detail_chooser_form(ui::QtDialogs& dialogs);

}  // namespace korvel::staff
