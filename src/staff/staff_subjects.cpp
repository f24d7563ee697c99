// sk4_vakke_van_admin: the staff subjects rebuilt from the learner records.

#include "staff/staff_subjects.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/codepage.h"
#include "platform/winpath.h"
#include "store/record_file.h"

namespace korvel::staff {

namespace {

using store::Code;
using store::Field;
using store::PRSVAK;

constexpr const Field& kPost = PRSVAK["PV_POS_NR"];
constexpr const Field& kTaught = PRSVAK["PV_VAK2"];
constexpr const Field& kTaughtGrade = PRSVAK["PV_GRD2"];
constexpr int kLastSlot = 10;  // the list runs from slot 1 to 10
constexpr int kRebuildThreshold = 32000;
constexpr int kLength = PRSVAK.record_length;

std::string_view trimmed(const char* p, int width) {
    std::string_view v(p, static_cast<std::size_t>(width));
    const auto blank = [](char c) { return c == ' ' || c == '\0'; };
    if (!v.empty() && v.front() == '\0') {
        return {};  // never written
    }
    while (!v.empty() && blank(v.front())) {
        v.remove_prefix(1);
    }
    while (!v.empty() && blank(v.back())) {
        v.remove_suffix(1);
    }
    return v;
}

// The hidden list of post numbers finds a number without regard to case. A post number is at
// most five characters, so its key is its length and its characters, upper-cased, in one
// number.
std::uint64_t list_key(std::string_view post) {
    std::uint64_t k = post.size();
    for (char c : post) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
        k = (k << 8) | static_cast<unsigned char>(c);
    }
    return k;
}

// A number key to a record or row, open addressing over a power-of-two table: personeel_lys,
// and the walk's tables of teacher fields and of rows. The walk looks a teacher up for nearly
// every cell, and a general hash map's division and chains were most of its time. A key is
// never 0 (a post number's length is part of its key), so 0 marks a free slot.
class KeyIndex {
  public:
    // Room for expected keys before the table grows.
    explicit KeyIndex(std::size_t expected = 0) {
        if (expected > 0) {
            slots_.assign(std::bit_ceil(std::max<std::size_t>(64, expected * 2)), Slot{});
        }
    }
    // The record of a key; -1 when absent.
    int find(std::uint64_t key) const {
        const Slot* s = locate(key);
        return s == nullptr ? -1 : s->record;
    }
    // The record of a key, to be changed in place; null when absent.
    int* value(std::uint64_t key) {
        Slot* s = const_cast<Slot*>(locate(key));
        return s == nullptr ? nullptr : &s->record;
    }
    // Adds a key unless present: the first record keeps it. Returns the key's record.
    int* add(std::uint64_t key, int record) {
        if ((used_ + 1) * 2 > slots_.size()) {
            grow();
        }
        std::size_t i = slot_of(key);
        while (slots_[i].key != 0) {
            if (slots_[i].key == key) {
                return &slots_[i].record;
            }
            i = (i + 1) & mask();
        }
        slots_[i] = {key, record};
        ++used_;
        return &slots_[i].record;
    }

  private:
    struct Slot {
        std::uint64_t key = 0;
        int record = 0;
    };
    const Slot* locate(std::uint64_t key) const {
        if (slots_.empty()) {
            return nullptr;
        }
        for (std::size_t i = slot_of(key);; i = (i + 1) & mask()) {
            if (slots_[i].key == key) {
                return &slots_[i];
            }
            if (slots_[i].key == 0) {
                return nullptr;
            }
        }
    }
    std::size_t mask() const { return slots_.size() - 1; }
    std::size_t slot_of(std::uint64_t key) const {
        return static_cast<std::size_t>((key * 0x9E3779B97F4A7C15ULL) >> 32) & mask();
    }
    void grow() {
        std::vector<Slot> old = std::move(slots_);
        slots_.assign(std::max<std::size_t>(64, old.size() * 2), Slot{});
        used_ = 0;
        for (const Slot& s : old) {
            if (s.key != 0) {
                add(s.key, s.record);
            }
        }
    }
    std::vector<Slot> slots_;
    std::size_t used_ = 0;
};

// Equal short texts, compared in place (the cells are a few characters each).
bool same(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i]) {
            return false;
        }
    }
    return true;
}

// A text put in a fixed field: cut to the width, blank-padded.
void put(char* field, int width, std::string_view value) {
    const std::size_t n = std::min(value.size(), static_cast<std::size_t>(width));
    std::memcpy(field, value.data(), n);
    std::memset(field + n, ' ', static_cast<std::size_t>(width) - n);
}

// A teacher cell names a post number when it is not blank, is more than the repair's "*", and
// fits the post number field: a longer text is no post number of this school, and cutting it
// would hand its subjects to whoever holds the first five characters.
bool is_post_number(std::string_view teacher) {
    return !teacher.empty() && teacher.find_first_not_of('*') != std::string_view::npos &&
           teacher.size() <= static_cast<std::size_t>(kPost.width);
}

// The code a subject is stored under: its number from the grade's subject table, as text cut
// to the field (the same cut for storing and for comparing), and as the field holds it.
struct StoredCode {
    explicit StoredCode(int number) : text(std::to_string(number)) {
        text.resize(std::min(text.size(), static_cast<std::size_t>(kTaught.width)));
        field = text;
        field.resize(static_cast<std::size_t>(kTaught.width), ' ');
    }
    std::string text;
    std::string field;
};

constexpr char kBlankField[] = "                ";
static_assert(sizeof kBlankField > static_cast<std::size_t>(kTaught.width));

// The subject file in memory: its records as they stand, the hidden list personeel_lys from
// post number to record, and which records changed.
class SubjectRecords {
  public:
    void load(store::RecordFile& file, int count) {
        bytes_.reserve(static_cast<std::size_t>(count) * kLength);
        file.scan(1, count, [&](int, const char* record) {
            bytes_.append(record, static_cast<std::size_t>(kLength));
            return true;
        });
        existing_ = count;
        changed_.assign(static_cast<std::size_t>(count), false);
        full_.assign(static_cast<std::size_t>(count), 0);
        for (int i = 0; i < count; ++i) {
            const std::string_view post = trimmed(record(i) + kPost.offset, kPost.width);
            if (!post.empty()) {
                personeel_lys_.add(list_key(post), i);
            }
        }
    }

    // The record of a post number in personeel_lys; -1 when the file has none.
    int find(std::string_view post) const { return personeel_lys_.find(list_key(post)); }

    // A record for a post number the file does not know: every other field blank or 0.
    int append(std::string_view post) {
        std::string r(blank_record());
        put(r.data() + kPost.offset, kPost.width, post);
        const int index = records();
        personeel_lys_.add(list_key(post), index);
        bytes_.append(r);
        changed_.push_back(true);
        full_.push_back(0);
        ++added_;
        return index;
    }

    // The walk of add_staff_subject over a record's list from slot 1: an equal code ends it
    // with nothing to do; otherwise the code and grade go to the first blank slot, and a full
    // list loses the code. True when the code was stored. A slot as this program writes it,
    // the code or nothing blank-padded, is told by its bytes.
    bool add_code(int index, const StoredCode& code, std::string_view grade) {
        char* r = record(index);
        const auto width = static_cast<std::size_t>(kTaught.width);
        int first_blank = 0;
        for (int slot = 1; slot <= kLastSlot; ++slot) {
            const char* field = r + kTaught.element_offset(slot);
            if (std::memcmp(field, code.field.data(), width) == 0) {
                return false;
            }
            const bool blank = std::memcmp(field, kBlankField, width) == 0;
            const std::string_view stored =
                blank ? std::string_view() : trimmed(field, kTaught.width);
            if (!blank && same(stored, code.text)) {
                return false;
            }
            if (stored.empty() && first_blank == 0) {
                first_blank = slot;
            }
        }
        if (first_blank == 0) {
            full_[static_cast<std::size_t>(index)] = 1;
            return false;
        }
        std::memcpy(r + kTaught.element_offset(first_blank), code.field.data(), width);
        put(r + kTaughtGrade.element_offset(first_blank), kTaughtGrade.width, grade);
        changed_[static_cast<std::size_t>(index)] = true;
        return true;
    }

    // A list found full stays full: nothing empties a slot during the walk.
    bool full(int index) const { return full_[static_cast<std::size_t>(index)] != 0; }
    int records() const { return static_cast<int>(changed_.size()); }
    int existing() const { return existing_; }
    int added() const { return added_; }
    bool changed(int i) const { return changed_[static_cast<std::size_t>(i)]; }
    const char* record(int i) const {
        return bytes_.data() + static_cast<std::size_t>(i) * kLength;
    }
    char* record(int i) { return bytes_.data() + static_cast<std::size_t>(i) * kLength; }

  private:
    // A new record: every text blank and every number 0.
    static const std::string& blank_record() {
        static const std::string blank = [] {
            store::Record r(PRSVAK);
            r.clear();
            return std::string(r.data(), static_cast<std::size_t>(kLength));
        }();
        return blank;
    }

    std::string bytes_;
    std::vector<bool> changed_;
    std::vector<std::uint8_t> full_;
    KeyIndex personeel_lys_;
    int existing_ = 0;
    int added_ = 0;
};

// How the walk reads a field of a row. A field of at most eight bytes also reads as one number,
// its bytes with zeros past its width: where eight bytes from its start still lie in the row,
// one load and a mask read it.
class FieldReader {
  public:
    FieldReader(int offset, int width, std::size_t row_length)
        : offset_(static_cast<std::size_t>(offset)),
          width_(static_cast<std::size_t>(width)),
          narrow_(width_ <= sizeof(std::uint64_t)),
          one_load_(offset_ + sizeof(std::uint64_t) <= row_length) {
        if (narrow_) {
            std::memset(&mask_, 0xFF, width_);  // the field's own bytes, whatever the byte order
        }
    }
    std::string_view bytes(const char* row) const { return {row + offset_, width_}; }
    bool narrow() const { return narrow_; }
    std::uint64_t key(const char* row) const {
        std::uint64_t k = 0;
        if (one_load_) {
            std::memcpy(&k, row + offset_, sizeof k);
            return k & mask_;
        }
        std::memcpy(&k, row + offset_, width_);
        return k;
    }

  private:
    std::size_t offset_;
    std::size_t width_;
    std::uint64_t mask_ = 0;
    bool narrow_;
    bool one_load_;
};

// A row's bytes as one number, for finding rows walked before: eight bytes at a time over four
// lanes, then mixed. Equal numbers only point to a row whose bytes are then compared; never 0.
std::uint64_t row_key(std::string_view row) {
    constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15ULL;
    const auto word = [](const char* p) {
        std::uint64_t w = 0;
        std::memcpy(&w, p, sizeof w);
        return w;
    };
    const char* p = row.data();
    std::size_t n = row.size();
    std::uint64_t a = n, b = 0, c = 0, d = 0;
    for (; n >= 32; n -= 32, p += 32) {
        a = (a ^ word(p)) * kOdd;
        b = (b ^ word(p + 8)) * kOdd;
        c = (c ^ word(p + 16)) * kOdd;
        d = (d ^ word(p + 24)) * kOdd;
    }
    for (; n >= 8; n -= 8, p += 8) {
        a = (a ^ word(p)) * kOdd;
    }
    std::uint64_t tail = 0;
    std::memcpy(&tail, p, n);
    b = (b ^ tail) * kOdd;
    std::uint64_t h = a ^ std::rotl(b, 16) ^ std::rotl(c, 32) ^ std::rotl(d, 48);
    h = (h ^ (h >> 32)) * kOdd;
    return (h ^ (h >> 29)) | 1;
}

// add_staff_subject for every cell of every row that an active learner of a grade is in, grade
// after grade. A call made before does nothing again (the code is in the list, or the list was
// full and stays full), and that is what the walk saves on: learners of one class share its
// row, and learners with the same choices and teachers have rows with the same bytes, so each
// row content of a grade is walked once; a column's subject and a teacher field's record are
// resolved once per distinct bytes; and each pair of post and stored code is tried once in
// the whole rebuild, whichever grade it comes from.
class SubjectWalk {
  public:
    explicit SubjectWalk(SubjectRecords& records)
        : records_(records), teacher_fields_(static_cast<std::size_t>(records.records())) {}

    // One grade. Each learner is reported to on_learner (learner, learners) as the walk reaches
    // it. Returns the number of codes stored.
    int walk_grade(const GradeSubjects& g, const QString& grade,
                   const std::function<void(int, int)>& on_learner);

  private:
    // What a teacher field stands for when it can add nothing: it names no post number, or a
    // post whose list is full.
    static constexpr int kNothing = -2;

    // The record a teacher cell names, appended when the file has none; kNothing for none.
    int record_of(std::string_view teacher) {
        if (!is_post_number(teacher)) {
            return kNothing;
        }
        const int record = records_.find(teacher);
        if (record >= 0) {
            return record;
        }
        const int added = records_.append(teacher);
        fit_tried();
        return added;
    }
    // The number of a stored code in codes_, given one when new.
    int code_id(int number) {
        StoredCode code(number);
        const auto [it, added] = code_ids_.try_emplace(code.text, static_cast<int>(codes_.size()));
        if (added) {
            codes_.push_back(std::move(code));
            fit_tried();
        }
        return it->second;
    }
    // tried_ has a row of stride_ codes for every record.
    void fit_tried() {
        if (codes_.size() > stride_) {
            const std::size_t stride = std::max<std::size_t>(64, stride_ * 2);
            std::vector<std::uint8_t> wider(static_cast<std::size_t>(records_.records()) * stride);
            for (std::size_t r = 0; stride_ > 0 && r < tried_.size() / stride_; ++r) {
                std::memcpy(wider.data() + r * stride, tried_.data() + r * stride_, stride_);
            }
            tried_ = std::move(wider);
            stride_ = stride;
        }
        tried_.resize(static_cast<std::size_t>(records_.records()) * stride_, 0);
    }

    SubjectRecords& records_;
    KeyIndex teacher_fields_;  // a narrow teacher field's bytes to its record or kNothing
    std::unordered_map<std::string, int> code_ids_;
    std::vector<StoredCode> codes_;
    std::vector<std::uint8_t> tried_;  // by record and code, stride_ codes a record
    std::size_t stride_ = 0;
};

int SubjectWalk::walk_grade(const GradeSubjects& g, const QString& grade,
                            const std::function<void(int, int)>& on_learner) {
    // pi3_lys: each subject with a number, to its stored code.
    std::unordered_map<std::string_view, int> pi3_lys;
    pi3_lys.reserve(g.subjects.size());
    for (const auto& [code, number] : g.subjects) {
        if (number != 0 && !pi3_lys.contains(code)) {
            pi3_lys.emplace(code, code_id(number));
        }
    }
    const QByteArray grade_bytes = cp1252::encode(grade);
    const std::string_view grade_text(grade_bytes.constData(),
                                      static_cast<std::size_t>(grade_bytes.size()));

    // The cells the table has both fields of, in order (a cell it lacks reads blank). Each
    // remembers what its subject field last stood for: the code, or -1 for none.
    struct Column {
        FieldReader subject, teacher;
        std::uint64_t last_key = 0;
        std::string_view last_field;
        bool seen = false;
        int code = -1;
    };
    std::vector<Column> columns;
    const auto row_length = static_cast<std::size_t>(std::max(g.row_length(), 0));
    for (int c = 0; c < kSubjectCells; ++c) {
        const GradeSubjects::CellPlace& place = g.place(c);
        if (place.subject_offset >= 0 && place.teacher_offset >= 0) {
            columns.push_back({FieldReader(place.subject_offset, place.subject_width, row_length),
                               FieldReader(place.teacher_offset, place.teacher_width, row_length)});
        }
    }

    std::vector<bool> walked(static_cast<std::size_t>(g.class_rows()) + 1, false);
    // A row's key to the first walked row with it; no more rows are walked than learners.
    KeyIndex row_contents(
        std::min(static_cast<std::size_t>(g.class_rows()), g.class_numbers.size()));
    int added = 0;
    const int learners = static_cast<int>(g.class_numbers.size());
    for (int li = 0; li < learners; ++li) {
        on_learner(li, learners);
        const int row = g.class_numbers[static_cast<std::size_t>(li)];
        if (row < 1 || row > g.class_rows() || walked[static_cast<std::size_t>(row)]) {
            continue;
        }
        walked[static_cast<std::size_t>(row)] = true;
        if (g.row_deleted(row)) {
            continue;  // a deleted row's cells are blank
        }
        const std::string_view bytes = g.row_bytes(row);
        const std::uint64_t content = row_key(bytes);
        const int like = row_contents.find(content);
        if (like < 0) {
            row_contents.add(content, row);
        } else if (g.row_bytes(like) == bytes) {
            continue;  // a row like one walked before
        }
        for (Column& col : columns) {
            const std::string_view subject_field = col.subject.bytes(bytes.data());
            const std::uint64_t subject_key =
                col.subject.narrow() ? col.subject.key(bytes.data()) : 0;
            if (!col.seen || (col.subject.narrow() ? col.last_key != subject_key
                                                   : !same(col.last_field, subject_field))) {
                const std::string_view subject = cell_text(subject_field);
                const auto it = pi3_lys.find(subject);
                col.last_field = subject_field;
                col.last_key = subject_key;
                col.seen = true;
                col.code = subject.empty() || it == pi3_lys.end() ? -1 : it->second;
            }
            if (col.code < 0) {
                continue;  // blank, or not a subject of the grade
            }
            int record;
            int* field = nullptr;  // where a narrow teacher field keeps its record
            if (col.teacher.narrow()) {
                const std::uint64_t key = col.teacher.key(bytes.data());
                if (key == 0) {
                    continue;  // nothing but NULs
                }
                field = teacher_fields_.value(key);
                if (field == nullptr) {
                    field = teacher_fields_.add(
                        key, record_of(cell_text(col.teacher.bytes(bytes.data()))));
                }
                record = *field;
            } else {
                record = record_of(cell_text(col.teacher.bytes(bytes.data())));
            }
            if (record == kNothing) {
                continue;
            }
            if (records_.full(record)) {
                if (field != nullptr) {
                    *field = kNothing;  // a list found full stays full
                }
                continue;
            }
            std::uint8_t& tried = tried_[static_cast<std::size_t>(record) * stride_ +
                                         static_cast<std::size_t>(col.code)];
            if (tried != 0) {
                continue;
            }
            tried = 1;
            if (records_.add_code(record, codes_[static_cast<std::size_t>(col.code)], grade_text)) {
                ++added;
            }
        }
    }
    return added;
}

}  // namespace

StaffSubjects::StaffSubjects(shell::Session& session, LearnerSubjects& learners)
    : session_(session), learners_(learners) {
    caption = session.tr("LAAI VAKKE UIT ADMIN", "LOAD SUBJECTS FROM ADMIN");
    admin_exit_caption = QStringLiteral("EXIT");
}

QStringList StaffSubjects::school_grades(shell::Session& session) {
    const Field& grade = store::SKL["SD_ST"];
    const std::optional<QByteArray> bytes = session.fs().read_all(
        winpath::join(session.folders.school, QStringLiteral("skl_dta_random.txt")));
    QStringList grades;
    if (!bytes || bytes->size() < store::SKL.record_length) {
        return grades;
    }
    store::Record r(store::SKL);
    r.assign(bytes->constData());
    for (int i = 0; i < grade.count; ++i) {
        const QString g = r.text(grade, i).trimmed().toUpper();
        const bool folder_name = !g.isEmpty() && std::all_of(g.begin(), g.end(), [](QChar c) {
            return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z');
        });
        if (folder_name && !grades.contains(g)) {
            grades << g;
        }
    }
    return grades;
}

void StaffSubjects::recreate_staff_subjects() {
    outcome = {};
    // The year of the learner folders: the ledger year, or this year when none is set.
    QString year = session_.ledger_year.trimmed();
    if (year.isEmpty()) {
        year = QString::number(session_.today().year());
    }

    const bool recreate =
        session_.dialogs().ask(session_.tr("Wil u alle PERSONEEL VAKREKORDS heeltemal herskep?",
                                           "Do you wish to recreate all STAFF SUBJECT RECORDS "
                                           "completely?"),
                               ui::Buttons::YesNo, ui::Icon::Question,
                               ui::Answer::No) == ui::Answer::Yes;
    outcome.recreated = recreate;

    if (!session_.is_open(Code::PRSVAK) && !session_.open_file(Code::PRSVAK)) {
        return;
    }
    SubjectRecords records;
    if (!recreate) {
        if (session_.count(Code::PRSVAK) > kRebuildThreshold) {
            session_.rebuild_subject_file();
        }
        if (store::RecordFile* f = session_.file(Code::PRSVAK)) {
            records.load(*f, session_.count(Code::PRSVAK));
        }
    }

    const QStringList grades = school_grades(session_);
    SubjectWalk walk(records);
    for (int gi = 0; gi < grades.size(); ++gi) {
        const QString& grade = grades.at(gi);
        const QString folder =
            session_.folders.admin + QStringLiteral("\\L") + grade + year.right(2);
        // The grade's folder is made where it is missing; one with a learner table stands.
        const std::optional<GradeSubjects> g = learners_.read_grade(folder);
        if (!g) {
            session_.fs().create_folder(folder);
            continue;
        }
        outcome.grades_read << grade;
        outcome.subjects_added += walk.walk_grade(*g, grade, [&](int li, int learners) {
            if (progress) {
                progress(gi, static_cast<int>(grades.size()), li, learners);
            }
            ++outcome.learners;
        });
    }
    if (progress) {
        progress(static_cast<int>(grades.size()), static_cast<int>(grades.size()), 0, 0);
    }
    outcome.records_added = records.added();

    if (recreate) {
        // Every old row is lost: the new file holds only what the learner records gave.
        const QString folder = session_.folder_of(Code::PRSVAK).isEmpty()
                                   ? session_.folders.staff
                                   : session_.folder_of(Code::PRSVAK);
        const QString txt = winpath::join(folder, QStringLiteral("prs_vak_random.txt"));
        const QString fresh = winpath::join(folder, QStringLiteral("prs_vak_random.new"));
        session_.fs().delete_file(fresh);
        bool ok = false;
        if (auto out = store::RecordFile::open(session_.fs().native(fresh), kLength,
                                               store::RecordFile::Access::Shared)) {
            ok = (records.records() == 0 ||
                  out->write_block(1, records.record(0), records.records())) &&
                 out->sync();
        }
        if (!ok) {
            session_.fs().delete_file(fresh);
            return;
        }
        session_.close_file(Code::PRSVAK);
        if (session_.fs().replace_file(fresh, txt)) {
            outcome.records_written = records.records();
        }
        session_.open_file(Code::PRSVAK, folder);
        return;
    }

    store::RecordFile* f = session_.file(Code::PRSVAK);
    if (f == nullptr) {
        return;
    }
    // Each run of changed records goes in one write: the same bytes at the same places.
    for (int i = 0; i < records.existing();) {
        if (!records.changed(i)) {
            ++i;
            continue;
        }
        int end = i + 1;
        while (end < records.existing() && records.changed(end)) {
            ++end;
        }
        if (f->write_block(i + 1, records.record(i), end - i)) {
            outcome.records_written += end - i;
        }
        i = end;
    }
    if (records.added() > 0) {
        // After what another workstation may have appended meanwhile.
        const int at = std::max(f->count(), records.existing()) + 1;
        if (f->write_block(at, records.record(records.existing()), records.added())) {
            outcome.records_written += records.added();
        }
    }
    session_.state(Code::PRSVAK).count = f->count();
}

}  // namespace korvel::staff
