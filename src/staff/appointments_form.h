#pragma once
// The Qt form of the appointments of a staff member (sk415_prg), shown as a modal child form
// through the dialogs.

#include "ui/qt_dialogs.h"

namespace korvel::staff {

void register_appointments_form(ui::QtDialogs& dialogs);

}  // namespace korvel::staff
