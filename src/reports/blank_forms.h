#pragma once
// sk424_prg: blank capture forms for staff to fill in by hand, one page of labelled character
// boxes for each kind of data, either empty or filled with a person's current values for
// checking, and the month's attendance sheet. The forms are drawn straight on the page; only the
// attendance sheet goes through a print grid.
//
// The Qt form binds its controls to the values below and calls one method per event.

#include <QString>
#include <QStringList>
#include <array>
#include <span>
#include <vector>

#include "platform/dialogs.h"
#include "reports/staff_selection.h"

namespace korvel::reports {

inline constexpr int kBlankFormCount = 7;
inline constexpr int kAttendanceSheetForm = 7;

class BlankForms : public ui::ChildForm, public StaffSelection {
  public:
    BlankForms(shell::Session& session, PrintJob& job, PrintTargetHost* host = nullptr);
    QString form_name() const override { return QStringLiteral("sk424_prg"); }

    // ---- the form's values ----
    QString caption;
    std::array<bool, kBlankFormCount + 1> druk_opsie{};  // 1 to 7
    std::array<QString, kBlankFormCount + 1> druk_opsie_captions;
    bool taal_afrikaans = true;  // taal_keuse: the language of the printed forms only
    QStringList taal_keuse;      // "AFRIKAANS", "ENGLISH"
    int maand_lys = 1;           // the month of the attendance sheet, 1 to 12
    QStringList maand_lys_items;
    std::vector<bool> prs_lys_selected;  // beside prs_lys: prs_lys takes several
    QString opsies_ok_tip;
    bool visible = false;

    // ---- events ----
    void form_load();
    void taal_keuse_click(int item) { taal_afrikaans = item == 0; }
    // A click toggles the person's choice.
    void prs_lys_click(int row);
    // False when the target was not chosen.
    bool opsies_ok_click();
    void exit_click();

    // One line of a form at the current y: the label, a row of character boxes (two columns a
    // character) and the groups behind it, each 2 columns past the one before; the values,
    // when given, a character centred in each box. Y moves down by 2 lines.
    void print_form_line(const QString& label, int width, bool shade = false, bool framed = false,
                         std::span<const int> more_widths = {}, const QStringList& values = {},
                         bool dividers = true);

    // The form of the option for the staff record, or blank for number 0.
    void print_form(int option, int record);
    PrintGrid attendance_sheet_grid();

  private:
    // The text of the printed form, in the language of taal_keuse.
    QString form_text(const char* af, const char* en) const;
    // The continuation mark on the page being left, unless it is the first.
    void leave_page();
    void start_form_page(const QString& title);
    void next_line_room();
    void print_attendance_sheet();

    QString form_title_;
    bool page_started_ = false;
};

}  // namespace korvel::reports
