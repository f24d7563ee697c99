// Reports written to real files: a PDF read back with pdftotext, a workbook read back with
// openpyxl, and a workbook that cannot be written.

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "reports/grid_output.h"
#include "reports/painter_device.h"
#include "reports/report_fixture.h"

namespace korvel::reports {
namespace {

QString run(const QString& program, const QStringList& args, int* exit_code = nullptr) {
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(60000)) {
        p.kill();
        p.waitForFinished();
    }
    if (exit_code)
        *exit_code = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    return QString::fromUtf8(p.readAllStandardOutput()) +
           QString::fromUtf8(p.readAllStandardError());
}

// A Python that has openpyxl, or blank.
QString python_with_openpyxl() {
    for (const QString& found : {QStringLiteral("/usr/bin/python3"),
                                 QStandardPaths::findExecutable(QStringLiteral("python3"))}) {
        int code = -1;
        if (QFile::exists(found))
            run(found, {QStringLiteral("-c"), QStringLiteral("import openpyxl")}, &code);
        if (code == 0)
            return found;
    }
    return {};
}

PrintGrid staff_grid(int rows) {
    PrintGrid grid;
    grid.set_format_string(QStringLiteral("<~~R~~VAN EN VOORNAME|^~~R~~ID-NOMMER|>BEDRAG"));
    for (int r = 1; r <= rows; ++r)
        grid.add_item(
            QStringLiteral("PERSOON %1\t%2\t%3.50")
                .arg(r)
                .arg(r == 1 ? QStringLiteral("0101015009087") : QStringLiteral("8001015009087"))
                .arg(r));
    return grid;
}

TEST(ReportFiles, PdfHoldsTheHeader) {
    const QString pdftotext = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
    if (pdftotext.isEmpty())
        GTEST_SKIP() << "pdftotext missing";
    QTemporaryDir dir;
    for (bool afrikaans : {true, false}) {
        const QString path = dir.filePath(afrikaans ? "lys.pdf" : "list.pdf");
        PdfDevice device(path);
        ui::ScriptedDialogs dialogs;
        PrintJob job(device, dialogs, testing::sample_school(), afrikaans);
        job.clock = testing::fixed_moment;
        job.state.report_name = QStringLiteral("2026 PERSONEELLYS");
        job.print_setup();
        job.state.page_pending = true;
        PrintGrid grid = staff_grid(60);
        EXPECT_EQ(print_grid_report(job, grid, QStringLiteral("PERSONEELLYS"),
                                    QStringLiteral("OPVOEDERS")),
                  2);
        job.finish_report();
        EXPECT_EQ(dialogs.last_text(), afrikaans ? QStringLiteral("DRUKWERK VOLTOOI (2 bladsye)")
                                                 : QStringLiteral("PRINTING COMPLETE (2 pages)"));
        ASSERT_TRUE(QFile::exists(path));

        int code = -1;
        const QString text =
            run(pdftotext, {QStringLiteral("-layout"), path, QStringLiteral("-")}, &code);
        ASSERT_EQ(code, 0) << text.toStdString();
        for (const QString& expected :
             {QStringLiteral("2026.03.04"), QStringLiteral("09:05:07"),
              QStringLiteral("HOëRSKOOL DUINEVELD"), QStringLiteral("PERSONEELLYS"),
              QStringLiteral("OPVOEDERS"), QStringLiteral("4.2.17"), QStringLiteral("PERSOON 60"),
              QStringLiteral("2.../"), QStringLiteral("2026 PERSONEELLYS")})
            EXPECT_TRUE(text.contains(expected)) << expected.toStdString();
        const QString page = afrikaans ? QStringLiteral("BLADSY : ") : QStringLiteral("PAGE : ");
        EXPECT_TRUE(text.contains(page + "1")) << text.toStdString();
        EXPECT_TRUE(text.contains(page + "2"));
    }
}

TEST(ReportFiles, AbandonedPdfLeavesNoFile) {
    QTemporaryDir dir;
    const QString path = dir.filePath("weg.pdf");
    {
        PdfDevice device(path);
        device.set_scale_mode(ScaleMode::Characters);
        device.print(QStringLiteral("IETS"));
        device.abandon();
    }
    EXPECT_FALSE(QFile::exists(path));
}

TEST(ReportFiles, WorkbookReadsBackWithItsLayout) {
    const QString python = python_with_openpyxl();
    if (python.isEmpty())
        GTEST_SKIP() << "python3 with openpyxl missing";
    QTemporaryDir dir;
    RecordingDevice device;
    ui::ScriptedDialogs dialogs;
    PrintJob job(device, dialogs, testing::sample_school(), true);
    job.clock = testing::fixed_moment;
    job.begin_spreadsheet(dir.path(), QStringLiteral("personeel lys"));
    PrintGrid grid = staff_grid(3);
    grid.add_item(QStringLiteral("TOTAAL\tTOTAAL\t6.50"));
    grid.row(4).merge = true;
    QImage photo(40, 30, QImage::Format_RGB32);
    photo.fill(Qt::blue);
    grid.cell(3, 2).picture = photo;
    job.print_page_header(QStringLiteral("PERSONEELLYS"), QStringLiteral("OPVOEDERS"));
    ASSERT_TRUE(print_grid_pages(job, grid));
    job.print_page_header(QStringLiteral("TWEEDE BLAD"));
    job.finish_report();
    const QString path = dir.filePath("personeel lys.xlsx");
    ASSERT_TRUE(QFile::exists(path));
    EXPECT_EQ(dialogs.last_text(),
              QStringLiteral("UITVOER VAN personeel lys NA ") + path + " VOLTOOI !!");
    EXPECT_FALSE(job.state.to_spreadsheet);
    // Nothing but the workbook is left in the folder.
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);

    const QString script = QStringLiteral(R"(
import sys, openpyxl
wb = openpyxl.load_workbook(sys.argv[1])
print("SHEETS", len(wb.worksheets))
ws = wb.worksheets[0]
for ref in ["A1", "C1", "E1", "A2", "C2", "E2", "A3", "C3", "E3", "B1", "D3", "C4", "A6", "B6", "B7", "B8", "C7", "A10"]:
    v = ws[ref].value
    print(ref, type(v).__name__, "" if v is None else v)
print("ROT", ws["A6"].alignment.textRotation, ws["B6"].alignment.textRotation)
print("FMT", ws["B7"].number_format)
print("FONT", ws["A7"].font.name, ws["A1"].font.name)
print("FILL", ws["A6"].fill.fgColor.rgb)
print("MERGED", " ".join(str(r) for r in ws.merged_cells.ranges))
print("BORDER", ws["A7"].border.left.style, ws["C8"].border.bottom.style)
print("TWO", wb.worksheets[1]["C3"].value)
import zipfile
print("MEDIA", len([n for n in zipfile.ZipFile(sys.argv[1]).namelist() if n.startswith("xl/media/")]))
)");
    int code = -1;
    const QString out = run(python, {QStringLiteral("-c"), script, path}, &code);
    ASSERT_EQ(code, 0) << out.toStdString();
    const QStringList lines = out.split(u'\n');
    // One expected line of the script's output per '|'.
    const QString expected = QString::fromUtf8(
        "SHEETS 2|A1 str 2026.03.04|C1 NoneType |E1 str KORVEL|A2 str 09:05:07|"
        "C2 str HOëRSKOOL DUINEVELD|E2 str Debian GNU/Linux 12|A3 str BLADSY : 1|"
        "C3 str PERSONEELLYS [OPVOEDERS]|E3 str 4.2.17|B1 NoneType |D3 NoneType |C4 NoneType |"
        "A6 str VAN EN VOORNAME|B6 str ID-NOMMER|B7 str 0101015009087|B8 str 8001015009087|"
        "C7 float 1.5|A10 str TOTAAL|ROT 90 90|FMT 0000000000000|FONT Lucida Console ARIAL|"
        "FILL FFF7F7F7|MERGED A10:B10|BORDER thin thin|TWO TWEEDE BLAD|MEDIA 1");
    for (const QString& line : expected.split(u'|'))
        EXPECT_TRUE(lines.contains(line)) << line.toStdString() << "\n" << out.toStdString();
}

TEST(ReportFiles, GridWithAFileOfItsOwn) {
    QTemporaryDir dir;
    RecordingDevice device;
    ui::ScriptedDialogs dialogs;
    PrintJob job(device, dialogs, testing::sample_school(), true);
    PrintGrid grid = staff_grid(2);
    grid.own_spreadsheet_file = true;
    grid.proposed_file_name = QStringLiteral("lys/2026");
    dialogs.choose(dir.filePath("eie lys.xlsx"));
    EXPECT_TRUE(print_grid_pages(job, grid));
    EXPECT_TRUE(QFile::exists(dir.filePath("eie lys.xlsx")));
    EXPECT_FALSE(job.state.to_spreadsheet);
    EXPECT_TRUE(device.calls().empty());

    // Cancelled: nothing written, nothing printed, and the grid counts as done.
    EXPECT_TRUE(print_grid_pages(job, grid));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files).size(), 1);
    EXPECT_TRUE(device.calls().empty());
}

// A two-row list written as a workbook into a folder that will not take it.
struct RefusedWorkbook : ::testing::Test {
    QTemporaryDir dir;
    RecordingDevice device;
    ui::ScriptedDialogs dialogs;
    PrintJob job{device, dialogs, testing::sample_school(), false};

    void write_list(const QString& folder) {
        dialogs.clear();
        job.begin_spreadsheet(folder, QStringLiteral("list"));
        job.print_page_header(QStringLiteral("LIST"));
        PrintGrid grid = staff_grid(2);
        print_grid_pages(job, grid);
        job.finish_report();
        EXPECT_TRUE(
            dialogs.last_text().startsWith(QStringLiteral("THE WORKBOOK CANNOT BE WRITTEN")))
            << dialogs.last_text().toStdString();
    }
    static void put(const QString& path, const QByteArray& bytes) {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    static QByteArray bytes_of(const QString& path) {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
};

TEST_F(RefusedWorkbook, MissingFolderOrAFolderInTheWay) {
    const QString missing = dir.filePath("nowhere");
    write_list(missing);
    EXPECT_EQ(dialogs.shown().last().icon, ui::Icon::Critical);
    EXPECT_FALSE(QFile::exists(missing));

    // A folder standing where the workbook should go: the new file cannot replace it, and the
    // temporary file written beside it is gone again.
    const QString blocked = dir.filePath("blocked");
    ASSERT_TRUE(QDir().mkpath(blocked + "/list.xlsx/inside"));
    write_list(blocked);
    EXPECT_EQ(QDir(blocked).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{QStringLiteral("list.xlsx")});
}

TEST_F(RefusedWorkbook, ReadOnlyFolderKeepsTheOldWorkbook) {
    const QString locked = dir.filePath("locked");
    ASSERT_TRUE(QDir().mkpath(locked));
    put(QDir(locked).filePath("list.xlsx"), "OLD");
    const auto all = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
    QFile::setPermissions(locked, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    if (QFileInfo(locked).isWritable()) {
        QFile::setPermissions(locked, all);
        GTEST_SKIP() << "running with rights that ignore folder permissions";
    }
    write_list(locked);
    QFile::setPermissions(locked, all);
    EXPECT_EQ(QDir(locked).entryList(QDir::Files | QDir::Hidden).size(), 1);
    EXPECT_EQ(bytes_of(QDir(locked).filePath("list.xlsx")), QByteArray("OLD"));
}

// The same refusal whatever the rights: the folder chosen is a file.
TEST_F(RefusedWorkbook, AFolderThatIsAFileLeavesNothing) {
    const QString not_a_folder = dir.filePath("plain.txt");
    put(not_a_folder, "TEXT");
    write_list(not_a_folder);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
              QStringList({"plain.txt"}));
    EXPECT_EQ(bytes_of(not_a_folder), QByteArray("TEXT"));
}

}  // namespace
}  // namespace korvel::reports
