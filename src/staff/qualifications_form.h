#pragma once
// The Qt form of the qualifications of a staff member (sk414_prg), shown as a modal child form
// through the dialogs.

#include "ui/qt_dialogs.h"

namespace korvel::staff {

void register_qualifications_form(ui::QtDialogs& dialogs);

}  // namespace korvel::staff
