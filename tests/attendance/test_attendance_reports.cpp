#include <gtest/gtest.h>

#include "attendance/attendance_reports.h"
#include "attendance/leave_totals.h"
#include "attendance/month_calendar.h"
#include "attendance_fixture.h"
#include "reports/recording_device.h"

using namespace korvel::attendance;
using korvel::reports::PrintGrid;
using korvel::reports::PrintJob;
using korvel::reports::RecordingDevice;
using korvel::store::Code;
using korvel::testing::add_person;
using korvel::testing::AttendanceTree;

namespace {

// Day of year in 2026: March 1 (a Sunday) is day 60.
int march(int day) {
    return 59 + day;
}

class Reports : public ::testing::Test {
  protected:
    void SetUp() override {
        add_person(tree.session, {.post = "10", .surname = "ZULU", .names = "THABO"});
        add_person(tree.session, {.post = "9", .surname = "ADAMS", .names = "PIET"});
        add_person(tree.session, {.post = "A1", .surname = "KLERK", .klas = "ADMIN"});
        tree.write_reasons();
    }
    std::unique_ptr<AttendanceReports> open_form() {
        auto form = std::make_unique<AttendanceReports>(tree.session, job);
        form->choose_target = [this](PrintJob& j) {
            ++targets_asked;
            j.print_setup();
            j.state.page_pending = true;
            return true;
        };
        form->form_load();
        return form;
    }
    // A day of March marked a holiday in its calendar file.
    void march_holiday(int day) {
        MonthCalendar calendar(tree.session);
        calendar.load(3);
        for (int r = 1; r < calendar.maand_kalender.rows(); ++r) {
            for (int c = 0; c < 7; ++c) {
                if (calendar.maand_kalender.text(r, c) == QString::number(day)) {
                    calendar.maand_kalender_click(r, c);
                    calendar.mk_opsies_click(0);
                }
            }
        }
        calendar.mk_save_click();
    }
    // The row of a post number in a grid whose post numbers stand in `col`.
    static int row_of(const PrintGrid& g, const QString& post, int col = 1) {
        for (int r = 0; r < g.rows(); ++r) {
            if (g.text(r, col).trimmed() == post) {
                return r;
            }
        }
        return -1;
    }

    AttendanceTree tree;
    RecordingDevice device;
    PrintJob job{device, tree.dialogs};
    int targets_asked = 0;
};

TEST_F(Reports, StaffAreTakenInPostNumberOrderByTheAdministrativeChoice) {
    const auto posts = [&](AdminChoice choice) {
        QStringList out;
        for (const StaffMember& m : selected_staff(tree.session, choice)) {
            out << m.post;
        }
        return out.join(u',');
    };
    EXPECT_EQ(posts(AdminChoice::Included), "9,10,A1");
    EXPECT_EQ(posts(AdminChoice::Only), "A1");
    EXPECT_EQ(posts(AdminChoice::Excluded), "9,10");

    // The name is simplified as text is; a report that asks for fewer texts gets the same ones.
    add_person(
        tree.session,
        {.post = "8", .surname = "DU  TOIT", .names = " JAN\tPIET  (KOOS) ", .title = "\tDR"});
    const std::vector<StaffMember> all = selected_staff(tree.session, AdminChoice::Included);
    ASSERT_EQ(all.front().post, "8");
    EXPECT_EQ(all.front().initials, "J ");  // the bracket goes after the trimming
    EXPECT_EQ(all.front().name, "DR J DU TOIT");
    for (const unsigned texts : {unsigned(kStaffParts), kStaffPost | kStaffName}) {
        const std::vector<StaffMember> some =
            selected_staff(tree.session, AdminChoice::Included, texts);
        ASSERT_EQ(some.size(), all.size());
        for (size_t i = 0; i < all.size(); ++i) {
            EXPECT_EQ(some[i].post_key, all[i].post_key);
            EXPECT_EQ(some[i].name, texts & kStaffName ? all[i].name : QString());
            EXPECT_EQ(
                some[i].surname + some[i].initials + some[i].persal,
                texts & kStaffParts ? all[i].surname + all[i].initials + all[i].persal : QString());
        }
    }
}

TEST_F(Reports, MonthlySummaryCountsAbsenceAndLeaveAndTheirReasons) {
    // Post 10: counted a, v, o (with reasons " 3", "3 ", 12 past the list); not counted l, s, u.
    tree.set_day("10", march(2), "a", " 3");
    tree.set_day("10", march(3), "v", "3 ");
    tree.set_day("10", march(4), "o", "12");
    tree.set_day("10", march(5), "l", " 1");
    tree.set_day("10", march(6), "s", "..");
    tree.set_day("10", march(9), "u", "..");
    // Post 9: late only.
    tree.set_day("9", march(2), "l", "..");
    tree.set_day("9", march(3), "l", "..");

    auto form = open_form();
    form->maand_lys_click(2);
    EXPECT_EQ(form->jr_data[1], QDate(2026, 3, 1));
    EXPECT_EQ(form->jr_data[2], QDate(2026, 3, 31));
    const DayGrid days = form->day_grid(form->range);
    std::vector<int> counts;
    const PrintGrid grid = form->summary_grid(days, &counts);

    const int ten = row_of(grid, "10");
    ASSERT_GT(ten, row_of(grid, "9"));  // right aligned, 9 sorts before 10
    EXPECT_EQ(grid.text(ten, days.day_col(march(2))), "a 3");
    EXPECT_EQ(grid.text(ten, days.day_col(march(4))), "o12");
    EXPECT_EQ(grid.text(1, days.day_col(march(1))), "S");
    EXPECT_NE(grid.cell(ten, days.day_col(march(1))).back_colour, 0);
    EXPECT_EQ(grid.cell(ten, days.day_col(march(2))).back_colour, 0);

    const int total = grid.cols() - 1;
    EXPECT_EQ(grid.text(ten, total), "3");
    EXPECT_EQ(grid.text(row_of(grid, "9"), total), "0");
    ASSERT_EQ(counts.size(), 11u);
    EXPECT_EQ(counts[2], 2);  // " 3" and "3 " alike; the late day's reason 1 not at all
    EXPECT_EQ(counts[0], 0);
}

TEST_F(Reports, MonthlySummaryNeedsAMonthAndPrintsItsReasonLines) {
    auto form = open_form();
    form->dr_ok_click(kMonthlySummary);
    EXPECT_EQ(targets_asked, 0);
    EXPECT_TRUE(tree.dialogs.last_text().startsWith("Kies eers 'n Maand hierbo"));

    tree.set_day("10", march(2), "a", " 2");
    form->maand_lys_click(2);
    form->dr_ok_click(kMonthlySummary);
    const QStringList texts = device.texts();
    EXPECT_TRUE(texts.join(u'\n').contains("MAANDOPSOMMING : MAART 2026"));
    EXPECT_TRUE(texts.contains(" 2 SICK = "));
}

TEST_F(Reports, ReasonListCountsByNumberWhateverTheLetterAndFollowsARemovedReason) {
    tree.set_day("10", march(1), "l", " 3");  // a stored Sunday, letter l: both count
    tree.set_day("10", march(2), ".", "3 ");
    tree.set_day("10", march(3), "a", "99");  // past the list
    auto form = open_form();
    form->jr_data[1] = QDate(2026, 3, 1);
    form->jr_data[2] = QDate(2026, 3, 31);
    form->jr_data_click(0);  // no box: nothing changes
    form->range = day_range(form->jr_data[1], form->jr_data[2], 2026);
    PrintGrid grid = form->reason_list_grid(form->range);
    const int ten = row_of(grid, "ZULU");
    ASSERT_GE(ten, 1);
    EXPECT_EQ(grid.text(0, 3 + 2), "~~R~~INCAPACITY");
    EXPECT_EQ(grid.text(ten, 3 + 2), "2");
    EXPECT_EQ(grid.text(ten, grid.cols() - 1), "2");

    // The second reason removed: the days of 3 now stand under what was 4.
    tree.session.close_file(Code::PRSSBI);
    QFile::remove(tree.staff_file(QStringLiteral("sbi_kde_random.txt")));
    tree.session.open_staff_file(QStringLiteral("PRSSBI"));
    for (int i : {0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 0}) {
        auto& r = tree.session.working(Code::PRSSBI);
        r.clear();
        r.set_text(korvel::store::PRSSBI["SBI_TIPE"], QString::fromLatin1(kDefaultReasons[i]));
        tree.session.append_record(Code::PRSSBI);
    }
    form->form_load();
    form->range = day_range(QDate(2026, 3, 1), QDate(2026, 3, 31), 2026);
    grid = form->reason_list_grid(form->range);
    EXPECT_EQ(grid.text(0, 3 + 2), "~~R~~OCCUPATIONAL INJURY");
    EXPECT_EQ(grid.text(row_of(grid, "ZULU"), 3 + 2), "2");
}

// Days without a reason are passed over four at a time: a lone reason, in each way it is
// written, at each place of a range that ends inside such a run, counts there and only there.
TEST_F(Reports, ReasonListFindsALoneReasonWhereverItFalls) {
    auto form = open_form();
    const DayRange range = day_range(QDate(2026, 3, 2), QDate(2026, 3, 12), 2026);
    for (int day = 1; day <= 13; ++day) {
        for (const char* reason : {" 3", "3 ", "03", "..", "x3"}) {
            tree.set_day("10", march(day), "a", QString::fromLatin1(reason));
            const PrintGrid grid = form->reason_list_grid(range);
            const bool counted = day >= 2 && day <= 12 && reason[0] != '.' && reason[0] != 'x';
            EXPECT_EQ(grid.text(row_of(grid, "ZULU"), grid.cols() - 1), counted ? "1" : "0")
                << "March " << day << " \"" << reason << "\"";
        }
        tree.set_day("10", march(day), ".", "..");
    }
}

TEST_F(Reports, DateRangesKeepToTheLedgerYear) {
    const DayRange leap = day_range(QDate(2024, 12, 30), QDate(2025, 1, 2), 2024);
    EXPECT_EQ(leap.first, 365);
    EXPECT_EQ(leap.last, 366);
    EXPECT_TRUE(day_range(QDate(2026, 5, 1), QDate(2026, 4, 1), 2026).empty());
    EXPECT_TRUE(day_range(QDate(2027, 1, 1), QDate(2027, 2, 1), 2026).empty());
    EXPECT_EQ(day_range(QDate(2025, 12, 1), QDate(2026, 1, 3), 2026).first, 1);
}

TEST_F(Reports, RegisterPrintsAPagePerWeekdayHolidaysIncluded) {
    // Monday March 9 a holiday in the calendar.
    march_holiday(9);

    auto form = open_form();
    form->jr_data[1] = QDate(2026, 3, 6);  // Friday to Monday
    form->jr_data[2] = QDate(2026, 3, 9);
    form->dr_ok_click(kRegisterReport);
    const QString all = device.texts().join(u'\n');
    EXPECT_TRUE(all.contains("TEENWOORDIGHEIDSREGISTER : 2026.03.06"));
    EXPECT_FALSE(all.contains("2026.03.07"));
    EXPECT_FALSE(all.contains("2026.03.08"));
    EXPECT_TRUE(all.contains("TEENWOORDIGHEIDSREGISTER : 2026.03.09"));
    EXPECT_TRUE(all.contains("10  MNR T ZULU"));
}

TEST_F(Reports, NothingPrintsFromAnEmptyStaffFile) {
    AttendanceTree empty;
    RecordingDevice d;
    PrintJob j{d, empty.dialogs};
    AttendanceReports form(empty.session, j);
    bool asked = false;
    form.choose_target = [&](PrintJob&) { return asked = true; };
    form.form_load();
    form.maand_lys_click(0);
    for (int button : {kMonthlySummary, kReasonList, kRegisterReport, kLeaveTotals}) {
        form.dr_ok_click(button);
    }
    EXPECT_FALSE(asked);
}

TEST_F(Reports, LeaveTotalsCountSchoolDaysOnlyAndAddUp) {
    // A stretch from Friday March 20 to Tuesday March 24 as leave capture stores it, over a
    // weekend and Monday 23, a holiday: two school days.
    march_holiday(23);
    for (int day = 20; day <= 24; ++day) {
        tree.set_day("10", march(day), "a", "3 ");
    }
    tree.set_day("9", march(2), "v", "..");  // no reason
    tree.set_day("9", march(3), "*", " 1");
    tree.set_day("9", march(4), "l", " 1");  // late is no leave
    tree.set_day("9", march(5), "s", " 1");
    tree.set_day("9", march(6), "2", " 7");
    tree.set_day("9", march(9), QString(QChar(0)), "xx");  // garbage: no leave
    tree.set_day("9", march(10), "a", "xx");               // a reason that is none

    auto form = open_form();
    const LeaveTotals t = form->leave_totals();
    ASSERT_EQ(t.people.size(), 3u);
    const LeavePerson& ten = t.people[1];
    EXPECT_EQ(ten.post, "10");
    EXPECT_EQ(ten.counts[2], 2);
    ASSERT_EQ(ten.days.size(), 2u);
    EXPECT_EQ(ten.days[1].date, QDate(2026, 3, 24));
    EXPECT_EQ(t.reason_of(ten.days[1]), "INCAPACITY");
    const LeavePerson& nine = t.people[0];
    EXPECT_EQ(nine.no_reason, 2);
    EXPECT_EQ(nine.total, 4);

    int by_rows = 0, by_columns = t.no_reason;
    for (const LeavePerson& p : t.people) {
        by_rows += p.total;
    }
    for (int c : t.column_totals) {
        by_columns += c;
    }
    EXPECT_EQ(by_rows, 6);
    EXPECT_EQ(by_columns, 6);
    EXPECT_EQ(t.total, 6);

    const PrintGrid grid = leave_totals_grid(t, true);
    EXPECT_EQ(grid.text(grid.rows() - 1, grid.cols() - 1), "6");
    EXPECT_EQ(grid.text(0, grid.cols() - 2), "~~R~~SONDER REDE");

    // From and to within the year: March 21 onwards leaves post 9 out.
    form->jr_data[1] = QDate(2026, 3, 21);
    form->jr_data[2] = QDate(2026, 12, 31);
    form->verlof_hele_jaar = false;
    EXPECT_EQ(form->leave_totals().total, 1);
}

// Days without leave are passed over eight at a time: a lone day of each letter, at each place
// of a range that ends inside such a run, counts when it is leave and only then.
TEST_F(Reports, LeaveTotalsFindALoneLeaveDayWhereverItFalls) {
    auto form = open_form();
    form->jr_data[1] = QDate(2026, 3, 2);  // a Monday, to Friday the 20th: two runs and three
    form->jr_data[2] = QDate(2026, 3, 20);
    form->verlof_hele_jaar = false;
    for (int day = 1; day <= 21; ++day) {
        const bool school = day >= 2 && day <= 20 && (day - 2) % 7 < 5;
        for (const QChar letter : QStringLiteral("a2vo*lsu.")) {
            tree.set_day("10", march(day), letter, " 1");
            EXPECT_EQ(form->leave_totals().total, school && kLeaveLetters.contains(letter) ? 1 : 0)
                << "March " << day << " " << QString(letter).toStdString();
        }
        tree.set_day("10", march(day), ".", "..");
    }
}

TEST_F(Reports, LeaveTotalsOverAReversedRangeOrAnotherYearPrintNothing) {
    auto form = open_form();
    form->verlof_hele_jaar = false;
    const struct {
        QDate from, to;
        const char* message;
    } cases[] = {
        {QDate(2026, 5, 1), QDate(2026, 4, 1), "Die TOT DATUM is voor die VANAF DATUM ..."},
        {QDate(2026, 12, 1), QDate(2027, 1, 31), "Kies datums in 2026 ..."},
    };
    for (const auto& c : cases) {
        form->jr_data[1] = c.from;
        form->jr_data[2] = c.to;
        EXPECT_FALSE(form->print_leave_totals());
        EXPECT_EQ(tree.dialogs.last_text(), c.message);
    }
    EXPECT_EQ(targets_asked, 0);
}

}  // namespace
