#pragma once
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

// Shows the recorded pages in the print preview dialog, from which the user may print them.
// True when they were printed.
bool preview_recording(const reports::RecordingDevice& recording, QWidget* parent = nullptr);

}  // namespace korvel::ui
