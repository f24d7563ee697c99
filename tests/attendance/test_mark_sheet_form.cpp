// The mark sheet driven through its two Qt forms, offscreen: a range picked in the staff grid,
// the options typed and confirmed, the statements printed to the recording device.

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include "attendance/mark_sheet_form.h"
#include "reports/recording_device.h"
#include "staff/demo_forms_fixture.h"
#include "store/quoted_text.h"

using namespace korvel;

using MarkSheetOnDemo = korvel::testing::DemoForms<ui::QtDialogs>;

TEST_F(MarkSheetOnDemo, OptionsConfirmedAreKeptAndTheRangePrints) {
    attendance::register_mark_sheet_forms(dialogs);
    ui::ScriptedDialogs job_dialogs;
    reports::RecordingDevice device;
    reports::PrintJob job(device, job_dialogs);
    attendance::MarkSheet sheet(session, job);
    sheet.choose_target = [](reports::PrintJob& j) {
        j.print_setup();
        j.state.page_pending = true;
        return true;
    };
    sheet.form_load();
    attendance::MarkSheetForm form(sheet);
    form.show();
    QTableWidget* grid = form.grid();
    ASSERT_GE(grid->rowCount(), 3);
    for (int row : {0, 2}) {
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                          grid->visualRect(grid->model()->index(row, 1)).center());
    }
    EXPECT_EQ(sheet.range.selected_rows(), (std::vector<int>{0, 1, 2}));

    bool played = false;
    QTimer::singleShot(100, [&] {
        auto* options = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(options, nullptr);
        played = options->objectName() == "sk425_opsies";
        const auto type = [options](const char* box, const QString& text) {
            auto* e = options->findChild<QLineEdit*>(box);
            ASSERT_NE(e, nullptr) << box;
            e->selectAll();
            QTest::keyClicks(e, text);
        };
        type("ps_data_8", "TEL 012 345 6789");
        type("ps_data_10", "BYWONING WAS GOED");
        options->findChild<QPushButton*>("data_ok")->click();
    });
    form.findChild<QPushButton*>("data_ok")->click();
    ASSERT_TRUE(played);

    // The six values in their order, read back as the options form reads them.
    const auto bytes = session.fs().read_all(session.folders.staff + "\\sb_opmerkings.txt");
    ASSERT_TRUE(bytes.has_value());
    quoted::Reader reader(*bytes);
    QStringList saved;
    for (int i = 0; i < 6; ++i)
        saved << reader.read_string().value_or("<none>");
    EXPECT_EQ(saved, (QStringList{sheet.opsies.ps_data[4], sheet.opsies.ps_data[5],
                                  "TEL 012 345 6789", "", "BYWONING WAS GOED", ""}));

    // A statement a person of the three, each with the comment and the contact line.
    const QString printed = device.texts().join(u'\n');
    EXPECT_EQ(printed.count("BYWONING WAS GOED"), 3) << printed.toStdString();
    EXPECT_EQ(printed.count("TEL 012 345 6789"), 3);
    EXPECT_FALSE(session.afrikaans);  // the statements' languages gave the program's back
}
