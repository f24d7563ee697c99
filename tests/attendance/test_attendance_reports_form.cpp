#include <gtest/gtest.h>

#include "attendance/attendance_reports_form.h"
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
