#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include "detail_fixture.h"
#include "staff/qualifications.h"
#include "staff/qualifications_form.h"
#include "staff/subject_codes_form.h"

using namespace korvel;
using store::PRSADD;
using store::PRSALG;
using store::PRSVAK;

namespace {

template <typename W = QLineEdit>
W* child(QWidget* parent, const char* name) {
    W* w = parent->findChild<W*>(QString::fromLatin1(name));
    EXPECT_NE(w, nullptr) << name;
    return w;
}

void click_cell(QTableWidget* table, int row) {
    const QRect cell = table->visualRect(table->model()->index(row, 0));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell.center());
}

QDialog* active_dialog() {
    return qobject_cast<QDialog*>(QApplication::activeModalWidget());
}

// A qualification with two subjects entered through the real widgets, the second form of the
// subject list opened over the first; what lands on disk is read back byte for byte.
TEST(QualificationsForm, AQualificationWithTwoSubjectsThroughTheChooser) {
    korvel::testing::DetailTree tree;
    tree.session.afrikaans = false;
    tree.write_codes();
    ui::QtDialogs dialogs;
    staff::register_qualifications_form(dialogs);
    staff::register_subject_codes_form(dialogs);
    tree.session.set_dialogs(dialogs);

    // Picks the row of a code in the subject list as soon as it shows.
    const auto pick_subject = [](const QString& code) {
        QTimer::singleShot(50, [code] {
            QDialog* d = active_dialog();
            ASSERT_NE(d, nullptr);
            ASSERT_EQ(d->objectName(), "Personeel_vakke");
            auto* list = child<QTableWidget>(d, "lurits_vaklys");
            for (int r = 0; r < list->rowCount(); ++r) {
                if (list->item(r, 2)->text() == code) {
                    click_cell(list, r);
                    return;
                }
            }
            ADD_FAILURE() << "no row for " << code.toStdString();
            d->reject();
        });
    };
    bool played = false;
    QTimer::singleShot(50, [&] {
        QDialog* d = active_dialog();
        ASSERT_NE(d, nullptr);
        ASSERT_EQ(d->objectName(), "sk414_prg");
        click_cell(child<QTableWidget>(d, "kwl_grid_0"), 0);
        QTest::mouseClick(child<QRadioButton>(d, "kw_opsie_1"), Qt::LeftButton);
        auto* prof = child<QListWidget>(d, "kwalifikasie_lys_prof");
        EXPECT_TRUE(prof->isVisible());
        QTest::qWait(20);  // laid out before a row can be hit
        // A double click is a press and release, then the second press.
        const QPoint row = prof->visualItemRect(prof->item(4)).center();
        QTest::mouseClick(prof->viewport(), Qt::LeftButton, {}, row);
        QTest::mouseDClick(prof->viewport(), Qt::LeftButton, {}, row);
        EXPECT_EQ(child(d, "prs_data_1")->text(), "Bachelor of Education");
        QTest::keyClicks(child(d, "prs_data_2"), "UNISA");
        // The subjects of the row.
        QTest::mouseDClick(child(d, "prs_data_5"), Qt::LeftButton);
        const std::pair<int, const char*> subjects[] = {{0, "2001"}, {1, "1001"}};
        for (const auto& [row, code] : subjects) {
            click_cell(child<QTableWidget>(d, "kwl_grid_1"), row);
            pick_subject(QString::fromLatin1(code));
            QTest::mouseDClick(child(d, "vak_dta_1"), Qt::LeftButton);
            EXPECT_EQ(child(d, "vak_dta_1")->text(), code);
            QTest::mouseClick(child<QRadioButton>(d, "vak_soort_2"), Qt::LeftButton);
            QTest::keyClicks(child(d, "vak_dta_2"), "12");
            QTest::keyClicks(child(d, "vak_dta_4"), "9");
            QTest::mouseClick(child<QPushButton>(d, "vak_ok"), Qt::LeftButton);
        }
        QTest::mouseClick(child<QPushButton>(d, "grid_ok"), Qt::LeftButton);  // the subjects
        EXPECT_EQ(child(d, "prs_data_5")->text(), "2001, 1001");
        QTest::mouseClick(child<QPushButton>(d, "data_ok"), Qt::LeftButton);
        QTest::mouseClick(child<QPushButton>(d, "grid_ok"), Qt::LeftButton);  // the form
        played = !d->isVisible();
        if (d->isVisible()) {
            d->reject();
        }
    });
    staff::Qualifications form(tree.session);
    dialogs.show_modal(form);
    EXPECT_TRUE(played);

    const QByteArray v = tree.file_bytes(PRSVAK).mid(PRSVAK.record_length);  // the person's
    EXPECT_EQ(v.mid(PRSVAK["PV_VAK"].element_offset(1 + 11 * 1), 8), "2001    ");
    EXPECT_EQ(v.mid(PRSVAK["PV_VAK"].element_offset(1 + 11 * 2), 8), "1001    ");
    EXPECT_EQ(v.mid(PRSVAK["PV_GRD"].element_offset(1 + 11 * 2), 3), "12 ");
    EXPECT_EQ(v.mid(PRSVAK["PV_JR2"].element_offset(1 + 11 * 2), 2), QByteArray("\x09\x00", 2));
    const store::Record m = tree.on_disk(PRSALG, tree.number);
    EXPECT_EQ(m.text(PRSALG["PK_GRDE"], 1), "P");
    EXPECT_EQ(m.text(PRSALG["PK_WAAR"], 1), "UNISA");
    EXPECT_EQ(m.text(PRSALG["PK_SHA_T"], 1), "");  // subject row 5 is blank, and it has the say
    EXPECT_EQ(tree.on_disk(PRSADD, 2).int16(PRSADD["PD_KW_PROF"], 1), 5);
}

}  // namespace
