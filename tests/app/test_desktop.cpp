#include <gtest/gtest.h>

#include <QApplication>
#include <QCloseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTimer>

#include "app/desktop.h"
#include "shell/demo_tree.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;

namespace {

// Clicks a language on the splash as soon as it shows.
void choose_language_on_splash(const char* button) {
    QTimer::singleShot(50, [button] {
        QWidget* splash = QApplication::activeModalWidget();
        ASSERT_NE(splash, nullptr);
        splash->findChild<QRadioButton*>(button)->click();
    });
}

}  // namespace

TEST(Desktop, MenuOnTheDemoTreeInBothLanguages) {
    QTemporaryDir tmp;
    const int year = QDate::currentDate().year();
    ui::UnattendedDialogs demo_answers;
    shell::write_demo_tree(tmp.path(), year, demo_answers);

    ui::ScriptedDialogs dialogs;
    platform::RecordingProcessStarter starter;
    shell::Session session(dialogs, platform::DriveMap::explicit_map({{"C:", tmp.path()}}));
    session.set_starter(starter);
    session.executable_path = "C:\\Program Files (x86)\\KORVEL\\KORVEL.EXE";
    shell::Startup startup(session);
    startup.begin();
    startup.locate();
    std::map<QString, app::FormFactory> forms;
    forms["sk411_prg"] = [](shell::Session&, QWidget* parent) { return new QWidget(parent); };

    app::ShellWindow shell_window(session, startup, forms);
    shell_window.resize(1100, 500);
    shell_window.show();
    choose_language_on_splash("chk_lang_2");
    ASSERT_TRUE(shell_window.start());
    EXPECT_FALSE(session.afrikaans);
    auto* entry1 = shell_window.findChild<QPushButton*>("sk4_menu_1");
    auto* entry2 = shell_window.findChild<QPushButton*>("sk4_menu_2");
    ASSERT_NE(entry1, nullptr);
    EXPECT_EQ(entry1->text(), "STAFF MEMBERS");
    EXPECT_TRUE(entry1->isEnabled());
    EXPECT_FALSE(entry2->isEnabled());  // the salary form is not there yet
    EXPECT_EQ(shell_window.windowTitle(), QString::fromUtf8("KORVEL - HOëRSKOOL DUINEVELD"));
    QApplication::processEvents();
    shell_window.grab().save(tmp.path() + "/../korvel-menu.png");

    // The close box does not close: the splash comes again, and a language can be chosen.
    choose_language_on_splash("chk_lang_1");
    EXPECT_FALSE(shell_window.close());
    EXPECT_TRUE(shell_window.isVisible());
    EXPECT_TRUE(session.afrikaans);
    EXPECT_EQ(entry1->text(), "PERSONEELLEDE");
    EXPECT_EQ(entry1->toolTip().left(18), " Peosoneellede (On");
}
