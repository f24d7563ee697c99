#pragma once
#include <QString>

#include "platform/drive_map.h"

namespace korvel::platform {

// The executable's path in the suite's Windows form: KORVEL_EXE when set, else its native path
// through the drive map, else the suite's usual place on drive C:.
QString executable_windows_path(const DriveMap& drives);

}  // namespace korvel::platform
