#pragma once
// sk622_prg: the timetable of a staff member as the suite's timetable system keeps it. The
// form shows the cycle's days against its periods, frees a single period or clears the
// timetable, and prints it. It builds no timetables and never adds a record.
//
// The Qt form (staff_timetable_form.h) binds its grid and buttons to this class and calls one
// method per event.

#include <QSet>
#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <vector>

#include "platform/dialogs.h"
#include "reports/print_grid.h"
#include "store/record.h"
#include "timetable/roster_files.h"

namespace korvel::shell {
class Session;
}
namespace korvel::reports {
class PrintJob;
}

namespace korvel::timetable {

// The colour of a cell whose entry in klr_lys is 0.
inline constexpr int kDefaultCellColour = 12640511;

// The actions of rostr_ops.
enum RosterAction { kDeleteTimetable = 1, kPrintTimetable = 2, kSwapPeriods = 3 };

// An entry of pos_lys: the text shown and the post number behind it.
struct RosterPerson {
    QString text;
    QString post;
};

// The cell of day d, period p (both from 1) in a cycle of `periods` periods a day; -1 when it
// lies past the cells a timetable record has.
int cell_index(int day, int period, int periods);

// Whether a cell holds a subject period: its first five characters are the key of a record of
// the subject periods. The keys are trimmed and upper case.
bool is_subject_period(const QString& cell, const QSet<QString>& subject_keys);

// The entry as the printed timetable shows it: an entry that reads as subject, grade, class
// and marks becomes the subject centred over the cell, then "GR. " grade and "KL. " / "CL. "
// class, one below the other; any other entry stands as it is.
QString printed_entry(const QString& entry, bool afrikaans);

class StaffTimetable : public ui::ChildForm {
  public:
    explicit StaffTimetable(shell::Session& session);
    QString form_name() const override { return QStringLiteral("sk622_prg"); }

    // ---- the form's values ----
    QString caption;
    QString heading;   // post number " : " name of the timetable shown
    QString skl_rstr;  // the day and period figures
    std::vector<RosterPerson> pos_lys;
    int selected = -1;  // the row of pos_lys shown
    int days = 0;
    int periods = 0;
    bool has_periods = false;  // the school's set-up gave days and periods
    // rstr_grid: heads of the columns (periods) and rows (days), and the cells day-major.
    QStringList column_heads;
    QStringList row_heads;
    std::vector<QString> cells;  // days x periods, blank past the record's cells
    std::vector<int> cell_colours;
    std::vector<int> klr_lys;          // colours by cell position; missing or 0 is the default
    std::array<QString, 4> rostr_ops;  // captions of the actions 1 to 3
    bool visible = false;

    // Printing: the job and how its target is chosen; without them nothing prints.
    reports::PrintJob* job = nullptr;
    std::function<bool(reports::PrintJob&)> choose_target;

    RosterFiles& files() { return files_; }
    shell::Session& session() { return s_; }

    // ---- events ----
    // Opens the files and selects the post of the staff member in the working records.
    void form_load();
    void pos_lys_click(int row);
    void rstr_grid_click(int day, int period);
    void rstr_grid_dbl_click(int day, int period);
    void rostr_ops_click(int action);
    void swap_periods() {}  // the timetable system's own form; nothing here
    void exit_click();

    bool print_timetable();
    // The grid as it prints: a row a period, a column a day.
    reports::PrintGrid print_grid() const;

  private:
    QString tr(const char* af, const char* en) const;
    void load_set_up();
    void load_subject_keys();
    void show_record();
    // Changes the cells of the post's record on disk: read again just before the write, so
    // what another workstation changed in the other cells stays.
    void rewrite_cells(const std::function<void(store::Record&)>& change);
    QString cell(int day, int period) const;

    shell::Session& s_;
    RosterFiles files_;
    QSet<QString> subject_keys_;
    QStringList period_times_;
    QString name_;  // of the timetable shown
};

}  // namespace korvel::timetable
