#pragma once
// The map from the suite's drive letters and UNC roots to native folders.
//
// On Windows the map is the identity. Elsewhere a small configuration names the map, one line
// a drive ("F:=/srv/school", "\\SERVER\SHARE=/mnt/share"), from the file named by KORVEL_DRIVES
// or from korvel/drives.conf in the user's configuration folder, and from KORVEL_DRIVE_<X>
// variables. With no configuration every drive maps below the user's data folder, so that
// nothing needs root and a fresh user can start at once.

#include <QMap>
#include <QString>
#include <QStringList>

namespace korvel::platform {

class DriveMap {
  public:
    // The map as the environment and configuration give it (see above).
    static DriveMap from_environment();
    // A map with exactly these drives and no default: other drives do not exist.
    static DriveMap explicit_map(const QMap<QString, QString>& drives);
    // Every drive below root (root/C, root/F, ...).
    static DriveMap below(const QString& root);

    // Adds or replaces one drive ("F:" or "\\SERVER\SHARE").
    void map(const QString& drive, const QString& native_folder);

    // Reads "X:=folder" lines; blank lines and lines starting with '#' are skipped.
    // Returns the lines it could not read.
    QStringList read_config(const QString& text);

    // The native folder of a drive, or blank when the drive does not exist.
    QString native_root(const QString& drive) const;
    bool drive_exists(const QString& drive) const;

    // The one place where a Windows-form path becomes a native one. Blank for a path on a drive
    // that does not exist or a path that is not absolute. On a case-sensitive file system an
    // existing component is found whatever its case, as Windows would.
    QString native_path(const QString& windows_path) const;

    // The Windows-form path of a native path that lies below a drive's folder; blank when it
    // lies below none. The inverse of native_path, for the executable's own path.
    QString windows_path(const QString& native) const;

    // The drives named explicitly, for display.
    QMap<QString, QString> drives() const { return drives_; }
    QString default_root() const { return default_root_; }

  private:
    static QString normalise_drive(const QString& drive);
    QMap<QString, QString> drives_;  // key: "F:" or "\\SERVER\SHARE", upper case
    QString default_root_;           // blank: only the named drives exist
    bool identity_ = false;
};

}  // namespace korvel::platform
