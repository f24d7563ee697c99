// One instance per name: within a process, across processes, and after a crash. The other
// process is this test program started again, running only SingleInstanceChild.Run.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

#include "platform/single_instance.h"

namespace korvel::platform {
namespace {

// The child's orders: "<lock folder>|<name>|<mode>", mode "probe" (try and end), "hold" (try,
// then hold until standard input closes) or "crash" (try, then end without releasing).
constexpr char child_orders[] = "KORVEL_SINGLE_INSTANCE_CHILD";

TEST(SingleInstanceChild, Run) {
    const QString orders = qEnvironmentVariable(child_orders);
    if (orders.isEmpty()) {
        GTEST_SKIP() << "runs only when started by another test";
    }
    const QStringList parts = orders.split(u'|');
    ASSERT_EQ(parts.size(), 3);
    SingleInstance instance(parts[0]);
    const bool ok = instance.try_acquire(parts[1]);
    std::printf("child: %s\n", ok ? "held" : "refused");
    std::fflush(stdout);
    if (parts[2] == QLatin1String("crash")) {
        std::_Exit(0);  // no destructors: the lock file stays behind
    }
    if (parts[2] == QLatin1String("hold")) {
        std::string line;
        std::getline(std::cin, line);
    }
}

QString self_path() {
    static int argc = 1;
    static char name[] = "test_single_instance";
    static char* argv[] = {name, nullptr};
    static QCoreApplication* app = new QCoreApplication(argc, argv);
    return app->applicationFilePath();
}

class Child {
  public:
    Child(const QString& folder, const QString& name, const QString& mode) {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QString::fromLatin1(child_orders), folder + u'|' + name + u'|' + mode);
        process_.setProcessEnvironment(env);
        process_.setProgram(self_path());
        process_.setArguments({QStringLiteral("--gtest_filter=SingleInstanceChild.Run")});
        process_.start();
    }
    ~Child() {
        finish();
        if (process_.state() != QProcess::NotRunning) {
            process_.kill();
            process_.waitForFinished(5000);
        }
    }

    // "held" or "refused"; blank when the child said neither in time.
    QString answer() {
        while (true) {
            while (process_.canReadLine()) {
                const QString line = QString::fromLocal8Bit(process_.readLine()).trimmed();
                if (line.startsWith(QLatin1String("child: "))) {
                    return line.mid(7);
                }
            }
            if (!process_.waitForReadyRead(15000)) {
                return {};
            }
        }
    }

    // Lets a holding child go and waits for it to end.
    bool finish() {
        if (process_.state() == QProcess::NotRunning) {
            return true;
        }
        process_.closeWriteChannel();
        return process_.waitForFinished(15000);
    }

  private:
    QProcess process_;
};

class SingleInstanceTest : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(dir.isValid()); }
    QTemporaryDir dir;
};

TEST_F(SingleInstanceTest, SecondAcquireInTheSameProcessFailsUntilReleased) {
    SingleInstance first(dir.path());
    SingleInstance second(dir.path());
    ASSERT_TRUE(first.try_acquire(QStringLiteral("KORVEL")));
    EXPECT_TRUE(first.held());
    EXPECT_TRUE(first.try_acquire(QStringLiteral("KORVEL")));  // already holds it

    EXPECT_FALSE(second.try_acquire(QStringLiteral("KORVEL")));
    EXPECT_FALSE(second.try_acquire(QStringLiteral("korvel")));
    EXPECT_FALSE(second.held());
    EXPECT_TRUE(second.try_acquire(QStringLiteral("LINDOVER")));  // another name is free

    // Holding another name gives up the first.
    EXPECT_TRUE(first.try_acquire(QStringLiteral("ORSTELL")));
    EXPECT_TRUE(second.try_acquire(QStringLiteral("KORVEL")));

    second.release();
    EXPECT_FALSE(second.held());
    SingleInstance third(dir.path());
    EXPECT_TRUE(third.try_acquire(QStringLiteral("KORVEL")));
}

TEST_F(SingleInstanceTest, AnotherProcessIsRefusedWhileTheNameIsHeld) {
    {
        SingleInstance mine(dir.path());
        ASSERT_TRUE(mine.try_acquire(QStringLiteral("KORVEL")));
        Child child(dir.path(), QStringLiteral("KORVEL"), QStringLiteral("probe"));
        EXPECT_EQ(child.answer(), "refused");
    }
    Child child(dir.path(), QStringLiteral("KORVEL"), QStringLiteral("probe"));
    EXPECT_EQ(child.answer(), "held");
}

TEST_F(SingleInstanceTest, ThisProcessIsRefusedWhileAnotherHoldsTheName) {
    Child child(dir.path(), QStringLiteral("KORVEL"), QStringLiteral("hold"));
    ASSERT_EQ(child.answer(), "held");
    SingleInstance mine(dir.path());
    EXPECT_FALSE(mine.try_acquire(QStringLiteral("KORVEL")));

    // However old the lock, it is not stale while its owner runs.
    QFile lock(mine.lock_file_for(QStringLiteral("KORVEL")));
    ASSERT_TRUE(lock.open(QIODevice::ReadWrite));
    ASSERT_TRUE(lock.setFileTime(QDateTime::currentDateTime().addDays(-3),
                                 QFileDevice::FileModificationTime));
    lock.close();
    EXPECT_FALSE(mine.try_acquire(QStringLiteral("KORVEL")));
    ASSERT_TRUE(child.finish());
    EXPECT_TRUE(mine.try_acquire(QStringLiteral("KORVEL")));
}

TEST_F(SingleInstanceTest, LockLeftByACrashedInstanceIsTakenOver) {
    SingleInstance mine(dir.path());
    {
        Child child(dir.path(), QStringLiteral("KORVEL"), QStringLiteral("crash"));
        ASSERT_EQ(child.answer(), "held");
        ASSERT_TRUE(child.finish());
    }
    ASSERT_TRUE(QFile::exists(mine.lock_file_for(QStringLiteral("KORVEL"))));
    EXPECT_TRUE(mine.try_acquire(QStringLiteral("KORVEL")));
}

TEST_F(SingleInstanceTest, AnUnwritableLockFolderDoesNotStopTheProgram) {
    QFile blocker(dir.filePath(QStringLiteral("plain_file")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    SingleInstance mine(dir.filePath(QStringLiteral("plain_file/locks")));
    EXPECT_TRUE(mine.try_acquire(QStringLiteral("KORVEL")));
    EXPECT_FALSE(mine.held());
}

}  // namespace
}  // namespace korvel::platform
