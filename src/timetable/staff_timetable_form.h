#pragma once
// The Qt form of the staff timetable (sk622_prg), shown modally through the dialogs over its
// behaviour.

#include "ui/qt_dialogs.h"

namespace korvel::timetable {

void register_staff_timetable_form(ui::QtDialogs& dialogs);

}  // namespace korvel::timetable
