#pragma once
// File and folder operations on Windows-form paths, mapped through the drive map at the moment
// of access. Every operation reports by its result and never throws; a path on a drive that
// does not exist, or one that would climb out of its drive, simply fails.

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <optional>

#include "platform/drive_map.h"

namespace korvel::platform {

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
    qint64 file_size(const QString& path) const;  // -1 when missing
    std::optional<QDateTime> last_modified(const QString& path) const;

    // Creates the folder and its parents; true when it exists afterwards.
    bool create_folder(const QString& path) const;
    bool delete_file(const QString& path) const;
    // Copies over an existing target. The target is written beside itself and then renamed
    // over, so a crash leaves either the old or the new file, never half of one.
    bool copy_file(const QString& from, const QString& to) const;
    // Puts from in the place of to in one step, where the operating system allows it (a rename
    // over the target); otherwise copies and then deletes from.
    bool replace_file(const QString& from, const QString& to) const;

    // Names of the files (not folders) in a folder.
    QStringList file_names(const QString& folder) const;
    // Names of the subfolders of a folder.
    QStringList folder_names(const QString& folder) const;

    std::optional<QByteArray> read_all(const QString& path) const;
    // Writes a whole file so that a crash leaves either the old or the new content.
    bool write_all(const QString& path, const QByteArray& bytes) const;

  private:
    DriveMap drives_;
};

}  // namespace korvel::platform
