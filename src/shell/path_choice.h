#pragma once
// What the path tool does once the user has chosen where the suite's data tree lies: the drive
// (a letter, or a server share) is mapped to its folder in the drive configuration, and
// network.dta gets the eight folders of the tree on that drive.

#include <QString>

#include "platform/drive_map.h"

namespace korvel::shell {

struct PathChoice {
    QString drive;          // "F:" or "\\SERVER\SHARE"
    QString native_folder;  // where that drive lies on this machine; blank on Windows
    QString year;           // the ledger year of the folders written
};

// Adds or replaces the drive's line in the configuration file (native path; made when
// missing), then writes network.dta in the workstation folder of workstation_drive.
// Returns a message in the user's words when something could not be written; blank on success.
QString apply_path_choice(const PathChoice& choice, const QString& config_file,
                          const QString& workstation_drive, bool afrikaans);

// The configuration file the drive map reads: KORVEL_DRIVES, else the user's drives.conf.
QString drive_config_file();

}  // namespace korvel::shell
