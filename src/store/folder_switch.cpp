#include "store/folder_switch.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSysInfo>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "platform/winpath.h"

#ifdef Q_OS_UNIX
#include <signal.h>
#endif

namespace korvel::store {

bool FileOps::step() {
    ++count_;
    return !before_each || before_each(count_);
}

bool FileOps::copy_file(const QString& from, const QString& to) {
    if (!step()) {
        return false;
    }
    const QString target = fs_.native(to);
    QFile::remove(target);
    return QFile::copy(fs_.native(from), target);
}

bool FileOps::remove_file(const QString& path) {
    if (!step()) {
        return false;
    }
    const QString native = fs_.native(path);
    return QFile::remove(native) || !QFileInfo::exists(native);
}

bool FileOps::remove_tree(const QString& path) {
    if (!step()) {
        return false;
    }
    const QString native = fs_.native(path);
    return native.isEmpty() ? false
                            : (QDir(native).removeRecursively() || !QFileInfo::exists(native));
}

bool FileOps::rename(const QString& from, const QString& to) {
    if (!step()) {
        return false;
    }
    const QString a = fs_.native(from);
    const QString b = fs_.native(to);
    if (a.isEmpty() || b.isEmpty()) {
        return false;
    }
    std::error_code error;
    std::filesystem::rename(a.toStdString(), b.toStdString(), error);
    return !error;
}

bool FileOps::make_folder(const QString& path) {
    if (!step()) {
        return false;
    }
    return fs_.create_folder(path);
}

bool FileOps::write_file(const QString& path, const QByteArray& bytes) {
    if (!step()) {
        return false;
    }
    return fs_.write_all(path, bytes);
}

SwitchPaths switch_paths(const QString& target) {
    const QString parent = winpath::parent_of(target);
    return {target, winpath::join(parent, QStringLiteral("~yearend.new")),
            winpath::join(parent, QStringLiteral("~yearend.old")),
            winpath::join(parent, QStringLiteral("~yearend.switch")),
            winpath::join(parent, QStringLiteral("~yearend.lock"))};
}

// Long enough for the largest year to be copied, short enough for a dead workstation's lock not
// to keep the year closed for the day.
constexpr std::chrono::minutes kStaleSwitchLock{15};

platform::LockOutcome take_switch_lock(const platform::FileSystem& fs, const QString& target,
                                       std::unique_ptr<platform::HeldLock>* held) {
    return fs.take_lock(switch_paths(target).lock, kStaleSwitchLock, held);
}

bool switch_at_work(const platform::FileSystem& fs, const QString& target) {
    const QString lock = switch_paths(target).lock;
    qint64 pid = 0;
    QString host;
    QString program;
    if (!fs.file_exists(lock) || !QLockFile(fs.native(lock)).getLockInfo(&pid, &host, &program)) {
        return false;
    }
    if (host == QSysInfo::machineHostName()) {
#ifdef Q_OS_UNIX
        return pid > 0 && (::kill(pid_t(pid), 0) == 0 || errno == EPERM);
#else
        return true;  // no way to ask here: the lock is taken at its word
#endif
    }
    const auto taken = fs.last_modified(lock);
    return taken && taken->secsTo(QDateTime::currentDateTime()) <
                        std::chrono::seconds(kStaleSwitchLock).count();
}

bool is_index_file(const QString& name) {
    return name.toUpper().contains(QStringLiteral(".NTX"));
}

bool delete_index_files(FileOps& ops, const QString& folder) {
    bool all = true;
    for (const QString& name : ops.fs().file_names(folder)) {
        if (is_index_file(name)) {
            all = ops.remove_file(winpath::join(folder, name)) && all;
        }
    }
    return all;
}

namespace {

// Every step can run again after a crash: it looks at what stands before it acts.
bool finish_switch(FileOps& ops, const SwitchPaths& p, const QString& from_folder) {
    const platform::FileSystem& fs = ops.fs();
    if (fs.folder_exists(p.staging)) {
        if (fs.folder_exists(p.target)) {
            if (fs.folder_exists(p.retired) && !ops.remove_tree(p.retired)) {
                return false;
            }
            if (!ops.rename(p.target, p.retired)) {
                return false;
            }
        }
        if (!ops.rename(p.staging, p.target)) {
            return false;
        }
    }
    if (!from_folder.isEmpty() && !delete_index_files(ops, from_folder)) {
        return false;
    }
    if (fs.folder_exists(p.retired) && !ops.remove_tree(p.retired)) {
        return false;
    }
    return ops.remove_file(p.journal);
}

}  // namespace

bool commit_folder_switch(FileOps& ops, const QString& target, const QString& from_folder) {
    const SwitchPaths p = switch_paths(target);
    // A leftover of a switch long finished must not be taken for the old target.
    if (ops.fs().folder_exists(p.retired) && !ops.remove_tree(p.retired)) {
        return false;
    }
    const QByteArray journal =
        (target + QStringLiteral("\r\n") + from_folder + QStringLiteral("\r\n")).toUtf8();
    if (!ops.write_file(p.journal, journal)) {
        return false;
    }
    return finish_switch(ops, p, from_folder);
}

void settle_folder_switch(const platform::FileSystem& fs, const QString& folder) {
    const QString parent = winpath::parent_of(folder);
    if (parent.isEmpty()) {
        return;
    }
    const SwitchPaths here = switch_paths(folder);
    const bool journal = fs.own_file_exists(here.journal);
    if (!journal && !fs.own_folder_exists(here.staging)) {
        return;
    }
    std::unique_ptr<platform::HeldLock> lock;
    if (take_switch_lock(fs, folder, &lock) == platform::LockOutcome::Held) {
        return;  // the closing that made them is still at work
    }
    FileOps ops(fs);
    if (!journal) {
        ops.remove_tree(here.staging);
        return;
    }
    const QStringList lines = QString::fromUtf8(fs.read_all(here.journal).value_or(QByteArray()))
                                  .split(QStringLiteral("\r\n"));
    // A journal cut short names no target: the switch had not begun, so nothing moved yet.
    if (lines.size() < 3 ||
        winpath::parent_of(lines.at(0)).compare(parent, Qt::CaseInsensitive) != 0) {
        ops.remove_tree(here.staging);
        ops.remove_file(here.journal);
        return;
    }
    finish_switch(ops, switch_paths(lines.at(0)), lines.at(1));
}

}  // namespace korvel::store
