#include <gtest/gtest.h>

#include <QProcess>
#include <QStandardPaths>
#include <QTest>

#include "attendance/attendance_reports_form.h"
#include "attendance/cli_attendance.h"
#include "reports/painter_device.h"
#include "reports/recording_device.h"
#include "staff/demo_forms_fixture.h"

using namespace korvel;

using ReportsOnDemo = korvel::testing::DemoForms<ui::ScriptedDialogs>;

TEST_F(ReportsOnDemo, PickAMonthAndPrintTheSummary) {
    reports::RecordingDevice device;
    reports::PrintJob job(device, dialogs);
    attendance::AttendanceReports reports(session, job);
    reports.choose_target = [](reports::PrintJob& j) {
        j.print_setup();
        j.state.page_pending = true;
        return true;
    };
    reports.form_load();
    attendance::AttendanceReportsForm form(reports);
    form.show();
    ASSERT_EQ(form.months()->count(), 12);
    form.months()->setCurrentRow(2);
    form.button(attendance::kMonthlySummary)->click();
    EXPECT_TRUE(dialogs.last_text().startsWith("PRINTING COMPLETE"));
    const QString printed = device.texts().join(u'\n');
    EXPECT_TRUE(printed.contains("MONTHLY SUMMARY : MARCH " + session.ledger_year));
    EXPECT_TRUE(printed.contains(" 1 ANNUAL LEAVE = "));
}

// The counted days below the grid follow the current person, moved by the arrow keys as well
// as by a click: one line a counted day.
TEST_F(ReportsOnDemo, LeaveDaysFollowThePersonChosenWithTheKeyboard) {
    reports::RecordingDevice device;
    reports::PrintJob job(device, dialogs);
    attendance::AttendanceReports reports(session, job);
    reports.form_load();
    attendance::LeaveTotalsForm form(reports);
    form.show();
    QTableWidget* grid = form.grid();
    grid->setFocus();
    grid->setCurrentCell(0, 1);
    int with_leave = 0;
    for (int row = 0; row < grid->rowCount(); ++row) {
        const int total = grid->item(row, grid->columnCount() - 1)->text().toInt();
        EXPECT_EQ(form.days()->count(), total) << "row " << row;
        with_leave += total > 0 ? 1 : 0;
        QTest::keyClick(grid, Qt::Key_Down);
    }
    EXPECT_GT(with_leave, 1);  // the demo's people do take leave
}

TEST_F(ReportsOnDemo, LeaveTotalsInAfrikaansReadBackFromThePdf) {
    const QString pdftotext = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
    if (pdftotext.isEmpty())
        GTEST_SKIP() << "pdftotext missing";
    session.afrikaans = true;
    const QString path = tmp.filePath("verlof.pdf");
    {
        reports::PdfDevice device(path);
        reports::PrintJob job(device, dialogs);
        attendance::AttendanceReports reports(session, job);
        reports.choose_target = [](reports::PrintJob& j) {
            j.print_setup();
            j.state.page_pending = true;
            return true;
        };
        reports.form_load();
        ASSERT_TRUE(reports.print_leave_totals());
    }
    QProcess p;
    p.start(pdftotext, {QStringLiteral("-layout"), path, QStringLiteral("-")});
    ASSERT_TRUE(p.waitForFinished(60000));
    const QString text = QString::fromUtf8(p.readAllStandardOutput());
    EXPECT_TRUE(text.contains("VERLOFTOTALE : " + session.ledger_year)) << text.toStdString();
    EXPECT_TRUE(text.contains("PERSONEELLID"));
    EXPECT_TRUE(text.contains("TOTAAL"));
}

TEST_F(ReportsOnDemo, MarkSheetsFromTheCommandLineReadBackFromThePdf) {
    const QString pdftotext = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
    if (pdftotext.isEmpty())
        GTEST_SKIP() << "pdftotext missing";
    const QString path = tmp.filePath("punte.pdf");
    const QString year = session.ledger_year;
    QString out_text, err_text;
    QTextStream out(&out_text), err(&err_text);
    const int code = attendance::print_attendance_report(
        {"print", "mark-sheet", "--drive", "C:=" + tmp.path(), "--from-date", year + ".01.01",
         "--to-date", year + ".12.31", "--female", "--pdf", path},
        out, err);
    ASSERT_EQ(code, 0) << err_text.toStdString();
    QProcess p;
    p.start(pdftotext, {QStringLiteral("-layout"), path, QStringLiteral("-")});
    ASSERT_TRUE(p.waitForFinished(60000));
    const QString text = QString::fromUtf8(p.readAllStandardOutput());
    // Each statement in its person's language, signed by the principal.
    const QString period = " : " + year + ".01.01 - " + year + ".12.31";
    EXPECT_TRUE(text.contains("SKOOLBYWONINGSTAAT" + period) ||
                text.contains("ATTENDANCE SHEET" + period))
        << text.toStdString();
    EXPECT_TRUE(text.contains("MNR J P DU TOIT (HOOF)") ||
                text.contains("MNR J P DU TOIT (PRINCIPAL)"));
}
