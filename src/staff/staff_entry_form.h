#pragma once
// The Qt form of the staff entry (sk411_inlees), shown modally through the dialogs over its
// behaviour. Widgets carry the form's own names ("prs_data_8", "data_ok", "hk_lys") as object
// names.

#include "ui/qt_dialogs.h"

namespace korvel::staff {

void register_staff_entry_form(ui::QtDialogs& dialogs);

}  // namespace korvel::staff
