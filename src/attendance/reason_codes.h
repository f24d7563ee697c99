#pragma once
// sk417_kodes_prg, the upkeep of the reasons for absence. A reason's number is the record number
// of its line in sbi_kde_random.txt, and that number is what the attendance days store.
//
// This is the form's behaviour; the Qt form shows rde_grid and the edit frame.

#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <vector>

#include "attendance/attendance_common.h"
#include "attendance/cell_grid.h"
#include "platform/dialogs.h"
#include "store/default_reasons.h"

namespace korvel::attendance {

// The eleven reasons a new file starts with.
using store::kDefaultReasons;

// Columns of rde_grid.
inline constexpr int kCodeColNumber = 0;
inline constexpr int kCodeColFirst = 1;
inline constexpr int kCodeColSecond = 2;

// One printed line of the code list: texts at their tab positions.
struct PrintLine {
    std::vector<std::pair<int, QString>> at_tabs;
};
struct CodeListPrint {
    QString title;
    std::vector<PrintLine> lines;
};

class ReasonCodes : public ui::ChildForm {
  public:
    explicit ReasonCodes(shell::Session& session);
    QString form_name() const override { return QStringLiteral("sk417_kodes_prg"); }
    shell::Session& session() { return session_; }

    // ---- the form's values ----
    QString caption;
    CellGrid rde_grid;       // row 0 the headings
    QStringList rede_kodes;  // unseen: the first descriptions shown, to drop repeats
    bool kde_frme_visible = false;
    std::array<QString, 3> sbi_kde2;  // boxes 1 and 2
    int current_row = -1;
    int selection_colour = 0xC0E0FF;
    QString task_new_caption;
    QString task_delete_caption;
    bool closed = false;

    // ---- events ----
    void form_load();
    void rde_grid_right_click();   // and task_options(1): a new row
    void rde_grid_click(int row);  // click, double click or Enter
    void rde_grid_key_down(int key_code);
    // What the box shows after typing: letters a to z in capitals.
    void sbi_kde2_change(int index, const QString& text);
    void data_ok_click();
    void task_options_click(int index);  // 1 new, 4 delete, 5 print
    void kodes_ok_click();
    void admin_exit_click();

    // The rows of the printed code list, read from the file; the page engine prints them under
    // the title. An empty file gives no lines.
    CodeListPrint code_list() const;
    // Called by task_options(5) with the list; the Qt form prints to the target the user
    // chooses.
    std::function<void(const CodeListPrint&)> print_code_list;

  private:
    void delete_row();
    shell::Session& session_;
};

}  // namespace korvel::attendance
