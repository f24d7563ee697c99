#include "staff/detail_chooser.h"

#include "attendance/attendance_register.h"
#include "attendance/leave_capture.h"
#include "staff/address_family.h"
#include "staff/appointments.h"
#include "staff/banking.h"
#include "staff/experience.h"
#include "staff/qualifications.h"
#include "timetable/staff_timetable.h"

namespace korvel::staff {

namespace {

struct OptionText {
    const char* af;
    const char* en;
    const char* tip_af;
    const char* tip_en;
};
constexpr OptionText kOptions[kStaffDetails] = {
    {"ADRES- AND GESINSBESONDERHEDE", "ADDRESS AND FAMILY DETAILS",
     " Adresse, telefoonnommers, eggenoot, mediese fonds en kinders ",
     " Addresses, telephone numbers, spouse, medical aid and children "},
    {"BANKBESONDERHEDE", "BANKING DETAILS", " Bankrekening, salaris en belasting ",
     " Bank account, salary and tax "},
    {"KWALIFIKASIES", "QUALIFICATIONS", " Kwalifikasies en vakke ",
     " Qualifications and subjects "},
    {"AANSTELLINGS", "APPOINTMENTS", " Aanstellingsdatums en poste ",
     " Appointment dates and posts "},
    {"ONDERVINDING", "EXPERIENCE", " Jare ondervinding en vorige skole ",
     " Years of experience and previous schools "},
    {"SKOOLBYWONING", "ATTENDANCE", " Daaglikse bywoningsregister ", " Daily attendance register "},
    {"VERLOF", "LEAVE", " Verlof in een stap ", " Leave in one step "},
    {"ROOSTER (ZOLBRANE)", "TIME TABLE (ZOLBRANE)", " Rooster van die personeellid ",
     " Time table of the staff member "},
};

}  // namespace

bool detail_form_available(StaffDetail detail) {
    switch (detail) {
        case StaffDetail::Address:
        case StaffDetail::Banking:
        case StaffDetail::Qualifications:
        case StaffDetail::Appointments:
        case StaffDetail::Experience:
        case StaffDetail::Attendance:
        case StaffDetail::Leave:
        case StaffDetail::Timetable:
            return true;
        default:
            return false;
    }
}

bool open_detail_form(shell::Session& session, StaffDetail detail, bool educators) {
    switch (detail) {
        case StaffDetail::Address: {
            AddressFamily form(session);
            session.dialogs().show_modal(form);
            return true;
        }
        case StaffDetail::Banking: {
            BankingDetails form(session);
            session.dialogs().show_modal(form);
            return true;
        }
        case StaffDetail::Qualifications: {
            Qualifications form(session);
            session.dialogs().show_modal(form);
            return true;
        }
        case StaffDetail::Appointments: {
            Appointments form(session, educators);
            session.dialogs().show_modal(form);
            return true;
        }
        case StaffDetail::Experience: {
            Experience form(session);
            session.dialogs().show_modal(form);
            return true;
        }
        case StaffDetail::Attendance: {
            attendance::AttendanceRequest form(session, educators);
            session.dialogs().show_modal(form);
            return true;
        }
        case StaffDetail::Leave: {
            attendance::LeaveCapture form(session);
            session.dialogs().show_modal(form);
            return true;
        }
        case StaffDetail::Timetable: {
            timetable::StaffTimetable form(session);
            form.form_load();
            session.dialogs().show_modal(form);
            form.exit_click();
            return true;
        }
        default:
            return false;
    }
}

DetailChooser::DetailChooser(shell::Session& session, bool educators, QString person_)
    : person(std::move(person_)), session_(session) {
    caption = session.tr("PERSONEELBESONDERHEDE INLEES", "INPUT STAFF DETAILS");
    for (int i = 1; i <= kStaffDetails; ++i) {
        const OptionText& t = kOptions[i - 1];
        Option& o = pr_option[static_cast<std::size_t>(i)];
        o.caption = QString::fromUtf8(session.afrikaans ? t.af : t.en);
        o.tool_tip = QString::fromUtf8(session.afrikaans ? t.tip_af : t.tip_en);
        const auto detail = static_cast<StaffDetail>(i);
        // Employees have no qualifications, experience or leave of their own here.
        o.visible =
            educators || !(detail == StaffDetail::Qualifications ||
                           detail == StaffDetail::Experience || detail == StaffDetail::Leave);
        o.enabled = detail_form_available(detail);
    }
}

void DetailChooser::pr_option_click(int index) {
    if (index < 1 || index > kStaffDetails) {
        return;
    }
    const Option& o = pr_option[static_cast<std::size_t>(index)];
    if (!o.visible || !o.enabled) {
        return;
    }
    chosen = index;
    chosen_label = person;
    closed = true;
}

}  // namespace korvel::staff
