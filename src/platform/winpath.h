#pragma once
// Paths in the suite's Windows form ("F:\VESPARINE\STAFF\P2026", "\\SERVER\SHARE\VESPARINE").
// The suite's shared files hold paths in this form and the start-up rules cut, compare and
// replace inside these strings, so every folder variable stays a Windows-form string. A path
// becomes a native one only at the moment of file access, through DriveMap::native_path.

#include <QString>

namespace korvel::winpath {

// Folder + "\" + name; no folder string ends in a backslash.
QString join(const QString& folder, const QString& name);

// "F:" for "F:\X\Y", "\\SERVER\SHARE" for a UNC path, blank for a relative path. Windows reads
// "/" as a separator too, so "\\SERVER/SHARE/X" has the root "\\SERVER/SHARE". A server or share
// name that is no name ("..", ".", blank, or holding a character Windows refuses in one) gives
// blank: such a root names no drive.
QString drive_of(const QString& path);

// The path as the file system will take it: "/" read as "\", empty and "." components dropped,
// each ".." taken back against the component before it. Blank when the path has no drive or
// share root, when a ".." would climb above that root, or when a component holds a control
// character or is made of dots and blanks only (Windows would read "... " as a climb).
QString normalise(const QString& path);

// Everything left of the last backslash; blank when there is none.
QString parent_of(const QString& path);

// The last component.
QString name_of(const QString& path);

// True when the name is safe as one component of a file name inside a data folder: not
// blank, no separator, no drive colon, not "." or "..", no control characters. Post numbers
// used in file names pass through this before any path is built from them.
bool is_safe_file_component(const QString& name);

}  // namespace korvel::winpath
