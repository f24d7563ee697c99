#pragma once
// The Qt forms of the tuition list (sk426_prg) and the qualification list (sk427_prg): the
// selection the staff lists share, shown through the dialogs over their behaviour.

#include <QDialog>
#include <QHBoxLayout>
#include <functional>

#include "ui/qt_dialogs.h"

namespace korvel::reports {

// The OK and exit buttons of a report form: OK runs the click, exit closes the dialog.
QHBoxLayout* ok_and_exit(QDialog& dialog, const QString& ok_name,
                         const std::function<void()>& ok_click, const QString& ok_tip = {});

void register_selection_lists_forms(ui::QtDialogs& dialogs);

}  // namespace korvel::reports
