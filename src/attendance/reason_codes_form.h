#pragma once
// The Qt form of the attendance reason codes (sk417_kodes_prg), shown as a modal child form
// through the dialogs over its behaviour.

#include "ui/qt_dialogs.h"

namespace korvel::attendance {

void register_reason_codes_form(ui::QtDialogs& dialogs);

}  // namespace korvel::attendance
