#pragma once
// Staff forms over the demo tree of this year on drive C:, offscreen, in English, with the
// dialogs a test chooses: scripted ones, or the real Qt dialogs.

#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#include "shell/demo_tree.h"
#include "shell/folders.h"
#include "shell/session.h"
#include "ui/scripted_dialogs.h"

namespace korvel::testing {

template <typename DialogsType>
class DemoForms : public ::testing::Test {
  protected:
    DemoForms() : session(dialogs, platform::DriveMap::explicit_map({{"C:", tmp.path()}})) {
        const int year = QDate::currentDate().year();
        ui::UnattendedDialogs demo_answers;
        shell::write_demo_tree(tmp.path(), year, demo_answers);
        session.folders = shell::default_folders("C:", QString::number(year));
        session.ledger_year = QString::number(year);
        session.afrikaans = false;
        session.open_staff_file();
    }

    QTemporaryDir tmp;
    DialogsType dialogs;
    shell::Session session;
};

}  // namespace korvel::testing
