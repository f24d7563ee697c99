#include "staff/experience.h"

#include "shell/common_dialogs.h"
#include "shell/staff_person.h"
#include "store/record_layouts.h"

namespace korvel::staff {

using store::Code;
using store::Field;
using store::FieldType;
using store::PRSADD;
using store::PRSALG;
using store::PRSVAK;
using store::Record;

namespace {

struct YearBox {
    const Field* field;  // box 0 is of the additional record, the others of the master record
    const char* af;
    const char* en;
};
const YearBox kYearBoxTable[kYearBoxes] = {
    {&PRSADD["PD_POSVLAK"], "POSVLAK", "POST LEVEL (1-4)"},
    {&PRSALG["PO_JRE_SKL"], "BY DIE SKOOL", "AT THIS SCHOOL"},
    {&PRSALG["PO_JRE_PRV"], "IN DIE PROVINSIE", "IN THE PROVINCE"},
    {&PRSALG["PO_JRE_BTE"], "BUITE ONDERWYS", "OUTSIDE EDUCATION"},
    {&PRSALG["PO_JRE_OND"], "IN ONDERWYS", "IN EDUCATION"},
    {&PRSALG["PO_JRE_DPT"], "AS DEPARTEMENTSHOOF", "AS DEPARTMENTAL HEAD"},
    {&PRSALG["PO_JRE_A_H"], "AS ADJUNKHOOF", "AS DEPUTY PRINCIPAL"},
    {&PRSALG["PO_JRE_SAH"], "AS SENIOR ADJUNKHOOF", "AS SNR DEPUTY PRINCIPAL"},
    {&PRSALG["PO_JRE_HF"], "AS HOOF", "AS PRINCIPAL"},
};

struct GridSpec {
    const char* caption_af;
    const char* caption_en;
    const char* format_af;
    const char* format_en;
    int rows;  // grid rows, the heading row included
    int columns;
    std::array<const Field*, 4> fields;  // by column; the subjects grid's are of PRSVAK
    std::array<const char*, 4> labels_af;
    std::array<const char*, 4> labels_en;
    const char* tip_af;
    const char* tip_en;
};
const GridSpec kGrids[kExperienceGrids] = {
    {"ANDER SKOLE",
     "OTHER SCHOOLS",
     "<INSTANSIE|<VAN DTM|<TOT DTM|>JARE",
     "<INSTITUTION|<FRM DTE|<TO DTE|>YEARS",
     6,
     4,
     {&PRSALG["PO_SKL"], &PRSALG["PO_VAN"], &PRSALG["PO_TOT"], &PRSALG["PO_OND"]},
     {"INSTANSIE", "VAN DATUM", "TOT DATUM", "JARE"},
     {"INSTITUTION", "FROM DATE", "TO DATE", "YEARS"},
     "ONDERVINDING : Ander Skole",
     "EXPERIENCE : Other Schools"},
    {"VAKBESONDERHEDE",
     "SUBJECT DETAILS",
     "<VAK|<GR|>JRE OPL|>JRE OND",
     "<SUBJECT|<GR|>YRS TRN|>YRS TCH",
     21,
     4,
     {&PRSVAK["PV_VAK2"], &PRSVAK["PV_GRD2"], &PRSVAK["PV_JR3"], &PRSVAK["PV_JR4"]},
     {"VAK", "GRAAD", "JARE OPLEIDING", "JARE ONDERWYS"},
     {"SUBJECT", "GRADE", "YEARS TRAINING", "YEARS TEACHING"},
     "ONDERVINDING : Vakke/Grade",
     "EXPERIENCE : Subjects/Grades"},
    {"BUITEMUURS",
     "EXTRA-MURAL",
     "<SPORT/AKTIWITEIT|<SPAN|>JARE",
     "<SPORT/ACTIVITY|<TEAM|>YEARS",
     6,
     3,
     {&PRSALG["PO_AKT"], &PRSALG["PO_SPN"], &PRSALG["PO_BJR"], nullptr},
     {"SPORT/AKTIWITEIT", "SPAN", "JARE", nullptr},
     {"SPORT/ACTIVITY", "TEAM", "YEARS", nullptr},
     "ONDERVINDING : Buitemuurs",
     "EXPERIENCE : Extra-mural"},
    {"BUITE-ONDERRIG",
     "EXTRA-CURRICULAR",
     "<PLEK/INSTANSIE|<POSISIE|>JARE",
     "<PLACE/INSTITUTION|<POSITION|>YEARS",
     6,
     3,
     {&PRSALG["PO_PLK"], &PRSALG["PO_POS"], &PRSALG["PO_PJR"], nullptr},
     {"PLEK/INSTANSIE", "POSISIE", "JARE", nullptr},
     {"PLACE/INSTITUTION", "POSITION", "YEARS", nullptr},
     "ONDERVINDING : Buite-onderrig",
     "EXPERIENCE : Extra-curricular"},
};
constexpr int kListRows = 5;  // rows of the three small lists of the master record

const GridSpec& grid_layout(ExperienceGrid g) {
    return kGrids[static_cast<std::size_t>(g)];
}

// A field's value as a cell shows it: text trimmed, a date in the dot form, a number.
QString cell_of(const Record& r, const Field& f, int index) {
    switch (f.type) {
        case FieldType::Date:
            return shown_date(r.date(f, index));
        case FieldType::Int16:
            return QString::number(r.int16(f, index));
        default:
            return r.text(f, index).trimmed();
    }
}

// A cell back into its field; false when a number does not fit.
bool store_cell(Record& r, const Field& f, int index, const QString& cell) {
    switch (f.type) {
        case FieldType::Date:
            r.set_date(f, typed_date(cell), index);
            return true;
        case FieldType::Int16: {
            long long value = 0;
            return typed_int16(cell, value) && r.set_int16(f, value, index);
        }
        default:
            r.set_text(f, cell.trimmed(), index);
            return true;
    }
}

}  // namespace

Experience::Experience(shell::Session& session) : session_(session) {}

void Experience::form_load() {
    const shell::Session& s = session_;
    master_ = hold_working_record(session_, Code::PRSALG);
    additional_ = hold_working_record(session_, Code::PRSADD);
    const Record& master = session_.working(Code::PRSALG);
    const Record& additional = session_.working(Code::PRSADD);
    caption = shell::staff_heading(master);
    loaded = true;
    closed = false;
    jre_tab_stops = true;
    codes_ = SubjectCodes::load(session_);
    subjects_ = load_subject_record(session_, master.text(PRSALG["PA_POS_NR"]));

    for (int i = 0; i < kYearBoxes; ++i) {
        const YearBox& b = kYearBoxTable[i];
        jare_teks[static_cast<std::size_t>(i)] = s.tr(b.af, b.en);
        jre_data[static_cast<std::size_t>(i)] =
            QString::number((i == 0 ? additional : master).int16(*b.field));
    }
    // The level list has rows in Afrikaans only; on an English screen the level is typed.
    posvlak_lys.rows = s.afrikaans ? QStringList{"4 = HOOF", "3 = ADJUNKHOOF",
                                                 "2 = DEPARTEMENTSHOOF", "1 = ONDERWYSER"}
                                   : QStringList();
    posvlak_lys.visible = false;

    for (int g = 0; g < kExperienceGrids; ++g) {
        const auto grid = static_cast<ExperienceGrid>(g);
        const GridSpec& gs = grid_layout(grid);
        ExperienceFrame& f = frame(grid);
        f.caption = s.tr(gs.caption_af, gs.caption_en);
        f.tool_tip = s.tr(gs.tip_af, gs.tip_en);
        f.visible = false;
        f.data.fill(QString());
        f.labels.fill(QString());
        for (int c = 0; c < gs.columns; ++c) {
            f.labels[static_cast<std::size_t>(c + 1)] =
                s.tr(gs.labels_af[static_cast<std::size_t>(c)],
                     gs.labels_en[static_cast<std::size_t>(c)]);
        }
        f.grid.set_format(s.tr(gs.format_af, gs.format_en));
        f.grid.resize(gs.rows);
        f.grid.enabled = true;
        if (grid == kSubjectsGrid) {
            continue;
        }
        // A row shows only when its first field holds something.
        for (int row = 1; row <= kListRows; ++row) {
            if (master.text(*gs.fields[0], row).trimmed().isEmpty()) {
                continue;
            }
            for (int c = 0; c < gs.columns; ++c) {
                f.grid.cell(row, c) = cell_of(master, *gs.fields[static_cast<std::size_t>(c)], row);
            }
        }
    }
    fill_subjects_grid();
}

void Experience::fill_subjects_grid() {
    const GridSpec& gs = grid_layout(kSubjectsGrid);
    DetailGrid& grid = frame(kSubjectsGrid).grid;
    grid.resize(gs.rows);
    const Record& r = subjects_.record;
    for (int row = 1; row <= kSubjectRowsShown; ++row) {
        const QString code = r.text(PRSVAK["PV_VAK2"], row).trimmed();
        if (code.isEmpty()) {
            continue;
        }
        grid.cell(row, 0) = code + u':' + codes_.subject_name(code, session_.afrikaans);
        for (int c = 1; c < gs.columns; ++c) {
            grid.cell(row, c) = cell_of(r, *gs.fields[static_cast<std::size_t>(c)], row);
        }
    }
}

void Experience::jre_data_dbl_click(int) {
    posvlak_lys.visible = true;
}

void Experience::posvlak_lys_click(int row) {
    if (row < 0 || row >= posvlak_lys.rows.size()) {
        return;
    }
    jre_data[0] = posvlak_lys.rows[row].section(u'=', 0, 0).trimmed();
    posvlak_lys.visible = false;
}

void Experience::grid_click(ExperienceGrid g, int row) {
    ExperienceFrame& f = frame(g);
    if (!f.grid.enabled || row < 1 || row >= f.grid.rows()) {
        return;
    }
    f.grid.current_row = row;
    f.grid.enabled = false;
    for (int c = 0; c < f.grid.columns; ++c) {
        f.data[static_cast<std::size_t>(c + 1)] = f.grid.cell(row, c).trimmed();
    }
    if (g == kSubjectsGrid) {
        // "code:name": the code goes to the box, the name is kept apart.
        const QString cell = f.data[1];
        f.data[1] = cell.section(u':', 0, 0);
        vak_name = cell.section(u':', 1, 1);
    }
    f.visible = true;
    jre_tab_stops = false;
    focus_box = 1;
}

void Experience::frame_data_click(ExperienceGrid g, int box) {
    if (g != kSchoolsGrid || (box != 2 && box != 3)) {
        return;
    }
    QString& text = frame(g).data[static_cast<std::size_t>(box)];
    const QDate shown = typed_date(text);
    const std::optional<QDate> picked = session_.dialogs().pick_date(
        frame(g).labels[static_cast<std::size_t>(box)], shown.isValid() ? shown : session_.today());
    if (picked) {
        text = shown_date(*picked);
    }
}

void Experience::vak_data_dbl_click(int box) {
    if (box != 1) {
        return;
    }
    ExperienceFrame& f = frame(kSubjectsGrid);
    SubjectChooser chooser(session_, codes_, f.data[1]);
    session_.dialogs().show_modal(chooser);
    if (const auto pick = chooser.chosen()) {
        f.data[1] = pick->code;
        vak_name = pick->name;
    }
}

TypedKey Experience::data_key_press(int key_ascii) {
    return typed_key(key_ascii, true);
}

void Experience::frame_ok_click(ExperienceGrid g) {
    ExperienceFrame& f = frame(g);
    const int row = f.grid.current_row;
    if (row >= 1 && row < f.grid.rows()) {
        for (int c = 0; c < f.grid.columns; ++c) {
            f.grid.cell(row, c) = f.data[static_cast<std::size_t>(c + 1)];
        }
        if (g == kSubjectsGrid) {
            f.grid.cell(row, 0) = f.data[1] + u' ' + vak_name;
        }
    }
    f.visible = false;
    f.grid.enabled = true;
    jre_tab_stops = true;
}

void Experience::kwl_vakke_mouse_down() {
    if (session_.browse_mode || shell::ask_backup_first(session_)) {
        return;
    }
    const ui::Answer a = session_.dialogs().ask(
        session_.tr("WIL U DEFNITIEF ALLE VAKBESONDERHEDE VIR " + caption + " UITVEE?",
                    "DO YOU REALLY WISH TO DELETE ALL SUBJECT DETAILS FOR " + caption + "?"),
        ui::Buttons::YesNo, ui::Icon::Question, ui::Answer::No);
    if (a != ui::Answer::Yes) {
        return;
    }
    Record& r = subjects_.record;
    for (int i = 1; i < PRSVAK["PV_VAK2"].count; ++i) {
        r.set_text(PRSVAK["PV_VAK2"], QString(), i);
        r.set_text(PRSVAK["PV_GRD2"], QString(), i);
        r.set_int16(PRSVAK["PV_JR3"], 0, i);
        r.set_int16(PRSVAK["PV_JR4"], 0, i);
    }
    write_subject_record(session_, subjects_);
    fill_subjects_grid();
}

void Experience::jre_ok_click() {
    if (session_.browse_mode) {
        closed = true;
        return;
    }
    // Every value goes into copies first: a number that does not fit leaves all three records
    // as they were, in memory and on disk.
    std::optional<Record> found_additional = read_held_for_edit(session_, additional_);
    std::optional<Record> found_master =
        found_additional ? read_held_for_edit(session_, master_) : std::nullopt;
    if (!found_master) {
        return;
    }
    Record& additional = *found_additional;
    Record& master = *found_master;
    Record subjects = subjects_.record;
    bool fits = true;
    const auto take = [&](Record& r, const Field& f, int index, const QString& text,
                          const QString& label) {
        if (fits && !store_cell(r, f, index, text)) {
            tell_number_too_large(session_, label);
            fits = false;
        }
    };
    for (int i = 0; i < kYearBoxes; ++i) {
        take(i == 0 ? additional : master, *kYearBoxTable[i].field, 0,
             jre_data[static_cast<std::size_t>(i)], jare_teks[static_cast<std::size_t>(i)]);
    }
    for (int g = 0; g < kExperienceGrids; ++g) {
        const auto grid = static_cast<ExperienceGrid>(g);
        const GridSpec& gs = grid_layout(grid);
        const ExperienceFrame& f = frame(grid);
        const int rows = grid == kSubjectsGrid ? kSubjectRowsStored : kListRows;
        Record& r = grid == kSubjectsGrid ? subjects : master;
        for (int row = 1; row <= rows; ++row) {
            for (int c = 0; c < gs.columns; ++c) {
                QString cell = f.grid.cell(row, c);
                if (grid == kSubjectsGrid && f.grid.cell(row, 0).trimmed().isEmpty()) {
                    cell.clear();  // a row without a code is cleared
                } else if (grid == kSubjectsGrid && c == 0) {
                    // The code is what stands before the first blank; a row not edited since
                    // loading still holds "code:name", and its fragments go to disk as they are.
                    cell = store::first_word(cell.trimmed());
                }
                take(r, *gs.fields[static_cast<std::size_t>(c)], row, cell,
                     f.labels[static_cast<std::size_t>(c + 1)]);
            }
        }
    }
    if (!fits) {
        return;
    }
    // The post level is written at once, then the master record, then the subjects.
    if (!write_held_record(session_, additional, additional_) ||
        !write_held_record(session_, master, master_)) {
        return;
    }
    subjects_.record = subjects;
    write_subject_record(session_, subjects_);
    closed = true;
}

}  // namespace korvel::staff
