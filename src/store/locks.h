#pragma once
// Advisory record locks shared by every program of the suite, and the workstation's audit
// trail.
//
// The lock table user_lock_record.txt lies in the general year folder: 140-byte records of
// user, date, program, type, ledger year and identification. A slot whose type and
// identification are both blank is free and is taken again; the file never shrinks. The table
// is opened for one call at a time and never kept open, so other workstations see a lock as
// soon as it is written. Taking a lock is a scan and a write, not one atomic step: two
// workstations can pass the scan at the same moment, a window the suite has always accepted.
//
// The audit trail Audit_Trail.txt lies in the workstation folder: 258-byte records of user,
// date, time, event and the three folders. Locks log "type=identification"; forms log their
// name. The log written through locks restarts from record 1 once it holds a thousand lines.
//
// Every routine takes the user's name as a parameter, the logon name unless a caller says
// otherwise, so that a test can act as two users on one data tree.

#include <QString>
#include <QTime>

#include "platform/user.h"
#include "store/store.h"

namespace korvel::store {

// Records the audit trail keeps before a lock starts it over.
inline constexpr int kAuditRing = 1000;

// The time of day as the audit trail writes it: 24-hour "hh:mm:ss" ("10:15:30").
QString audit_time_text(const QTime& time);

// Takes the lock of a record for the user. True when the caller may go on: there is no lock
// table (no general year folder), or no other user holds the same type and identification.
// False after the user was told who holds it. With the system code "L" the identification is
// cut at its first ":", in the caller's variable too. A lock taken writes an audit line.
bool lock_record(Store& store, const QString& type, QString& identification,
                 const QString& user = platform::current_user());

// Frees the first slot holding the type and identification, whoever took it. A lock that is
// not there is ignored.
void unlock_record(Store& store, const QString& type, const QString& identification);

// The close-all path's clean-up of a learner-side lock ("L") on the identification (a learner
// folder) that another user left behind: its slot is cleared whole. Nothing happens when that
// folder does not exist. Failures are ignored.
void clear_foreign_lock(Store& store, const QString& identification,
                        const QString& user = platform::current_user());

// The audit line of a form being opened; the event is the form's name.
void log_form_open(Store& store, const QString& form_name,
                   const QString& user = platform::current_user());

}  // namespace korvel::store
