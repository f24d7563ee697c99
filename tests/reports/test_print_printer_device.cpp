// The printer device at a printer's resolution: a page printed to the printer's PDF output
// holds the header, at the same layout as the PDF writer's.

#include <gtest/gtest.h>

#include <QApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>

#include "reports/report_engine.h"
#include "ui/print_printer_device.h"
#include "ui/scripted_dialogs.h"

namespace korvel::ui {
namespace {

TEST(PrinterDevice, PrintsAtThePrintersResolution) {
    const QString pdftotext = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
    if (pdftotext.isEmpty())
        GTEST_SKIP() << "pdftotext missing";
    QTemporaryDir dir;
    const QString path = dir.filePath("printer.pdf");
    PrinterDevice device;
    device.qprinter().setOutputFormat(QPrinter::PdfFormat);
    device.qprinter().setOutputFileName(path);
    // A4 in whole points: within half a point of the PDF writer's page.
    EXPECT_NEAR(device.scale_width(), reports::kA4PrintableWidthTwips, 10.0);

    ScriptedDialogs dialogs;
    reports::ReportSchool school;
    school.name = QStringLiteral("LAERSKOOL RIVIERSIG");
    reports::PrintJob job(device, dialogs, school, true);
    job.state.report_name = QStringLiteral("TOETS");
    job.state.page_pending = true;
    job.print_page_header(QStringLiteral("PERSONEELLYS"));
    device.set_current_y(20);
    job.finish_report();
    EXPECT_EQ(dialogs.last_text(), QStringLiteral("DRUKWERK VOLTOOI (1 bladsye)"));

    QProcess p;
    p.start(pdftotext, {QStringLiteral("-layout"), path, QStringLiteral("-")});
    ASSERT_TRUE(p.waitForFinished(60000));
    const QString text = QString::fromUtf8(p.readAllStandardOutput());
    EXPECT_TRUE(text.contains(QStringLiteral("LAERSKOOL RIVIERSIG"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("BLADSY : 1")));
    EXPECT_TRUE(text.contains(QStringLiteral("TOETS")));
}

TEST(PrinterDevice, PreviewShowsARecordedReportAndCloses) {
    reports::RecordingDevice recording;
    ScriptedDialogs dialogs;
    reports::PrintJob job(recording, dialogs);
    job.state.page_pending = true;
    job.print_page_header(QStringLiteral("VOORBEELD"));
    recording.set_current_y(20);
    job.state.page_pending = true;
    job.print_page_header(QStringLiteral("VOORBEELD"), {}, QStringLiteral("A4_landscape"));
    job.finish_report();
    // Closed without printing.
    QTimer::singleShot(300, [] {
        if (QWidget* w = QApplication::activeModalWidget())
            w->close();
    });
    EXPECT_FALSE(preview_recording(recording));
}

}  // namespace
}  // namespace korvel::ui
