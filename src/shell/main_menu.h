#pragma once
// The behaviour of the main menu sk4_mnu: five entries, the ledger year list, the data-folder
// label, the header strip and the small tool buttons. The Qt form binds its widgets to this
// class and stays thin.

#include <QSet>
#include <QString>
#include <QStringList>
#include <array>
#include <functional>

#include "shell/form_header.h"
#include "shell/session.h"
#include "shell/startup.h"

namespace korvel::shell {

struct MenuEntry {
    QString caption;
    QString tooltip;
    QString form;  // the form it opens
    bool enabled = false;
};

// The ledger years the menu offers, rising: from this calendar year less 15 to the next, each
// whose staff year folder exists, and the next year always.
QStringList ledger_years(const Session& s);

class MainMenu {
  public:
    MainMenu(Session& session, Startup& startup);

    // ---- the form's values ----
    std::array<MenuEntry, 6> sk4_menu;  // entries 1 to 5; 0 unused
    QString sk4_exit_tooltip = QStringLiteral("EXIT");
    QString backup_tooltip, dir_disp_staff_tooltip, tab_undo_tooltip, nuusbrief_tooltip;
    QString data_check_tooltip;
    QString lurits_import_tooltip;
    QStringList rekords_jaar_lys;  // ledger years with folders, rising
    QString year_label;
    QString dir_disp_staff;  // the staff folder, as upper_name shows it
    QString caption;         // the window caption
    QString school_name;
    HeaderStrip header;

    // The forms that exist so far; an entry whose form is not among them stays disabled.
    QSet<QString> available_forms;
    // Opens a child form by name beside the menu (a second open restarts it).
    std::function<void(const QString& form)> open_child_form;
    // The import of a LURITS staff workbook; empty when the program has none.
    std::function<void()> import_lurits;
    // Opens a document with the desktop's viewer; false when none could.
    std::function<bool(const QString& native_path)> open_document;

    // ---- events ----
    void form_load();
    void sk4_menu_click(int index);
    // The menu's keys: Escape ends the program; "1" opens entry 1; "2" and "3" do nothing.
    void key_press(const QString& key);
    // The close box: always cancelled.
    bool query_unload() { return true; }
    [[noreturn]] void sk4_exit_click();
    void rekords_jaar_lys_click(const QString& year);
    void dir_disp_staff_click();
    void tab_undo_click();
    void nuusbrief_click();
    void help_pdf_click();
    void backup_click();
    // The data check of the year, as a report (the form "data_check").
    void data_check_click();
    // The small button of the LURITS staff import.
    void lurits_import_click() {
        if (import_lurits) {
            import_lurits();
        }
    }
    void timer1_tick();
    // A language change from the splash or a test: captions and tooltips again.
    void set_captions();

    QStringList ledger_years() const { return shell::ledger_years(s_); }

  private:
    void open_staff_files();
    Session& s_;
    Startup& startup_;
};

}  // namespace korvel::shell
