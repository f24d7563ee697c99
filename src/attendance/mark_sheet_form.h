#pragma once
// The Qt forms of the attendance mark sheet: the staff grid with the From and To boxes
// (sk425_prg) and the options (sk425_opsies) over the MarkSheet behaviour.

#include <QDialog>

#include "attendance/mark_sheet.h"
#include "ui/qt_dialogs.h"

class QLabel;
class QTableWidget;

namespace korvel::attendance {

class MarkSheetForm : public QDialog {
    Q_OBJECT
  public:
    MarkSheetForm(MarkSheet& sheet, QWidget* parent = nullptr);
    QTableWidget* grid() { return prs_grid_; }
    void refresh();

  private:
    MarkSheet& sheet_;
    QTableWidget* prs_grid_;
    std::array<QLabel*, 3> pos_data_{};
};

// sk425_prg from the print menu, and sk425_opsies shown by it.
void register_mark_sheet_forms(ui::QtDialogs& dialogs);

}  // namespace korvel::attendance
