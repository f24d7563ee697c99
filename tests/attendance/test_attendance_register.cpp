#include <gtest/gtest.h>

#include "attendance/attendance_register.h"
#include "attendance/reason_codes.h"
#include "attendance_fixture.h"

using namespace korvel::attendance;
using korvel::testing::add_person;
using korvel::testing::AttendanceTree;
using korvel::testing::col_of_day;
using korvel::testing::open_month;
using korvel::testing::row_of;
using korvel::ui::Answer;

namespace {

// March 2026 starts on a Sunday at day of year 60: Monday the 2nd is 61, Saturday the 7th 66.
constexpr int kMarch1 = 60;

// A day of a post number's record on disk as "mark|reason".
QByteArray day(const AttendanceTree& t, const QString& post, int slot) {
    return t.mark(post, slot) + '|' + t.reason(post, slot);
}

// The cells of a row of a grid on the given days of the month, joined by "|".
QString row_cells(const CellGrid& grid, int row, std::initializer_list<int> days) {
    QStringList out;
    for (const int d : days) {
        out << grid.text(row, col_of_day(d));
    }
    return out.join(u'|');
}

class Register : public ::testing::Test {
  protected:
    void SetUp() override {
        add_person(tree.session, {.post = "20", .surname = "ADAMS", .names = "ZELDA ANNE"});
        add_person(tree.session, {.post = "10", .surname = "ZULU", .names = "THABO"});
        add_person(tree.session, {.post = "11", .surname = "INACTIVE", .state = "*"});
        add_person(tree.session, {.post = "A1", .surname = "MOKOENA", .klas = "PSS"});
        add_person(tree.session, {.post = "A2", .surname = "BOOYSEN", .klas = " PS"});
        tree.write_reasons();
    }
    AttendanceTree tree;
};

TEST(MonthLimits, LeapYearShiftAndReasonNumbers) {
    EXPECT_EQ(month_limits(3, 2026).first, 60);
    EXPECT_EQ(month_limits(3, 2024).first, 61);
    EXPECT_EQ(month_limits(2, 2024).days, 29);
    EXPECT_EQ(month_limits(2, 2024).last, 60);
    EXPECT_EQ(month_limits(12, 2026).last, 365);
    EXPECT_EQ(month_limits(12, 2024).last, 366);
    EXPECT_EQ(month_limits(12, 2024).days, 31);
    // Stored reasons read as numbers the way the language reads them.
    EXPECT_EQ(number_value(" 3"), 3);
    EXPECT_EQ(number_value("12"), 12);
    EXPECT_EQ(number_value("3 "), 3);
    EXPECT_EQ(number_value("xx"), 0);
    EXPECT_EQ(number_value(""), 0);
    EXPECT_EQ(reason_text(3), " 3");
    EXPECT_EQ(reason_text(123), "12");
}

TEST(CellGrid, SortsAnyKeysNumbersFirst) {
    CellGrid g;
    g.reset(1, 1);
    for (const char* key : {"10", "9", "1x", "a2", "nan", "", "A1", "9"}) {
        g.set_text(g.add_row(), 0, key);
    }
    g.sort_rows(1, 0);
    QStringList order;
    for (int r = 1; r < g.rows(); ++r) {
        order << g.text(r, 0);
    }
    EXPECT_EQ(order, QStringList({"9", "9", "10", "", "1x", "A1", "a2", "nan"}));
}

TEST_F(Register, BuildsTheGroupSortedByPostWithWeekendsPainted) {
    auto reg = open_month(tree.session, 3);
    ASSERT_EQ(reg->afw_grid.rows(), 4);  // headings, weekdays, two educators
    EXPECT_EQ(reg->afw_grid.cols(), 31 + 4);
    EXPECT_EQ(reg->afw_grid.text(2, kColPost), "10");
    EXPECT_EQ(reg->afw_grid.text(3, kColPost), "20");
    EXPECT_EQ(reg->afw_grid.text(3, kColName), "MNR Z A ADAMS");
    EXPECT_EQ(reg->afw_grid.text(3, reg->afw_grid.cols() - 1), "ADAMS");
    EXPECT_EQ(reg->afw_grid.text(0, kColName), "PERSONEELLID");
    EXPECT_EQ(reg->afw_grid.text(0, col_of_day(1)), "01");
    EXPECT_EQ(reg->afw_grid.text(1, col_of_day(1)), "S");
    EXPECT_EQ(reg->afw_grid.text(1, col_of_day(5)), "D");  // DONDERDAG
    EXPECT_EQ(reg->afw_grid.text(2, kColIndex), "2");
    EXPECT_EQ(reg->afw_grid.at(2, col_of_day(7)).back, kNonSchoolColour);
    EXPECT_EQ(reg->afw_grid.at(2, col_of_day(6)).back, kWhite);
    EXPECT_FALSE(reg->weekday[1]);
    EXPECT_TRUE(reg->weekday[2]);
    EXPECT_EQ(reg->current_col, kFirstDayCol);

    // Every row got its record; the employees only in their own register.
    EXPECT_FALSE(tree.afw("10").isEmpty());
    EXPECT_TRUE(tree.afw("A1").isEmpty());
    auto employees = open_month(tree.session, 3, false);
    ASSERT_EQ(employees->afw_grid.rows(), 4);
    EXPECT_EQ(employees->afw_grid.text(2, kColPost), "A1");
    EXPECT_EQ(employees->afw_grid.text(3, kColPost), "A2");
}

TEST_F(Register, ShowsMarksAndReasonsAsStored) {
    tree.set_day("10", kMarch1 + 2, "a", "..");  // Tuesday 3rd
    tree.set_day("10", kMarch1 + 3, "*", "..");
    tree.set_day("10", kMarch1 + 4, "l", " 3");
    tree.set_day("10", kMarch1 + 5, ".", " 2");
    tree.set_day("10", kMarch1 + 9, "Z", "xx");   // a letter and a reason nobody knows
    tree.set_day("10", kMarch1 + 10, "a", "99");  // past the list
    tree.set_day("10", kMarch1 + 11, QString(QChar(0)), "..");
    auto reg = open_month(tree.session, 3);
    const int row = row_of(*reg, "10");
    EXPECT_EQ(row_cells(reg->afw_grid, row, {2, 3, 4, 5, 6, 10, 12}), "|a|a|l*|a*|Z*|");
    EXPECT_EQ(row_cells(reg->rde_grid, row, {2, 5}), "  | 3");

    // The one-shot click, then a click on " 9" finds no entry and changes nothing.
    reg->afw_grid_click(row, col_of_day(2));
    EXPECT_EQ(reg->afw_grid.text(row, col_of_day(2)), "");
    reg->afw_grid_click(row, col_of_day(11));
    EXPECT_EQ(reg->kode_lys.list_index, -1);
    reg->afw_grid_click(row, col_of_day(5));
    EXPECT_EQ(reg->kode_lys.list_index, 2);

    reg->staff_exit_click();
    EXPECT_EQ(tree.mark("10", kMarch1 + 3), "a");
    EXPECT_EQ(tree.reason("10", kMarch1 + 4), " 3");
    EXPECT_EQ(day(tree, "10", kMarch1 + 9), "Z| 0");
    EXPECT_EQ(tree.reason("10", kMarch1 + 10), "99");
    EXPECT_EQ(tree.mark("10", kMarch1 + 11), ".");
    EXPECT_FALSE(reg->grid_shown);  // back at the month list
}

TEST_F(Register, ViewingAMonthErasesItsWeekendsOnDiskAtOnce) {
    tree.set_day("10", kMarch1 + 6, "a", "2 ");  // Saturday 7th
    tree.set_day("10", kMarch1 + 5, "a", "2 ");  // Friday 6th
    tree.set_day("10", 32, "a", "2 ");           // February, not viewed
    auto reg = open_month(tree.session, 3);
    EXPECT_EQ(day(tree, "10", kMarch1 + 6), ".|  ");
    EXPECT_EQ(day(tree, "10", kMarch1 + 5), "a|2 ");
    reg->staff_exit_click();
    EXPECT_EQ(tree.reason("10", kMarch1 + 5), " 2");
    EXPECT_EQ(tree.reason("10", kMarch1 + 6), "..");
    EXPECT_EQ(day(tree, "10", 32), "a|2 ");
}

TEST_F(Register, ClicksDeleteAndTheKodeList) {
    auto reg = open_month(tree.session, 3);
    const int row = row_of(*reg, "10");
    const int mon = col_of_day(2), tue = col_of_day(3), wed = col_of_day(4), sat = col_of_day(7);
    reg->afw_grid_click(row, mon);  // the one-shot
    EXPECT_EQ(reg->afw_grid.text(row, mon), "");
    reg->afw_grid_click(row, mon);
    EXPECT_EQ(reg->afw_grid.text(row, mon), "a");
    reg->afw_grid_click(row, sat);
    EXPECT_EQ(reg->afw_grid.text(row, sat), "");
    EXPECT_EQ(reg->afw_grid.at(row, sat).back, kNonSchoolColour);

    // A blank cell takes no reason; "l" becomes "l*" with the entry's record number.
    reg->afw_grid_click(row, tue);
    reg->afw_grid_key_down(kDeleteKey);
    reg->kode_lys_dbl_click(2);
    EXPECT_EQ(reg->afw_grid.text(row, tue), "");
    EXPECT_EQ(reg->rde_grid.text(row, tue), "");
    reg->afw_grid_right_click(row, wed);
    EXPECT_TRUE(reg->ag_opsies.visible);
    EXPECT_EQ(reg->ag_opsies_height, 5 * 225);
    reg->ag_opsies_click(1);
    EXPECT_EQ(reg->afw_grid.text(row, wed), "l");
    reg->afw_grid_click(row, wed);
    reg->kode_lys_dbl_click(2);
    EXPECT_EQ(reg->afw_grid.text(row, wed), "l*");
    EXPECT_EQ(reg->rde_grid.text(row, wed), "3");

    // Delete on a cell with a reason: both go at the save.
    tree.set_day("10", kMarch1 + 4, "a", " 4");  // Thursday 5th on disk, not in the grid
    reg->afw_grid_right_click(row, col_of_day(5));
    reg->ag_opsies_click(6);  // the second description
    EXPECT_EQ(reg->afw_grid.text(row, col_of_day(5)), "a*");
    EXPECT_EQ(reg->rde_grid.text(row, col_of_day(5)), "3");
    reg->afw_grid_key_down(kDeleteKey);
    EXPECT_EQ(reg->afw_grid.text(row, col_of_day(5)), "");
    EXPECT_EQ(reg->rde_grid.text(row, col_of_day(5)), "3");

    // The separator gives "a" and reason 1.
    reg->afw_grid_right_click(row, col_of_day(6));
    reg->ag_opsies_click(kFixedOptions);
    reg->staff_exit_click();

    EXPECT_EQ(day(tree, "10", kMarch1 + 1), "a|..");
    EXPECT_EQ(tree.mark("10", kMarch1 + 2), ".");
    EXPECT_EQ(day(tree, "10", kMarch1 + 3), "l| 3");
    EXPECT_EQ(day(tree, "10", kMarch1 + 4), ".|..");
    EXPECT_EQ(day(tree, "10", kMarch1 + 5), "a| 1");
}

TEST_F(Register, ReasonsFollowRowPositionsAfterTheSort) {
    tree.set_day("10", kMarch1 + 1, "a", " 5");  // ZULU
    tree.set_day("20", kMarch1 + 1, "l", "..");  // ADAMS
    auto reg = open_month(tree.session, 3);
    EXPECT_EQ(row_of(*reg, "10"), 2);
    reg->grid_sort_click();
    EXPECT_EQ(reg->sort_column, reg->afw_grid.cols() - 1);
    EXPECT_EQ(row_of(*reg, "20"), 2);
    reg->staff_exit_click();
    EXPECT_EQ(day(tree, "20", kMarch1 + 1), "l| 5");
    EXPECT_EQ(day(tree, "10", kMarch1 + 1), "a|..");
}

TEST_F(Register, DecemberEndsAtTheYearsLastDay) {
    tree.set_day("10", 365, "a", "..");  // Thursday 31 December 2026
    tree.set_day("10", 366, "a", "..");
    auto reg = open_month(tree.session, 12);
    EXPECT_EQ(reg->limits.last, 365);
    EXPECT_EQ(reg->afw_grid.text(row_of(*reg, "10"), col_of_day(31)), "a");
    reg->afw_grid_key_down(0);
    reg->staff_exit_click();
    EXPECT_EQ(tree.mark("10", 366), "a");  // never touched
}

TEST_F(Register, LeapYearGridAndItsLastDay) {
    AttendanceTree leap(QStringLiteral("2024"));
    add_person(leap.session, {.post = "10", .surname = "ZULU"});
    leap.set_day("10", 61, "a", "..");   // Friday 1 March 2024
    leap.set_day("10", 60, "u", "..");   // Thursday 29 February
    leap.set_day("10", 366, "a", "4 ");  // Tuesday 31 December
    auto march = open_month(leap.session, 3);
    EXPECT_EQ(march->afw_grid.text(2, col_of_day(1)), "a");
    march->staff_exit_click();
    auto feb = open_month(leap.session, 2);
    EXPECT_EQ(feb->afw_grid.cols(), 29 + 4);
    EXPECT_EQ(feb->afw_grid.text(2, col_of_day(29)), "u");
    feb->staff_exit_click();
    auto dec = open_month(leap.session, 12);
    EXPECT_EQ(dec->afw_grid.text(2, col_of_day(31)), "a*");
    dec->staff_exit_click();
    EXPECT_EQ(leap.reason("10", 366), " 4");
    EXPECT_EQ(leap.mark("10", 60), "u");
}

TEST_F(Register, EraseAWholeRowAfterTheQuestion) {
    tree.set_day("10", kMarch1 + 1, "a", " 2");
    tree.set_day("10", kMarch1 + 2, "l", "..");
    auto reg = open_month(tree.session, 3);
    const int row = row_of(*reg, "10");
    tree.dialogs.answer(Answer::No);
    reg->afw_grid_right_click(row, kColName);
    EXPECT_EQ(tree.dialogs.last_text(), "WIL U ALLE BYWONING VIR MNR T ZULU VIR MAART VERWYDER ?");
    EXPECT_EQ(reg->afw_grid.text(row, col_of_day(2)), "a*");
    tree.dialogs.answer(Answer::Yes);
    reg->afw_grid_right_click(row, kColPost);
    EXPECT_EQ(reg->afw_grid.text(row, col_of_day(2)), "");
    reg->staff_exit_click();
    EXPECT_EQ(day(tree, "10", kMarch1 + 1), ".|..");
    EXPECT_EQ(tree.mark("10", kMarch1 + 2), ".");
}

TEST_F(Register, HoverCrossSparesTheClosedDays) {
    auto reg = open_month(tree.session, 3);
    reg->afw_grid_mouse_move(3, col_of_day(9));
    EXPECT_EQ(reg->afw_grid.at(2, col_of_day(9)).back, kHoverColour);
    EXPECT_EQ(reg->afw_grid.at(3, col_of_day(2)).back, kHoverColour);
    EXPECT_EQ(reg->afw_grid.at(3, col_of_day(7)).back, kNonSchoolColour);
    reg->afw_grid_mouse_move(2, col_of_day(3));
    EXPECT_EQ(reg->afw_grid.at(3, col_of_day(9)).back, kWhite);
    EXPECT_EQ(reg->afw_grid.at(2, col_of_day(3)).back, kHoverColour);
    EXPECT_EQ(reg->current_col, col_of_day(3));
}

TEST_F(Register, OptionsGrowOnEachReturnFromCodeMaintenance) {
    auto reg = open_month(tree.session, 3);
    EXPECT_EQ(reg->ag_opsies.items.size(), 4u + 1u + 11u);
    tree.dialogs.on_form("sk417_kodes_prg", [](korvel::ui::ChildForm& f) {
        dynamic_cast<ReasonCodes&>(f).admin_exit_click();
    });
    reg->kodes_click();
    reg->kodes_click();
    EXPECT_EQ(reg->kode_lys.items.size(), 11u);
    ASSERT_EQ(reg->ag_opsies.items.size(), 4u + 3u * 12u);
    EXPECT_EQ(reg->ag_opsies.items[16].text, "-------");
    // The grown list still writes position less four plus one.
    const int row = row_of(*reg, "10");
    reg->afw_grid_right_click(row, col_of_day(2));
    reg->ag_opsies_click(17);
    EXPECT_EQ(reg->rde_grid.text(row, col_of_day(2)), "14");
}

TEST_F(Register, StaleRecordsAreClearedAndTheFirstRecordWins) {
    // A stale record, a blank one, then two records of post 10: the first takes the save.
    tree.set_day("..7", 5, "a", "..");
    tree.session.working(korvel::store::Code::PRSAFW).clear();
    tree.session.append_record(korvel::store::Code::PRSAFW);
    tree.set_day("10", kMarch1 + 1, "l", "..");
    tree.session.working(korvel::store::Code::PRSAFW)
        .set_text(korvel::store::PRSAFW["PF_DAG"], "u", kMarch1 + 1);
    tree.session.append_record(korvel::store::Code::PRSAFW);  // the second "10"
    auto reg = open_month(tree.session, 3);
    EXPECT_EQ(reg->afw_grid.text(row_of(*reg, "10"), col_of_day(2)), "l");
    reg->staff_exit_click();
    const QByteArray bytes = korvel::testing::read_file(tree.afw_path());
    ASSERT_GE(bytes.size(), 4 * korvel::testing::kAfwLength);
    EXPECT_EQ(bytes.left(5), "     ");    // the stale post number blanked
    EXPECT_EQ(bytes.mid(5 + 5, 1), "a");  // the rest of it kept
    EXPECT_EQ(bytes.mid(3 * korvel::testing::kAfwLength + 5 + kMarch1 + 1, 1), "u");
    EXPECT_EQ(tree.mark("10", kMarch1 + 1), "l");
}

TEST_F(Register, InitialiseToYearEndForTheGroupInUse) {
    tree.set_day("10", 100, "a", " 1");
    tree.set_day("10", 200, "a", " 1");
    tree.set_day("A1", 200, "a", " 1");
    auto reg = open_month(tree.session, 3);
    tree.dialogs.pick(QDate(2026, 5, 1));  // day 121
    tree.dialogs.answer(Answer::Yes);
    reg->task_options_right_click(1);
    EXPECT_EQ(tree.dialogs.last_text(),
              "Wil u defnitief ALLE ONDERWYSERS bywoning vanaf 2026.05.01 tot einde Desember "
              "2026 uitvee?");
    EXPECT_EQ(tree.mark("10", 100), "a");
    EXPECT_EQ(day(tree, "10", 200), ".|..");
    EXPECT_EQ(tree.mark("A1", 200), "a");
    EXPECT_FALSE(tree.afw("11").isEmpty());  // every post number got its record
    EXPECT_TRUE(reg->grid_shown);

    tree.dialogs.pick(std::nullopt);  // the calendar closed without a date
    reg->task_options_right_click(1);
    EXPECT_EQ(tree.mark("A1", 200), "a");
}

TEST_F(Register, TwoWorkstationsSavingTheSameMonth) {
    AttendanceTree& a = tree;
    korvel::ui::ScriptedDialogs other_dialogs;
    korvel::shell::Session b(other_dialogs, a.session.fs().drives());
    b.folders = a.session.folders;
    b.ledger_year = a.session.ledger_year;
    b.fixed_today = a.session.fixed_today;

    auto reg_a = open_month(a.session, 3);
    auto reg_b = open_month(b, 3);
    const int row_a = row_of(*reg_a, "10");
    const int row_b = row_of(*reg_b, "20");
    reg_a->afw_grid_click(row_a, col_of_day(3));
    reg_a->afw_grid_click(row_a, col_of_day(3));
    reg_b->afw_grid_click(row_b, col_of_day(4));
    reg_b->afw_grid_click(row_b, col_of_day(4));
    a.set_day("10", 120, "v", "1 ");  // leave captured in April meanwhile
    reg_a->staff_exit_click();
    EXPECT_EQ(a.mark("10", kMarch1 + 2), "a");
    reg_b->staff_exit_click();
    EXPECT_EQ(a.mark("10", kMarch1 + 2), ".");  // the last save wins for the row's month
    EXPECT_EQ(a.mark("20", kMarch1 + 3), "a");
    EXPECT_EQ(day(a, "10", 120), "v|1 ");
}

TEST_F(Register, BrowseModeWritesNothing) {
    tree.set_day("10", kMarch1 + 6, "a", "..");
    tree.session.browse_mode = true;
    auto reg = open_month(tree.session, 3);
    const int row = row_of(*reg, "10");
    reg->afw_grid_click(row, col_of_day(2));
    reg->afw_grid_click(row, col_of_day(2));
    reg->staff_exit_click();
    EXPECT_EQ(tree.mark("10", kMarch1 + 6), "a");
    EXPECT_EQ(tree.mark("10", kMarch1 + 1), ".");
    EXPECT_TRUE(tree.afw("20").isEmpty());
}

TEST_F(Register, ATruncatedAttendanceFileIsUsedAsFarAsItGoes) {
    tree.set_day("10", kMarch1 + 1, "l", "..");
    tree.set_day("20", kMarch1 + 2, "u", "..");
    tree.session.close_file(korvel::store::Code::PRSAFW);
    const QByteArray whole = korvel::testing::read_file(tree.afw_path());
    korvel::testing::write_file(tree.afw_path(), whole.left(korvel::testing::kAfwLength + 600));
    auto reg = open_month(tree.session, 3);
    EXPECT_EQ(reg->afw_grid.text(row_of(*reg, "20"), col_of_day(3)), "u");
    reg->staff_exit_click();
    EXPECT_EQ(korvel::testing::read_file(tree.afw_path()).size(), 2 * korvel::testing::kAfwLength);
    EXPECT_EQ(day(tree, "20", kMarch1 + 2), "u|..");
}

TEST_F(Register, EmptyFilesGiveAnEmptyGrid) {
    AttendanceTree empty;
    auto reg = open_month(empty.session, 3);
    EXPECT_EQ(reg->afw_grid.rows(), 0);
    reg->afw_grid_click(2, 3);
    reg->afw_grid_right_click(2, 1);
    reg->staff_exit_click();
    EXPECT_TRUE(korvel::testing::read_file(empty.afw_path()).isEmpty());
}

}  // namespace
