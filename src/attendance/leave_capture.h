#pragma once
// sk417_verlof_prg: one stretch of leave for one staff member in a single step, written into the
// same attendance record as the register, without opening a month.
//
// It is opened for the staff member whose master record is in the working record. This is the
// form's behaviour; the Qt form shows the boxes and the lists.

#include <QString>
#include <array>

#include "attendance/attendance_common.h"
#include "platform/dialogs.h"

namespace korvel::attendance {

class LeaveCapture : public ui::ChildForm {
  public:
    explicit LeaveCapture(shell::Session& session);
    QString form_name() const override { return QStringLiteral("sk417_verlof_prg"); }

    // ---- the form's values ----
    QString caption;
    QString info;                      // post number, title, initials, surname
    std::array<QString, 3> prs_data;   // 1 "VAN DATUM", 2 "TOT DATUM", in the dot form
    std::array<QString, 3> data_teks;  // their labels
    QString kode_lys_heading;
    ListBox kode_lys;
    ListBox ag_opsies;
    QString reason;  // the leave reason: the chosen entry's record number as text
    QString post;    // the staff member's post number, trimmed
    bool closed = false;

    // ---- events ----
    void form_load();
    void prs_data_click(int index);  // the calendar on the box's date
    void kode_lys_dbl_click(int index);
    void kodes_click();
    void data_ok_click();
    void staff_exit_click() { closed = true; }

  private:
    shell::Session& session_;
};

}  // namespace korvel::attendance
