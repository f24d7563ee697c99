#include "staff/qualifications.h"

#include "shell/helpers.h"
#include "shell/staff_person.h"
#include "store/record_layouts.h"

namespace korvel::staff {

using store::Code;
using store::Field;
using store::PRSADD;
using store::PRSALG;
using store::PRSVAK;
using store::Record;

namespace {

// The saved code of a row whose name is blank: 65535, which the 16-bit field holds as -1 (the
// bytes FF FF). It is no list position, so the load shows the row empty.
constexpr int kNoPosition = -1;

// Cells of kwl_grid(0) and kwl_grid(1).
enum { kQName = 0, kQPlace = 1, kQYear = 2, kQType = 3 };
enum { kSCode = 0, kSType = 1, kSGrade = 2, kSTrained = 3, kSTaught = 4 };

int slot(const Field& f, int qualification, int subject) {
    return Record::grid_index(f, qualification, subject);
}

}  // namespace

QStringList year_rows(const QDate& today) {
    QStringList out;
    for (int y = 1950; y <= today.year(); ++y) {
        out << QString::number(y);
    }
    return out;
}

Qualifications::Qualifications(shell::Session& session)
    : session_(session), master_(PRSALG), additional_(PRSADD) {}

void Qualifications::form_load() {
    const shell::Session& s = session_;
    master_ = session_.working(Code::PRSALG);
    additional_ = session_.working(Code::PRSADD);
    held_master_ = hold_working_record(session_, Code::PRSALG);
    held_additional_ = hold_working_record(session_, Code::PRSADD);
    caption = shell::staff_heading(master_);
    loaded = true;
    closed = false;
    codes_ = SubjectCodes::load(session_);
    subjects_ = load_subject_record(session_, master_.text(PRSALG["PA_POS_NR"]));

    data_teks = {s.tr("KWALIFIKASIE", "QUALIFICATION"),
                 s.tr("INSTANSIE", "INSTITUTION"),
                 s.tr("JAAR", "YEAR"),
                 s.tr("VAKKODE", "SUBJECT CODE"),
                 s.tr("JARE OPLEIDING", "YEARS TRAINING"),
                 s.tr("JARE ONDERWYS", "YEARS TEACHING")};
    vak_soort = {QString(), s.tr("HOOFVAK", "MAIN SUBJECT"),
                 s.tr("SPESIALISERINGSVAK", "SPECIALITY SUBJECT"),
                 s.tr("ANDER VAK", "OTHER SUBJECT")};
    kw_opsie = {QString(), s.tr("PROFESSIONEEL", "PROFESSIONAL"), s.tr("AKADEMIES", "ACADEMIC"),
                s.tr("TIPE KWALIFIKASIE", "QUALIFICATION TYPE")};
    for (const QualificationType& t : qualification_types()) {
        list(t.list) = {qualification_rows(t.list), -1, false};
    }
    jaar_lys = {year_rows(session_.today()), -1, false};

    kwl_grid[0].set_format(
        s.tr("<KWALIFIKASIE|<INSTANSIE|<JAAR|<TIPE", "<QUALIFICATION|<INSTITUTION|<YEAR|<TYPE"));
    kwl_grid[1].set_format(
        s.tr("<VAKKE|T|<GRD|>JRE OPL|>JRE OND", "<SUBJECTS|T|<GRD|>YRS TRN|>YRS TCH"));
    kwl_grid[1].resize(kStudiedSubjects + 1);
    kwl_grid[1].enabled = false;
    subjects_visible = false;
    data_raam_visible = false;
    vak_raam_visible = false;
    prs_data.fill(QString());
    vak_dta.fill(QString());
    load_qualifications();
}

void Qualifications::load_qualifications() {
    DetailGrid& g = kwl_grid[0];
    g.resize(kQualificationRows + 1);
    g.enabled = true;
    for (int row = 1; row <= kQualificationRows; ++row) {
        const QString grde = master_.text(PRSALG["PK_GRDE"], row);
        if (grde.size() > 1) {
            // A qualification of an older version, kept as free text: shown as academic.
            g.cell(row, kQType) = session_.tr("AKADEMIES", "ACADEMIC");
        } else if (const QualificationType* t = qualification_type_of(grde)) {
            g.cell(row, kQType) = session_.tr(t->af, t->en);
        } else {
            continue;
        }
        g.cell(row, kQName) = qualification_name(master_, additional_, row);
        g.cell(row, kQPlace) = master_.text(PRSALG["PK_WAAR"], row).trimmed();
        g.cell(row, kQYear) = QString::number(master_.int16(PRSALG["PK_JAAR"], row));
    }
}

void Qualifications::kwl_grid_click(int grid, int row) {
    if (grid == 1) {
        DetailGrid& g = kwl_grid[1];
        if (!g.enabled || row < 1 || row > kStudiedSubjects) {
            return;
        }
        g.current_row = row;
        g.enabled = false;
        vak_dta[1] = g.cell(row, kSCode);
        const int type = shell::number_value(g.cell(row, kSType));
        vak_soort_chosen = type >= 1 && type <= 3 ? type : 0;
        vak_dta[2] = g.cell(row, kSGrade);
        vak_dta[3] = g.cell(row, kSTrained);
        vak_dta[4] = g.cell(row, kSTaught);
        vak_raam_visible = true;
        return;
    }
    DetailGrid& g = kwl_grid[0];
    if (grid != 0 || !g.enabled || row < 1 || row > kQualificationRows) {
        return;
    }
    g.current_row = row;
    g.enabled = false;
    prs_data[0] = g.cell(row, kQType);
    if (prs_data[0] == u"*") {
        box4_visible = true;
        prs_data[4] = g.cell(row, kQName);
        prs_data[1].clear();
    } else {
        box4_visible = false;
        prs_data[1] = g.cell(row, kQName);
    }
    prs_data[2] = g.cell(row, kQPlace);
    prs_data[3] = g.cell(row, kQYear);
    const QualificationType* t = qualification_type_of(prs_data[0]);
    prs_data[5].clear();
    box5_visible = t == nullptr || t->letter != u'D';
    if (t != nullptr && t->letter != u'D') {
        show_subject_list(row);
    }
    data_raam_visible = true;
}

void Qualifications::show_subject_list(int row) {
    QStringList codes;
    for (int s = 1; s <= kStudiedSubjects; ++s) {
        const QString code =
            subjects_.record.text(PRSVAK["PV_VAK"], slot(PRSVAK["PV_VAK"], row, s)).trimmed();
        if (!code.isEmpty()) {
            codes << code;
        }
    }
    prs_data[5] = codes.join(QStringLiteral(", "));
}

void Qualifications::kw_opsie_click(int index) {
    if (index < 1 || index > 3) {
        return;
    }
    const QualificationType& t = qualification_types()[size_t(index - 1)];
    for (PopupList& l : kwalifikasie_lys) {
        l.visible = false;
    }
    PopupList& l = list(t.list);
    l.visible = true;
    prs_data[0] = QString(t.letter);
    l.list_index = prs_data[1].isEmpty() ? -1 : static_cast<int>(l.rows.indexOf(prs_data[1]));
    // A type "D" qualification has no subjects.
    box5_visible = t.letter != u'D';
}

void Qualifications::kwalifikasie_lys_dbl_click(QualificationList which, int row) {
    PopupList& l = list(which);
    if (row < 0 || row >= l.rows.size()) {
        return;
    }
    l.list_index = row;
    prs_data[1] = l.rows[row];
    l.visible = false;
}

void Qualifications::kwalifikasie_lys_lost_focus(QualificationList which) {
    list(which).visible = false;
}

void Qualifications::prs_data_dbl_click(int box) {
    if (box == 3) {
        jaar_lys.list_index = static_cast<int>(jaar_lys.rows.indexOf(prs_data[3].trimmed()));
        jaar_lys.visible = true;
    } else if (box == 5) {
        load_subjects();
    }
}

void Qualifications::jaar_lys_click(int row) {
    if (row < 0 || row >= jaar_lys.rows.size()) {
        return;
    }
    prs_data[3] = jaar_lys.rows[row];
    jaar_lys.visible = false;
}

void Qualifications::data_ok_click() {
    DetailGrid& g = kwl_grid[0];
    const int row = g.current_row;
    if (row >= 1 && row <= kQualificationRows) {
        g.cell(row, kQName) = prs_data[1];
        g.cell(row, kQPlace) = prs_data[2];
        g.cell(row, kQYear) = prs_data[3];
        g.cell(row, kQType) = prs_data[0];
    }
    jaar_lys.visible = false;
    data_raam_visible = false;
    g.enabled = true;
}

void Qualifications::load_subjects() {
    const int q = kwl_grid[0].current_row;
    if (q < 1 || q > kQualificationRows) {
        return;
    }
    DetailGrid& g = kwl_grid[1];
    g.resize(kStudiedSubjects + 1);
    const Record& v = subjects_.record;
    for (int s = 1; s <= kStudiedSubjects; ++s) {
        const QString code = v.text(PRSVAK["PV_VAK"], slot(PRSVAK["PV_VAK"], q, s)).trimmed();
        if (code.isEmpty()) {
            continue;
        }
        g.cell(s, kSCode) = code + u' ' + codes_.subject_name(code, session_.afrikaans);
        // The type stands at the subject row's index of the master record.
        g.cell(s, kSType) =
            QString::number(shell::number_value(master_.text(PRSALG["PK_SHA_T"], s)));
        g.cell(s, kSGrade) = v.text(PRSVAK["PV_GRD"], slot(PRSVAK["PV_GRD"], q, s)).trimmed();
        g.cell(s, kSTrained) =
            QString::number(v.int16(PRSVAK["PV_JR1"], slot(PRSVAK["PV_JR1"], q, s)));
        g.cell(s, kSTaught) =
            QString::number(v.int16(PRSVAK["PV_JR2"], slot(PRSVAK["PV_JR2"], q, s)));
    }
    subjects_visible = true;
    g.enabled = true;
}

void Qualifications::vak_dta_dbl_click(int box) {
    if (box != 1) {
        return;
    }
    SubjectChooser chooser(session_, codes_, store::first_word(vak_dta[1].trimmed()));
    session_.dialogs().show_modal(chooser);
    if (const auto pick = chooser.chosen()) {
        vak_dta[1] = pick->code;
    }
}

void Qualifications::vak_soort_click(int index) {
    if (index >= 1 && index <= 3) {
        vak_soort_chosen = index;
    }
}

void Qualifications::vak_ok_click() {
    DetailGrid& g = kwl_grid[1];
    const int s = g.current_row;
    if (s >= 1 && s <= kStudiedSubjects) {
        const QString code = store::first_word(vak_dta[1].trimmed());
        g.cell(s, kSType) = QString::number(vak_soort_chosen);
        g.cell(s, kSCode) = code.isEmpty()
                                ? QString()
                                : code + u' ' + codes_.subject_name(code, session_.afrikaans);
        g.cell(s, kSGrade) = vak_dta[2];
        g.cell(s, kSTrained) = vak_dta[3];
        g.cell(s, kSTaught) = vak_dta[4];
    }
    vak_raam_visible = false;
    g.enabled = true;
}

void Qualifications::grid_ok_click() {
    if (session_.browse_mode) {
        closed = true;
        return;
    }
    if (subjects_visible && kwl_grid[1].enabled) {
        if (store_subjects()) {
            kwl_grid[1].enabled = false;
            subjects_visible = false;
        }
        return;
    }
    store_qualifications();
}

bool Qualifications::store_subjects() {
    const int q = kwl_grid[0].current_row;
    if (q < 1 || q > kQualificationRows) {
        return false;
    }
    const DetailGrid& g = kwl_grid[1];
    Record v = subjects_.record;
    Record master = master_;
    QStringList codes;
    const Field& code_f = PRSVAK["PV_VAK"];
    const Field& grade_f = PRSVAK["PV_GRD"];
    const Field& trained_f = PRSVAK["PV_JR1"];
    const Field& taught_f = PRSVAK["PV_JR2"];
    for (int s = 1; s <= kStudiedSubjects; ++s) {
        const int at = slot(code_f, q, s);
        if (g.cell(s, kSCode).trimmed().isEmpty()) {
            v.set_text(code_f, QString(), at);
            v.set_text(grade_f, QString(), at);
            v.set_int16(trained_f, 0, at);
            v.set_int16(taught_f, 0, at);
            master.set_text(PRSALG["PK_SHA_T"], QString(), q);
            continue;
        }
        const QString code = store::first_word(g.cell(s, kSCode).trimmed());
        v.set_text(code_f, code, at);
        // The type goes to the qualification's index, not the subject's: each row overwrites it.
        master.set_text(PRSALG["PK_SHA_T"], QString::number(shell::number_value(g.cell(s, kSType))),
                        q);
        v.set_text(grade_f, g.cell(s, kSGrade).trimmed(), at);
        long long trained = 0;
        long long taught = 0;
        if (!typed_int16(g.cell(s, kSTrained), trained)) {
            tell_number_too_large(session_, data_teks[4]);
            return false;
        }
        if (!typed_int16(g.cell(s, kSTaught), taught)) {
            tell_number_too_large(session_, data_teks[5]);
            return false;
        }
        v.set_int16(trained_f, trained, at);
        v.set_int16(taught_f, taught, at);
        codes << code;
    }
    subjects_.record = v;
    master_ = master;
    prs_data[5] = codes.join(QStringLiteral(", "));
    write_subject_record(session_, subjects_);
    return true;
}

void Qualifications::store_qualifications() {
    Record master = master_;
    Record additional = additional_;
    const DetailGrid& g = kwl_grid[0];
    for (int row = 1; row <= kQualificationRows; ++row) {
        const QString type = g.cell(row, kQType).left(1);
        master.set_text(PRSALG["PK_GRDE"], type, row);
        if (const QualificationType* t = qualification_type_of(type)) {
            additional.set_int16(*t->positions, kNoPosition, row);
            const QString name = g.cell(row, kQName);
            if (!name.trimmed().isEmpty()) {
                additional.set_int16(*t->positions, list(t->list).rows.indexOf(name) + 1, row);
            }
        }
        master.set_text(PRSALG["PK_WAAR"], g.cell(row, kQPlace).trimmed(), row);
        long long year = 0;
        if (!typed_int16(g.cell(row, kQYear), year)) {
            tell_number_too_large(session_, data_teks[2]);
            return;
        }
        master.set_int16(PRSALG["PK_JAAR"], year, row);
    }
    if (write_held_record(session_, master, held_master_) &&
        write_held_record(session_, additional, held_additional_)) {
        closed = true;
    }
}

}  // namespace korvel::staff
