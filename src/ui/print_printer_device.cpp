#include "ui/print_printer_device.h"

#include <QPageLayout>
#include <QPageSize>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinterInfo>

namespace korvel::ui {

namespace {

void a4_layout(QPrinter& printer) {
    printer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                      QMarginsF(18, 18, 18, 18), QPageLayout::Point));
}

QString printer_title(const QPrinter& printer) {
    if (!printer.printerName().isEmpty())
        return printer.printerName();
    return printer.outputFormat() == QPrinter::PdfFormat ? QStringLiteral("PDF") : QString();
}

}  // namespace

PrinterHolder::PrinterHolder(const QString& printer_name) : printer(QPrinter::HighResolution) {
    if (!printer_name.isEmpty())
        printer.setPrinterName(printer_name);
    a4_layout(printer);
}

PrinterDevice::PrinterDevice(const QString& printer_name)
    : PrinterHolder(printer_name),
      reports::PainterDevice(printer, printer.resolution(), printer_title(printer)) {}

int PrinterDevice::colour_mode() const {
    return printer.colorMode() == QPrinter::GrayScale ? 1 : 2;
}

void PrinterDevice::discard_doc() {
    printer.abort();
    reports::PainterDevice::discard_doc();
}

bool preview_recording(const reports::RecordingDevice& recording, QWidget* parent) {
    QPrinter printer(QPrinter::HighResolution);
    a4_layout(printer);
    return preview_recording(recording, printer, parent);
}

bool preview_recording(const reports::RecordingDevice& recording, QPrinter& printer,
                       QWidget* parent) {
    QPrintPreviewDialog dialog(&printer, parent);
    QObject::connect(
        &dialog, &QPrintPreviewDialog::paintRequested, &dialog, [&recording](QPrinter* target) {
            reports::PainterDevice device(*target, target->resolution(), target->printerName());
            reports::replay(recording.calls(), device);
            device.end_doc();
        });
    if (auto* pages = dialog.findChild<QPrintPreviewWidget*>()) {
        pages->fitToWidth();
    }
    dialog.setWindowState(Qt::WindowMaximized);
    return dialog.exec() == QDialog::Accepted;
}

PreviewPrinterDevice::PreviewPrinterDevice(PrinterDevice& printer, QWidget* parent)
    : reports::RecordingDevice(printer.device_name()), printer_(printer), parent_(parent) {}

void PreviewPrinterDevice::end_doc() {
    // A report that drew nothing has nothing to show: the target form ends a document before
    // the report begins.
    const bool drawn = count(reports::RecordedCall::Kind::Text) > 0;
    reports::RecordingDevice::end_doc();
    printed_ = false;
    if (drawn) {
        if (show_preview) {
            printed_ = show_preview(*this);
        } else {
            printer_.qprinter().setColorMode(printer_.colour_mode() == 1 ? QPrinter::GrayScale
                                                                         : QPrinter::Color);
            printed_ = preview_recording(*this, printer_.qprinter(), parent_);
        }
    }
    clear();
}

}  // namespace korvel::ui
