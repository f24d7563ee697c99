#pragma once
// The windowing side of the print target: the kies_drukker form shown modally and the system's
// print dialog.

#include <QPointer>
#include <memory>
#include <vector>

#include "reports/print_target.h"
#include "ui/print_printer_device.h"

class QWidget;

namespace korvel::shell {
class Session;
}

namespace korvel::reports {

class QtPrintTargetHost : public PrintTargetHost {
  public:
    explicit QtPrintTargetHost(QWidget* parent = nullptr);

    void show_modal(PrintTarget& form) override;
    // The system's print dialog over the current printer; a printer chosen there becomes the
    // job's device.
    bool choose_printer(PrintJob& job) override;

    // The device of the printer in use; made on first use from the system's default.
    ui::PrinterDevice& printer_device();
    // The device a report's job prints on: the printer in use behind its print preview.
    PrintDevice& job_device();

  private:
    QWidget* parent_;
    // Devices stay alive as long as the host: a job may still point at an earlier one.
    std::vector<std::unique_ptr<ui::PrinterDevice>> devices_;
    std::vector<std::unique_ptr<ui::PreviewPrinterDevice>> previews_;
};

// A report's job for a form that prints: the printer in use behind its preview, the school of
// the session and the target form.
struct QtReportJob {
    QtReportJob(shell::Session& session, QWidget* parent);
    QtPrintTargetHost host;
    PrintJob job;
};

}  // namespace korvel::reports
