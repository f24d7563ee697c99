#include "staff/staff_entry.h"

#include <algorithm>

#include "shell/helpers.h"
#include "shell/main_menu.h"
#include "shell/staff_person.h"
#include "staff/appointments.h"
#include "staff/detail_chooser.h"
#include "staff/experience.h"
#include "staff/remarks.h"
#include "staff/staff_register.h"
#include "store/record_layouts.h"

namespace korvel::staff {

using store::Code;
using store::Field;
using store::PRSADD;
using store::PRSALG;
using store::Record;

namespace {

constexpr int kPlaceholderColour = 0x808080;  // grey
constexpr int kLabelRed = kColourRed;
constexpr int kLabelBlack = kColourBlack;

QString S(const char* utf8) {
    return QString::fromUtf8(utf8);
}

QStringList rows_of(std::initializer_list<const char*> rows) {
    QStringList out;
    for (const char* r : rows) {
        out << S(r);
    }
    return out;
}

// The label of each data_teks index in both languages; 25 is the educators' caption.
struct Label {
    int index;
    const char* af;
    const char* en;
};
constexpr Label kLabels[] = {
    {0, "LURITS NOMMER", "LURITS NUMBER"},
    {1, "VERWYSING/POSNR", "REFERENCE/POST NO"},
    {2, "VAN", "SURNAME"},
    {3, "VOLLE NAME", "FULL NAMES"},
    {4, "TITEL", "TITLE"},
    {5, "NOOIENSVAN", "MAIDEN NAME"},
    {6, "PERSAL-NOMMER", "PERSAL NUMBER"},
    {7, "GESLAG", "GENDER"},
    {8, "RSA ID-NOMMER", "RSA ID NUMBER"},
    {9, "GEBOORTEDATUM", "BIRTH DATE"},
    {10, "HUWELIKSTAAT", "MARITAL STATUS"},
    {11, "NOEMNAAM", "NAME"},
    {12, "UNIE-NAAM / NOMMER", "UNION NAME / NUMBER"},
    {13, "SACE-NOMMER", "SACE NUMBER"},
    {14, "REKENAARGELETTERDHEID", "COMPUTER LITERACY"},
    {15, "KLAS", "CLASS"},
    {16, "REGISTERKLAS", "REGISTER CLASS"},
    {17, "TIPE AANSTELLING", "TYPE OF APPOINTMENT"},
    {18, "BEVOLKINGSGROEP", "POPULATION GROUP"},
    {19, "HUISTAAL", "HOME LANGUAGE"},
    {20, "GEBREK", "DISABILITY"},
    {21, "TAAL VERMOË", "LANGUAGE ABILITY"},
    {22, "'REQV'", "REQV"},
    {23, "PASPOORT NR", "PASSPORT NO"},
    {24, "WERKSPERMIT NR", "WORK PERMIT NO"},
    {25, "HOOGSTE KWALIFIKASIE", "HIGHEST QUALIFICATION"},
    {26, "VLAK VAN ONDERWYS", "TEACHING LEVEL"},
};

}  // namespace

int entry_label_of_field(int field) {
    switch (field) {
        case 0:
            return -1;
        case 11:
            return 0;
        case 13:
            return 18;
        case 14:
            return 19;
        case 15:
            return 20;
        case 16:
            return 13;
        case 17:
            return 14;
        case 18:
            return 15;
        case 19:
            return 16;
        case 20:
            return 21;
        case 21:
            return 22;
        case 22:
            return 11;
        case 26:
            return 12;
        default:
            return field;
    }
}

namespace {

constexpr int kTabOrder[] = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 12, 26, 13,
                             14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25};

constexpr const Field& kState = PRSALG["PA_AKTIEF"];
constexpr const Field& kPost = PRSALG["PA_POS_NR"];

// The typed text fields of the master record that go straight to a field and back.
struct TextField {
    int field;
    const Field& stored;
};
constexpr TextField kMasterText[] = {
    {1, PRSALG["PA_POS_NR"]},   {2, PRSALG["PA_VAN"]},      {3, PRSALG["PA_NAME"]},
    {4, PRSALG["PA_TITEL"]},    {5, PRSALG["PA_N_VAN"]},    {6, PRSALG["PA_PERSAL"]},
    {7, PRSALG["PA_GESLAG"]},   {8, PRSALG["PA_ID_NR"]},    {10, PRSALG["PA_HWLK_ST"]},
    {12, PRSALG["PA_UN_NAAM"]}, {13, PRSALG["PA_RAS"]},     {14, PRSALG["PA_TAAL"]},
    {16, PRSALG["PA_DPT_NR"]},  {18, PRSALG["PK_KLAS_NR"]}, {19, PRSALG["PK_REG_KLS"]},
    {20, PRSALG["PA_TAALSMB"]},
};
constexpr TextField kAdditionalText[] = {
    {22, PRSADD["PD_NOEMNAAM"]},
    {23, PRSADD["PD_PASPOORT"]},
    {24, PRSADD["PD_WERKPERMIT"]},
    {26, PRSADD["PD_UNIE_NR"]},
};

// The stored letter of each appointment row, in row order.
constexpr char kAppointmentLetters[] = {'O', 'B', 'P'};

bool blank(const QString& s) {
    return s.trimmed().isEmpty();
}

}  // namespace

QString canonical_date(const QString& text) {
    QString t = text.trimmed();
    t.replace(u'.', u'/');
    return shell::date_to_text(t);
}

QStringList entry_list_rows(EntryList list, bool afrikaans, bool educators) {
    const auto pick = [afrikaans](QStringList af, QStringList en) { return afrikaans ? af : en; };
    switch (list) {
        case EntryList::titel_lys:
            return pick(
                rows_of({"MNR", "JH", "MEV", "ME", "MEJ", "DR", "PROF", "ED", "DS", "MIN", "SP"}),
                rows_of(
                    {"MR", "MRS", "MS", "MISS", "DR", "PROF", "HNR", "REV", "MIN", "SP", "SIR"}));
        case EntryList::geslag_lys:
            return pick(rows_of({"MANLIK", "VROULIK"}), rows_of({"MALE", "FEMALE"}));
        case EntryList::Tipe_aanstelling:
            return pick(rows_of({"ONDERWYSDEPARTEMENT", "BEHEERLIGGAAM", "PYEI AANSTELLING"}),
                        rows_of({"EDUCATION DEPARTEMENT", "GOVERNING BODY", "PYEI APPOINTMENT"}));
        case EntryList::hs_lys:
            return pick(rows_of({"G GETROUD", "O ONGETROUD", "S GESKEI", "V VERVREEMD",
                                 "W WEWENAAR/WEDUWEE", "A ANDER"}),
                        rows_of({"G MARRIED", "O UNMARRIED", "S DIVORCED", "V SEPERATED",
                                 "W BACHELOR", "A OTHER"}));
        case EntryList::ras_lys:
            return pick(rows_of({"SWART", "KLEURLING", "INDIëR", "BLANK", "ANDER"}),
                        rows_of({"BLACK", "COLOURED", "INDIAN", "WHITE", "OTHER"}));
        case EntryList::taal_lys:
            return pick(rows_of({"AFRIKAANS", "ENGELS", "ISINDEBELE", "SEPEDI", "SISWATI",
                                 "XITSONGA", "TSHIVENDA", "SETSWANA", "ISIXHOSA", "ISIZULU",
                                 "SESOTHO", "GEBARE TAAL", "ANDER"}),
                        rows_of({"AFRIKAANS", "ENGLISH", "ISINDEBELE", "SEPEDI", "SISWATI",
                                 "XITSONGA", "TSHIVENDA", "SETSWANA", "ISIXHOSA", "ISIZULU",
                                 "SESOTHO", "SIGN LANGUAGE", "OTHER"}));
        case EntryList::gebrek_lys:
            return pick(rows_of({"SIG", "GEHOOR", "FISIES", "MEER AS EEN", "EPILEPSIE", "ANDER"}),
                        rows_of({"SIGHT", "HEARING", "PHYSICAL", "MULTIPLE", "EPILEPSY", "OTHER"}));
        case EntryList::reqv_lys:
            return pick(
                rows_of({"10 = Graad 12, geen opleiding", "11 = Graad 8-11 + 2 jaar opleiding",
                         "12 = Graad 12 + 2 jaar opleiding", "13 = Graad 12 + 3 jaar (BA, BSc ens)",
                         "14 = Graad 12 + 4 jaar opleiding", "15 = Graad 12 + 5 jaar opleiding",
                         "16 = Graad 12 + 6 jaar opleiding", "17 = Graad 12 + 7 jaar opleiding",
                         "99 = Sonder Matriek, geen Opleiding"}),
                rows_of({"10 = Grade 12, no training", "11 = Grade 8-11 + 2 years training",
                         "12 = Grade 12 + 2 years training",
                         "13 = Grade 12 + 3 years (BA, BSc etc)",
                         "14 = Grade 12 + 4 years training", "15 = Grade 12 + 5 years training",
                         "16 = Grade 12 + 6 years training", "17 = Grade 12 + 7 years training",
                         "99 = Without Matric, no training"}));
        case EntryList::ict_lys:
            return pick(
                rows_of({"0 = Geen vaardighede", "1 = Intree vlak (Entry level)",
                         "2 = Aanneming   (Adoption)", "3 = Toepassing  (Adaptation)",
                         "4 = Aanwending  (Appropriation)", "5 = Gevorderd   (Innovation)"}),
                rows_of({"0 = No ICT/computer skills", "1 = Entry level", "2 = Adoption",
                         "3 = Adaptation", "4 = Appropriation", "5 = Innovation"}));
        case EntryList::hk_lys:
            if (educators) {
                return rows_of({"Professional Teaching Qualification",
                                "Post-Professional Teaching Qualification",
                                "First Academic Qualification",
                                "Post Graduate Academic Qualification"});
            }
            return rows_of({"Admin Staff",
                            "After School Care",
                            "Extra-Curricular Administrator",
                            "Extra-Curricular Coach",
                            "EA: Curriculum - Literacy",
                            "EA: Curriculum - Mathematics",
                            "EA: Curriculum - Numeracy",
                            "EA: Curriculum - Science",
                            "EA: Curriculum - Technology",
                            "EA: ICT",
                            "EA: Reading Champion",
                            "Food Nutrition Staff",
                            "GSA",
                            "GSA: Handyman",
                            "GSA: Child & Youth Care worker",
                            "GSA: Sport Enrichment assistant",
                            "Hostel Staff",
                            "Nurse",
                            "Occupational Therapist",
                            "Physiotherapist",
                            "Practitioner",
                            "Professional Teaching Staff",
                            "Physchologist",
                            "Speech Therapist",
                            "Sport Administrator",
                            "Sport Coach",
                            "Support Staff",
                            "Teacher Assistant",
                            "Tuck-Shop",
                            "Librarian",
                            "Librarian Assistant",
                            "Social worker",
                            "Bus driver",
                            "Caretaker",
                            "Mobility Instructor",
                            "Food Aid",
                            "Security",
                            "Volunteer",
                            "LSA",
                            "School transport"});
    }
    return {};
}

std::span<const int> entry_tab_order() {
    return kTabOrder;
}

QString birth_date_from_id(const QString& id) {
    const QString digits = id.trimmed().left(6);
    if (digits.size() < 6) {
        return {};
    }
    bool ok = false;
    const int yy = digits.left(2).toInt(&ok);
    if (!ok) {
        return {};
    }
    const int month = digits.mid(2, 2).toInt(&ok);
    if (!ok) {
        return {};
    }
    const int day = digits.mid(4, 2).toInt(&ok);
    if (!ok) {
        return {};
    }
    const QDate date(yy < 30 ? 2000 + yy : 1900 + yy, month, day);
    return date.isValid() ? shell::date_to_text(date) : QString();
}

bool is_admin_class(const QString& klas) {
    return klas.trimmed().startsWith(u"ADM");
}

std::optional<EntryList> StaffEntry::list_of_field(int field, bool western_cape) {
    switch (field) {
        case 4:
            return EntryList::titel_lys;
        case 7:
            return EntryList::geslag_lys;
        case 10:
            return EntryList::hs_lys;
        case 13:
            return EntryList::ras_lys;
        case 14:
            return EntryList::taal_lys;
        case 15:
            if (western_cape) {
                return std::nullopt;
            }
            return EntryList::gebrek_lys;
        case 17:
            return EntryList::ict_lys;
        case 21:
            return EntryList::reqv_lys;
        case 25:
            return EntryList::hk_lys;
        default:
            return std::nullopt;
    }
}

StaffEntry::StaffEntry(shell::Session& session, StaffRegister& owner, bool is_new)
    : session_(session),
      owner_(owner),
      is_new_(is_new),
      master_(hold_working_record(session, Code::PRSALG)),
      additional_(hold_working_record(session, Code::PRSADD)) {
    western_cape = session_.school.province_code.trimmed() == u"WC";
    form_load();
}

QString StaffEntry::placeholder() const {
    return session_.tr("JJJJ.MM.DD", "YYYY.MM.DD");
}

bool StaffEntry::educators() const {
    return owner_.personeel_tipe;
}

void StaffEntry::form_load() {
    const bool af = session_.afrikaans;
    for (const Label& l : kLabels) {
        data_teks[static_cast<std::size_t>(l.index)] = S(af ? l.af : l.en);
    }
    if (western_cape) {
        data_teks[20] = session_.tr("CEMIS-NOMMER", "CEMIS NUMBER");
    }
    if (!educators()) {
        data_teks[25] = session_.tr("PERSONEEL KATEGORIE", "PERSONNEL CATEGORY");
    }
    for (int i = 0; i < kEntryLists; ++i) {
        PopupList& l = lists[static_cast<std::size_t>(i)];
        l.rows = entry_list_rows(static_cast<EntryList>(i), af, educators());
        l.visible = false;
    }
    broodwinner_caption = session_.tr("BROODWINNER", "BREAD WINNER");
    kies_p_t_caption = {QStringLiteral("PERMANENT"), QStringLiteral("TYDELIK")};
    const QStringList levels =
        af ? rows_of({"VOOR GRAAD R", "GRAAD R", "PRIMêR", "SEKONDêR", "LSEN", "STUDENT"})
           : rows_of({"PRE GRAAD R", "GRADE R", "PRIMARY", "SECONDARY", "LSEN", "STUDENT"});
    for (int i = 0; i < 6; ++i) {
        kies_tipe_onderwys_caption[static_cast<std::size_t>(i)] = levels.at(i);
    }
    caption = session_.tr("PERSONEELBESONDERHEDE", "STAFF DETAILS");
    tool_tips.data_ok = session_.browse_mode
                            ? session_.tr(" Gaan voort ", "Continue")
                            : session_.tr(" Bevestig veranderings ", "Confirm changes");
    tool_tips.data_del = session_.tr(" Vee rekord uit ", "Delete record");
    tool_tips.opmerkings = session_.tr(" Opmerkings ", " Remarks ");
    tool_tips.kopieer_na_bl = session_.tr(" Kopieer Personeellid na Beheerliggaam-databasis ",
                                          " Copy Staff member to Governing Body database ");
    kopieer_na_bl_caption = session_.tr("BL", "GB");
    data_del_caption = session_.tr("VEE UIT", "DELETE");
    data_aktiveer_caption = session_.tr("HERAKTIVEER", "RE-ACTIVATE");
    opmerkings_caption = session_.tr("OPMERKINGS", "REMARKS");
    alg_opsies_caption = session_.tr("MEER BESONDERHEDE", "MORE DETAILS");
    data_del_enabled = !session_.browse_mode;
    kopieer_na_bl_enabled = bool(owner_.copy_to_governing_body);
}

void StaffEntry::select_record() {
    Record& r = session_.working(Code::PRSALG);
    Record& add = session_.working(Code::PRSADD);
    prs_data.fill(QString());
    prs_data[0] = r.text(kState).trimmed();
    for (const TextField& f : kMasterText) {
        prs_data[static_cast<std::size_t>(f.field)] = r.text(f.stored).trimmed();
    }
    for (const TextField& f : kAdditionalText) {
        prs_data[static_cast<std::size_t>(f.field)] = add.text(f.stored).trimmed();
    }
    prs_data[15] = western_cape ? add.text(PRSADD["PD_CEMIS"]).trimmed()
                                : r.text(PRSALG["PA_GEBREK"]).trimmed();
    prs_data[17] = QString::number(r.int16(PRSALG["PA_ICT_LV"]));
    prs_data[21] = QString::number(r.int16(PRSALG["PA_REQV"]));

    // The birth date follows the ID number; the stored date stands only without one.
    prs_data[9] = birth_date_from_id(prs_data[8]);
    if (prs_data[9].isEmpty()) {
        prs_data[9] = shell::date_to_text(r.date(PRSALG["PA_G_DATUM"]).value_or(QDate()));
    }

    // The appointment row by its stored letter: the two languages' letters are not the same,
    // so an English "E" or "G" selects nothing.
    PopupList& appointment = list(EntryList::Tipe_aanstelling);
    appointment.list_index = -1;
    const QString od_bl = r.text(PRSALG["PA_OD_BL"]).trimmed();
    for (int i = 0; i < 3; ++i) {
        if (od_bl == QChar::fromLatin1(kAppointmentLetters[i])) {
            appointment.list_index = i;
        }
    }
    const QString p_t = r.text(PRSALG["PA_P_T"]).trimmed();
    kies_p_t = {p_t == u"P", p_t == u"T"};
    const QString bread = r.text(PRSALG["PA_BRD_WNR"]).trimmed();
    broodwinner = !(bread.isEmpty() || bread == u"N");
    kies_tipe_onderwys.fill(false);
    const QString level = add.text(PRSADD["PD_ONDERWYS_VLAK"]);
    if (!blank(level)) {
        const int i = level.at(0).digitValue();
        if (i >= 0 && i < 6) {
            kies_tipe_onderwys[static_cast<std::size_t>(i)] = true;
        }
    }

    // The highest qualification kept in the master record lifts the category.
    const int qualification = shell::number_value(r.text(PRSALG["PA_FOR_NR"]));
    int category = add.int16(PRSADD["PD_KATEGORIE"]);
    if (qualification > 0) {
        category = std::max(category, qualification);
        add.set_int16(PRSADD["PD_KATEGORIE"], category);
        session_.write_record(Code::PRSADD, session_.state(Code::PRSADD).current);
    }
    prs_data[25] = category > 0 ? QString::number(category) : QString();
    heading = shell::staff_heading(r);
}

void StaffEntry::show_coded_field(int field, EntryList which) {
    PopupList& l = list(which);
    QString& text = prs_data[static_cast<std::size_t>(field)];
    const int code = shell::number_value(text);
    if (code > 0 && code <= l.rows.size()) {
        l.list_index = code - 1;
        text = QString::number(code) + u' ' + l.rows.at(code - 1);
    } else {
        text.clear();
    }
}

void StaffEntry::form_activate() {
    if (blank(prs_data[9]) || prs_data[9] == placeholder()) {
        prs_data[9] = placeholder();
        placeholder_shown = true;
    } else {
        placeholder_shown = false;
    }
    show_coded_field(13, EntryList::ras_lys);
    show_coded_field(14, EntryList::taal_lys);
    if (!western_cape) {
        show_coded_field(15, EntryList::gebrek_lys);
    }
    show_coded_field(25, EntryList::hk_lys);
    const QString id = shell::pad_right(prs_data[8].trimmed(), 13);
    const QString lurits = owner_.upkeep.lurits_number(id);
    if (!lurits.isEmpty()) {
        prs_data[11] = lurits.left(9);
    }
}

TypedKey StaffEntry::prs_data_key_press(int field, int key_ascii) {
    const TypedKey typed = typed_key(key_ascii, field != 20);
    if (typed.next_box) {
        const auto* at = std::find(std::begin(kTabOrder), std::end(kTabOrder), field);
        if (at != std::end(kTabOrder) && at + 1 != std::end(kTabOrder)) {
            focus_field = *(at + 1);
        }
    } else if (field == 9) {
        clear_placeholder_if_shown();
    }
    return typed;
}

void StaffEntry::prs_data_dbl_click(int field) {
    if (field != 9) {
        return;
    }
    const QDate start = prs_data[9] == placeholder()
                            ? session_.today()
                            : shell::text_to_date(canonical_date(prs_data[9]), session_.today());
    if (const std::optional<QDate> picked = session_.dialogs().pick_date(
            data_teks[9], start.isValid() ? start : session_.today())) {
        prs_data[9] = shell::date_to_text(*picked);
        placeholder_shown = false;
    }
}

void StaffEntry::clear_placeholder_if_shown() {
    if (placeholder_shown) {
        prs_data[9].clear();
        placeholder_shown = false;
    }
}

void StaffEntry::set_birth_date_from_id() {
    const QString computed = birth_date_from_id(prs_data[8]);
    if (!computed.isEmpty() && prs_data[9] != computed) {
        prs_data[9] = computed;
        placeholder_shown = false;
    }
}

void StaffEntry::prs_data_got_focus(int field) {
    for (int i = 0; i <= 14; ++i) {
        if (i != 11) {
            prs_data[static_cast<std::size_t>(i)] = prs_data[static_cast<std::size_t>(i)].trimmed();
        }
    }
    if (!blank(prs_data[8])) {
        set_birth_date_from_id();
    }
    for (PopupList& l : lists) {
        l.visible = false;
    }
    if (field == 25) {
        return;  // its list opens on a click
    }
    if (const std::optional<EntryList> which = list_of_field(field, western_cape)) {
        PopupList& l = list(*which);
        l.visible = true;
        if (field == 17) {
            const int wanted = shell::number_value(prs_data[17]);
            l.list_index = -1;
            for (int i = 0; i < l.rows.size(); ++i) {
                if (shell::number_value(l.rows.at(i)) == wanted && !blank(prs_data[17])) {
                    l.list_index = i;
                }
            }
        }
    }
}

void StaffEntry::prs_data_click(int field) {
    if (field == 11) {
        focus_field = 1;
    } else if (field == 17 || field == 25) {
        PopupList& l = list(field == 17 ? EntryList::ict_lys : EntryList::hk_lys);
        l.visible = true;
    }
}

void StaffEntry::prs_data_lost_focus(int field) {
    if (field == 8) {
        const QString id = prs_data[8].trimmed();
        if (id.isEmpty()) {
            return;
        }
        const shell::IdCheck check =
            shell::valid_id_number(id, prs_data[7].trimmed().left(1), session_.afrikaans);
        if (!check.valid &&
            session_.dialogs().ask(session_.tr("ID-NOMMER WAARSKYNLIK VERKEERD!\nWIL U DIE "
                                               "ID-NOMMER SO AANVAAR?",
                                               "ID NUMBER POSSIBLY INCORRECT!\nDO YOU WISH TO "
                                               "ACCEPT THE NUMBER AS ENTERED?"),
                                   ui::Buttons::YesNo, ui::Icon::Question,
                                   ui::Answer::Yes) != ui::Answer::Yes) {
            focus_field = 8;
            return;
        }
        set_birth_date_from_id();
    } else if (field == 9) {
        // Tabbing past an empty date, or past the placeholder, is no wrong date.
        if (prs_data[9] == placeholder() || blank(prs_data[9])) {
            return;
        }
        if (canonical_date(prs_data[9]).isEmpty()) {
            session_.dialogs().message(
                session_.tr("GEBOORTEDATUM VERKEERD!", "DATE OF BIRTH INCORRECT!"),
                ui::Icon::Critical);
        }
    }
}

void StaffEntry::list_click(EntryList which, int row) {
    PopupList& l = list(which);
    if (row < 0 || row >= l.rows.size()) {
        return;
    }
    l.list_index = row;
    if (which == EntryList::Tipe_aanstelling) {
        return;  // a list of its own, not in front of a field
    }
    const QString text = l.rows.at(row);
    QString value;
    int field = 0;
    switch (which) {
        case EntryList::titel_lys:
            field = 4;
            value = text;
            break;
        case EntryList::geslag_lys:
            field = 7;
            value = text;
            break;
        case EntryList::hs_lys:
            field = 10;
            value = text;
            break;
        case EntryList::ras_lys:
            field = 13;
            break;
        case EntryList::taal_lys:
            field = 14;
            break;
        case EntryList::gebrek_lys:
            field = 15;
            break;
        case EntryList::hk_lys:
            field = 25;
            break;
        case EntryList::ict_lys:
            field = 17;
            value = QString::number(shell::number_value(text));
            break;
        case EntryList::reqv_lys:
            field = 21;
            value = QString::number(shell::number_value(text));
            break;
        case EntryList::Tipe_aanstelling:
            break;
    }
    if (value.isEmpty()) {
        value = QString::number(row + 1) + u' ' + text;
    }
    prs_data[static_cast<std::size_t>(field)] = value;
    l.visible = false;
}

bool StaffEntry::compulsory_fields_complete() {
    bool complete = true;
    const auto fail = [&](int label) {
        data_teks_colour[static_cast<std::size_t>(label)] = kLabelRed;
        complete = false;
    };
    const bool admin = is_admin_class(prs_data[18]);
    const bool no_date = blank(prs_data[9]) || prs_data[9] == placeholder();
    if (blank(prs_data[8]) && no_date) {
        fail(8);
        fail(9);
    }
    if (!admin && blank(prs_data[25])) {
        fail(25);
    }
    if (blank(prs_data[13])) {
        fail(18);
    }
    if (blank(prs_data[14])) {
        fail(19);
    }
    if (!admin && blank(prs_data[21])) {
        fail(22);
    }
    if (list(EntryList::Tipe_aanstelling).list_index < 0) {
        fail(17);
    }
    if (!kies_p_t[0] && !kies_p_t[1]) {
        fail(17);
    }
    if (!admin && std::none_of(kies_tipe_onderwys.begin(), kies_tipe_onderwys.end(),
                               [](bool b) { return b; })) {
        fail(26);
    }
    if (!complete) {
        session_.dialogs().beep();
        session_.dialogs().message(session_.tr("VERPLIGTE VELDE ONVOLTOOID - SIEN ROOI "
                                               "KANTSKRIFTE...",
                                               "COMPULSARY FIELDS IMCOMPLETE - SEE RED TEXT..."),
                                   ui::Icon::Critical);
    }
    return complete;
}

void StaffEntry::data_ok_click() {
    if (compulsory_fields_complete() && save_record()) {
        closed = true;
    }
}

bool StaffEntry::save_record() {
    const QString post = prs_data[1].trimmed();
    if (post.isEmpty()) {
        session_.dialogs().message(session_.tr("POSNOMMER MOET INGEVOER WORD ... VERSOEK GEWEIER!",
                                               "POST NUMBER MUST BE ENTERED ... REQUEST DENIED!"),
                                   ui::Icon::Critical);
        return false;
    }
    if (is_new_ && owner_.upkeep.prs_lys.contains(post)) {
        session_.dialogs().message(
            session_.tr(S("POSNOMMER ") + post + S(" REEDS OP LêER ... VERSOEK GEWEIER!"),
                        S("POST NUMBER ") + post + S(" ALREADY EXIST ... REQUEST DENIED!")),
            ui::Icon::Critical);
        return false;
    }
    if (session_.browse_mode) {
        return true;
    }

    // The birth date: the placeholder is no date, the ID number gives one, a typed one is
    // shown again in the canonical form.
    if (prs_data[9] == placeholder()) {
        prs_data[9].clear();
        placeholder_shown = false;
    }
    if (blank(prs_data[9]) && !blank(prs_data[8])) {
        prs_data[9] = birth_date_from_id(prs_data[8]);
    }
    if (!blank(prs_data[9])) {
        prs_data[9] = canonical_date(prs_data[9]);
    }

    // The fields go into a copy of the person's record as it stands on disk now (a detail form
    // may have written it since), which takes the place of the record in memory once written.
    if (!read_held_record(session_, master_)) {
        cannot_write_message(session_, Code::PRSALG);
        return false;
    }
    Record r = session_.working(Code::PRSALG);
    for (const TextField& f : kMasterText) {
        r.set_text(f.stored, prs_data[static_cast<std::size_t>(f.field)].trimmed());
    }
    if (!western_cape) {
        r.set_text(PRSALG["PA_GEBREK"], prs_data[15].trimmed());
    }
    const QDate birth = shell::text_to_date(prs_data[9], session_.today());
    r.set_date(PRSALG["PA_G_DATUM"], prs_data[9].isEmpty() ? session_.today() : birth);
    const int appointment = list(EntryList::Tipe_aanstelling).list_index;
    r.set_text(PRSALG["PA_OD_BL"],
               appointment >= 0 ? list(EntryList::Tipe_aanstelling).rows.at(appointment).left(1)
                                : QString());
    r.set_text(PRSALG["PA_P_T"], kies_p_t[0]   ? QStringLiteral("P")
                                 : kies_p_t[1] ? QStringLiteral("T")
                                               : QString());
    r.set_text(PRSALG["PA_BRD_WNR"], broodwinner ? QStringLiteral("J") : QStringLiteral("N"));
    r.set_int16(PRSALG["PA_ICT_LV"], shell::number_value(prs_data[17]));
    r.set_int16(PRSALG["PA_REQV"], shell::number_value(prs_data[21]));
    const int category = shell::number_value(prs_data[25]);
    r.set_text(PRSALG["PA_FOR_NR"], QString::number(category));

    // Years in education are at least the years at this school and in the province.
    const Field& in_education = PRSALG["PO_JRE_OND"];
    const int years = std::max(
        {r.int16(in_education), r.int16(PRSALG["PO_JRE_SKL"]), r.int16(PRSALG["PO_JRE_PRV"])});
    r.set_int16(in_education, years);
    if (!write_held_record(session_, r, master_)) {
        return false;
    }

    if (session_.is_open(Code::PRSADD) && !read_held_record(session_, additional_)) {
        cannot_write_message(session_, Code::PRSADD);
        return false;
    }
    Record& add = session_.working(Code::PRSADD);
    add.set_text(PRSADD["PD_POS_NR"], post);
    for (const TextField& f : kAdditionalText) {
        add.set_text(f.stored, prs_data[static_cast<std::size_t>(f.field)].trimmed());
    }
    if (western_cape) {
        add.set_text(PRSADD["PD_CEMIS"], prs_data[15].trimmed());
    }
    add.set_int16(PRSADD["PD_KATEGORIE"], category);
    const auto level = std::find(kies_tipe_onderwys.begin(), kies_tipe_onderwys.end(), true);
    add.set_text(PRSADD["PD_ONDERWYS_VLAK"],
                 level == kies_tipe_onderwys.end()
                     ? QString()
                     : QString::number(level - kies_tipe_onderwys.begin()));
    if (session_.is_open(Code::PRSADD) &&
        session_.write_record(Code::PRSADD, session_.state(Code::PRSADD).current)) {
        additional_ = hold_working_record(session_, Code::PRSADD);
    }

    if (!is_admin_class(prs_data[18])) {
        ensure_appointment_and_experience();
    }
    session_.ensure_attendance_record(post);

    // This save keeps no old post number: a changed number does not reach the learner side.
    if (learner_files != nullptr &&
        !replace_learner_post_number(session_, *learner_files,
                                     learner_year_folders(session_, shell::ledger_years(session_)),
                                     QString(), post)) {
        closed = true;
    }
    return true;
}

void StaffEntry::ensure_appointment_and_experience() {
    Record& r = session_.working(Code::PRSALG);
    const auto dates_missing = [&r] {
        return !r.date(PRSALG["PA_DTM_AAN"]).has_value() ||
               !r.date(PRSALG["PA_DTM_SKL"]).has_value();
    };
    // Years at this school or in the province alone do not count here.
    const auto years_missing = [&r] {
        for (const Field* f : {&PRSALG["PO_JRE_OND"], &PRSALG["PO_JRE_DPT"], &PRSALG["PO_JRE_A_H"],
                               &PRSALG["PO_JRE_SAH"], &PRSALG["PO_JRE_HF"]}) {
            if (r.int16(*f) != 0) {
                return false;
            }
        }
        return true;
    };
    // Each form writes the master record itself; what it saved is read back, so that what this
    // form writes later stands on it.
    const int number = session_.state(Code::PRSALG).current;
    const auto reread = [this, number] { session_.read_record(Code::PRSALG, number); };
    // The loop ends only when both hold: leaving a form without saving asks again. Where no
    // form can be shown (the command line) the questions are all the save can give.
    while (dates_missing() || years_missing()) {
        bool shown = false;
        if (dates_missing()) {
            session_.dialogs().message(
                session_.tr("AANSTELLINGSDATUMS onvolledig. Korrigeer asb...",
                            "APPOINTMENT DATES incomplete. Please correct..."),
                ui::Icon::Critical);
            Appointments form(session_, educators());
            session_.dialogs().show_modal(form);
            shown = form.loaded;
            reread();
        }
        if (years_missing()) {
            session_.dialogs().message(
                session_.tr("JARE ONDERVING IN ONDERWYS onvolledig. Korrigeer asb...",
                            "YEARS EXPERIENCE IN TEACHING incomplete. Please correct..."),
                ui::Icon::Critical);
            Experience form(session_);
            session_.dialogs().show_modal(form);
            shown = form.loaded || shown;
            reread();
        }
        if (!shown) {
            break;
        }
    }
}

void StaffEntry::show_state_in_grid(bool inactive) {
    RegisterGrid& grid = owner_.prs_grid;
    if (grid.selected < 0 || grid.selected >= static_cast<int>(grid.rows.size())) {
        return;
    }
    GridRow& row = grid.rows[static_cast<std::size_t>(grid.selected)];
    row.cells[kColState] = inactive ? QStringLiteral("*") : QString();
    for (int c = kColPost; c <= kColNames; ++c) {
        row.red[static_cast<std::size_t>(c)] = inactive;
    }
}

void StaffEntry::data_del_click() {
    if (session_.browse_mode) {
        return;
    }
    if (!read_held_record(session_, master_)) {
        cannot_write_message(session_, Code::PRSALG);
        return;
    }
    Record& r = session_.working(Code::PRSALG);
    if (r.text(kState).trimmed() == u"*") {
        session_.delete_staff_record();
    } else if (session_.inactivate_staff_record()) {
        show_state_in_grid(true);
    }
    // The register fills its grid again when the form has closed.
    prs_data[0] = r.text(kState).trimmed();
    closed = true;
}

void StaffEntry::data_aktiveer_click() {
    if (!read_held_record(session_, master_)) {
        cannot_write_message(session_, Code::PRSALG);
        return;
    }
    Record& r = session_.working(Code::PRSALG);
    if (blank(r.text(kState))) {
        return;
    }
    if (session_.reactivate_staff_record()) {
        show_state_in_grid(false);
        session_.ensure_attendance_record(r.text(kPost));
    }
    // The register fills its grid again when the form has closed.
    prs_data[0] = r.text(kState).trimmed();
    closed = true;
}

void StaffEntry::alg_opsies_click(int index) {
    if (owner_.selected_post.trimmed().isEmpty()) {
        session_.dialogs().message(
            session_.tr("SELEKTEER EERS 'N REKORD ...", "SELECT A RECORD FIRST ..."),
            ui::Icon::Critical);
        return;
    }
    if (!save_record() || index != 1) {
        return;
    }
    heading = shell::staff_heading(session_.working(Code::PRSALG));
    DetailChooser chooser(session_, educators(), heading);
    session_.dialogs().show_modal(chooser);
    if (chooser.chosen > 0) {
        open_detail_form(session_, static_cast<StaffDetail>(chooser.chosen), educators());
    }
}

void StaffEntry::kopieer_na_bl_click() {
    if (!owner_.copy_to_governing_body) {
        return;
    }
    session_.open_file(Code::BHRLGM);
    if (compulsory_fields_complete() && save_record()) {
        owner_.copy_to_governing_body(session_);
        closed = true;
    }
}

void StaffEntry::opmerkings_click(bool right_button) {
    staff::opmerkings_click(session_, prs_data[1], right_button);
}

}  // namespace korvel::staff
