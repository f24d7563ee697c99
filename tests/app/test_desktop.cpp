#include <gtest/gtest.h>

#include <QApplication>
#include <QCloseEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "app/desktop.h"
#include "app/forms.h"
#include "platform/codepage.h"
#include "shell/demo_tree.h"
#include "ui/qt_dialogs.h"
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

// The program started on the demo tree of this year on drive C:, up to its shell window.
struct DemoDesktop {
    explicit DemoDesktop(std::map<QString, app::FormFactory> child_forms = {})
        : session(dialogs, platform::DriveMap::explicit_map({{"C:", tmp.path()}})),
          startup(session),
          forms(std::move(child_forms)) {
        ui::UnattendedDialogs demo_answers;
        shell::write_demo_tree(tmp.path(), QDate::currentDate().year(), demo_answers);
        session.set_starter(starter);
        session.executable_path = "C:\\Program Files (x86)\\KORVEL\\KORVEL.EXE";
        startup.begin();
        startup.locate();
    }
    // The forms named in the workstation's audit trail, in order.
    QStringList audit_trail() {
        const QByteArray log =
            session.fs().read_all(session.folders.workstation + "\\Audit_Trail.txt").value_or("");
        QStringList events;
        for (qsizetype at = 0; at + 258 <= log.size(); at += 258) {
            events << cp1252::decode(log.mid(at + 68, 50)).trimmed();
        }
        return events;
    }

    QTemporaryDir tmp;
    ui::ScriptedDialogs dialogs;
    platform::RecordingProcessStarter starter;
    shell::Session session;
    shell::Startup startup;
    std::map<QString, app::FormFactory> forms;
};

}  // namespace

TEST(Desktop, MenuOnTheDemoTreeInBothLanguages) {
    DemoDesktop d({{"sk411_prg", [](shell::Session&, QWidget* p) { return new QWidget(p); }}});
    app::ShellWindow shell_window(d.session, d.startup, d.forms);
    shell_window.resize(1100, 500);
    shell_window.show();
    choose_language_on_splash("chk_lang_2");
    ASSERT_TRUE(shell_window.start());
    EXPECT_FALSE(d.session.afrikaans);
    auto* entry1 = shell_window.findChild<QPushButton*>("sk4_menu_1");
    auto* entry2 = shell_window.findChild<QPushButton*>("sk4_menu_2");
    ASSERT_NE(entry1, nullptr);
    EXPECT_EQ(entry1->text(), "STAFF MEMBERS");
    EXPECT_TRUE(entry1->isEnabled());
    EXPECT_FALSE(entry2->isEnabled());  // the salary form is not there yet
    EXPECT_EQ(shell_window.windowTitle(), QString::fromUtf8("KORVEL - HOëRSKOOL DUINEVELD"));
    // The LURITS import is an icon like the other tool buttons, its tooltip in the language.
    auto* lurits = shell_window.findChild<QPushButton*>("lurits_import");
    ASSERT_NE(lurits, nullptr);
    EXPECT_TRUE(lurits->text().isEmpty());
    EXPECT_FALSE(lurits->icon().isNull());
    EXPECT_EQ(lurits->toolTip(), " Import LURITS staff information (Excel workbook) ");
    QApplication::processEvents();
    shell_window.grab().save(d.tmp.path() + "/../korvel-menu.png");

    // The close box does not close: the splash comes again, and a language can be chosen.
    choose_language_on_splash("chk_lang_1");
    EXPECT_FALSE(shell_window.close());
    EXPECT_TRUE(shell_window.isVisible());
    EXPECT_TRUE(d.session.afrikaans);
    EXPECT_EQ(entry1->text(), "PERSONEELLEDE");
    EXPECT_EQ(entry1->toolTip().left(18), " Peosoneellede (On");
    EXPECT_EQ(lurits->toolTip(), " Voer LURITS personeelbesonderhede in (Excel-werkboek) ");
}

TEST(Desktop, TheSplashIsAnsweredWithTheKeyboardAndItsTimerKeepsTheLastLanguage) {
    DemoDesktop d;
    struct Case {
        bool last_run_afrikaans;
        Qt::Key key;  // 0: the timer runs out
        bool afrikaans;
    } cases[] = {
        {false, Qt::Key_Return, false},
        {false, Qt::Key_A, true},
        {true, Qt::Key_E, false},
        {false, Qt::Key(0), false},
    };
    for (const Case& c : cases) {
        d.session.afrikaans = c.last_run_afrikaans;
        app::SplashForm splash(d.session);
        if (c.key != 0) {
            QTimer::singleShot(50, &splash, [&] { QTest::keyClick(&splash, c.key); });
        }
        EXPECT_TRUE(splash.run());
        EXPECT_EQ(d.session.afrikaans, c.afrikaans) << c.key;
    }
}

TEST(Desktop, EveryFormWritesItsAuditLineOnceAsItShows) {
    DemoDesktop d(app::desktop_forms());
    app::FormHeaders headers(d.session);
    qApp->installEventFilter(&headers);
    app::ShellWindow shell_window(d.session, d.startup, d.forms);
    shell_window.show();
    choose_language_on_splash("chk_lang_2");
    ASSERT_TRUE(shell_window.start());

    // The register opens over the menu and keeps it waiting.
    shell_window.findChild<QPushButton*>("sk4_menu_1")->click();
    auto* reg = shell_window.findChild<QWidget*>("sk411_prg");
    ASSERT_NE(reg, nullptr);
    EXPECT_TRUE(reg->isVisible() && reg->isModal());
    reg->close();

    // The calendar, a form of later work shown twice, and a message box, which is no form.
    ui::QtDialogs qt_dialogs(&shell_window);
    QTimer::singleShot(50, [] { QApplication::activeModalWidget()->close(); });
    qt_dialogs.pick_date("DATUM", QDate(2026, 3, 1));
    QDialog later(&shell_window);
    later.setObjectName("sk999_prg");
    later.show();
    later.hide();
    later.show();
    QTimer::singleShot(50, [] { QApplication::activeModalWidget()->close(); });
    qt_dialogs.message("FOUT", ui::Icon::Critical);
    qApp->removeEventFilter(&headers);

    EXPECT_EQ(d.audit_trail(), QStringList({"startup", "staff_splash", "sk4_mnu", "sk411_prg",
                                            "sk0_calendar", "sk999_prg"}));
}

TEST(Desktop, AFatalEndInAClickEndsTheProgramWithItsMessage) {
    DemoDesktop d;
    app::ShellWindow shell_window(d.session, d.startup, d.forms);
    shell_window.show();
    choose_language_on_splash("chk_lang_2");
    ASSERT_TRUE(shell_window.start());
    // The path tool is there, and gives a tree without its admin folder.
    d.session.fs().create_folder(d.session.folders.suite_home + "\\BRANTOK");
    d.session.fs().write_all(d.startup.path_tool(), "x");
    d.session.fs().write_all(d.startup.network_file(), "C:\\VESPARINE\\STUFF\r\n");

    int exit_code = -1;
    const bool delivered = app::deliver_or_end(
        [&] {
            shell_window.findChild<QPushButton*>("dir_disp_staff")->click();
            return true;
        },
        [&](int code) { exit_code = code; });
    EXPECT_FALSE(delivered);
    EXPECT_EQ(exit_code, 1);
    EXPECT_EQ(d.dialogs.last_text(), "SKAKEL ASB TANDRIL");
}
