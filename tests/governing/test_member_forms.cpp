// The governing body forms through their real widgets, offscreen on the demo tree: a member
// is added from the register and the record is read back from the file's bytes.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include "governing/member_register_form.h"
#include "staff/demo_forms_fixture.h"
#include "store/record_layouts.h"
#include "ui/qt_dialogs.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;

namespace {

class MemberFormTest : public korvel::testing::DemoForms<ui::QtDialogs> {
  protected:
    MemberFormTest() { governing::register_member_entry_form(dialogs); }
};

class MemberPrintTest : public korvel::testing::DemoForms<ui::ScriptedDialogs> {};

template <typename T>
T* child(QWidget* form, const char* name) {
    T* w = form->findChild<T*>(QString::fromLatin1(name));
    EXPECT_NE(w, nullptr) << name;
    return w;
}

}  // namespace

TEST_F(MemberFormTest, AddingAMemberWritesItsRecord) {
    governing::MemberRegisterForm form(session);
    const int before = static_cast<int>(form.behaviour().sgb_grid.rows.size());
    ASSERT_GT(before, 0);  // the demo tree has members

    bool filled = false;
    QTimer robot;
    QObject::connect(&robot, &QTimer::timeout, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            ADD_FAILURE() << box->text().toStdString();
            box->buttons().first()->click();
            return;
        }
        if (modal == nullptr || modal->objectName() != "sk411_bl_inlees" || filled) {
            return;
        }
        filled = true;
        // Tab runs as the fields stand: from the type at the top to the surname, and from the
        // names to the gender beside them.
        EXPECT_EQ(child<QComboBox>(modal, "tipe_kieslys")->nextInFocusChain(),
                  child<QLineEdit>(modal, "prs_data_1"));
        EXPECT_EQ(child<QLineEdit>(modal, "prs_data_3")->nextInFocusChain(),
                  child<QRadioButton>(modal, "bl_geslag_1"));
        // Longer than twenty: each box takes its own field's width.
        QTest::keyClicks(child<QLineEdit>(modal, "prs_data_1"), "botha-van der westhuizen");
        QTest::keyClicks(child<QLineEdit>(modal, "prs_data_2"), "karel jan");
        QTest::keyClicks(child<QLineEdit>(modal, "prs_data_5"), "7001015009086");
        QTest::keyClicks(child<QLineEdit>(modal, "prs_data_8"), "G MARRIED");
        QTest::keyClicks(child<QLineEdit>(modal, "prs_data_23"), "karel.botha@skool.example.co.za");
        QTest::keyClicks(child<QLineEdit>(modal, "prs_data_17"), "082");
        QTest::keyClicks(child<QLineEdit>(modal, "prs_data_18"), "5550000");
        child<QRadioButton>(modal, "bl_geslag_1")->click();
        for (const char* list : {"tipe_kieslys", "onderrig_kieslys", "hoedanigheid_kieslys"}) {
            auto* c = child<QComboBox>(modal, list);
            c->setCurrentIndex(2);
            emit c->activated(2);
        }
        child<QPushButton>(modal, "data_ok")->click();
    });
    robot.start(20);
    form.behaviour().task_options_click(1);
    robot.stop();
    ASSERT_TRUE(filled);
    form.refresh();
    EXPECT_EQ(form.grid()->topLevelItemCount(), before + 1);

    // The record, as the file holds it.
    QFile file(session.fs().native(session.folders.staff + QStringLiteral("\\bhr_lgm_random.txt")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    ASSERT_EQ(bytes.size() % store::BHRLGM.record_length, 0);
    store::Record r(store::BHRLGM);
    r.assign(bytes.constData() + bytes.size() - store::BHRLGM.record_length);
    const auto& B = store::BHRLGM;
    EXPECT_EQ(r.text(B["BL_VAN"]).trimmed(), "BOTHA-VAN DER WESTHUIZEN");
    EXPECT_EQ(r.text(B["BL_EPOS"]).trimmed().toLower(), "karel.botha@skool.example.co.za");
    EXPECT_EQ(r.text(B["BL_VRLTR"]).trimmed(), "K J");
    EXPECT_EQ(r.text(B["BL_GESLAG"]), "M");
    EXPECT_EQ(r.text(B["BL_TIPE"]), "3");
    EXPECT_EQ(r.text(B["BL_ONDERRIG"]), "3");
    EXPECT_EQ(r.text(B["BL_HOEDANIG"]), "3");
    EXPECT_EQ(r.text(B["BL_SEL"]).trimmed(), "0825550000");
    EXPECT_EQ(r.date(B["BL_G_DATUM"]), QDate(1970, 1, 1));

    // Closing the register compacts the file: the new member stays.
    file.close();
    form.close();
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("BOTHA"));
}

TEST_F(MemberPrintTest, ThePrintButtonOpensThePrintMenuButNotInBrowseMode) {
    governing::MemberRegisterForm form(session);
    auto* print = form.findChild<QPushButton*>("task_options_5");
    ASSERT_NE(print, nullptr);
    EXPECT_EQ(print->toolTip(), " PRINT : Show Print programs ");
    session.browse_mode = true;
    print->click();
    EXPECT_EQ(dialogs.texts(), QStringList({"NOT AVAILABLE IN BROWSE PROGRAM ..."}));
    EXPECT_TRUE(dialogs.forms_shown().isEmpty());
    session.browse_mode = false;
    print->click();
    EXPECT_EQ(dialogs.forms_shown(), QStringList({"staff_kies_druk"}));
}
