#include "staff/register_upkeep.h"

#include <QByteArray>
#include <cstring>

#include "platform/codepage.h"
#include "platform/winpath.h"
#include "shell/helpers.h"

namespace korvel::staff {

using store::Code;
using store::Field;
using store::PRSADD;
using store::PRSALG;
using store::PRSLURITS;
using store::PRSNME;
using store::PRSVAK;
using store::Record;

namespace {

constexpr const Field& kPost = PRSALG["PA_POS_NR"];
constexpr const Field& kState = PRSALG["PA_AKTIEF"];
constexpr const Field& kSurname = PRSALG["PA_VAN"];
constexpr const Field& kNames = PRSALG["PA_NAME"];
constexpr const Field& kGender = PRSALG["PA_GESLAG"];
constexpr const Field& kId = PRSALG["PA_ID_NR"];
constexpr const Field& kClass = PRSALG["PK_KLAS_NR"];
constexpr const Field& kWhere = PRSALG["PA_WAAR"];
constexpr const Field& kPostName = PRSALG["PA_BSK"];
constexpr const Field& kAppointType = PRSALG["PA_TPA"];
constexpr const Field& kAppointDate = PRSALG["PA_DTM"];
constexpr const Field& kSchool = PRSALG["PO_SKL"];
constexpr const Field& kFrom = PRSALG["PO_VAN"];
constexpr const Field& kTo = PRSALG["PO_TOT"];
constexpr const Field& kYearsPrincipal = PRSALG["PO_JRE_HF"];
constexpr const Field& kYearsDeputy = PRSALG["PO_JRE_A_H"];
constexpr const Field& kYearsSeniorDeputy = PRSALG["PO_JRE_SAH"];
constexpr const Field& kYearsHead = PRSALG["PO_JRE_DPT"];

constexpr const Field& kAddPost = PRSADD["PD_POS_NR"];
constexpr const Field& kAddLevel = PRSADD["PD_POSVLAK"];
constexpr const Field& kAddName = PRSADD["PD_NOEMNAAM"];
constexpr const Field& kCemis = PRSADD["PD_CEMIS"];
constexpr const Field& kNamePost = PRSNME["PN_POS_NR"];
constexpr const Field& kSubjectPost = PRSVAK["PV_POS_NR"];
constexpr const Field& kLuritsId = PRSLURITS["LU_ID_NR"];
constexpr const Field& kLuritsNumber = PRSLURITS["LU_NR"];

constexpr const Field& kProvince = store::SKL["SD_PROV"];

constexpr int kSubjectRebuildThreshold = 32000;
constexpr int kLastAppointmentRow = 10;
constexpr int kLastExperienceRow = 5;

// A text field read from raw record bytes as Record::text reads it.
QString field_text(const char* record, const Field& f) {
    const char* p = record + f.offset;
    if (p[0] == '\0') {
        return {};
    }
    int n = f.width;
    while (n > 0 && (p[n - 1] == ' ' || p[n - 1] == '\0')) {
        --n;
    }
    return cp1252::decode(p, n);
}

bool is_zero_date(const Record& r, const Field& f, int row) {
    const QByteArray raw = r.raw(f, row);
    return raw.count('\0') == raw.size();
}

}  // namespace

// ---- HiddenList ----------------------------------------------------------------------------

bool HiddenList::add_once(const QString& text, int item_data) {
    if (contains(text)) {
        return false;
    }
    add(text, item_data);
    return true;
}

std::optional<int> HiddenList::item_data(const QString& text) const {
    const auto it = items_.find(text);
    if (it == items_.end()) {
        return std::nullopt;
    }
    return it->second;
}

std::vector<HiddenList::Item> HiddenList::items() const {
    std::vector<Item> out;
    out.reserve(items_.size());
    for (const auto& [text, data] : items_) {
        out.push_back({text, data});
    }
    return out;
}

// ---- the small rules -------------------------------------------------------------------------

QString cemis_from_record(const Record& staff) {
    const QString id = staff.text(kId).trimmed();
    const QString names = staff.text(kNames).trimmed();
    const QString surname = staff.text(kSurname).trimmed();
    const bool man = staff.text(kGender).trimmed() == u"M";
    return id.left(6) + names.left(1) + surname.left(1) + (man ? u'1' : u'2') +
           QStringLiteral("000 ");
}

QString complete_cemis(const QString& value, const QString& id, const Record& staff) {
    if (id.trimmed().isEmpty()) {
        return value;
    }
    if (value.trimmed().isEmpty() || value.at(0).unicode() == 0) {
        return cemis_from_record(staff);
    }
    const QString t = value.trimmed();
    if (t.size() < 13) {
        return t.leftJustified(12, u'0');
    }
    return value;
}

int post_level(const Record& staff) {
    if (staff.int16(kYearsPrincipal) > 0) {
        return 4;
    }
    if (staff.int16(kYearsDeputy) > 0 || staff.int16(kYearsSeniorDeputy) > 0) {
        return 3;
    }
    if (staff.int16(kYearsHead) > 0) {
        return 2;
    }
    return 1;
}

// ---- RegisterUpkeep --------------------------------------------------------------------------

void RegisterUpkeep::prepare_lists() {
    store::Store& s = store_;
    if (!s.fs().file_exists(winpath::join(s.folders.staff, QStringLiteral("prs_alg_random.txt")))) {
        return;
    }
    if (!s.is_open(Code::PRSALG) && !s.open_file(Code::PRSALG)) {
        return;
    }
    if (s.count(Code::PRSALG) < 1) {
        return;
    }

    // 1. The address file's post numbers, each once.
    prs_add_lys.clear();
    if (s.is_open(Code::PRSADD) || s.open_file(Code::PRSADD)) {
        if (store::RecordFile* f = s.file(Code::PRSADD)) {
            f->scan(1, s.count(Code::PRSADD), [&](int number, const char* bytes) {
                const QString key = field_text(bytes, kAddPost).trimmed();
                if (!key.isEmpty()) {
                    prs_add_lys.add_once(key, number);
                }
                return true;
            });
        }
    }

    // 2 and 3. The master file: its post numbers, the LURITS check keys, and an address record
    // for every post number that has none.
    prs_alg_lys.clear();
    lurits_checklys.clear();
    Record& add = s.working(Code::PRSADD);
    s.scan_records(Code::PRSALG, [&](int, Record& r) {
        const QString post = r.text(kPost).trimmed();
        if (post.isEmpty()) {
            return;
        }
        if (prs_alg_lys.add_once(post)) {
            const QString key =
                shell::fold_accents(r.text(kSurname).trimmed() + u':' + r.text(kNames).trimmed());
            lurits_checklys.emplace(key, r.text(kId));
        }
        if (!prs_add_lys.contains(post) && s.is_open(Code::PRSADD)) {
            add.clear();
            add.set_text(kAddPost, post);
            add.set_int16(kAddLevel, post_level(r));
            add.set_text(kAddName, store::first_word(r.text(kNames).trimmed()));
            if (s.append_record(Code::PRSADD)) {
                prs_add_lys.add(post, s.state(Code::PRSADD).current);
            }
        }
    });

    // 4. The name file's post numbers, each once.
    prs_nme_lys.clear();
    if (s.is_open(Code::PRSNME) || s.open_file(Code::PRSNME)) {
        if (store::RecordFile* f = s.file(Code::PRSNME)) {
            f->scan(1, s.count(Code::PRSNME), [&](int number, const char* bytes) {
                const QString key = field_text(bytes, kNamePost).trimmed();
                if (!key.isEmpty()) {
                    prs_nme_lys.add_once(key, number);
                }
                return true;
            });
        }
    }

    // 5. The index of the master file.
    s.build_staff_index();
}

void RegisterUpkeep::begin_fill() {
    prs_lys.clear();
    spare_number = kFirstSpareNumber;
    subjects_loaded_ = false;
    subject_keys_.clear();
    lurits_loaded_ = false;
    lurits_.clear();
    western_cape_ = school_province() == u"WC";
}

void RegisterUpkeep::end_fill() {
    subjects_loaded_ = false;
    subject_keys_.clear();
    lurits_loaded_ = false;
    lurits_.clear();
}

QString RegisterUpkeep::school_province() const {
    Record school(store::SKL);
    if (store::RecordFile* f = store_.file(Code::SKL)) {
        f->read(1, school.data());
    } else {
        // Read without opening, so that a missing school file is not created here.
        const std::optional<QByteArray> bytes = store_.fs().read_all(
            winpath::join(store_.folders.school, QStringLiteral("skl_dta_random.txt")));
        if (!bytes) {
            return {};
        }
        QByteArray whole = bytes->left(store::SKL.record_length);
        whole.append(QByteArray(store::SKL.record_length - whole.size(), '\0'));
        school.assign(whole.constData());
    }
    return school.text(kProvince).trimmed();
}

void RegisterUpkeep::assign_spare_number() {
    Record& r = store_.working(Code::PRSALG);
    if (!r.text(kPost).trimmed().isEmpty()) {
        return;
    }
    r.set_text(kPost, QString::number(spare_number));
    store_.write_record(Code::PRSALG, store_.state(Code::PRSALG).current);
    ++spare_number;
}

bool RegisterUpkeep::repair_post_number(QString& post) {
    Record& r = store_.working(Code::PRSALG);
    const int number = store_.state(Code::PRSALG).current;

    // A leading zero goes, one character only.
    if (post.startsWith(u'0')) {
        post = post.mid(1);
    }
    // An employee's number begins with "A"; the field keeps five characters of it.
    if (!is_educator(r) && !post.startsWith(u'A')) {
        post = (u'A' + post).left(kPost.width);
    }
    // The second holder of a number takes it with a "*"; a third is marked deleted, keeping
    // the number as the first two steps left it.
    const QString repaired = post;
    while (prs_lys.contains(post)) {
        if (post.endsWith(u'*')) {
            r.set_text(kPost, repaired);
            r.set_text(kState, QStringLiteral("D"));
            store_.write_record(Code::PRSALG, number);
            return false;
        }
        post += u'*';
    }
    r.set_text(kPost, post);
    store_.write_record(Code::PRSALG, number);
    prs_lys.add(post);
    // The subject record goes under the number as the field holds it: a starred five-character
    // number is stored without its star.
    ensure_subject_record(r.text(kPost).trimmed());
    return true;
}

void RegisterUpkeep::refresh_shown_record(const QString& post) {
    Record& r = store_.working(Code::PRSALG);
    const int number = store_.state(Code::PRSALG).current;

    // 1. A date without its appointment or school is stale. Row 0 stays as it is.
    bool changed = false;
    for (int row = 1; row <= kLastAppointmentRow; ++row) {
        if (r.text(kWhere, row).trimmed().isEmpty() && r.text(kPostName, row).trimmed().isEmpty() &&
            r.text(kAppointType, row).trimmed().isEmpty() && !is_zero_date(r, kAppointDate, row)) {
            r.set_date_serial(kAppointDate, 0.0, row);
            changed = true;
        }
    }
    for (int row = 1; row <= kLastExperienceRow; ++row) {
        if (r.text(kSchool, row).trimmed().isEmpty() &&
            (!is_zero_date(r, kFrom, row) || !is_zero_date(r, kTo, row))) {
            r.set_date_serial(kFrom, 0.0, row);
            r.set_date_serial(kTo, 0.0, row);
            changed = true;
        }
    }
    if (changed) {
        store_.write_record(Code::PRSALG, number);
    }

    // 2. The CEMIS number of a Western Cape school.
    if (!western_cape_) {
        return;
    }
    if (!store_.is_open(Code::PRSADD) && !store_.open_file(Code::PRSADD)) {
        return;
    }
    Record& add = store_.working(Code::PRSADD);
    int add_number = prs_add_lys.item_data(post).value_or(0);
    if (add_number == 0) {
        add.clear();
        add.set_text(kAddPost, post);
        if (!store_.append_record(Code::PRSADD)) {
            return;
        }
        add_number = store_.state(Code::PRSADD).current;
        prs_add_lys.add(post, add_number);
    } else {
        store_.read_record(Code::PRSADD, add_number);
    }
    const QString id = r.text(kId).trimmed();
    const QString before = add.text(kCemis);
    QString cemis = before;
    if (!id.isEmpty() && cemis.trimmed().isEmpty()) {
        cemis = u'E' + cemis_from_record(r);
    }
    cemis = complete_cemis(cemis, id, r);
    if (cemis != before) {
        add.set_text(kCemis, cemis);
        store_.write_record(Code::PRSADD, add_number);
    }
}

void RegisterUpkeep::ensure_subject_record(const QString& post) {
    if (scan_per_row) {
        store_.ensure_subject_record(post);
        return;
    }
    if (post.isEmpty()) {
        return;
    }
    if (!store_.is_open(Code::PRSVAK) && !store_.open_file(Code::PRSVAK)) {
        return;
    }
    if (store_.count(Code::PRSVAK) > kSubjectRebuildThreshold) {
        store_.rebuild_subject_file();
        subjects_loaded_ = false;
    }
    if (!subjects_loaded_) {
        load_subject_keys();
    }
    if (subject_keys_.contains(post)) {
        return;
    }
    Record& v = store_.working(Code::PRSVAK);
    v.clear();
    v.set_text(kSubjectPost, post);
    if (store_.append_record(Code::PRSVAK)) {
        // As a later scan would read it back.
        subject_keys_.insert(v.text(kSubjectPost).trimmed());
    }
}

void RegisterUpkeep::load_subject_keys() {
    subject_keys_.clear();
    subjects_loaded_ = true;
    store::RecordFile* f = store_.file(Code::PRSVAK);
    if (f == nullptr) {
        return;
    }
    f->scan(1, store_.count(Code::PRSVAK), [&](int, const char* bytes) {
        subject_keys_.insert(field_text(bytes, kSubjectPost).trimmed());
        return true;
    });
}

void RegisterUpkeep::load_lurits() {
    lurits_.clear();
    lurits_loaded_ = true;
    if (!store_.open_file(Code::PRSLURITS)) {
        return;
    }
    if (store::RecordFile* f = store_.file(Code::PRSLURITS)) {
        f->scan(1, store_.count(Code::PRSLURITS), [&](int, const char* bytes) {
            const QString key = cp1252::decode(bytes + kLuritsId.offset, kLuritsId.width);
            if (!lurits_.contains(key)) {
                lurits_.insert(key, field_text(bytes, kLuritsNumber));
            }
            return true;
        });
    }
    store_.close_file(Code::PRSLURITS);
}

QString RegisterUpkeep::lurits_number(const QString& id) {
    const QString key = id.trimmed().leftJustified(kLuritsId.width, u' ');
    if (scan_per_row) {
        QString found;
        if (store_.open_file(Code::PRSLURITS)) {
            store::RecordFile* f = store_.file(Code::PRSLURITS);
            f->scan(1, store_.count(Code::PRSLURITS), [&](int, const char* bytes) {
                if (cp1252::decode(bytes + kLuritsId.offset, kLuritsId.width) != key) {
                    return true;
                }
                found = field_text(bytes, kLuritsNumber);
                return false;
            });
        }
        store_.close_file(Code::PRSLURITS);
        return found;
    }
    if (!lurits_loaded_) {
        load_lurits();
    }
    return lurits_.value(key);
}

void RegisterUpkeep::close_register() {
    store_.compact_staff_files();
}

}  // namespace korvel::staff
