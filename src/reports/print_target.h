#pragma once
// Where a report goes: the behaviour of the form kies_drukker (print, in colour or in black,
// another printer, an Excel workbook, the HTML button) and ask_print_target, which shows it.
// The Qt form (ui/kies_drukker_form) binds its buttons to PrintTarget and stays thin.

#include <QString>

#include "reports/report_engine.h"

namespace korvel::reports {

class PrintTarget;

// What the print target needs of the windowing side: showing the form modally, and the
// system's print dialog. The Qt side implements it; a test scripts it.
class PrintTargetHost {
  public:
    virtual ~PrintTargetHost() = default;
    // Shows the form until its behaviour closes it (or the user closes the window, which is
    // a cancel).
    virtual void show_modal(PrintTarget& form) = 0;
    // The system's print dialog. True when a printer was chosen; the host may then have put
    // another device in the job.
    virtual bool choose_printer(PrintJob& job) = 0;
};

// The last folder of an export, one quoted text line in the workstation folder; blank when the
// file is missing.
QString read_last_folder(const QString& native_file);
bool write_last_folder(const QString& native_file, const QString& folder);

class PrintTarget {
  public:
    enum class Ending { None, Print, Cancel, Excel, Html };

    // workstation_folder (native) holds excel_uitvoer_gids and html_uitvoer_gids.
    PrintTarget(PrintJob& job, PrintTargetHost& host, QString workstation_folder);

    // The form's values.
    QString drukwerk_naam;  // the report's name
    QString drukker_naam;   // the device's name
    QString druk_ok_caption, druk_ok_tip;
    QString druk_stop_caption, druk_stop_tip;
    QString druk_wysig_caption, druk_wysig_tip;
    QString kies_kleur_caption, kies_kleur_tip;
    QString kies_mono_caption, kies_mono_tip;
    bool kies_kleur_red = false;  // the selected colour button is shown in red
    bool kies_mono_red = false;
    bool print_confirmed = false;
    bool visible = false;
    Ending ending = Ending::None;

    void form_load();
    void druk_ok_click();
    void druk_stop_click();
    void druk_wysig_click();
    void kies_kleur_click();
    void kies_mono_click();
    void kies_excel_click();
    void kies_html_click();
    // The window closed by its frame: the same as cancel.
    void form_close();

  private:
    void fill_device_texts();
    void mark_colour(bool colour);
    // Folder and file name through the folder dialog and an input box; false when cancelled.
    bool ask_folder_and_name(const QString& gids_file, const QString& folder_caption,
                             const QString& name_caption, QString* folder, QString* name);
    void close(Ending how);

    PrintJob& job_;
    PrintTargetHost& host_;
    QString workstation_folder_;
};

// Ends any open document, shows kies_drukker and prepares the report for the target chosen.
// True to go on with the report: printing (page_pending set) or a workbook (to_spreadsheet).
bool ask_print_target(PrintJob& job, PrintTargetHost& host, const QString& workstation_folder);

}  // namespace korvel::reports
