// The kies_drukker form over its behaviour: the buttons show the behaviour's texts and colours,
// and a button that ends the choice closes the form.

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include "reports/print_target_form.h"
#include "reports/recording_device.h"
#include "ui/scripted_dialogs.h"

namespace korvel::reports {
namespace {

struct NoHost : reports::PrintTargetHost {
    void show_modal(reports::PrintTarget&) override {}
    bool choose_printer(reports::PrintJob&) override { return false; }
};

TEST(PrintTargetForm, ShowsTheChoiceAndClosesOnPrint) {
    QTemporaryDir year;
    reports::RecordingDevice device(QStringLiteral("KANTOOR"));
    ui::ScriptedDialogs dialogs;
    reports::PrintJob job(device, dialogs, {}, false);
    job.general_year_folder = year.path();
    job.state.report_name = QStringLiteral("2026 STAFF LIST");
    NoHost host;
    reports::PrintTarget behaviour(job, host, {});
    behaviour.form_load();

    PrintTargetForm form(behaviour);
    EXPECT_EQ(form.druk_ok->text(), QStringLiteral("PRINT"));
    EXPECT_EQ(form.druk_ok->toolTip(), QStringLiteral(" Print to KANTOOR"));
    EXPECT_EQ(form.druk_stop->text(), QStringLiteral("CANCEL"));
    EXPECT_EQ(form.druk_wysig->toolTip(), QStringLiteral(" Select a different printer "));
    EXPECT_EQ(form.drukwerk_naam->text(), QStringLiteral("2026 STAFF LIST"));
    EXPECT_TRUE(form.kies_mono->styleSheet().contains(QStringLiteral("255, 0, 0")));

    form.kies_kleur->click();
    EXPECT_TRUE(form.kies_kleur->styleSheet().contains(QStringLiteral("255, 0, 0")));
    EXPECT_TRUE(form.kies_mono->styleSheet().isEmpty());

    QTimer::singleShot(0, form.druk_ok, &QPushButton::click);
    EXPECT_EQ(form.exec(), QDialog::Accepted);
    EXPECT_EQ(behaviour.ending, reports::PrintTarget::Ending::Print);
    EXPECT_TRUE(reports::read_colour_printing(year.path()));
}

TEST(PrintTargetForm, ClosingTheWindowCancels) {
    reports::RecordingDevice device;
    ui::ScriptedDialogs dialogs;
    reports::PrintJob job(device, dialogs);
    NoHost host;
    reports::PrintTarget behaviour(job, host, {});
    behaviour.form_load();
    PrintTargetForm form(behaviour);
    QTimer::singleShot(0, &form, &QDialog::reject);
    EXPECT_EQ(form.exec(), QDialog::Rejected);
    EXPECT_EQ(behaviour.ending, reports::PrintTarget::Ending::Cancel);
    EXPECT_FALSE(behaviour.print_confirmed);
}

}  // namespace
}  // namespace korvel::reports
