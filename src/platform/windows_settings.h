#pragma once
// The machine settings the program puts right on Windows at start. Elsewhere there is nothing
// to put right, and each call does nothing; our own parsing and printing of numbers use a point
// and a comma whatever the machine's settings.

#include <QStringList>

namespace korvel::platform {

// Forces the decimal symbol "." and the grouping symbol "," (numbers and money) for the user,
// and tells the other programs. True when anything was changed.
bool force_number_format();

// Makes hidden folders visible in Explorer (the ProgramData folder is hidden), where the
// setting holds 2.
void show_hidden_folders();

// Removes desktop shortcuts named after the suite's old programs.
void remove_desktop_shortcuts(const QStringList& names);

// The Windows product name, for the header strip and the page footer; elsewhere the
// system's name ("Linux").
QString windows_product_name();

}  // namespace korvel::platform
