#pragma once
// File and folder operations on Windows-form paths, mapped through the drive map at the moment
// of access. Every operation reports by its result and never throws; a path on a drive that
// does not exist, or one that would climb out of its drive, simply fails.

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include "platform/drive_map.h"

class QLockFile;

namespace korvel::platform {

// A lock file held by this process; released (and the file removed) when destroyed.
class HeldLock {
  public:
    explicit HeldLock(std::unique_ptr<QLockFile> lock);
    ~HeldLock();
    HeldLock(const HeldLock&) = delete;
    HeldLock& operator=(const HeldLock&) = delete;

  private:
    std::unique_ptr<QLockFile> lock_;
};

// What taking a lock came to.
enum class LockOutcome {
    Taken,   // this process holds it
    Held,    // another process holds it
    Failed,  // the lock file cannot be made (no such folder, no right to write)
};

class FileSystem {
  public:
    explicit FileSystem(DriveMap drives) : drives_(std::move(drives)) {}

    const DriveMap& drives() const { return drives_; }
    DriveMap& drives() { return drives_; }

    // The native path of a Windows-form path; blank when it has none.
    QString native(const QString& path) const { return drives_.native_path(path); }

    bool drive_exists(const QString& drive) const { return drives_.drive_exists(drive); }
    bool folder_exists(const QString& path) const;
    bool file_exists(const QString& path) const;
    // Whether a file or folder that only this program makes, and always spells the same way,
    // is there. Its folder is found in any case, as above, but its own name is looked for only
    // as it is spelt: that spares listing the folder, which each opening of a file would
    // otherwise do to look for the marks a year-end cut short leaves.
    bool own_file_exists(const QString& path) const;
    bool own_folder_exists(const QString& path) const;
    qint64 file_size(const QString& path) const;  // -1 when missing
    std::optional<QDateTime> last_modified(const QString& path) const;

    // Creates the folder and its parents; true when it exists afterwards.
    bool create_folder(const QString& path) const;
    bool delete_file(const QString& path) const;
    // Copies over an existing target. The target is written beside itself and then renamed
    // over, so a crash leaves either the old or the new file, never half of one.
    bool copy_file(const QString& from, const QString& to) const;
    // Puts from in the place of to in one step, where the operating system allows it (a rename
    // over the target); otherwise copies and then deletes from. The folder is pushed to the
    // disk afterwards, so that once this returns a power cut brings back neither the old file
    // nor no file.
    bool replace_file(const QString& from, const QString& to) const;

    // Takes the lock file at path for this process. The file is made only when absent, names
    // its holder's process, machine and program, and is locked by the operating system, a lock
    // that the server of a network share keeps as well. A lock whose holder on this machine is
    // gone is taken over at once; one from another machine is taken over only when it is older
    // than stale_after and the operating system's lock on it is free. On Held, *holder names
    // the holder ("process 123 on OFFICE2") when the file says.
    LockOutcome take_lock(const QString& path, std::chrono::milliseconds stale_after,
                          std::unique_ptr<HeldLock>* held, QString* holder = nullptr) const;

    // Names of the files (not folders) in a folder.
    QStringList file_names(const QString& folder) const;
    // Names of the subfolders of a folder.
    QStringList folder_names(const QString& folder) const;

    std::optional<QByteArray> read_all(const QString& path) const;
    // Files of one folder read whole, the folder looked up once (a name in another case is
    // still found); nullopt for each that is not there.
    std::vector<std::optional<QByteArray>> read_all_in(const QString& folder,
                                                       const QStringList& names) const;
    // Writes a whole file so that a crash leaves either the old or the new content.
    bool write_all(const QString& path, const QByteArray& bytes) const;

  private:
    DriveMap drives_;
};

}  // namespace korvel::platform
