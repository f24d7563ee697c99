#pragma once
// The data check from the main menu: the check of the year in use, shown as a report on the
// screen (the print preview), on paper or in a workbook, as the print target form chooses.

#include <QWidget>

#include "check/data_check.h"
#include "shell/session.h"

namespace korvel::check {

// Runs the check over the session's folders and year and shows the report. Returns no form of
// its own: the report's windows are modal.
QWidget* open_data_check(shell::Session& session, QWidget* parent);

// The check's view of the session's data tree.
CheckTree tree_of(const shell::Session& session);

}  // namespace korvel::check
