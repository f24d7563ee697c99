#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include "platform/process_end.h"
#include "store_fixture.h"

using namespace korvel::store;
using korvel::testing::add_staff;
using korvel::testing::StoreTree;
using korvel::ui::Answer;

TEST(HandlePool, RangesLowestFirstAndExhaustion) {
    StoreTree t;
    HandlePool& pool = t.store.pool();
    EXPECT_EQ(t.store.allocate_file_handle(true), 11);
    EXPECT_EQ(t.store.allocate_file_handle(false), 101);
    EXPECT_EQ(t.store.allocate_file_handle(true), 12);
    int h = 11;
    t.store.close_file_handle(h);
    EXPECT_EQ(h, 0);
    EXPECT_EQ(t.store.allocate_file_handle(true), 11);
    for (int i = 13; i <= 100; ++i) {
        ASSERT_EQ(t.store.allocate_file_handle(true), i);
    }
    EXPECT_EQ(pool.open_count(), 91);
    // The system range is full: the user is told, every file is closed, and 0 comes back.
    EXPECT_EQ(t.store.allocate_file_handle(true), 0);
    EXPECT_TRUE(t.dialogs.last_text().startsWith("System error!\nAll available File Handles"));
    EXPECT_EQ(pool.open_count(), 0);
    EXPECT_FALSE(pool.used(101));
}

TEST(HandlePool, CloseAllReopensTheSchoolFile) {
    StoreTree t;
    ASSERT_TRUE(t.store.fs().create_folder(t.store.folders.school));
    ASSERT_TRUE(t.store.open_staff_file());
    ASSERT_TRUE(t.store.is_open(Code::PRSALG));
    int all = HandlePool::kCloseAll;
    t.store.close_file_handle(all);
    EXPECT_FALSE(t.store.is_open(Code::PRSALG));
    EXPECT_TRUE(t.store.is_open(Code::SKL));
    EXPECT_EQ(t.store.pool().open_count(), 1);
}

TEST(OpenByCode, StarOpensEveryStaffFileInAFolderItMakes) {
    StoreTree t;
    ASSERT_TRUE(t.store.open_staff_file("*"));
    for (Code c : kStaffCodes) {
        EXPECT_TRUE(t.store.is_open(c));
        EXPECT_EQ(t.store.count(c), 0);
        const QString name = QString::fromLatin1(layout_of(c).file_name.data());
        EXPECT_TRUE(QFileInfo::exists(t.staff_file(name))) << name.toStdString();
    }
    EXPECT_GE(t.store.state(Code::PRSALG).handle, HandlePool::kGeneralFirst);
    // Opening again closes first: no handle is lost.
    const int before = t.store.pool().open_count();
    ASSERT_TRUE(t.store.open_staff_file("prsalg"));
    EXPECT_EQ(t.store.pool().open_count(), before);
    EXPECT_FALSE(t.store.open_staff_file("SKL"));
    EXPECT_FALSE(t.store.open_staff_file("NOPE"));
}

TEST(OpenByCode, SiblingGuardOnlyLooksForTheMasterFile) {
    StoreTree t;
    t.store.executable_name = "ZOLBRANE";
    t.store.afrikaans = false;
    EXPECT_FALSE(t.store.open_staff_file("PRS_ALG", t.store.folders.staff, false));
    EXPECT_TRUE(t.dialogs.last_text().startsWith(
        "THE FILE STRUCTURES OF THE STAFF DATA BASE HAVE CHANGED!\n\n"));
    EXPECT_FALSE(t.store.fs().folder_exists(t.store.folders.staff));
    // With the master file there the guard says nothing and still opens nothing.
    t.dialogs.clear();
    ASSERT_TRUE(t.store.fs().create_folder(t.store.folders.staff));
    ASSERT_TRUE(t.store.fs().write_all(t.store.folders.staff + "\\prs_alg_random.txt", ""));
    EXPECT_FALSE(t.store.open_staff_file("PRS_ALG", t.store.folders.staff, false));
    EXPECT_TRUE(t.dialogs.shown().isEmpty());
    // With the flag the guard does not hold: the open goes on (and makes its folder).
    EXPECT_FALSE(t.store.open_staff_file("PRS_ALG", "C:\\ELSEWHERE", true));
    EXPECT_TRUE(t.store.fs().folder_exists("C:\\ELSEWHERE"));
    EXPECT_TRUE(t.dialogs.shown().isEmpty());
}

TEST(OpenByCode, SuiteFileFolderMessages) {
    StoreTree t;
    EXPECT_FALSE(t.store.open_suite_file("SKL", "C:\\VESPARINE\\GENERAL\\G1999"));
    EXPECT_EQ(t.dialogs.last_text(),
              QString::fromUtf8("DIE GIDS  C:\\VESPARINE\\GENERAL\\G1999  BESTAAN NIE!"));
    EXPECT_FALSE(t.store.fs().folder_exists("C:\\VESPARINE\\GENERAL\\G1999"));
    // A folder on a drive that does not exist ends the process.
    EXPECT_THROW(t.store.open_suite_file("SKL", "Q:\\VESPARINE\\GENERAL\\G2026"),
                 korvel::ProcessEnd);
    EXPECT_TRUE(t.dialogs.last_text().startsWith("NETWERK AANDRYWER  Q:"));
}

TEST(StaffIndex, DuplicatesLoseTheirPostNumberOnDisk) {
    StoreTree t;
    ASSERT_TRUE(t.store.open_staff_file("PRSALG"));
    add_staff(t.store, "123", "SMIT");
    add_staff(t.store, "  124", "");            // no surname: never indexed
    add_staff(t.store, "125", "DU TOIT", "*");  // inactive: not indexed
    add_staff(t.store, "123", "JONES");         // the duplicate
    add_staff(t.store, "a9", "NEL");
    t.store.build_staff_index();
    EXPECT_EQ(t.store.staff_index.size(), 2);
    EXPECT_TRUE(t.store.find_staff("A9", true));  // without regard to case
    EXPECT_EQ(t.store.state(Code::PRSALG).current, 5);
    EXPECT_EQ(t.store.working(Code::PRSALG).text(PRSALG["PA_VAN"]), "NEL");
    EXPECT_FALSE(t.store.find_staff("124", false));
    EXPECT_FALSE(t.store.find_staff("12", false));  // exact, no prefix search
    // The duplicate's post number is blank in the file itself.
    const QByteArray bytes = t.staff_bytes("prs_alg_random.txt");
    EXPECT_EQ(bytes.mid(3 * 4103, 5), QByteArray("     "));
    EXPECT_EQ(bytes.mid(3 * 4103 + 6, 5), QByteArray("JONES"));
    EXPECT_EQ(bytes.mid(0, 5), QByteArray("123  "));
    // After the scan the working record stands at the last record.
    t.store.build_staff_index();
    EXPECT_EQ(t.store.state(Code::PRSALG).current, 5);
}

TEST(StaffIndex, NulFilledAndPartialRecordsDoNotCrashOrIndex) {
    StoreTree t;
    ASSERT_TRUE(t.store.fs().create_folder(t.store.folders.staff));
    QByteArray bytes(4103 * 2 + 100, '\0');
    std::memcpy(bytes.data() + 4103, "77   ", 5);
    std::memcpy(bytes.data() + 4103 + 6, "BOTHA", 5);
    ASSERT_TRUE(t.store.fs().write_all(t.store.folders.staff + "\\prs_alg_random.txt", bytes));
    ASSERT_TRUE(t.store.open_staff_file("PRSALG"));
    EXPECT_EQ(t.store.count(Code::PRSALG), 2);
    t.store.build_staff_index();
    EXPECT_EQ(t.store.staff_index.size(), 1);
    EXPECT_EQ(t.store.staff_index.value("77"), 2);
}

TEST(RecordLife, AddRefusesBlankAndTakenKeys) {
    StoreTree t;
    ASSERT_TRUE(t.store.open_staff_file("PRSALG"));
    Record& r = t.store.working(Code::PRSALG);
    r.clear();
    r.set_text(PRSALG["PA_VAN"], "SMIT");
    EXPECT_FALSE(t.store.add_staff_record());
    EXPECT_EQ(t.dialogs.last_text(), "POSNOMMER MOET INGEVOER WORD ... VERSOEK GEWEIER!");
    r.set_text(PRSALG["PA_POS_NR"], "123");
    EXPECT_TRUE(t.store.add_staff_record());
    EXPECT_EQ(t.store.count(Code::PRSALG), 1);
    t.store.afrikaans = false;
    EXPECT_FALSE(t.store.add_staff_record());
    EXPECT_EQ(t.dialogs.last_text(), "POST NUMBER 123 ALREADY EXIST ... REQUEST DENIED!");
    EXPECT_EQ(t.store.count(Code::PRSALG), 1);
}

TEST(RecordLife, DeleteIsTwoStepsAndReactivationComesBack) {
    StoreTree t;
    ASSERT_TRUE(t.store.open_staff_file("PRSALG"));
    add_staff(t.store, "123", "SMIT");
    t.store.build_staff_index();
    ASSERT_TRUE(t.store.find_staff("123", true));
    const Field& state = PRSALG["PA_AKTIEF"];
    // An active record cannot be deleted; the questions default to No.
    EXPECT_FALSE(t.store.delete_staff_record());
    EXPECT_FALSE(t.store.inactivate_staff_record());
    EXPECT_EQ(t.dialogs.last_text(), "WIL U DIE REKORD ONAKTIEF MAAK ?");
    t.dialogs.answer(Answer::Yes);
    EXPECT_TRUE(t.store.inactivate_staff_record());
    EXPECT_FALSE(t.store.find_staff("123", false));
    t.dialogs.answer(Answer::Yes);
    EXPECT_TRUE(t.store.reactivate_staff_record());
    t.store.read_record(Code::PRSALG, 1);
    EXPECT_EQ(t.store.working(Code::PRSALG).text(state), "");
    t.dialogs.answer(Answer::Yes);
    ASSERT_TRUE(t.store.inactivate_staff_record());
    t.dialogs.answer(Answer::Yes);
    EXPECT_TRUE(t.store.delete_staff_record());
    EXPECT_EQ(t.dialogs.last_text(), "WIL U DIE REKORD PERMANENT VERWYDER ?");
    t.store.read_record(Code::PRSALG, 1);
    EXPECT_EQ(t.store.working(Code::PRSALG).text(state), "D");
    EXPECT_EQ(t.store.count(Code::PRSALG), 1);  // dead until the compaction
}

TEST(FieldNumbers, AssignClearAndOverflow) {
    StoreTree t;
    ASSERT_TRUE(t.store.open_staff_file("PRSALG"));
    add_staff(t.store, "123", "SMIT");
    Record& r = t.store.working(Code::PRSALG);
    EXPECT_EQ(t.store.set_staff_field(3, "NEL"), FieldAssign::Done);
    EXPECT_EQ(r.text(PRSALG["PA_VAN"]), "NEL");
    EXPECT_EQ(t.store.set_staff_field(10, "2016.02.29"), FieldAssign::Done);
    EXPECT_EQ(r.date(PRSALG["PA_G_DATUM"]), QDate(2016, 2, 29));
    EXPECT_EQ(t.store.set_staff_field(10, "2016.02.30"), FieldAssign::NotANumber);
    EXPECT_EQ(t.store.set_staff_field(20, "14"), FieldAssign::Done);
    EXPECT_EQ(t.store.set_staff_field(20, "abc"), FieldAssign::NotANumber);
    EXPECT_EQ(r.int16(PRSALG["PA_REQV"]), 14);
    // Slot 1 of the child names.
    EXPECT_EQ(t.store.set_staff_field(52, "ANNA"), FieldAssign::Done);
    EXPECT_EQ(r.text(PRSALG["PL_KIND"], 1), "ANNA");
    EXPECT_EQ(r.text(PRSALG["PL_KIND"], 0), "");
    // 40000 in a 16-bit field overflows: reported, and the record on disk stays as it was.
    ASSERT_TRUE(t.store.write_record(Code::PRSALG, 1));
    const QByteArray before = t.staff_bytes("prs_alg_random.txt");
    const int salary = 71;  // PB_SALARIS
    ASSERT_EQ(staff_field_by_number(salary)->field->name, "PB_SALARIS");
    EXPECT_EQ(t.store.set_staff_field(salary, "40000"), FieldAssign::Overflow);
    EXPECT_EQ(t.store.set_staff_field(salary, "12,345.67"), FieldAssign::Done);
    EXPECT_EQ(r.int16(PRSALG["PB_SALARIS"]), 12346);
    EXPECT_EQ(t.staff_bytes("prs_alg_random.txt"), before);
    t.store.clear_staff_record();
    EXPECT_EQ(r.text(PRSALG["PA_POS_NR"]), "");
    EXPECT_EQ(r.int16(PRSALG["PB_SALARIS"]), 0);
}

TEST(FieldNumbers, MemberClearStopsAtFortyNine) {
    StoreTree t;
    Record& m = t.store.working(Code::BHRLGM);
    std::memset(m.data(), 'x', static_cast<std::size_t>(m.size()));
    t.store.clear_member_record();
    EXPECT_EQ(m.text(BHRLGM["BL_VAN"]), "");
    EXPECT_EQ(m.raw(BHRLGM["BL_RES_823"]), QByteArray(4, '\0'));
    // Fields past number 49 are not touched by the clear.
    EXPECT_EQ(m.raw(BHRLGM["BL_RES_827"]), QByteArray(4, 'x'));
    EXPECT_EQ(m.text(BHRLGM["BL_GEBRUIKER"]), QString(100, u'x'));
}

TEST(Companions, AttendanceAndSubjectRecordsAreMadeOnce) {
    StoreTree t;
    ASSERT_TRUE(t.store.open_staff_file());
    t.store.ensure_attendance_record("123");
    t.store.ensure_attendance_record("123 ");
    t.store.ensure_subject_record("123");
    t.store.ensure_subject_record("123");
    t.store.ensure_subject_record("");
    EXPECT_EQ(t.store.count(Code::PRSAFW), 1);
    EXPECT_EQ(t.store.count(Code::PRSVAK), 1);
    const QByteArray afw = t.staff_bytes("prs_afw_random.txt");
    EXPECT_EQ(afw, QByteArray("123  ") + QByteArray(371, '.') + QByteArray(742, '.'));
    const QByteArray vak = t.staff_bytes("prs_vak_random.txt");
    ASSERT_EQ(vak.size(), 1160);
    EXPECT_EQ(vak.left(5 + 528 + 198), QByteArray("123  ") + QByteArray(528 + 198, ' '));
    EXPECT_EQ(vak.mid(731, 264), QByteArray(264, '\0'));
}

TEST(LuritsSeed, FromLastYearElseFromTheIdentityFile) {
    StoreTree t;
    const QString last_year = "C:\\VESPARINE\\STAFF\\P2025";
    ASSERT_TRUE(t.store.fs().create_folder(t.store.folders.staff));
    // The identity file of this year: four quoted values a line.
    ASSERT_TRUE(t.store.fs().write_all(
        t.store.folders.staff + "\\lurits_staffid.txt",
        "\"8001015009087\",\"123456789\",1,2\r\n\"7502020123085\",\"987654321\",0,0\r\n"));
    ASSERT_TRUE(t.store.open_staff_file("PRSLURITS"));
    EXPECT_EQ(t.store.count(Code::PRSLURITS), 2);
    t.store.read_record(Code::PRSLURITS, 2);
    EXPECT_EQ(t.store.working(Code::PRSLURITS).text(PRSLURITS["LU_NR"]), "987654321");
    t.store.read_record(Code::PRSLURITS, 1);
    EXPECT_EQ(t.store.working(Code::PRSLURITS).int16(PRSLURITS["LU_VAL2"]), 2);

    // A year whose file is empty takes last year's file whole, and not the identity file; an
    // empty file of last year is copied, and then the identity file serves.
    QByteArray one(26, ' ');
    one.replace(0, 13, "6001015800085");
    for (const QByteArray& last : {one, QByteArray()}) {
        SCOPED_TRACE(last.isEmpty() ? "an empty file last year" : "a record last year");
        StoreTree u;
        ASSERT_TRUE(u.store.fs().create_folder(last_year));
        ASSERT_TRUE(u.store.fs().create_folder(u.store.folders.staff));
        ASSERT_TRUE(u.store.fs().write_all(last_year + "\\lurits_random.txt", last));
        ASSERT_TRUE(u.store.fs().write_all(u.store.folders.staff + "\\lurits_staffid.txt",
                                           "\"1\",\"2\",0,0\r\n\"3\",\"4\",0,0\r\n"));
        ASSERT_TRUE(u.store.open_staff_file("PRSLURITS"));
        EXPECT_EQ(u.store.count(Code::PRSLURITS), last.isEmpty() ? 2 : 1);
        if (!last.isEmpty()) {
            EXPECT_EQ(u.store.fs().read_all(u.store.folders.staff + "\\lurits_random.txt"), last);
        }
        EXPECT_EQ(u.store.pool().open_count(), 1);
    }
}
