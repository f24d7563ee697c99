// The main of every test program that drives Qt widgets: one QApplication for the whole run
// (offscreen unless the caller chose a platform), with the program's window rules for every
// form and its workstation settings in a folder of the run's own, then the tests.

#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

#include "ui/form_window.h"

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    korvel::ui::FormWindows form_windows;
    app.installEventFilter(&form_windows);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
