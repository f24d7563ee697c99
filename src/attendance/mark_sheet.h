#pragma once
// sk425_opsies and sk425_prg, the attendance mark sheet: for each staff member of a range a
// statement of the days absent, late or signed out in a period, with the total, comments, the
// school's contact lines and a place for the principal's signature; a page a person, on the
// school's letterhead when one is chosen.
//
// The options (the dates, the contact and the comment lines) stay in sb_opmerkings.txt in the
// staff year folder from one print to the next.

#include <QDate>
#include <QString>
#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "attendance/attendance_common.h"
#include "platform/dialogs.h"
#include "reports/print_grid.h"
#include "reports/report_engine.h"
#include "reports/staff_range.h"

namespace korvel::reports {
class PrintTargetHost;
}

namespace korvel::attendance {

inline const QString kMarkSheetOptionsFile = QStringLiteral("sb_opmerkings.txt");
// A box of the options form holds no more than this; a longer value in the file is cut.
inline constexpr int kOptionTextLimit = 255;

// The boxes of the options form.
inline constexpr int kLetterheadBox = 3;
inline constexpr int kFromDateBox = 4;
inline constexpr int kToDateBox = 5;
inline constexpr int kFirstContactBox = 8;
inline constexpr int kFirstCommentBox = 10;

class MarkSheetOptions : public ui::ChildForm {
  public:
    explicit MarkSheetOptions(shell::Session& session);
    QString form_name() const override { return QStringLiteral("sk425_opsies"); }

    // ---- the form's values ----
    QString caption;
    std::array<QString, 12> ps_data;  // 3 letterhead, 4 and 5 dates, 6 and 7 days, 8 to 11
    std::array<QString, 12> ps_tooltip;
    QString tipe_caption, briefhoof_caption, datums_caption, dae_caption, kontak_caption,
        kommentaar_caption;
    // Shown for the user, never read by the print.
    QStringList tipe_lys;
    bool manlik = true, vroulik = true;
    QString manlik_caption, vroulik_caption;
    bool confirmed = false;
    bool closed = false;

    // ---- events ----
    void form_load();
    void ps_data_click(int index);  // 3 the letterhead chooser, 4 and 5 the calendar
    void data_ok_click();           // writes the file; the print goes on
    void exit_click() { closed = true; }

    // The dates of the boxes; the defaults where a box holds no date.
    QDate from_date() const;
    QDate to_date() const;

  private:
    QString file_path() const;
    shell::Session& s_;
};

// A day of the statement.
struct MarkSheetDay {
    QDate date;
    char letter = 0;
    int reason = 0;  // the stored number; 0 for none
};

class MarkSheet : public ui::ChildForm {
  public:
    // Without a host (the command line, tests) `choose_target` must be set.
    MarkSheet(shell::Session& session, reports::PrintJob& job,
              reports::PrintTargetHost* host = nullptr);
    QString form_name() const override { return QStringLiteral("sk425_prg"); }

    // ---- the form's values ----
    QString caption;
    QString grid_format;
    reports::StaffRange range;
    std::array<QString, 3> pos_teks;  // 1 From, 2 To
    MarkSheetOptions opsies;
    ListBox kode_lys;
    bool closed = false;

    std::function<bool(reports::PrintJob&)> choose_target;

    // ---- events ----
    void form_load();
    void prs_grid_click(int row) { range.grid_click(row); }
    void pos_data_key_press(int index, const QString& typed);  // 1 or 2
    // The options first; confirmed, the statements print.
    void data_ok_click();
    void exit_click() { closed = true; }

    // The statements of the range with the options as they stand; false when nothing printed.
    bool print_mark_sheets();

    // The days of a person's attendance record from `from` to `to` that the statement lists.
    std::vector<MarkSheetDay> absent_days(const QString& post, const QDate& from, const QDate& to);
    // The statement of a person as it prints, in the language given.
    reports::PrintGrid statement_grid(const store::Record& person,
                                      const std::vector<MarkSheetDay>& days, bool afrikaans);

  private:
    bool start();
    void begin_page();
    void print_statement(reports::PrintGrid& grid);

    shell::Session& s_;
    reports::PrintJob& job_;
    reports::PrintTargetHost* host_;
    std::unique_ptr<AttendanceBook> book_;
};

}  // namespace korvel::attendance
