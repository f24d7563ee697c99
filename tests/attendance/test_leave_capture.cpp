#include <gtest/gtest.h>

#include "attendance/attendance_register.h"
#include "attendance/leave_capture.h"
#include "attendance_fixture.h"

using namespace korvel::attendance;
using korvel::store::Code;
using korvel::testing::add_person;
using korvel::testing::AttendanceTree;
using korvel::testing::col_of_day;
using korvel::testing::open_month;

namespace {

class Leave : public ::testing::Test {
  protected:
    void SetUp() override {
        add_person(tree.session, {.post = "10", .surname = "ZULU", .names = "THABO SIPHO"});
        tree.write_reasons();
        tree.session.read_record(Code::PRSALG, 1);
    }
    std::unique_ptr<LeaveCapture> open_form() {
        auto form = std::make_unique<LeaveCapture>(tree.session);
        form->form_load();
        return form;
    }
    AttendanceTree tree;
};

TEST_F(Leave, OpensOnTodayAndAMonthOn) {
    auto form = open_form();
    EXPECT_EQ(form->info, "10 MNR T S ZULU");
    EXPECT_EQ(form->prs_data[1], "2026.03.10");
    EXPECT_EQ(form->prs_data[2], "2026.04.10");
    EXPECT_EQ(form->kode_lys.items.size(), 11u);
    tree.dialogs.pick(QDate(2026, 3, 6));
    form->prs_data_click(1);
    EXPECT_EQ(form->prs_data[1], "2026.03.06");
    form->prs_data_click(2);  // closed without a date
    EXPECT_EQ(form->prs_data[2], "2026.04.10");
    form->staff_exit_click();
    EXPECT_TRUE(tree.afw("10").isEmpty());  // only data_ok makes the record
}

TEST_F(Leave, WritesEveryDayOfTheStretchWithTheReasonLeftAligned) {
    auto form = open_form();
    form->prs_data[1] = "2026.03.06";  // Friday, day 65
    form->prs_data[2] = "2026.03.09";  // Monday, day 68
    form->kode_lys_dbl_click(2);
    form->data_ok_click();
    EXPECT_EQ(tree.dialogs.last_text(),
              "VERLOF VIR POSNOMMER 10 VIR TYDPERK 2026.03.06 TOT 2026.03.09 GELAAI...");
    EXPECT_TRUE(form->closed);
    for (int slot = 65; slot <= 68; ++slot) {
        EXPECT_EQ(tree.mark("10", slot), "a");
        EXPECT_EQ(tree.reason("10", slot), "3 ");
    }
    EXPECT_EQ(tree.mark("10", 64), ".");
    EXPECT_EQ(tree.mark("10", 69), ".");
    EXPECT_FALSE(tree.session.is_open(Code::PRSAFW));

    // Opening March erases the weekend of the stretch and shows the rest with its reason.
    auto reg = open_month(tree.session, 3);
    EXPECT_EQ(tree.mark("10", 66), ".");
    EXPECT_EQ(reg->afw_grid.text(2, col_of_day(6)), "a*");
    EXPECT_EQ(reg->rde_grid.text(2, col_of_day(6)), "3");
    reg->staff_exit_click();
    EXPECT_EQ(tree.reason("10", 65), " 3");
}

TEST_F(Leave, NoReasonIsABlankReasonThatTheRegisterShowsAsAbsentWithReason) {
    tree.set_day("10", 69, "l", " 2");
    auto form = open_form();
    form->prs_data[1] = "2026.03.10";
    form->prs_data[2] = "2026.03.10";
    form->data_ok_click();
    EXPECT_EQ(tree.mark("10", 69), "a");
    EXPECT_EQ(tree.reason("10", 69), "  ");
    auto reg = open_month(tree.session, 3);
    EXPECT_EQ(reg->afw_grid.text(2, col_of_day(10)), "a*");
    reg->staff_exit_click();
    EXPECT_EQ(tree.reason("10", 69), "..");
}

TEST_F(Leave, NoValidation) {
    auto form = open_form();
    form->prs_data[1] = "2026.03.10";
    form->prs_data[2] = "2026.03.01";
    form->data_ok_click();
    EXPECT_TRUE(tree.dialogs.last_text().startsWith("VERLOF VIR POSNOMMER 10"));
    const QByteArray record = tree.afw("10");
    ASSERT_EQ(record.size(), korvel::testing::kAfwLength);
    EXPECT_EQ(record.mid(6, 370), QByteArray(370, '.'));

    // A stretch to the last day of the year, and one into the next year that writes nothing.
    auto end = open_form();
    end->prs_data[1] = "2026.12.30";
    end->prs_data[2] = "2026.12.31";
    end->data_ok_click();
    EXPECT_EQ(tree.mark("10", 365), "a");
    EXPECT_EQ(tree.mark("10", 366), ".");
    auto over = open_form();
    over->prs_data[1] = "2026.12.20";
    over->prs_data[2] = "2027.01.05";
    over->data_ok_click();
    EXPECT_EQ(tree.mark("10", 354), ".");

    // A date that cannot be read is today.
    auto junk = open_form();
    junk->prs_data[1] = "xx";
    junk->prs_data[2] = "2026.03.10";
    junk->data_ok_click();
    EXPECT_EQ(tree.mark("10", 69), "a");
}

}  // namespace
