// `korvel-cli print payslips|salary-summary|letterhead-frame` on the demo tree: the PDF read
// back with pdftotext, the workbook with openpyxl.

#include <gtest/gtest.h>

#include <QDate>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "payroll/payroll_cli.h"
#include "shell/demo_tree.h"
#include "ui/scripted_dialogs.h"

namespace korvel::payroll {
namespace {

QString output_of(const QString& program, const QStringList& args) {
    QProcess p;
    p.start(program, args);
    EXPECT_TRUE(p.waitForFinished(30000));
    EXPECT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
    return QString::fromUtf8(p.readAllStandardOutput());
}

class PayrollCommand : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        dir_ = new QTemporaryDir;
        ui::UnattendedDialogs demo_answers;
        shell::write_demo_tree(dir_->path(), QDate::currentDate().year(), demo_answers);
    }
    static void TearDownTestSuite() {
        delete dir_;
        dir_ = nullptr;
    }
    int run(QStringList args) {
        out_text.clear();
        err_text.clear();
        QTextStream out(&out_text), err(&err_text);
        args.prepend("print");
        args << "--drive"
             << "C:=" + dir_->path();
        return print_payroll_report(args, out, err);
    }
    static inline QTemporaryDir* dir_ = nullptr;
    QString out_text, err_text;
    QTemporaryDir target;
};

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
