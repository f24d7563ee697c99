// sk4_vakke_van_admin: the staff subjects rebuilt from the learner records.

#include "staff/staff_subjects.h"

#include <algorithm>
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

// The hidden list of post numbers finds a number without regard to case.
std::string list_key(std::string_view post) {
    std::string k(post);
    for (char& c : k) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return k;
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
        for (int i = 0; i < count; ++i) {
            const std::string_view post = trimmed(record(i) + kPost.offset, kPost.width);
            if (!post.empty()) {
                personeel_lys_.emplace(list_key(post), i);  // the first record keeps the key
            }
        }
    }

    // add_staff_subject: the code goes to the first blank slot of the post's list unless the
    // list has it already or is full; a post number the file does not know gets a record.
    // True when a code was stored.
    bool add_staff_subject(std::string_view post, std::string_view code, std::string_view grade) {
        const auto it = personeel_lys_.find(list_key(post));
        if (it == personeel_lys_.end()) {
            std::string r(blank_record());
            put(r.data() + kPost.offset, kPost.width, post);
            put(r.data() + kTaught.element_offset(1), kTaught.width, code);
            put(r.data() + kTaughtGrade.element_offset(1), kTaughtGrade.width, grade);
            personeel_lys_.emplace(list_key(post), records());
            bytes_.append(r);
            changed_.push_back(true);
            ++added_;
            return true;
        }
        char* r = record(it->second);
        int first_blank = 0;
        for (int slot = 1; slot <= kLastSlot; ++slot) {
            const std::string_view stored =
                trimmed(r + kTaught.element_offset(slot), kTaught.width);
            if (stored == code) {
                return false;
            }
            if (stored.empty() && first_blank == 0) {
                first_blank = slot;
            }
        }
        if (first_blank == 0) {
            return false;  // a full list loses the code
        }
        put(r + kTaught.element_offset(first_blank), kTaught.width, code);
        put(r + kTaughtGrade.element_offset(first_blank), kTaughtGrade.width, grade);
        changed_[static_cast<std::size_t>(it->second)] = true;
        return true;
    }

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
    std::unordered_map<std::string, int> personeel_lys_;
    int existing_ = 0;
    int added_ = 0;
};

// The code a subject is stored under: its number from the grade's subject table, as text
// cut to the field (the same cut for storing and for comparing).
std::string stored_code(int number) {
    std::string code = std::to_string(number);
    code.resize(std::min(code.size(), static_cast<std::size_t>(kTaught.width)));
    return code;
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
    for (int gi = 0; gi < grades.size(); ++gi) {
        const QString& grade = grades.at(gi);
        const QString folder =
            session_.folders.admin + QStringLiteral("\\L") + grade + year.right(2);
        session_.fs().create_folder(folder);
        const std::optional<GradeSubjects> g = learners_.read_grade(folder);
        if (!g) {
            continue;
        }
        outcome.grades_read << grade;
        std::unordered_map<std::string_view, std::string> codes;  // pi3_lys
        for (const auto& [code, number] : g->subjects) {
            if (number != 0) {
                codes.emplace(code, stored_code(number));  // the first row of a code counts
            }
        }
        const QByteArray grade_bytes = cp1252::encode(grade);
        const std::string_view grade_text(grade_bytes.constData(),
                                          static_cast<std::size_t>(grade_bytes.size()));
        // Learners of one class share its row: the second learner's adds would find every code
        // already there (or the list full), so each row is walked once.
        std::vector<bool> walked(static_cast<std::size_t>(g->class_rows()) + 1, false);
        const int learners = static_cast<int>(g->class_numbers.size());
        for (int li = 0; li < learners; ++li) {
            if (progress) {
                progress(gi, static_cast<int>(grades.size()), li, learners);
            }
            ++outcome.learners;
            const int row = g->class_numbers[static_cast<std::size_t>(li)];
            if (row < 1 || row > g->class_rows() || walked[static_cast<std::size_t>(row)]) {
                continue;
            }
            walked[static_cast<std::size_t>(row)] = true;
            for (int c = 0; c < kSubjectCells; ++c) {
                const SubjectCell cell = g->cell(row, c);
                if (cell.subject.empty() || !is_post_number(cell.teacher)) {
                    continue;
                }
                const auto code = codes.find(cell.subject);
                if (code == codes.end()) {
                    continue;
                }
                if (records.add_staff_subject(cell.teacher, code->second, grade_text)) {
                    ++outcome.subjects_added;
                }
            }
        }
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
    for (int i = 0; i < records.existing(); ++i) {
        if (records.changed(i) && f->write(i + 1, records.record(i))) {
            ++outcome.records_written;
        }
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
