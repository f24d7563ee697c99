#include "shell/main_menu.h"

#include <QDateTime>

#include "platform/codepage.h"
#include "platform/process_end.h"
#include "platform/winpath.h"
#include "shell/helpers.h"

namespace korvel::shell {

using winpath::join;

MainMenu::MainMenu(Session& session, Startup& startup) : s_(session), startup_(startup) {
    sk4_menu[1].form = QStringLiteral("sk411_prg");
    sk4_menu[2].form = QStringLiteral("sk461_prg");
    sk4_menu[3].form = QStringLiteral("evj_personeel");
    sk4_menu[4].form = QStringLiteral("sk411_prg");
    sk4_menu[5].form = QStringLiteral("sk411_bl_prg");
    set_captions();
}

void MainMenu::set_captions() {
    struct Text {
        const char *af_caption, *en_caption, *af_tip, *en_tip;
    };
    static const Text kTexts[6] = {
        {"", "", "", ""},
        {"PERSONEELLEDE", "STAFF MEMBERS",
         " Peosoneellede (Onderwys & Admin) - Name, Adresse, Bankbesonderhede, Aanstellings, "
         "Kwalifikasies en Ondervinding ",
         " Staff members (Teaching & Admin) - Names, Addresses, Banking details, Appointments, "
         "Qualifications and Experience "},
        {"LONE/SALARISSE", "WAGES/SALARIES", " Loon/Salaris rekenaar ", " Wage/Salary calculator "},
        {"JAARAFSLUITING", "YEAR-END CLOSING", " Jaarafsluiting : Personeel ",
         " Year-end closing : Staff "},
        {"WERKNEMERS", "EMPLOYEES", " Nie onderwysers - Name, Adresse, Bankbesonderhede ",
         " Admin Staff - Names, Addresses, Banking details "},
        {"BEHEERLIGGAAM", "GOVERNING BODY", " Beheerliggaamlede - Name, Adresse ",
         " Governing Body members - Names, Addresses "},
    };
    for (int i = 1; i <= 5; ++i) {
        sk4_menu[i].caption = s_.tr(kTexts[i].af_caption, kTexts[i].en_caption);
        sk4_menu[i].tooltip = s_.tr(kTexts[i].af_tip, kTexts[i].en_tip);
        sk4_menu[i].enabled = available_forms.contains(sk4_menu[i].form);
    }
    backup_tooltip = s_.tr("RUGSTEUN/HERWIN", "BACKUP/RESTORE");
    dir_disp_staff_tooltip = s_.tr(" Dataleêrpad (Personeel) : Klik om te verander ",
                                   " Data file path (Staff) : Click to change ");
    tab_undo_tooltip = s_.tr(" Herstel Datalêeers soos voor omskakeling en herhaal omskakeling ",
                             " Reset data files to pre-conversion state and redo conversion ");
    nuusbrief_tooltip = s_.tr(" Lees/druk Nuusbrief & Veranderings inligting ",
                              " Read/Print News letter & Changes information ");
    data_check_tooltip =
        s_.tr(" Kontroleer die datalêers van die jaar ", " Check the data files of the year ");
    lurits_import_tooltip = s_.tr(" Voer LURITS personeelbesonderhede in (Excel-werkboek) ",
                                  " Import LURITS staff information (Excel workbook) ");
}

QStringList ledger_years(const Session& s_) {
    QStringList years;
    const int calendar = s_.today().year();
    for (int y = calendar - 15; y <= calendar + 1; ++y) {
        const QString year = QString::number(y);
        QString folder = s_.folders.staff;
        if (folder.size() >= 4) {
            folder = folder.left(folder.size() - 4) + year;
        }
        if (y == calendar + 1 || s_.fs().folder_exists(folder)) {
            years << year;
        }
    }
    return years;
}

void MainMenu::open_staff_files() {
    for (const char* code : {"PRSALG", "PRSNME", "PRSAFW", "PRSLNE", "PRSSBI"}) {
        s_.open_staff_file(QString::fromLatin1(code), s_.folders.staff);
    }
}

void MainMenu::form_load() {
    s_.browse_mode = false;
    // 2. Without a staff folder the path tool is offered.
    if (!s_.fs().folder_exists(s_.folders.staff)) {
        if (s_.fs().file_exists(startup_.path_tool())) {
            s_.starter().start_detached(s_.fs().native(startup_.path_tool()), {});
            startup_.resolve_folders();
        } else {
            s_.dialogs().message(startup_.download_message(), ui::Icon::Critical);
        }
    }
    // 3 and 4.
    startup_.write_language();
    set_captions();
    // 5. The ledger year and the school (this opens the staff files too).
    dir_disp_staff = upper_name(startup_.settle_ledger_year());
    year_label = s_.ledger_year;
    school_name = s_.school.name;
    caption = QStringLiteral("KORVEL - ") + s_.school.name;
    rekords_jaar_lys = ledger_years();
    // 6.
    header = form_header_setup(s_, QStringLiteral("sk4_mnu"));
}

void MainMenu::sk4_menu_click(int index) {
    if (index < 1 || index > 5 || !sk4_menu[index].enabled) {
        return;
    }
    if (index == 1 || index == 4) {
        s_.educator_flag = index == 1;
    }
    if (open_child_form) {
        open_child_form(sk4_menu[index].form);
    }
}

void MainMenu::key_press(const QString& key) {
    if (key == u"Escape") {
        sk4_exit_click();
    }
    if (key == u"1") {
        sk4_menu_click(1);
    }
    // "2" and "3" are caught and do nothing.
}

void MainMenu::sk4_exit_click() {
    end_process(0);
}

void MainMenu::rekords_jaar_lys_click(const QString& year) {
    bool ok = false;
    year.toInt(&ok);
    if (!ok || year.size() != 4) {
        return;
    }
    s_.ledger_year = year;
    startup_.write_year_used(year);
    QString& staff = s_.folders.staff;
    if (staff.size() >= 4) {
        staff = staff.left(staff.size() - 4) + year;
    }
    dir_disp_staff = upper_name(staff);
    open_staff_files();
    year_label = year;
}

void MainMenu::dir_disp_staff_click() {
    if (!s_.fs().file_exists(startup_.path_tool())) {
        s_.dialogs().message(startup_.download_message(), ui::Icon::Critical);
        return;
    }
    s_.starter().start_detached(s_.fs().native(startup_.path_tool()), {});
    startup_.write_year_used(s_.ledger_year);
    startup_.resolve_folders();
    dir_disp_staff = upper_name(s_.folders.staff);
}

void MainMenu::tab_undo_click() {
    const QString save = join(s_.folders.staff, QStringLiteral("save"));
    if (!s_.fs().folder_exists(save)) {
        return;
    }
    // Without the conversion the year would reopen empty: nothing is deleted.
    if (!store::Store::kConvertsDbfTables) {
        s_.dialogs().message(
            s_.tr("DIE DATALêERS KAN NIE HERSTEL WORD NIE: HIERDIE WEERGAWE KAN DIE DBF-TABELLE "
                  "NOG NIE OMSKAKEL NIE.\nGEEN LêER IS UITGEVEE NIE ... VERSOEK GEWEIER!",
                  "THE DATA FILES CANNOT BE RESET: THIS VERSION CANNOT CONVERT THE DBF TABLES "
                  "YET.\nNO FILE WAS DELETED ... REQUEST DENIED!"),
            ui::Icon::Critical);
        return;
    }
    // The data files leave the staff folder, but into a dated folder below save rather than
    // away: the tables of save convert only the files they hold, and the rest would be lost.
    const QString kept = join(save, QDateTime::currentDateTime().toString(
                                        QStringLiteral("'voor herstel' yyyy-MM-dd hh.mm.ss")));
    for (const QString& name : s_.fs().file_names(s_.folders.staff)) {
        if (name.toUpper().contains(QStringLiteral(".TXT"))) {
            const QString file = join(s_.folders.staff, name);
            if (s_.fs().create_folder(kept) && s_.fs().copy_file(file, join(kept, name))) {
                s_.fs().delete_file(file);
            }
        }
    }
    for (const QString& name : s_.fs().file_names(save)) {
        if (name.toUpper().endsWith(QStringLiteral(".DBF"))) {
            s_.fs().copy_file(join(save, name), join(s_.folders.staff, name));
        }
    }
    // "BHRLIG" matches no code: the governing body file is not reopened here.
    for (const char* code : {"PRSALG", "PRSNME", "BHRLIG", "PRSAFW", "PRSLNE", "PRSSBI"}) {
        s_.open_staff_file(QString::fromLatin1(code), s_.folders.staff);
    }
}

void MainMenu::nuusbrief_click() {
    QString digits = s_.program_version;
    digits.remove(u'.');
    const QString file =
        join(s_.folders.program, QStringLiteral("veranderings ") + digits + QStringLiteral(".rtf"));
    // Without the manual the user learns where it was looked for.
    if (!s_.fs().file_exists(file) || (open_document && !open_document(s_.fs().native(file)))) {
        s_.dialogs().message(s_.tr("Handleiding nie gevind nie:\n", "Manual not found:\n") + file +
                                 QStringLiteral("\n") + s_.fs().native(file),
                             ui::Icon::Exclamation);
    }
}

void MainMenu::help_pdf_click() {
    const QString file = join(s_.folders.program, s_.afrikaans ? QStringLiteral("personeel.pdf")
                                                               : QStringLiteral("staff.pdf"));
    // Without the manual the user learns where it was looked for.
    if (!s_.fs().file_exists(file) || (open_document && !open_document(s_.fs().native(file)))) {
        s_.dialogs().message(s_.tr("Handleiding nie gevind nie:\n", "Manual not found:\n") + file +
                                 QStringLiteral("\n") + s_.fs().native(file),
                             ui::Icon::Exclamation);
    }
}

void MainMenu::backup_click() {
    const QString tool = join(s_.folders.suite_home, QStringLiteral("ORSTELL\\ORSTELL.EXE"));
    if (s_.fs().file_exists(tool)) {
        s_.starter().start_detached(s_.fs().native(tool), {});
    }
}

void MainMenu::data_check_click() {
    if (open_child_form) {
        open_child_form(QStringLiteral("data_check"));
    }
}

void MainMenu::timer1_tick() {
    header.ops_tyd = s_.now().toString(QStringLiteral("HH:mm:ss"));
}

}  // namespace korvel::shell
