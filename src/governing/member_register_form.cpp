// sk411_bl_prg, the Qt form of the governing body register.

#include "governing/member_register_form.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "reports/print_menu_form.h"
#include "staff/form_boxes.h"

namespace korvel::governing {

namespace {

// Enter in the grid opens the current row, as a left click does.
class EnterOpens : public QObject {
  public:
    EnterOpens(MemberRegisterForm& form) : QObject(&form), form_(form) {
        form_.grid()->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() != QEvent::KeyPress) {
            return false;
        }
        const auto* k = static_cast<QKeyEvent*>(e);
        if (k->key() != Qt::Key_Return && k->key() != Qt::Key_Enter) {
            return false;
        }
        MemberRegister& r = form_.behaviour();
        r.sgb_grid.selected = form_.grid()->indexOfTopLevelItem(form_.grid()->currentItem());
        r.sgb_grid_key_down(staff::kEnterKey);
        form_.refresh();
        return true;
    }

  private:
    MemberRegisterForm& form_;
};

}  // namespace

MemberRegisterForm::MemberRegisterForm(shell::Session& session, QWidget* parent)
    : QWidget(parent), s_(session), register_(session) {
    setObjectName(QStringLiteral("sk411_bl_prg"));
    setWindowModality(Qt::ApplicationModal);
    resize(1000, 620);
    sgb_grid_ = new QTreeWidget(this);
    sgb_grid_->setObjectName(QStringLiteral("sgb_grid"));
    sgb_grid_->setRootIsDecorated(false);
    sgb_grid_->header()->setSectionsClickable(true);
    prs_grid_ = new QTreeWidget(this);
    prs_grid_->setObjectName(QStringLiteral("prs_grid"));
    prs_grid_->setRootIsDecorated(false);
    new EnterOpens(*this);
    connect(sgb_grid_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
        register_.sgb_grid_click(sgb_grid_->indexOfTopLevelItem(item));
        refresh();
    });
    connect(sgb_grid_->header(), &QHeaderView::sectionClicked, this, [this](int column) {
        register_.sgb_grid_column_click(column);
        refresh();
    });
    connect(prs_grid_, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item, int) {
        if (!filling_) {
            register_.prs_grid_check(prs_grid_->indexOfTopLevelItem(item),
                                     item->checkState(0) == Qt::Checked);
        }
    });

    new_record_ = new QPushButton(this);
    create_ = new QPushButton(this);
    search_ = new QPushButton(this);
    print_ = new QPushButton(this);
    data_ok_ = new QPushButton(QStringLiteral("OK"), this);
    staff_exit_ = new QPushButton(QStringLiteral("EXIT"), this);
    new_record_->setObjectName(QStringLiteral("task_options_1"));
    create_->setObjectName(QStringLiteral("task_options_2"));
    search_->setObjectName(QStringLiteral("task_options_4"));
    print_->setObjectName(QStringLiteral("task_options_5"));
    data_ok_->setObjectName(QStringLiteral("data_ok"));
    staff_exit_->setObjectName(QStringLiteral("staff_exit"));
    const auto task = [this](QPushButton* b, int index) {
        connect(b, &QPushButton::clicked, this, [this, index] {
            register_.task_options_click(index);
            refresh();
        });
    };
    task(new_record_, 1);
    task(create_, 2);
    task(search_, 4);
    task(print_, 5);
    connect(data_ok_, &QPushButton::clicked, this, [this] {
        register_.data_ok_click();
        refresh();
    });
    connect(staff_exit_, &QPushButton::clicked, this, &QWidget::close);

    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {new_record_, create_, search_, print_, data_ok_}) {
        buttons->addWidget(b);
    }
    buttons->addStretch();
    buttons->addWidget(staff_exit_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(sgb_grid_, 2);
    layout->addWidget(prs_grid_, 1);
    layout->addLayout(buttons);
    // The print programs are the staff side's, as from the staff register.
    register_.show_print_chooser = [this] { reports::show_print_menu(s_, this); };
    register_.form_load();
    refresh();
}

void MemberRegisterForm::refresh() {
    filling_ = true;
    setWindowTitle(register_.caption);
    const MemberRegister::ToolTips tips = register_.tool_tips();
    const bool af = s_.afrikaans;
    new_record_->setText(af ? QStringLiteral("NUWE LID") : QStringLiteral("NEW MEMBER"));
    create_->setText(af ? QStringLiteral("SKEP VAN PERSONEEL") : QStringLiteral("FROM STAFF"));
    search_->setText(af ? QStringLiteral("SOEK") : QStringLiteral("SEARCH"));
    print_->setText(af ? QStringLiteral("DRUK") : QStringLiteral("PRINT"));
    new_record_->setToolTip(tips.task_options_new);
    create_->setToolTip(tips.task_options_create);
    search_->setToolTip(tips.task_options_search);
    print_->setToolTip(tips.task_options_print);
    new_record_->setEnabled(register_.new_record_enabled);
    create_->setEnabled(register_.new_record_enabled);
    staff::show_register_grid(sgb_grid_, register_.sgb_grid, kMemberColumns, false);
    sgb_grid_->header()->setSortIndicatorShown(true);
    sgb_grid_->header()->setSortIndicator(
        register_.sgb_grid.sort_column,
        register_.sgb_grid.ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    staff::show_register_grid(prs_grid_, register_.prs_grid, kStaffPickColumns, false);
    for (int i = 0; i < prs_grid_->topLevelItemCount(); ++i) {
        const bool on = register_.prs_grid_checked[static_cast<std::size_t>(i)];
        prs_grid_->topLevelItem(i)->setCheckState(0, on ? Qt::Checked : Qt::Unchecked);
    }
    prs_grid_->setVisible(register_.prs_grid_visible);
    prs_grid_->setEnabled(register_.prs_grid_enabled);
    data_ok_->setVisible(register_.prs_grid_visible);
    filling_ = false;
}

void MemberRegisterForm::closeEvent(QCloseEvent* event) {
    // Closing the register compacts the members' file.
    if (!closing_ && !register_.closed) {
        closing_ = true;
        register_.staff_exit_click();
    }
    event->accept();
}

}  // namespace korvel::governing
