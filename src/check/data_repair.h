#pragma once
// The repair of a year's data tree: only what the program itself does on opening and closing
// the register, each step through the program's own code, after a dated copy of the year's
// folders beside them. Leftovers of an interrupted replace and stale locks go; opening the
// register repairs post numbers and makes the address and subject records; closing it compacts
// the staff files; attendance and subject records are made as the forms make them on demand.
// Whatever else the check finds is left for a person.

#include <QString>
#include <QStringList>

#include "check/data_check.h"
#include "platform/dialogs.h"

namespace korvel::check {

struct RepairResult {
    bool done = false;  // false: nothing was changed (error says why)
    QString error;
    QStringList backups;  // Windows-form paths of the copies made
    QStringList changes;  // one line a change
};

RepairResult repair_tree(const CheckTree& tree, ui::Dialogs& dialogs);

// The folder a backup of folder goes to, beside it: "P2026 (2026-03-05 10.15.00)". The name
// does not end in four digits, so it is never taken for a year's folder.
QString backup_folder_name(const QString& folder, const QDateTime& when);

}  // namespace korvel::check
