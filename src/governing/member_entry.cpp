// sk411_bl_inlees, the entry form of a governing body member.

#include "governing/member_entry.h"

#include <QCryptographicHash>

#include "platform/user.h"
#include "shell/helpers.h"
#include "staff/remarks.h"
#include "store/record_layouts.h"

namespace korvel::governing {

using store::BHRLGM;
using store::Code;
using store::Field;
using store::PRSADD;
using store::PRSALG;
using store::Record;

namespace {

constexpr int kLabelRed = staff::kColourRed;
constexpr const Field& kState = BHRLGM["BL_AKTIEF"];

QString S(const char* utf8) {
    return QString::fromUtf8(utf8);
}

bool blank(const QString& s) {
    return s.trimmed().isEmpty();
}

// The boxes that go straight to a text field and back.
struct TextBox {
    int box;
    const Field& stored;
};
constexpr TextBox kTextBoxes[] = {
    {1, BHRLGM["BL_VAN"]},     {2, BHRLGM["BL_NAME"]},    {3, BHRLGM["BL_TITEL"]},
    {4, BHRLGM["BL_LAND"]},    {5, BHRLGM["BL_ID_NR"]},   {6, BHRLGM["BL_PASPOORT"]},
    {8, BHRLGM["BL_HWLK_ST"]}, {9, BHRLGM["BL_RAS"]},     {10, BHRLGM["BL_H_TAAL"]},
    {11, BHRLGM["BL_TAAL2"]},  {12, BHRLGM["BL_GEBREK"]}, {13, BHRLGM["BL_P_ADR1"]},
    {14, BHRLGM["BL_P_ADR2"]}, {15, BHRLGM["BL_P_ADR3"]}, {16, BHRLGM["BL_P_KODE"]},
    {19, BHRLGM["BL_T_KODE"]}, {20, BHRLGM["BL_T_NR"]},   {21, BHRLGM["BL_F_KODE"]},
    {22, BHRLGM["BL_F_NR"]},   {23, BHRLGM["BL_EPOS"]},
};
// The choice lists and the one-digit field each keeps.
constexpr const Field* kChoiceFields[] = {&BHRLGM["BL_TIPE"], &BHRLGM["BL_ONDERRIG"],
                                          &BHRLGM["BL_HOEDANIG"]};

struct Label {
    int index;
    const char* af;
    const char* en;
};
constexpr Label kLabels[] = {
    {kLabelType, "TIPE LID", "MEMBER TYPE"},
    {kLabelGender, "GESLAG", "GENDER"},
    {kLabelCitizen, "SA BURGER", "SA CITIZEN"},
    {4, "VAN", "SURNAME"},
    {5, "VOLLE NAME", "FULL NAMES"},
    {6, "TITEL", "TITLE"},
    {7, "LAND VAN OORSPRONG", "COUNTRY OF ORIGIN"},
    {8, "RSA ID-NOMMER", "RSA ID NUMBER"},
    {9, "PASPOORT NR", "PASSPORT NO"},
    {10, "GEBOORTEDATUM", "BIRTH DATE"},
    {11, "HUWELKIK-STATUS", "MARITAL STATUS"},
    {12, "BEVOLKINGSGROEP", "POPULATION GROUP"},
    {13, "HUISTAAL", "HOME LANGUAGE"},
    {14, "2DE TAAL", "2ND LANGUAGE"},
    {15, "GEBREK", "DISABILITY"},
    {16, "POSADRES 1", "POSTAL ADDRESS 1"},
    {17, "POSADRES 2", "POSTAL ADDRESS 2"},
    {18, "POSADRES 3", "POSTAL ADDRESS 3"},
    {19, "POSKODE", "POSTAL CODE"},
    {20, "SELNOMMER (KODE/NR)", "CELL NUMBER (CODE/NO)"},
    {22, "TELNOMMER (KODE/NR)", "TEL NUMBER (CODE/NO)"},
    {24, "FAKSNOMMER (KODE/NR)", "FAX NUMBER (CODE/NO)"},
    {26, "E-POSADRES", "EMAIL ADDRESS"},
    {27, "DATUM VERKIES TOT BL", "DATE SELECTED TO SGB"},
    {kLabelEducation, "VLAK VAN ONDERRIG", "LEVEL OF EDUCATION"},
    {kLabelActive, "AKTIEF", "ACTIVE ON SGB"},
    {kLabelCapacity, "HOEDANIGEID OP BL", "CAPACITY ON SGB"},
};

QStringList rows_of(std::initializer_list<const char*> rows) {
    QStringList out;
    for (const char* r : rows) {
        out << S(r);
    }
    return out;
}

QString date_box(const Record& r, const Field& f) {
    return shell::date_to_text(r.date(f).value_or(QDate()));
}

}  // namespace

int member_label_of_box(int box) {
    if (box < 1 || box >= kMemberBoxes || box == 18 || box == 20 || box == 22) {
        return -1;
    }
    return box + 3;
}

MemberPhone split_member_phone(const QString& text) {
    QString digits = text;
    digits.remove(u'(').remove(u')').remove(u' ');
    return {digits.left(3), digits.mid(3)};
}

int member_box_width(int box) {
    constexpr int kDate = 10;
    constexpr int kCellCode = 3;
    for (const TextBox& b : kTextBoxes) {
        if (b.box == box) {
            return b.stored.width;
        }
    }
    switch (box) {
        case 17:
            return kCellCode;
        case 18:
            return BHRLGM["BL_SEL"].width - kCellCode;
        default:
            return kDate;  // the birth date and the date elected
    }
}

QStringList member_choice_rows(MemberChoice list, bool afrikaans) {
    switch (list) {
        case MemberChoice::tipe_kieslys:
            return afrikaans
                       ? rows_of({"1 Hoof", "2 KS Opvoeder", "3 Ander Opvoeder", "4 Ouer/Voog",
                                  "5 Ander Ouer", "6 Leerder Verteenwoordiger", "7 Benoem"})
                       : rows_of({"1 Principal", "2 CS Educator", "3 Other Staff",
                                  "4 Parent/Guardian", "5 Other Parent", "6 Learner Representative",
                                  "7 Co-Opted"});
        case MemberChoice::onderrig_kieslys:
            return afrikaans ? rows_of({"1 Sonder Matriek", "2 Matriek",
                                        "3 3 Jaar Graad / Diploma En Hoër"})
                             : rows_of({"1 Below Matric", "2 Matric",
                                        "3 3 Year Degree / Diploma And above"});
        case MemberChoice::hoedanigheid_kieslys:
            return afrikaans ? rows_of({"1 Voorsitter", "2 Onder-voorsitter", "3 Sekretaris",
                                        "4 Tesourier", "5 Lid"})
                             : rows_of({"1 Chairperson", "2 Deputy Chairperson", "3 Secretary",
                                        "4 Treasurer", "5 Member"});
    }
    return {};
}

int new_member_record(shell::Session& s) {
    if (!s.is_open(Code::BHRLGM) && !s.open_file(Code::BHRLGM)) {
        return 0;
    }
    const int number = staff::next_record_number(s, Code::BHRLGM);
    s.working(Code::BHRLGM).clear();
    if (!s.write_record(Code::BHRLGM, number)) {
        return 0;
    }
    s.state(Code::BHRLGM).count = number;
    return number;
}

MemberRemarks member_remarks_names(const QString& key) {
    QString safe;
    for (const QChar c : key.trimmed()) {
        const bool plain =
            (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9');
        safe += plain ? c : u'_';
    }
    const QString print = QString::fromLatin1(
        QCryptographicHash::hash(key.trimmed().toUpper().toUtf8(), QCryptographicHash::Sha1)
            .toHex()
            .left(8));
    const QString name = safe.left(60) + u'.' + print;
    return {QStringLiteral("bl_opmerkings.") + name,
            QStringLiteral("bl_privaat_opmerkings.") + name};
}

void copy_to_governing_body(shell::Session& s) {
    const int number = new_member_record(s);
    if (number != 0) {
        MemberEntry entry(s, true);
        entry.select_member(number, nullptr);
        entry.fill_from_staff();
        s.dialogs().show_modal(entry);
    }
    s.close_file(Code::BHRLGM);
}

// ---- MemberEntry ----------------------------------------------------------------------------

MemberEntry::MemberEntry(shell::Session& session, bool is_new)
    : session_(session), is_new_(is_new) {
    form_load();
}

QString MemberEntry::placeholder() const {
    return session_.tr("JJJJ.MM.DD", "YYYY.MM.DD");
}

std::optional<EntryList> MemberEntry::list_of_box(int box) {
    switch (box) {
        case 3:
            return EntryList::titel_lys;
        case 8:
            return EntryList::hs_lys;
        case 9:
            return EntryList::ras_lys;
        case 10:
        case 11:
            return EntryList::taal_lys;
        case 12:
            return EntryList::gebrek_lys;
        default:
            return std::nullopt;
    }
}

void MemberEntry::form_load() {
    const bool af = session_.afrikaans;
    for (const Label& l : kLabels) {
        data_teks[static_cast<std::size_t>(l.index)] = S(af ? l.af : l.en);
    }
    for (int i = 0; i < staff::kEntryLists; ++i) {
        lists[static_cast<std::size_t>(i)].rows =
            staff::entry_list_rows(static_cast<EntryList>(i), af, true);
    }
    for (int i = 0; i < 3; ++i) {
        choices[static_cast<std::size_t>(i)].rows =
            member_choice_rows(static_cast<MemberChoice>(i), af);
    }
    bl_geslag_caption = {session_.tr("MANLIK", "MALE"), session_.tr("VROULIK", "FEMALE")};
    caption = session_.tr("BEHEERLIGGAAM BESONDERHEDE", "GOVERNING BODY DETAILS");
    data_del_enabled = !session_.browse_mode;
}

bool MemberEntry::read_record() {
    if (number_ <= 0 || (!session_.is_open(Code::BHRLGM) && !session_.open_file(Code::BHRLGM))) {
        return false;
    }
    return session_.read_record(Code::BHRLGM, number_);
}

void MemberEntry::select_member(int number, staff::RegisterGrid* grid) {
    number_ = number;
    grid_ = grid;
    prs_data.fill(QString());
    if (!read_record()) {
        return;
    }
    const Record& r = session_.working(Code::BHRLGM);
    for (const TextBox& b : kTextBoxes) {
        prs_data[static_cast<std::size_t>(b.box)] = r.text(b.stored).trimmed();
    }
    const MemberPhone cell = split_member_phone(r.text(BHRLGM["BL_SEL"]));
    prs_data[17] = cell.code;
    prs_data[18] = cell.number;
    prs_data[7] = staff::birth_date_from_id(prs_data[5]);
    if (prs_data[7].isEmpty()) {
        prs_data[7] = date_box(r, BHRLGM["BL_G_DATUM"]);
    }
    prs_data[24] = date_box(r, BHRLGM["BL_DTM_VERKIES"]);
    for (std::size_t i = 0; i < choices.size(); ++i) {
        const int digit = r.text(*kChoiceFields[i]).trimmed().toInt();
        choices[i].list_index = digit >= 1 && digit <= choices[i].rows.size() ? digit - 1 : -1;
    }
    const QString gender = r.text(BHRLGM["BL_GESLAG"]).trimmed();
    bl_geslag = {gender == u"M", gender == u"F"};
    sa_burger = r.byte(BHRLGM["BL_SA_BURGER"]) != 0;
    bl_aktief = r.int16(BHRLGM["BL_LID_AKTIEF"]) != 0;
    prs_posnommer = r.text(BHRLGM["BL_POS_NR"]).trimmed();
}

void MemberEntry::fill_from_staff() {
    const Record& st = session_.working(Code::PRSALG);
    const Record& add = session_.working(Code::PRSADD);
    struct FromStaff {
        int box;
        const Field& field;
    };
    static constexpr FromStaff kBoxes[] = {
        {1, PRSALG["PA_VAN"]},     {2, PRSALG["PA_NAME"]},    {3, PRSALG["PA_TITEL"]},
        {5, PRSALG["PA_ID_NR"]},   {8, PRSALG["PA_HWLK_ST"]}, {9, PRSALG["PA_RAS"]},
        {10, PRSALG["PA_TAAL"]},   {12, PRSALG["PA_GEBREK"]}, {13, PRSALG["PA_P_ADR1"]},
        {14, PRSALG["PA_P_ADR2"]}, {15, PRSALG["PA_P_ADR3"]}, {16, PRSALG["PA_P_KODE"]},
        {23, PRSALG["PA_EPOS"]},
    };
    for (const FromStaff& b : kBoxes) {
        prs_data[static_cast<std::size_t>(b.box)] = st.text(b.field).trimmed();
    }
    const bool male = st.text(PRSALG["PA_GESLAG"]).trimmed() == u"M";
    bl_geslag = {male, !male};
    prs_data[6] = add.text(PRSADD["PD_PASPOORT"]).trimmed();
    sa_burger = prs_data[6].isEmpty();
    prs_data[7] = date_box(st, PRSALG["PA_G_DATUM"]);
    // Cell, telephone and fax: code and number by the members' rule.
    static constexpr const Field* kPhones[] = {&PRSALG["PA_T_SEL"], &PRSALG["PA_T_HUIS"],
                                               &PRSALG["PA_T_ANDER"]};
    for (int i = 0; i < 3; ++i) {
        const MemberPhone p = split_member_phone(st.text(*kPhones[i]));
        prs_data[static_cast<std::size_t>(17 + 2 * i)] = p.code;
        prs_data[static_cast<std::size_t>(18 + 2 * i)] = p.number;
    }
    prs_posnommer = st.text(PRSALG["PA_POS_NR"]).trimmed();
}

void MemberEntry::form_activate() {
    if (blank(prs_data[7]) || prs_data[7] == placeholder()) {
        prs_data[7] = placeholder();
        placeholder_shown = true;
    }
    // Coded values show in the language in use, as in the staff entry form.
    const auto show = [this](int box, EntryList which) {
        PopupList& l = list(which);
        QString& text = prs_data[static_cast<std::size_t>(box)];
        const int code = shell::number_value(text);
        if (code > 0 && code <= l.rows.size()) {
            text = QString::number(code) + u' ' + l.rows.at(code - 1);
        } else {
            text.clear();
        }
    };
    show(9, EntryList::ras_lys);
    show(10, EntryList::taal_lys);
    show(11, EntryList::taal_lys);
    show(12, EntryList::gebrek_lys);
}

staff::TypedKey MemberEntry::prs_data_key_press(int box, int key_ascii) {
    const staff::TypedKey typed = staff::typed_key(key_ascii, true);
    if (typed.next_box) {
        focus_box = box + 1 < kMemberBoxes ? box + 1 : -1;
    } else if (box == 7 && placeholder_shown) {
        prs_data[7].clear();
        placeholder_shown = false;
    }
    return typed;
}

void MemberEntry::prs_data_got_focus(int box) {
    for (PopupList& l : lists) {
        l.visible = false;
    }
    if (const std::optional<EntryList> which = list_of_box(box)) {
        list(*which).visible = true;
        list_box = box;
    }
}

void MemberEntry::prs_data_lost_focus(int box) {
    if (box == 5) {
        const QString id = prs_data[5].trimmed();
        if (id.isEmpty()) {
            return;
        }
        const QString gender = bl_geslag[0] ? QStringLiteral("M") : QStringLiteral("F");
        if (!shell::valid_id_number(id, gender, session_.afrikaans).valid &&
            session_.dialogs().ask(session_.tr("ID-NOMMER WAARSKYNLIK VERKEERD!\nWIL U DIE "
                                               "ID-NOMMER SO AANVAAR?",
                                               "ID NUMBER POSSIBLY INCORRECT!\nDO YOU WISH TO "
                                               "ACCEPT THE NUMBER AS ENTERED?"),
                                   ui::Buttons::YesNo, ui::Icon::Question,
                                   ui::Answer::Yes) != ui::Answer::Yes) {
            focus_box = 5;
            return;
        }
        const QString birth = staff::birth_date_from_id(id);
        if (!birth.isEmpty()) {
            prs_data[7] = birth;
            placeholder_shown = false;
        }
    } else if (box == 7) {
        if (prs_data[7] == placeholder() || blank(prs_data[7])) {
            return;
        }
        if (staff::canonical_date(prs_data[7]).isEmpty()) {
            session_.dialogs().message(
                session_.tr("GEBOORTEDATUM VERKEERD!", "DATE OF BIRTH INCORRECT!"),
                ui::Icon::Critical);
        }
    }
}

void MemberEntry::prs_data_dbl_click(int box) {
    if (box != 7 && box != 24) {
        return;
    }
    QString& text = prs_data[static_cast<std::size_t>(box)];
    const QDate shown = shell::text_to_date(staff::canonical_date(text), session_.today());
    const QDate start = shown.isValid() && text != placeholder() ? shown : session_.today();
    if (const std::optional<QDate> picked = session_.dialogs().pick_date(
            data_teks[static_cast<std::size_t>(member_label_of_box(box))], start)) {
        text = shell::date_to_text(*picked);
        if (box == 7) {
            placeholder_shown = false;
        }
    }
}

void MemberEntry::list_click(EntryList which, int row) {
    PopupList& l = list(which);
    if (row < 0 || row >= l.rows.size() || !list_of_box(list_box) ||
        *list_of_box(list_box) != which) {
        return;
    }
    l.list_index = row;
    const QString text = l.rows.at(row);
    // Titles and marital states go in as their text, the coded lists as position and text.
    const bool plain = which == EntryList::titel_lys || which == EntryList::hs_lys;
    prs_data[static_cast<std::size_t>(list_box)] =
        plain ? text : QString::number(row + 1) + u' ' + text;
    l.visible = false;
}

void MemberEntry::data_ok_click() {
    const struct {
        MemberChoice list;
        const char* af;
        const char* en;
    } kChoiceTests[] = {
        {MemberChoice::tipe_kieslys, "TIPE LID MOET GEKIES WORD!!",
         "TYPE OF MEMBER MUST BE SELECTED!!"},
        {MemberChoice::onderrig_kieslys, "LID SE VLAK VAN ONDERRIG MOET GEKIES WORD!!",
         "MEMBER'S LEVEL OF EDUCATION MUST BE SELECTED!!"},
        {MemberChoice::hoedanigheid_kieslys, "LID SE HOEDANIGHEID OP SBL MOET GEKIES WORD!!",
         "MEMBER'S CAPACTITY ON SGB MUST BE SELECTED!!"},
    };
    for (const auto& t : kChoiceTests) {
        if (choice(t.list).list_index < 0) {
            session_.dialogs().message(session_.tr(t.af, t.en), ui::Icon::Critical);
            return;
        }
    }
    bool complete = true;
    const auto fail = [&](int label) {
        data_teks_colour[static_cast<std::size_t>(label)] = kLabelRed;
        complete = false;
    };
    // Labels by their own numbers: 8 and 10 stand over the ID number and the birth date, 11
    // over the marital status. A member needs one of the first two.
    const bool no_date = blank(prs_data[7]) || prs_data[7] == placeholder();
    if (blank(prs_data[5]) && no_date) {
        fail(8);
        fail(10);
    }
    if (blank(prs_data[8])) {
        fail(11);
    }
    if (!complete) {
        session_.dialogs().beep();
        session_.dialogs().message(session_.tr("VERPLIGTE VELDE ONVOLTOOID - SIEN ROOI "
                                               "KANTSKRIFTE...",
                                               "COMPULSARY FIELDS IMCOMPLETE - SEE RED TEXT..."),
                                   ui::Icon::Critical);
        return;
    }
    if (session_.browse_mode) {
        closed = true;
        return;
    }

    // The birth date as the staff entry form settles it.
    if (prs_data[7] == placeholder()) {
        prs_data[7].clear();
        placeholder_shown = false;
    }
    if (blank(prs_data[7]) && !blank(prs_data[5])) {
        prs_data[7] = staff::birth_date_from_id(prs_data[5]);
    }
    if (!blank(prs_data[7])) {
        prs_data[7] = staff::canonical_date(prs_data[7]);
    }

    // The boxes go over the record as it stands on disk: what the form does not show (the
    // reserved fields) stays byte for byte.
    if (!read_record()) {
        staff::cannot_write_message(session_, Code::BHRLGM);
        return;
    }
    Record& r = session_.working(Code::BHRLGM);
    for (const TextBox& b : kTextBoxes) {
        r.set_text(b.stored, prs_data[static_cast<std::size_t>(b.box)].trimmed());
    }
    r.set_text(BHRLGM["BL_SEL"], prs_data[17].trimmed() + prs_data[18].trimmed());
    for (std::size_t i = 0; i < choices.size(); ++i) {
        r.set_text(*kChoiceFields[i], QString::number(choices[i].list_index + 1));
    }
    const QDate birth = shell::text_to_date(prs_data[7], session_.today());
    r.set_date(BHRLGM["BL_G_DATUM"], prs_data[7].isEmpty() ? session_.today() : birth);
    const QDate elected = shell::text_to_date(staff::canonical_date(prs_data[24]), QDate());
    r.set_date(BHRLGM["BL_DTM_VERKIES"], elected.isValid() ? elected : QDate());
    r.set_text(BHRLGM["BL_VRLTR"], shell::initials(prs_data[2].trimmed()));
    r.set_text(BHRLGM["BL_GESLAG"], bl_geslag[0]   ? QStringLiteral("M")
                                    : bl_geslag[1] ? QStringLiteral("F")
                                                   : QString());
    r.set_byte(BHRLGM["BL_SA_BURGER"], sa_burger ? 1 : 0);
    r.set_int16(BHRLGM["BL_LID_AKTIEF"], bl_aktief ? 1 : 0);
    r.set_text(BHRLGM["BL_POS_NR"], prs_posnommer.trimmed());
    r.set_date(BHRLGM["BL_DTM_WYSIG"], session_.today());
    r.set_text(BHRLGM["BL_GEBRUIKER"],
               session_.user_name.isEmpty() ? platform::current_user() : session_.user_name);
    if (!session_.write_record(Code::BHRLGM, number_)) {
        staff::cannot_write_message(session_, Code::BHRLGM);
        return;
    }
    closed = true;
}

void MemberEntry::show_state(const QString& state) {
    if (grid_ == nullptr || grid_->selected < 0 ||
        grid_->selected >= static_cast<int>(grid_->rows.size())) {
        return;
    }
    staff::GridRow& row = grid_->rows[static_cast<std::size_t>(grid_->selected)];
    row.cells[2] = state;
    for (int c = 1; c <= 4; ++c) {
        row.red[static_cast<std::size_t>(c)] = !state.isEmpty();
    }
}

void MemberEntry::data_del_click() {
    if (session_.browse_mode || !read_record()) {
        return;
    }
    Record& r = session_.working(Code::BHRLGM);
    if (r.text(kState).trimmed() == u"*") {
        if (store::ask_delete(session_)) {
            r.set_text(kState, QStringLiteral("D"));
            session_.write_record(Code::BHRLGM, number_);
        }
    } else if (store::ask_inactivate(session_)) {
        r.set_text(kState, QStringLiteral("*"));
        if (session_.write_record(Code::BHRLGM, number_)) {
            show_state(QStringLiteral("*"));
        }
    }
    closed = true;
}

void MemberEntry::data_aktiveer_click() {
    if (session_.browse_mode || !read_record()) {
        return;
    }
    Record& r = session_.working(Code::BHRLGM);
    if (blank(r.text(kState))) {
        return;
    }
    if (store::ask_reactivate(session_)) {
        r.set_text(kState, QString());
        if (session_.write_record(Code::BHRLGM, number_)) {
            show_state(QString());
        }
    }
    closed = true;
}

void MemberEntry::opmerkings_click(bool right_button) {
    const QString key =
        prs_data[1].trimmed() + u' ' + prs_data[2].trimmed() + u' ' + prs_data[3].trimmed();
    const MemberRemarks names = member_remarks_names(key);
    staff::open_remarks(session_, names.public_name, names.private_name, key.trimmed(),
                        right_button);
}

}  // namespace korvel::governing
