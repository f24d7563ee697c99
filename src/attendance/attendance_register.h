#pragma once
// sk417_prg, the daily attendance register: a month of one population as a grid, one row a
// staff member and one column a day, over the staff members' attendance records of the ledger
// year. afw_grid shows the marks; its unseen twin rde_grid holds each cell's reason number.
// The register also keeps the month calendars of holidays (MonthCalendar).
//
// This is the form's behaviour; the Qt form shows the grids and lists and calls one method per
// event.

#include <QString>
#include <functional>

#include "attendance/attendance_common.h"
#include "attendance/cell_grid.h"
#include "attendance/month_calendar.h"
#include "attendance/reason_codes.h"
#include "platform/dialogs.h"

namespace korvel::attendance {

// The attendance register asked for as a modal child form, as the staff detail chooser opens it.
struct AttendanceRequest : ui::ChildForm {
    AttendanceRequest(shell::Session& s, bool for_educators)
        : session(s), educators(for_educators) {}
    QString form_name() const override { return QStringLiteral("sk417_prg"); }
    shell::Session& session;
    bool educators;
};

// Columns of afw_grid and rde_grid: the day columns run from kFirstDayCol; the last column
// holds the surname, the hidden sort key.
inline constexpr int kColIndex = 0;
inline constexpr int kColPost = 1;
inline constexpr int kColName = 2;
inline constexpr int kFirstDayCol = 3;
inline constexpr int kFirstStaffRow = 2;  // row 0 headings, row 1 weekday letters

class AttendanceRegister {
  public:
    // The menu opens the register for educators (true) or employees.
    AttendanceRegister(shell::Session& session, bool educators);

    // ---- the form's values ----
    QString caption;
    ListBox maand_lys;  // twelve month names padded to 15
    CellGrid afw_grid;
    CellGrid rde_grid;
    ListBox kode_lys;
    ListBox ag_opsies;
    MonthCalendar calendar;   // maand_kalender_raam, maand_kalender, mk_opsies
    bool educators;           // the group in use
    bool grid_shown = false;  // false: the month list shows
    bool closed = false;      // the form has unloaded
    bool redraw = true;
    bool grid_has_focus = false;
    int month = 0;  // 1 to 12 while a grid shows
    MonthLimits limits;
    int sort_column = kColPost;
    int click_row = -1;  // the grid position of the last click
    int click_col = -1;
    int current_row = -1;  // the grid's current cell
    int current_col = -1;
    int selection_colour = kWhite;
    std::array<bool, 32> weekday{};  // per day of the month
    bool ignore_next_click = true;   // set on load; the next click is skipped
    int ag_opsies_height = 0;        // twips
    int ag_opsies_row = -1;          // the cell ag_opsies stands at
    int ag_opsies_col = -1;

    struct ToolTips {
        QString afw_grid;
        QString calendar_button;
        QString kodes;
        QString maand_lys;
        QString grid_sort;
    };
    ToolTips tool_tips() const;

    // ---- forms of other work ----
    std::function<void()> open_reports;  // sk423_prg, modal

    // ---- events ----
    void form_load();
    void maand_lys_dbl_click();    // and Enter: the highlighted month's grid
    void maand_lys_right_click();  // the highlighted month's calendar
    void build_grid(int month_number);

    void afw_grid_click(int row, int col);  // left button or Enter
    void afw_grid_key_down(int key_code);
    void afw_grid_right_click(int row, int col);
    void ag_opsies_click(int index);
    void kode_lys_dbl_click(int index);
    void afw_grid_mouse_move(int row, int col);
    void grid_sort_click();
    void kodes_click();
    void task_options_click(int index);        // 1 the calendar, 5 print
    void task_options_right_click(int index);  // 1: initialise to year-end
    void staff_exit_click();

    // The shown month written back to the attendance records.
    void save_grid();
    // From the day of year of `from` to the end of the record: "." and ".." for every staff
    // member of the group in use.
    void initialise_to_year_end(const QDate& from);

    bool is_day_cell(int row, int col) const;
    int day_of(int col) const { return col - 2; }

  private:
    void fill_lists();
    shell::Session& session_;
    int hover_row_ = -1;
    int hover_col_ = -1;
};

}  // namespace korvel::attendance
