#include <gtest/gtest.h>

#include "attendance/attendance_reports.h"
#include "attendance/mark_sheet.h"
#include "attendance_fixture.h"
#include "reports/recording_device.h"
#include "store/quoted_text.h"

using namespace korvel::attendance;
using korvel::reports::PrintJob;
using korvel::reports::RecordingDevice;
using korvel::store::Code;
using korvel::testing::add_person;
using korvel::testing::AttendanceTree;

namespace {

int march(int day) {
    return 59 + day;  // day of year in 2026
}

class MarkSheets : public ::testing::Test {
  protected:
    void SetUp() override {
        tree.session.afrikaans = false;
        person("10", "M", "1");  // an Afrikaans statement
        person("11", "F", "E");  // a LURITS letter: English
        tree.write_reasons();
        // Every letter the register knows, and the garbage it may meet.
        const char* days[][2] = {{"a", " 3"}, {"2", "3 "}, {"l", ".."}, {"u", "xx"}, {"s", " 1"},
                                 {"o", " 1"}, {"v", " 1"}, {"A", " 1"}, {"*", " 1"}, {".", ".."}};
        for (int i = 0; i < 10; ++i) {
            for (const char* post : {"10", "11"}) {
                tree.set_day(post, march(2 + i), days[i][0], days[i][1]);
            }
        }
    }
    void person(const QString& post, const QString& gender, const QString& language) {
        const int n = add_person(
            tree.session,
            {.post = post, .surname = "SMIT" + post, .id = "8001015009087", .gender = gender});
        korvel::store::Record& r = tree.session.working(Code::PRSALG);
        r.set_text(korvel::store::PRSALG["PA_TAAL"], language);
        tree.session.write_record(Code::PRSALG, n);
    }
    std::unique_ptr<MarkSheet> open_form() {
        auto form = std::make_unique<MarkSheet>(tree.session, job);
        form->choose_target = [](PrintJob& j) {
            j.print_setup();
            j.state.page_pending = true;
            return true;
        };
        form->form_load();
        form->opsies.form_load();
        form->opsies.ps_data[kFromDateBox] = "2026.03.01";
        form->opsies.ps_data[kToDateBox] = "2026.03.31";
        return form;
    }
    QString printed() const { return device.texts().join(u'\n'); }

    AttendanceTree tree;
    RecordingDevice device;
    PrintJob job{device, tree.dialogs};
};

TEST_F(MarkSheets, LettersAsStoredTypesByTheStatementsLanguage) {
    auto form = open_form();
    const auto days = form->absent_days("10", QDate(2026, 3, 1), QDate(2026, 3, 31));
    // a, 2, l, u, s; leave ("o", "v"), a capital, the old "*" and none are not listed.
    ASSERT_EQ(days.size(), 5u);
    EXPECT_EQ(days[0].date, QDate(2026, 3, 2));
    EXPECT_EQ(days[0].reason, 3);
    EXPECT_EQ(days[1].reason, 3);  // "3 " from leave capture reads as " 3"
    EXPECT_EQ(days[4].letter, 's');

    ASSERT_TRUE(form->print_mark_sheets());
    const QString all = printed();
    // The Afrikaans statement of post 10 has no text for "s"; the English one has no "u".
    EXPECT_TRUE(all.contains("SKOOLBYWONINGSTAAT : 2026.03.01 - 2026.03.31"));
    EXPECT_TRUE(all.contains("ATTENDANCE SHEET : 2026.03.01 - 2026.03.31"));
    EXPECT_TRUE(all.contains("UITGETEKEN"));
    EXPECT_TRUE(all.contains("AFWESIG (HEELDAG)"));
    EXPECT_TRUE(all.contains("SIGNED OUT"));
    EXPECT_EQ(all.count("UITGETEKEN"), 1);
    EXPECT_EQ(all.count("SIGNED OUT"), 1);
    EXPECT_TRUE(all.contains("TOTALE DAE : 5"));
    EXPECT_TRUE(all.contains("TOTAL DAYS : 5"));
    EXPECT_TRUE(all.contains("SMIT10, MNR J  (8001015009087)"));
    EXPECT_FALSE(all.contains("2026.03.07"));  // "o"
    // The program's language is back after the Afrikaans statement.
    EXPECT_FALSE(tree.session.afrikaans);
    EXPECT_FALSE(job.afrikaans);
}

TEST_F(MarkSheets, TheGenderBoxesChooseWhoPrints) {
    auto form = open_form();
    form->opsies.manlik = false;
    EXPECT_TRUE(form->print_mark_sheets());
    EXPECT_FALSE(printed().contains("SMIT10"));
    EXPECT_TRUE(printed().contains("SMIT11"));

    form->opsies.vroulik = false;
    EXPECT_FALSE(form->print_mark_sheets());
}

TEST_F(MarkSheets, OptionsStayInTheirFileFromOnePrintToTheNext) {
    const QString path = tree.staff_file("sb_opmerkings.txt");
    MarkSheetOptions o(tree.session);
    o.form_load();
    // Without the file: a month back to today, the rest blank.
    EXPECT_EQ(o.ps_data[kFromDateBox], "2026.02.10");
    EXPECT_EQ(o.ps_data[kToDateBox], "2026.03.10");
    EXPECT_EQ(o.ps_data[kFirstCommentBox], "");
    o.ps_data[kFromDateBox] = "2026.01.05";
    o.ps_data[kFirstContactBox] = "TEL 012 345 6789";
    o.ps_data[kFirstCommentBox + 1] = "SAY \"HELLO\"";
    o.data_ok_click();
    EXPECT_TRUE(o.confirmed);

    MarkSheetOptions again(tree.session);
    again.form_load();
    EXPECT_EQ(again.ps_data[kFromDateBox], "2026.01.05");
    EXPECT_EQ(again.ps_data[kFirstContactBox], "TEL 012 345 6789");
    EXPECT_EQ(again.ps_data[kFirstCommentBox + 1], "SAY 'HELLO'");

    // What the file may hold instead: too few values, no date, nothing, megabytes.
    const struct {
        QByteArray bytes;
        QString from, contact;
    } cases[] = {
        {"\"2026.04.01\",\"xx\",\"TEL\"\r\n", "2026.04.01", "TEL"},
        {"\"2026.04.01", "2026.02.10", ""},  // a quote that never closes
        {"", "2026.02.10", ""},
        {"\"\",\"\",\"" + QByteArray(3 << 20, 'x') + "\"", "2026.02.10",
         QString(kOptionTextLimit, u'x')},
    };
    for (const auto& c : cases) {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(c.bytes);
        f.close();
        MarkSheetOptions read(tree.session);
        read.form_load();
        EXPECT_EQ(read.ps_data[kFromDateBox], c.from) << c.bytes.left(40).toStdString();
        EXPECT_EQ(read.ps_data[kToDateBox], "2026.03.10");
        EXPECT_EQ(read.ps_data[kFirstContactBox], c.contact);
    }
}

}  // namespace
