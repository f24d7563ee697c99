#pragma once
// The Qt form of the staff register: the list view prs_grid and its buttons over the
// StaffRegister behaviour.

#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <QWidget>

#include "staff/staff_register.h"

namespace korvel::staff {

class StaffRegisterForm : public QWidget {
    Q_OBJECT
  public:
    StaffRegisterForm(shell::Session& session, bool educators, QWidget* parent = nullptr);
    StaffRegister& behaviour() { return register_; }
    // Loads the register; false when there are no staff details (the form closes).
    bool load();
    void refresh();
    QTreeWidget* grid() { return prs_grid_; }

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    shell::Session& s_;
    StaffRegister register_;
    QTreeWidget* prs_grid_;
    QLabel* staff_ops_;
    QLabel* clock_;
    QPushButton* personeel_tipe_;
    QPushButton* new_record_;
    QPushButton* search_;
    QPushButton* print_;
    QPushButton* attendance_;
    QPushButton* subjects_;
    QPushButton* roster_;
    QPushButton* staff_exit_;
    QTimer timer_;
    bool closing_ = false;
};

}  // namespace korvel::staff
