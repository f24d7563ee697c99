// The year-end and export forms through their real widgets, offscreen on the demo tree.

#include <gtest/gtest.h>

#include <QGroupBox>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTreeWidget>

#include "staff/demo_forms_fixture.h"
#include "store/record_layouts.h"
#include "yearend/staff_export_form.h"
#include "yearend/workbook_rows.h"
#include "yearend/year_end_form.h"

using namespace korvel;

namespace {

class YearEndForms : public korvel::testing::DemoForms<ui::ScriptedDialogs> {
  protected:
    // The years of school of each record of a staff folder.
    std::vector<int> school_years(const QString& folder) {
        std::vector<int> years;
        session.open_file(store::Code::PRSALG, folder);
        session.scan_records(store::Code::PRSALG, [&](int, store::Record& r) {
            years.push_back(r.int16(store::PRSALG["PO_JRE_SKL"]));
        });
        session.open_file(store::Code::PRSALG, session.folders.staff);
        return years;
    }
};

template <typename T>
T* child(QWidget* form, const char* name) {
    T* w = form->findChild<T*>(QString::fromLatin1(name));
    EXPECT_NE(w, nullptr) << name;
    return w;
}

void click(QWidget* form, const char* button) {
    QTest::mouseClick(child<QPushButton>(form, button), Qt::LeftButton);
}

void click_row(QListWidget* list, int row, bool twice = false) {
    const QPoint at = list->visualItemRect(list->item(row)).center();
    if (twice) {
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
    } else {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
    }
}

}  // namespace

TEST_F(YearEndForms, ANewYearRollsAtOnceAndAgainTheAnswerAppends) {
    const QString next = QString::number(session.ledger_year.toInt() + 1);
    const QString target = "C:\\VESPARINE\\STAFF\\P" + next;
    std::vector<int> expected = school_years(session.folders.staff);
    ASSERT_FALSE(expected.empty());
    for (const int rolls : {1, 2}) {
        QPointer<QWidget> form = yearend::open_year_end(session, nullptr, {});
        form->show();
        EXPECT_EQ(child<QLineEdit>(form, "nuwe_jaar")->text(), next);
        click(form, "evj_ok");
        // The second time the target holds a year: the form asks, and APPEND is chosen.
        ASSERT_EQ(rolls == 2, form && child<QGroupBox>(form, "byvoeg_oorskryf")->isVisible());
        if (rolls == 2) {
            form->layout()->activate();  // the frame has just been shown
            const auto options = form->findChildren<QRadioButton*>();
            ASSERT_EQ(options.size(), 2);
            ASSERT_EQ(options[1]->text(), "APPEND");
            // On its round mark: the row is wider than what a click takes.
            QTest::mouseClick(options[1], Qt::LeftButton, {}, QPoint(6, options[1]->height() / 2));
            ASSERT_TRUE(options[1]->isChecked());
            click(form, "bo_ok");
        }
        EXPECT_EQ(dialogs.last_text(), "END-OF-YEAR STAFF COMPLETE ...");
        EXPECT_TRUE(!form || !form->isVisible());
        delete form.data();
        for (int& years : expected) {
            ++years;
        }
        EXPECT_EQ(school_years(target), expected) << rolls;
    }
}

TEST_F(YearEndForms, TheExportWritesTheChosenFieldsOfTheYearsActiveStaff) {
    const QString file = tmp.filePath("staff.xlsx");
    dialogs.choose(file);
    QPointer<QWidget> form = yearend::open_staff_export(session, nullptr);
    ASSERT_TRUE(form);
    form->show();
    auto* years = child<QListWidget>(form, "rekords_jaar_lys");
    click_row(years, years->row(years->findItems(session.ledger_year, Qt::MatchExactly).value(0)),
              true);
    auto* fields = child<QListWidget>(form, "uitvoer_velde");
    click_row(fields, 0);
    click_row(fields, 2);
    const auto* staff = child<QTreeWidget>(form, "personeel_lys");
    QStringList expected{fields->item(0)->text() + "|" + fields->item(2)->text()};
    for (int i = 0; i < staff->topLevelItemCount(); ++i) {
        expected << staff->topLevelItem(i)->text(1);
    }
    click(form, "uitvoer_velde_ok");
    EXPECT_EQ(dialogs.last_text(), "EXPORT COMPLETED ....");
    QStringList rows = korvel::testing::workbook_rows(file);
    for (qsizetype i = 1; i < rows.size(); ++i) {
        rows[i] = rows[i].section('|', 0, 0);  // the post number
    }
    EXPECT_EQ(rows, expected);
    delete form.data();
}
