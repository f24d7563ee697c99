#include "reports/print_target.h"

#include <QDir>
#include <QFileInfo>

#include "store/quoted_text.h"

namespace korvel::reports {

namespace {
const QString kExcelGids = QStringLiteral("excel_uitvoer_gids");
const QString kHtmlGids = QStringLiteral("html_uitvoer_gids");
}  // namespace

QString read_last_folder(const QString& native_file) {
    const auto bytes = quoted::read_file(native_file);
    if (!bytes)
        return {};
    quoted::Reader reader(*bytes);
    return reader.read_string().value_or(QString());
}

bool write_last_folder(const QString& native_file, const QString& folder) {
    quoted::Writer w;
    w.text(folder).end_line();
    return quoted::write_file(native_file, w.bytes());
}

PrintTarget::PrintTarget(PrintJob& job, PrintTargetHost& host, QString workstation_folder)
    : job_(job), host_(host), workstation_folder_(std::move(workstation_folder)) {}

void PrintTarget::fill_device_texts() {
    drukker_naam = job_.device().device_name();
    druk_ok_tip =
        job_.text(QStringLiteral(" Druk na "), QStringLiteral(" Print to ")) + drukker_naam;
}

void PrintTarget::mark_colour(bool colour) {
    job_.state.colour_printing = colour;
    kies_kleur_red = colour;
    kies_mono_red = !colour;
}

void PrintTarget::form_load() {
    visible = true;
    print_confirmed = false;
    ending = Ending::None;
    drukwerk_naam = job_.state.report_name;
    druk_ok_caption = job_.text(QStringLiteral("DRUK"), QStringLiteral("PRINT"));
    druk_stop_caption = job_.text(QStringLiteral("KANSELLEER"), QStringLiteral("CANCEL"));
    druk_stop_tip =
        job_.text(QStringLiteral(" Kanselleer drukwerk "), QStringLiteral(" Cancel printing "));
    druk_wysig_caption = job_.text(QStringLiteral("VERANDER"), QStringLiteral("SELECT"));
    druk_wysig_tip = job_.text(QStringLiteral(" Kies 'n ander drukker "),
                               QStringLiteral(" Select a different printer "));
    kies_kleur_caption = job_.text(QStringLiteral("KLEUR"), QStringLiteral("COLOUR"));
    kies_kleur_tip = job_.text(QStringLiteral(" Doen drukwerk in kleur "),
                               QStringLiteral(" Do printing in colour "));
    kies_mono_caption = job_.text(QStringLiteral("SWART"), QStringLiteral("BLACK"));
    kies_mono_tip = job_.text(QStringLiteral(" Doen drukwerk in swart "),
                              QStringLiteral(" Do printing in black "));
    fill_device_texts();
    bool colour = read_colour_printing(job_.general_year_folder, false);
    // A device without colour forces black.
    if (job_.device().colour_mode() == 1)
        colour = false;
    mark_colour(colour);
}

void PrintTarget::close(Ending how) {
    ending = how;
    visible = false;
}

void PrintTarget::druk_ok_click() {
    if (!job_.general_year_folder.isEmpty() && QFileInfo(job_.general_year_folder).isDir())
        write_colour_printing(job_.general_year_folder, job_.state.colour_printing);
    const bool colour = job_.state.colour_printing;
    job_.print_setup();
    job_.state.colour_printing = colour;
    job_.device().set_current_x(0);
    job_.device().set_current_y(0);
    if (job_.device().colour_mode() == 1)
        mark_colour(false);
    print_confirmed = true;
    close(Ending::Print);
}

void PrintTarget::druk_stop_click() {
    print_confirmed = false;
    job_.device().abandon();
    close(Ending::Cancel);
}

void PrintTarget::form_close() {
    if (visible)
        druk_stop_click();
}

void PrintTarget::druk_wysig_click() {
    host_.choose_printer(job_);
    fill_device_texts();
    if (job_.device().colour_mode() == 1)
        mark_colour(false);
}

void PrintTarget::kies_kleur_click() {
    mark_colour(job_.device().colour_mode() != 1);
}

void PrintTarget::kies_mono_click() {
    mark_colour(false);
}

bool PrintTarget::ask_folder_and_name(const QString& gids_file, const QString& folder_caption,
                                      const QString& name_caption, QString* folder, QString* name) {
    const QString gids_path =
        workstation_folder_.isEmpty() ? QString() : QDir(workstation_folder_).filePath(gids_file);
    QString start;
    if (!gids_path.isEmpty() && QFileInfo::exists(gids_path))
        start = read_last_folder(gids_path);
    const QString chosen = job_.dialogs().choose_folder(folder_caption, start);
    if (chosen.trimmed().isEmpty())
        return false;
    QString proposed = job_.state.report_name;
    proposed.remove(u'/');
    const auto typed = job_.dialogs().input(name_caption, name_caption, proposed.trimmed());
    if (!typed || typed->trimmed().isEmpty())
        return false;
    if (!gids_path.isEmpty())
        write_last_folder(gids_path, chosen);
    *folder = chosen;
    // A name typed with a folder in it keeps only its last part.
    QString file = typed->trimmed();
    file.replace(u'\\', u'/');
    file = file.section(u'/', -1);
    if (file.endsWith(QStringLiteral(".xlsx"), Qt::CaseInsensitive))
        file.chop(5);
    *name = file;
    return true;
}

void PrintTarget::kies_excel_click() {
    print_confirmed = false;
    job_.device().end_doc();
    job_.state.to_spreadsheet = true;
    QString folder, name;
    if (!ask_folder_and_name(kExcelGids,
                             job_.text(QStringLiteral("GIDSADRES VIR EXCEL-UITVOER"),
                                       QStringLiteral("FOLDER ADDRESS FOR EXCEL EXPORT")),
                             job_.text(QStringLiteral("EXCEL UITVOER LEêRNAAM"),
                                       QStringLiteral("EXCEL EXPORT FILE NAME")),
                             &folder, &name)) {
        // A cancelled folder dialog ends the report.
        job_.state.to_spreadsheet = false;
        job_.device().abandon();
        close(Ending::Cancel);
        return;
    }
    job_.begin_spreadsheet(folder, name);
    close(Ending::Excel);
}

void PrintTarget::kies_html_click() {
    print_confirmed = true;
    job_.state.to_html = true;
    QString folder, name;
    // The answer is kept and nothing reads it: the report then goes to the printer.
    ask_folder_and_name(
        kHtmlGids,
        job_.text(QStringLiteral("GIDSADRES VIR HTML-UITVOER"),
                  QStringLiteral("FOLDER ADDRESS FOR HTML EXPORT")),
        job_.text(QStringLiteral("HTML UITVOER LEêRNAAM"), QStringLiteral("HTML EXPORT FILE NAME")),
        &folder, &name);
    close(Ending::Html);
}

bool ask_print_target(PrintJob& job, PrintTargetHost& host, const QString& workstation_folder) {
    // A report that ended early leaves its run to the next one to close.
    job.end_run();
    job.device().end_doc();
    job.state.to_spreadsheet = false;
    job.state.to_html = false;
    PrintTarget form(job, host, workstation_folder);
    form.form_load();
    host.show_modal(form);
    if (form.visible)
        form.form_close();
    switch (form.ending) {
        case PrintTarget::Ending::Print:
        case PrintTarget::Ending::Html:
            job.print_setup();
            job.state.page_pending = true;
            return true;
        case PrintTarget::Ending::Excel:
            job.device().abandon();
            return true;
        case PrintTarget::Ending::Cancel:
        case PrintTarget::Ending::None:
            break;
    }
    return false;
}

}  // namespace korvel::reports
