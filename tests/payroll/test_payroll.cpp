// The payroll: what the salary capture stores and leaves, what slips and the summary print from
// it, and the letterhead layouts kept beside them.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "payroll/pay_slips.h"
#include "payroll/salary_capture.h"
#include "reports/letterhead.h"
#include "reports/letterhead_forms.h"
#include "reports/recording_device.h"
#include "staff/staff_fixture.h"
#include "store/record_layouts.h"

namespace korvel::payroll {
namespace {

using korvel::testing::add_person;
using korvel::testing::read_file;
using store::Code;
using store::PRSALG;
using store::PRSLNE;

struct Free {
    QString text;
    int amount;
};

class PayrollTest : public ::testing::Test {
  protected:
    PayrollTest() {
        auto add = [&](const char* post, const char* paymaster, const char* state = "") {
            const int n = add_person(
                s, {.post = post, .surname = QStringLiteral("NEL") + post, .state = state});
            s.working(Code::PRSALG).set_text(PRSALG["PA_OD_BL"], QString::fromLatin1(paymaster));
            s.write_record(Code::PRSALG, n);
        };
        add("10", "B");
        add("11", "");
        add("12", "O");
        add("13", "G", "*");
        add("14", "P");
        add("15", "E");
        s.open_file(Code::PRSLNE);
    }
    QString pay_file() const { return tree.staff_file(QStringLiteral("prs_lne_random.txt")); }
    void add_pay(const QString& post, int month, int salary, std::array<Free, 3> free = {}) {
        store::Record& r = s.working(Code::PRSLNE);
        r.clear();
        r.set_text(PRSLNE["PL_POS_NR"], post);
        r.set_int16(PRSLNE["PL_MAAND"], month);
        r.set_int16(PRSLNE["PL_SALARIS"], salary);
        for (int i = 1; i <= 3; ++i) {
            r.set_text(PRSLNE["pl_i_teks"], free[size_t(i - 1)].text, i);
            r.set_int16(PRSLNE["PL_I_BDRG"], free[size_t(i - 1)].amount, i);
        }
        s.append_record(Code::PRSLNE);
    }
    // The capture on a person and month, as the user opens it.
    std::unique_ptr<SalaryCapture> capture(int row, int month) {
        auto f = std::make_unique<SalaryCapture>(s);
        f->form_load();
        f->prs_grid_dbl_click(row);
        f->maand_lys_dbl_click(month - 1);
        return f;
    }

    korvel::testing::StaffTree tree;
    shell::Session& s = tree.session;
};

TEST_F(PayrollTest, ListHoldsOnlyTheSchoolsOwnActiveStaff) {
    SalaryCapture f(s);
    f.form_load();
    std::vector<QString> posts;
    for (const PayrollPerson& p : f.prs_grid)
        posts.push_back(p.post);
    EXPECT_EQ(posts, (std::vector<QString>{"10", "11"}));
}

TEST_F(PayrollTest, AmountsRoundHalfToEvenAndOverflowWritesNothing) {
    const struct {
        const char* typed;
        const char* reloads;
    } cases[] = {{"1234.50", "1234.00"}, {"1235.50", "1236.00"}, {"12,345.67", "12346.00"},
                 {"1 234", "1234.00"},   {"abc", "0.00"},        {"32767", "32767.00"},
                 {"-32768", "-32768.00"}};
    for (const auto& c : cases) {
        auto f = capture(0, 3);
        f->ink_data[1] = QString::fromLatin1(c.typed);
        f->amount_changed(1, 1);
        f->data_ok_click();
        EXPECT_EQ(capture(0, 3)->ink_data[1], QString::fromLatin1(c.reloads)) << c.typed;
    }
    const QByteArray before = read_file(pay_file());
    for (const char* typed : {"32768", "32767.5", "-32769"}) {
        auto f = capture(0, 3);
        f->uit_data[3] = QString::fromLatin1(typed);
        f->data_ok_click();
        EXPECT_TRUE(f->data_raam_visible) << typed;
        EXPECT_EQ(read_file(pay_file()), before) << typed;
    }
    const QString said = tree.dialogs.texts().join(u'\n');
    EXPECT_TRUE(said.contains(QStringLiteral("AT MOST 32767")) || said.contains("HOOGSTENS 32767"));
    EXPECT_TRUE(said.contains(QStringLiteral("-32768")));
}

TEST_F(PayrollTest, ZeroFreeLinesKeepWhatTheBufferHeld) {
    add_pay("10", 3, 1000, {Free{"REIS", 100}, Free{"ETE", 0}, Free{}});
    // Typing zero over a free line does not clear it; its label stays the default on loading.
    {
        auto f = capture(0, 3);
        EXPECT_EQ(f->ink_var_teks[1], QStringLiteral("REIS"));
        EXPECT_EQ(f->ink_var_teks[2], QStringLiteral("ANDER 2"));
        f->ink_data[4] = QStringLiteral("0");
        f->data_ok_click();
    }
    EXPECT_EQ(capture(0, 3)->ink_data[4], QStringLiteral("100.00"));
    // A new month for another person starts from the last record read, and inherits its lines.
    {
        auto f = capture(1, 4);
        f->ink_data[1] = QStringLiteral("500");
        f->data_ok_click();
    }
    ASSERT_EQ(s.count(Code::PRSLNE), 2);
    const auto inherited = read_pay_book(s).find(QStringLiteral("11"), 4);
    ASSERT_TRUE(inherited.has_value());
    EXPECT_EQ(inherited->salary, 500);
    EXPECT_EQ(inherited->earnings_free[0].text, QStringLiteral("REIS"));
    EXPECT_EQ(inherited->earnings_free[0].amount, 100);
}

TEST_F(PayrollTest, RechosenMonthDropsTypingAndTotalsShowNegativeNett) {
    auto f = capture(0, 5);
    f->ink_data[1] = QStringLiteral("100");
    f->uit_data[3] = QStringLiteral("1500.5");
    f->amount_changed(2, 3);
    EXPECT_EQ(f->salaris_totaal, QStringLiteral("-1,400.50"));
    f->maand_lys_dbl_click(4);
    EXPECT_TRUE(f->ink_data[1].isEmpty());
    EXPECT_EQ(f->salaris_totaal, QStringLiteral("0.00"));
}

TEST_F(PayrollTest, BadRecordsAreLeftOutAndTheFirstOfTwoHolds) {
    add_pay("10", 0, 1);
    add_pay("10", 13, 2);
    add_pay("10", -1, 3);
    add_pay("10", 6, 600);
    add_pay("10", 6, 999);
    // A file cut short in its last record.
    s.close_file(Code::PRSLNE);
    QFile f(pay_file());
    ASSERT_TRUE(f.open(QIODevice::Append));
    f.write(QByteArray("10\0\0", 4));
    f.close();
    s.open_file(Code::PRSLNE);
    EXPECT_EQ(capture(0, 6)->ink_data[1], QStringLiteral("600.00"));
    const PayBook book = read_pay_book(s);
    EXPECT_EQ(book.find(QStringLiteral("10"), 6)->salary, 600);
    EXPECT_FALSE(book.find(QStringLiteral("10"), 1).has_value());
}

class PaySlipsTest : public PayrollTest {
  protected:
    bool print(int option, int month, bool to_month = false) {
        PaySlips f(s, job, option);
        f.form_load();
        f.maand_lys_dbl_click(month - 1);
        f.to_month = to_month;
        if (from_to) {
            f.prs_grid_click(from_to->first);
            f.prs_grid_click(from_to->second);
        }
        f.choose_target = [](reports::PrintJob& j) {
            j.print_setup();
            j.state.page_pending = true;
            return true;
        };
        return option == kPaySlipOption ? f.print_pay_slips() : f.print_salary_summary();
    }
    reports::RecordingDevice device;
    reports::PrintJob job{device, tree.dialogs, {}, false};
    std::optional<std::pair<int, int>> from_to;
};

TEST_F(PaySlipsTest, SlipPrintsAPagePersonWithRandAmounts) {
    s.afrikaans = false;
    add_pay("10", 3, 12345, {Free{"TRAVEL", 0}, Free{"MEALS", 20}, Free{}});
    add_pay("11", 3, 100);
    add_pay("11", 4, 100);
    ASSERT_TRUE(print(kPaySlipOption, 3));
    const QStringList texts = device.texts();
    EXPECT_EQ(texts.count(QStringLiteral("PAY SLIP")), 2);
    EXPECT_TRUE(texts.contains(QStringLiteral("R 12,345.00")));
    EXPECT_TRUE(texts.contains(QStringLiteral("R 12,365.00")));  // EARNINGS
    EXPECT_TRUE(texts.contains(QStringLiteral("R 0.00")));       // overtime always
    EXPECT_FALSE(texts.contains(QStringLiteral("TRAVEL")));      // a zero line is left out
    EXPECT_TRUE(texts.contains(QStringLiteral("MEALS")));
    EXPECT_TRUE(device.find_text(QStringLiteral("NETT SALARY"))->bold);
    EXPECT_EQ(device.texts(2).count(QStringLiteral("PAY SLIP")), 1);

    device.clear();
    from_to = std::pair{1, 0};  // From past To
    ASSERT_TRUE(print(kPaySlipOption, 3));
    EXPECT_FALSE(device.texts().contains(QStringLiteral("PAY SLIP")));
}

TEST_F(PaySlipsTest, SummaryAddsMonthsInSixtyFourBits) {
    s.afrikaans = false;
    for (int m = 1; m <= 3; ++m)
        add_pay("10", m, 30000);
    add_pay("11", 3, 5000);
    PaySlips f(s, job, kSummaryOption);
    f.form_load();
    const PayBook book = read_pay_book(s);
    const reports::PrintGrid month = f.summary_grid(book, 3, 3);
    ASSERT_EQ(month.rows(), 4);  // heading, two people, total
    EXPECT_EQ(month.text(3, 2), QStringLiteral("35000.00"));
    const reports::PrintGrid year = f.summary_grid(book, 1, 3);
    EXPECT_EQ(year.text(1, 2), QStringLiteral("90000.00"));
    EXPECT_EQ(year.text(3, 12), QStringLiteral("95000.00"));
    EXPECT_TRUE(year.cell(3, 1).bold);
    EXPECT_TRUE(print(kSummaryOption, 3, true));
    EXPECT_EQ(device.calls().front().orientation, reports::kLandscape);
}

// ---- the letterhead layouts ----

class LayoutsTest : public PayrollTest {
  protected:
    QString general(const QString& name) const { return tree.native(s.folders.general_year, name); }
};

TEST_F(LayoutsTest, AKillAtEachStepOfStoringLeavesOldOrNewLayouts) {
    for (int kill = 1; kill <= 2; ++kill) {
        reports::LetterheadLayouts f(s);
        f.form_load();
        tree.dialogs.type(QStringLiteral("SKOOL%1").arg(kill));
        f.bh_lys_dbl_click(int(f.bh_lys.size()) - 1);
        f.bh_data[4] = QStringLiteral("50");
        f.step_done = [kill](int step) {
            if (step == kill)
                throw std::runtime_error("killed");
        };
        EXPECT_THROW(f.bh_ok_click(), std::runtime_error);
        // The table is whole and holds the layouts stored so far, the new one among them.
        const auto table = reports::read_letterhead_table(s.fs().native(s.folders.general_year));
        ASSERT_EQ(int(table.size()), kill);
        EXPECT_EQ(table.back().top, 50);
        EXPECT_EQ(QFile::exists(general(QStringLiteral("SKOOL%1.TXT").arg(kill))), kill == 2);
    }
    EXPECT_EQ(QDir(s.fs().native(s.folders.general_year)).entryList({"*.tmp*"}, QDir::Files),
              QStringList());
}

TEST_F(LayoutsTest, NamesThatLeaveTheFolderAreRefused) {
    reports::LetterheadLayouts f(s);
    f.form_load();
    for (const char* bad : {"..\\..\\X", "A/B", "C:NAAM"}) {
        tree.dialogs.type(QString::fromLatin1(bad));
        f.bh_lys_dbl_click(int(f.bh_lys.size()) - 1);
        EXPECT_EQ(f.bh_lys.size(), 1) << bad;
    }
    EXPECT_FALSE(QFile::exists(general(QStringLiteral("brf_hoof.txt"))));
}

TEST_F(LayoutsTest, ImportPutsTheNewPictureInPlaceBeforeTheOldGo) {
    const QString old = general(QStringLiteral("SKOOL_BRIEFHOOF.PNG"));
    korvel::testing::write_file(old, "old");
    const QString chosen = tree.dir.filePath(QStringLiteral("stationery.jpg"));
    korvel::testing::write_file(chosen, "new");
    reports::LetterheadLayouts f(s);
    f.form_load();
    tree.dialogs.choose(chosen);
    ASSERT_TRUE(QFile::exists(old));
    int steps = 0;
    f.step_done = [&](int) {
        // The first step ends with the copy; storing the table follows.
        if (++steps == 1) {
            EXPECT_TRUE(QFile::exists(old));
            EXPECT_EQ(read_file(general(QStringLiteral("skool_briefhoof.jpg"))), "new");
        }
    };
    f.bh_import_click();
    EXPECT_FALSE(QFile::exists(old));
    const auto table = reports::read_letterhead_table(s.fs().native(s.folders.general_year));
    ASSERT_EQ(table.size(), 1u);
    EXPECT_EQ(table[0].name, QStringLiteral("SKOOL_BRIEFHOOF.JPG"));
    EXPECT_EQ(table[0].top, 50);
}

}  // namespace
}  // namespace korvel::payroll
