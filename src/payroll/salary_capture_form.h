#pragma once
// sk461_prg on the screen, and the payroll's child forms (lone_kies_druk, sk4611_prg and the
// letterhead forms sk1_kies_briefhoofde and sk1_briefhoof) registered with the Qt dialogs.

#include <QWidget>

#include "shell/session.h"

namespace korvel::ui {
class QtDialogs;
}

namespace korvel::payroll {

// Runs the salary capture modally; returns no form of its own.
QWidget* open_salary_capture(shell::Session& session, QWidget* parent);

void register_payroll_forms(ui::QtDialogs& dialogs);

}  // namespace korvel::payroll
