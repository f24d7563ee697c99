#include <gtest/gtest.h>

#include <QProcess>
#include <QStandardPaths>

#include "attendance/attendance_reports_form.h"
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
