#pragma once
// sk415_prg: the two first-appointment dates of a staff member and, for educators, up to ten
// appointments, on the master record in memory. It writes only that record. It opens from the
// chooser of the entry form and from the entry form's save while the dates are missing.
//
// This is the form's behaviour; the Qt form (appointments_form.h) shows the dates, aan_grid and
// the edit frame and calls one method per event.

#include <QString>
#include <array>

#include "platform/dialogs.h"
#include "shell/session.h"
#include "staff/detail_common.h"
#include "staff/detail_grid.h"

namespace korvel::staff {

inline constexpr int kAppointmentRows = 10;  // aan_grid rows 1 to 10

class Appointments : public ui::ChildForm {
  public:
    Appointments(shell::Session& session, bool educators);
    QString form_name() const override { return QStringLiteral("sk415_prg"); }
    shell::Session& session() { return session_; }
    bool educators() const { return educators_; }

    // ---- the form's values ----
    QString caption;                   // post number, title, initials, surname
    std::array<QString, 3> dtm_data;   // 1 and 2; 0 unused
    std::array<QString, 3> dtm_teks;   // their labels
    std::array<QString, 3> dtm_tip;    // their tool tips
    DetailGrid aan_grid;               // 11 rows by 4 columns
    std::array<QString, 5> prs_data;   // the edit frame's boxes 1 to 4
    std::array<QString, 5> data_teks;  // their labels
    bool data_raam_visible = false;    // the edit frame
    bool grid_ok_visible = true;
    PopupList tp_lys;     // the type of post
    int focus_box = 0;    // a box the form must give the focus to, then 0
    bool loaded = false;  // form_load ran: the form was shown
    bool closed = false;

    // ---- events ----
    void form_load();
    void aan_grid_click(int row);  // also Enter on a row
    void prs_data_click(int box);  // box 3 shows tp_lys, box 4 the calendar
    void dtm_data_click(int index);
    void tp_lys_click(int row);
    TypedKey prs_data_key_press(int box, int key_ascii);
    void data_ok_click();
    void grid_ok_click();
    void staff_exit_click() { closed = true; }

  private:
    HeldRecord master_;  // the person's master record, found again by key before a write
    // The calendar on a date text: a blank one gets today first.
    void pick_date(QString& text, const QString& label);

    shell::Session& session_;
    bool educators_;
};

}  // namespace korvel::staff
