#pragma once
// The Qt form of the banking details (sk413_prg), shown as a modal child form through the
// dialogs. Every box is a QLineEdit named "prs_data_" + its number.

#include "ui/qt_dialogs.h"

namespace korvel::staff {

void register_banking_form(ui::QtDialogs& dialogs);

}  // namespace korvel::staff
