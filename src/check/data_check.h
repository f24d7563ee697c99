#pragma once
// The data check of a year's data tree. The tree lies on a shared drive that several
// workstations and the suite's other programs write without transactions, so files get cut
// short, companion records go missing, post numbers are doubled and locks stay behind after a
// crash. The check reads every file of the year and says what is wrong, one finding a line:
// file, record, field and the fault. It never writes, and it never follows a symbolic link that
// leads out of the tree.

#include <QDate>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "platform/dialogs.h"
#include "platform/drive_map.h"
#include "store/store.h"

namespace korvel::check {

struct Finding {
    QString file;    // Windows-form path
    int record = 0;  // from 1; 0 for the file as a whole
    QString field;   // "PA_POS_NR", "PL_KIND(3)"; blank for the record or file as a whole
    QString problem;
};

// Findings kept of one file; beyond this one line says how many more there were, so a file of
// garbage cannot fill the memory.
inline constexpr int kFindingsPerFile = 200;

// Where the year's files lie, and what the check needs of this workstation.
struct CheckTree {
    platform::DriveMap drives;
    store::Folders folders;  // staff, general_year, workstation, workstation_program, program
    QString year;            // four digits
    QString user;            // this workstation's logon name, upper case
    QDate today;
    // Whether a program of that executable name ("KORVEL") runs on this workstation for the
    // user; nullopt when the system cannot tell.
    std::function<std::optional<bool>(const QString& program)> program_running;
    bool afrikaans = false;  // the language of the findings
};

// The tree as the program would find it, read only: the executable's folders through the drive
// map, network.dta of the workstation (the suite's default tree without one), the year from
// year when given, else year_used.txt, else the calendar year. nullopt, with a message in
// error, when the staff folder of the year is not there.
std::optional<CheckTree> locate_tree(const platform::DriveMap& drives, const QString& year,
                                     QString* error);

// The programs of this user running on this machine, by executable name; nullopt where the
// system does not say.
std::optional<bool> program_running_here(const QString& program);

// The check itself: every finding, file by file in a fixed order. The progress, when given,
// goes through kCheckStages steps.
inline constexpr int kCheckStages = 5;
inline QString check_title(bool afrikaans) {
    return afrikaans ? QStringLiteral("DATAKONTROLE") : QStringLiteral("DATA CHECK");
}
std::vector<Finding> check_tree(const CheckTree& tree, ui::Progress* progress = nullptr);

// A lock older than this many days is stale.
inline constexpr int kStaleLockDays = 1;

// The lock slots a repair may free: in use, stale (older than a day, or held under this
// workstation's user by a program that does not run here), and the first slot of their type and
// identification, so that freeing it by name frees that very slot.
struct StaleLock {
    int record;
    QString type;
    QString identification;
};
std::vector<StaleLock> stale_locks(const CheckTree& tree);

// Leftovers of an interrupted replace in the year's folders: Windows-form paths.
QStringList leftover_files(const CheckTree& tree);
// What an interrupted year-end left beside the year folders (its new folder, the old one moved
// aside, its journal): Windows-form paths. Opening a year folder finishes or undoes it.
QStringList year_end_leftovers(const CheckTree& tree);

}  // namespace korvel::check
