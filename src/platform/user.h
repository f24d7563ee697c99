#pragma once
#include <QString>

namespace korvel::platform {

// The name the user logged on with; blank when it cannot be had. On Windows the logon name,
// elsewhere the login name of the process owner.
QString current_user();

}  // namespace korvel::platform
