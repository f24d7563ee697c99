#pragma once
// sk411_bl_prg, the governing body register: the members of the school governing body, kept in
// their own file apart from the staff, in a sortable list from which a row is opened for
// editing, a new member started, a name searched, and members made from staff records.
// Closing the register compacts the members' file.
//
// This is the form's behaviour; the Qt form shows sgb_grid (and prs_grid while members are
// created from staff records) and calls one method per event.

#include <QString>
#include <functional>
#include <vector>

#include "shell/session.h"
#include "staff/register_upkeep.h"
#include "staff/staff_register.h"

namespace korvel::governing {

using staff::GridColumn;
using staff::GridRow;
using staff::HiddenList;
using staff::RegisterGrid;

inline constexpr int kMemberColumns = 8;
inline constexpr int kStaffPickColumns = 6;

// Columns of sgb_grid. Columns 3 and 4 are those the search looks in.
enum MemberColumn {
    kColNumber = 0,
    kColType = 1,
    kColState = 2,
    kColSurname = 3,
    kColInitials = 4,
    kColTitle = 5,
    kColId = 6,
    kColGender = 7,
};
// Columns of prs_grid, the staff records members are made from.
enum StaffPickColumn {
    kPickPost = 0,
    kPickState = 1,
    kPickSurname = 2,
    kPickNames = 3,
    kPickTitle = 4,
    kPickId = 5,
};

std::array<GridColumn, staff::kGridColumns> member_columns(bool afrikaans);
std::array<GridColumn, staff::kGridColumns> staff_pick_columns(bool afrikaans);

// What tells one member from another: surname, names and title, trimmed. Two records with the
// same key are the same person.
QString member_key(const store::Record& member);
// The identification a member's lock is taken under: the key, cut to the lock table's field.
QString member_lock_identification(const store::Record& member);

// Appends a member made from the staff member in the working master and additional records:
// a staff educator on the body ("2"), an ordinary member ("5") with a degree or diploma ("3"),
// elected today. Both have to be corrected by hand where they do not hold. False when the
// record could not be written.
bool add_member_from_staff(shell::Session& session);

// Rewrites the members' file without records that have no name, no type, are deleted or
// repeat an earlier member's key.
store::Compaction close_members(shell::Session& session, QString* why = nullptr);

class MemberRegister {
  public:
    explicit MemberRegister(shell::Session& session);

    // ---- the form's values ----
    RegisterGrid sgb_grid;
    HiddenList prs_lys;  // member keys, item data the record number
    // The staff records members are made from, shown while prs_grid_visible.
    RegisterGrid prs_grid;
    std::vector<bool> prs_grid_checked;  // one check box a row of prs_grid
    bool prs_grid_visible = false;
    bool prs_grid_enabled = false;
    QString caption;
    bool new_record_enabled = true;  // off in browse mode
    bool grid_has_focus = false;
    bool closed = false;
    QString user;  // the name locks are taken under

    struct ToolTips {
        QString task_options_new;
        QString task_options_create;
        QString task_options_search;
        QString task_options_print;
    };
    ToolTips tool_tips() const;

    std::function<void()> show_print_chooser;  // the print programs, modal; empty: none

    // ---- events ----
    void form_load();
    void fill_members();
    void sgb_grid_column_click(int column) { sgb_grid.header_click(column); }
    void sgb_grid_click(int row);
    void sgb_grid_key_down(int key_code);
    void task_options_click(int index);
    void prs_grid_check(int row, bool checked);
    void data_ok_click();     // members from the ticked staff rows
    void staff_exit_click();  // close_members

    void create_from_staff();
    void select_member(int row);
    void start_new_member();

  private:
    void set_captions();
    shell::Session& session_;
};

}  // namespace korvel::governing
