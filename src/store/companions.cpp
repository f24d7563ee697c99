// Companion records of the staff files, the rebuild of the subject file and the compaction
// that closing the register runs.
//
// Every file that is rebuilt is written whole as a ".new" beside the old one, pushed to the
// disk, its length checked against the records written, and then put in the old one's place
// in one step. A crash at any moment therefore leaves either the old file or the new one,
// never half of one; a ".new" left behind by a crash is removed by the next compaction.
//
// Several workstations share the staff folder, so whatever replaces a staff file holds the
// folder's lock file for the whole of its work, and names its ".new" files after its machine
// and process. A second workstation that finds the lock taken leaves the files as they are.

#include <QCoreApplication>
#include <QDateTime>
#include <QRegularExpression>
#include <QSet>
#include <QSysInfo>
#include <algorithm>
#include <memory>
#include <vector>

#include "platform/winpath.h"
#include "store/store.h"
#include "store/upgrades.h"

namespace korvel::store {

namespace {

constexpr int kSubjectRebuildThreshold = 32000;

// The lock of a staff folder's rebuilds. A compaction takes seconds, so a lock from another
// machine that is this old, with its operating-system lock free, belongs to a process that
// died; one from this machine goes as soon as its process is gone.
const QString kLockName = QStringLiteral("prs_compact.lock");
constexpr std::chrono::minutes kStaleLock{15};

// "prs_alg_random.txt" -> "prs_alg_random.OFFICE2-1234.new": unique to this process.
QString new_name(const QString& base) {
    QString host;
    for (const QChar c : QSysInfo::machineHostName()) {
        if (host.size() < 15 && ((c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') ||
                                 (c >= u'0' && c <= u'9') || c == u'-')) {
            host += c;
        }
    }
    return base + u'.' + (host.isEmpty() ? QStringLiteral("HOST") : host) + u'-' +
           QString::number(QCoreApplication::applicationPid()) + QStringLiteral(".new");
}

// A ".new" file written front to back, in blocks.
class NewFile {
  public:
    NewFile(Store& store, const QString& folder, const QString& base, int record_length)
        : store_(store),
          path_(winpath::join(folder, new_name(base))),
          record_length_(record_length) {
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
    // True when the file on disk holds exactly the records appended: checked last thing before
    // it takes the old file's place.
    bool whole() const {
        return store_.fs().file_size(path_) == static_cast<qint64>(written_) * record_length_;
    }
    // Removes the file unless it was put in place.
    void discard() { store_.fs().delete_file(path_); }

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
    new_attendance_record(working(Code::PRSAFW), key);
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

namespace {

// Tells the user that a file could not be written, or removed; Stopped.
Compaction cannot(Store& store, const QString& path, bool remove = false) {
    store.dialogs().message(store.tr("KAN NIE  ", remove ? "CANNOT REMOVE  " : "CANNOT WRITE  ") +
                                path + store.tr(remove ? "  VERWYDER NIE!" : "  SKRYF NIE!", "  !"),
                            ui::Icon::Critical);
    return Compaction::Stopped;
}

// A file past the record limit can be read only up to it; rewritten, it would lose the rest.
bool refuse_past_limit(Store& store, const QString& path, int record_length) {
    if (!past_record_limit(store.fs().file_size(path), record_length)) {
        return false;
    }
    store.dialogs().message(store.tr("LêER  ", "FILE  ") + path +
                                store.tr("  HET MEER AS 32767 REKORDS ... VERSOEK GEWEIER!",
                                         "  HAS MORE THAN 32767 RECORDS ... REQUEST DENIED!"),
                            ui::Icon::Critical);
    return true;
}

// The folder's lock for a rebuild; Done when held, else why not.
Compaction take_folder_lock(Store& store, const QString& folder,
                            std::unique_ptr<platform::HeldLock>* held, QString* why) {
    const QString path = winpath::join(folder, kLockName);
    QString holder;
    switch (store.fs().take_lock(path, kStaleLock, held, &holder)) {
        case platform::LockOutcome::Taken:
            return Compaction::Done;
        case platform::LockOutcome::Held:
            if (why != nullptr) {
                *why = QStringLiteral("the staff files are being compacted by ") +
                       (holder.isEmpty() ? QStringLiteral("another process") : holder);
            }
            return Compaction::Skipped;
        case platform::LockOutcome::Failed:
            break;
    }
    return cannot(store, path);
}

// What crashed rebuilds left behind: the ".new" files of the master, name and subject files,
// ours or any other process's (the lock keeps every other writer out while we hold it).
bool remove_leftovers(Store& store, const QString& folder,
                      const QString& bases = QStringLiteral("prs_(alg|nme|vak)_random")) {
    const QRegularExpression leftover(
        QStringLiteral("^") + bases + QStringLiteral("(\\..*)?\\.new$"),
        QRegularExpression::CaseInsensitiveOption);
    const QStringList names = store.fs().file_names(folder) + store.fs().folder_names(folder);
    for (const QString& name : names) {
        if (!leftover.match(name).hasMatch()) {
            continue;
        }
        const QString path = winpath::join(folder, name);
        if (!store.fs().delete_file(path)) {
            cannot(store, path, true);  // a folder by that name, or no right to remove it
            return false;
        }
    }
    return true;
}

// The subject file without blank keys and with one record per key, from its first 32000
// records; the caller holds the folder's lock.
Compaction rebuild_subjects(Store& store, const QString& folder) {
    const QString vak_txt = winpath::join(folder, QStringLiteral("prs_vak_random.txt"));
    if (refuse_past_limit(store, vak_txt, PRSVAK.record_length)) {
        return Compaction::Stopped;
    }
    NewFile out(store, folder, QStringLiteral("prs_vak_random"), PRSVAK.record_length);
    if (!out.ok()) {
        out.discard();
        return cannot(store, out.path());
    }
    QSet<QString> seen;
    RecordFile* in = store.file(Code::PRSVAK);
    const int last = std::min(store.count(Code::PRSVAK), kSubjectRebuildThreshold);
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
    if (!out.finish() || !out.whole()) {
        out.discard();
        return cannot(store, out.path());
    }
    store.close_file(Code::PRSVAK);
    const bool replaced = store.fs().replace_file(out.path(), vak_txt);
    store.open_file(Code::PRSVAK, folder);
    if (!replaced) {
        out.discard();
        return cannot(store, vak_txt);
    }
    return Compaction::Done;
}

// The size and time of a file, to see whether another workstation wrote it meanwhile.
struct Stamp {
    qint64 size = -1;
    QDateTime modified;
    bool operator==(const Stamp&) const = default;
};
Stamp stamp_of(Store& store, const QString& path) {
    return {store.fs().file_size(path), store.fs().last_modified(path).value_or(QDateTime())};
}

}  // namespace

Compaction Store::lock_folder(const QString& folder, std::unique_ptr<platform::HeldLock>* held,
                              QString* why) {
    return take_folder_lock(*this, folder, held, why);
}

void Store::rebuild_subject_file() {
    if (!is_open(Code::PRSVAK) && !open_file(Code::PRSVAK)) {
        return;
    }
    const QString folder = folder_of(Code::PRSVAK);
    std::unique_ptr<platform::HeldLock> lock;
    if (take_folder_lock(*this, folder, &lock, nullptr) == Compaction::Done) {
        rebuild_subjects(*this, folder);
    }
}

Compaction Store::compact_staff_files(QString* why) {
    // The bar runs over the master records, then the three steps that replace the files; a
    // replacement is never stopped half-way, so it has no cancel.
    const int records = count(Code::PRSALG);
    const std::unique_ptr<ui::Progress> progress = dialogs().progress(
        tr("Personeellêers word saamgepers ...", "Compacting the staff files ..."), records + 3,
        false);
    const auto step_done = [this, &progress, records](int step) {
        progress->step(step <= 2 ? 0 : records + step - 3);
        if (compaction_step_done) {
            compaction_step_done(step);
        }
    };

    // 1. The master file afresh, and new files for it and for the name file.
    const QString folder =
        folder_of(Code::PRSALG).isEmpty() ? folders.staff : folder_of(Code::PRSALG);
    if (!open_file(Code::PRSALG, folder)) {
        return Compaction::Stopped;
    }
    const QString alg_txt = winpath::join(folder, QStringLiteral("prs_alg_random.txt"));
    const QString nme_txt = winpath::join(folder, QStringLiteral("prs_nme_random.txt"));
    const QString vak_txt = winpath::join(folder, QStringLiteral("prs_vak_random.txt"));

    std::unique_ptr<platform::HeldLock> lock;
    if (const Compaction taken = take_folder_lock(*this, folder, &lock, why);
        taken != Compaction::Done) {
        return taken;
    }
    if (refuse_past_limit(*this, alg_txt, PRSALG.record_length) ||
        refuse_past_limit(*this, vak_txt, PRSVAK.record_length) ||
        !remove_leftovers(*this, folder)) {
        return Compaction::Stopped;
    }
    // Open afresh under the lock, so that the count is that of the file as it now stands; the
    // stamp before the open, so that any write after it shows at the end.
    const Stamp master_read = stamp_of(*this, alg_txt);
    if (!open_file(Code::PRSALG, folder)) {
        return Compaction::Stopped;
    }

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

    NewFile alg_new(*this, folder, QStringLiteral("prs_alg_random"), PRSALG.record_length);
    NewFile nme_new(*this, folder, QStringLiteral("prs_nme_random"), PRSNME.record_length);
    if (!alg_new.ok() || !nme_new.ok()) {
        alg_new.discard();
        nme_new.discard();
        return cannot(*this, alg_new.ok() ? nme_new.path() : alg_new.path());
    }
    step_done(1);

    // 2. The hidden sorted list of the keys written so far.
    QSet<QString> prs_lys;
    step_done(2);

    // 3 and 4. Every record that has a name, a post number and is not deleted is written,
    // under a key that no earlier record took.
    Record name(PRSNME);
    scan_records(Code::PRSALG, [&](int number, Record& r) {
        progress->step(std::min(number, records));
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
                alg_new.append(r.data());
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
                nme_new.append(name.data());
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

    // 4. The new files stand on disk, whole.
    close_file(Code::PRSALG);
    close_file(Code::PRSNME);
    bool alg_ok = alg_new.finish();
    bool nme_ok = nme_new.finish();
    step_done(4);
    alg_ok = alg_ok && alg_new.whole();
    nme_ok = nme_ok && nme_new.whole();
    const auto abandon = [&](Compaction outcome) {
        alg_new.discard();
        nme_new.discard();
        open_file(Code::PRSALG, folder);
        return outcome;
    };
    if (!alg_ok || !nme_ok) {
        // The old files stand untouched; nothing is lost.
        return abandon(cannot(*this, alg_ok ? nme_new.path() : alg_new.path()));
    }
    if (!(stamp_of(*this, alg_txt) == master_read)) {
        // A workstation that does not take the lock (an older program of the suite) wrote the
        // master file meanwhile: the new file lacks what it wrote, so the old one stays.
        if (why != nullptr) {
            *why = QStringLiteral("the staff file was written while it was compacted");
        }
        return abandon(Compaction::Skipped);
    }

    // 5. The new master and name files take the place of the old ones. A kill between the two
    // leaves the name file as it was: out of step with the master's record numbers until the
    // next compaction rebuilds it, which is all the name file promises between compactions.
    if (!fs().replace_file(alg_new.path(), alg_txt)) {
        return abandon(cannot(*this, alg_txt));
    }
    if (!fs().replace_file(nme_new.path(), nme_txt)) {
        nme_new.discard();
        cannot(*this, nme_txt);
    }
    step_done(5);

    // 6. The subject file keeps one record for each post number still in the master file.
    Compaction outcome = Compaction::Done;
    if (!open_file(Code::PRSVAK, folder)) {
        outcome = Compaction::Stopped;
    } else if (count(Code::PRSVAK) > kSubjectRebuildThreshold &&
               rebuild_subjects(*this, folder) != Compaction::Done) {
        outcome = Compaction::Stopped;
    } else {
        NewFile vak_new(*this, folder, QStringLiteral("prs_vak_random"), PRSVAK.record_length);
        if (!vak_new.ok()) {
            vak_new.discard();
            outcome = cannot(*this, vak_new.path());
        } else {
            scan_records(Code::PRSVAK, [&](int, Record& r) {
                const QString k = list_key(r.text(kSubjectPost).trimmed());
                if (prs_lys.remove(k)) {
                    vak_new.append(r.data());
                }
            });
            close_file(Code::PRSVAK);
            if (!vak_new.finish() || !vak_new.whole() ||
                !fs().replace_file(vak_new.path(), vak_txt)) {
                vak_new.discard();
                outcome = cannot(*this, vak_txt);
            }
        }
    }
    step_done(6);

    open_file(Code::PRSALG, folder);
    open_file(Code::PRSNME, folder);
    open_file(Code::PRSVAK, folder);
    staff_index.clear();  // record numbers have changed; the register builds it again
    return outcome;
}

Compaction Store::rewrite_file(Code code, const std::function<bool(const Record&)>& keep,
                               QString* why) {
    const auto step_done = [this](int step) {
        if (compaction_step_done) {
            compaction_step_done(step);
        }
    };
    const Layout& layout = layout_of(code);
    const QString folder = folder_of(code).isEmpty() ? folders.staff : folder_of(code);
    const QString name = QString::fromLatin1(layout.file_name.data(),
                                             static_cast<qsizetype>(layout.file_name.size()));
    const QString base = name.section(u'.', 0, 0);
    const QString path = winpath::join(folder, name);
    if (!fs().file_exists(path)) {
        return Compaction::Done;  // nothing to rewrite
    }
    std::unique_ptr<platform::HeldLock> lock;
    if (const Compaction taken = take_folder_lock(*this, folder, &lock, why);
        taken != Compaction::Done) {
        return taken;
    }
    if (refuse_past_limit(*this, path, layout.record_length) ||
        !remove_leftovers(*this, folder, QRegularExpression::escape(base))) {
        return Compaction::Stopped;
    }
    const Stamp read = stamp_of(*this, path);
    if (!open_file(code, folder)) {
        return Compaction::Stopped;
    }
    NewFile out(*this, folder, base, layout.record_length);
    if (!out.ok()) {
        out.discard();
        return cannot(*this, out.path());
    }
    step_done(1);
    scan_records(code, [&](int, Record& r) {
        if (keep(r)) {
            out.append(r.data());
        }
    });
    close_file(code);
    const bool written = out.finish() && out.whole();
    step_done(4);
    const auto abandon = [&](Compaction outcome) {
        out.discard();
        open_file(code, folder);
        return outcome;
    };
    if (!written) {
        return abandon(cannot(*this, out.path()));
    }
    if (!(stamp_of(*this, path) == read)) {
        if (why != nullptr) {
            *why = QStringLiteral("the file was written while it was compacted");
        }
        return abandon(Compaction::Skipped);
    }
    if (!fs().replace_file(out.path(), path)) {
        return abandon(cannot(*this, path));
    }
    step_done(5);
    open_file(code, folder);
    return Compaction::Done;
}

}  // namespace korvel::store
