#include <gtest/gtest.h>

#include <QFile>

#include "attendance/attendance_register.h"
#include "attendance/month_calendar.h"
#include "attendance_fixture.h"

using namespace korvel::attendance;
using korvel::testing::add_person;
using korvel::testing::AttendanceTree;
using korvel::testing::col_of_day;
using korvel::testing::open_month;
using korvel::testing::read_file;
using korvel::testing::row_of;
using korvel::testing::write_file;

namespace {

// In March 2026 the 1st is a Sunday: the 16th stands in row 3, column 1 (Monday).
constexpr int kRow16 = 3;
constexpr int kCol16 = 1;

class Calendar : public ::testing::Test {
  protected:
    void SetUp() override { add_person(tree.session, {.post = "10", .surname = "ZULU"}); }
    // Marks the 16th of March a public holiday and saves the calendar in the language in use.
    void save_march_holiday(AttendanceRegister& reg) {
        reg.maand_lys.list_index = 2;
        reg.maand_lys_right_click();
        ASSERT_TRUE(reg.calendar.raam_visible);
        EXPECT_EQ(reg.calendar.maand_kalender.text(kRow16, kCol16), "16");
        reg.calendar.maand_kalender_click(kRow16, kCol16);
        ASSERT_TRUE(reg.calendar.mk_opsies.visible);
        reg.calendar.mk_opsies_click(1);
        EXPECT_EQ(reg.calendar.maand_kalender.text(kRow16, kCol16), "16(O)");
        EXPECT_EQ(reg.calendar.maand_kalender.at(kRow16, kCol16).fore, kBlue);
        reg.calendar.mk_save_click();
        EXPECT_FALSE(reg.calendar.raam_visible);
    }
    AttendanceTree tree;
};

TEST_F(Calendar, SavedInOneLanguageIsFoundFromTheOther) {
    {
        AttendanceRegister reg(tree.session, true);
        reg.form_load();
        save_march_holiday(reg);
    }
    const QString afrikaans_file = tree.calendar_path("maand_kalender_MAART.2026");
    const QByteArray bytes = read_file(afrikaans_file);
    EXPECT_TRUE(bytes.startsWith("\"S\tM\tD\tW\tD\tV\tS\r1\t2\t3\t4\t5\t6\t7\r8\t"));
    EXPECT_TRUE(bytes.contains("\t16(O)\t17\t"));
    EXPECT_TRUE(bytes.endsWith("\"\r\n"));

    tree.session.afrikaans = false;
    auto reg = open_month(tree.session, 3);
    EXPECT_EQ(reg->calendar.holiday[16], "O");
    const int row = row_of(*reg, "10");
    EXPECT_EQ(reg->afw_grid.at(row, col_of_day(16)).back, kNonSchoolColour);
    reg->afw_grid_click(row, col_of_day(16));
    reg->afw_grid_click(row, col_of_day(16));
    EXPECT_EQ(reg->afw_grid.text(row, col_of_day(16)), "");

    // Undo in English finds no English file: the Afrikaans one stays and still rules.
    reg->task_options_click(1);
    reg->calendar.mk_undo_click();
    EXPECT_TRUE(QFile::exists(afrikaans_file));
    EXPECT_EQ(reg->calendar.maand_kalender.text(kRow16, kCol16), "16(O)");
    reg->calendar.mk_save_click();
    EXPECT_TRUE(QFile::exists(afrikaans_file));
    EXPECT_TRUE(QFile::exists(tree.calendar_path("maand_kalender_MARCH.2026")));
}

TEST_F(Calendar, UndoRemovesTheOwnFileAndLaysTheMonthOutPlainly) {
    AttendanceRegister reg(tree.session, true);
    reg.form_load();
    save_march_holiday(reg);
    reg.calendar.mk_undo_click();
    EXPECT_FALSE(QFile::exists(tree.calendar_path("maand_kalender_MAART.2026")));
    EXPECT_EQ(reg.calendar.maand_kalender.text(kRow16, kCol16), "16");
}

TEST_F(Calendar, AHolidayLetterCarriesToTheNextMonthOpened) {
    {
        AttendanceRegister reg(tree.session, true);
        reg.form_load();
        save_march_holiday(reg);
    }
    tree.set_day("10", 106, "a", "..");  // Thursday 16 April
    AttendanceRegister reg(tree.session, true);
    reg.form_load();
    reg.maand_lys.list_index = 2;
    reg.maand_lys_right_click();  // March seen
    reg.maand_lys.list_index = 3;
    reg.maand_lys_dbl_click();  // April opened
    EXPECT_EQ(reg.calendar.holiday[16], "O");
    EXPECT_EQ(reg.afw_grid.at(2, col_of_day(16)).back, kNonSchoolColour);
    EXPECT_EQ(tree.mark("10", 106), ".");  // and erased

    // Leaving the grid loads the form anew: the letters are gone.
    reg.staff_exit_click();
    tree.set_day("10", 106, "a", "..");
    reg.maand_lys.list_index = 3;
    reg.maand_lys_dbl_click();
    EXPECT_EQ(reg.calendar.holiday[16], "");
    EXPECT_EQ(reg.afw_grid.text(2, col_of_day(16)), "a");
}

TEST_F(Calendar, BadFilesGiveWhatTheyHoldAndNeverCrash) {
    const QString path = tree.calendar_path("maand_kalender_MAART.2026");
    MonthCalendar cal(tree.session);

    write_file(path, QByteArray());
    cal.load(3);
    EXPECT_EQ(cal.maand_kalender.text(1, 0), "");
    EXPECT_EQ(cal.holiday[1], "");

    // Cut short inside the string.
    write_file(path, QByteArray("\"S\tM\tD\tW\tD\tV\tS\r1\t2\t3(V"));
    cal.load(3);
    EXPECT_EQ(cal.holiday[3], "V");
    EXPECT_EQ(cal.maand_kalender.text(1, 2), "3(V");

    // Another month's layout: the letters fall on the days that stand in those cells here.
    write_file(path, QByteArray("\"S\tM\tD\tW\tD\tV\tS\r\t\t\t\t\t\t1(P)\r\"\r\n"));
    cal.clear_letters();
    cal.load(3);
    EXPECT_EQ(cal.holiday[7], "P");
    EXPECT_EQ(cal.holiday[1], "");

    // NULs, a lone "(" at the end, garbage beyond the grid.
    static const char kJunk[] =
        "\"S\tM\x00\tD\r1(\t2\t\x00(\x01\t4\t5\t6\t7\t8\t9\r\r\r\r\r\r\r\r9\"";
    const QByteArray junk(kJunk, sizeof(kJunk) - 1);
    write_file(path, junk);
    cal.clear_letters();
    cal.load(3);
    EXPECT_EQ(cal.holiday[1], "");

    // A register over such a file still builds and saves.
    auto reg = open_month(tree.session, 3);
    EXPECT_EQ(reg->afw_grid.rows(), 3);
    reg->staff_exit_click();
}

}  // namespace
