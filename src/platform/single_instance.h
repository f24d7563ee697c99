#pragma once
// One running copy of a program per user and machine.
//
// The lock is a lock file in the temporary folder that holds the owner's process id. A lock left
// behind by an instance that crashed is found stale (its process no longer runs) and taken over;
// a lock held by a running instance is never taken, however long it has been held.

#include <QString>
#include <memory>

class QLockFile;

namespace korvel::platform {

class SingleInstance {
  public:
    // lock_folder: where the lock files lie; blank means the temporary folder of the user.
    explicit SingleInstance(QString lock_folder = {});
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    // True when no other instance of that name runs for this user on this machine; the name is
    // then held until release() or destruction. False when another instance holds it. Names
    // compare without regard to case, as executable names do on Windows.
    //
    // When the lock cannot be made at all (the folder cannot be written), nobody can be shown
    // to hold it: the answer is true, so that a broken temporary folder never stops the
    // program, and held() stays false.
    //
    // Called again while holding: true for the same name; another name releases the first.
    bool try_acquire(const QString& name);

    bool held() const;
    void release();

    // The lock file used for a name: "<folder>/<name>-<user>.lock", with every character
    // outside letters, digits, '-', '_' and '.' made '_', all in lower case.
    QString lock_file_for(const QString& name) const;

  private:
    QString folder_;
    QString name_;
    std::unique_ptr<QLockFile> lock_;
};

}  // namespace korvel::platform
