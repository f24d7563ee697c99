#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#include <QFile>
#include <QHeaderView>
#include <QKeyEvent>
#include <QListWidget>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include "attendance/attendance_register_form.h"
#include "attendance/code_list_print.h"
#include "attendance/leave_capture.h"
#include "attendance/leave_capture_form.h"
#include "attendance/reason_codes.h"
#include "attendance/reason_codes_form.h"
#include "reports/recording_device.h"
#include "shell/demo_tree.h"
#include "shell/folders.h"
#include "staff/demo_forms_fixture.h"
#include "store/record_layouts.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;

namespace {
QApplication& application() {
    return *qApp;
}
}  // namespace

TEST(AttendanceRegisterForm, MarkADayAbsentWithAReasonAndReadTheBytesBack) {
    application();
    QTemporaryDir tmp;
    const int year = 2026;
    ui::UnattendedDialogs demo_answers;
    shell::write_demo_tree(tmp.path(), year, demo_answers);
    ui::ScriptedDialogs dialogs;
    shell::Session session(dialogs, platform::DriveMap::explicit_map({{"C:", tmp.path()}}));
    session.folders = shell::default_folders("C:", "2026");
    session.ledger_year = "2026";
    session.afrikaans = false;
    session.open_staff_file();

    attendance::AttendanceRegisterForm form(session, true);
    form.show();
    // March of 2026: the month list, then the grid.
    ASSERT_GE(form.months()->count(), 12);
    emit form.months()->itemDoubleClicked(form.months()->item(2));
    ASSERT_TRUE(form.grid()->isVisible());
    const attendance::CellGrid& g = form.behaviour().afw_grid;
    // Tuesday 10 March is day 10 of the month; find its column by the heading.
    int col = -1;
    for (int c = attendance::kFirstDayCol; c < g.cols(); ++c) {
        if (g.text(0, c).toInt() == 10) {
            col = c;
        }
    }
    ASSERT_GT(col, 0);
    const int row = attendance::kFirstStaffRow;
    const QString post = g.text(row, attendance::kColPost).trimmed();
    ASSERT_FALSE(post.isEmpty());
    // The first click after the form loads is passed over; the next one marks the day.
    emit form.grid()->cellClicked(row, col);
    emit form.grid()->cellClicked(row, col);
    EXPECT_EQ(g.text(row, col), "a");
    // A reason from the list: "SICK" is reason 2.
    int sick = -1;
    for (int i = 0; i < form.reasons()->count(); ++i) {
        if (form.reasons()->item(i)->text().contains("SICK")) {
            sick = i;
        }
    }
    ASSERT_GE(sick, 0);
    emit form.reasons()->itemDoubleClicked(form.reasons()->item(sick));
    EXPECT_EQ(g.text(row, col), "a*");
    // Leaving the grid saves it.
    form.behaviour().staff_exit_click();

    const QByteArray bytes = *session.fs().read_all(session.folders.staff + "\\prs_afw_random.txt");
    const int day = QDate(2026, 3, 10).dayOfYear();
    bool found = false;
    for (qsizetype at = 0; at + 1118 <= bytes.size(); at += 1118) {
        if (QString::fromLatin1(bytes.mid(at, 5)).trimmed() == post) {
            found = true;
            EXPECT_EQ(bytes.at(at + store::PRSAFW["PF_DAG"].element_offset(day)), 'a');
            EXPECT_EQ(bytes.mid(at + store::PRSAFW["PF_REDE"].element_offset(day), 2), " 2");
            break;
        }
    }
    EXPECT_TRUE(found);
}

TEST(AttendanceRegisterForm, MonthListKeysFixedHeadingsAndTheHoverCross) {
    application();
    QTemporaryDir tmp;
    ui::UnattendedDialogs demo_answers;
    shell::write_demo_tree(tmp.path(), 2026, demo_answers);
    ui::ScriptedDialogs dialogs;
    shell::Session session(dialogs, platform::DriveMap::explicit_map({{"C:", tmp.path()}}));
    session.folders = shell::default_folders("C:", "2026");
    session.ledger_year = "2026";
    session.afrikaans = false;
    session.open_staff_file();
    attendance::AttendanceRegisterForm form(session, true);
    form.show();
    // A right click on a month opens its calendar, Enter its grid.
    QListWidget* months = form.months();
    emit months->customContextMenuRequested(months->visualItemRect(months->item(3)).center());
    EXPECT_TRUE(form.findChild<QWidget*>("maand_kalender_raam")->isVisible());
    EXPECT_EQ(form.behaviour().calendar.maand_kalender.text(1, 3), "1");  // 1 April, a Wednesday
    months->setCurrentRow(2);
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(months, &enter);
    ASSERT_TRUE(form.grid()->isVisible());
    EXPECT_EQ(form.behaviour().month, 3);
    // The heading rows stand in the header, which does not scroll.
    QTableWidget* grid = form.grid();
    const int tuesday_10 = 10 + 2;
    EXPECT_TRUE(grid->isRowHidden(0) && grid->isRowHidden(1));
    EXPECT_EQ(grid->horizontalHeaderItem(tuesday_10)->text(), "10\nT");
    // The cross follows the mouse: painted where it is, gone where it was.
    const QColor hover(0xFF, 0xFF, 0x80);
    const int row = attendance::kFirstStaffRow + 1;
    emit grid->cellEntered(row, tuesday_10);
    EXPECT_EQ(grid->item(attendance::kFirstStaffRow, tuesday_10)->background().color(), hover);
    EXPECT_EQ(grid->item(row, attendance::kFirstDayCol + 1)->background().color(), hover);
    emit grid->cellEntered(attendance::kFirstStaffRow, attendance::kFirstDayCol + 1);
    EXPECT_NE(grid->item(row, tuesday_10)->background().color(), hover);
}

TEST(AttendanceRegisterForm, ReasonCodesTopUpAnEmptyFileAndTakeARightClickAndDelete) {
    application();
    QTemporaryDir tmp;
    ui::ScriptedDialogs answers;
    ui::QtDialogs dialogs;
    attendance::register_reason_codes_form(dialogs);
    shell::Session session(answers, platform::DriveMap::explicit_map({{"C:", tmp.path()}}));
    session.folders = shell::default_folders("C:", "2026");
    session.ledger_year = "2026";
    session.open_staff_file();
    attendance::ReasonCodes codes(session);
    int rows_added = 0, rows_left = 0;
    QTimer::singleShot(100, [&] {
        QWidget* form = QApplication::activeModalWidget();
        ASSERT_NE(form, nullptr);
        ASSERT_EQ(form->objectName(), "sk417_kodes_prg");
        auto* grid = form->findChild<QTableWidget*>();
        emit grid->customContextMenuRequested(QPoint(5, 5));
        rows_added = grid->rowCount();
        grid->setCurrentCell(2, 1);
        answers.answer(ui::Answer::Yes);
        QKeyEvent del(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
        QApplication::sendEvent(grid, &del);
        rows_left = grid->rowCount();
        for (QPushButton* b : form->findChildren<QPushButton*>()) {
            if (b->text() == "X") {
                b->click();
            }
        }
    });
    dialogs.show_modal(codes);
    EXPECT_EQ(rows_added, 1 + 11 + 1);
    EXPECT_EQ(rows_left, 1 + 11);
    EXPECT_EQ(answers.last_text(), "IS U SEKER ?");
    // Leaving by X writes nothing beyond the eleven defaults of the first opening.
    EXPECT_EQ(session.fs().file_size(session.folders.staff + "\\sbi_kde_random.txt"), 11 * 50);
}

TEST(AttendanceRegisterForm, TheCalendarFrameShowsAndSavesTheMonth) {
    application();
    QTemporaryDir tmp;
    ui::UnattendedDialogs demo_answers;
    shell::write_demo_tree(tmp.path(), 2026, demo_answers);
    ui::ScriptedDialogs dialogs;
    shell::Session session(dialogs, platform::DriveMap::explicit_map({{"C:", tmp.path()}}));
    session.folders = shell::default_folders("C:", "2026");
    session.ledger_year = "2026";
    session.open_staff_file();
    attendance::AttendanceRegisterForm form(session, true);
    form.show();
    form.behaviour().maand_lys.list_index = 3;  // April
    for (QPushButton* b : form.findChildren<QPushButton*>()) {
        if (b->text() == "KALENDER") {
            b->click();
        }
    }
    ASSERT_TRUE(form.findChild<QWidget*>("maand_kalender_raam")->isVisible());
    attendance::MonthCalendar& cal = form.behaviour().calendar;
    // A day cell of the frame, then the first option of the list beside it, then save.
    int row = -1, col = -1;
    for (int r = 1; r < cal.maand_kalender.rows() && row < 0; ++r) {
        for (int c = 0; c < cal.maand_kalender.cols(); ++c) {
            if (cal.maand_kalender.text(r, c).trimmed() == "27") {
                row = r;
                col = c;
            }
        }
    }
    ASSERT_GE(row, 0);
    cal.maand_kalender_click(row, col);
    ASSERT_FALSE(cal.mk_opsies.items.empty());
    cal.mk_opsies_click(0);
    form.findChild<QPushButton*>("mk_save")->click();
    EXPECT_TRUE(session.fs().file_exists(cal.file_path(4, true)));
    EXPECT_TRUE(cal.file_path(4, true).startsWith(session.folders.workstation_program));
}

TEST(AttendanceRegisterForm, TheReasonListPrintsOnPaperOrIntoOneSheet) {
    QTemporaryDir tmp;
    ui::ScriptedDialogs dialogs;
    shell::Session session(dialogs, platform::DriveMap::explicit_map({{"C:", tmp.path()}}));
    session.folders = shell::default_folders("C:", "2026");
    session.ledger_year = "2026";
    session.afrikaans = false;
    session.open_staff_file();
    attendance::ReasonCodes codes(session);
    // An empty file prints nothing at all.
    {
        reports::RecordingDevice device;
        reports::PrintJob job(device, dialogs, reports::ReportSchool{}, false);
        attendance::print_code_list(job, codes.code_list());
        EXPECT_TRUE(device.texts().isEmpty());
        EXPECT_TRUE(dialogs.shown().isEmpty());
    }
    codes.form_load();  // the eleven defaults
    {
        // One page holds the eleven reasons: the header is printed once.
        reports::RecordingDevice device;
        reports::PrintJob job(device, dialogs, reports::ReportSchool{}, false);
        attendance::print_code_list(job, codes.code_list());
        const QStringList texts = device.texts();
        EXPECT_EQ(texts.count("ATTENDANCE CODES : 2026"), 1)
            << device.lines().join("\n").toStdString();
        EXPECT_TRUE(texts.contains("UNPAID"));
        EXPECT_TRUE(texts.contains("11"));
    }
    // To a workbook: one sheet, the header once, the reasons in the rows below it.
    reports::RecordingDevice device;
    reports::PrintJob job(device, dialogs, reports::ReportSchool{}, false);
    job.begin_spreadsheet(tmp.path(), "codes");
    attendance::print_code_list(job, codes.code_list());
    const QString script = QStringLiteral(R"(
import sys, openpyxl
wb = openpyxl.load_workbook(sys.argv[1])
ws = wb.worksheets[0]
print("|".join(str(v) for v in [len(wb.worksheets)] + [ws[c].value for c in ["C3", "A6", "B6", "B7", "A26", "B26", "B27"]]))
)");
    QProcess python;  // the system's, which has openpyxl
    python.start(QFile::exists("/usr/bin/python3") ? "/usr/bin/python3" : "python3",
                 {"-c", script, tmp.filePath("codes.xlsx")});
    ASSERT_TRUE(python.waitForFinished(60000));
    EXPECT_EQ(QString::fromUtf8(python.readAllStandardOutput()).trimmed(),
              "1|ATTENDANCE CODES : 2026|1|ANNUAL LEAVE|ANNUAL LEAVE|11|UNPAID|UNPAID")
        << python.readAllStandardError().toStdString();
}

TEST(AttendanceRegisterForm, LeaveCaptureWritesTheStretchAndUnloads) {
    application();
    QTemporaryDir tmp;
    ui::UnattendedDialogs demo_answers;
    shell::write_demo_tree(tmp.path(), 2026, demo_answers);
    ui::QtDialogs dialogs;
    attendance::register_reason_codes_form(dialogs);
    attendance::register_leave_capture_form(dialogs);
    shell::Session session(dialogs, platform::DriveMap::explicit_map({{"C:", tmp.path()}}));
    session.folders = shell::default_folders("C:", "2026");
    session.ledger_year = "2026";
    session.open_staff_file();
    session.read_record(store::Code::PRSALG, 1);
    const QString post = session.working(store::Code::PRSALG).text(store::PRSALG["PA_POS_NR"]);
    attendance::LeaveCapture leave(session);
    bool shown = false, print_enabled = false;
    QPointer<QWidget> leave_form;
    // A form that stays open after OK is closed here, so that the test ends.
    QTimer stays_open;
    stays_open.setSingleShot(true);
    QObject::connect(&stays_open, &QTimer::timeout, [&] {
        if (leave_form) {
            leave_form->close();
        }
    });
    const auto click = [](QWidget* form, const QString& text) {
        for (QPushButton* b : form->findChildren<QPushButton*>()) {
            if (b->text() == text) {
                b->click();
                return;
            }
        }
    };
    QTimer::singleShot(100, [&] {
        leave_form = QApplication::activeModalWidget();
        ASSERT_NE(leave_form, nullptr);
        shown = leave_form->objectName() == "sk417_verlof_prg";
        // The reasons, reached from here, can be printed.
        QTimer::singleShot(100, [&] {
            QWidget* codes = QApplication::activeModalWidget();
            for (QPushButton* b : codes->findChildren<QPushButton*>()) {
                print_enabled =
                    print_enabled || (b->text() == session.tr("DRUK", "PRINT") && b->isEnabled());
            }
            click(codes, "X");
        });
        click(leave_form, "...");
        // Two days of leave, the dates as the calendar would give them. The OK tells the user
        // what was written; that message is answered, and the form unloads by itself.
        leave.prs_data[1] = "2026.06.01";
        leave.prs_data[2] = "2026.06.02";
        // Enter in the list takes the reason, as a double click does, and presses no button.
        auto* reasons = leave_form->findChild<QListWidget*>("kode_lys");
        ASSERT_NE(reasons, nullptr);
        reasons->setCurrentRow(1);
        QTest::keyClick(reasons, Qt::Key_Return);
        EXPECT_EQ(leave.reason, "2");
        EXPECT_FALSE(leave.closed);
        QTimer::singleShot(100, [] { QApplication::activeModalWidget()->close(); });
        stays_open.start(3000);
        click(leave_form, "OK");
    });
    dialogs.show_modal(leave);
    EXPECT_TRUE(shown);
    EXPECT_TRUE(print_enabled);
    EXPECT_TRUE(stays_open.isActive()) << "the form stayed open after OK";
    const QByteArray bytes = *session.fs().read_all(session.folders.staff + "\\prs_afw_random.txt");
    bool found = false;
    for (qsizetype at = 0; at + 1118 <= bytes.size(); at += 1118) {
        if (QString::fromLatin1(bytes.mid(at, 5)).trimmed() == post) {
            found = true;
            for (int day : {QDate(2026, 6, 1).dayOfYear(), QDate(2026, 6, 2).dayOfYear()}) {
                EXPECT_EQ(bytes.at(at + store::PRSAFW["PF_DAG"].element_offset(day)), 'a');
            }
            break;
        }
    }
    EXPECT_TRUE(found);
}

using MonthOnScreen = korvel::testing::DemoForms<ui::ScriptedDialogs>;

TEST_F(MonthOnScreen, AWholeMonthFitsTheScreenAndEscapeLeavesAsTheExitDoes) {
    attendance::AttendanceRegisterForm form(session, true);
    form.show();
    emit form.months()->itemDoubleClicked(form.months()->item(2));  // March: 31 days
    QTableWidget* grid = form.grid();
    ASSERT_TRUE(grid->isVisible());
    EXPECT_TRUE(form.windowTitle().endsWith("MARCH"));

    int width = grid->verticalHeader()->isVisible() ? grid->verticalHeader()->width() : 0;
    int days = 0;
    for (int c = 0; c < grid->columnCount(); ++c) {
        if (!grid->isColumnHidden(c)) {
            width += grid->columnWidth(c);
            days += c >= attendance::kFirstDayCol ? 1 : 0;
        }
    }
    EXPECT_EQ(days, 31);
    // The grid, the reasons beside it and the form's margins within 1366 pixels.
    EXPECT_LE(width + form.reasons()->maximumWidth() + 80, 1366);
    // Post numbers and names whole, never cut short.
    const QFontMetrics fm = grid->fontMetrics();
    for (int r = attendance::kFirstStaffRow; r < grid->rowCount(); ++r) {
        for (const int c : {attendance::kColPost, attendance::kColName}) {
            EXPECT_LE(fm.horizontalAdvance(grid->item(r, c)->text()), grid->columnWidth(c))
                << grid->item(r, c)->text().toStdString();
        }
    }

    // Escape is the exit: the grid is saved and the months show; again, the form closes.
    QTest::keyClick(grid, Qt::Key_Escape);
    EXPECT_FALSE(form.grid()->isVisible());
    EXPECT_TRUE(form.isVisible());
    QTest::keyClick(form.months(), Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(MonthOnScreen, PostNumberAndNameStayWhileTheDaysScroll) {
    attendance::AttendanceRegisterForm form(session, true);
    form.resize(520, 400);  // a narrow screen, or a large font: the days must scroll
    form.show();
    emit form.months()->itemDoubleClicked(form.months()->item(2));
    QTableWidget* grid = form.grid();
    auto* frozen = grid->findChild<QTableView*>("afw_grid_frozen");
    ASSERT_NE(frozen, nullptr);
    QApplication::processEvents();
    grid->horizontalScrollBar()->setValue(grid->horizontalScrollBar()->maximum());
    ASSERT_GT(grid->horizontalScrollBar()->value(), 0);
    QApplication::processEvents();

    const int row = attendance::kFirstStaffRow;
    const QModelIndex name = grid->model()->index(row, attendance::kColName);
    const QRect cell = frozen->visualRect(name);
    EXPECT_TRUE(frozen->isVisible());
    EXPECT_EQ(frozen->x(), grid->frameWidth());
    EXPECT_TRUE(frozen->viewport()->rect().contains(cell)) << "the name scrolled away";
    EXPECT_EQ(frozen->model()->data(name).toString(),
              grid->item(row, attendance::kColName)->text());

    // A click on a frozen name is a click on the grid.
    int clicked_col = -1;
    QObject::connect(grid, &QTableWidget::cellClicked, [&](int, int c) { clicked_col = c; });
    QTest::mouseClick(frozen->viewport(), Qt::LeftButton, {}, cell.center());
    EXPECT_EQ(clicked_col, attendance::kColName);
}
