#include "platform/single_instance.h"

#include <QDir>
#include <QLockFile>
#include <QStandardPaths>

#include "platform/user.h"

namespace korvel::platform {

namespace {

QString file_safe(const QString& text) {
    QString out;
    out.reserve(text.size());
    for (const QChar c : text.toLower()) {
        const bool safe = (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9') || c == u'-' ||
                          c == u'_' || c == u'.';
        out += safe ? c : QChar(u'_');
    }
    return out;
}

}  // namespace

SingleInstance::SingleInstance(QString lock_folder) : folder_(std::move(lock_folder)) {
    if (folder_.isEmpty()) {
        folder_ = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
    }
}

SingleInstance::~SingleInstance() = default;

QString SingleInstance::lock_file_for(const QString& name) const {
    // The temporary folder is shared by all users on some systems: the user's name keeps one
    // user's instance from blocking another's.
    QString user = file_safe(current_user());
    if (user.isEmpty()) {
        user = QStringLiteral("user");
    }
    QString base = file_safe(name.trimmed());
    if (base.isEmpty() || base.startsWith(u'.')) {
        base.prepend(u'_');
    }
    return QDir(folder_).filePath(base + u'-' + user + QStringLiteral(".lock"));
}

bool SingleInstance::try_acquire(const QString& name) {
    if (lock_) {
        if (QString::compare(name.trimmed(), name_.trimmed(), Qt::CaseInsensitive) == 0) {
            return true;
        }
        release();
    }
    QDir().mkpath(folder_);
    auto lock = std::make_unique<QLockFile>(lock_file_for(name));
    // Never judge a lock stale by its age: an instance may run for weeks. A lock is stale only
    // when the process that wrote it is gone, which QLockFile checks by its process id.
    lock->setStaleLockTime(0);
    if (lock->tryLock(0)) {
        lock_ = std::move(lock);
        name_ = name;
        return true;
    }
    return lock->error() != QLockFile::LockFailedError;
}

bool SingleInstance::held() const {
    return lock_ != nullptr;
}

void SingleInstance::release() {
    lock_.reset();  // the destructor of QLockFile unlocks and removes the file
    name_.clear();
}

}  // namespace korvel::platform
