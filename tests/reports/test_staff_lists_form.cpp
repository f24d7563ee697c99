#include <gtest/gtest.h>

#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include "reports/print_menu_form.h"
#include "reports/staff_lists_form.h"
#include "shell/demo_tree.h"
#include "shell/folders.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;

namespace {
// Clicks a button, found by name or by text, on the modal form showing then.
void click_on_modal(const QString& form, const QString& button, bool* seen) {
    QTimer::singleShot(100, [=] {
        QWidget* modal = QApplication::activeModalWidget();
        ASSERT_NE(modal, nullptr);
        *seen = modal->objectName() == form;
        for (QPushButton* b : modal->findChildren<QPushButton*>()) {
            if (b->objectName() == button || b->text() == button) {
                b->click();
                return;
            }
        }
    });
}
}  // namespace

TEST(StaffListForms, ThePrintMenuOpensTheListFormAndBothClose) {
    QTemporaryDir tmp;
    ui::UnattendedDialogs demo_answers;
    shell::write_demo_tree(tmp.path(), 2026, demo_answers);
    ui::QtDialogs dialogs;
    reports::register_print_menu_form(dialogs);
    reports::register_staff_lists_form(dialogs);
    shell::Session session(dialogs, platform::DriveMap::explicit_map({{"C:", tmp.path()}}));
    session.folders = shell::default_folders("C:", "2026");
    session.ledger_year = "2026";
    session.open_staff_file();

    bool menu_seen = false, list_seen = false, list_filled = false, closed_again = false;
    bool menu_closed = false;
    // The menu: press the staff list; in the list form check the names and leave; then leave the
    // menu.
    click_on_modal("staff_kies_druk", "pr_option_1", &menu_seen);
    QTimer::singleShot(300, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        ASSERT_NE(modal, nullptr);
        list_seen = modal->objectName() == "sk421_prg";
        list_filled = modal->findChild<QListWidget*>()->count() > 30;
        click_on_modal("sk421_prg", "X", &closed_again);
    });
    QTimer::singleShot(600, [&] { click_on_modal("staff_kies_druk", "X", &menu_closed); });
    reports::show_print_menu(session, nullptr);
    EXPECT_TRUE(menu_seen);
    EXPECT_TRUE(list_seen);
    EXPECT_TRUE(list_filled);
    EXPECT_TRUE(closed_again);
    EXPECT_TRUE(menu_closed);
}
