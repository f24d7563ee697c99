#pragma once
// The Qt form of the staff export (sk4_export), bound to StaffExport.

#include <QWidget>

#include "shell/session.h"

namespace korvel::yearend {

// The export as a child form of the menu; nullptr when it unloads at once (no staff, or the
// file chooser cancelled).
QWidget* open_staff_export(shell::Session& session, QWidget* parent);

}  // namespace korvel::yearend
