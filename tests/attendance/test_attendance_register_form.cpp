#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#include <QPushButton>
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

TEST(AttendanceRegisterForm, ReasonCodesShowThroughTheDialogsAndTopUpAnEmptyFile) {
    application();
    QTemporaryDir tmp;
    ui::QtDialogs dialogs;
    attendance::register_reason_codes_form(dialogs);
    attendance::register_leave_capture_form(dialogs);
    shell::Session session(dialogs, platform::DriveMap::explicit_map({{"C:", tmp.path()}}));
    session.folders = shell::default_folders("C:", "2026");
    session.ledger_year = "2026";
    session.open_staff_file();
    attendance::ReasonCodes codes(session);
    bool shown = false;
    QTimer::singleShot(100, [&] {
        QWidget* form = QApplication::activeModalWidget();
        ASSERT_NE(form, nullptr);
        shown = form->objectName() == "sk417_kodes_prg";
        for (QPushButton* b : form->findChildren<QPushButton*>()) {
            if (b->text() == "X") {
                b->click();
            }
        }
    });
    dialogs.show_modal(codes);
    EXPECT_TRUE(shown);
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

TEST(AttendanceRegisterForm, TheReasonListPrintsThroughThePageEngine) {
    QTemporaryDir tmp;
    ui::UnattendedDialogs demo_answers;
    shell::write_demo_tree(tmp.path(), 2026, demo_answers);
    ui::ScriptedDialogs dialogs;
    shell::Session session(dialogs, platform::DriveMap::explicit_map({{"C:", tmp.path()}}));
    session.folders = shell::default_folders("C:", "2026");
    session.ledger_year = "2026";
    session.afrikaans = false;
    session.open_staff_file();
    attendance::ReasonCodes codes(session);
    codes.form_load();
    reports::RecordingDevice device;
    reports::PrintJob job(device, dialogs, reports::ReportSchool{}, false);
    attendance::print_code_list(job, codes.code_list());
    const QStringList texts = device.texts();
    EXPECT_NE(device.find_text("ATTENDANCE CODES : 2026"), nullptr);
    EXPECT_TRUE(texts.contains("ANNUAL LEAVE"));
    EXPECT_TRUE(texts.contains("UNPAID"));
    EXPECT_TRUE(texts.contains("11"));
    // One page holds the eleven reasons: the header is printed once.
    EXPECT_EQ(texts.count("ATTENDANCE CODES : 2026"), 1) << device.lines().join("\n").toStdString();
}

TEST(AttendanceRegisterForm, LeaveCaptureShowsThroughTheDialogsAndWritesTheStretch) {
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
    bool shown = false;
    QTimer::singleShot(100, [&] {
        QWidget* form = QApplication::activeModalWidget();
        ASSERT_NE(form, nullptr);
        shown = form->objectName() == "sk417_verlof_prg";
        // Two days of leave, the dates as the calendar would give them.
        leave.prs_data[1] = "2026.06.01";
        leave.prs_data[2] = "2026.06.02";
        // The OK tells the user what was written; that message is answered, then the form left.
        QTimer::singleShot(100, [form] {
            if (QWidget* message = QApplication::activeModalWidget(); message != form) {
                message->close();
            }
            for (QPushButton* b : form->findChildren<QPushButton*>()) {
                if (b->text() == "X") {
                    b->click();
                }
            }
        });
        for (QPushButton* b : form->findChildren<QPushButton*>()) {
            if (b->text() == "OK") {
                b->click();
                break;
            }
        }
    });
    dialogs.show_modal(leave);
    EXPECT_TRUE(shown);
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
