#pragma once
// Older layouts of the staff files convert as they are opened, with no dialog. Whether an
// upgrade ran is told by a frozen copy of the old file under a year name, never by what the
// records hold. A conversion is written beside the live file as a whole and then put in its
// place; the frozen copy is made before that, so a cut anywhere is finished at the next open,
// and a frozen copy that cannot be made converts nothing.

#include <QDate>
#include <QString>
#include <functional>

#include "platform/file_system.h"
#include "store/dbf_import.h"
#include "store/record.h"

namespace korvel::store {

class BlockWriter;

// What opening a code upgrades in a folder, for the ledger year: first the dBASE table of the
// code, when its record file is not there yet (workstation_folder holds the setting of how
// tables are opened), then an older layout. Returns what converted, in words, a line each
// (blank when nothing did).
QString upgrade_on_open(const platform::FileSystem& fs, const QString& code_name,
                        const QString& folder, const QString& ledger_year,
                        const QString& workstation_folder = {},
                        const ImportProgress& progress = {});

// A record file written whole under the name to: built in a ".part" beside it, pushed to the
// disk and renamed over to. False, and nothing left behind, when produce or a write failed.
bool write_file_beside(const platform::FileSystem& fs, const QString& to, int record_length,
                       const std::function<bool(BlockWriter&)>& produce);

// A new attendance record of a post: every day unmarked and without a reason.
void new_attendance_record(Record& r, const QString& post);

// Subject files last written before this date hold the old subject numbers and are dropped.
inline const QDate kSubjectFileCutOff{2017, 4, 18};

}  // namespace korvel::store
