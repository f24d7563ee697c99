#pragma once
// sk1_kies_briefhoofde, the pick list of letterheads a report prints on, and sk1_briefhoof,
// where the layouts are kept: margins, what is printed, the badge, the fonts, the frame, and the
// imported picture of the school's stationery.
//
// Every store replaces its file in one step, and an imported picture is in place before the old
// ones go, so a workstation that dies half-way leaves the old layouts or the new, never neither.

#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <vector>

#include "platform/dialogs.h"
#include "reports/letterhead.h"

namespace korvel::shell {
class Session;
}

namespace korvel::reports {

class LetterheadLayouts;

class LetterheadChooser : public ui::ChildForm {
  public:
    explicit LetterheadChooser(shell::Session& session);
    QString form_name() const override { return QStringLiteral("sk1_kies_briefhoofde"); }
    shell::Session& session() { return s_; }

    QString heading;
    QStringList briefhoof_lys;
    int selected = -1;
    bool closed = false;

    // An empty list unloads the form at once and clears the choice: the report prints without.
    void form_load();
    // The selected name, trimmed, becomes the session's letterhead.
    void merk_ok_click();
    // The layout form on the selected name; the list is read again afterwards.
    void briefhoof_tabulering_click();
    void exit_click() { closed = true; }

  private:
    shell::Session& s_;
};

class LetterheadLayouts : public ui::ChildForm {
  public:
    explicit LetterheadLayouts(shell::Session& session);
    QString form_name() const override { return QStringLiteral("sk1_briefhoof"); }
    shell::Session& session() { return s_; }

    // ---- the form's values ----
    QString heading;
    QStringList bh_lys;              // the names, then "NUUT/NEW"
    int current = -1;                // the entry in the form; -1: none
    std::array<QString, 8> bh_data;  // 1 identification; 4 to 7 top, bottom, left, right (mm)
    bool bh_opsie = false;           // frame around the address
    bool print_name = false, print_address = false, print_badge = false;
    QString position = QStringLiteral("L");
    QString size = QStringLiteral("M");
    bool use_picture = false;    // "GEBRUIK '.JPG' BRIEFHOOF"
    bool fields_enabled = true;  // a picture layout leaves only the top and bottom margins
    std::array<LetterheadFont, 2> fonts = form_font_defaults();
    bool closed = false;

    // Prints the measuring frame: asks the target, true to go on. The form's job is given by
    // the caller; without it nothing is printed.
    std::function<bool(PrintJob&)> choose_target;
    PrintJob* job = nullptr;
    // For tests of crash safety: called as each step of a store ends.
    std::function<void(int)> step_done;

    // ---- events ----
    void form_load();
    // Loads the entry; "NUUT/NEW" asks for a new identification.
    void bh_lys_dbl_click(int row);
    void bh_ok_click();
    void bh_uitvee_click();
    void bh_import_click();
    void bh_druk_click();
    void bh_font_click(int which);  // 1 name, 2 address
    void exit_click() { closed = true; }

    // The layouts as the form holds them.
    const std::vector<LetterheadLayout>& table() const { return table_; }

  private:
    QString folder() const;
    void fill_list();
    void load_entry(const QString& name);
    int table_index(const QString& name) const;
    void step(int n) {
        if (step_done)
            step_done(n);
    }

    shell::Session& s_;
    std::vector<LetterheadLayout> table_;
};

}  // namespace korvel::reports
