#pragma once
// The Qt forms of the year-end closing (evj_personeel) and of the year chooser
// (rekords_van_jaar), bound to their behaviour classes.

#include <QString>
#include <QWidget>
#include <functional>

#include "shell/session.h"
#include "ui/qt_dialogs.h"

namespace korvel::yearend {

// The closing as a child form of the menu; menu_year_change is the menu's own year change,
// handed on to the year chooser.
QWidget* open_year_end(shell::Session& session, QWidget* parent,
                       std::function<void(const QString&)> menu_year_change);

// The year chooser, shown modally through the dialogs.
void register_year_choice_form(ui::QtDialogs& dialogs);

}  // namespace korvel::yearend
