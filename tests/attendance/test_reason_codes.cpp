#include <gtest/gtest.h>

#include "attendance/attendance_register.h"
#include "attendance/reason_codes.h"
#include "attendance_fixture.h"

using namespace korvel::attendance;
using korvel::store::Code;
using korvel::testing::add_person;
using korvel::testing::AttendanceTree;
using korvel::testing::col_of_day;
using korvel::testing::open_month;
using korvel::testing::read_file;
using korvel::ui::Answer;

namespace {

class Codes : public ::testing::Test {
  protected:
    QByteArray file() const { return read_file(tree.staff_file("sbi_kde_random.txt")); }
    // The first description of record n on disk.
    QString first(int n) const {
        return QString::fromLatin1(file().mid((n - 1) * 50, 25)).trimmed();
    }
    void write(const QStringList& texts) {
        tree.session.open_staff_file("PRSSBI");
        for (const QString& t : texts) {
            auto& r = tree.session.working(Code::PRSSBI);
            r.clear();
            r.set_text(korvel::store::PRSSBI["SBI_TIPE"], t);
            r.set_text(korvel::store::PRSSBI["SBI_BESK"], t.toLower());
            tree.session.append_record(Code::PRSSBI);
        }
    }
    AttendanceTree tree;
};

TEST_F(Codes, AnEmptyFileFillsWithTheElevenDefaults) {
    ReasonCodes form(tree.session);
    form.form_load();
    const QByteArray bytes = file();
    ASSERT_EQ(bytes.size(), 11 * 50);
    EXPECT_EQ(bytes.left(50), QByteArray("ANNUAL LEAVE").leftJustified(25, ' ') +
                                  QByteArray("ANNUAL LEAVE").leftJustified(25, ' '));
    EXPECT_EQ(first(11), "UNPAID");
    ASSERT_EQ(form.rde_grid.rows(), 12);
    EXPECT_EQ(form.rde_grid.text(0, 1), "BESKRYWING");
    EXPECT_EQ(form.rde_grid.text(6, 0), "6");
    EXPECT_EQ(form.rde_grid.text(6, 1), "ADAPTION");
}

TEST_F(Codes, DefaultsGoBehindFewerThanElevenAndNeverTopUpEleven) {
    write({"A", "B", "C"});
    ReasonCodes form(tree.session);
    form.form_load();
    EXPECT_EQ(file().size(), 14 * 50);
    EXPECT_EQ(first(3), "C");
    EXPECT_EQ(first(4), "ANNUAL LEAVE");

    AttendanceTree eleven;
    eleven.session.open_staff_file("PRSSBI");
    for (const char* t : {"X", "", "x", "Y", "Y", "Z", "1", "2", "3", "4", "5"}) {
        auto& r = eleven.session.working(Code::PRSSBI);
        r.clear();
        r.set_text(korvel::store::PRSSBI["SBI_TIPE"], QString::fromLatin1(t));
        eleven.session.append_record(Code::PRSSBI);
    }
    ReasonCodes other(eleven.session);
    other.form_load();
    EXPECT_EQ(read_file(eleven.staff_file("sbi_kde_random.txt")).size(), 11 * 50);
    // The blank one and the repeats are not shown, and the save drops them.
    ASSERT_EQ(other.rde_grid.rows(), 1 + 8);
    EXPECT_EQ(other.rde_grid.text(2, 0), "4");
    other.kodes_ok_click();
    EXPECT_TRUE(other.closed);
    const QByteArray saved = read_file(eleven.staff_file("sbi_kde_random.txt"));
    ASSERT_EQ(saved.size(), 8 * 50);
    EXPECT_EQ(saved.mid(50, 25).trimmed(), "Y");
}

TEST_F(Codes, AddEditAndLeaveWithoutSaving) {
    ReasonCodes form(tree.session);
    form.form_load();
    form.task_options_click(1);
    ASSERT_EQ(form.rde_grid.rows(), 13);
    EXPECT_EQ(form.rde_grid.text(12, 0), "12");
    EXPECT_TRUE(form.kde_frme_visible);
    form.sbi_kde2_change(1, "skool Uitstappie ");
    form.sbi_kde2_change(2, "school outing");
    EXPECT_EQ(form.sbi_kde2[1], "SKOOL UITSTAPPIE ");
    form.data_ok_click();
    EXPECT_EQ(form.rde_grid.text(12, 1), "SKOOL UITSTAPPIE");
    EXPECT_EQ(form.rde_grid.text(12, 2), "SCHOOL OUTING");

    form.admin_exit_click();
    EXPECT_EQ(file().size(), 11 * 50);
    EXPECT_EQ(tree.session.count(Code::PRSSBI), 12);  // raised while the file stays open

    ReasonCodes again(tree.session);
    again.form_load();
    again.rde_grid_right_click();
    again.sbi_kde2_change(1, "outing");
    again.data_ok_click();
    again.rde_grid_click(2);
    EXPECT_EQ(again.sbi_kde2[1], "SICK");
    again.sbi_kde2_change(1, "siek");
    again.data_ok_click();
    again.kodes_ok_click();
    ASSERT_EQ(file().size(), 12 * 50);
    EXPECT_EQ(first(2), "SIEK");
    EXPECT_EQ(first(12), "OUTING");
}

TEST_F(Codes, ARemovedReasonRenumbersTheDaysStoredBehindIt) {
    add_person(tree.session, {.post = "10", .surname = "ZULU"});
    tree.set_day("10", 62, "a", " 3");  // INCAPACITY on Tuesday 3 March
    ReasonCodes form(tree.session);
    form.form_load();
    form.rde_grid_click(2);
    tree.dialogs.answer(Answer::No);
    form.rde_grid_key_down(kDeleteKey);
    EXPECT_EQ(tree.dialogs.last_text(), "IS U SEKER ?");
    EXPECT_EQ(form.rde_grid.rows(), 12);
    tree.dialogs.answer(Answer::Yes);
    form.task_options_click(4);
    EXPECT_EQ(form.rde_grid.rows(), 11);
    form.kodes_ok_click();
    EXPECT_EQ(file().size(), 10 * 50);
    EXPECT_EQ(first(2), "INCAPACITY");
    EXPECT_EQ(tree.reason("10", 62), " 3");

    auto reg = open_month(tree.session, 3);
    reg->afw_grid_click(2, col_of_day(3));
    EXPECT_EQ(reg->kode_lys.list_index, 2);
    EXPECT_EQ(reg->kode_lys.items[2].text, "OCCUPATIONAL INJURY");
}

TEST_F(Codes, ThePrintedListComesFromTheFile) {
    tree.session.open_staff_file("PRSSBI");
    ReasonCodes empty(tree.session);
    EXPECT_TRUE(empty.code_list().lines.empty());

    write({"SIEK", "", "STUDIE"});
    ReasonCodes form(tree.session);
    const CodeListPrint list = form.code_list();
    EXPECT_EQ(list.title, "SKOOLBYWONING KODES : 2026");
    ASSERT_EQ(list.lines.size(), 4u);
    EXPECT_EQ(list.lines[2].at_tabs[0], std::make_pair(5, QString("3")));
    EXPECT_EQ(list.lines[2].at_tabs[1], std::make_pair(10, QString("STUDIE")));
    EXPECT_EQ(list.lines[3].at_tabs[0], std::make_pair(10, QString("studie")));
}

}  // namespace
