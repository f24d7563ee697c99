#pragma once
// The confirm dialogs, the password prompt and the system date, through the session's Dialogs.

#include "shell/session.h"

namespace korvel::shell {

// The constant that guards the private remarks.
inline constexpr const char* kSystemPassword = "$ekretari$";

// "IS U SEKER ?" with OK and Cancel; the button pressed.
ui::Answer ask_sure(Session& s);
// True means the user wants a backup first (Yes): the caller stops. It goes on only on No.
bool ask_backup_first(Session& s);
// True when the system password was typed exactly; a wrong one beeps, a blank one does not.
bool ask_system_password(Session& s);
// The calendar with today; on Yes to the question the machine's date would be set. Setting
// the clock is the operating system's privilege: where it is refused nothing changes.
// Returns the date chosen and agreed, or a null date.
QDate set_system_date(Session& s);
// A folder picked from start; blank on cancel.
QString choose_folder(Session& s, const QString& caption, const QString& start);

}  // namespace korvel::shell
