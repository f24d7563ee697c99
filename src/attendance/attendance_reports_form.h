#pragma once
// The Qt form of the attendance reports (sk423_prg): the month list, the date frame, the staff
// filter and the four buttons over the AttendanceReports behaviour; the leave totals on screen.

#include <QDialog>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <array>

#include "attendance/attendance_reports.h"
#include "attendance/leave_totals.h"
#include "ui/qt_dialogs.h"

class QRadioButton;

namespace korvel::attendance {

class AttendanceReportsForm : public QDialog {
    Q_OBJECT
  public:
    AttendanceReportsForm(AttendanceReports& reports, QWidget* parent = nullptr);
    void refresh();
    QListWidget* months() { return maand_lys_; }
    QPushButton* button(int index) { return dr_ok_[size_t(index)]; }

  private:
    AttendanceReports& reports_;
    QListWidget* maand_lys_;
    std::array<QPushButton*, 3> jr_data_{};
    std::array<QRadioButton*, 3> kies_administratief_{};
    std::array<QPushButton*, kLeaveTotals + 1> dr_ok_{};
};

// The leave totals on screen: the grid, sorted by a click on a heading, and the counted days of
// the person clicked; its print button sends them to the print target.
class LeaveTotalsForm : public QDialog {
    Q_OBJECT
  public:
    LeaveTotalsForm(AttendanceReports& reports, QWidget* parent = nullptr);
    QTableWidget* grid() { return grid_; }
    QListWidget* days() { return days_; }

  private:
    void show_days(int row);
    LeaveTotals totals_;
    QTableWidget* grid_;
    QListWidget* days_;
};

// The form opened from the attendance register's print button.
void show_attendance_reports(shell::Session& session, QWidget* parent);
void register_attendance_reports_form(ui::QtDialogs& dialogs);

}  // namespace korvel::attendance
