#pragma once
// Shared pieces of the report tests: a GUI application for fonts and pictures (offscreen),
// a fixed clock, and a job on a recording device with a known school.

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <memory>

#include "reports/recording_device.h"
#include "reports/report_engine.h"
#include "ui/scripted_dialogs.h"

namespace korvel::reports::testing {

class GuiEnvironment : public ::testing::Environment {
  public:
    void SetUp() override {
        if (!QGuiApplication::instance()) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
            static int argc = 1;
            static char name[] = "test_reports";
            static char* argv[] = {name, nullptr};
            app_ = std::make_unique<QGuiApplication>(argc, argv);
        }
    }
    void TearDown() override { app_.reset(); }

  private:
    std::unique_ptr<QGuiApplication> app_;
};

inline ReportSchool sample_school() {
    ReportSchool s;
    s.name = QStringLiteral("HOëRSKOOL DUINEVELD");
    s.version = QStringLiteral("4.2.17");
    s.operating_system = QStringLiteral("Debian GNU/Linux 12");
    s.program_name = QStringLiteral("KORVEL");
    return s;
}

inline QDateTime fixed_moment() {
    return QDateTime(QDate(2026, 3, 4), QTime(9, 5, 7));
}

struct JobFixture : ::testing::Test {
    RecordingDevice device;
    ui::ScriptedDialogs dialogs;
    PrintJob job{device, dialogs, sample_school(), true};

    JobFixture() {
        job.clock = [] { return fixed_moment(); };
        job.state.report_name = QStringLiteral("2026 PERSONEELLYS");
    }
    // As the print target does when PRINT is pressed.
    void start() {
        job.print_setup();
        job.state.page_pending = true;
    }
};

}  // namespace korvel::reports::testing
