#pragma once
// Older layouts of the staff files convert as they are opened, with no dialog. Whether an
// upgrade ran is told by a frozen copy of the old file under a year name, never by what the
// records hold. A conversion is written beside the live file as a whole and then put in its
// place; the frozen copy is made before that, so a cut anywhere is finished at the next open,
// and a frozen copy that cannot be made converts nothing.

#include <QDate>
#include <QString>

#include "platform/file_system.h"
#include "store/record.h"

namespace korvel::store {

// What opening a code upgrades in a folder, for the ledger year. Returns what converted, in
// words (blank when nothing did).
QString upgrade_on_open(const platform::FileSystem& fs, const QString& code_name,
                        const QString& folder, const QString& ledger_year);

// A new attendance record of a post: every day unmarked and without a reason.
void new_attendance_record(Record& r, const QString& post);

// Subject files last written before this date hold the old subject numbers and are dropped.
inline const QDate kSubjectFileCutOff{2017, 4, 18};

}  // namespace korvel::store
