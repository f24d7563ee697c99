#pragma once
// The Qt form of the experience of a staff member (sk416_prg), shown as a modal child form through
// the dialogs.

#include "ui/qt_dialogs.h"

namespace korvel::staff {

void register_experience_form(ui::QtDialogs& dialogs);

}  // namespace korvel::staff
