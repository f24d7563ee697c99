// The salary capture and the letterhead layouts driven through their Qt forms, offscreen: what
// is typed reaches the file's bytes.

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include "payroll/salary_capture.h"
#include "payroll/salary_capture_form.h"
#include "reports/letterhead.h"
#include "reports/letterhead_forms.h"
#include "staff/staff_fixture.h"
#include "store/record_layouts.h"
#include "ui/qt_dialogs.h"

namespace korvel::payroll {
namespace {

using store::Code;
using store::PRSLNE;

class PayrollFormsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        register_payroll_forms(dialogs);
        tree.session.set_dialogs(dialogs);
        tree.session.afrikaans = false;
        korvel::testing::add_person(tree.session, {.post = "10", .surname = "NEL"});
    }
    // Shows the form and plays the user in it.
    void show(ui::ChildForm& form, const std::function<void(QDialog*)>& play) {
        bool shown = false;
        QTimer::singleShot(50, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr)
                return;
            shown = dialog->objectName() == form.form_name();
            dialog->activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
            play(dialog);
            if (dialog->isVisible())
                dialog->reject();
        });
        dialogs.show_modal(form);
        EXPECT_TRUE(shown);
    }

    ui::QtDialogs dialogs;
    korvel::testing::StaffTree tree;
};

template <typename W = QLineEdit>
W* child(QDialog* dialog, const QString& name) {
    W* w = dialog->findChild<W*>(name);
    EXPECT_NE(w, nullptr) << name.toStdString();
    return w;
}

// Types into the box and presses Enter; the name of the box the focus moved to.
QString type_and_enter(QDialog* d, const QString& box, const char* text) {
    QLineEdit* e = child(d, box);
    if (e == nullptr)
        return {};
    e->setFocus();
    QTest::keyClicks(e, QString::fromLatin1(text));
    QTest::keyClick(e, Qt::Key_Return);
    return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
}

TEST_F(PayrollFormsTest, MonthTypedThroughTheFormIsStored) {
    SalaryCapture form(tree.session);
    form.form_load();
    show(form, [](QDialog* d) {
        // From the keyboard: Enter on the person, then on the month.
        auto* grid = child<QTableWidget>(d, "prs_grid");
        grid->setFocus();
        grid->setCurrentCell(0, 1);
        QTest::keyClick(grid, Qt::Key_Return);
        auto* months = child<QListWidget>(d, "maand_lys");
        months->setCurrentRow(2);
        QTest::keyClick(months, Qt::Key_Return);
        EXPECT_EQ(type_and_enter(d, "ink_data_1", "1234.50"), "ink_data_2");
        // Enter goes down the deductions, through a free line's label.
        EXPECT_EQ(type_and_enter(d, "uit_data_3", "300"), "uit_var_teks_1");
        EXPECT_EQ(type_and_enter(d, "uit_var_teks_1", "lening"), "uit_data_4");
        EXPECT_EQ(child(d, "uit_var_teks_1")->text(), "LENING");
        EXPECT_EQ(type_and_enter(d, "uit_data_4", "50"), "uit_var_teks_2");
        child<QPushButton>(d, "data_ok")->click();
    });
    const QByteArray bytes =
        korvel::testing::read_file(tree.staff_file(QStringLiteral("prs_lne_random.txt")));
    ASSERT_EQ(bytes.size(), PRSLNE.record_length);
    store::Record r(PRSLNE);
    r.assign(bytes.constData());
    EXPECT_EQ(r.text(PRSLNE["PL_POS_NR"]).trimmed(), "10");
    EXPECT_EQ(r.int16(PRSLNE["PL_MAAND"]), 3);
    EXPECT_EQ(r.int16(PRSLNE["PL_SALARIS"]), 1234);  // half to even
    EXPECT_EQ(r.int16(PRSLNE["PL_TAX"]), 300);
    EXPECT_EQ(r.text(PRSLNE["pl_u_teks"], 1).trimmed(), "LENING");
    EXPECT_EQ(r.int16(PRSLNE["pl_u_bdrg"], 1), 50);
}

TEST_F(PayrollFormsTest, LetterheadSavedThroughItsForm) {
    const QString folder = tree.session.fs().native(tree.session.folders.general_year);
    korvel::testing::write_file(
        tree.native(tree.session.folders.general_year, reports::kLetterheadTable),
        "\"SKOOL                        0\",10,10,10,10,#TRUE#,#TRUE#,#FALSE#,\"L\",\"M\"\r\n");
    reports::LetterheadLayouts form(tree.session);
    form.form_load();
    show(form, [](QDialog* d) {
        auto* list = child<QListWidget>(d, "bh_lys");
        ASSERT_EQ(list->count(), 2);
        emit list->itemDoubleClicked(list->item(0));
        QLineEdit* top = child(d, "bh_data_4");
        top->selectAll();
        QTest::keyClicks(top, "25");
        child<QCheckBox>(d, "bh_opsie")->setChecked(true);
        auto* ok = child<QPushButton>(d, "bh_ok");
        EXPECT_EQ(ok->text(), "Confirm changes");
        ok->click();
    });
    const auto table = reports::read_letterhead_table(folder);
    ASSERT_EQ(table.size(), 1u);
    EXPECT_EQ(table[0].top, 25);
    EXPECT_EQ(table[0].frame, 1);
    EXPECT_TRUE(table[0].print_address);
    // The font file is written beside it, with the form's defaults.
    EXPECT_EQ(reports::fill_letterhead_list(folder), QStringList{"SKOOL"});
}

}  // namespace
}  // namespace korvel::payroll
