#pragma once
// The suite's fixed folder tree on a drive, and the folder variables' defaults.

#include <QString>
#include <QStringList>

#include "store/store.h"

namespace korvel::shell {

// Every folder variable at its default for a drive ("C:" or "\\SERVER\SHARE") and ledger year:
// <drive>\VESPARINE\ADMIN, ...\STAFF\P<year>, ...\ROSTER\R<year>, ...\GENERAL\G<year> and the
// folders of the suite's other systems. The school folder is the general year folder; the
// workstation folder is <drive>\ProgramData\VESPARINE.
store::Folders default_folders(const QString& drive, const QString& year);

// True for a ledger year as the folder names take it: four digits, the first not 0.
bool is_year_text(const QString& text);

// The general year folder of an admin folder: "ADMIN" replaced by "GENERAL\G" + year.
QString general_year_folder(const QString& admin_folder, const QString& year);

// The eight lines of network.dta in their order: admin, funds, stock, staff, hbooks, roster,
// media, budget.
QStringList network_lines(const store::Folders& folders);

}  // namespace korvel::shell
