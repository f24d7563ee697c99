#pragma once
// A year folder is built anew beside its place and put there in one switch, so that a crash at
// any moment leaves the tree wholly as it was or wholly as it became. Beside the target stand,
// while the work runs:
//   ~yearend.new     the new folder being built; without a journal it is thrown away
//   ~yearend.old     the target as it stood, moved aside during the switch
//   ~yearend.switch  the journal: once it is written the switch is finished, never undone
//   ~yearend.lock    held by the closing at work, so that another workstation opening a
//                    folder beside them meanwhile leaves its work alone
// Whatever was cut short is settled before a folder beside them is opened again.

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>

#include "platform/file_system.h"

namespace korvel::store {

// The file operations of a rebuild, on Windows-form paths. Each one first calls before_each
// with its running number (from 1); false makes that operation fail, and a test may also end
// the process there by throwing.
class FileOps {
  public:
    explicit FileOps(const platform::FileSystem& fs) : fs_(fs) {}

    std::function<bool(int)> before_each;
    const platform::FileSystem& fs() const { return fs_; }

    // Counts an operation of the caller's own, such as a record written; false: it must fail.
    bool step();
    bool copy_file(const QString& from, const QString& to);  // over an existing target
    bool remove_file(const QString& path);                   // true when it is gone afterwards
    bool remove_tree(const QString& path);                   // true when it is gone afterwards
    bool rename(const QString& from, const QString& to);     // a file replaces its target
    bool make_folder(const QString& path);
    bool write_file(const QString& path, const QByteArray& bytes);

  private:
    const platform::FileSystem& fs_;
    int count_ = 0;
};

struct SwitchPaths {
    QString target, staging, retired, journal, lock;
};
SwitchPaths switch_paths(const QString& target);

// The lock of the rebuilds beside target, for this process. Held: a rebuild at work elsewhere
// holds it; one whose holder is gone is taken over.
platform::LockOutcome take_switch_lock(const platform::FileSystem& fs, const QString& target,
                                       std::unique_ptr<platform::HeldLock>* held);

// The switch: the journal is written, then the target goes aside, the new folder takes its
// place, the old dBASE index files of from_folder are deleted, and the old target and the
// journal go. False when an operation failed: after the journal the next open finishes it.
bool commit_folder_switch(FileOps& ops, const QString& target, const QString& from_folder);

// Whether a rebuild at work holds the lock beside target, found without writing anything (the
// data check writes nothing): a holder on this machine counts while its process runs, one on
// another machine while its lock is younger than a lock's stale time.
bool switch_at_work(const platform::FileSystem& fs, const QString& target);

// An old dBASE index file: its name in capitals contains ".NTX".
bool is_index_file(const QString& name);
// Deletes every index file of a folder.
bool delete_index_files(FileOps& ops, const QString& folder);

// Finishes a switch whose journal stands beside folder, or throws away a new folder whose
// switch never began, unless a rebuild at work holds the lock. Run before a folder is opened.
void settle_folder_switch(const platform::FileSystem& fs, const QString& folder);

}  // namespace korvel::store
