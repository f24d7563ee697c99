#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <QTimer>

#include "staff/address_family.h"
#include "staff/address_family_form.h"
#include "staff/banking.h"
#include "staff/banking_form.h"
#include "staff_fixture.h"

using namespace korvel;
using store::Code;
using store::PRSALG;

namespace {

// The detail forms shown through the real Qt dialogs, offscreen, over a person in memory.
class DetailFormsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        staff::register_address_family_form(dialogs);
        staff::register_banking_form(dialogs);
        tree.session.set_dialogs(dialogs);
        number = korvel::testing::add_person(tree.session, {.post = "7", .surname = "DU TOIT"});
    }
    // Shows the form and plays the user in it; a play that stops early leaves nothing open.
    void show(ui::ChildForm& form, const std::function<void(QDialog*)>& play) {
        bool shown = false;
        QTimer::singleShot(50, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) {
                return;
            }
            shown = dialog->objectName() == form.form_name();
            // Focus moves only within the active window.
            dialog->activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
            play(dialog);
            if (dialog->isVisible()) {
                dialog->reject();
            }
        });
        dialogs.show_modal(form);
        EXPECT_TRUE(shown);
    }
    store::Record on_disk() const {
        store::Record r(PRSALG);
        const QByteArray bytes = korvel::testing::read_file(tree.staff_file("prs_alg_random.txt"));
        r.assign(bytes.mid((number - 1) * PRSALG.record_length, PRSALG.record_length).constData());
        return r;
    }

    ui::QtDialogs dialogs;
    korvel::testing::StaffTree tree;
    int number = 0;
};

template <typename W = QLineEdit>
W* child(QDialog* dialog, const char* name) {
    W* w = dialog->findChild<W*>(QString::fromLatin1(name));
    EXPECT_NE(w, nullptr) << name;
    return w;
}

TEST_F(DetailFormsTest, AddressFormTypesCapitalsMovesOnAndSavesBothScreens) {
    tree.session.working(Code::PRSALG).set_text(PRSALG["PA_T_HUIS"], "(021)5551234");
    staff::AddressFamily form(tree.session);
    show(form, [](QDialog* d) {
        QLineEdit* address = child(d, "prs_data_1");
        ASSERT_NE(address, nullptr);
        EXPECT_EQ(child(d, "prs_data_16")->text(), "021");
        EXPECT_EQ(child(d, "prs_data_9")->text(), "5551234");
        EXPECT_EQ(address->maxLength(), 25);
        address->setFocus();
        QTest::keyClicks(address, "posbus 5");
        EXPECT_EQ(address->text(), "POSBUS 5");
        QTest::keyClick(address, Qt::Key_Return);
        EXPECT_EQ(address->text(), "POSBUS 5");
        EXPECT_EQ(QApplication::focusWidget(), child(d, "prs_data_2"));
        QTest::keyClicks(child(d, "prs_data_46"), "anna@skool.co.za");

        child<QPushButton>(d, "screen_next")->click();
        EXPECT_EQ(child<QStackedWidget>(d, "data_raam")->currentWidget()->objectName(),
                  "data_raam_1");
        EXPECT_FALSE(address->isVisible());
        QTest::keyClicks(child(d, "prs_data_37"), "2016.2.3");
        child<QPushButton>(d, "data_ok")->click();
        EXPECT_FALSE(d->isVisible());
    });
    EXPECT_TRUE(form.closed);
    const store::Record r = on_disk();
    EXPECT_EQ(r.text(PRSALG["PA_P_ADR1"]), "POSBUS 5");
    EXPECT_EQ(r.text(PRSALG["PA_EPOS"]), "anna@skool.co.za");
    EXPECT_EQ(r.text(PRSALG["PA_T_HUIS"]), "(021)5551234");
    EXPECT_EQ(r.date(PRSALG["PL_GDTM"], 1), QDate(2016, 2, 3));
}

TEST_F(DetailFormsTest, BankingFormListsMasksAndSaves) {
    tree.session.afrikaans = false;
    staff::BankingDetails form(tree.session);
    show(form, [](QDialog* d) {
        QLineEdit* contract = child(d, "prs_data_9");
        QListWidget* list = child<QListWidget>(d, "ja_nee_lys_1");
        ASSERT_TRUE(contract && list);
        EXPECT_FALSE(list->isVisible());
        QTest::mouseClick(contract, Qt::LeftButton);
        ASSERT_TRUE(list->isVisible());
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualItemRect(list->item(0)).center());
        EXPECT_EQ(contract->text(), "YES");
        EXPECT_FALSE(list->isVisible());

        QLineEdit* salary = child(d, "prs_data_10");
        EXPECT_EQ(salary->text(), "0.00");
        QTest::mouseClick(salary, Qt::LeftButton);
        EXPECT_EQ(salary->text(), ".00");
        salary->selectAll();
        QTest::keyClicks(salary, "12345.67");
        QTest::mouseClick(child<QPushButton>(d, "data_ok"), Qt::LeftButton);
        EXPECT_FALSE(d->isVisible());
    });
    EXPECT_TRUE(form.closed);
    const store::Record r = on_disk();
    EXPECT_EQ(r.text(PRSALG["PB_KONTRAK"]), "Y");
    EXPECT_EQ(r.int16(PRSALG["PB_SALARIS"]), 12346);
}

}  // namespace
