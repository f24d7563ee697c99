#pragma once
// The Qt form of the staff subject rebuild (sk4_vakke_van_admin), shown as a modal child form
// through the dialogs: its caption, a progress bar and admin_exit. It runs the rebuild as it
// opens and closes when the rebuild is done.

#include "ui/qt_dialogs.h"

namespace korvel::staff {

void register_staff_subjects_form(ui::QtDialogs& dialogs);

}  // namespace korvel::staff
