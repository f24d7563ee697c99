// Companion records of the staff files, the rebuild of the subject file and the compaction
// that closing the register runs.
//
// Every file that is rebuilt is written whole as a ".new" beside the old one, pushed to the
// disk, and then put in the old one's place in one step. A crash at any moment therefore
// leaves either the old file or the new one, never half of one; a ".new" left behind by a
// crash is removed by the next compaction before it starts.

#include <QSet>
#include <vector>

#include "platform/winpath.h"
#include "store/store.h"

namespace korvel::store {

namespace {

constexpr int kSubjectRebuildThreshold = 32000;

// A ".new" file written front to back, in blocks.
class NewFile {
  public:
    NewFile(Store& store, const QString& folder, const QString& name, int record_length)
        : store_(store), path_(winpath::join(folder, name)), record_length_(record_length) {
        store_.fs().delete_file(path_);
        handle_ = store_.pool().take(false);
        file_ =
            RecordFile::open(store_.fs().native(path_), record_length, RecordFile::Access::Shared);
        buffer_.reserve(kBlock);
    }
    ~NewFile() { store_.pool().release(handle_); }

    bool ok() const { return file_ != nullptr && handle_ != 0 && !failed_; }
    const QString& path() const { return path_; }
    int count() const { return written_ + static_cast<int>(buffer_.size()) / record_length_; }

    void append(const char* record) {
        buffer_.insert(buffer_.end(), record, record + record_length_);
        if (buffer_.size() >= kBlock) {
            flush();
        }
    }
    // Writes what is buffered and pushes the file to the disk, then closes it.
    bool finish() {
        flush();
        const bool synced = file_ != nullptr && file_->sync();
        file_.reset();
        return synced && !failed_;
    }

  private:
    static constexpr std::size_t kBlock = 1 << 20;
    void flush() {
        if (buffer_.empty() || file_ == nullptr) {
            return;
        }
        const int n = static_cast<int>(buffer_.size()) / record_length_;
        if (!file_->write_block(written_ + 1, buffer_.data(), n)) {
            failed_ = true;
        }
        written_ += n;
        buffer_.clear();
    }

    Store& store_;
    QString path_;
    int record_length_;
    int handle_ = 0;
    std::unique_ptr<RecordFile> file_;
    std::vector<char> buffer_;
    int written_ = 0;
    bool failed_ = false;
};

constexpr const Field& kPost = PRSALG["PA_POS_NR"];
constexpr const Field& kState = PRSALG["PA_AKTIEF"];
constexpr const Field& kSurname = PRSALG["PA_VAN"];
constexpr const Field& kNames = PRSALG["PA_NAME"];
constexpr const Field& kTitle = PRSALG["PA_TITEL"];
constexpr const Field& kNamePost = PRSNME["PN_POS_NR"];
constexpr const Field& kNameText = PRSNME["PN_NAAM"];
constexpr const Field& kSubjectPost = PRSVAK["PV_POS_NR"];
constexpr const Field& kAttendancePost = PRSAFW["PF_POS_NR"];
constexpr const Field& kMarks = PRSAFW["PF_DAG"];
constexpr const Field& kReasons = PRSAFW["PF_REDE"];

// Keys of the hidden sorted list, which finds a text without regard to case.
QString list_key(const QString& key) {
    return key.toUpper();
}

}  // namespace

void Store::ensure_attendance_record(const QString& post) {
    const QString key = post.trimmed();
    if (key.isEmpty()) {
        return;
    }
    if (!is_open(Code::PRSAFW) && !open_file(Code::PRSAFW)) {
        return;
    }
    if (find_by_key(Code::PRSAFW, kAttendancePost, key) != 0) {
        return;
    }
    Record& r = working(Code::PRSAFW);
    r.clear();
    r.set_text(kAttendancePost, key);
    for (int day = 0; day < kMarks.count; ++day) {
        r.set_text(kMarks, QStringLiteral("."), day);
        r.set_text(kReasons, QStringLiteral(".."), day);
    }
    append_record(Code::PRSAFW);
}

void Store::ensure_subject_record(const QString& post) {
    const QString key = post.trimmed();
    if (key.isEmpty()) {
        return;
    }
    if (!is_open(Code::PRSVAK) && !open_file(Code::PRSVAK)) {
        return;
    }
    if (count(Code::PRSVAK) > kSubjectRebuildThreshold) {
        rebuild_subject_file();
    }
    if (find_by_key(Code::PRSVAK, kSubjectPost, key) != 0) {
        return;
    }
    Record& r = working(Code::PRSVAK);
    r.clear();
    r.set_text(kSubjectPost, key);
    append_record(Code::PRSVAK);
}

void Store::rebuild_subject_file() {
    if (!is_open(Code::PRSVAK) && !open_file(Code::PRSVAK)) {
        return;
    }
    const QString folder = folder_of(Code::PRSVAK);
    NewFile out(*this, folder, QStringLiteral("prs_vak_random.new"), PRSVAK.record_length);
    if (!out.ok()) {
        return;
    }
    QSet<QString> seen;
    RecordFile* in = file(Code::PRSVAK);
    const int last = std::min(count(Code::PRSVAK), kSubjectRebuildThreshold);
    Record r(PRSVAK);
    in->scan(1, last, [&](int, const char* bytes) {
        r.assign(bytes);
        const QString key = r.text(kSubjectPost).trimmed();
        if (!key.isEmpty() && !seen.contains(list_key(key))) {
            seen.insert(list_key(key));
            out.append(bytes);
        }
        return true;
    });
    if (!out.finish()) {
        fs().delete_file(out.path());
        return;
    }
    close_file(Code::PRSVAK);
    fs().replace_file(out.path(), winpath::join(folder, QStringLiteral("prs_vak_random.txt")));
    open_file(Code::PRSVAK, folder);
}

void Store::compact_staff_files() {
    const auto step_done = [this](int step) {
        if (compaction_step_done) {
            compaction_step_done(step);
        }
    };

    // 1. The master file afresh, and new files for it and for the name file.
    const QString folder =
        folder_of(Code::PRSALG).isEmpty() ? folders.staff : folder_of(Code::PRSALG);
    if (!open_file(Code::PRSALG, folder)) {
        return;
    }
    const QString alg_txt = winpath::join(folder, QStringLiteral("prs_alg_random.txt"));
    const QString nme_txt = winpath::join(folder, QStringLiteral("prs_nme_random.txt"));
    const QString vak_txt = winpath::join(folder, QStringLiteral("prs_vak_random.txt"));

    // The name records as they stand, so that what the timetable system keeps in them (the
    // classes and the teaching load) goes across with the key. Read once, whole.
    QHash<QString, int> old_names;
    const QByteArray name_bytes = fs().read_all(nme_txt).value_or(QByteArray());
    const int name_count = static_cast<int>(name_bytes.size() / PRSNME.record_length);
    {
        Record n(PRSNME);
        for (int i = 0; i < name_count; ++i) {
            n.assign(name_bytes.constData() + static_cast<qsizetype>(i) * PRSNME.record_length);
            const QString k = list_key(n.text(kNamePost).trimmed());
            if (!k.isEmpty() && !old_names.contains(k)) {
                old_names.insert(k, i);
            }
        }
    }

    auto alg_new = std::make_unique<NewFile>(*this, folder, QStringLiteral("prs_alg_random.new"),
                                             PRSALG.record_length);
    auto nme_new = std::make_unique<NewFile>(*this, folder, QStringLiteral("prs_nme_random.new"),
                                             PRSNME.record_length);
    if (!alg_new->ok() || !nme_new->ok()) {
        return;
    }
    step_done(1);

    // 2. The hidden sorted list of the keys written so far.
    QSet<QString> prs_lys;
    step_done(2);

    // 3 and 4. Every record that has a name, a post number and is not deleted is written,
    // under a key that no earlier record took.
    Record name(PRSNME);
    scan_records(Code::PRSALG, [&](int, Record& r) {
        const QString surname = r.trim_text(kSurname);
        const QString names = r.trim_text(kNames);
        const QString title = r.trim_text(kTitle);
        if (surname.isEmpty() && names.isEmpty() && title.isEmpty()) {
            return;
        }
        QString key = r.text(kPost).trimmed();
        if (key.isEmpty() || r.text(kState).trimmed() == u"D") {
            return;
        }
        if (key.endsWith(u'*')) {
            key.chop(1);
        }
        for (;;) {
            if (!prs_lys.contains(list_key(key))) {
                prs_lys.insert(list_key(key));
                r.set_text(kPost, key);
                alg_new->append(r.data());
                const QString stored_key = r.text(kPost);
                const auto old = old_names.constFind(list_key(stored_key));
                if (old != old_names.constEnd()) {
                    name.assign(name_bytes.constData() +
                                static_cast<qsizetype>(old.value()) * PRSNME.record_length);
                } else {
                    name.clear();
                }
                name.set_text(kNamePost, stored_key);
                name.set_text(kNameText, title + u' ' + first_word(names) + u' ' + surname);
                nme_new->append(name.data());
                return;
            }
            if (key.contains(u'*')) {
                return;  // a second duplicate of a key is dropped
            }
            // The starred key must fit the field; a five-character key loses the star, so
            // the copy collides with the original and is dropped.
            const QString starred = (key + u'*').left(kPost.width);
            if (starred == key) {
                return;
            }
            key = starred;
        }
    });
    step_done(3);
    step_done(4);

    // 5. The new master and name files take the place of the old ones.
    close_file(Code::PRSALG);
    close_file(Code::PRSNME);
    const bool alg_ok = alg_new->finish();
    const bool nme_ok = nme_new->finish();
    const QString alg_new_path = alg_new->path();
    const QString nme_new_path = nme_new->path();
    alg_new.reset();
    nme_new.reset();
    if (!alg_ok || !nme_ok) {
        // The old files stand untouched; nothing is lost.
        fs().delete_file(alg_new_path);
        fs().delete_file(nme_new_path);
        open_file(Code::PRSALG, folder);
        return;
    }
    fs().replace_file(alg_new_path, alg_txt);
    fs().replace_file(nme_new_path, nme_txt);
    step_done(5);

    // 6. The subject file keeps one record for each post number still in the master file.
    if (!open_file(Code::PRSVAK, folder)) {
        return;
    }
    if (count(Code::PRSVAK) > kSubjectRebuildThreshold) {
        rebuild_subject_file();
    }
    {
        NewFile vak_new(*this, folder, QStringLiteral("prs_vak_random.new"), PRSVAK.record_length);
        if (vak_new.ok()) {
            scan_records(Code::PRSVAK, [&](int, Record& r) {
                const QString k = list_key(r.text(kSubjectPost).trimmed());
                if (prs_lys.remove(k)) {
                    vak_new.append(r.data());
                }
            });
            close_file(Code::PRSVAK);
            if (vak_new.finish()) {
                fs().replace_file(vak_new.path(), vak_txt);
            } else {
                fs().delete_file(vak_new.path());
            }
        }
    }
    step_done(6);

    open_file(Code::PRSALG, folder);
    open_file(Code::PRSNME, folder);
    open_file(Code::PRSVAK, folder);
    staff_index.clear();  // record numbers have changed; the register builds it again
}

}  // namespace korvel::store
