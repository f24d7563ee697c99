// Grid printing through the recording device: fitting, rows and rules, page ends with header
// rows kept and printed rows removed, the cell mark-up, and the grid in worksheet cells.

#include <QTemporaryDir>

#include "reports/grid_output.h"
#include "reports/report_fixture.h"

namespace korvel::reports {
namespace {

using Kind = RecordedCall::Kind;

struct GridFixture : testing::JobFixture {
    // A header row and `rows` data rows "ROW 1" ... in three columns.
    static PrintGrid staff_grid(int rows, int cols = 3) {
        PrintGrid grid;
        QStringList heads{QStringLiteral("<NAAM"), QStringLiteral("^POSNR"),
                          QStringLiteral(">BEDRAG")};
        for (int c = 3; c < cols; ++c)
            heads << QStringLiteral("<K%1").arg(c);
        grid.set_format_string(heads.mid(0, cols).join(u'|'));
        for (int r = 1; r <= rows; ++r) {
            QStringList cells{QStringLiteral("ROW %1").arg(r), QStringLiteral("P%1").arg(r),
                              QStringLiteral("%1.00").arg(r)};
            for (int c = 3; c < cols; ++c)
                cells << QStringLiteral("X");
            grid.add_item(cells.mid(0, cols).join(u'\t'));
        }
        return grid;
    }

    void header() {
        start();
        job.print_page_header(QStringLiteral("PERSONEELLYS"));
        device.clear();
    }
    bool printed(const char* text) const {
        return device.find_text(QString::fromUtf8(text)) != nullptr;
    }
    // The call that printed a text; a failure and an empty call when none did.
    RecordedCall text_call(const char* text) const {
        const RecordedCall* c = device.find_text(QString::fromUtf8(text));
        if (!c) {
            ADD_FAILURE() << "not printed: " << text;
            return {};
        }
        return *c;
    }
    std::vector<RecordedCall> lines() const {
        std::vector<RecordedCall> out;
        for (const RecordedCall& c : device.calls())
            if (c.kind == Kind::Line)
                out.push_back(c);
        return out;
    }
};

TEST_F(GridFixture, SixColumnsAreFittedAndFiveAreNot) {
    header();
    PrintGrid five = staff_grid(3, 5);
    ASSERT_TRUE(print_grid_pages(job, five));
    EXPECT_TRUE(five.tag.isEmpty());
    EXPECT_DOUBLE_EQ(five.column(0).width, 960);

    PrintGrid six = staff_grid(3, 6);
    six.column(4).width = 0;  // a hidden column stays hidden
    ASSERT_TRUE(print_grid_pages(job, six));
    EXPECT_EQ(six.tag, QStringLiteral("autofit"));
    // "ROW 1" at 8 points fixed pitch: 5 x 96 twips, plus 15 padding each side.
    EXPECT_DOUBLE_EQ(six.column(0).width, 5 * 96 + 30);
    EXPECT_DOUBLE_EQ(six.column(4).width, 0);

    // Fitted once is enough; no autofit asked: nothing happens.
    PrintGrid seven = staff_grid(3, 7);
    GridPageOptions keep;
    keep.autofit = false;
    print_grid_pages(job, seven, keep);
    EXPECT_TRUE(seven.tag.isEmpty());
}

TEST_F(GridFixture, FitToThePageStretchesTheTable) {
    header();
    PrintGrid grid = staff_grid(3, 4);
    fit_grid_columns(job, grid, 300, 15, true);
    double total = 0;
    for (int c = 0; c < grid.cols(); ++c)
        total += grid.column(c).width;
    EXPECT_NEAR(total, kA4PrintableWidthTwips - 2 * 22.5, 1e-6);
    EXPECT_DOUBLE_EQ(grid.row(1).height, 300);
    EXPECT_EQ(device.scale_mode(), ScaleMode::Characters);
}

TEST_F(GridFixture, RowsLayOutWithGapsRulesAndAlignment) {
    header();
    PrintGrid grid = staff_grid(2);
    ASSERT_TRUE(print_grid_pages(job, grid));

    const double top = 6 * kCharHeightTwips;
    const RecordedCall head = text_call("NAAM");
    EXPECT_DOUBLE_EQ(head.x1, 15);  // left edge 0 plus padding
    // Centred text in the middle of its line: the row starts one gap down.
    EXPECT_DOUBLE_EQ(head.y1, top + 45 + (240 - 192) / 2.0);

    const RecordedCall posnr = text_call("P1");
    EXPECT_DOUBLE_EQ((posnr.x1 + posnr.x2) / 2, 990 + 15 + 480);
    const RecordedCall amount = text_call("2.00");
    // Right-aligned: a blank (96 at 8 points) before where the next column's text may begin.
    EXPECT_DOUBLE_EQ(amount.x2, 3 * 990 + 15 - 96);

    // Rules above rows 1 and 2, then the frame of four lines.
    const std::vector<RecordedCall> lines = this->lines();
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_DOUBLE_EQ(lines[0].y1, top + 285);
    EXPECT_DOUBLE_EQ(lines[1].y1, top + 2 * 285);
    EXPECT_DOUBLE_EQ(lines[2].x2, 3 * 990);
    // y ends below the last row, back in character units.
    EXPECT_DOUBLE_EQ(device.current_y(), (top + 3 * 285) / kCharHeightTwips);
    EXPECT_EQ(device.scale_mode(), ScaleMode::Characters);
}

TEST_F(GridFixture, RowOfHeightZeroIsSkipped) {
    header();
    PrintGrid grid = staff_grid(3);
    grid.row(2).height = 0;
    ASSERT_TRUE(print_grid_pages(job, grid));
    EXPECT_FALSE(printed("ROW 2"));
    EXPECT_DOUBLE_EQ(text_call("ROW 3").y1, text_call("ROW 1").y1 + 285);
}

TEST_F(GridFixture, PageEndsAtNinetyPercentRemovingPrintedRows) {
    header();
    PrintGrid grid = staff_grid(200);
    EXPECT_FALSE(print_grid_pages(job, grid));
    EXPECT_TRUE(job.state.page_pending);

    // From y = 1440 every row takes 285 twips; the first row whose bottom reaches 90 per cent
    // of 16118 is data row 45.
    EXPECT_TRUE(printed("ROW 45"));
    EXPECT_FALSE(printed("ROW 46"));

    // The header row stays; the printed rows are gone.
    EXPECT_EQ(grid.rows(), 1 + 155);
    EXPECT_EQ(grid.text(0, 0), QStringLiteral("NAAM"));
    EXPECT_EQ(grid.text(1, 0), QStringLiteral("ROW 46"));
}

TEST_F(GridFixture, PageEndOptions) {
    // The lower fill ends the page earlier; keeping ten rows together ends it at row 40, where
    // the next ten would pass the fill line; no page break prints everything.
    struct Case {
        bool low_fill, keep_together, no_page_break;
        const char* next_row;
    };
    for (const Case& c : {Case{true, false, false, "ROW 44"}, Case{false, true, false, "ROW 41"},
                          Case{false, false, true, nullptr}}) {
        header();
        PrintGrid grid = staff_grid(200);
        GridPageOptions options;
        options.low_fill = c.low_fill;
        options.keep_together = c.keep_together;
        options.keep_rows = 10;
        options.no_page_break = c.no_page_break;
        EXPECT_EQ(print_grid_pages(job, grid, options), c.no_page_break) << c.next_row;
        if (c.next_row)
            EXPECT_EQ(grid.text(1, 0), QString::fromLatin1(c.next_row));
        else
            EXPECT_TRUE(printed("ROW 200"));
    }
}

TEST_F(GridFixture, HeaderRowsRepeatOnEveryPage) {
    PrintGrid grid = staff_grid(120);
    start();
    EXPECT_EQ(print_grid_report(job, grid, QStringLiteral("PERSONEELLYS")), 3);
    EXPECT_EQ(device.count(Kind::NewPage), 2);
    for (int page = 1; page <= 3; ++page) {
        const QStringList texts = device.texts(page);
        EXPECT_TRUE(texts.contains(QStringLiteral("NAAM"))) << page;
        EXPECT_TRUE(texts.contains(QStringLiteral("BLADSY : %1").arg(page))) << page;
    }
    EXPECT_TRUE(device.texts(2).contains(QStringLiteral("ROW 46")));
    EXPECT_TRUE(device.texts(3).contains(QStringLiteral("ROW 120")));
    // The continuation mark on the pages that go on.
    EXPECT_TRUE(device.texts(1).contains(QStringLiteral("2.../")));
    EXPECT_TRUE(device.texts(2).contains(QStringLiteral("3.../")));
    EXPECT_FALSE(device.texts(3).contains(QStringLiteral("4.../")));
}

TEST_F(GridFixture, GroupsRulesAndFlaggedColumns) {
    header();
    PrintGrid grid = staff_grid(4);
    grid.column(1).flagged = true;
    GridPageOptions options;
    options.group_size = 2;
    options.group_from_col = 1;
    options.heavy_group_rule = true;
    ASSERT_TRUE(print_grid_pages(job, grid, options));
    const std::vector<RecordedCall> lines = this->lines();
    // Rules above rows 1..4: odd rows start at column 1, even rows are heavy from the left.
    ASSERT_GE(lines.size(), 4u + 4u + 2u);
    EXPECT_DOUBLE_EQ(lines[0].x1, 990);
    EXPECT_EQ(lines[0].width, 1);
    EXPECT_DOUBLE_EQ(lines[1].x1, 0);
    EXPECT_EQ(lines[1].width, 3);
    // The flagged column: rules at its left and right edges after the frame.
    EXPECT_DOUBLE_EQ(lines[8].x1, 990);
    EXPECT_DOUBLE_EQ(lines[9].x1, 1980);
}

TEST_F(GridFixture, CentredTableAndTitle) {
    header();
    PrintGrid grid = staff_grid(1);
    GridPageOptions options;
    options.centre_table = true;
    options.title = QStringLiteral("OPVOEDERS");
    ASSERT_TRUE(print_grid_pages(job, grid, options));
    EXPECT_DOUBLE_EQ(options.left, kA4PrintableWidthTwips / 2 - 3 * 990 / 2.0);
    const RecordedCall title = text_call("OPVOEDERS");
    EXPECT_TRUE(title.bold);
    // The title is set before the table is centred: at the given left edge, at least two
    // columns in.
    EXPECT_DOUBLE_EQ(title.x1, 2 * kCharWidthTwips);
}

TEST_F(GridFixture, MergedRowPrintsEqualNeighboursOnce) {
    header();
    PrintGrid grid = staff_grid(1);
    grid.add_item(QStringLiteral("TOTAAL\tTOTAAL\t9.00"));
    grid.row(2).merge = true;
    grid.cell(2, 0).alignment = kAlignCentre;
    ASSERT_TRUE(print_grid_pages(job, grid));
    EXPECT_EQ(device.texts().count(QStringLiteral("TOTAAL")), 1);
    const RecordedCall total = text_call("TOTAAL");
    EXPECT_DOUBLE_EQ((total.x1 + total.x2) / 2, (960 + 30 + 960) / 2.0 + 15);
}

TEST_F(GridFixture, TurnedHeadsGrowTheRowAndPrintAsPictures) {
    header();
    PrintGrid grid = staff_grid(1);
    grid.set_text(0, 0, QStringLiteral("~~R~~VAN EN VOORNAME"));
    grid.set_text(0, 1, QStringLiteral("~~R~~POS"));
    ASSERT_TRUE(print_grid_pages(job, grid));
    EXPECT_EQ(device.count(Kind::Picture), 2);
    EXPECT_FALSE(printed("~~R~~"));
    EXPECT_FALSE(printed("VAN EN"));
    // The row grows to the widest turned text and two blanks: 17 characters at 96 twips,
    // times 0.75.
    const RecordedCall row1 = text_call("ROW 1");
    const double top = 6 * kCharHeightTwips;
    const double head_height = 17 * 96 * 0.75;
    EXPECT_DOUBLE_EQ(row1.y1, top + 45 + head_height + 45 + 45 + (240 - 192) / 2.0);

    const QImage turned = rotate_cell_text(QStringLiteral("NAAM"), 0, QStringLiteral("Arial"), 8);
    EXPECT_GT(turned.height(), turned.width());
}

TEST_F(GridFixture, CellMarkUp) {
    header();
    PrintGrid grid = staff_grid(1);
    grid.add_item(QStringLiteral("a\u00a6a\tEEN~NL~TWEE\r\nDRIE\tLANK TEKS WAT NIE PAS NIE"));
    grid.cell(2, 1).alignment = kAlignLeft;
    grid.cell(2, 0).back_colour = bgr_from_rgb(255, 255, 0);
    grid.cell(1, 0).back_colour = bgr_from_rgb(0, 255, 255);
    grid.cell(1, 0).fore_colour = 255;
    ASSERT_TRUE(print_grid_pages(job, grid));
    EXPECT_FALSE(printed("\u00a6"));
    EXPECT_EQ(device.texts().count(QStringLiteral("a")), 2);
    EXPECT_EQ(text_call("a").size, 6);
    // Lines printed one below the other.
    EXPECT_DOUBLE_EQ(text_call("DRIE").y1 - text_call("EEN").y1, 2 * 192);
    // A text wider than its column is cut at the right.
    EXPECT_TRUE(printed("LANK TEKS"));
    EXPECT_FALSE(printed("LANK TEKS WAT NIE PAS NIE"));
    // Background fills, with transparent text on them.
    EXPECT_EQ(device.count(Kind::Box), 2);
    EXPECT_TRUE(text_call("ROW 1").transparent);
}

TEST_F(GridFixture, EmptyGridIsDone) {
    header();
    PrintGrid grid;
    EXPECT_TRUE(print_grid_pages(job, grid));
    EXPECT_TRUE(device.calls().empty());
}

TEST_F(GridFixture, BlocksBreakAtThePageMark) {
    header();
    PrintGrid grid = staff_grid(2);
    grid.add_item(QStringLiteral("<PAGE>"));
    grid.add_item(QStringLiteral("ROW 3\tP3\t3.00"));
    GridPageOptions options;
    EXPECT_FALSE(print_grid_blocks(job, grid, options));
    EXPECT_TRUE(printed("ROW 2"));
    EXPECT_FALSE(printed("<PAGE>"));
    EXPECT_FALSE(printed("ROW 3"));
    ASSERT_EQ(grid.rows(), 2);
    EXPECT_EQ(grid.text(1, 0), QStringLiteral("ROW 3"));

    // Only the columns listed print.
    device.clear();
    GridPageOptions second;
    EXPECT_TRUE(print_grid_blocks(job, grid, second, QStringLiteral("0:2")));
    EXPECT_FALSE(printed("P3"));
    EXPECT_TRUE(printed("3.00"));
    EXPECT_DOUBLE_EQ(grid.column(1).width, 960);
}

TEST(GridHelpers, ColumnLetters) {
    const std::pair<int, const char*> cases[] = {{1, "A"},   {26, "Z"},    {27, "AA"},
                                                 {52, "AZ"}, {703, "AAA"}, {0, ""}};
    for (const auto& [n, letters] : cases)
        EXPECT_EQ(column_letters(n), QString::fromLatin1(letters)) << n;
}

TEST(GridHelpers, ClipAndMultilineCell) {
    RecordingDevice d;
    d.set_scale_mode(ScaleMode::Characters);
    d.set_font_name(QStringLiteral("Lucida Console"));
    d.set_font_size(10);
    EXPECT_EQ(clip_to_width(d, QStringLiteral("ABCDEF"), 3.5), QStringLiteral("ABC"));
    EXPECT_EQ(clip_to_width(d, QString(), 0), QString());
    EXPECT_EQ(clip_to_width(d, QStringLiteral("AB"), 2), QStringLiteral("AB"));

    d.set_current_y(4);
    print_multiline_cell(d, 10, QStringLiteral("EEN~NL~TWEE TWEE\r\nDRIE"), 4);
    EXPECT_EQ(d.texts(), (QStringList{"EEN", "TWEE", "DRIE"}));
    EXPECT_DOUBLE_EQ(d.calls()[1].x1, 11 * kCharWidthTwips);
    EXPECT_DOUBLE_EQ(d.calls()[2].y1, 6 * kCharHeightTwips);
    EXPECT_DOUBLE_EQ(d.current_y(), 4);
}

// holds_line_marks answers as a plain look at every character would: each character up to 0x2FF
// and a few high ones, at each place of texts one to nine long, among plain letters, letters
// above "~" and characters of the top half.
TEST(GridHelpers, HoldsLineMarksMissesNone) {
    std::vector<char16_t> tried;
    for (char16_t c = 0; c < 0x300; ++c)
        tried.push_back(c);
    for (char16_t c : {0x7FFF, 0x8000, 0x807E, 0xFFFF})
        tried.push_back(c);
    for (const char16_t filler : {u'A', u'\u00e9', char16_t(0xFFFF)}) {
        for (int length = 1; length <= 9; ++length) {
            for (int at = 0; at < length; ++at) {
                for (const char16_t c : tried) {
                    std::u16string text(size_t(length), filler);
                    text[size_t(at)] = c;
                    const bool plain = c == u'\n' || c == u'\r' || c == u'~';
                    ASSERT_EQ(holds_line_marks(QStringView(text)), plain)
                        << int(filler) << " " << length << " " << at << " " << int(c);
                }
            }
        }
    }
}

TEST(GridModel, FormatStringAndRows) {
    PrintGrid grid;
    grid.set_format_string(QStringLiteral("^DATUM|<POSNR|<NAAM|^VERJAARDAG|>BEDRAG"));
    ASSERT_EQ(grid.cols(), 5);
    grid.add_item(QStringLiteral("A\tB"));
    grid.add_item(QStringLiteral("C\tD"), 1);
    EXPECT_EQ(grid.text(1, 0), QStringLiteral("C"));
    EXPECT_EQ(grid.text(2, 1), QStringLiteral("B"));
    EXPECT_EQ(grid.alignment(1, 0), kAlignCentre);  // from the format string
    grid.remove_rows(1, 5);
    EXPECT_EQ(grid.rows(), 1);
    EXPECT_EQ(cell_lines(QStringLiteral("A~NL~B\r\nC")), (QStringList{"A", "B", "C"}));
}

TEST_F(GridFixture, GridIntoWorksheetCells) {
    QTemporaryDir dir;
    job.begin_spreadsheet(dir.path(), QStringLiteral("lys"));
    job.print_page_header(QStringLiteral("LYS"));
    PrintGrid grid = staff_grid(200);
    grid.set_text(0, 0, QStringLiteral("~~R~~NAAM"));
    grid.set_text(2, 1, QStringLiteral("'0123"));
    grid.row(3).height = 0;
    EXPECT_TRUE(print_grid_pages(job, grid));
    EXPECT_EQ(grid.rows(), 201);  // nothing removed: worksheets never page

    const Sheet& ws = job.workbook()->sheet(1);
    const SheetCell* head = ws.find(5, 0);
    ASSERT_NE(head, nullptr);
    EXPECT_EQ(head->text, QStringLiteral("NAAM"));
    EXPECT_EQ(ws.find(7, 1)->text, QStringLiteral("0123"));
    EXPECT_EQ(ws.find(7, 1)->number_format, QStringLiteral("0000000000000"));
    EXPECT_TRUE(ws.find(6, 2)->is_number);
    EXPECT_EQ(ws.find(6, 2)->align, CellAlign::Right);
    // The hidden row is left out: data row 4 follows data row 2.
    EXPECT_EQ(ws.find(8, 0)->text, QStringLiteral("ROW 4"));
    EXPECT_EQ(job.state.spreadsheet_row, 6 + 200 + 1);
}

}  // namespace
}  // namespace korvel::reports
