#include <gtest/gtest.h>

#include <QDate>
#include <QFile>
#include <QRegularExpression>

#include "staff_fixture.h"
#include "store/locks.h"

using namespace korvel::store;
using korvel::testing::read_file;
using korvel::testing::StaffTree;
using korvel::testing::write_file;

namespace {

QByteArray padded(const QByteArray& text, int width) {
    return text.leftJustified(width, ' ', true);
}

QByteArray date_bytes(const QDate& d) {
    Record r(LOCK);
    r.set_date(LOCK["LK_DATUM"], d);
    return r.raw(LOCK["LK_DATUM"]);
}

class Locks : public ::testing::Test {
  protected:
    QString lock_file() const {
        return tree.native(tree.session.folders.general_year, "user_lock_record.txt");
    }
    QString audit_file() const {
        return tree.native(tree.session.folders.workstation, "Audit_Trail.txt");
    }
    bool lock(const QString& user, const QString& type, QString id) {
        return lock_record(tree.session, type, id, user);
    }
    StaffTree tree;
};

TEST_F(Locks, LockAndAuditRecordsAreWrittenByteForByte) {
    tree.session.folders.admin = "C:\\VESPARINE\\ADMIN\\A VERY LONG FOLDER NAME INDEED";
    ASSERT_TRUE(lock("ANNA", "STAFF", "8001015009087"));

    const QByteArray lk = read_file(lock_file());
    ASSERT_EQ(lk.size(), 140);
    EXPECT_EQ(lk.mid(0, 50), padded("ANNA", 50));
    EXPECT_EQ(lk.mid(50, 8), date_bytes(QDate::currentDate()));
    EXPECT_EQ(lk.mid(58, 20), padded("KORVEL", 20));
    EXPECT_EQ(lk.mid(78, 10), padded("STAFF", 10));
    EXPECT_EQ(lk.mid(88, 2), QByteArray("\xEA\x07", 2));  // 2026
    EXPECT_EQ(lk.mid(90, 50), padded("8001015009087", 50));

    const QByteArray at = read_file(audit_file());
    ASSERT_EQ(at.size(), 258);
    EXPECT_EQ(at.mid(0, 50), padded("ANNA", 50));
    EXPECT_EQ(at.mid(50, 8), date_bytes(QDate::currentDate()));
    EXPECT_TRUE(QRegularExpression("^\\d\\d:\\d\\d:\\d\\d  $")
                    .match(QString::fromLatin1(at.mid(58, 10)))
                    .hasMatch());
    EXPECT_EQ(at.mid(68, 50), padded("STAFF=8001015009087", 50));
    EXPECT_EQ(at.mid(118, 50), padded("", 50));
    EXPECT_EQ(at.mid(168, 30), "C:\\VESPARINE\\ADMIN\\A VERY LONG");
    EXPECT_EQ(at.mid(228, 30), padded("C:\\VESPARINE\\STAFF\\P2026", 30));
}

TEST_F(Locks, AnotherUserIsRefusedInBothLanguagesAndWritesNothing) {
    tree.session.afrikaans = false;
    ASSERT_TRUE(lock("ANNA", "STAFF", "800"));
    EXPECT_FALSE(lock("BEN", "STAFF", "800"));
    EXPECT_EQ(tree.dialogs.last_text(),
              "RECORD : TYPE = STAFF, IDENTIFICATION = 800 IS CURRENTLY IN USE!\n"
              "     USER\tANNA\n     SYSTEM \tKORVEL\n\nPLEASE TRY AGAIN LATER ...");

    tree.session.afrikaans = true;
    tree.session.executable_name = "PENDARIC";
    ASSERT_TRUE(lock("ANNA", "PERSONEEL", "800"));  // the other language's word: no conflict
    tree.session.executable_name = "KORVEL";
    EXPECT_FALSE(lock("BEN", "PERSONEEL", "800"));
    EXPECT_EQ(tree.dialogs.last_text(),
              "REKORD : SOORT = PERSONEEL, IDENTIFIKASIE = 800 IS REEDS IN GEBRUIK!\n"
              "     GEBRUIKER\tANNA\n     STELSEL\tPENDARIC\n\nPROBEER ASSEBLIEF LATER ...");
    EXPECT_TRUE(lock("BEN", "PERSONEEL", "801"));
    EXPECT_EQ(read_file(lock_file()).size(), 3 * 140);
    EXPECT_EQ(read_file(audit_file()).size(), 3 * 258);
}

TEST_F(Locks, SameUserTakesASecondSlotAndOneUnlockFreesOnlyTheFirst) {
    ASSERT_TRUE(lock("ANNA", "STAFF", "800"));
    ASSERT_TRUE(lock("ANNA", "STAFF", "800"));
    unlock_record(tree.session, "STAFF", "800");
    QByteArray lk = read_file(lock_file());
    ASSERT_EQ(lk.size(), 2 * 140);
    EXPECT_EQ(lk.mid(78, 62), padded("", 10) + "\xEA\x07" + padded("", 50));  // year stays
    EXPECT_EQ(lk.mid(0, 50), padded("ANNA", 50));  // the holder stays in the slot
    EXPECT_FALSE(lock("BEN", "STAFF", "800"));

    // Anybody's unlock frees it; the lowest free slot is taken again.
    unlock_record(tree.session, "STAFF", "800");
    EXPECT_TRUE(lock("BEN", "STAFF", "900"));
    lk = read_file(lock_file());
    EXPECT_EQ(lk.size(), 2 * 140);
    EXPECT_EQ(lk.mid(90, 50), padded("900", 50));
}

TEST_F(Locks, NoGeneralYearFolderMeansNoLockingAndNoAuditLine) {
    tree.session.folders.general_year = "C:\\VESPARINE\\GENERAL\\G1999";
    EXPECT_TRUE(lock("ANNA", "STAFF", "800"));
    EXPECT_TRUE(lock("BEN", "STAFF", "800"));
    EXPECT_FALSE(QFile::exists(audit_file()));
}

TEST_F(Locks, TheAuditRingRestartsAfterAThousandLockEventsButNotForForms) {
    QByteArray log(1000 * 258, 'x');
    log.replace(999 * 258 + 118, 8, "PREVIOUS");  // the field nobody writes goes on as it was
    write_file(audit_file(), log);
    log_form_open(tree.session, "sk411_prg", "ANNA");
    QByteArray at = read_file(audit_file());
    ASSERT_EQ(at.size(), 1001 * 258);
    EXPECT_EQ(at.mid(1000 * 258 + 68, 60), padded("sk411_prg", 50) + "PREVIOUSxx");

    ASSERT_TRUE(lock("ANNA", "STAFF", "800"));
    at = read_file(audit_file());
    ASSERT_EQ(at.size(), 258);
    EXPECT_EQ(at.mid(68, 60), padded("STAFF=800", 50) + "PREVIOUSxx");
}

TEST_F(Locks, ForeignLearnerLocksAreClearedWhole) {
    const QString learner = tree.session.folders.admin;
    tree.session.fs().create_folder(learner);
    ASSERT_TRUE(lock("ANNA", "L", learner));
    clear_foreign_lock(tree.session, learner, "ANNA");  // one's own lock stays
    EXPECT_FALSE(lock("BEN", "L", learner));
    clear_foreign_lock(tree.session, learner, "BEN");
    EXPECT_EQ(read_file(lock_file()), padded("", 50) + QByteArray(8, '\0') + padded("", 30) +
                                          QByteArray(2, '\0') + padded("", 50));
    // The learner side's system code cuts the identification at its colon, the caller's too.
    tree.session.system_code = "L";
    QString id = "L7A:7";
    ASSERT_TRUE(lock_record(tree.session, "L", id, "ANNA"));
    EXPECT_EQ(id, "L7A");
    EXPECT_FALSE(lock("BEN", "L", "L7A:9"));
}

TEST_F(Locks, OddLockFilesAndNamesNeverStopTheProgram) {
    // A partial last record of half a record or more counts; its NUL tail is a free slot.
    write_file(lock_file(), QByteArray(140 + 70, 'Z'));
    EXPECT_TRUE(lock("ANNA", "STAFF", "800"));
    EXPECT_EQ(read_file(lock_file()).mid(140, 50), padded("ANNA", 50));
    // Garbage in the type field is somebody else's slot, never a match; NUL slots are free.
    QByteArray garbage(140 * 2, '\0');
    garbage.replace(78, 9, QByteArray("\x01\xff\x80\t\r\nXYZ", 9));
    write_file(lock_file(), garbage);
    EXPECT_TRUE(lock("BEN", "STAFF", "800"));
    EXPECT_EQ(read_file(lock_file()).mid(140 + 78, 10), padded("STAFF", 10));
    // A name longer than the field, or with a NUL, is cut and still equals itself.
    const QString long_name = QString(60, u'Q') + QChar(0) + "tail";
    ASSERT_TRUE(lock(long_name, "STAFF", "801"));
    EXPECT_TRUE(lock(long_name, "STAFF", "801"));
    EXPECT_FALSE(lock("ÉMILE", "STAFF", "801"));
}

}  // namespace
