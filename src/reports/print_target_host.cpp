#include "reports/print_target_host.h"

#include <QApplication>
#include <QLabel>
#include <QPrintDialog>
#include <QVBoxLayout>

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

QtPrintProgress::QtPrintProgress(QWidget* parent) : window_(std::make_unique<QWidget>(parent)) {
    window_->setWindowFlags(Qt::Tool | Qt::WindowStaysOnTopHint);
    auto* layout = new QVBoxLayout(window_.get());
    wdv_opskrif_ = new QLabel(window_.get());
    wdv_drukker_ = new QLabel(window_.get());
    wdv_bladsy_ = new QLabel(window_.get());
    QFont bold = wdv_opskrif_->font();
    bold.setBold(true);
    wdv_opskrif_->setFont(bold);
    layout->addWidget(wdv_opskrif_);
    layout->addWidget(wdv_drukker_);
    layout->addWidget(wdv_bladsy_);
}

QtPrintProgress::~QtPrintProgress() = default;

bool QtPrintProgress::visible() const {
    return window_->isVisible();
}

void QtPrintProgress::show(const QString& heading, const QString& device_name) {
    wdv_opskrif_->setText(heading);
    wdv_drukker_->setText(device_name);
    window_->show();
    QApplication::processEvents();
}

void QtPrintProgress::set_page(int page) {
    wdv_bladsy_->setText(QString::number(page));
    QApplication::processEvents();
}

void QtPrintProgress::clear() {
    wdv_bladsy_->setText(QStringLiteral("0"));
    wdv_opskrif_->clear();
    window_->hide();
}

QtReportJob::QtReportJob(shell::Session& session, QWidget* parent)
    : host(parent),
      progress(parent),
      job(host.job_device(), session.dialogs(), report_school(session), session.afrikaans) {
    job.general_year_folder = session.fs().native(session.folders.general_year);
    job.progress = &progress;
}

}  // namespace korvel::reports
