#pragma once

#include <functional>
// The print device on a real printer: the painter device over a QPrinter (A4, a quarter inch
// free on every side), and the print preview of a recorded report.

#include <QPrinter>
#include <memory>

#include "reports/painter_device.h"
#include "reports/recording_device.h"

class QWidget;

namespace korvel::ui {

struct PrinterHolder {
    explicit PrinterHolder(const QString& printer_name);
    QPrinter printer;
};

class PrinterDevice : private PrinterHolder, public reports::PainterDevice {
  public:
    // The named printer, or the system's default when blank.
    explicit PrinterDevice(const QString& printer_name = {});

    QPrinter& qprinter() { return printer; }
    // 1 black and white, 2 colour.
    int colour_mode() const override;

  protected:
    void discard_doc() override;
};

// Shows the recorded pages in the print preview dialog, from which the user may print them: the
// dialog opens maximised, the page at the window's width. True when they were printed.
bool preview_recording(const reports::RecordingDevice& recording, QWidget* parent = nullptr);
// The same on a given printer (its name and colour mode are kept).
bool preview_recording(const reports::RecordingDevice& recording, QPrinter& printer,
                       QWidget* parent);

// The device a report prints on when its target is a printer: the report is recorded, and when
// it ends the print preview shows it on the printer, so that no paper is used before the user
// has seen the pages and pressed print there.
class PreviewPrinterDevice : public reports::RecordingDevice {
  public:
    PreviewPrinterDevice(PrinterDevice& printer, QWidget* parent);
    int colour_mode() const override { return printer_.colour_mode(); }
    void end_doc() override;
    // Whether the last preview printed its pages.
    bool delivered() const override { return printed_; }
    PrinterDevice& printer() { return printer_; }
    // Called instead of the preview dialog (tests); true means printed.
    std::function<bool(const reports::RecordingDevice&)> show_preview;

  private:
    PrinterDevice& printer_;
    QWidget* parent_;
    bool printed_ = false;
};

}  // namespace korvel::ui
