// The staff lists on the demo tree: the grids of the five lists for known staff, the selection,
// the pages through the recording device, a real PDF and workbook, the print menu and the
// command line.

#include <gtest/gtest.h>
#include <algorithm>

#include <QDate>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "platform/drive_map.h"
#include "reports/cli_print.h"
#include "reports/grid_output.h"
#include "reports/print_command_fixture.h"
#include "reports/print_menu.h"
#include "reports/recording_device.h"
#include "reports/school_report.h"
#include "reports/staff_lists.h"
#include "shell/demo_tree.h"
#include "shell/helpers.h"
#include "shell/school.h"
#include "shell/session.h"
#include "store/record_layouts.h"
#include "ui/scripted_dialogs.h"

// Readable failures: texts as texts.
inline void PrintTo(const QString& s, std::ostream* os) {
    *os << '"' << s.toStdString() << '"';
}

namespace korvel::reports {
namespace {

using store::Code;
constexpr int kYear = 2026;

QString u8(const char* s) {
    return QString::fromUtf8(s);
}

class StaffListsTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        dir_ = new QTemporaryDir;
        ui::UnattendedDialogs demo_answers;
        shell::write_demo_tree(dir_->path(), kYear, demo_answers);
    }
    static void TearDownTestSuite() {
        delete dir_;
        dir_ = nullptr;
    }

    StaffListsTest() {
        session = shell::Session::on_drive(
            dialogs, platform::DriveMap::explicit_map({{QStringLiteral("C:"), dir_->path()}}),
            QStringLiteral("C:"), QString::number(kYear));
        EXPECT_TRUE(shell::load_school_record(*session));
        session->fixed_today = QDate(kYear, 3, 4);
        session->program_version = QStringLiteral("4.2.17");
        job = std::make_unique<PrintJob>(device, dialogs, report_school(*session), true);
        job->clock = [] { return QDateTime(QDate(kYear, 3, 4), QTime(9, 5, 7)); };
    }

    // The form on an option, loaded, printing to the recording device.
    std::unique_ptr<StaffLists> form(int option, bool afrikaans = true) {
        session->afrikaans = afrikaans;
        auto f = std::make_unique<StaffLists>(*session, *job, option);
        f->form_load();
        f->choose_target = [](PrintJob& j) {
            j.print_setup();
            j.state.page_pending = true;
            return true;
        };
        return f;
    }

    // The row whose first column (or `col`) holds the text; -1 when none.
    static int row_of(const PrintGrid& g, const QString& text, int col = 0) {
        for (int r = g.fixed_rows; r < g.rows(); ++r)
            if (g.text(r, col) == text)
                return r;
        return -1;
    }
    // The text beside the first cell of column 0 that holds the label; "?" when none.
    static QString beside(const PrintGrid& g, const QString& label) {
        const int r = row_of(g, label);
        return r < 0 ? QStringLiteral("?") : g.text(r, 1);
    }
    static QStringList column(const PrintGrid& g, int col) {
        QStringList out;
        for (int r = g.fixed_rows; r < g.rows(); ++r)
            out << g.text(r, col);
        return out;
    }
    static QStringList heads(const PrintGrid& g) {
        QStringList out;
        for (int c = 0; c < g.cols(); ++c)
            out << g.text(0, c);
        return out;
    }
    // The master record of a post number, read from the file.
    store::Record master(const QString& post) {
        session->open_file(Code::PRSALG, session->folders.staff);
        const int n = session->find_by_key(Code::PRSALG, store::PRSALG["PA_POS_NR"], post);
        EXPECT_GT(n, 0) << post.toStdString();
        session->read_record(Code::PRSALG, n);
        return session->working(Code::PRSALG);
    }

    static inline QTemporaryDir* dir_ = nullptr;
    ui::ScriptedDialogs dialogs;
    std::unique_ptr<shell::Session> session;
    RecordingDevice device;
    std::unique_ptr<PrintJob> job;
};

constexpr const auto& L = store::PRSALG;

TEST_F(StaffListsTest, StaffListInTheWesternCapeEndsWithCemis) {
    auto f = form(kStaffListOption);
    const PrintGrid g = f->staff_list_grid();
    EXPECT_EQ(heads(g), (QStringList{"POS", "NAAM", "ID.NR", "G", "T", "PERSAL", "SACE", "LURITS",
                                     "CEMIS NR"}));

    const store::Record r = master(QStringLiteral("101"));
    const int row = row_of(g, QStringLiteral("101"));
    ASSERT_GT(row, 0);
    EXPECT_EQ(g.text(row, 1), u"DU TOIT J P MNR");
    EXPECT_EQ(g.text(row, 2), r.text(L["PA_ID_NR"]));
    EXPECT_EQ(g.text(row, 3), u"M");
    EXPECT_EQ(g.text(row, 5), r.text(L["PA_PERSAL"]));
    EXPECT_EQ(g.text(row, 6), r.text(L["PA_DPT_NR"]));
    EXPECT_EQ(g.text(row, 7).size(), 9);  // the LURITS number found by identity number
    EXPECT_FALSE(g.text(row, 8).isEmpty());
    // The CEMIS number is the additional record's.
    session->open_file(Code::PRSADD, session->folders.staff);
    const int add = session->find_by_key(Code::PRSADD, store::PRSADD["PD_POS_NR"], "101");
    session->read_record(Code::PRSADD, add);
    EXPECT_EQ(g.text(row, 8), session->working(Code::PRSADD).text(store::PRSADD["PD_CEMIS"]));

    // Newest appointments have no LURITS number yet.
    EXPECT_TRUE(g.text(row_of(g, QStringLiteral("125")), 7).isEmpty());
    // Inactive and deleted records never appear; 36 of the 40 do.
    for (const char* gone : {"119", "121", "A010", "1187"})
        EXPECT_EQ(row_of(g, QString::fromLatin1(gone)), -1) << gone;
    EXPECT_EQ(g.rows() - 1, 36);
    // Alphabetic: sorted on the name column.
    QStringList names = column(g, 1);
    QStringList sorted = names;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(names, sorted);
}

TEST_F(StaffListsTest, StaffListElsewhereEndsWithReqvAndEnglishHeads) {
    session->school.province_code = QStringLiteral("GT");
    auto f = form(kStaffListOption, false);
    f->kies_volgorde = StaffOrder::Numeric;
    const PrintGrid g = f->staff_list_grid();
    EXPECT_EQ(heads(g),
              (QStringList{"PST", "NAME", "ID.NO", "G", "L", "PERSAL", "SACE", "LURITS", "REQV"}));
    EXPECT_EQ(g.text(row_of(g, "101"), 8), u"15");
    EXPECT_EQ(g.text(row_of(g, "A001"), 8), u"0");
    // Numeric: the order of the list, by post number.
    const QStringList posts = column(g, 0);
    EXPECT_EQ(posts.first(), u"101");
    EXPECT_EQ(posts.last(), u"A012");
    EXPECT_TRUE(std::is_sorted(posts.begin(), posts.end()));

    session->school.province_code = QStringLiteral("EC");
    session->afrikaans = true;
    EXPECT_EQ(f->staff_list_grid().text(0, 8), u"'REQV'");
}

TEST_F(StaffListsTest, SelectionByRangeAppointmentAndAdministrativeStaff) {
    auto f = form(kStaffListOption);
    f->kies_volgorde = StaffOrder::Numeric;

    // The range: a click fills the box that has the focus, from then the second.
    const auto at = [&](const char* post) {
        for (size_t i = 0; i < f->prs_lys.size(); ++i)
            if (f->prs_lys[i].post == QLatin1String(post))
                return int(i);
        return -1;
    };
    f->prs_lys_click(at("103"));
    f->prs_lys_click(at("110"));
    EXPECT_EQ(column(f->staff_list_grid(), 0),
              (QStringList{"103", "104", "105", "106", "107", "108", "109", "110"}));
    f->pos_data = {QString(), f->prs_lys.front().text, f->prs_lys.back().text};

    // Governing body only.
    f->kies_aanstelling = {false, true, false};
    EXPECT_EQ(column(f->staff_list_grid(), 0),
              (QStringList{"117", "120", "A003", "A006", "A009", "A011", "A012"}));
    // Administrative staff only, then excluded.
    f->kies_aanstelling = {true, true, true};
    f->kies_administratief = AdminChoice::Only;
    QStringList posts = column(f->staff_list_grid(), 0);
    EXPECT_EQ(posts.size(), 11);
    for (const QString& p : posts)
        EXPECT_TRUE(p.startsWith(u'A')) << p.toStdString();
    f->kies_administratief = AdminChoice::Excluded;
    posts = column(f->staff_list_grid(), 0);
    EXPECT_EQ(posts.size(), 25);
    for (const QString& p : posts)
        EXPECT_FALSE(p.startsWith(u'A')) << p.toStdString();
}

TEST_F(StaffListsTest, AnEmptyPaymasterCountsAsEducationDepartment) {
    session->open_file(Code::PRSALG, session->folders.staff);
    const int n = session->find_by_key(Code::PRSALG, L["PA_POS_NR"], "109");
    session->read_record(Code::PRSALG, n);
    const store::Record kept = session->working(Code::PRSALG);
    session->working(Code::PRSALG).set_text(L["PA_OD_BL"], QString());
    ASSERT_TRUE(session->write_record(Code::PRSALG, n));

    auto f = form(kStaffListOption);
    f->kies_aanstelling = {false, true, true};
    EXPECT_EQ(row_of(f->staff_list_grid(), "109"), -1);
    f->kies_aanstelling = {true, false, false};
    EXPECT_GT(row_of(f->staff_list_grid(), "109"), 0);

    // The shared tree as it was.
    session->working(Code::PRSALG) = kept;
    ASSERT_TRUE(session->write_record(Code::PRSALG, n));
}

TEST_F(StaffListsTest, AddressListHasNameNumbersAddressAndSignedTelephones) {
    auto f = form(kAddressListOption);
    const PrintGrid g = f->address_list_grid();
    EXPECT_EQ(heads(g), (QStringList{"POS", "NAAM/ID.NR/PERSAL", "HUISADRES", "TELEFOON NRS"}));
    const store::Record r = master("105");
    const int row = row_of(g, "105");
    ASSERT_GT(row, 0);
    const QStringList who = cell_lines(g.text(row, 1));
    EXPECT_EQ(who,
              (QStringList{"MCKENZIE D A MR", "ID-NR " + r.text(L["PA_ID_NR"]),
                           "PERSAL " + r.text(L["PA_PERSAL"]), "SACE " + r.text(L["PA_DPT_NR"])}));
    EXPECT_EQ(cell_lines(g.text(row, 2)).first(), r.text(L["PA_H_ADR1"]));
    const QStringList phones = cell_lines(g.text(row, 3));
    EXPECT_EQ(phones.at(0), "H " + r.text(L["PA_T_HUIS"]));
    EXPECT_EQ(phones.at(1), u"W 022 713 2450");
    EXPECT_EQ(phones.at(2), "S " + r.text(L["PA_T_SEL"]));
    EXPECT_GT(g.row(row).height, 240);  // four lines

    auto e = form(kAddressListOption, false);
    const PrintGrid ge = e->address_list_grid();
    const int re = row_of(ge, "105");
    EXPECT_TRUE(cell_lines(ge.text(re, 1)).at(1).startsWith(u"ID NO "));
    EXPECT_TRUE(cell_lines(ge.text(re, 3)).at(2).startsWith(u"C "));
}

TEST_F(StaffListsTest, BirthdayListTakesThePeriodInDateOrder) {
    auto f = form(kBirthdayListOption);
    f->jr_data[1] = QDate(kYear, 3, 1);
    f->jr_data[2] = QDate(kYear, 3, 31);
    PrintGrid g = f->birthday_list_grid();
    EXPECT_EQ(heads(g), (QStringList{"DATUM", "POSNR", "NAAM", "VERJAARDAG"}));
    EXPECT_EQ(column(g, 1), (QStringList{"113", "101", "1240", "A009"}));
    EXPECT_EQ(column(g, 0), (QStringList{"2026.03.08", "2026.03.14", "2026.03.25", "2026.03.29"}));
    const store::Record r = master("101");
    EXPECT_EQ(g.text(2, 3), shell::date_to_text(*r.date(L["PA_G_DATUM"])));

    // A period over the year end takes each birthday in the year it falls.
    f->jr_data[1] = QDate(kYear, 12, 1);
    f->jr_data[2] = QDate(kYear + 1, 1, 10);
    g = f->birthday_list_grid();
    EXPECT_EQ(column(g, 1), (QStringList{"A011", "109", "123"}));
    EXPECT_EQ(g.text(3, 0), u"2027.01.05");

    // The period stands under the title.
    f->jr_data[1] = QDate(kYear, 3, 1);
    f->jr_data[2] = QDate(kYear, 3, 31);
    ASSERT_TRUE(f->print_birthday_list());
    EXPECT_NE(device.find_text("2026.03.01 - 2026.03.31"), nullptr);
    EXPECT_EQ(job->state.report_name, u"2026VERJAARDAGLYS : ");

    EXPECT_FALSE(
        StaffLists::birthday_in(QDate(1980, 6, 1), QDate(2026, 7, 1), QDate(2026, 6, 1)).isValid());
    EXPECT_EQ(StaffLists::birthday_in(QDate(1980, 2, 29), QDate(2026, 2, 1), QDate(2026, 3, 1)),
              QDate(2026, 2, 28));
}

TEST_F(StaffListsTest, AgeListGivesYearsAndWholeMonths) {
    auto f = form(kBirthdayListOption);
    const PrintGrid g = f->age_list_grid();
    EXPECT_EQ(heads(g),
              (QStringList{"POSNR", "VAN & VOLLE NAME", "ID-NOMMER", "JJ:MM", "RAS", "G"}));
    const int row = row_of(g, "101");
    EXPECT_EQ(g.text(row, 1), u"DU TOIT JACOBUS PETRUS");
    const QDate birth = *master("101").date(L["PA_G_DATUM"]);
    ASSERT_EQ(birth, QDate(kYear - 56, 3, 14));
    EXPECT_EQ(g.text(row, 3), u"55:11");  // 4 March, ten days short of the birthday

    EXPECT_EQ(StaffLists::age_text(QDate(1980, 3, 4), QDate(2026, 3, 4)), u"46:00");
    EXPECT_EQ(StaffLists::age_text(QDate(1980, 3, 5), QDate(2026, 3, 4)), u"45:11");
    EXPECT_EQ(StaffLists::age_text(QDate(1980, 1, 31), QDate(2026, 3, 1)), u"46:01");
    EXPECT_TRUE(StaffLists::age_text(QDate(), QDate(2026, 3, 4)).isEmpty());
}

TEST_F(StaffListsTest, StaffDetailsFollowTheSectionTicks) {
    auto f = form(kStaffDetailsOption);
    const store::Record r = master("101");
    const int n = session->find_by_key(Code::PRSALG, L["PA_POS_NR"], "101");
    PrintGrid g = f->staff_details_grid(n);
    EXPECT_EQ(g.cols(), 2);
    EXPECT_EQ(g.text(0, 0), u"POSNOMMER");
    EXPECT_EQ(g.text(0, 1), u"101");
    EXPECT_EQ(beside(g, "GESLAG"), u"MANLIK");
    EXPECT_GT(row_of(g, u8("TAALVERMOë")), 0);  // letter for letter, small ë and all
    EXPECT_EQ(beside(g, "'REQV'"), u"15");
    EXPECT_EQ(beside(g, "BANKNAAM"), r.text(L["PB_BNK_NM"]));
    const int quals = row_of(g, "KWALIFIKASIES");
    EXPECT_TRUE(g.cell(quals, 0).bold);
    EXPECT_EQ(g.text(quals + 1, 0), u"KWALIFIKASIE");
    EXPECT_GT(row_of(g, "AANSTELLINGS"), quals);
    EXPECT_GT(row_of(g, "ONDERVINDING"), row_of(g, "AANSTELLINGS"));
    EXPECT_GT(row_of(g, "1ste AANSTELLINGSDATUM"), 0);
    EXPECT_EQ(beside(g, "JARE : DIE SKOOL"), u"14");

    // Banking alone.
    f->sections = {false, false, true, false, false, false, false};
    g = f->staff_details_grid(n);
    EXPECT_EQ(g.rows(), 8);
    EXPECT_EQ(g.text(0, 0), u"BANKNAAM");

    auto e = form(kStaffDetailsOption, false);
    e->sections = {true, false, false, false, false, false, false};
    g = e->staff_details_grid(session->find_by_key(Code::PRSALG, L["PA_POS_NR"], "102"));
    EXPECT_EQ(g.text(0, 0), u"POST NUMBER");
    EXPECT_EQ(beside(g, "GENDER"), u"FEMALE");
    EXPECT_GT(row_of(g, "LANGUAGE ABILITY"), 0);

    // One header per person, with the person's number.
    e->kies_volgorde = StaffOrder::Numeric;
    e->pos_data = {QString(), e->prs_lys[0].text, e->prs_lys[2].text};
    ASSERT_TRUE(e->print_staff_details());
    const QStringList texts = device.texts();
    for (const char* title :
         {"2026STAFF DETAILS : 101", "2026STAFF DETAILS : 102", "2026STAFF DETAILS : 103"})
        EXPECT_TRUE(texts.contains(QString::fromLatin1(title))) << title;
    EXPECT_EQ(texts.filter("PAGE : ").size(), 3);
}

TEST_F(StaffListsTest, StaffListPrintsHeaderTableAndFooter) {
    auto f = form(kStaffListOption);
    f->kr_ok_click();
    EXPECT_EQ(job->state.report_name, u"2026PERSONEELLYS : ");
    const QStringList page1 = device.texts(1);
    EXPECT_TRUE(page1.contains(u"2026PERSONEELLYS"));
    EXPECT_TRUE(page1.contains(u"DU TOIT J P MNR"));
    EXPECT_TRUE(page1.contains(u"2026PERSONEELLYS : "));  // the footer
    // The body starts at line 6.
    const RecordedCall* head = device.find_text("CEMIS NR");
    ASSERT_NE(head, nullptr);
    EXPECT_GE(head->y1, 6 * kCharHeightTwips);
    EXPECT_EQ(device.count(RecordedCall::Kind::EndDoc), 1);
}

// What spoils a printed page: two texts of one line closer than a blank ("29:012 COL"), or a
// text over a line, whose white ground blots the line out. One description a fault.
QStringList layout_faults(const RecordingDevice& device) {
    constexpr double slack = 0.5;  // twips
    using Kind = RecordedCall::Kind;
    QStringList faults;
    const auto& calls = device.calls();
    for (const RecordedCall& a : calls) {
        if (a.kind != Kind::Text)
            continue;
        for (const RecordedCall& b : calls) {
            if (b.page != a.page || &a == &b)
                continue;
            // On one line: they share more than half the height of the smaller text.
            const double shared = std::min(a.y2, b.y2) - std::max(a.y1, b.y1);
            if (b.kind == Kind::Text && a.x1 <= b.x1 &&
                shared > std::min(a.y2 - a.y1, b.y2 - b.y1) / 2) {
                const double blank = (a.x2 - a.x1) / double(a.text.size());
                if (b.x1 - a.x2 < blank - slack)
                    faults << QStringLiteral("\"%1\" against \"%2\"").arg(a.text, b.text);
            } else if (b.kind == Kind::Line) {
                const bool across =
                    b.y1 == b.y2 && a.y1 + slack < b.y1 && b.y1 < a.y2 - slack &&
                    std::min(a.x2, std::max(b.x1, b.x2)) - std::max(a.x1, std::min(b.x1, b.x2)) >
                        slack;
                const bool down =
                    b.x1 == b.x2 && a.x1 + slack < b.x1 && b.x1 < a.x2 - slack &&
                    std::min(a.y2, std::max(b.y1, b.y2)) - std::max(a.y1, std::min(b.y1, b.y2)) >
                        slack;
                if (across || down)
                    faults << QStringLiteral("\"%1\" over a line").arg(a.text);
            }
        }
    }
    return faults;
}

TEST_F(StaffListsTest, NoTextTouchesTheNextOrLiesOverALine) {
    using Print = bool (StaffLists::*)();
    const struct {
        int option;
        Print print;
        bool afrikaans;
    } lists[] = {
        {kStaffListOption, &StaffLists::print_staff_list, false},  // PST against NAME
        {kStaffListOption, &StaffLists::print_staff_list, true},
        {kAddressListOption, &StaffLists::print_address_list, true},
        {kBirthdayListOption, &StaffLists::print_birthday_list, true},
        {kBirthdayListOption, &StaffLists::print_age_list, false},  // YY:MM against RACE
    };
    for (const auto& list : lists) {
        device.clear();
        auto f = form(list.option, list.afrikaans);
        f->jr_data[1] = QDate(kYear, 1, 1);
        f->jr_data[2] = QDate(kYear, 12, 31);
        ASSERT_TRUE(((*f).*list.print)());
        EXPECT_EQ(layout_faults(device), QStringList{}) << job->state.report_name.toStdString();
    }
}

TEST_F(StaffListsTest, ManyStaffRunOverPagesWithTheContinuationMark) {
    auto f = form(kAddressListOption);
    ASSERT_TRUE(f->print_address_list());
    ASSERT_GE(device.texts(2).size(), 1);
    EXPECT_TRUE(device.texts(1).contains(u"2.../"));
    EXPECT_TRUE(device.texts(2).contains(u"POS"));  // the head again on the next page
    EXPECT_TRUE(device.texts(2).contains(u"BLADSY : 2"));
}

TEST_F(StaffListsTest, CancelledTargetPrintsNothingAndEmptySelectionPrintsTheHead) {
    auto f = form(kStaffListOption);
    f->choose_target = [](PrintJob&) { return false; };
    EXPECT_FALSE(f->print_staff_list());
    EXPECT_TRUE(device.calls().empty());

    auto g = form(kStaffListOption);
    g->kies_aanstelling = {false, false, false};
    ASSERT_TRUE(g->print_staff_list());
    EXPECT_TRUE(device.texts().contains(u"BLADSY : 1"));
    EXPECT_TRUE(device.texts().contains(u"NAAM"));
    EXPECT_FALSE(device.texts().contains(u"DU TOIT J P MNR"));
}

// ---- the print menu -------------------------------------------------------------------------

TEST_F(StaffListsTest, PrintMenuAvailabilityAndDisabledWhileAFormRuns) {
    PrintMenu menu(true);
    register_staff_lists(menu, *session, *job, nullptr);
    menu.form_load();
    for (int i = 1; i <= 13; ++i) {
        const bool built = i <= 5 || i == 9 || i == 10 || i == 12 || i == 13;
        EXPECT_EQ(menu.pr_option[size_t(i)].enabled, built) << i;
    }

    // The form runs through the dialogs: every button is off meanwhile.
    int seen_option = 0;
    bool any_enabled = true;
    dialogs.on_form("sk421_prg", [&](ui::ChildForm& child) {
        auto& form = dynamic_cast<StaffLists&>(child);
        seen_option = form.option;
        any_enabled = false;
        for (int i = 1; i <= 13; ++i)
            any_enabled = any_enabled || menu.pr_option[size_t(i)].enabled;
    });
    menu.pr_option_click(3);
    EXPECT_EQ(seen_option, 3);
    EXPECT_FALSE(any_enabled);
    EXPECT_TRUE(menu.pr_option[1].enabled);
    EXPECT_EQ(menu.noted_option, 3);

    // A button with no form only notes its option; a disabled one does nothing.
    menu.pr_option_click(10);
    EXPECT_EQ(menu.noted_option, 10);
    menu.pr_option_click(6);
    EXPECT_EQ(menu.noted_option, 10);
    menu.set_opener(6, [](int) {});
    menu.form_load();
    EXPECT_TRUE(menu.pr_option[6].enabled);
}

// ---- the command line -------------------------------------------------------------------------

using korvel::testing::output_of;
using PrintCommand = korvel::testing::PrintCommandOnDemo<print_report>;

TEST_F(PrintCommand, StaffListToPdf) {
    const QString pdf = target.filePath("staff.pdf");
    ASSERT_EQ(run({"staff-list", "--lang", "en", "--order", "numeric", "--pdf", pdf}), 0)
        << err_text.toStdString();
    EXPECT_TRUE(out_text.contains("written: " + pdf));
    const QString text = output_of("pdftotext", {pdf, "-"});
    EXPECT_TRUE(text.contains("CEMIS NO"));
    EXPECT_TRUE(text.contains("MCKENZIE D A MR"));
    EXPECT_FALSE(text.contains("BASSON"));  // inactive
#ifdef Q_OS_LINUX
    EXPECT_TRUE(text.contains("VESPARINE (Linux)"));  // the footer names the system
#endif
}

TEST_F(PrintCommand, StaffListToAWorkbookReadBack) {
    const QString xlsx = target.filePath("staff.xlsx");
    ASSERT_EQ(run({"staff-list", "--admin", "excluded", "--appointments", "O", "--xlsx", xlsx}), 0)
        << err_text.toStdString();
    ASSERT_TRUE(QFile::exists(xlsx));
    const QString rows = output_of(
        "/usr/bin/python3", {"-c",
                             "import sys, openpyxl\n"
                             "ws = openpyxl.load_workbook(sys.argv[1]).worksheets[0]\n"
                             "print('E2=' + str(ws['E2'].value))\n"
                             "for row in ws.iter_rows(values_only=True):\n"
                             "    print('|'.join('' if v is None else str(v) for v in row))\n",
                             xlsx});
    EXPECT_TRUE(rows.contains("POS|NAAM|ID.NR|G|T|PERSAL|SACE|LURITS|CEMIS NR"))
        << rows.left(600).toStdString();
    EXPECT_TRUE(rows.contains("|DU TOIT J P MNR|"));
#ifdef Q_OS_LINUX
    EXPECT_TRUE(rows.contains("E2=Linux\n"));
#endif
    EXPECT_FALSE(rows.contains("MARAIS"));  // administrative
    EXPECT_FALSE(rows.contains("FOURIE"));  // governing body
}

TEST_F(PrintCommand, OtherListsAndBadArguments) {
    EXPECT_EQ(run({"birthday-list", "--from-date", "2026.03.01", "--to-date", "2026.03.31",
                   "--xlsx", target.filePath("b")}),
              0)
        << err_text.toStdString();
    EXPECT_TRUE(QFile::exists(target.filePath("b.xlsx")));
    EXPECT_EQ(run({"staff-details", "--sections", "alg,bnk", "--from", "101", "--to", "102",
                   "--pdf", target.filePath("d.pdf")}),
              0)
        << err_text.toStdString();

    EXPECT_EQ(run({"staff-list", "--colour", "red", "--pdf", target.filePath("x.pdf")}), 2);
    EXPECT_TRUE(err_text.contains("unknown option --colour"));
    EXPECT_EQ(run({"salary-list", "--pdf", target.filePath("x.pdf")}), 2);
    EXPECT_EQ(run({"staff-list", "--admin", "some", "--pdf", target.filePath("x.pdf")}), 2);
    EXPECT_EQ(run({"staff-list"}), 2);
    EXPECT_TRUE(err_text.contains("--pdf FILE"));
    EXPECT_EQ(run({"staff-list", "--from", "999", "--pdf", target.filePath("x.pdf")}), 1);
    EXPECT_TRUE(err_text.contains("999"));
    EXPECT_FALSE(QFile::exists(target.filePath("x.pdf")));
    EXPECT_EQ(run({"staff-list", "--xlsx", target.filePath("no/such/folder/x.xlsx")}), 1);
    EXPECT_TRUE(err_text.contains("no such folder"));
}

}  // namespace
}  // namespace korvel::reports
