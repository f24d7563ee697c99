#pragma once
// The Qt form of the leave capture (sk417_verlof_prg), shown as a modal child form through
// the dialogs over its behaviour.

#include "ui/qt_dialogs.h"

namespace korvel::attendance {

void register_leave_capture_form(ui::QtDialogs& dialogs);

}  // namespace korvel::attendance
