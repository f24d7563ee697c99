#include "platform/file_system.h"

#include "platform/winpath.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <filesystem>
#include <system_error>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace korvel::platform {

namespace {

// Pushes a folder's entries to the disk, so that a rename or a new name in it survives a power
// cut. Windows has no such call for a folder; there the rename itself is written through.
void sync_folder(const QString& native_folder) {
#ifndef Q_OS_WIN
    const int fd = ::open(QFile::encodeName(native_folder).constData(), O_RDONLY | O_DIRECTORY);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
#else
    Q_UNUSED(native_folder);
#endif
}

bool rename_over(const QString& from, const QString& to) {
#ifdef Q_OS_WIN
    return MoveFileExW(reinterpret_cast<const wchar_t*>(from.utf16()),
                       reinterpret_cast<const wchar_t*>(to.utf16()),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
#else
    std::error_code ec;
    std::filesystem::rename(std::filesystem::path(from.toStdU16String()),
                            std::filesystem::path(to.toStdU16String()), ec);
    return !ec;
#endif
}

}  // namespace

HeldLock::HeldLock(std::unique_ptr<QLockFile> lock) : lock_(std::move(lock)) {}
HeldLock::~HeldLock() = default;  // QLockFile unlocks and removes its file

bool FileSystem::folder_exists(const QString& path) const {
    const QString n = native(path);
    return !n.isEmpty() && QFileInfo(n).isDir();
}

bool FileSystem::file_exists(const QString& path) const {
    const QString n = native(path);
    return !n.isEmpty() && QFileInfo(n).isFile();
}

namespace {
// The native path of a name this program spells one way: the folder's native path and the
// name as it stands. Blank when the folder has no native path.
QString native_own(const FileSystem& fs, const QString& path) {
    const QString clean = winpath::normalise(path);
    const QString folder = winpath::parent_of(clean);
    const QString n = folder.isEmpty() ? QString() : fs.native(folder);
    return n.isEmpty() ? QString() : n + u'/' + winpath::name_of(clean);
}
}  // namespace

bool FileSystem::own_file_exists(const QString& path) const {
    const QString n = native_own(*this, path);
    return !n.isEmpty() && QFileInfo(n).isFile();
}

bool FileSystem::own_folder_exists(const QString& path) const {
    const QString n = native_own(*this, path);
    return !n.isEmpty() && QFileInfo(n).isDir();
}

qint64 FileSystem::file_size(const QString& path) const {
    const QString n = native(path);
    const QFileInfo info(n);
    return (!n.isEmpty() && info.isFile()) ? info.size() : -1;
}

std::optional<QDateTime> FileSystem::last_modified(const QString& path) const {
    const QString n = native(path);
    const QFileInfo info(n);
    if (n.isEmpty() || !info.exists()) {
        return std::nullopt;
    }
    return info.lastModified();
}

bool FileSystem::create_folder(const QString& path) const {
    const QString n = native(path);
    if (n.isEmpty()) {
        return false;
    }
    if (QFileInfo(n).isDir()) {
        return true;
    }
    return QDir().mkpath(n) && QFileInfo(n).isDir();
}

bool FileSystem::delete_file(const QString& path) const {
    const QString n = native(path);
    return !n.isEmpty() && QFileInfo(n).isFile() && QFile::remove(n);
}

bool FileSystem::copy_file(const QString& from, const QString& to) const {
    const std::optional<QByteArray> bytes = read_all(from);
    return bytes && write_all(to, *bytes);
}

bool FileSystem::replace_file(const QString& from, const QString& to) const {
    const QString nf = native(from);
    const QString nt = native(to);
    if (nf.isEmpty() || nt.isEmpty() || !QFileInfo(nf).isFile()) {
        return false;
    }
    if (rename_over(nf, nt)) {
        sync_folder(QFileInfo(nt).absolutePath());
        return true;
    }
    // Where the target cannot be renamed over (another program holds it open on Windows),
    // its content is replaced instead; the source goes only once the copy stands.
    return copy_file(from, to) && QFile::remove(nf);
}

LockOutcome FileSystem::take_lock(const QString& path, std::chrono::milliseconds stale_after,
                                  std::unique_ptr<HeldLock>* held, QString* holder) const {
    const QString n = native(path);
    if (n.isEmpty() || !QFileInfo(QFileInfo(n).absolutePath()).isDir()) {
        return LockOutcome::Failed;
    }
    auto lock = std::make_unique<QLockFile>(n);
    // A holder on this machine is judged by its process; one on another machine only by the
    // age of its file, and even then the file goes only when its operating-system lock is free.
    lock->setStaleLockTime(stale_after);
    if (lock->tryLock(std::chrono::milliseconds(0))) {
        *held = std::make_unique<HeldLock>(std::move(lock));
        return LockOutcome::Taken;
    }
    if (lock->error() != QLockFile::LockFailedError) {
        return LockOutcome::Failed;
    }
    qint64 pid = 0;
    QString host;
    QString program;
    if (holder != nullptr && lock->getLockInfo(&pid, &host, &program)) {
        *holder = QStringLiteral("process %1 on %2").arg(pid).arg(host);
    }
    return LockOutcome::Held;
}

QStringList FileSystem::file_names(const QString& folder) const {
    const QString n = native(folder);
    if (n.isEmpty()) {
        return {};
    }
    return QDir(n).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

QStringList FileSystem::folder_names(const QString& folder) const {
    const QString n = native(folder);
    if (n.isEmpty()) {
        return {};
    }
    return QDir(n).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

std::optional<QByteArray> FileSystem::read_all(const QString& path) const {
    const QString n = native(path);
    if (n.isEmpty()) {
        return std::nullopt;
    }
    QFile f(n);
    if (!f.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    return f.readAll();
}

std::vector<std::optional<QByteArray>> FileSystem::read_all_in(const QString& folder,
                                                               const QStringList& names) const {
    const QString n = native(folder);
    std::vector<std::optional<QByteArray>> files;
    files.reserve(static_cast<std::size_t>(names.size()));
    for (const QString& name : names) {
        QFile f(n + u'/' + name);
        if (!n.isEmpty() && f.open(QIODevice::ReadOnly)) {
            files.push_back(f.readAll());
        } else {
            files.push_back(read_all(winpath::join(folder, name)));
        }
    }
    return files;
}

bool FileSystem::write_all(const QString& path, const QByteArray& bytes) const {
    const QString n = native(path);
    if (n.isEmpty()) {
        return false;
    }
    QSaveFile f(n);
    if (!f.open(QIODevice::WriteOnly)) {
        return false;
    }
    if (f.write(bytes) != bytes.size()) {
        f.cancelWriting();
        return false;
    }
    if (!f.commit()) {
        return false;
    }
    sync_folder(QFileInfo(n).absolutePath());
    return true;
}

}  // namespace korvel::platform
