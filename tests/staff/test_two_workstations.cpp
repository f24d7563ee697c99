#include <gtest/gtest.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

namespace {

// One run of the probe: a second workstation on the same data tree. Exit code, then output.
std::pair<int, QString> probe(const QString& tree, const QString& user, const QString& action) {
    QProcess p;
    p.start(QStringLiteral(KORVEL_LOCK_PROBE), {tree, user, action, "STAFF", "8001015009087"});
    if (!p.waitForFinished(30000)) {
        p.kill();
        return {-1, "timed out"};
    }
    return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput())};
}

TEST(TwoWorkstations, TheSecondIsRefusedUntilTheFirstUnlocks) {
    QTemporaryDir dir;
    ASSERT_TRUE(QDir(dir.path()).mkpath("VESPARINE/GENERAL/G2026"));
    ASSERT_TRUE(QDir(dir.path()).mkpath("ProgramData/VESPARINE"));

    EXPECT_EQ(probe(dir.path(), "ANNA", "lock"), std::make_pair(0, QString("LOCKED\n\n")));
    const auto [code, text] = probe(dir.path(), "BEN", "lock");
    EXPECT_EQ(code, 1);
    EXPECT_TRUE(text.startsWith("REFUSED\nRECORD : TYPE = STAFF, IDENTIFICATION = 8001015009087"))
        << text.toStdString();
    EXPECT_TRUE(text.contains("     USER\tANNA\n"));

    EXPECT_EQ(probe(dir.path(), "ANNA", "unlock").first, 0);
    EXPECT_EQ(probe(dir.path(), "BEN", "lock").first, 0);
    EXPECT_TRUE(probe(dir.path(), "ANNA", "lock").second.contains("     USER\tBEN\n"));
}

}  // namespace
