#include <gtest/gtest.h>

#include <QApplication>

#include "reports/report_engine.h"
#include "ui/print_printer_device.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;

TEST(PreviewPrinterDevice, AReportIsShownBeforePaperAndAnEmptyDocumentIsNot) {
    ui::PrinterDevice printer;
    ui::PreviewPrinterDevice device(printer, nullptr);
    QStringList previewed;
    int previews = 0;
    bool prints = true;
    device.show_preview = [&](const reports::RecordingDevice& recording) {
        ++previews;
        previewed = recording.texts();
        return prints;
    };
    ui::ScriptedDialogs dialogs;
    reports::PrintJob job(device, dialogs, {}, false);
    device.end_doc();  // the print target ends whatever came before
    EXPECT_EQ(previews, 0);
    job.print_setup();
    job.print_page_header(QStringLiteral("STAFF LIST"));
    device.print(QStringLiteral("SMIT J MNR"));
    job.finish_report();
    EXPECT_EQ(previews, 1);
    EXPECT_TRUE(previewed.contains("SMIT J MNR"));
    EXPECT_TRUE(previewed.contains("STAFF LIST"));
    EXPECT_TRUE(dialogs.last_text().startsWith("PRINTING COMPLETE ("));
    // The recording starts afresh for the next report.
    device.end_doc();
    EXPECT_EQ(previews, 1);

    // A preview closed without printing says nothing of printing.
    dialogs.clear();
    prints = false;
    job.print_setup();
    device.print(QStringLiteral("SMIT J MNR"));
    job.finish_report();
    EXPECT_EQ(previews, 2);
    EXPECT_TRUE(dialogs.texts().isEmpty());
}
