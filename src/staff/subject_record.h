#pragma once
// The subject record (PRSVAK) of the staff member a detail form is open for. It is found by the
// post number when the form loads (and made when there is none), and written back at that
// number: never at whatever number another form or the register last left in the file.

#include <QString>

#include "shell/session.h"
#include "store/record.h"
#include "store/record_layouts.h"

namespace korvel::staff {

struct SubjectRecord {
    int number = 0;  // 0: the file could not be had, and nothing is written
    store::Record record{store::PRSVAK};
};

SubjectRecord load_subject_record(shell::Session& session, const QString& post);

// Writes the record at its own number; the user is told when that fails.
bool write_subject_record(shell::Session& session, const SubjectRecord& subjects);

}  // namespace korvel::staff
