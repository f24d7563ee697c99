#include "platform/file_system.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <filesystem>
#include <system_error>

namespace korvel::platform {

bool FileSystem::folder_exists(const QString& path) const {
    const QString n = native(path);
    return !n.isEmpty() && QFileInfo(n).isDir();
}

bool FileSystem::file_exists(const QString& path) const {
    const QString n = native(path);
    return !n.isEmpty() && QFileInfo(n).isFile();
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
    std::error_code ec;
    std::filesystem::rename(std::filesystem::path(nf.toStdU16String()),
                            std::filesystem::path(nt.toStdU16String()), ec);
    if (!ec) {
        return true;
    }
    // Where the target cannot be renamed over (another program holds it open on Windows),
    // its content is replaced instead; the source goes only once the copy stands.
    return copy_file(from, to) && QFile::remove(nf);
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
    return f.commit();
}

}  // namespace korvel::platform
