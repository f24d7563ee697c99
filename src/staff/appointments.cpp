#include "staff/appointments.h"

#include "shell/helpers.h"
#include "shell/staff_person.h"

namespace korvel::staff {

using store::Code;
using store::Field;
using store::PRSALG;

namespace {

// The cells of aan_grid, in column order.
const Field* const kColumns[] = {&PRSALG["PA_WAAR"], &PRSALG["PA_BSK"], &PRSALG["PA_TPA"],
                                 &PRSALG["PA_DTM"]};
constexpr int kDateColumn = 3;

}  // namespace

Appointments::Appointments(shell::Session& session, bool educators)
    : session_(session), educators_(educators) {}

void Appointments::form_load() {
    const shell::Session& s = session_;
    master_ = hold_working_record(session_, Code::PRSALG);
    const store::Record& r = session_.working(Code::PRSALG);
    caption = shell::staff_heading(r);
    loaded = true;
    closed = false;
    data_raam_visible = false;
    grid_ok_visible = true;

    dtm_teks[1] = s.tr("AANSTEL. DATUM - O.DPT", "APP. DATE - E.DPT");
    dtm_teks[2] = s.tr("AANSTEL. DATUM - SKOOL", "APP. DATE - SCHOOL");
    dtm_tip[1] = s.tr("1ste Aanstellingsdatum in Onderwys", "1st Appointment date in Education");
    dtm_tip[2] = s.tr("1ste Aanstellingsdatum by ", "1st Appointment date at ") + s.school.name;
    dtm_data[1] = shown_date(r.date(PRSALG["PA_DTM_AAN"]));
    dtm_data[2] = shown_date(r.date(PRSALG["PA_DTM_SKL"]));

    data_teks[1] = s.tr("INSTANSIE", "INSTITUTION");
    data_teks[2] = s.tr("POSBESKRYWING", "DESCRIPTION");
    data_teks[3] = s.tr("TIPE POS", "TYPE OF POST");
    data_teks[4] = s.tr("DATUM", "DATE");
    prs_data.fill(QString());

    tp_lys.rows =
        s.afrikaans ? QStringList{"PERMANENT", "TYDELIK", "AFLOS", "NIE ONDERWYS", "BEHEERLIGGAAM"}
                    : QStringList{"PERMANENT", "TEMPORARY", "SUBSTITUTE", "NON EDUCATION",
                                  "GOVERNING BODY"};
    tp_lys.visible = false;

    aan_grid.set_format(s.tr("<INSTANSIE|<POSBESKRYWING|<TIPE|<DATUM",
                             "<INSTITUTION|<POST DESCRIPTION|<TYPE|<DATE"));
    aan_grid.resize(kAppointmentRows + 1);
    for (int row = 1; row <= kAppointmentRows; ++row) {
        for (int c = 0; c < kDateColumn; ++c) {
            aan_grid.cell(row, c) = r.text(*kColumns[c], row).trimmed();
        }
        aan_grid.cell(row, kDateColumn) = shown_date(r.date(PRSALG["PA_DTM"], row));
    }
    // Employees enter the two dates only.
    aan_grid.enabled = educators_;
}

void Appointments::aan_grid_click(int row) {
    if (!aan_grid.enabled || row < 1 || row > kAppointmentRows) {
        return;
    }
    aan_grid.current_row = row;
    aan_grid.enabled = false;
    for (int box = 1; box <= 4; ++box) {
        prs_data[static_cast<std::size_t>(box)] = aan_grid.cell(row, box - 1).trimmed();
    }
    data_raam_visible = true;
    grid_ok_visible = false;
    focus_box = 1;
}

void Appointments::prs_data_click(int box) {
    if (box == 3) {
        tp_lys.visible = true;
    } else if (box == 4) {
        pick_date(prs_data[4], data_teks[4]);
    }
}

void Appointments::dtm_data_click(int index) {
    if (index == 1 || index == 2) {
        pick_date(dtm_data[static_cast<std::size_t>(index)],
                  dtm_teks[static_cast<std::size_t>(index)]);
    }
}

void Appointments::pick_date(QString& text, const QString& label) {
    if (text.trimmed().isEmpty()) {
        text = shell::date_to_text(session_.today());
    }
    const QDate start = typed_date(text);
    const std::optional<QDate> picked =
        session_.dialogs().pick_date(label, start.isValid() ? start : session_.today());
    if (picked) {
        text = shell::date_to_text(*picked);
    }
}

void Appointments::tp_lys_click(int row) {
    if (row < 0 || row >= tp_lys.rows.size()) {
        return;
    }
    // The first letter is stored, so the letters differ by language (A against S, B against G).
    prs_data[3] = tp_lys.rows[row].left(1);
    tp_lys.visible = false;
    focus_box = 3;
}

TypedKey Appointments::prs_data_key_press(int, int key_ascii) {
    return typed_key(key_ascii, true);
}

void Appointments::data_ok_click() {
    const int row = aan_grid.current_row;
    if (row >= 1 && row <= kAppointmentRows) {
        for (int box = 1; box <= 4; ++box) {
            aan_grid.cell(row, box - 1) = prs_data[static_cast<std::size_t>(box)];
        }
    }
    data_raam_visible = false;
    tp_lys.visible = false;
    aan_grid.enabled = true;
    grid_ok_visible = true;
}

void Appointments::grid_ok_click() {
    if (session_.browse_mode) {
        closed = true;
        return;
    }
    std::optional<store::Record> found = read_held_for_edit(session_, master_);
    if (!found) {
        return;
    }
    store::Record& edited = *found;
    edited.set_date(PRSALG["PA_DTM_AAN"], typed_date(dtm_data[1]));
    edited.set_date(PRSALG["PA_DTM_SKL"], typed_date(dtm_data[2]));
    if (educators_) {
        for (int row = 1; row <= kAppointmentRows; ++row) {
            for (int c = 0; c < kDateColumn; ++c) {
                edited.set_text(*kColumns[c], aan_grid.cell(row, c).trimmed(), row);
            }
            edited.set_date(PRSALG["PA_DTM"], typed_date(aan_grid.cell(row, kDateColumn)), row);
        }
    }
    closed = write_held_record(session_, edited, master_);
}

}  // namespace korvel::staff
