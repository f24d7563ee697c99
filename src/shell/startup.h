#pragma once
// From process start to the menu: the program's own folders, the folder preparation, the
// resolution of the data tree from network.dta, the language, the school record and the
// ledger year. Every fatal step shows its message and ends the process (ProcessEnd).

#include <QString>
#include <QStringList>

#include "shell/session.h"

namespace korvel::shell {

// The maker's download address, named in the messages that send the user for a program.
inline constexpr const char* kDownloadAddress = "www.vesparine.example/aflaai";

// The programs of the suite whose folders below the suite home hold settings files.
QStringList suite_programs();

class Startup {
  public:
    explicit Startup(Session& session) : s_(session) {}

    // Process start before the single-instance test: the program's folders, the folder
    // preparation and the ledger year (the calendar year).
    void begin();
    // Process start after it: the data tree, the default staff folder and the school pictures.
    void locate();

    // The whole start-up without a window, up to the staff files of the ledger year open:
    // begin, locate, the language, the school file and the ledger year. False where the program
    // would stay on its splash (no school file).
    bool run_unattended();

    // Step 5 of process start: the program drive, suite home, program folder, workstation
    // folder and workstation program folder, derived from the executable's Windows-form path.
    void derive_program_folders();
    // The folder preparation that runs before the single-instance test.
    void prepare_folders();
    // The "already loaded" message of a second start.
    QString already_loaded_message() const;

    // Fills the folder variables from network.dta, offering the path tool where the tree is
    // wrong; ends the process where the tree cannot be had.
    void resolve_folders();
    void write_default_network_file();
    bool run_path_tool();
    QString download_message() const;

    void read_language();
    void write_language();
    void write_version_files();

    // The splash: true when the school file stands and the school is loaded; false when the
    // splash stays (after its message).
    bool splash_check_school_file();
    bool splash_finish();

    // The ledger year steps of the menu's load, then the staff files opened. Returns the staff
    // folder for the data-folder label.
    QString settle_ledger_year();

    // The general year folder of the latest year before the ledger year that has one, going no
    // further than ten years back and never before 2013; blank when none.
    QString search_earlier_year();

    // Remembers the ledger year for the next start.
    void write_year_used(const QString& year);

    QString network_file() const;
    QString language_file() const;
    QString year_used_file() const;
    QString path_tool() const;
    QString executable_name() const;

  private:
    bool path_tool_exists() const;
    void read_network_file();
    void create_folder_levels(const QString& path);
    void carry_settings_files();
    void write_backup_path_names();
    QString staff_default(const QString& drive) const;
    void guard_rounds();
    class Resolution;

    Session& s_;
    int rounds_ = 0;  // each round of a resolution shows the user a message; see guard_rounds
    int depth_ = 0;   // resolutions running, the path tool's inside the menu's
};

}  // namespace korvel::shell
