#include "platform/drive_map.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>
#include <QStandardPaths>

#include "platform/winpath.h"

#ifdef Q_OS_UNIX
#include <dirent.h>

#include <cstring>
#endif

namespace korvel::platform {

namespace {

// Finds an existing entry of dir whose name equals name without regard to case; blank if none.
// Walked in the folder's own order, which also settles a tie between names that differ only in
// case; nothing is sorted or looked at past the first match. Every file opened looks this way
// for the names a cut-short folder switch leaves, which are normally missing, so the walk reads
// the bare entries where the system gives them.
QString find_entry_nocase(const QString& dir, const QString& name) {
#ifdef Q_OS_UNIX
    DIR* folder = opendir(QFile::encodeName(dir).constData());
    if (folder == nullptr) {
        return {};
    }
    QString found;
    while (const dirent* e = readdir(folder)) {
        if (std::strcmp(e->d_name, ".") == 0 || std::strcmp(e->d_name, "..") == 0) {
            continue;
        }
        const QString entry = QFile::decodeName(e->d_name);
        if (entry.compare(name, Qt::CaseInsensitive) == 0) {
            found = entry;
            break;
        }
    }
    closedir(folder);
    return found;
#else
    QDirIterator it(dir, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (it.hasNext()) {
        it.next();
        const QString entry = it.fileName();
        if (entry.compare(name, Qt::CaseInsensitive) == 0) {
            return entry;
        }
    }
    return {};
#endif
}

}  // namespace

QString DriveMap::normalise_drive(const QString& drive) {
    QString d = drive.trimmed();
    d.replace(u'/', u'\\');
    while (d.endsWith(u'\\') && d.size() > 2) {
        d.chop(1);
    }
    return d.toUpper();
}

DriveMap DriveMap::explicit_map(const QMap<QString, QString>& drives) {
    DriveMap m;
    for (auto it = drives.begin(); it != drives.end(); ++it) {
        m.map(it.key(), it.value());
    }
    return m;
}

DriveMap DriveMap::below(const QString& root) {
    DriveMap m;
    m.default_root_ = root;
    return m;
}

DriveMap DriveMap::from_environment() {
#ifdef Q_OS_WIN
    DriveMap m;
    m.identity_ = true;
    return m;
#else
    const QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    DriveMap m;
    QString config = env.value(QStringLiteral("KORVEL_DRIVES"));
    if (config.isEmpty()) {
        const QString dir = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
        config = dir + QStringLiteral("/korvel/drives.conf");
    }
    QFile f(config);
    if (f.open(QIODevice::ReadOnly)) {
        m.read_config(QString::fromUtf8(f.readAll()));
    }
    const QStringList keys = env.keys();
    for (const QString& key : keys) {
        if (key.startsWith(QStringLiteral("KORVEL_DRIVE_")) && key.size() == 14 &&
            key.at(13) >= u'A' && key.at(13) <= u'Z') {
            m.map(key.right(1) + u':', env.value(key));
        }
    }
    if (m.drives_.isEmpty()) {
        m.default_root_ = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                          QStringLiteral("/korvel/drives");
    }
    return m;
#endif
}

void DriveMap::map(const QString& drive, const QString& native_folder) {
    QString folder = QDir::cleanPath(native_folder);
    drives_.insert(normalise_drive(drive), folder);
}

QStringList DriveMap::read_config(const QString& text) {
    QStringList bad;
    const QStringList lines = text.split(u'\n');
    for (QString line : lines) {
        line = line.trimmed();
        if (line.isEmpty() || line.startsWith(u'#')) {
            continue;
        }
        const qsizetype eq = line.indexOf(u'=');
        const QString drive = eq < 0 ? QString() : line.left(eq).trimmed();
        const QString folder = eq < 0 ? QString() : line.mid(eq + 1).trimmed();
        // A drive is a letter or a whole UNC root whose names are names ("\\..\.." is not).
        const QString root = winpath::drive_of(drive);
        const bool whole = !root.isEmpty() && normalise_drive(root) == normalise_drive(drive);
        if (!whole || folder.isEmpty()) {
            bad << line;
            continue;
        }
        map(drive, folder);
    }
    return bad;
}

QString DriveMap::native_root(const QString& drive) const {
    const QString d = normalise_drive(drive);
    if (d.isEmpty()) {
        return {};
    }
    if (identity_) {
        return d;
    }
    auto it = drives_.find(d);
    if (it != drives_.end()) {
        return it.value();
    }
    if (default_root_.isEmpty()) {
        return {};
    }
    if (d.size() == 2 && d.at(1) == u':') {
        return default_root_ + u'/' + d.left(1);
    }
    // A UNC root below the default: //SERVER/SHARE becomes <root>/UNC/SERVER/SHARE. Only a
    // root whose server and share are names gets one.
    if (winpath::drive_of(d).size() != d.size()) {
        return {};
    }
    QString rest = d.mid(2);
    rest.replace(u'\\', u'/');
    return default_root_ + QStringLiteral("/UNC/") + rest;
}

bool DriveMap::drive_exists(const QString& drive) const {
    return !native_root(drive).isEmpty();
}

QString DriveMap::native_path(const QString& windows_path) const {
    // Climbs are settled on the Windows form, before any native name is looked at, so that
    // no "..", however it is spelt, leaves the drive it starts on.
    const QString clean = winpath::normalise(windows_path);
    if (clean.isEmpty()) {
        return {};
    }
    if (identity_) {
        return clean;
    }
    const QString drive = winpath::drive_of(clean);
    QString path = native_root(drive);
    if (path.isEmpty()) {
        return {};
    }
    const QStringList parts = clean.mid(drive.size()).split(u'\\', Qt::SkipEmptyParts);
    // Most paths are spelt as they stand on disk, or all but their last name (a file about to
    // be made): a look at the path, then at its folder, settles that part, where the walk below
    // would look at each folder in turn.
    QString as_spelt = path;
    for (const QString& part : parts) {
        as_spelt += u'/' + part;
    }
    if (QFileInfo::exists(as_spelt)) {
        return as_spelt;
    }
    qsizetype first = 0;  // the first name the walk looks at
    bool exists_so_far = false;
    bool last_missing = false;  // the path as spelt is missing: its last name needs no look
    if (!parts.isEmpty()) {
        const QString folder = as_spelt.left(as_spelt.size() - parts.last().size() - 1);
        if (QFileInfo::exists(folder)) {
            path = folder;
            first = parts.size() - 1;
            exists_so_far = true;
            last_missing = true;
        }
    }
    if (!exists_so_far) {
        exists_so_far = QFileInfo::exists(path);
    }
    for (qsizetype i = first; i < parts.size(); ++i) {
        QString name = parts.at(i);
        if (exists_so_far) {
            if (last_missing || !QFileInfo::exists(path + u'/' + name)) {
                const QString found = find_entry_nocase(path, name);
                if (!found.isEmpty()) {
                    name = found;
                } else {
                    exists_so_far = false;
                }
            }
        }
        path += u'/' + name;
    }
    return path;
}

QString DriveMap::windows_path(const QString& native) const {
    if (identity_) {
        return QDir::toNativeSeparators(native);
    }
    const QString clean = QDir::cleanPath(native);
    const auto below = [&](const QString& root, const QString& drive) -> QString {
        if (clean == root) {
            return drive + u'\\';
        }
        if (!clean.startsWith(root + u'/')) {
            return {};
        }
        QString rest = clean.mid(root.size());
        rest.replace(u'/', u'\\');
        return drive + rest;
    };
    for (auto it = drives_.begin(); it != drives_.end(); ++it) {
        const QString w = below(it.value(), it.key());
        if (!w.isEmpty()) {
            return w;
        }
    }
    if (!default_root_.isEmpty() && clean.startsWith(default_root_ + u'/')) {
        const QString rest = clean.mid(default_root_.size() + 1);
        const QString letter = rest.section(u'/', 0, 0);
        if (letter.size() == 1 && letter.at(0).isLetter()) {
            return below(default_root_ + u'/' + letter, letter.toUpper() + u':');
        }
    }
    return {};
}

}  // namespace korvel::platform
