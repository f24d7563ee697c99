// The entry form through its real widgets, offscreen: a secretary adds a staff member from the
// register, and the record is found on disk.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>

#include "demo_forms_fixture.h"
#include "shell/demo_tree.h"
#include "shell/folders.h"
#include "staff/address_family_form.h"
#include "staff/banking_form.h"
#include "staff/detail_chooser_form.h"
#include "staff/staff_entry_form.h"
#include "staff/staff_register.h"
#include "ui/qt_dialogs.h"

using namespace korvel;

namespace {

class EntryFormTest : public korvel::testing::DemoForms<ui::QtDialogs> {
  protected:
    EntryFormTest() {
        staff::register_staff_entry_form(dialogs);
        staff::register_detail_chooser_form(dialogs);
        staff::register_address_family_form(dialogs);
        staff::register_banking_form(dialogs);
    }

    // Opens the entry form of a new record from the register and plays the user in it; every
    // message box is answered with its first button, its icon kept.
    void with_new_entry(const std::function<void(QWidget* form)>& play) {
        staff::StaffRegister reg(session, true);
        reg.user = QStringLiteral("ANNA");
        ASSERT_TRUE(reg.form_load());
        QTimer clerk;
        QObject::connect(&clerk, &QTimer::timeout, [&] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                icons << box->icon();
                box->buttons().first()->click();
            }
        });
        QTimer robot;
        robot.setSingleShot(true);
        QObject::connect(&robot, &QTimer::timeout, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            ASSERT_NE(modal, nullptr);
            play(modal);
        });
        robot.start(50);
        clerk.start(20);
        reg.task_options_click(1);
    }
    QList<QMessageBox::Icon> icons;
};

template <typename T>
T* child(QWidget* form, const char* name) {
    T* w = form->findChild<T*>(QString::fromLatin1(name));
    EXPECT_NE(w, nullptr) << name;
    return w;
}

void click_row(QListWidget* list, int row) {
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(row)).center());
}

}  // namespace

TEST_F(EntryFormTest, AddingAStaffMemberEndToEnd) {
    staff::StaffRegister reg(session, true);
    reg.user = QStringLiteral("ANNA");
    ASSERT_TRUE(reg.form_load());

    QStringList messages;
    bool filled = false;
    int ticks = 0;
    // A timer does not fire again while its own handler runs, so the message boxes that the form
    // opens from a click of the robot are answered by a second one.
    QTimer clerk;
    QObject::connect(&clerk, &QTimer::timeout, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (++ticks > 1500 && modal != nullptr) {
            modal->close();  // never hang the suite
        } else if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            messages << box->text();
            QAbstractButton* yes = box->button(QMessageBox::Yes);
            (yes != nullptr ? yes : box->buttons().first())->click();
        }
    });
    QTimer robot;
    QObject::connect(&robot, &QTimer::timeout, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal == nullptr || modal->objectName() != "sk411_inlees" || filled) {
            return;
        }
        filled = true;
        // The offscreen platform keeps no active window of its own: each focus asks for it.
        const auto focus = [modal](const char* name) {
            QApplication::setActiveWindow(modal);
            child<QLineEdit>(modal, name)->setFocus();
        };
        EXPECT_EQ(child<QLineEdit>(modal, "prs_data_9")->text(), "YYYY.MM.DD");
        QTest::keyClicks(child<QLineEdit>(modal, "prs_data_1"), "99");
        QTest::keyClicks(child<QLineEdit>(modal, "prs_data_2"), "nel");
        QTest::keyClicks(child<QLineEdit>(modal, "prs_data_3"), "anna maria");
        QLineEdit* id = child<QLineEdit>(modal, "prs_data_8");
        focus("prs_data_8");
        QTest::keyClicks(id, "8503120123083");
        focus("prs_data_13");  // its list shows
        QListWidget* population = child<QListWidget>(modal, "ras_lys");
        EXPECT_TRUE(population->isVisible());
        click_row(population, 3);
        focus("prs_data_14");
        click_row(child<QListWidget>(modal, "taal_lys"), 1);
        focus("prs_data_21");
        click_row(child<QListWidget>(modal, "reqv_lys"), 2);
        QTest::mouseClick(child<QLineEdit>(modal, "prs_data_25"), Qt::LeftButton);
        click_row(child<QListWidget>(modal, "hk_lys"), 0);
        click_row(child<QListWidget>(modal, "Tipe_aanstelling"), 0);
        child<QRadioButton>(modal, "kies_p_t_0")->click();
        child<QRadioButton>(modal, "kies_tipe_onderwys_2")->click();
        child<QPushButton>(modal, "data_ok")->click();
    });
    robot.start(20);
    clerk.start(20);
    reg.task_options_click(1);
    robot.stop();
    clerk.stop();

    ASSERT_TRUE(filled);
    EXPECT_TRUE(messages.contains("APPOINTMENT DATES incomplete. Please correct..."));

    // The record on disk.
    int found = 0;
    session.scan_records(store::Code::PRSALG, [&](int, store::Record& r) {
        const auto& A = store::PRSALG;
        if (r.text(A["PA_POS_NR"]).trimmed() != "99") {
            return;
        }
        ++found;
        EXPECT_EQ(r.text(A["PA_VAN"]).trimmed(), "NEL");
        EXPECT_EQ(r.text(A["PA_NAME"]).trimmed(), "ANNA MARIA");
        EXPECT_EQ(r.text(A["PA_ID_NR"]), "8503120123083");
        EXPECT_EQ(r.date(A["PA_G_DATUM"]), QDate(1985, 3, 12));
        EXPECT_EQ(r.text(A["PA_RAS"]), "4 WHI");
        EXPECT_EQ(r.text(A["PA_TAAL"]), "2 ENG");
        EXPECT_EQ(r.int16(A["PA_REQV"]), 12);
        EXPECT_EQ(r.text(A["PA_FOR_NR"]).trimmed(), "1");
        EXPECT_EQ(r.text(A["PA_OD_BL"]), "E");
        EXPECT_EQ(r.text(A["PA_P_T"]), "P");
    });
    EXPECT_EQ(found, 1);
    // The register shows the new row.
    bool shown = false;
    for (const staff::GridRow& row : reg.prs_grid.rows) {
        shown = shown || row.cells[staff::kColPost] == "99";
    }
    EXPECT_TRUE(shown);
}

TEST_F(EntryFormTest, AnEmptyFormTurnsLabelsAndTheLevelFrameRedUnderACriticalBox) {
    bool looked = false;
    with_new_entry([&](QWidget* modal) {
        QTest::keyClicks(child<QLineEdit>(modal, "prs_data_1"), "98");
        child<QPushButton>(modal, "data_ok")->click();
        const auto colour = [](QWidget* w) { return w->palette().color(QPalette::WindowText); };
        EXPECT_EQ(colour(child<QLabel>(modal, "data_teks_18")), QColor(Qt::red));
        EXPECT_EQ(colour(child<QWidget>(modal, "tipe_onderwys_raam")), QColor(Qt::red));
        EXPECT_NE(colour(child<QRadioButton>(modal, "kies_tipe_onderwys_0")), QColor(Qt::red));
        EXPECT_NE(colour(child<QLabel>(modal, "data_teks_1")), QColor(Qt::red));
        looked = true;
        child<QPushButton>(modal, "staff_exit")->click();
    });
    EXPECT_TRUE(looked);
    EXPECT_EQ(icons, QList<QMessageBox::Icon>({QMessageBox::Critical}));
}

TEST_F(EntryFormTest, TabFollowsTheFormBoxesKeepTheirWidthListsPopUpAndEscapeLeaves) {
    bool looked = false;
    with_new_entry([&](QWidget* modal) {
        QApplication::setActiveWindow(modal);
        // Tab walks down the left column as it stands: post number, surname, full names, name.
        QStringList walked;
        child<QLineEdit>(modal, "prs_data_1")->setFocus();
        for (int i = 0; i < 4; ++i) {
            walked << QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        EXPECT_EQ(walked, QStringList({"prs_data_1", "prs_data_2", "prs_data_3", "prs_data_22"}));

        // A box takes no more than its field: five for the post number, one for the gender.
        QLineEdit* post = child<QLineEdit>(modal, "prs_data_1");
        QTest::keyClicks(post, "123456");
        EXPECT_EQ(post->text(), "12345");
        EXPECT_EQ(child<QLineEdit>(modal, "prs_data_7")->maxLength(), 1);

        // The population list pops up over the form: the next field stays where it was.
        QLineEdit* language = child<QLineEdit>(modal, "prs_data_14");
        const QRect before = language->geometry();
        QApplication::setActiveWindow(modal);
        child<QLineEdit>(modal, "prs_data_13")->setFocus();
        QListWidget* population = child<QListWidget>(modal, "ras_lys");
        EXPECT_TRUE(population->isVisible());
        EXPECT_EQ(population->parentWidget(), modal);
        QApplication::processEvents();
        EXPECT_EQ(language->geometry(), before);
        looked = true;

        QTest::keyClick(language, Qt::Key_Escape);  // as the exit button
    });
    EXPECT_TRUE(looked);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);  // Escape closed the form
}
