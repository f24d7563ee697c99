// `korvel-cli print payslips|salary-summary|letterhead-frame` on the demo tree: the PDF read
// back with pdftotext, the workbook with openpyxl.

#include <gtest/gtest.h>

#include <QDate>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "payroll/payroll_cli.h"
#include "reports/print_command_fixture.h"
#include "shell/demo_tree.h"
#include "ui/scripted_dialogs.h"

namespace korvel::payroll {
namespace {

using korvel::testing::output_of;
using PayrollCommand = korvel::testing::PrintCommandOnDemo<print_payroll_report>;

TEST_F(PayrollCommand, SlipsOnBothLetterheadsInBothLanguages) {
    const QString pdf = target.filePath("slips.pdf");
    ASSERT_EQ(run({"payslips", "--month", "3", "--letterhead", "SKOOL", "--lang", "en", "--date",
                   "2026.03.31", "--pdf", pdf}),
              0)
        << err_text.toStdString();
    const QString text = output_of("pdftotext", {pdf, "-"});
    EXPECT_TRUE(text.contains("PAY SLIP"));
    EXPECT_TRUE(text.contains("NETT SALARY"));
    EXPECT_TRUE(text.contains("R 0.00"));  // no overtime
    EXPECT_TRUE(text.contains("R -"));     // the loan passes the pay
    EXPECT_TRUE(text.contains("2026.03.31"));

    ASSERT_EQ(run({"payslips", "--month", "3", "--letterhead", "skool_briefhoof.jpg", "--lang",
                   "af", "--pdf", pdf}),
              0)
        << err_text.toStdString();
    EXPECT_TRUE(output_of("pdftotext", {pdf, "-"}).contains("BETAALSTROKIE"));
}

TEST_F(PayrollCommand, SummaryWorkbookTotalsPastSixteenBits) {
    const QString xlsx = target.filePath("sum.xlsx");
    ASSERT_EQ(run({"salary-summary", "--month", "6", "--to-date", "--lang", "en", "--xlsx", xlsx}),
              0)
        << err_text.toStdString();
    const QString rows = output_of(
        "/usr/bin/python3", {"-c",
                             "import sys, openpyxl\n"
                             "ws = openpyxl.load_workbook(sys.argv[1]).worksheets[0]\n"
                             "for row in ws.iter_rows(values_only=True):\n"
                             "    if row[1] == 'TOTAL': print(row[2], type(row[2]).__name__)\n",
                             xlsx});
    const QStringList total = rows.trimmed().split(u' ');
    ASSERT_EQ(total.size(), 2) << rows.toStdString();
    EXPECT_GT(total[0].toDouble(), 32767.0);
    EXPECT_TRUE(total[1] == "float" || total[1] == "int") << total[1].toStdString();  // a number
}

TEST_F(PayrollCommand, FrameAndBadArguments) {
    EXPECT_EQ(run({"letterhead-frame", "--letterhead", "SKOOL", "--pdf", target.filePath("f.pdf")}),
              0)
        << err_text.toStdString();
    EXPECT_TRUE(QFile::exists(target.filePath("f.pdf")));
    EXPECT_EQ(run({"payslips", "--month", "13", "--pdf", target.filePath("x.pdf")}), 2);
    EXPECT_EQ(run({"payslips", "--month", "3", "--letterhead", "GEEN", "--pdf",
                   target.filePath("x.pdf")}),
              1);
    EXPECT_EQ(
        run({"payslips", "--month", "3", "--from", "NOBODY", "--pdf", target.filePath("x.pdf")}),
        1);
}

}  // namespace
}  // namespace korvel::payroll
