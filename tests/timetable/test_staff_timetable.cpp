// The staff timetable over roster files written here byte by byte from the timetable system's
// layouts (not through the reader's field tables), so that a wrong offset shows.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/drive_map.h"
#include "platform/process_end.h"
#include "reports/recording_device.h"
#include "reports/report_engine.h"
#include "shell/session.h"
#include "timetable/staff_timetable.h"
#include "ui/scripted_dialogs.h"

inline void PrintTo(const QString& s, std::ostream* os) {
    *os << '"' << s.toStdString() << '"';
}

namespace korvel::timetable {
namespace {

constexpr int kPosLength = 2182;
constexpr int kFirstCell = 35;

QByteArray blanks(int n) {
    return QByteArray(n, ' ');
}
void put(QByteArray& record, int offset, const QByteArray& text) {
    record.replace(offset, text.size(), text);
}

class Timetable : public ::testing::Test {
  protected:
    Timetable() {
        session = shell::Session::on_drive(
            dialogs, platform::DriveMap::explicit_map({{QStringLiteral("C:"), dir.path()}}),
            QStringLiteral("C:"), QStringLiteral("2026"));
        session->afrikaans = false;
        folder = session->fs().native(session->folders.roster);
        QDir().mkpath(folder);
    }
    void write(const char* name, const QByteArray& bytes) {
        QFile f(QDir(folder).filePath(QString::fromLatin1(name)));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    QByteArray read(const char* name) {
        QFile f(QDir(folder).filePath(QString::fromLatin1(name)));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    // A cycle of days x periods, the first period's time "07:30-08:15".
    void school(const QByteArray& days, const QByteArray& periods) {
        QByteArray r = blanks(697);
        put(r, 0, days);
        put(r, 2, periods);
        put(r, 191, "07:30-08:15");
        put(r, 202, "08:15-09:00");
        write("skl_dta_random.txt", r);
    }
    // Staff member P7 with cells given by index; record 2 belongs to someone else.
    QByteArray timetable(const std::map<int, QByteArray>& cells) {
        QByteArray r = blanks(kPosLength);
        put(r, 0, "P7   ");
        put(r, 5, "NKOSI S");
        for (const auto& [index, text] : cells)
            put(r, kFirstCell + 15 * index, text);
        put(r, 2180, QByteArray("\x07\x00", 2));
        QByteArray other = blanks(kPosLength);
        put(other, 0, "P8");
        put(other, kFirstCell, "WISK 11 B");
        return r + other;
    }
    void staff() {
        QByteArray r = blanks(330);
        put(r, 0, "P7");
        put(r, 5, "NKOSI");
        put(r, 65, "S");
        write("Prs_Dta_random.txt", r);
        QByteArray subject = blanks(68);
        put(subject, 0, "WISK");
        write("rstr_vak_random.txt", subject);
    }
    std::unique_ptr<StaffTimetable> open() {
        auto form = std::make_unique<StaffTimetable>(*session);
        form->form_load();
        form->pos_lys_click(0);
        return form;
    }

    QTemporaryDir dir;
    ui::ScriptedDialogs dialogs;
    std::unique_ptr<shell::Session> session;
    QString folder;
};

TEST_F(Timetable, WithoutDaysAndPeriodsTheFormSaysSoAndCreatesNothing) {
    for (const auto& [days, periods] :
         std::vector<std::pair<QByteArray, QByteArray>>{{"", ""}, {"ab", "9 "}, {"6 ", "0 "}}) {
        if (days.isEmpty())
            write("skl_dta_random.txt", {});  // a file of length 0 has no record 1
        else
            school(days, periods);
        dialogs.clear();
        StaffTimetable form(*session);
        form.form_load();
        EXPECT_EQ(dialogs.last_text(),
                  "NO PERIOD INFORMATION FOUND !!\n\nSEE SCHOOL DETAILS - DAYS/PERIODS ...")
            << days.constData();
        EXPECT_TRUE(form.cells.empty());
        EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList{"skl_dta_random.txt"});
    }
}

TEST_F(Timetable, ADriveThatIsNotThereEndsTheRun) {
    RosterFiles files(*session);
    EXPECT_THROW(files.open_roster_file(QStringLiteral("*"), QStringLiteral("Q:\\ROSTER")),
                 ProcessEnd);
    EXPECT_EQ(dialogs.last_text(),
              "NETWORK DRIVE  Q:  NOT AVAILABLE ...\n\nCONTACT YOUR NETWORK ADMINISTRATOR !");
    // A name for the subject periods never leads out of the folder.
    EXPECT_EQ(files.open_roster_file(QStringLiteral("RSTR_VAK"), {}, QStringLiteral("..\\x")), 0);
}

TEST_F(Timetable, DayAndPeriodAddressTheCellsDayMajor) {
    // cell (d - 1) x periods + p - 1, none past the 143rd
    const std::tuple<int, int, int, int> cases[] = {
        {1, 1, 9, 0}, {2, 3, 9, 11}, {6, 9, 9, 53}, {1, 10, 9, -1}, {16, 8, 9, 142}, {16, 9, 9, -1},
    };
    for (const auto& [d, p, periods, index] : cases)
        EXPECT_EQ(cell_index(d, p, periods), index) << d << "," << p;

    school("6 ", "9 ");
    staff();
    QByteArray pos = timetable({{11, "WISK 10 A"}, {53, QByteArray("AB\0CD", 5)}});
    write("Pos_Dta_random.txt", pos + "stray bytes");
    auto form = open();
    EXPECT_EQ(form->heading, "P7 : NKOSI S");
    EXPECT_EQ(form->row_heads.first(), "DAY 1 (A)");
    EXPECT_EQ(form->row_heads.at(5), "DAY 6 (F)");
    EXPECT_EQ(form->column_heads.at(8), "Period 9");
    EXPECT_EQ(form->cells[1 * 9 + 2], "WISK 10 A");
    EXPECT_EQ(form->cells[53], "AB CD");
    EXPECT_EQ(form->cell_colours[0], kDefaultCellColour);
}

TEST_F(Timetable, FreeingAPeriodWritesItsFifteenBytesOnly) {
    school("6 ", "9 ");
    staff();
    write("Pos_Dta_random.txt", timetable({{11, "WISK 10 A"}}));
    auto form = open();
    // Another workstation fills a cell after the form read the record.
    QByteArray before = read("Pos_Dta_random.txt");
    put(before, kFirstCell + 15 * 40, "SPORT");
    write("Pos_Dta_random.txt", before);

    dialogs.answer(ui::Answer::Yes);
    form->rstr_grid_dbl_click(2, 3);
    EXPECT_EQ(dialogs.last_text(), "DO YOU REALLY WISH TO FREE DAY 2, PERIOD 3 VRYSTEL ?");
    QByteArray expected = before;
    put(expected, kFirstCell + 15 * 11, blanks(15));
    EXPECT_EQ(read("Pos_Dta_random.txt"), expected);
    EXPECT_TRUE(form->cells[11].isEmpty());

    // Nothing in browse mode, nor on a free cell.
    session->browse_mode = true;
    dialogs.clear();
    form->rstr_grid_dbl_click(5, 5);
    EXPECT_TRUE(dialogs.shown().isEmpty());
}

TEST_F(Timetable, DeleteClearsSubjectPeriodsOnlyWhenAsked) {
    for (const ui::Answer answer : {ui::Answer::Yes, ui::Answer::No}) {
        school("6 ", "9 ");
        staff();
        write("Pos_Dta_random.txt", timetable({{0, "WISK 10 A"}, {1, "VERGADERING"}}));
        auto form = open();
        dialogs.answer(answer);
        form->rostr_ops_click(kDeleteTimetable);
        EXPECT_EQ(dialogs.last_text(), "SUBJECT PERIODS ALSO ?");
        const QByteArray after = read("Pos_Dta_random.txt");
        EXPECT_EQ(after.mid(kFirstCell, 15),
                  answer == ui::Answer::Yes ? blanks(15) : QByteArray("WISK 10 A      "));
        EXPECT_EQ(after.mid(kFirstCell + 15, 15), blanks(15));
        EXPECT_EQ(after.mid(2180, 2), QByteArray("\x07\x00", 2));       // the number is kept
        EXPECT_EQ(after.mid(kPosLength + kFirstCell, 9), "WISK 11 B");  // someone else's
    }
}

TEST_F(Timetable, ThePrintedGridTurnsDaysIntoColumns) {
    EXPECT_EQ(printed_entry(QStringLiteral("WISK 10 A  X   "), false),
              "     WISK      \r\nGR. 10\r\nCL. A");
    EXPECT_EQ(printed_entry(QStringLiteral("WISK R  B"), true),
              "     WISK      \r\nGR. R\r\nKL. B");
    EXPECT_EQ(printed_entry(QStringLiteral("VERGADERING"), false), "VERGADERING");

    school("2 ", "9 ");
    staff();
    write("Pos_Dta_random.txt", timetable({{9, "WISK 10 A"}}));
    auto form = open();
    const reports::PrintGrid grid = form->print_grid();
    ASSERT_EQ(grid.cols(), 3);
    ASSERT_EQ(grid.rows(), 10);
    EXPECT_EQ(grid.text(0, 2), "DAY 2");
    EXPECT_EQ(grid.text(1, 0), "PER 1: 07:30-08:15");
    EXPECT_EQ(grid.text(3, 0), "PER 3");
    EXPECT_EQ(grid.text(1, 2), "     WISK      \r\nGR. 10\r\nCL. A");

    reports::RecordingDevice device;
    reports::PrintJob job(device, dialogs);
    form->job = &job;
    form->choose_target = [](reports::PrintJob& j) {
        j.print_setup();
        j.state.page_pending = true;
        return true;
    };
    ASSERT_TRUE(form->print_timetable());
    EXPECT_EQ(job.state.report_name, "TIME TABLE NKOSI S");
    EXPECT_EQ(device.orientation(), reports::kLandscape);
    // The grade and the class print on lines of their own below the subject.
    const QStringList texts = device.texts();
    EXPECT_TRUE(texts.contains(QStringLiteral("GR. 10")));
    EXPECT_TRUE(texts.contains(QStringLiteral("CL. A")));
}

}  // namespace
}  // namespace korvel::timetable
