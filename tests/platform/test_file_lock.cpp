// The lock file of a folder's rebuilds, between processes: one holder at a time, and a lock
// whose process died is taken over. The other process is a fork of this one.

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <chrono>

#include "platform/file_system.h"

#ifndef Q_OS_WIN
#include <sys/wait.h>
#include <unistd.h>

using korvel::platform::DriveMap;
using korvel::platform::FileSystem;
using korvel::platform::HeldLock;
using korvel::platform::LockOutcome;

namespace {

constexpr std::chrono::minutes kStale{15};
const QString kLock = QStringLiteral("F:\\x.lock");

// A child process that takes the lock, says so through a pipe and then either dies at once
// without releasing it or holds it until the pipe from the parent closes.
struct Child {
    Child(const FileSystem& fs, bool die) {
        int up[2];
        int down[2];
        EXPECT_EQ(::pipe(up), 0);
        EXPECT_EQ(::pipe(down), 0);
        pid = ::fork();
        if (pid == 0) {
            ::close(up[0]);
            ::close(down[1]);
            std::unique_ptr<HeldLock> held;
            const char took = fs.take_lock(kLock, kStale, &held) == LockOutcome::Taken ? 'y' : 'n';
            (void)::write(up[1], &took, 1);
            if (!die) {
                char c;
                (void)::read(down[0], &c, 1);
            }
            ::_exit(0);  // no destructors: a dying holder leaves its lock file behind
        }
        ::close(up[1]);
        ::close(down[0]);
        char took = 'n';
        EXPECT_EQ(::read(up[0], &took, 1), 1);
        ::close(up[0]);
        to_child = down[1];
        taken = took == 'y';
    }
    void end() {
        ::close(to_child);
        ::waitpid(pid, nullptr, 0);
    }
    pid_t pid;
    int to_child;
    bool taken;
};

}  // namespace

TEST(FileLock, OneHolderAtATimeAndADeadHoldersLockTakenOver) {
    QTemporaryDir tmp;
    const FileSystem fs(DriveMap::explicit_map({{"F:", tmp.path()}}));

    Child living(fs, false);
    ASSERT_TRUE(living.taken);
    std::unique_ptr<HeldLock> held;
    QString holder;
    EXPECT_EQ(fs.take_lock(kLock, kStale, &held, &holder), LockOutcome::Held);
    EXPECT_TRUE(holder.startsWith(QStringLiteral("process %1 on ").arg(living.pid)));
    living.end();

    Child dead(fs, true);
    ASSERT_TRUE(dead.taken);
    dead.end();
    EXPECT_TRUE(QFile::exists(tmp.path() + "/x.lock"));  // left behind
    ASSERT_EQ(fs.take_lock(kLock, kStale, &held), LockOutcome::Taken);
    // Held in this process too: a second taker here is refused as well.
    std::unique_ptr<HeldLock> second;
    EXPECT_EQ(fs.take_lock(kLock, kStale, &second), LockOutcome::Held);
    held.reset();
    EXPECT_FALSE(QFile::exists(tmp.path() + "/x.lock"));
    EXPECT_EQ(fs.take_lock("F:\\no folder\\x.lock", kStale, &held), LockOutcome::Failed);
}

#endif
