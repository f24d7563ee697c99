#pragma once
// staff_kies_inlees, the chooser of the detail forms of one staff member, opened from the entry
// form after a save. Choosing an entry closes the chooser; the entry form then opens the chosen
// form modally through the dialogs.

#include <QString>
#include <array>

#include "platform/dialogs.h"
#include "shell/session.h"

namespace korvel::staff {

// The detail forms, numbered as the chooser's entries.
enum class StaffDetail {
    Address = 1,
    Banking = 2,
    Qualifications = 3,
    Appointments = 4,
    Experience = 5,
    Attendance = 6,
    Leave = 7,
    Timetable = 8,
};
inline constexpr int kStaffDetails = 8;

// Whether the form of a detail is part of this program yet.
bool detail_form_available(StaffDetail detail);

// Opens the form of a detail modally for the staff member in the working records; false when
// that form is not available.
bool open_detail_form(shell::Session& session, StaffDetail detail, bool educators = true);

class DetailChooser : public ui::ChildForm {
  public:
    DetailChooser(shell::Session& session, bool educators, QString person);
    QString form_name() const override { return QStringLiteral("staff_kies_inlees"); }
    shell::Session& session() { return session_; }

    struct Option {
        QString caption;
        QString tool_tip;
        bool visible = true;
        bool enabled = true;
    };
    // ---- the form's values ----
    QString caption;
    QString person;                                   // the heading of the person the forms are for
    std::array<Option, kStaffDetails + 1> pr_option;  // 1 to 8; 0 unused
    int chosen = 0;                                   // the entry chosen, 0 for none
    QString chosen_label;  // the person's label remembered with the choice
    bool closed = false;

    // ---- events ----
    void pr_option_click(int index);
    void staff_exit_click() { closed = true; }

  private:
    shell::Session& session_;
};

}  // namespace korvel::staff
