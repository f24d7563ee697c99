#pragma once
// The month calendar of the attendance register: a 7 by 7 grid of the days of one month, laid
// out by weekday, in which holidays are marked "21(O)". It is kept one file a month,
// maand_kalender_<MONTH>.<year>, holding the grid as one quoted clipboard block, and it gives
// the register its holiday letter for each day of the month.

#include <QString>
#include <array>

#include "attendance/attendance_common.h"
#include "attendance/cell_grid.h"

namespace korvel::attendance {

class MonthCalendar {
  public:
    explicit MonthCalendar(shell::Session& session);

    // ---- the form's values ----
    CellGrid maand_kalender;
    ListBox mk_opsies;
    bool raam_visible = false;  // maand_kalender_raam
    int month = 0;
    int raam_width = 4300;  // twips
    int raam_height = 1850;
    // The holiday letter of each day of the month (index 1 to 31). It is set by each load from
    // the cells holding "(", and cleared only by clear_letters() when the register loads, so a
    // day keeps the letter of the month seen before unless the new month says otherwise.
    std::array<QString, 32> holiday{};

    void clear_letters() { holiday.fill(QString()); }

    // The file of a month in one language, as a Windows-form path.
    QString file_path(int month_number, bool afrikaans) const;

    // Lays out the month from its file (the other language's name when the own is missing) or
    // plainly, and takes the holiday letters from it.
    void load(int month_number);

    // A click on a day cell opens mk_opsies beside it; an entry marks the day.
    void maand_kalender_click(int row, int col);
    void mk_opsies_click(int index);
    // Hides the frame and writes the month's file in the language in use.
    void mk_save_click();
    // Deletes the month's file of the language in use and lays the month out again.
    void mk_undo_click();

    int option_row = -1;  // the cell mk_opsies stands beside
    int option_col = -1;

  private:
    void plain_layout(int year);
    // (row, col) of each day of the month in the layout; row 0 holds the weekday letters.
    std::array<std::pair<int, int>, 32> layout(int year) const;

    shell::Session& session_;
};

}  // namespace korvel::attendance
