#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include "platform/process_end.h"
#include "shell/demo_tree.h"
#include "shell/main_menu.h"
#include "store/python_dbf.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;
using namespace korvel::shell;

namespace {

// The menu over the demo tree of 2026 on drive C:.
struct MenuOnDemo {
    MenuOnDemo()
        : session(dialogs, platform::DriveMap::explicit_map({{"C:", tmp.path()}})),
          startup(session),
          menu(session, startup) {
        ui::UnattendedDialogs demo_answers;
        write_demo_tree(tmp.path(), 2026, demo_answers);
        session.set_starter(starter);
        session.fixed_today = QDate(2026, 3, 4);
        session.executable_path = "C:\\Program Files (x86)\\KORVEL\\KORVEL.EXE";
        startup.begin();
        startup.locate();
        startup.read_language();
        startup.splash_check_school_file();
        menu.available_forms = {"sk411_prg"};
        menu.open_child_form = [this](const QString& form) { opened << form; };
        menu.form_load();
    }
    QTemporaryDir tmp;
    ui::ScriptedDialogs dialogs;
    platform::RecordingProcessStarter starter;
    Session session;
    Startup startup;
    MainMenu menu;
    QStringList opened;
};

}  // namespace

TEST(MainMenu, LoadsTheYearTheSchoolAndTheFiles) {
    MenuOnDemo m;
    EXPECT_EQ(m.menu.year_label, "2026");
    EXPECT_EQ(m.menu.dir_disp_staff, "C:\\VESPARINE\\STAFF\\P2026");
    EXPECT_EQ(m.menu.rekords_jaar_lys, QStringList({"2014", "2025", "2026", "2027"}));
    EXPECT_EQ(m.menu.sk4_menu[1].caption, "PERSONEELLEDE");
    EXPECT_TRUE(m.menu.sk4_menu[1].enabled);
    EXPECT_TRUE(m.menu.sk4_menu[4].enabled);
    EXPECT_FALSE(m.menu.sk4_menu[2].enabled);
    EXPECT_EQ(m.menu.header.ops_datum, "2026.03.04");
    // One line in the audit trail for the menu.
    const QByteArray audit =
        *m.session.fs().read_all("C:\\ProgramData\\VESPARINE\\Audit_Trail.txt");
    ASSERT_EQ(audit.size(), 258);
    EXPECT_EQ(audit.mid(68, 7), "sk4_mnu");
    EXPECT_EQ(m.session.count(store::Code::PRSALG), 40);
    EXPECT_EQ(*m.session.fs().read_all(m.startup.language_file()), "#TRUE#\r\n");
}

TEST(MainMenu, KeysAndTheCloseBox) {
    MenuOnDemo m;
    m.menu.key_press("2");
    m.menu.key_press("3");
    EXPECT_TRUE(m.opened.isEmpty());
    m.menu.key_press("1");
    EXPECT_EQ(m.opened, QStringList({"sk411_prg"}));
    EXPECT_TRUE(m.session.educator_flag);
    m.menu.sk4_menu_click(4);
    EXPECT_FALSE(m.session.educator_flag);
    m.menu.sk4_menu_click(2);  // disabled: nothing opens
    EXPECT_EQ(m.opened.size(), 2);
    EXPECT_TRUE(m.menu.query_unload());
    EXPECT_THROW(m.menu.key_press("Escape"), ProcessEnd);
}

TEST(MainMenu, YearChangeRemembersAndReopens) {
    MenuOnDemo m;
    m.menu.rekords_jaar_lys_click("2025");
    EXPECT_EQ(m.session.ledger_year, "2025");
    EXPECT_EQ(m.session.folders.staff, "C:\\VESPARINE\\STAFF\\P2025");
    EXPECT_EQ(m.menu.dir_disp_staff, "C:\\VESPARINE\\STAFF\\P2025");
    EXPECT_EQ(*m.session.fs().read_all(m.startup.year_used_file()), "2025\r\n");
    EXPECT_EQ(m.session.folder_of(store::Code::PRSALG), "C:\\VESPARINE\\STAFF\\P2025");
    // The next start opens that year.
    MenuOnDemo again;
    again.startup.write_year_used("2025");
    again.menu.form_load();
    EXPECT_EQ(again.session.ledger_year, "2025");
}

TEST(MainMenu, ToolsWithoutTheirProgramsSayWhereToGetThem) {
    MenuOnDemo m;
    m.menu.dir_disp_staff_click();
    EXPECT_TRUE(m.dialogs.last_text().startsWith("LAAI EN INSTALLEER"));
    m.menu.backup_click();  // no backup tool: nothing starts
    EXPECT_TRUE(m.starter.started().isEmpty());
    m.session.fs().create_folder("C:\\Program Files (x86)\\ORSTELL");
    m.session.fs().write_all("C:\\Program Files (x86)\\ORSTELL\\ORSTELL.EXE", "x");
    m.menu.backup_click();
    ASSERT_EQ(m.starter.started().size(), 1);
    EXPECT_TRUE(m.starter.started().first().program.endsWith("ORSTELL/ORSTELL.EXE"));
    // No manual: the message names where it was looked for, in the language in use.
    m.menu.help_pdf_click();
    EXPECT_TRUE(m.dialogs.last_text().startsWith(
        "Handleiding nie gevind nie:\nC:\\Program Files (x86)\\KORVEL\\personeel.pdf"));
}

TEST(MainMenu, UndoConversionEmptiesTheStaffFolderAndTheNextOpenConvertsAgain) {
    MenuOnDemo m;
    const QString staff = m.session.folders.staff;
    const qsizetype shown = m.dialogs.shown().size();
    m.menu.tab_undo_click();  // no save folder: nothing happens
    EXPECT_EQ(m.dialogs.shown().size(), shown);
    EXPECT_EQ(m.session.count(store::Code::PRSALG), 40);

    ASSERT_TRUE(korvel::testing::write_dbf_tables(
        m.session.fs().native(staff),
        "t = dbf.Table(folder + '/s_b_prs', 'SP_GRAAD C(3); SP_KLAS C(3)', dbf_type='db3')\n"
        "t.open(dbf.READ_WRITE)\nt.append(('8', 'A'))\nt.close()\n"));
    ASSERT_TRUE(m.session.open_suite_file("SBP", staff));
    EXPECT_EQ(m.session.count(store::Code::SBP), 1);
    EXPECT_FALSE(m.session.fs().file_exists(staff + "\\s_b_prs.dbf"));

    m.menu.tab_undo_click();
    EXPECT_TRUE(m.session.fs().file_exists(staff + "\\s_b_prs.dbf"));
    EXPECT_FALSE(m.session.fs().file_exists(staff + "\\sbp_random.txt"));
    EXPECT_EQ(m.session.count(store::Code::PRSALG), 0);
    // What left the staff folder is kept below save.
    const QStringList kept =
        QDir(m.session.fs().native(staff + "\\save")).entryList({"voor herstel *"}, QDir::Dirs);
    ASSERT_EQ(kept.size(), 1);
    EXPECT_EQ(
        QFileInfo(m.session.fs().native(staff + "\\save\\" + kept.first() + "\\prs_alg_random.txt"))
            .size(),
        40 * store::PRSALG.record_length);
    ASSERT_TRUE(m.session.open_suite_file("SBP", staff));
    EXPECT_EQ(m.session.count(store::Code::SBP), 1);
}
