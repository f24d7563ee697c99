#include <gtest/gtest.h>

#include <QApplication>
#include <QFileInfo>
#include <QHeaderView>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include "demo_forms_fixture.h"
#include "reports/print_menu.h"
#include "reports/staff_lists.h"
#include "shell/demo_tree.h"
#include "shell/folders.h"
#include "staff/staff_register_form.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;

namespace {

// The register form over the demo tree of this year on drive C:, offscreen.
class RegisterFormTest : public korvel::testing::DemoForms<ui::ScriptedDialogs> {
  protected:
    QStringList column(staff::StaffRegisterForm& form, int c) {
        QStringList out;
        for (int i = 0; i < form.grid()->topLevelItemCount(); ++i) {
            out << form.grid()->topLevelItem(i)->text(c);
        }
        return out;
    }
};

}  // namespace

TEST_F(RegisterFormTest, SortSearchAndPopulation) {
    staff::StaffRegisterForm form(session, true);
    ASSERT_TRUE(form.load());
    form.show();
    // Educators, sorted by surname rising; inactive rows red.
    const int educators = form.grid()->topLevelItemCount();
    EXPECT_EQ(educators, 27);  // 28 educators less the deleted one
    QStringList surnames = column(form, staff::kColSurname);
    QStringList sorted = surnames;
    std::sort(sorted.begin(), sorted.end(), [](const QString& a, const QString& b) {
        return a.compare(b, Qt::CaseInsensitive) < 0;
    });
    EXPECT_EQ(surnames, sorted);
    int red = 0;
    for (int i = 0; i < educators; ++i) {
        QTreeWidgetItem* item = form.grid()->topLevelItem(i);
        const bool inactive = !item->text(staff::kColState).isEmpty();
        red += inactive;
        EXPECT_EQ(item->foreground(staff::kColSurname).color() == QColor(Qt::red), inactive);
    }
    EXPECT_EQ(red, 2);

    // A header click sorts by that column; a second click turns the order.
    form.grid()->header()->sectionClicked(staff::kColPost);
    QStringList posts = column(form, staff::kColPost);
    EXPECT_TRUE(std::is_sorted(posts.begin(), posts.end()));
    form.grid()->header()->sectionClicked(staff::kColPost);
    posts = column(form, staff::kColPost);
    EXPECT_TRUE(std::is_sorted(posts.rbegin(), posts.rend()));

    // The search selects the first row that holds the text, and remembers it.
    const QString wanted = surnames.at(5);
    dialogs.type(wanted.left(4));
    form.findChild<QPushButton*>("task_options_2")->click();
    ASSERT_NE(form.grid()->currentItem(), nullptr);
    EXPECT_TRUE(form.grid()->currentItem()->text(staff::kColSurname).startsWith(wanted.left(4)));
    EXPECT_EQ(session.register_search_text, wanted.left(4));

    // The population toggle shows the employees.
    form.findChild<QPushButton*>("personeel_tipe")->click();
    EXPECT_EQ(form.grid()->topLevelItemCount(), 12);
    EXPECT_EQ(form.windowTitle(), "EMPLOYEES");
    for (const QString& post : column(form, staff::kColPost)) {
        EXPECT_TRUE(post.startsWith("A")) << post.toStdString();
    }
}

TEST_F(RegisterFormTest, ALeftClickOrEnterOpensTheRow) {
    staff::StaffRegisterForm form(session, true);
    ASSERT_TRUE(form.load());
    form.show();
    QList<int> opened;  // the record of each entry form shown
    dialogs.on_form("sk411_inlees",
                    [&](ui::ChildForm&) { opened << session.state(store::Code::PRSALG).current; });
    QTreeWidget* grid = form.grid();
    const auto at_row = [grid](int row) {
        return grid->visualItemRect(grid->topLevelItem(row)).center();
    };
    const int third = grid->topLevelItem(2)->text(staff::kColNumber).toInt();
    QTest::mouseClick(grid->viewport(), Qt::RightButton, {}, at_row(1));
    EXPECT_TRUE(opened.isEmpty());
    // A double click: its first click opens the row, its second finds nothing more to do.
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at_row(2));
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, at_row(2));
    EXPECT_EQ(opened, QList<int>({third}));
    grid->setCurrentItem(grid->topLevelItem(2));
    QTest::keyClick(grid, Qt::Key_Return);
    EXPECT_EQ(opened, QList<int>({third, third}));

    // The row key shows, and the way out says what it is.
    EXPECT_FALSE(grid->isColumnHidden(staff::kColNumber));
    EXPECT_EQ(grid->topLevelItem(0)->text(staff::kColNumber).size(), 3);
    EXPECT_EQ(form.findChild<QPushButton*>("staff_exit")->text(), "EXIT");
}

TEST_F(RegisterFormTest, TheRosterButtonSendsForThePathToolWhenItIsMissing) {
    staff::StaffRegisterForm form(session, true);
    ASSERT_TRUE(form.load());
    auto* roster = form.findChild<QPushButton*>("dir_disp_roster");
    ASSERT_TRUE(roster->isEnabled());
    roster->click();
    ASSERT_EQ(dialogs.shown().size(), 1);
    EXPECT_TRUE(
        dialogs.last_text().startsWith("PLEASE LOAD AND INSTALL THE LATEST COPY OF FOLVANE"));
    EXPECT_EQ(dialogs.shown().first().icon, ui::Icon::Critical);
}

TEST_F(RegisterFormTest, ClosingCompactsTheStaffFiles) {
    const QString alg = session.fs().native(session.folders.staff + "\\prs_alg_random.txt");
    EXPECT_EQ(QFileInfo(alg).size(), 40 * 4103);
    {
        staff::StaffRegisterForm form(session, false);
        ASSERT_TRUE(form.load());
        form.show();
        form.close();
    }
    // The deleted record is gone from disk.
    EXPECT_EQ(QFileInfo(alg).size(), 39 * 4103);
}

TEST_F(RegisterFormTest, ThePrintButtonOpensThePrintMenuAndTheStaffLists) {
    staff::StaffRegisterForm form(session, true);
    ASSERT_TRUE(form.load());
    dialogs.on_form("staff_kies_druk", [](ui::ChildForm& f) {
        auto& menu = static_cast<reports::PrintMenu&>(f);
        EXPECT_TRUE(menu.pr_option[1].enabled);
        menu.pr_option_click(1);  // the staff list
    });
    std::size_t listed = 0;
    dialogs.on_form("sk421_prg", [&](ui::ChildForm& f) {
        listed = static_cast<reports::StaffLists&>(f).prs_lys.size();
    });
    auto* print = form.findChild<QPushButton*>("task_options_5");
    ASSERT_TRUE(print->isEnabled());
    print->click();
    EXPECT_EQ(dialogs.forms_shown(), QStringList({"staff_kies_druk", "sk421_prg"}));
    EXPECT_GT(listed, 30u);
}
