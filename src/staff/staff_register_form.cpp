#include "staff/staff_register_form.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "attendance/attendance_register_form.h"
#include "reports/print_menu_form.h"
#include "staff/form_boxes.h"

namespace korvel::staff {

namespace {

QColor colour_of(int bgr) {
    return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF);
}

// Enter in the grid opens the current row, as a left click does.
class GridKeys : public QObject {
  public:
    GridKeys(StaffRegisterForm& form, QTreeWidget& grid)
        : QObject(&form), form_(form), grid_(grid) {
        grid_.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() != QEvent::KeyPress) {
            return false;
        }
        const auto* k = static_cast<QKeyEvent*>(e);
        if (k->key() != Qt::Key_Return && k->key() != Qt::Key_Enter) {
            return false;
        }
        StaffRegister& r = form_.behaviour();
        r.prs_grid.selected = grid_.indexOfTopLevelItem(grid_.currentItem());
        r.prs_grid_key_down(kEnterKey);
        form_.refresh();
        return true;
    }

  private:
    StaffRegisterForm& form_;
    QTreeWidget& grid_;
};

}  // namespace

StaffRegisterForm::StaffRegisterForm(shell::Session& session, bool educators, QWidget* parent)
    : QWidget(parent), s_(session), register_(session, educators) {
    setObjectName(QStringLiteral("sk411_prg"));
    // Opened from the menu, the register keeps the menu waiting until it closes.
    setWindowModality(Qt::ApplicationModal);
    resize(1100, 650);
    staff_ops_ = new QLabel(this);
    QFont big = staff_ops_->font();
    big.setPointSize(big.pointSize() + 4);
    big.setBold(true);
    staff_ops_->setFont(big);
    clock_ = new QLabel(this);
    personeel_tipe_ = new QPushButton(this);
    personeel_tipe_->setObjectName(QStringLiteral("personeel_tipe"));
    personeel_tipe_->setFlat(true);

    prs_grid_ = new QTreeWidget(this);
    prs_grid_->setObjectName(QStringLiteral("prs_grid"));
    prs_grid_->setRootIsDecorated(false);
    prs_grid_->setColumnCount(kGridColumns);
    prs_grid_->setSortingEnabled(false);  // the behaviour sorts
    prs_grid_->header()->setSectionsClickable(true);
    new GridKeys(*this, *prs_grid_);
    // A left click on a row opens it. The opened form is modal, so the second click of a double
    // click finds it in front: a double click opens the row once.
    connect(prs_grid_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
        register_.prs_grid_click(prs_grid_->indexOfTopLevelItem(item));
        refresh();
    });
    connect(prs_grid_->header(), &QHeaderView::sectionClicked, this, [this](int column) {
        register_.prs_grid_column_click(column);
        refresh();
    });

    new_record_ = new QPushButton(this);
    search_ = new QPushButton(this);
    print_ = new QPushButton(this);
    attendance_ = new QPushButton(this);
    subjects_ = new QPushButton(this);
    roster_ = new QPushButton(this);
    staff_exit_ = new QPushButton(this);
    new_record_->setObjectName(QStringLiteral("task_options_1"));
    search_->setObjectName(QStringLiteral("task_options_2"));
    print_->setObjectName(QStringLiteral("task_options_5"));
    roster_->setObjectName(QStringLiteral("dir_disp_roster"));
    staff_exit_->setObjectName(QStringLiteral("staff_exit"));
    connect(new_record_, &QPushButton::clicked, this, [this] {
        register_.task_options_click(1);
        refresh();
    });
    connect(search_, &QPushButton::clicked, this, [this] {
        register_.task_options_click(2);
        refresh();
    });
    connect(print_, &QPushButton::clicked, this, [this] { register_.task_options_click(5); });
    connect(attendance_, &QPushButton::clicked, this, [this] { register_.alg_opsies_click(6); });
    connect(subjects_, &QPushButton::clicked, this,
            [this] { register_.laai_vakke_van_admin_click(); });
    connect(roster_, &QPushButton::clicked, this, [this] { register_.dir_disp_roster_click(); });
    connect(staff_exit_, &QPushButton::clicked, this, &QWidget::close);
    connect(personeel_tipe_, &QPushButton::clicked, this, [this] {
        register_.personeel_tipe_click();
        refresh();
    });

    auto* top = new QHBoxLayout;
    top->addWidget(staff_ops_);
    top->addStretch();
    top->addWidget(personeel_tipe_);
    top->addStretch();
    top->addWidget(clock_);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {new_record_, search_, print_, attendance_, subjects_, roster_}) {
        buttons->addWidget(b);
    }
    buttons->addStretch();
    buttons->addWidget(staff_exit_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(prs_grid_, 1);
    layout->addLayout(buttons);

    register_.show_print_chooser = [this] { reports::show_print_menu(s_, this); };
    register_.open_attendance = [this](bool educators) {
        attendance::AttendanceRegisterForm form(s_, educators, this);
        form.exec();
    };

    timer_.setInterval(1000);
    connect(&timer_, &QTimer::timeout, this, [this] {
        register_.timer_tick(QTime::currentTime());
        clock_->setText(register_.clock_text);
        QPalette p = personeel_tipe_->palette();
        p.setColor(QPalette::ButtonText, colour_of(register_.personeel_tipe_colour));
        personeel_tipe_->setPalette(p);
    });
}

bool StaffRegisterForm::load() {
    if (!register_.form_load()) {
        return false;
    }
    refresh();
    timer_.start();
    return true;
}

void StaffRegisterForm::refresh() {
    setWindowTitle(register_.staff_ops_caption);
    staff_ops_->setText(register_.staff_ops_caption);
    personeel_tipe_->setText(register_.personeel_tipe_caption);
    const StaffRegister::ToolTips tips = register_.tool_tips();
    const bool af = s_.afrikaans;
    new_record_->setText(af ? QStringLiteral("NUWE REKORD") : QStringLiteral("NEW RECORD"));
    search_->setText(af ? QStringLiteral("SOEK") : QStringLiteral("SEARCH"));
    print_->setText(af ? QStringLiteral("DRUK") : QStringLiteral("PRINT"));
    attendance_->setText(af ? QStringLiteral("BYWONING") : QStringLiteral("ATTENDANCE"));
    subjects_->setText(af ? QStringLiteral("VAKKE") : QStringLiteral("SUBJECTS"));
    roster_->setText(af ? QStringLiteral("ROOSTER") : QStringLiteral("TIME TABLE"));
    new_record_->setToolTip(tips.task_options_new);
    search_->setToolTip(tips.task_options_search);
    print_->setToolTip(tips.task_options_print);
    attendance_->setToolTip(tips.alg_opsies_attendance);
    subjects_->setToolTip(tips.laai_vakke_van_admin);
    roster_->setToolTip(tips.dir_disp_roster);
    prs_grid_->setToolTip(tips.prs_grid);
    staff_exit_->setText(tips.staff_exit);
    staff_exit_->setToolTip(tips.staff_exit);
    // The forms of later work stay disabled until they are there.
    new_record_->setEnabled(register_.new_record_enabled);
    print_->setEnabled(bool(register_.show_print_chooser));
    attendance_->setEnabled(bool(register_.open_attendance));
    subjects_->setEnabled(bool(register_.open_subject_rebuild));

    show_register_grid(prs_grid_, register_.prs_grid, kGridColumns, true);
}

void StaffRegisterForm::closeEvent(QCloseEvent* event) {
    // Closing the register compacts the staff files.
    if (!closing_ && !register_.closed) {
        closing_ = true;
        register_.staff_exit_click();
    }
    event->accept();
}

}  // namespace korvel::staff
