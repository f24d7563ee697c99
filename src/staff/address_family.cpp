#include "staff/address_family.h"

#include "shell/helpers.h"
#include "shell/staff_person.h"
#include "staff/staff_register.h"

namespace korvel::staff {

using store::Code;
using store::FieldType;
using store::PRSALG;

namespace {

// The dot form "YYYY.MM.DD" of a child's birth date.
constexpr int kDateWidth = 10;

// Screen 0 holds the person's own addresses and numbers, screen 1 the spouse, the medical aid
// and the children.
constexpr AddressBox kAddressBoxes[] = {
    {1, 0, &PRSALG["PA_P_ADR1"], 0, "POSADRES 1", "POSTAL ADDRESS 1", 0, 0},
    {2, 0, &PRSALG["PA_P_ADR2"], 0, "POSADRES 2", "POSTAL ADDRESS 2", 0, 0},
    {3, 0, &PRSALG["PA_P_ADR3"], 0, "POSADRES 3", "POSTAL ADDRESS 3", 0, 0},
    {4, 0, &PRSALG["PA_P_KODE"], 0, "POSKODE", "POSTAL CODE", 0, 0},
    {5, 0, &PRSALG["PA_H_ADR1"], 0, "HUISADRES 1", "HOME ADDRESS 1", 0, 0},
    {6, 0, &PRSALG["PA_H_ADR2"], 0, "HUISADRES 2", "HOME ADDRESS 2", 0, 0},
    {7, 0, &PRSALG["PA_H_ADR3"], 0, "HUISADRES 3", "HOME ADDRESS 3", 0, 0},
    {8, 0, &PRSALG["PA_H_KODE"], 0, "POSKODE", "POSTAL CODE", 0, 0},
    {9, 16, &PRSALG["PA_T_HUIS"], 0, "HUISTELEFOON (KODE/NR)", "HOME PHONE (CODE/NO)", 0, 1},
    {10, 18, &PRSALG["PA_T_WERK"], 0, "WERKTELEFOON (KODE/NR)", "WORK PHONE (CODE/NO)", 0, 1},
    {11, 17, &PRSALG["PA_T_SEL"], 0, "SELNOMMER (KODE/NR)", "CELL NUMBER (CODE/NO)", 0, 1},
    {12, 19, &PRSALG["PA_T_ANDER"], 0, "ANDER NOMMER (KODE/NR)", "OTHER NUMBER (CODE/NO)", 0, 1},
    {14, 0, &PRSALG["PA_KERK"], 0, "KERKVERBAND", "RELIGION", 0, 1},
    {46, 0, &PRSALG["PA_EPOS"], 0, "E-POSADRES", "EMAIL ADDRESS", 0, 1},
    {15, 0, &PRSALG["PA_MAN_VR"], 0, "EGGENOOT", "SPOUSE", 1, 0},
    {20, 0, &PRSALG["PA_MV_ID"], 0, "ID-NOMMER", "ID NUMBER", 1, 0},
    {22, 21, &PRSALG["PA_MV_HTL"], 0, "HUISTELEFOON (KODE/NR)", "HOME PHONE (CODE/NO)", 1, 0},
    {24, 23, &PRSALG["PA_MV_WTL"], 0, "WERKTELEFOON (KODE/NR)", "WORK PHONE (CODE/NO)", 1, 0},
    {26, 25, &PRSALG["PA_MV_SEL"], 0, "SELNOMMER (KODE/NR)", "CELL NUMBER (CODE/NO)", 1, 0},
    {28, 27, &PRSALG["PA_MV_ATL"], 0, "ANDER NOMMER (KODE/NR)", "OTHER NUMBER (CODE/NO)", 1, 0},
    {47, 0, &PRSALG["PA_MV_EPS"], 0, "E-POSADRES", "EMAIL ADDRESS", 1, 0},
    {29, 0, &PRSALG["PM_FONDS"], 0, "MED FONDS NAAM", "MED AID NAME", 1, 0},
    {30, 0, &PRSALG["PM_F_NR"], 0, "MED FONDS NOMMER", "MED AID NUMBER", 1, 0},
    {31, 0, &PRSALG["PM_F_LID"], 0, "HOOFLID", "MAIN MEMBER", 1, 0},
    {32, 0, &PRSALG["PM_F_ID"], 0, "ID-NOMMER", "ID NUMBER", 1, 0},
    {33, 0, &PRSALG["PM_F_KNM"], 0, "KONTAKPERSOON", "CONTACT PERSON", 1, 0},
    {35, 34, &PRSALG["PM_F_KNR"], 0, "KONTAKNOMMER", "CONTACT NUMBER", 1, 0},
    // Element 0 of the children's arrays is not used.
    {36, 0, &PRSALG["PL_KIND"], 1, "KINDERS NAME +", "CHILDREN NAMES +", 1, 1},
    {37, 0, &PRSALG["PL_GDTM"], 1, "GEB DATUMS(JJMMDD)", "BIRTH DATES(YYMMDD)", 1, 1},
    {38, 0, &PRSALG["PL_KIND"], 2, "KINDERS NAME +", "CHILDREN NAMES +", 1, 1},
    {39, 0, &PRSALG["PL_GDTM"], 2, "GEB DATUMS(JJMMDD)", "BIRTH DATES(YYMMDD)", 1, 1},
    {40, 0, &PRSALG["PL_KIND"], 3, "KINDERS NAME +", "CHILDREN NAMES +", 1, 1},
    {41, 0, &PRSALG["PL_GDTM"], 3, "GEB DATUMS(JJMMDD)", "BIRTH DATES(YYMMDD)", 1, 1},
    {42, 0, &PRSALG["PL_KIND"], 4, "KINDERS NAME +", "CHILDREN NAMES +", 1, 1},
    {43, 0, &PRSALG["PL_GDTM"], 4, "GEB DATUMS(JJMMDD)", "BIRTH DATES(YYMMDD)", 1, 1},
    {44, 0, &PRSALG["PL_KIND"], 5, "KINDERS NAME +", "CHILDREN NAMES +", 1, 1},
    {45, 0, &PRSALG["PL_GDTM"], 5, "GEB DATUMS(JJMMDD)", "BIRTH DATES(YYMMDD)", 1, 1},
};

// A child's birth date box in the dot form, or blank when it holds no real date. "." and "/"
// both separate the parts; eight bare digits read as YYYYMMDD. Other runs of bare digits
// ("160301", as the label's JJMMDD invites) are refused, as the date routine would cut them
// into a wrong date ("1603.01.01").
QString canonical_birth_date(const QString& box) {
    const QString text = QString(box).replace(u'.', u'/').trimmed();
    const bool bare = !text.contains(u'/') && !text.contains(u'-');
    if (text.isEmpty() || (bare && text.size() != 8)) {
        return {};
    }
    return shell::date_to_text(text);
}

bool is_email_box(int index) {
    return index == 46 || index == 47;
}

}  // namespace

PhoneParts split_phone(const QString& stored) {
    const qsizetype close = stored.indexOf(u')');
    if (close < 0) {
        return {QString(), stored};
    }
    return {stored.left(close).remove(u'('), stored.mid(close + 1)};
}

QString join_phone(const QString& code, const QString& number) {
    const QString c = code.trimmed();
    if (c.isEmpty()) {
        return number;
    }
    return u'(' + c + u')' + number.trimmed();
}

int AddressBox::width() const {
    return field->type == FieldType::Date ? kDateWidth : field->width;
}

std::span<const AddressBox> address_boxes() {
    return kAddressBoxes;
}

AddressFamily::AddressFamily(shell::Session& session) : session_(session) {}

void AddressFamily::form_load() {
    master_ = hold_working_record(session_, Code::PRSALG);
    const store::Record& r = session_.working(Code::PRSALG);
    caption = shell::staff_heading(r);
    closed = false;
    data_raam = {true, false};
    prs_data.fill(QString());
    data_teks.fill(QString());
    for (const AddressBox& b : kAddressBoxes) {
        data_teks[b.box] = session_.tr(b.afrikaans, b.english);
        if (b.field->type == FieldType::Date) {
            // The empty date shows as a blank box.
            prs_data[b.box] = shell::date_to_text(r.date(*b.field, b.slot).value_or(QDate()));
            continue;
        }
        const QString value = r.text(*b.field, b.slot).trimmed();
        if (b.code_box == 0) {
            prs_data[b.box] = value;
            continue;
        }
        const PhoneParts parts = split_phone(value);
        prs_data[b.code_box] = parts.code;
        prs_data[b.box] = parts.number;
    }
}

TypedKey AddressFamily::prs_data_key_press(int index, int key_ascii) {
    // E-mail addresses keep their small letters.
    return typed_key(key_ascii, !is_email_box(index));
}

void AddressFamily::screen_next_click() {
    data_raam = {false, true};
}

void AddressFamily::screen_prev_click() {
    data_raam = {true, false};
}

void AddressFamily::data_ok_click() {
    if (!session_.browse_mode) {
        save_address();
        return;
    }
    closed = true;
}

void AddressFamily::save_address() {
    std::optional<store::Record> found = read_held_for_edit(session_, master_);
    if (!found) {
        return;
    }
    store::Record& edited = *found;
    for (const AddressBox& b : kAddressBoxes) {
        if (b.field->type == FieldType::Date) {
            // A date that cannot be read, like a blank box, stores the empty date.
            QString& box = prs_data[b.box];
            box = canonical_birth_date(box);
            edited.set_date(*b.field, shell::text_to_date(box, QDate()), b.slot);
            continue;
        }
        // Saving joins the code and the number again; set_text cuts to the field's width.
        const QString value =
            b.code_box == 0 ? prs_data[b.box] : join_phone(prs_data[b.code_box], prs_data[b.box]);
        edited.set_text(*b.field, value, b.slot);
    }
    closed = write_held_record(session_, edited, master_);
}

}  // namespace korvel::staff
