// The page engine through the recording device: set-up, the header and its page-break test,
// frames and rules, the footer and the end of a report, and the header's worksheet path.

#include <QTemporaryDir>

#include "reports/grid_output.h"
#include "reports/report_fixture.h"
#include "store/quoted_text.h"

namespace korvel::reports {
namespace {

using testing::JobFixture;
using Kind = RecordedCall::Kind;

constexpr double kPortraitLines = kA4PrintableHeightTwips / kCharHeightTwips;

TEST_F(JobFixture, FirstHeaderPrintsTheThreeLinesWithoutANewPage) {
    start();
    QString title = QStringLiteral("PERSONEELLYS");
    QString subtitle;
    job.print_page_header(title, subtitle);

    EXPECT_EQ(device.count(Kind::NewPage), 0);
    EXPECT_FALSE(job.state.page_pending);
    const QStringList texts = device.texts();
    for (const char* expected : {"2026.03.04", "09:05:07", "BLADSY : 1", "HOëRSKOOL DUINEVELD",
                                 "PERSONEELLYS", "KORVEL", "4.2.17", "Debian GNU/Linux 12"})
        EXPECT_TRUE(texts.contains(QString::fromUtf8(expected))) << expected;

    // Left parts at tab column 3, right parts ending two columns from the right edge.
    const RecordedCall* date = device.find_text(QStringLiteral("2026.03.04"));
    ASSERT_NE(date, nullptr);
    EXPECT_DOUBLE_EQ(date->x1, 3 * kCharWidthTwips);
    EXPECT_DOUBLE_EQ(date->y1, 0.5 * kCharHeightTwips);
    EXPECT_EQ(date->size, 8);
    const RecordedCall* version = device.find_text(QStringLiteral("4.2.17"));
    ASSERT_NE(version, nullptr);
    EXPECT_NEAR(version->x2, kA4PrintableWidthTwips - 2 * kCharWidthTwips, 0.01);
    // The school name centred at 10 points.
    const RecordedCall* name = device.find_text(QStringLiteral("DUINEVELD"));
    ASSERT_NE(name, nullptr);
    EXPECT_NEAR((name->x1 + name->x2) / 2, kA4PrintableWidthTwips / 2, 0.01);
    EXPECT_EQ(name->size, 10);

    // Frame of four lines and the rule under the header; body starts at line 6.
    EXPECT_EQ(device.count(Kind::Line), 5);
    EXPECT_DOUBLE_EQ(device.current_y(), 6);
    EXPECT_EQ(job.state.page_columns, 93);
}

TEST_F(JobFixture, EnglishPageTextAndDesignation) {
    job.afrikaans = false;
    job.school.designation = QStringLiteral("TEGNIES");
    start();
    job.print_page_header(QStringLiteral("STAFF LIST"));
    EXPECT_NE(device.find_text(QStringLiteral("PAGE : 1")), nullptr);
    EXPECT_NE(device.find_text(QStringLiteral("HOëRSKOOL DUINEVELD (TEGNIES)")), nullptr);
}

TEST_F(JobFixture, HeaderInTheMiddleOfAPagePrintsNothing) {
    start();
    job.print_page_header(QStringLiteral("LYS"));
    const size_t calls = device.calls().size();

    // Above the test line: nothing, and y is left alone.
    const double test_line = device.scale_height() - 5;
    device.set_current_y(test_line - 0.1);
    job.print_page_header(QStringLiteral("LYS"));
    EXPECT_EQ(device.calls().size(), calls);
    EXPECT_DOUBLE_EQ(device.current_y(), test_line - 0.1);

    // At the test line the page breaks and the header prints on page 2.
    device.set_current_y(test_line);
    job.print_page_header(QStringLiteral("LYS"));
    EXPECT_EQ(device.count(Kind::NewPage), 1);
    EXPECT_TRUE(device.texts(2).contains(QStringLiteral("BLADSY : 2")));

    // At the top of a page that is not pending a new one starts all the same.
    device.set_current_y(0);
    job.print_page_header(QStringLiteral("LYS"));
    EXPECT_EQ(device.count(Kind::NewPage), 2);
}

TEST_F(JobFixture, OrientationA4MeansLandscape) {
    job.state.page_pending = true;
    job.print_setup(QStringLiteral("A4"));
    EXPECT_EQ(device.orientation(), kLandscape);
    EXPECT_EQ(job.state.base_font_size, 8);

    QString title = QStringLiteral("LYS");
    QString subtitle = QStringLiteral("GRAAD 8");
    job.print_page_header(title, subtitle, QStringLiteral("A4"));
    // In landscape the subtitle joins the title.
    EXPECT_EQ(title, QStringLiteral("LYS [GRAAD 8]"));
    EXPECT_TRUE(subtitle.isEmpty());
    const RecordedCall* date = device.find_text(QStringLiteral("2026.03.04"));
    ASSERT_NE(date, nullptr);
    EXPECT_DOUBLE_EQ(date->y1, 0.75 * kCharHeightTwips);
}

TEST_F(JobFixture, OrientationAfterTheFirstPageChangesTheFontButNotThePaper) {
    start();
    job.print_page_header(QStringLiteral("LYS"));
    job.print_setup(QStringLiteral("A4_landscape"));
    EXPECT_EQ(device.orientation(), kPortrait);
    EXPECT_EQ(job.state.base_font_size, 8);
}

TEST_F(JobFixture, LineFactorGivesMoreShorterLines) {
    job.print_setup(kPortraitText, 1.2);
    EXPECT_NEAR(device.scale_height(), kPortraitLines * 1.2, 1e-9);
    EXPECT_DOUBLE_EQ(job.state.page_bottom, kPortraitLines * 1.2 - 1.25);
}

TEST_F(JobFixture, NoHeaderStillTurnsThePageAndClearsPending) {
    start();
    job.print_page_header(QStringLiteral("LYS"));
    device.set_current_y(30);
    job.state.page_pending = true;
    device.clear();
    job.print_page_header(QStringLiteral("LYS"), {}, kPortraitText, false, true);
    EXPECT_EQ(device.count(Kind::NewPage), 1);
    EXPECT_EQ(device.count(Kind::Text), 0);
    EXPECT_EQ(device.count(Kind::Line), 0);
    EXPECT_FALSE(job.state.page_pending);
}

TEST_F(JobFixture, BadgeKeepsItsShapeAndYStays) {
    QImage badge(200, 100, QImage::Format_RGB32);
    badge.fill(Qt::red);
    job.school.badge = badge;
    job.school.emblem = badge;
    start();
    job.print_page_header(QStringLiteral("LYS"));
    std::vector<RecordedCall> pictures;
    for (const RecordedCall& c : device.calls())
        if (c.kind == Kind::Picture)
            pictures.push_back(c);
    ASSERT_EQ(pictures.size(), 2u);
    // Twice as wide as high: 4 columns become 8, two lines high.
    EXPECT_DOUBLE_EQ(pictures[0].x1, 1 * kCharWidthTwips);
    EXPECT_DOUBLE_EQ(pictures[0].x2 - pictures[0].x1, 8 * kCharWidthTwips);
    EXPECT_DOUBLE_EQ(pictures[0].y2 - pictures[0].y1, 2 * kCharHeightTwips);
    EXPECT_NEAR(pictures[1].x1, kA4PrintableWidthTwips - 6 * kCharWidthTwips, 1e-6);
    EXPECT_DOUBLE_EQ(device.current_y(), 6);
}

TEST_F(JobFixture, BoxAndRuleAreClippedAtTheRightEdge) {
    start();
    job.print_page_header(QStringLiteral("LYS"));
    device.clear();
    job.draw_box(2, 10, 500, 12, true);
    ASSERT_EQ(device.count(Kind::Line), 8);
    const double limit = (job.state.page_columns - 0.5) * kCharWidthTwips;
    EXPECT_DOUBLE_EQ(device.calls()[0].x2, limit);
    // The shadow: left edge half a column out, the others a quarter.
    EXPECT_DOUBLE_EQ(device.calls()[4].x1, 1.5 * kCharWidthTwips);
    EXPECT_DOUBLE_EQ(device.calls()[4].y1, 9.75 * kCharHeightTwips);

    device.clear();
    job.state.letterhead.right_margin = 10;
    job.draw_rule(2, 14, 500, 14, true, true);
    ASSERT_EQ(device.count(Kind::Line), 1);
    EXPECT_NEAR(device.calls()[0].x2, (device.scale_width() - 10.5) * kCharWidthTwips, 1e-6);
    EXPECT_EQ(device.calls()[0].width, 3);
    EXPECT_EQ(device.line_style(), LineStyle::Solid);
}

TEST_F(JobFixture, FinishCountsPagesLessOne) {
    start();
    job.print_page_header(QStringLiteral("LYS"));
    for (int i = 0; i < 2; ++i) {
        device.set_current_y(20);
        job.state.page_pending = true;
        job.print_page_header(QStringLiteral("LYS"));
    }
    device.set_current_y(20);
    job.finish_report();
    EXPECT_EQ(device.count(Kind::EndDoc), 1);
    EXPECT_EQ(dialogs.last_text(), QStringLiteral("DRUKWERK VOLTOOI (3 bladsye)"));
    // The footer: the report name, ending half a line above the bottom of the frame.
    const RecordedCall* footer = device.find_text(QStringLiteral("2026 PERSONEELLYS"));
    ASSERT_NE(footer, nullptr);
    EXPECT_NEAR(footer->y2, (job.state.page_bottom - 0.5) * kCharHeightTwips, 1e-6);
    EXPECT_EQ(footer->page, 3);
    EXPECT_NE(device.find_text(QStringLiteral("VESPARINE (Debian GNU/Linux 12)")), nullptr);
}

TEST_F(JobFixture, NoFooterWhenYIsExactlyFive) {
    start();
    job.print_page_header(QStringLiteral("LYS"));
    device.set_current_y(5);
    job.finish_report();
    EXPECT_EQ(device.find_text(QStringLiteral("2026 PERSONEELLYS")), nullptr);
    EXPECT_EQ(dialogs.last_text(), QStringLiteral("DRUKWERK VOLTOOI (1 bladsye)"));

    // A letterhead image in force prints it all the same.
    RecordingDevice other;
    ui::ScriptedDialogs d2;
    PrintJob job2(other, d2, testing::sample_school(), false);
    job2.print_setup();
    job2.state.page_pending = true;
    job2.print_page_header(QStringLiteral("LIST"));
    job2.state.report_name = QStringLiteral("2026 STAFF LIST");
    job2.state.letterhead.image_in_force = true;
    other.set_current_y(5);
    job2.finish_report();
    EXPECT_NE(other.find_text(QStringLiteral("2026 STAFF LIST")), nullptr);
    EXPECT_EQ(d2.last_text(), QStringLiteral("PRINTING COMPLETE (1 pages)"));
}

TEST_F(JobFixture, MakerLineOnlyWhenTheBodyLeavesRoom) {
    start();
    job.print_page_header(QStringLiteral("LYS"));
    device.set_current_y(20);
    job.finish_report(false, true);
    EXPECT_NE(device.find_text(QStringLiteral("VESPARINE")), nullptr);
    EXPECT_EQ(device.find_text(QStringLiteral("2026 PERSONEELLYS")), nullptr);

    RecordingDevice other;
    PrintJob job2(other, dialogs, testing::sample_school());
    job2.state.page_pending = true;
    job2.print_page_header(QStringLiteral("LYS"));
    other.set_current_y(other.scale_height() - 2);
    job2.finish_report(false, true);
    EXPECT_EQ(other.find_text(QStringLiteral("VESPARINE")), nullptr);
}

TEST_F(JobFixture, PageFooterWithNewPage) {
    start();
    job.print_page_header(QStringLiteral("LYS"));
    device.set_current_y(30);
    job.print_page_footer(0, true);
    const RecordedCall* maker = device.find_text(QStringLiteral("KORVEL 4.2.17"));
    ASSERT_NE(maker, nullptr);
    EXPECT_DOUBLE_EQ(maker->y1, (device.scale_height() - 1.25 + 0.5) * kCharHeightTwips);
    EXPECT_EQ(maker->size, 6);
    EXPECT_EQ(device.count(Kind::NewPage), 1);
    EXPECT_DOUBLE_EQ(device.current_y(), 0);
}

TEST_F(JobFixture, ContinuationMarkStandsEightColumnsFromTheRight) {
    start();
    job.print_page_header(QStringLiteral("LYS"));
    job.print_continuation_mark();
    const RecordedCall* mark = device.find_text(QStringLiteral("2.../"));
    ASSERT_NE(mark, nullptr);
    EXPECT_DOUBLE_EQ(mark->x1, (job.state.page_columns - 8) * kCharWidthTwips);
}

TEST_F(JobFixture, CancelOnThePageCounterStopsTheRunWithNothingPrinted) {
    dialogs.stop_at_step(2);
    start();
    job.print_page_header(QStringLiteral("LYS"));
    device.set_current_y(20);
    job.state.page_pending = true;
    job.print_page_header(QStringLiteral("LYS"));
    ASSERT_TRUE(job.stopped());
    EXPECT_EQ(device.count(Kind::Abandon), 1);
    const std::size_t drawn = device.calls().size();
    // The report goes on to its end; nothing reaches the device and nothing is said.
    job.state.page_pending = true;
    job.print_page_header(QStringLiteral("LYS"));
    job.device().print(QStringLiteral("REEL"));
    job.finish_report();
    EXPECT_EQ(device.calls().size(), drawn);
    EXPECT_TRUE(dialogs.texts().isEmpty());
    EXPECT_EQ(dialogs.progress_shown(), QStringList{QStringLiteral("2026 PERSONEELLYS\nRECORDER")});
    // The next report of the same job prints again.
    EXPECT_FALSE(job.stopped());
    EXPECT_EQ(&job.device(), &device);
}

TEST_F(JobFixture, ReplayDrawsTheSamePage) {
    start();
    job.school.badge = QImage(20, 20, QImage::Format_RGB32);
    job.print_page_header(QStringLiteral("LYS"), QStringLiteral("GRAAD 8"));
    device.set_current_y(20);
    job.state.page_pending = true;
    job.print_page_header(QStringLiteral("LYS"), {}, QStringLiteral("A4_landscape"));
    RecordingDevice copy;
    replay(device.calls(), copy);
    EXPECT_EQ(copy.lines(), device.lines());
    EXPECT_EQ(copy.orientation(), kLandscape);
}

TEST(PadCentre, CentresFillsAndCuts) {
    EXPECT_EQ(pad_centre(QStringLiteral("AB"), 6), QStringLiteral("  AB  "));
    EXPECT_EQ(pad_centre(QStringLiteral("AB"), 5, u'*'), QStringLiteral("*AB**"));
    EXPECT_EQ(pad_centre(QString(), 3), QStringLiteral("   "));
    EXPECT_EQ(pad_centre(QStringLiteral("ABCDEF"), 4), QStringLiteral("ABCD"));
    EXPECT_EQ(pad_centre(QStringLiteral("AB"), 0), QString());
}

TEST(ColourFile, MissingIsBlackAndTheFlagRoundTrips) {
    QTemporaryDir dir;
    EXPECT_FALSE(read_colour_printing(dir.path(), true));
    ASSERT_TRUE(write_colour_printing(dir.path(), true));
    EXPECT_TRUE(read_colour_printing(dir.path()));
    const auto bytes = quoted::read_file(dir.filePath("kleur_drukker.txt"));
    ASSERT_TRUE(bytes.has_value());
    EXPECT_EQ(*bytes, QByteArray("#TRUE#\r\n"));
    // Garbage keeps the flag as it was.
    quoted::write_file(dir.filePath("kleur_drukker.txt"), "\"GEEN\"\r\n");
    EXPECT_TRUE(read_colour_printing(dir.path(), true));
    EXPECT_FALSE(write_colour_printing(dir.filePath("missing"), true));
}

TEST_F(JobFixture, SetupReadsTheColourFile) {
    QTemporaryDir dir;
    write_colour_printing(dir.path(), true);
    job.general_year_folder = dir.path();
    job.print_setup();
    EXPECT_TRUE(job.state.colour_printing);
}

TEST_F(JobFixture, EveryHeaderInAWorksheetStartsASheet) {
    QTemporaryDir dir;
    job.begin_spreadsheet(dir.path(), QStringLiteral("lys"));
    QString title = QStringLiteral("PERSONEELLYS");
    QString subtitle = QStringLiteral("OPVOEDERS");
    job.print_page_header(title, subtitle);
    EXPECT_EQ(title, QStringLiteral("PERSONEELLYS [OPVOEDERS]"));
    job.print_page_header(QStringLiteral("TWEEDE"));
    ASSERT_NE(job.workbook(), nullptr);
    EXPECT_EQ(job.workbook()->sheet_count(), 2);
    EXPECT_EQ(job.state.spreadsheet_row, 6);
    EXPECT_EQ(job.workbook()->sheet(2).find(2, 2)->text, QStringLiteral("TWEEDE"));
    // No printer is touched.
    EXPECT_TRUE(device.calls().empty());
}

}  // namespace
}  // namespace korvel::reports
