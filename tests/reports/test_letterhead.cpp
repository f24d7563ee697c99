// Letterheads: the layout table and font files as the sibling programs write them, the pick
// list, loading with the device's millimetres, and the head of a page on the recording device.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "report_fixture.h"
#include "reports/grid_output.h"
#include "reports/letterhead.h"

namespace korvel::reports {
namespace {

using testing::JobFixture;

void write(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

QImage badge() {
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

class LetterheadTest : public JobFixture {
  protected:
    LetterheadTest() {
        job.general_year_folder = dir.path();
        job.school.address1 = QStringLiteral("POSBUS 12");
        job.school.telephone = QStringLiteral("021 555 1234");
        job.school.fax = QStringLiteral("021 555 4321");
    }
    QString path(const QString& name) const { return QDir(dir.path()).filePath(name); }
    void table(const QByteArray& lines) { write(path(kLetterheadTable), lines); }
    // Selects and prints the layout; the pictures calls of the badge.
    std::vector<RecordedCall> pictures_of(const QString& id) {
        job.state.letterhead.selected = id;
        start();
        print_letterhead(job, kPortraitText, 1, badge(), {});
        std::vector<RecordedCall> out;
        for (const RecordedCall& c : device.calls())
            if (c.kind == RecordedCall::Kind::Picture)
                out.push_back(c);
        return out;
    }

    QTemporaryDir dir;
};

TEST_F(LetterheadTest, FieldOneHoldsTheNameInTwentyNineThenTheFrameDigit) {
    EXPECT_EQ(letterhead_field(QStringLiteral("SKOOL"), 1),
              QStringLiteral("SKOOL") + QString(24, u' ') + u'1');
    EXPECT_EQ(letterhead_field(QString(29, u'A'), 0), QString(29, u'A') + u'0');
    EXPECT_EQ(letterhead_field(QString(60, u'A'), 1), QString(29, u'A') + u'1');
    // Up to the first double blank: 28 and 29 characters keep their digit in the name.
    EXPECT_EQ(letterhead_name(letterhead_field(QString(27, u'B'), 1)), QString(27, u'B'));
    EXPECT_EQ(letterhead_name(letterhead_field(QString(28, u'B'), 1)), QString(28, u'B') + " 1");
    EXPECT_EQ(letterhead_name(letterhead_field(QString(29, u'B'), 1)), QString(29, u'B') + "1");
}

TEST_F(LetterheadTest, TableReadsDefaultsAndForgivesBadLines) {
    table(
        "\"SKOOL                        1\",50,10,20,20,#TRUE#,#TRUE#,#TRUE#,\"\",\"\"\r\n"
        "\"KORT                         0\",5\r\n"
        "\"BAIE                         0\",1,2,3,4,#MAYBE#,#FALSE#,#TRUE#,\"X\",\"S\"\r\n"
        "\"\",1,2,3,4\r\n"
        "\"GROOT                        0\",1,2,3,4,#TRUE#,#TRUE#,#TRUE#,\"R\",\"L\"\r\n");
    const auto t = read_letterhead_table(dir.path());
    ASSERT_EQ(t.size(), 4u);
    EXPECT_EQ(t[0].name, QStringLiteral("SKOOL"));
    EXPECT_EQ(t[0].frame, 1);
    EXPECT_EQ(t[0].position, QStringLiteral("L"));
    EXPECT_EQ(t[0].size, QStringLiteral("M"));
    EXPECT_EQ(t[1].top, 5);
    EXPECT_FALSE(t[1].print_badge);
    EXPECT_FALSE(t[2].print_name);  // no boolean reads false
    EXPECT_EQ(t[2].size, QStringLiteral("K"));
    EXPECT_EQ(t[3].size, QStringLiteral("G"));
    // What is written reads back the same.
    QTemporaryDir again;
    write(QDir(again.path()).filePath(kLetterheadTable), letterhead_table_bytes(t));
    const auto back = read_letterhead_table(again.path());
    ASSERT_EQ(back.size(), t.size());
    for (size_t i = 0; i < t.size(); ++i) {
        EXPECT_EQ(back[i].name, t[i].name);
        EXPECT_EQ(back[i].position, t[i].position);
        EXPECT_EQ(back[i].top, t[i].top);
    }
}

TEST_F(LetterheadTest, ListHoldsTheLayoutsWhoseFilesExist) {
    table(
        "\"SKOOL                        1\",1,1,1,1,#TRUE#,#TRUE#,#TRUE#,\"L\",\"M\"\r\n"
        "\"WEG                          0\",1,1,1,1,#TRUE#,#TRUE#,#TRUE#,\"L\",\"M\"\r\n"
        "\"SKOOL_BRIEFHOOF.JPG          0\",50,0,0,0,#FALSE#,#FALSE#,#FALSE#,\"L\",\"M\"\r\n"
        "\"BBBBBBBBBBBBBBBBBBBBBBBBBBBB 0\",1,1,1,1,#TRUE#,#TRUE#,#TRUE#,\"L\",\"M\"\r\n"
        "\"SKOOL                        0\",1,1,1,1,#TRUE#,#TRUE#,#TRUE#,\"L\",\"M\"\r\n");
    write(path("skool.txt"), "\"ARIAL\",14,0,#TRUE#,#FALSE#,#FALSE#\r\n");
    write(path("skool_briefhoof.jpg"), "not a picture");
    // The 28-character name carries its digit, so its font file is looked for under that.
    write(path(QString(28, u'B') + " 0.TXT"), "");
    EXPECT_EQ(fill_letterhead_list(dir.path()),
              QStringList({"SKOOL", "SKOOL_BRIEFHOOF.JPG", QString(28, u'B') + " 0"}));
}

TEST_F(LetterheadTest, NamesThatLeaveTheFolderAreNoFileNames) {
    for (const char* bad : {"..", "A/B", "A\\B", "C:X", "../X", ""})
        EXPECT_FALSE(is_safe_layout_name(QString::fromLatin1(bad))) << bad;
    EXPECT_TRUE(is_safe_layout_name(QStringLiteral("SKOOL 2")));
    EXPECT_TRUE(find_letterhead_file(dir.path(), QStringLiteral("../x.txt")).isEmpty());
}

TEST_F(LetterheadTest, MarginsAreConvertedByTheDeviceAndHeldOnThePage) {
    table("\"SKOOL                        0\",50,-5,20,900,#TRUE#,#TRUE#,#FALSE#,\"L\",\"M\"\r\n");
    start();
    job.state.letterhead.selected = QStringLiteral("SKO");  // the start of the name will do
    ASSERT_TRUE(load_letterhead(job));
    const LetterheadState& s = job.state.letterhead;
    EXPECT_NEAR(s.top_margin, 11.81, 0.01);
    EXPECT_NEAR(s.left_margin, 9.45, 0.01);
    EXPECT_EQ(s.bottom_margin, 0);
    EXPECT_NEAR(s.right_margin, millimetres_across(device, 70), 0.01);  // a third of 210 mm
    // No font file: printing's own defaults, for both lines.
    EXPECT_EQ(s.name_font.name, QStringLiteral("Lucida Console"));
    EXPECT_EQ(s.address_font.size, 10);

    job.state.letterhead.selected = QStringLiteral("ANDER");
    EXPECT_FALSE(load_letterhead(job));
    EXPECT_FALSE(job.state.letterhead.loaded);
}

TEST_F(LetterheadTest, SecondFontLineNeverInherits) {
    table("\"SKOOL                        0\",1,1,1,1,#TRUE#,#TRUE#,#FALSE#,\"L\",\"M\"\r\n");
    write(path("SKOOL.TXT"), "\"Courier\",14,255,#TRUE#,#TRUE#,#TRUE#\r\n");
    job.state.letterhead.selected = QStringLiteral("SKOOL");
    ASSERT_TRUE(load_letterhead(job));
    const LetterheadState& s = job.state.letterhead;
    EXPECT_EQ(s.name_font.name, QStringLiteral("Courier"));
    EXPECT_EQ(s.name_font.colour, 255);
    EXPECT_TRUE(s.name_font.underline);
    EXPECT_TRUE(s.address_font.name.isEmpty());  // so the address block is left out
    EXPECT_EQ(s.address_font.size, 10);
    EXPECT_FALSE(s.address_font.bold);
}

TEST_F(LetterheadTest, BadgeSizeAndPosition) {
    table(
        "\"LEEG                         0\",0,0,0,0,#FALSE#,#TRUE#,#TRUE#,\"\",\"\"\r\n"
        "\"VREEMD                       0\",0,0,0,0,#FALSE#,#TRUE#,#TRUE#,\"R\",\"Q\"\r\n");
    // Empty position and size: at the left, medium, below the line by 1.5.
    auto p = pictures_of(QStringLiteral("LEEG"));
    ASSERT_EQ(p.size(), 1u);
    EXPECT_DOUBLE_EQ(p[0].x1, 1 * kCharWidthTwips);
    EXPECT_DOUBLE_EQ(p[0].x2 - p[0].x1, 7.5 * kCharWidthTwips);
    EXPECT_DOUBLE_EQ(p[0].y2 - p[0].y1, 4 * kCharHeightTwips);
    EXPECT_DOUBLE_EQ(p[0].y1, 1.5 * kCharHeightTwips);
    device.clear();
    // An unknown size: 4 by 1, no offset; on the right.
    p = pictures_of(QStringLiteral("VREEMD"));
    ASSERT_EQ(p.size(), 1u);
    EXPECT_DOUBLE_EQ(p[0].x2 - p[0].x1, 4 * kCharWidthTwips);
    EXPECT_DOUBLE_EQ(p[0].y2 - p[0].y1, 1 * kCharHeightTwips);
    EXPECT_DOUBLE_EQ(p[0].y1, 0);
    EXPECT_NEAR(p[0].x2, device.page_width_twips(), 1);
}

TEST_F(LetterheadTest, FrameOnlyAroundBothBlocksAndThePageEndsEarlier) {
    table(
        "\"BEIDE                        1\",10,20,0,0,#TRUE#,#TRUE#,#FALSE#,\"L\",\"M\"\r\n"
        "\"NAAM                         1\",10,20,0,0,#TRUE#,#FALSE#,#FALSE#,\"L\",\"M\"\r\n");
    for (const auto& [id, boxes] : {std::pair{"BEIDE", 4}, std::pair{"NAAM", 0}}) {
        device.clear();
        job.state.letterhead.selected = QString::fromLatin1(id);
        start();
        print_letterhead(job);
        EXPECT_EQ(device.count(RecordedCall::Kind::Line), boxes) << id;
    }
    // The address line carries the mailbox in the symbol font.
    device.clear();
    job.state.letterhead.selected = QStringLiteral("BEIDE");
    start();
    const double full = device.scale_height();
    print_letterhead(job);
    const RecordedCall* mail = device.find_text(kMailGlyph);
    ASSERT_NE(mail, nullptr);
    EXPECT_EQ(mail->font, kGlyphFont);
    EXPECT_NE(device.find_text(QStringLiteral("POSBUS 12")), nullptr);
    EXPECT_NEAR(job.state.letterhead.bottom_margin, 4.72, 0.01);  // 20 mm
    EXPECT_NEAR(device.scale_height(), full - job.state.letterhead.bottom_margin, 0.01);
    EXPECT_DOUBLE_EQ(job.state.header_bottom, device.scale_height());
    EXPECT_GT(device.current_y(), job.state.letterhead.top_margin);
}

TEST_F(LetterheadTest, GridBelowALetterheadEndsAboveTheBottomMargin) {
    table("\"LAAG                         0\",10,100,0,0,#FALSE#,#FALSE#,#FALSE#,\"L\",\"M\"\r\n");
    job.state.letterhead.selected = QStringLiteral("LAAG");
    start();
    print_letterhead(job);
    PrintGrid grid(0, 2);
    for (int r = 0; r < 100; ++r)
        grid.add_item(QStringLiteral("%1\tROW").arg(r));
    GridPageOptions options;
    EXPECT_FALSE(print_grid_blocks(job, grid, options));                       // the page filled
    const double page_end = device.page_height_twips() - 100 * 1440.0 / 25.4;  // 100 mm
    double lowest = 0;
    for (const RecordedCall& c : device.calls())
        if (c.kind == RecordedCall::Kind::Text)
            lowest = std::max(lowest, c.y1);
    EXPECT_GT(lowest, page_end / 2);
    EXPECT_LT(lowest, page_end);
}

TEST_F(LetterheadTest, PictureThatCannotBeReadLeavesItsSpaceFree) {
    table("\"SKOOL_BRIEFHOOF.JPG          0\",50,0,0,0,#FALSE#,#FALSE#,#FALSE#,\"L\",\"M\"\r\n");
    write(path("skool_briefhoof.jpg"), QByteArray("\xFF\xD8\xFF\xE0 cut short", 14));
    job.state.letterhead.selected = QStringLiteral("SKOOL_BRIEFHOOF.JPG");
    start();
    print_letterhead(job);
    EXPECT_EQ(device.count(RecordedCall::Kind::Picture), 0);
    EXPECT_TRUE(job.state.letterhead.image_in_force);
    EXPECT_NEAR(device.current_y(), 11.81, 0.01);

    QImage stationery(210, 50, QImage::Format_RGB32);
    stationery.fill(Qt::blue);
    ASSERT_TRUE(stationery.save(path("skool_briefhoof.jpg"), "JPG"));
    device.clear();
    start();
    print_letterhead(job);
    EXPECT_EQ(device.count(RecordedCall::Kind::Picture), 1);
}

TEST_F(LetterheadTest, MeasuringFrameIsLandscape) {
    start();
    print_measuring_frame(job, 10, 10, 10, 10);
    ASSERT_EQ(device.count(RecordedCall::Kind::Line), 4);
    EXPECT_EQ(device.calls().front().orientation, kLandscape);
}

}  // namespace
}  // namespace korvel::reports
