#pragma once
// sk423_prg, the attendance reports: the monthly summary, the reason list, the daily attendance
// register and the yearly leave totals. Every report is built from one read of the attendance
// file (AttendanceBook) into a day grid of the chosen range, one row a staff member.
//
// This is the form's behaviour; the Qt form shows the month list, the date frame, the staff
// filter and the buttons and calls one method per event.

#include <QDate>
#include <QString>
#include <array>
#include <functional>
#include <vector>

#include "attendance/attendance_common.h"
#include "attendance/cell_grid.h"
#include "platform/dialogs.h"
#include "reports/print_grid.h"
#include "reports/report_engine.h"
#include "reports/staff_lists.h"

namespace korvel::reports {
class PrintTargetHost;
}

namespace korvel::attendance {

struct LeaveTotals;
using reports::AdminChoice;

// The buttons of the form.
inline constexpr int kMonthlySummary = 1;
inline constexpr int kReasonList = 2;
inline constexpr int kRegisterReport = 3;
inline constexpr int kLeaveTotals = 4;

// The button-face grey of weekend columns.
inline constexpr int kButtonFace = 0xF0F0F0;

// A staff member the filter takes. Only the texts asked for are made.
struct StaffMember {
    int record = 0;        // in PRSALG
    quint64 post_key = 0;  // the post number as the attendance book keys it
    QString post;          // trimmed
    QString name;          // title, initials and surname
    QString surname;       // these three: the parts
    QString initials;
    QString persal;
    bool admin = false;
};
// The texts of a staff member a report shows: a report of a thousand people makes no others.
enum StaffTexts : unsigned { kStaffPost = 1, kStaffName = 2, kStaffParts = 4, kStaffAll = 7 };

// Active staff members with a post number, by the administrative choice, in post number order
// (the number right aligned in its field, so "9" comes before "10").
std::vector<StaffMember> selected_staff(shell::Session& session, AdminChoice choice,
                                        unsigned texts = kStaffAll);

// The day grid of a range of days of the ledger year. Row 0 the headings, row 1 the weekday
// letters, then a row a staff member; column 0 the row number, 1 the post number, 2 the name,
// then a column a day, and at the right one blank column, where the summary puts its total. A
// day cell reads the mark with the reason behind it ("a 3", "a12"); weekend days of the staff
// rows are grey. Built as the grid the summary prints, so its cells are made once.
struct DayGrid {
    int first = 0;  // day of year of the first column
    int last = 0;
    reports::PrintGrid afw_grid;
    std::vector<int> staff;  // PRSALG record of each staff row
    int day_col(int day) const { return 3 + day - first; }
};
inline constexpr int kDayGridFirstRow = 2;
DayGrid build_day_grid(const std::vector<StaffMember>& staff, const AttendanceBook& book, int year,
                       int first, int last, bool afrikaans);

// The days of year of a date range, limited to the ledger year; empty when it holds none.
struct DayRange {
    int first = 0;
    int last = -1;
    bool empty() const { return last < first; }
};
DayRange day_range(const QDate& from, const QDate& to, int year);

class AttendanceReports : public ui::ChildForm {
  public:
    // Without a host (the command line, tests) `choose_target` must be set.
    AttendanceReports(shell::Session& session, reports::PrintJob& job,
                      reports::PrintTargetHost* host = nullptr);
    QString form_name() const override { return QStringLiteral("sk423_prg"); }
    shell::Session& session() { return s_; }
    reports::PrintJob& job() { return job_; }

    // ---- the form's values ----
    QString caption;
    std::array<QString, kLeaveTotals + 1> dr_ok_captions;  // 1 to 4
    ListBox maand_lys;
    bool maand_lys_visible = true;
    bool datum_raam_visible = true;
    std::array<QDate, 3> jr_data;  // 1 and 2: from and to
    std::array<QString, 3> jr_teks;
    AdminChoice kies_administratief = AdminChoice::Included;
    QString administratief_caption;
    std::array<QString, 3> administratief_captions;
    ListBox kode_lys;
    DayRange range;  // the days of the last month chosen or of the date boxes
    // The leave totals run over the whole ledger year unless the date boxes were set.
    bool verlof_hele_jaar = true;

    // The print target: ask_print_target with the host when not set. True to go on.
    std::function<bool(reports::PrintJob&)> choose_target;
    // The leave totals on screen (the Qt form's grid); without it they go to the target.
    std::function<void(AttendanceReports&)> show_leave_totals;

    // ---- events ----
    void form_load();
    void maand_lys_click(int index);
    void jr_data_click(int index);  // the calendar on the box's date
    void dr_ok_click(int index);

    // ---- the reports; each false when nothing printed ----
    bool print_monthly_summary();
    bool print_reason_list();
    bool print_register();
    bool print_leave_totals();
    // The date boxes of the leave totals hold a range of the ledger year; a message when not.
    bool leave_range_ok();

    // ---- what they print ----
    DayGrid day_grid(const DayRange& days);
    // The summary grid with its total column, and the counts of kode_lys.
    reports::PrintGrid summary_grid(DayGrid days, std::vector<int>* reason_counts) const;
    reports::PrintGrid reason_list_grid(const DayRange& days);
    reports::PrintGrid register_grid();
    QString month_title() const;
    LeaveTotals leave_totals();
    QString leave_totals_title() const;

  private:
    bool start(const QString& name);
    void load_book(AttendanceBook& book);
    int year() const;
    void use_date_boxes();

    shell::Session& s_;
    reports::PrintJob& job_;
    reports::PrintTargetHost* host_;
    int month_ = 0;
};

}  // namespace korvel::attendance
