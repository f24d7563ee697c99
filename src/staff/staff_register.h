#pragma once
// sk411_prg, the staff register: every staff member of one population (educators or employees)
// in a sortable list, from which a row is opened for editing, a new record started, a name
// searched and the print programs reached. Opening the register repairs the staff files and
// closing it compacts them (RegisterUpkeep).
//
// This is the form's behaviour; the Qt form shows prs_grid and calls one method per event.

#include <QString>
#include <QTime>
#include <array>
#include <functional>
#include <vector>

#include "shell/session.h"
#include "staff/register_upkeep.h"

namespace korvel::staff {

inline constexpr int kGridColumns = 10;
inline constexpr int kDefaultWidth = -1;  // the control's own column width
inline constexpr int kColourRed = 255;    // the system's red (BGR 0x0000FF)
inline constexpr int kColourBlack = 0;
inline constexpr int kColourBlue = 0xFF0000;  // BGR
inline constexpr int kEnterKey = 13;

// Columns of the register and of the shared fill. Column 0 holds the record number, the key of
// every click; column 2 the record state.
enum RegisterColumn {
    kColNumber = 0,
    kColPost = 1,
    kColState = 2,
    kColSurname = 3,
    kColNames = 4,
    kColTitle = 5,
    kColId = 6,
    kColLurits = 7,
    kColPersal = 8,
    kColGender = 9,
};

struct GridColumn {
    QString heading;
    int width;  // twips; kDefaultWidth for the control's default
};
std::array<GridColumn, kGridColumns> register_columns(bool afrikaans);

struct GridRow {
    std::array<QString, kGridColumns> cells;
    std::array<bool, kGridColumns> red{};  // the cell is shown in red
    // The record number of the master file the row stands for; 0 when the key is not a number.
    int record() const { return cells[kColNumber].toInt(); }
};

// A list view in report mode: columns, rows in display order, the sort key and order.
struct RegisterGrid {
    std::array<GridColumn, kGridColumns> columns{};
    std::vector<GridRow> rows;
    int sort_column = kColSurname;
    bool ascending = true;
    int selected = -1;  // the selected row, -1 for none

    // Sorts by the text shown in the sort column, without regard to case; rows that compare
    // equal keep their order.
    void sort();
    // A header click: a new column sorts ascending, the same column again toggles the order.
    void header_click(int column);
};

// The fill other forms share: the register's columns without its repair. state_filter "*" (or
// blank) shows active and inactive records, "A" active only, "?" inactive only; a blank post
// number or a deleted record is never shown. post_list gets each post number once and
// name_list each "title names surname" once, both with the record number as item data. Column 2
// of an inactive row is red. Sorted by surname.
void fill_staff_lists(store::Store& store, RegisterGrid& grid, HiddenList& post_list,
                      HiddenList& name_list, const QString& state_filter = QStringLiteral("*"));

// The number a new record of an open file gets: it stands after what the file holds now, as
// its length over the record length counts it.
int next_record_number(store::Store& store, store::Code code);

// The search of a register: an input box asks for a text (offering the last one) and the first
// row whose column 3 or 4 holds it, without regard to case, is selected. False when nothing
// was asked or found.
bool search_grid(shell::Session& session, RegisterGrid& grid);

class StaffRegister {
  public:
    // The menu opens the register with the population already chosen.
    explicit StaffRegister(shell::Session& session, bool educators = true);

    // ---- the form's values ----
    RegisterGrid prs_grid;
    HiddenList prs_kls_lys;       // post numbers shown, item data a running number
    RegisterUpkeep upkeep;        // the hidden lists of the repair
    bool personeel_tipe;          // true: educators are shown; false: employees
    bool new_record = false;      // true only while a record started by task_options(1) is entered
    QString selected_post;        // post number of the row last opened
    QString lock_identification;  // the open row's ID number, the key of its lock
    QString staff_ops_caption;
    QString personeel_tipe_caption;
    int personeel_tipe_colour = kColourBlack;
    QString clock_text;
    bool new_record_enabled = true;  // task_options(1); off in browse mode
    bool grid_has_focus = false;
    bool closed = false;  // the form has unloaded
    // The name locks are taken under: the session's user name, else the logon name.
    QString user;

    struct ToolTips {
        QString task_options_new;
        QString task_options_search;
        QString task_options_print;
        QString alg_opsies_attendance;
        QString laai_vakke_van_admin;
        QString prs_grid;
        QString dir_disp_roster;
        QString staff_exit;
    };
    ToolTips tool_tips() const;

    // ---- forms of other work; an empty function means the capability is not available ----
    std::function<void()> show_print_chooser;             // the print programs, modal
    std::function<void(bool educators)> open_attendance;  // the attendance register, modal
    std::function<void()> open_subject_rebuild;           // the staff subject rebuild, modal
    // The governing body entry filled from the staff member in the working records.
    std::function<void(shell::Session&)> copy_to_governing_body;

    // ---- events ----
    // Captions, then the repair and the fill. False, after the user was told, when there are
    // no staff details at all: the form unloads.
    bool form_load();
    void fill_grid();
    void prs_grid_column_click(int column);
    void prs_grid_click(int row);
    void prs_grid_key_down(int key_code);
    void search_grid();
    void personeel_tipe_click();
    void timer_tick(const QTime& now);
    void task_options_click(int index);
    void alg_opsies_click(int index);
    void laai_vakke_van_admin_click();
    void dir_disp_roster_click();  // the path tool, or the message that sends for it
    void staff_exit_click();       // close_register

    // The row's record opened for editing under its lock; the grid is filled again after.
    void select_record(int row);
    // A blank record appended to the master and address files and opened for editing.
    void start_new_record();

    // The read-only sibling program shares this form and shows every population.
    bool is_browse_program() const;
    bool read_only() const;

  private:
    void set_captions();

    shell::Session& session_;
};

}  // namespace korvel::staff
