#pragma once
// The Qt form of the blank forms (sk424_prg), shown through the dialogs over its behaviour.

#include "ui/qt_dialogs.h"

namespace korvel::reports {

void register_blank_forms_form(ui::QtDialogs& dialogs);

}  // namespace korvel::reports
