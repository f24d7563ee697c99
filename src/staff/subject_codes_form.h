#pragma once
// The Qt form of the staff subject code list (Personeel_vakke), shown as a modal child form
// through the dialogs. The list view is a table named "lurits_vaklys".

#include "ui/qt_dialogs.h"

namespace korvel::staff {

void register_subject_codes_form(ui::QtDialogs& dialogs);

}  // namespace korvel::staff
