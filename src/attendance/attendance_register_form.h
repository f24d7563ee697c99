#pragma once
// The Qt form of the attendance register: the month list, the month grid, the reason list and
// the option list over the AttendanceRegister behaviour.

#include <QDialog>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>

#include "attendance/attendance_register.h"
#include "ui/frozen_columns.h"
#include "ui/qt_dialogs.h"

namespace korvel::attendance {

class AttendanceRegisterForm : public QDialog {
    Q_OBJECT
  public:
    AttendanceRegisterForm(shell::Session& session, bool educators, QWidget* parent = nullptr);
    AttendanceRegister& behaviour() { return register_; }
    void refresh();
    QTableWidget* grid() { return afw_grid_; }
    QListWidget* months() { return maand_lys_; }
    QListWidget* reasons() { return kode_lys_; }
    QTableWidget* calendar() { return maand_kalender_; }
    // Clicks the option of ag_opsies at index, as the pop-up list would after a right click.
    void choose_option(int index);

  protected:
    void reject() override;  // Escape and the close box leave through the exit
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void paint_grid();  // texts and colours of the cells
    void size_columns();
    void show_options(const QPoint& global);
    void show_calendar_options(const QPoint& global);
    void leave();

    AttendanceRegister register_;
    QListWidget* maand_lys_;
    QTableWidget* afw_grid_;
    ui::FrozenColumns* afw_frozen_ = nullptr;  // post number and name stay while the days scroll
    QListWidget* kode_lys_;
    QPushButton* calendar_;
    QPushButton* kodes_;
    QPushButton* grid_sort_;
    QPushButton* staff_exit_;
    QWidget* maand_kalender_raam_;
    QTableWidget* maand_kalender_;
};

// Registers the register as the modal child form sk417_prg the staff side opens.
void register_attendance_register_form(ui::QtDialogs& dialogs);

}  // namespace korvel::attendance
