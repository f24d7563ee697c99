// The LURITS staff import: the same sheet written as .xls (xlwt) and .xlsx (libxlsxwriter) at
// test time gives the same records; post numbers, carried fields and the refusals.

#include <gtest/gtest.h>
#include <xlsxwriter.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include "shell/demo_tree.h"
#include "shell/folders.h"
#include "shell/helpers.h"
#include "staff/lurits_import.h"
#include "staff/staff_fixture.h"
#include "staff/staff_register.h"
#include "store/record_layouts.h"

namespace korvel::staff {
namespace {

using store::Code;
using store::PRSALG;
using store::Record;
using testing::StaffTree;

struct Cell {
    int row;  // from 1
    int column;
    enum Kind { Text, Number, Date } kind;
    QString text;
    double number = 0;
};

const QString kBlackAfrican = QStringLiteral("BLACK AFRICAN");

std::vector<Cell> sheet(const QString& years_of_row_17 = QStringLiteral("12")) {
    std::vector<Cell> cells = {
        // Headings: never read, though column 3 holds text.
        {1, 3, Cell::Text, QStringLiteral("SURNAME")},
        {16, 3, Cell::Text, QStringLiteral("HEADING")},
        // Row 17: a whole person, the ID in a number cell.
        {17, 1, Cell::Number, {}, 8001015009087.0},
        {17, 2, Cell::Text, QStringLiteral(" 12345678 ")},
        {17, 3, Cell::Text, QStringLiteral("  MOLEFE ")},
        {17, 4, Cell::Text, QStringLiteral("THABO JOHN")},
        {17, 6, Cell::Text, QStringLiteral("MR")},
        {17, 7, Cell::Text, QStringLiteral("Male")},
        {17, 8, Cell::Text, QStringLiteral(" black african ")},
        {17, 9, Cell::Date, {}, 29221},  // 1980-01-01
        {17, 10, Cell::Text, QStringLiteral("Sesotho")},
        {17, 11, Cell::Number, {}, 40544},  // 2011-01-01
        {17, 12, Cell::Text, QStringLiteral("Permanent")},
        {17, 18, Cell::Text, QStringLiteral("State")},
        // Row 18 blank; row 19 with words the import does not know and text dates.
        {19, 3, Cell::Text, QStringLiteral("NAIDOO")},
        {19, 4, Cell::Text, QStringLiteral("PRIYA")},
        {19, 7, Cell::Text, QStringLiteral("Female")},
        {19, 8, Cell::Text, QStringLiteral("MARTIAN")},
        {19, 9, Cell::Text, QStringLiteral("31/02/1980")},
        {19, 11, Cell::Text, QStringLiteral("2015/01/15")},
        {19, 18, Cell::Text, QStringLiteral("Other")},
        // The last row read.
        {500, 3, Cell::Text, QStringLiteral("LAST")},
        {500, 8, Cell::Text, QStringLiteral("ASIAN/INDIAN")},
        {500, 9, Cell::Text, QStringLiteral("15/01/1980")},
        {500, 18, Cell::Text, QStringLiteral("SGB")},
        {501, 3, Cell::Text, QStringLiteral("PAST THE END")},
    };
    cells.push_back({17, 17, Cell::Text, years_of_row_17});
    return cells;
}

QString write_xlsx(const QString& path, const std::vector<Cell>& cells) {
    lxw_workbook* wb = workbook_new(path.toUtf8().constData());
    lxw_worksheet* ws = workbook_add_worksheet(wb, nullptr);
    lxw_format* date = workbook_add_format(wb);
    format_set_num_format(date, "yyyy-mm-dd");
    for (const Cell& c : cells) {
        const auto r = static_cast<lxw_row_t>(c.row - 1);
        const auto col = static_cast<lxw_col_t>(c.column - 1);
        if (c.kind == Cell::Text) {
            worksheet_write_string(ws, r, col, c.text.toUtf8().constData(), nullptr);
        } else {
            worksheet_write_number(ws, r, col, c.number, c.kind == Cell::Date ? date : nullptr);
        }
    }
    workbook_close(wb);
    return path;
}

QString write_xls(const QString& path, const std::vector<Cell>& cells) {
    QString script = QStringLiteral(
        "import xlwt, sys\n"
        "wb = xlwt.Workbook()\n"
        "ws = wb.add_sheet('Staff')\n"
        "d = xlwt.easyxf(num_format_str='YYYY-MM-DD')\n");
    for (const Cell& c : cells) {
        const QString at = QStringLiteral("%1, %2, ").arg(c.row - 1).arg(c.column - 1);
        if (c.kind == Cell::Text) {
            script += QStringLiteral("ws.write(") + at + QStringLiteral("'") + c.text +
                      QStringLiteral("')\n");
        } else {
            script += QStringLiteral("ws.write(") + at + QString::number(c.number, 'f', 0) +
                      (c.kind == Cell::Date ? QStringLiteral(", d)\n") : QStringLiteral(")\n"));
        }
    }
    script += QStringLiteral("wb.save(sys.argv[1])\n");
    QProcess p;  // the system's python, which has xlwt
    p.start(QFile::exists(QStringLiteral("/usr/bin/python3")) ? QStringLiteral("/usr/bin/python3")
                                                              : QStringLiteral("python3"),
            {QStringLiteral("-c"), script, path});
    p.waitForFinished(30000);
    EXPECT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
    return path;
}

// Imports the file as a user would: Yes, then the file.
int import(StaffTree& t, const QString& file) {
    t.dialogs.answer(ui::Answer::Yes);
    t.dialogs.choose(file);
    return import_lurits_staff(t.session);
}

std::vector<Record> staff_records(StaffTree& t) {
    std::vector<Record> out;
    t.session.close_file(Code::PRSALG);
    t.session.open_file(Code::PRSALG);
    t.session.scan_records(Code::PRSALG, [&](int, Record& r) { out.push_back(r); });
    return out;
}

TEST(LuritsImport, XlsAndXlsxGiveTheSameRecords) {
    QTemporaryDir files;
    std::vector<std::vector<Record>> results;
    for (const QString& path :
         {write_xls(files.filePath(QStringLiteral("staff.xls")), sheet()),
          write_xlsx(files.filePath(QStringLiteral("staff.xlsx")), sheet())}) {
        StaffTree t;
        t.session.afrikaans = false;
        // What the sheet does not set comes from the record in memory.
        t.session.working(Code::PRSALG).set_text(PRSALG["PA_KERK"], QStringLiteral("NGK"));
        EXPECT_EQ(import(t, path), 3) << path.toStdString();
        EXPECT_EQ(t.dialogs.last_text(),
                  QFileInfo(path).fileName() + QStringLiteral(" IMPORT COMPLETED ...."));
        EXPECT_EQ(t.dialogs.progress_shown(),
                  QStringList({QStringLiteral("Importing LURITS staff information ...")}));
        results.push_back(staff_records(t));
    }
    ASSERT_EQ(results[0].size(), 3u);
    EXPECT_TRUE(results[0] == results[1]);

    const std::vector<Record>& r = results[1];
    const auto text = [&r](int i, const char* f) {
        return r[static_cast<std::size_t>(i)].text(*PRSALG.find(f)).trimmed();
    };
    EXPECT_EQ(text(0, "PA_POS_NR"), "L1");
    EXPECT_EQ(text(1, "PA_POS_NR"), "L3");  // the blank row 18 keeps its number
    EXPECT_EQ(text(2, "PA_POS_NR"), "L484");
    EXPECT_EQ(text(0, "PA_ID_NR"), "8001015009087");
    EXPECT_EQ(text(0, "PA_PERSAL"), "12345678");
    EXPECT_EQ(text(0, "PA_VAN"), "MOLEFE");
    EXPECT_EQ(text(0, "PA_GESLAG"), "M");
    EXPECT_EQ(text(0, "PA_TAAL"), "S");
    EXPECT_EQ(r[0].text(PRSALG["PA_TPA"], 1), "P");
    EXPECT_EQ(r[0].date(PRSALG["PA_G_DATUM"]), QDate(1980, 1, 1));
    EXPECT_EQ(r[0].date(PRSALG["PA_DTM_SKL"]), QDate(2011, 1, 1));
    EXPECT_EQ(r[0].int16(PRSALG["PO_JRE_OND"]), 12);
    // Codes 1 to 5 as the workbook's words give them: 1 is "BLACK AFRICAN" here.
    EXPECT_EQ(text(0, "PA_RAS"), "1");
    EXPECT_EQ(text(0, "PA_OD_BL"), "O");
    // Row 19: an unknown word and "Other" keep the row before's values; a text date is read
    // year first, and an impossible one is no date (never today).
    EXPECT_EQ(text(1, "PA_RAS"), "1");
    EXPECT_EQ(text(1, "PA_OD_BL"), "O");
    EXPECT_EQ(text(1, "PA_ID_NR"), "");
    EXPECT_FALSE(r[1].date(PRSALG["PA_G_DATUM"]).has_value());
    EXPECT_EQ(r[1].date(PRSALG["PA_DTM_SKL"]), QDate(2015, 1, 15));
    EXPECT_EQ(text(2, "PA_RAS"), "4");
    EXPECT_EQ(text(2, "PA_OD_BL"), "B");
    EXPECT_FALSE(r[2].date(PRSALG["PA_G_DATUM"]).has_value());  // "15/01/1980" is day first
    for (const Record& rec : r) {
        EXPECT_EQ(rec.text(PRSALG["PA_KERK"]).trimmed(), "NGK");
    }
}

TEST(LuritsImport, AnUnstorableOrUnreadableFileAddsNothing) {
    QTemporaryDir files;
    struct Case {
        const char* name;
        QString file;
        const char* message_part;
    };
    const QString junk = files.filePath(QStringLiteral("junk.xls"));
    testing::write_file(junk, QByteArrayLiteral("PK\x03\x04 not really a zip at all"));
    const Case cases[] = {
        {"text in column 17",
         write_xlsx(files.filePath(QStringLiteral("text.xlsx")), sheet(QStringLiteral("ten"))),
         "ROW 17, COLUMN 17"},
        {"a number past 32767",
         write_xlsx(files.filePath(QStringLiteral("big.xlsx")), sheet(QStringLiteral("40000"))),
         "ROW 17, COLUMN 17"},
        {"no workbook", junk, "CANNOT BE READ"},
    };
    for (const Case& c : cases) {
        StaffTree t;
        t.session.afrikaans = false;
        EXPECT_EQ(import(t, c.file), 0) << c.name;
        EXPECT_TRUE(t.dialogs.last_text().contains(QLatin1String(c.message_part)))
            << c.name << ": " << t.dialogs.last_text().toStdString();
        EXPECT_TRUE(staff_records(t).empty()) << c.name;
    }
}

// The same people imported again come in with the same "L" numbers. The index built as the
// register opens takes the repeated number from each later copy before the register's repair
// sees it, so a copy does not become "L1*": it ends with the next spare number, as a record
// with a blank post number does.
TEST(LuritsImport, ASecondImportGivesTheCopiesSpareNumbersInTheRegister) {
    QTemporaryDir files;
    const QString path = write_xlsx(files.filePath(QStringLiteral("staff.xlsx")), sheet());
    StaffTree t;
    import(t, path);
    import(t, path);
    StaffRegister reg(t.session, true);
    reg.form_load();
    QStringList posts;
    for (const Record& r : staff_records(t)) {
        posts << r.text(PRSALG["PA_POS_NR"]).trimmed();
    }
    EXPECT_EQ(posts, QStringList({"L1", "L3", "L484", "991", "992", "993"}));
}

// Dialogs that take a file of the given name from the folder the file dialog opens at.
class PickFromStart : public testing::StaffDialogs {
  public:
    QString choose_file(const QString& caption, const QString& start, const QString& filter,
                        bool for_saving) override {
        ScriptedDialogs::choose_file(caption, start, filter, for_saving);
        return QDir(start).filePath(name);
    }
    QString name;
};

TEST(LuritsImport, TheDemoWorkbookLiesWhereTheFileDialogOpens) {
    QTemporaryDir dir;
    PickFromStart dialogs;
    shell::Session s(dialogs, platform::DriveMap::explicit_map({{"C:", dir.path()}}));
    ui::UnattendedDialogs quiet;
    shell::write_demo_tree(dir.path(), 2026, quiet);
    s.folders = shell::default_folders(QStringLiteral("C:"), QStringLiteral("2026"));
    s.ledger_year = QStringLiteral("2026");
    s.afrikaans = false;
    dialogs.answer(ui::Answer::Yes);
    dialogs.name = QStringLiteral("lurits_personeel.xlsx");
    ASSERT_EQ(import_lurits_staff(s), 5) << dialogs.last_text().toStdString();

    QStringList posts;
    QStringList ids;
    s.close_file(Code::PRSALG);
    s.open_file(Code::PRSALG);
    s.scan_records(Code::PRSALG, [&](int, Record& r) {
        if (r.text(PRSALG["PA_POS_NR"]).startsWith(u'L')) {
            posts << r.text(PRSALG["PA_POS_NR"]).trimmed();
            ids << r.text(PRSALG["PA_ID_NR"]).trimmed();
        }
    });
    EXPECT_EQ(posts, QStringList({"L1", "L2", "L4", "L5", "L6"}));
    for (const QString& id : ids) {
        EXPECT_TRUE(shell::valid_id_number(id, {}, false).valid) << id.toStdString();
    }
}

}  // namespace
}  // namespace korvel::staff
