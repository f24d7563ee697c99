// The staff master file: its index by post number, the life of a record (add, replace,
// inactivate, re-activate, delete) and assignment by running field number.

#include <QLocale>
#include <cmath>
#include <vector>

#include "platform/codepage.h"
#include "store/store.h"

namespace korvel::store {

namespace {

constexpr const Field& kPost = PRSALG["PA_POS_NR"];
constexpr const Field& kState = PRSALG["PA_AKTIEF"];
constexpr const Field& kSurname = PRSALG["PA_VAN"];

// Running numbers over a layout: a single field is one number; an array has a number for each
// slot from 1 (slot 0 has none).
std::vector<FieldSlot> running_numbers(const Layout& layout) {
    std::vector<FieldSlot> out;
    for (const Field& f : layout.fields) {
        if (f.count == 1) {
            out.push_back({&f, 0});
        } else {
            for (int i = 1; i < f.count; ++i) {
                out.push_back({&f, i});
            }
        }
    }
    return out;
}

std::optional<FieldSlot> by_number(const std::vector<FieldSlot>& table, int number, int last) {
    if (number < 1 || number > last || number > static_cast<int>(table.size())) {
        return std::nullopt;
    }
    return table[static_cast<std::size_t>(number - 1)];
}

// A whole number from text as a conversion to a 16-bit integer reads it: a point for the
// decimals, commas of grouping ignored, halves to even.
std::optional<double> number_of(const QString& value) {
    QString t = value.trimmed();
    t.remove(u',');
    bool ok = false;
    const double d = QLocale::c().toDouble(t, &ok);
    if (!ok || !std::isfinite(d)) {
        return std::nullopt;
    }
    return d;
}

std::optional<QDate> date_of(const QString& value) {
    const QString t = value.trimmed();
    for (const char* format : {"yyyy.MM.dd", "yyyy/MM/dd", "yyyy-MM-dd"}) {
        const QDate d = QDate::fromString(t, QString::fromLatin1(format));
        if (d.isValid()) {
            return d;
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<FieldSlot> staff_field_by_number(int number) {
    static const std::vector<FieldSlot> table = running_numbers(PRSALG);
    return by_number(table, number, kStaffFieldNumbers);
}

std::optional<FieldSlot> member_field_by_number(int number) {
    static const std::vector<FieldSlot> table = running_numbers(BHRLGM);
    return by_number(table, number, kMemberFieldNumbers);
}

FieldAssign Store::assign_by_number(Code code, int number, const QString& value) {
    const std::optional<FieldSlot> slot =
        code == Code::PRSALG ? staff_field_by_number(number) : member_field_by_number(number);
    if (!slot) {
        return FieldAssign::NoSuchField;
    }
    Record& r = working(code);
    const Field& f = *slot->field;
    const bool blank = value.trimmed().isEmpty();
    switch (f.type) {
        case FieldType::Text:
            r.set_text(f, value, slot->index);
            return FieldAssign::Done;
        case FieldType::Int16:
        case FieldType::Byte:
        case FieldType::Raw: {
            if (blank) {
                if (f.type == FieldType::Int16) {
                    r.set_int16(f, 0, slot->index);
                } else if (f.type == FieldType::Byte) {
                    r.set_byte(f, 0);
                } else {
                    r.set_raw(f, QByteArray(), slot->index);
                }
                return FieldAssign::Done;
            }
            const std::optional<double> d = number_of(value);
            if (!d) {
                return FieldAssign::NotANumber;
            }
            const double whole = std::nearbyint(*d);
            if (f.type == FieldType::Int16) {
                if (whole < -32768.0 || whole > 32767.0) {
                    return FieldAssign::Overflow;
                }
                r.set_int16(f, static_cast<long long>(whole), slot->index);
            } else if (f.type == FieldType::Byte) {
                if (whole < 0.0 || whole > 255.0) {
                    return FieldAssign::Overflow;
                }
                r.set_byte(f, static_cast<std::uint8_t>(whole));
            } else {
                if (whole < -2147483648.0 || whole > 2147483647.0 || f.width != 4) {
                    return FieldAssign::Overflow;
                }
                const auto u = static_cast<std::uint32_t>(static_cast<std::int32_t>(whole));
                QByteArray bytes(4, '\0');
                for (int i = 0; i < 4; ++i) {
                    bytes[i] = static_cast<char>((u >> (8 * i)) & 0xFF);
                }
                r.set_raw(f, bytes, slot->index);
            }
            return FieldAssign::Done;
        }
        case FieldType::Date: {
            if (blank) {
                r.set_date_serial(f, 0.0, slot->index);
                return FieldAssign::Done;
            }
            const std::optional<QDate> d = date_of(value);
            if (!d) {
                return FieldAssign::NotANumber;
            }
            r.set_date(f, *d, slot->index);
            return FieldAssign::Done;
        }
    }
    return FieldAssign::NoSuchField;
}

FieldAssign Store::set_staff_field(int number, const QString& value) {
    return assign_by_number(Code::PRSALG, number, value);
}

void Store::clear_staff_record() {
    for (int n = 1; n <= kStaffFieldNumbers; ++n) {
        set_staff_field(n, QString());
    }
}

FieldAssign Store::set_member_field(int number, const QString& value) {
    return assign_by_number(Code::BHRLGM, number, value);
}

void Store::clear_member_record() {
    for (int n = 1; n <= kMemberFieldNumbers; ++n) {
        set_member_field(n, QString());
    }
}

namespace {

// True when a text field, cleaned and trimmed, is blank: it starts with a NUL, or holds only
// blanks and NULs after leading blanks.
bool blank_field(const char* p, int width) {
    if (p[0] == '\0') {
        return true;
    }
    for (int i = 0; i < width; ++i) {
        if (p[i] != ' ' && p[i] != '\0') {
            return false;
        }
    }
    return true;
}

}  // namespace

void Store::build_staff_index() {
    if (!is_open(Code::PRSALG)) {
        open_file(Code::PRSALG);
    }
    staff_index.clear();
    FileState& s = state(Code::PRSALG);
    staff_index.reserve(s.count);
    RecordFile* f = file(Code::PRSALG);
    if (f == nullptr || s.count < 1) {
        return;
    }
    // The three fields are read from the block as it stands; only a record that must be
    // written back is taken whole into the working record.
    Record& r = s.working;
    const char* last = nullptr;
    f->scan(1, s.count, [&](int number, const char* bytes) {
        last = bytes;
        if (blank_field(bytes + kSurname.offset, kSurname.width) ||
            !blank_field(bytes + kState.offset, kState.width) ||
            blank_field(bytes + kPost.offset, kPost.width)) {
            return true;
        }
        const QString k = index_key(cp1252::decode(bytes + kPost.offset, kPost.width));
        int& slot = staff_index[k];  // one look-up; record numbers start at 1
        if (slot != 0) {
            r.assign(bytes);
            // A later record with a post number already taken loses it, on disk: the first
            // record with a key keeps it. The record goes back as the scan left it: its post
            // number, surname and state trimmed.
            r.trim_text(kSurname);
            r.trim_text(kState);
            r.set_text(kPost, QString());
            f->write(number, r.data());
            return true;
        }
        slot = number;
        return true;
    });
    // As after every scan, the working record and the current number stand at the last record,
    // its key, surname and state trimmed.
    if (last != nullptr) {
        read_record(Code::PRSALG, s.count);
        r.trim_text(kPost);
        r.trim_text(kSurname);
        r.trim_text(kState);
    }
}

bool Store::find_staff(const QString& post, bool load) {
    if (!is_open(Code::PRSALG)) {
        open_file(Code::PRSALG);
    }
    const auto it = staff_index.constFind(index_key(post));
    if (it == staff_index.constEnd()) {
        return false;
    }
    if (load) {
        read_record(Code::PRSALG, it.value());
    }
    return true;
}

bool Store::add_staff_record() {
    Record& r = working(Code::PRSALG);
    const QString key = r.trim_text(kPost);
    if (key.isEmpty()) {
        dialogs().message(tr("POSNOMMER MOET INGEVOER WORD ... VERSOEK GEWEIER!",
                             "POST NUMBER MUST BE ENTERED ... REQUEST DENIED!"),
                          ui::Icon::Critical);
        return false;
    }
    if (staff_index.contains(index_key(key))) {
        dialogs().message(
            tr("POSNOMMER ", "POST NUMBER ") + key +
                tr(" REEDS OP LêER ... VERSOEK GEWEIER!", " ALREADY EXIST ... REQUEST DENIED!"),
            ui::Icon::Critical);
        return false;
    }
    if (!is_open(Code::PRSALG) && !open_file(Code::PRSALG)) {
        return false;
    }
    if (!append_record(Code::PRSALG)) {
        return false;
    }
    // Kept in step so that a second add of the same key in this run is refused too.
    if (r.text(kState).trimmed().isEmpty() && !r.text(kSurname).trimmed().isEmpty()) {
        staff_index.insert(index_key(key), state(Code::PRSALG).current);
    }
    return true;
}

bool Store::replace_staff_record() {
    return write_record(Code::PRSALG, state(Code::PRSALG).current);
}

bool ask_inactivate(Store& store) {
    return store.dialogs().ask(store.tr("WIL U DIE REKORD ONAKTIEF MAAK ?",
                                        "DO YOU WISH TO INACTIVATE THE RECORD ?"),
                               ui::Buttons::YesNo, ui::Icon::Question,
                               ui::Answer::No) == ui::Answer::Yes;
}

bool ask_reactivate(Store& store) {
    return store.dialogs().ask(store.tr("WIL U DIE REKORD HERAKTIVEER ?",
                                        "DO YOU WISH TO RE-ACTIVATE THE RECORD ?"),
                               ui::Buttons::YesNo, ui::Icon::Question,
                               ui::Answer::No) == ui::Answer::Yes;
}

bool ask_delete(Store& store) {
    return store.dialogs().ask(store.tr("WIL U DIE REKORD PERMANENT VERWYDER ?",
                                        "DO YOU WISH TO PERMANENTLY REMOVE THE RECORD ?"),
                               ui::Buttons::YesNo, ui::Icon::Question,
                               ui::Answer::No) == ui::Answer::Yes;
}

bool Store::inactivate_staff_record() {
    if (!ask_inactivate(*this)) {
        return false;
    }
    Record& r = working(Code::PRSALG);
    r.set_text(kState, QStringLiteral("*"));
    staff_index.remove(index_key(r.text(kPost)));
    return replace_staff_record();
}

bool Store::reactivate_staff_record() {
    if (!ask_reactivate(*this)) {
        return false;
    }
    working(Code::PRSALG).set_text(kState, QString());
    return replace_staff_record();
}

bool Store::delete_staff_record() {
    Record& r = working(Code::PRSALG);
    if (r.text(kState).trimmed() != u"*") {
        return false;  // an active record is first made inactive
    }
    if (!ask_delete(*this)) {
        return false;
    }
    r.set_text(kState, QStringLiteral("D"));
    return replace_staff_record();
}

}  // namespace korvel::store
