#pragma once
// sk411_bl_prg: the Qt form of the governing body register, sgb_grid and its buttons over the
// MemberRegister behaviour, with prs_grid shown while members are made from staff records.

#include <QPushButton>
#include <QTreeWidget>
#include <QWidget>

#include "governing/member_register.h"
#include "ui/qt_dialogs.h"

namespace korvel::governing {

class MemberRegisterForm : public QWidget {
    Q_OBJECT
  public:
    MemberRegisterForm(shell::Session& session, QWidget* parent = nullptr);
    MemberRegister& behaviour() { return register_; }
    void refresh();
    QTreeWidget* grid() { return sgb_grid_; }
    QTreeWidget* staff_grid() { return prs_grid_; }

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    shell::Session& s_;
    MemberRegister register_;
    QTreeWidget* sgb_grid_;
    QTreeWidget* prs_grid_;
    QPushButton* new_record_;
    QPushButton* create_;
    QPushButton* search_;
    QPushButton* print_;
    QPushButton* data_ok_;
    QPushButton* staff_exit_;
    bool closing_ = false;
    bool filling_ = false;
};

// The entry form sk411_bl_inlees, shown modally through the dialogs.
void register_member_entry_form(ui::QtDialogs& dialogs);

}  // namespace korvel::governing
