#pragma once
// The record store's share of the process-wide state: the folder variables and settings it
// reads, the pool of file handles, and for every file code its handle, working record, current
// record number and count. The Session of the shell extends it; a test builds its own over a
// temporary data tree.

#include <QHash>
#include <QSet>
#include <QString>
#include <array>
#include <functional>
#include <optional>

#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "store/handle_pool.h"
#include "store/record.h"
#include "store/record_layouts.h"

namespace korvel::store {

// The codes files are opened by. The first nine are the staff files, in the order "*" opens
// them; the rest are the school files of the general year folder.
enum class Code : int {
    PRSALG,
    PRSADD,
    PRSVAK,
    PRSNME,
    BHRLGM,
    PRSAFW,
    PRSLNE,
    PRSSBI,
    PRSLURITS,
    SKL,
    SKLADD,
    SKLHB,
    SKLEPOS,
    SBP,
    SBP2018,
};
inline constexpr int kCodeCount = 15;
inline constexpr Code kStaffCodes[] = {Code::PRSALG, Code::PRSADD, Code::PRSVAK,
                                       Code::PRSNME, Code::BHRLGM, Code::PRSAFW,
                                       Code::PRSLNE, Code::PRSSBI, Code::PRSLURITS};
inline constexpr Code kSuiteCodes[] = {Code::SKL,     Code::SKLADD, Code::SKLHB,
                                       Code::SKLEPOS, Code::SBP,    Code::SBP2018};

const Layout& layout_of(Code code);
std::optional<Code> code_from_text(const QString& code);  // without regard to case
bool is_staff_code(Code code);

// The folder variables, all Windows-form strings without a trailing backslash.
struct Folders {
    QString program_drive;
    QString suite_home;
    QString program;
    QString workstation;
    QString workstation_program;
    QString admin;
    QString funds;
    QString stock;
    QString staff;
    QString hbooks;
    QString roster;
    QString media;
    QString budget;
    QString general_year;
    QString school;
};

struct FileState {
    explicit FileState(const Layout& layout) : working(layout) {}
    int handle = 0;   // 0: closed
    int current = 0;  // record number of the working record
    int count = 0;    // records in the file
    Record working;
};

// What a compaction came to.
enum class Compaction { Done, Skipped, Stopped };

// The outcome of assigning a value to a field by its running number.
enum class FieldAssign { Done, Overflow, NotANumber, NoSuchField };

class Store {
  public:
    Store(ui::Dialogs& dialogs, platform::DriveMap drives);
    virtual ~Store();
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    // ---- settings the store reads ----
    ui::Dialogs& dialogs() { return *dialogs_; }
    void set_dialogs(ui::Dialogs& dialogs) { dialogs_ = &dialogs; }
    platform::FileSystem& fs() { return fs_; }
    const platform::FileSystem& fs() const { return fs_; }

    Folders folders;
    QString ledger_year;    // four digits
    bool afrikaans = true;  // the language flag
    QString executable_name = QStringLiteral("KORVEL");
    bool browse_mode = false;  // forms are read-only
    QString system_code;       // one letter; set by learner-side start-up only

    // The text of the language in use.
    QString tr(const char* afrikaans_text, const char* english_text) const;
    QString tr(const QString& afrikaans_text, const QString& english_text) const {
        return afrikaans ? afrikaans_text : english_text;
    }

    // ---- the handle pool ----
    HandlePool& pool() { return pool_; }
    // A handle of the range (true: 11 to 100, false: 101 to 511). When the range is full the
    // user is told, every file is closed and 0 is returned.
    int allocate_file_handle(bool system_range);
    // 0 does nothing; kCloseAll closes every file and reopens the steady state; any other
    // handle closes its file and sets the caller's variable to 0.
    void close_file_handle(int& handle);

    // ---- files by code ----
    bool open_staff_file(const QString& code = QStringLiteral("*"), const QString& folder = {},
                         bool flag = false);
    bool open_suite_file(const QString& code, const QString& folder = {}, bool flag = false);
    bool open_file(Code code, const QString& folder = {});
    void close_file(Code code);
    bool is_open(Code code) const { return state(code).handle != 0; }

    FileState& state(Code code) { return files_[static_cast<int>(code)]; }
    const FileState& state(Code code) const { return files_[static_cast<int>(code)]; }
    Record& working(Code code) { return state(code).working; }
    int count(Code code) const { return state(code).count; }
    RecordFile* file(Code code) { return pool_.file(state(code).handle); }
    // The folder a code's file was opened from; blank when closed.
    QString folder_of(Code code) const;

    // Positioned read into the working record; a number outside the file reads as blanks.
    bool read_record(Code code, int number);
    // Positioned write of the working record; count + 1 appends, and the count follows.
    bool write_record(Code code, int number);
    // Appends the working record: the count is raised and the record written at it.
    bool append_record(Code code);
    // Reads every record from 1 to the count in blocks and calls visit with each. Afterwards the
    // working record and the current number stand at the last record read.
    void scan_records(Code code, const std::function<void(int, Record&)>& visit);
    // The same reading, each record's bytes handed over as they lie in the block: for the lists
    // that look at a few fields of thousands of records. The working record is left alone.
    void scan_bytes(Code code, const std::function<void(int, const char*)>& visit);
    // The record number of the first record whose trimmed key field equals key, 0 if none.
    int find_by_key(Code code, const Field& key_field, const QString& key);

    // ---- the staff master file ----
    // post number (without regard to case) -> record number; active, named records only.
    QHash<QString, int> staff_index;
    void build_staff_index();
    bool find_staff(const QString& post, bool load);
    static QString index_key(const QString& post) { return post.trimmed().toUpper(); }

    // Record life of the working staff record. Each asks its question where the system asks
    // one, and reports false when the user said no or the write failed.
    bool add_staff_record();      // the key test, then the append
    bool replace_staff_record();  // written over the current record number
    bool inactivate_staff_record();
    bool reactivate_staff_record();
    bool delete_staff_record();  // only an inactive record; marks it "D"

    // Running field numbers: 1 to 247 over the master record in table order, every array slot
    // from 1 counted as a number of its own (slot 0 has none); 1 to 49 over the governing body
    // record. A blank value clears the field.
    FieldAssign set_staff_field(int number, const QString& value);
    void clear_staff_record();
    FieldAssign set_member_field(int number, const QString& value);
    void clear_member_record();

    // Whether opening a code converts the DBF tables of its folder into record files, so that
    // undoing a conversion (deleting the record files and copying the tables back) is followed
    // by the conversion again at the next open.
    static constexpr bool kConvertsDbfTables = true;
    // What opening every file of a year converts, done at once: the staff codes in the staff
    // folder and the school codes in the general year folder, each folder with the year in
    // place of its last four characters. Returns what converted, a line each, led by its
    // folder (blank when nothing did).
    QString upgrade_year(const QString& year);

    // ---- companions and compaction ----
    void ensure_attendance_record(const QString& post);
    void ensure_subject_record(const QString& post);
    void rebuild_subject_file();
    // Keeps every staff record that has a name and a post number and is not deleted, each
    // under a unique post number, rebuilds the name file to match, and drops the subject
    // records of post numbers no longer there. Each file is replaced in one step, so a crash
    // at any point leaves the data whole. Only one process compacts a staff folder at a time:
    // another finds it busy and skips (Skipped, *why says who holds it), its files left valid
    // and only uncompacted. Stopped: the user was told why nothing was replaced.
    Compaction compact_staff_files(QString* why = nullptr);
    // For tests of the crash safety: called with the step number (1 to 6) as each step of the
    // compaction ends.
    std::function<void(int)> compaction_step_done;
    // A file of the folder rewritten whole, keeping in order the records keep answers true
    // for, as the compaction replaces its files: under the folder's lock, through a ".new"
    // that takes the old file's place in one step. Steps 1 (new file made), 4 (written) and
    // 5 (replaced) are reported to compaction_step_done.
    Compaction rewrite_file(Code code, const std::function<bool(const Record&)>& keep,
                            QString* why = nullptr);
    // The lock that keeps other compactions and rewrites out of a folder, held while *held
    // lives: Done when taken; Skipped when another process holds it (*why says who).
    Compaction lock_folder(const QString& folder, std::unique_ptr<platform::HeldLock>* held,
                           QString* why = nullptr);

  protected:
    // What the close-all path reopens: the school file and the program-wide settings.
    virtual void reopen_steady_state();

  private:
    bool open_code(Code code, const QString& folder);
    QString upgrade_folder(Code code, const QString& folder, const QString& year);
    void seed_lurits_file(const QString& folder);
    QString resolve_drive(const QString& folder) const;
    FieldAssign assign_by_number(Code code, int number, const QString& value);

    ui::Dialogs* dialogs_;
    platform::FileSystem fs_;
    HandlePool pool_;
    std::array<FileState, kCodeCount> files_;
};

// The questions of a record's life, shared by every register: true when the user said Yes.
bool ask_inactivate(Store& store);
bool ask_reactivate(Store& store);
bool ask_delete(Store& store);

// A field and slot addressed by a running number; nullopt outside the range.
struct FieldSlot {
    const Field* field;
    int index;
};
std::optional<FieldSlot> staff_field_by_number(int number);
std::optional<FieldSlot> member_field_by_number(int number);
inline constexpr int kStaffFieldNumbers = 247;
inline constexpr int kMemberFieldNumbers = 49;

}  // namespace korvel::store
