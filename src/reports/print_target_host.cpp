#include "reports/print_target_host.h"

#include <QPrintDialog>

#include "reports/print_target_form.h"
#include "reports/school_report.h"
#include "shell/session.h"

namespace korvel::reports {

QtPrintTargetHost::QtPrintTargetHost(QWidget* parent) : parent_(parent) {}

ui::PrinterDevice& QtPrintTargetHost::printer_device() {
    if (devices_.empty())
        devices_.push_back(std::make_unique<ui::PrinterDevice>());
    return *devices_.back();
}

PrintDevice& QtPrintTargetHost::job_device() {
    ui::PrinterDevice& printer = printer_device();
    if (previews_.empty() || &previews_.back()->printer() != &printer) {
        previews_.push_back(std::make_unique<ui::PreviewPrinterDevice>(printer, parent_));
    }
    return *previews_.back();
}

void QtPrintTargetHost::show_modal(PrintTarget& form) {
    PrintTargetForm dialog(form, parent_);
    dialog.exec();
}

bool QtPrintTargetHost::choose_printer(PrintJob& job) {
    ui::PrinterDevice& current = printer_device();
    QPrintDialog dialog(&current.qprinter(), parent_);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    devices_.push_back(std::make_unique<ui::PrinterDevice>(current.qprinter().printerName()));
    ui::PrinterDevice& chosen = *devices_.back();
    chosen.qprinter().setColorMode(current.qprinter().colorMode());
    job.set_device(job_device());
    return true;
}

QtReportJob::QtReportJob(shell::Session& session, QWidget* parent)
    : host(parent),
      job(host.job_device(), session.dialogs(), report_school(session), session.afrikaans) {
    job.general_year_folder = session.fs().native(session.folders.general_year);
}

}  // namespace korvel::reports
