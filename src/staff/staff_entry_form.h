#pragma once
// The Qt forms of the staff entry (sk411_inlees) and of its chooser of detail forms
// (staff_kies_inlees), shown modally through the dialogs over their behaviour. Widgets carry the
// form's own names ("prs_data_8", "data_ok", "hk_lys", "pr_option_2") as object names.

#include "ui/qt_dialogs.h"

namespace korvel::staff {

void register_entry_forms(ui::QtDialogs& dialogs);

}  // namespace korvel::staff
