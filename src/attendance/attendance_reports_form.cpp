// sk423_prg
#include "attendance/attendance_reports_form.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include "attendance/mark_sheet_form.h"
#include "reports/print_menu.h"
#include "reports/print_target_host.h"
#include "shell/helpers.h"
#include "shell/session.h"

namespace korvel::attendance {

namespace {
constexpr int kPostColumn = 0;
constexpr int kNumberRole = Qt::UserRole;

// Numbers sort by value in the leave totals grid.
class NumberItem : public QTableWidgetItem {
  public:
    using QTableWidgetItem::QTableWidgetItem;
    bool operator<(const QTableWidgetItem& other) const override {
        return data(kNumberRole).toInt() < other.data(kNumberRole).toInt();
    }
};
}  // namespace

AttendanceReportsForm::AttendanceReportsForm(AttendanceReports& reports, QWidget* parent)
    : QDialog(parent), reports_(reports) {
    setObjectName(reports.form_name());
    auto* layout = new QHBoxLayout(this);
    maand_lys_ = new QListWidget(this);
    maand_lys_->setObjectName(QStringLiteral("maand_lys"));
    for (const ListEntry& e : reports_.maand_lys.items) {
        maand_lys_->addItem(e.text);
    }
    layout->addWidget(maand_lys_);
    auto* side = new QVBoxLayout;
    auto* frame = new QGroupBox(this);  // datum_raam
    auto* dates = new QVBoxLayout(frame);
    for (int i : {1, 2}) {
        dates->addWidget(new QLabel(reports_.jr_teks[size_t(i)], frame));
        jr_data_[size_t(i)] = new QPushButton(frame);
        dates->addWidget(jr_data_[size_t(i)]);
        connect(jr_data_[size_t(i)], &QPushButton::clicked, this, [this, i] {
            reports_.jr_data_click(i);
            refresh();
        });
    }
    side->addWidget(frame);
    auto* admin = new QGroupBox(reports_.administratief_caption, this);
    auto* admin_layout = new QVBoxLayout(admin);
    for (int i = 0; i < 3; ++i) {
        kies_administratief_[size_t(i)] =
            new QRadioButton(reports_.administratief_captions[size_t(i)], admin);
        admin_layout->addWidget(kies_administratief_[size_t(i)]);
        connect(kies_administratief_[size_t(i)], &QRadioButton::toggled, this, [this, i](bool on) {
            if (on) {
                reports_.kies_administratief = AdminChoice(i);
            }
        });
    }
    side->addWidget(admin);
    for (int i = kMonthlySummary; i <= kLeaveTotals; ++i) {
        dr_ok_[size_t(i)] = new QPushButton(reports_.dr_ok_captions[size_t(i)], this);
        side->addWidget(dr_ok_[size_t(i)]);
        connect(dr_ok_[size_t(i)], &QPushButton::clicked, this, [this, i] {
            reports_.dr_ok_click(i);
            refresh();
        });
    }
    auto* exit = new QPushButton(QStringLiteral("X"), this);
    exit->setObjectName(QStringLiteral("data_exit"));
    connect(exit, &QPushButton::clicked, this, &QDialog::accept);
    side->addWidget(exit);
    layout->addLayout(side);
    // A month is chosen when it is selected, by a click or the arrow keys: the list marking its
    // first month as current when it takes the focus chooses nothing, and the date boxes keep
    // their prefill.
    connect(maand_lys_, &QListWidget::itemSelectionChanged, this, [this] {
        const QList<QListWidgetItem*> picked = maand_lys_->selectedItems();
        if (picked.isEmpty()) {
            return;
        }
        reports_.maand_lys_click(maand_lys_->row(picked.first()));
        refresh();
    });
    setWindowTitle(reports_.caption);
    refresh();
}

void AttendanceReportsForm::refresh() {
    maand_lys_->setVisible(reports_.maand_lys_visible);
    for (int i : {1, 2}) {
        jr_data_[size_t(i)]->setText(shell::date_to_text(reports_.jr_data[size_t(i)]));
    }
    kies_administratief_[size_t(reports_.kies_administratief)]->setChecked(true);
}

LeaveTotalsForm::LeaveTotalsForm(AttendanceReports& reports, QWidget* parent)
    : QDialog(parent), totals_(reports.leave_totals()) {
    setObjectName(QStringLiteral("verlof_totale"));
    setWindowTitle(reports.leave_totals_title());
    const reports::PrintGrid g = leave_totals_grid(totals_, reports.session().afrikaans);
    auto* layout = new QVBoxLayout(this);
    grid_ = new QTableWidget(int(totals_.people.size()), g.cols(), this);
    QStringList heads;
    for (int c = 0; c < g.cols(); ++c) {
        heads << reports::without_turn_mark(g.text(0, c));
    }
    grid_->setHorizontalHeaderLabels(heads);
    grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    // The people's rows sort by a click on a heading; the totals row stands below the grid.
    for (int r = 0; r < int(totals_.people.size()); ++r) {
        for (int c = 0; c < g.cols(); ++c) {
            auto* item =
                c < 2 ? new QTableWidgetItem(g.text(r + 1, c)) : new NumberItem(g.text(r + 1, c));
            item->setData(kNumberRole, g.text(r + 1, c).toInt());
            if (c == kPostColumn) {
                item->setData(kNumberRole + 1, r);
            }
            grid_->setItem(r, c, item);
        }
    }
    // The rows stay in post number order until a heading is clicked.
    grid_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    grid_->setSortingEnabled(true);
    grid_->resizeColumnsToContents();
    // The people take the room; the chosen person's days are a few lines below.
    layout->addWidget(grid_, 3);
    QStringList total_line;
    for (int c = 1; c < g.cols(); ++c) {
        total_line << g.text(g.rows() - 1, c);
    }
    layout->addWidget(new QLabel(total_line.join(QStringLiteral("  ")), this));
    days_ = new QListWidget(this);
    layout->addWidget(days_, 1);
    // The days follow the current row, whether it moved by a click or by the arrow keys.
    connect(grid_, &QTableWidget::currentCellChanged, this,
            [this](int row, int, int, int) { show_days(row); });
    auto* buttons = new QHBoxLayout;
    auto* print = new QPushButton(reports.session().tr("DRUK", "PRINT"), this);
    connect(print, &QPushButton::clicked, this, [&reports] { reports.print_leave_totals(); });
    auto* exit = new QPushButton(QStringLiteral("X"), this);
    exit->setObjectName(QStringLiteral("data_exit"));
    connect(exit, &QPushButton::clicked, this, &QDialog::accept);
    buttons->addWidget(print);
    buttons->addWidget(exit);
    layout->addLayout(buttons);
    resize(900, 600);
}

void LeaveTotalsForm::show_days(int row) {
    days_->clear();
    const QTableWidgetItem* item = grid_->item(row, kPostColumn);
    if (item == nullptr) {
        return;
    }
    const int person = item->data(kNumberRole + 1).toInt();
    if (person < 0 || person >= int(totals_.people.size())) {
        return;
    }
    for (const LeaveDay& d : totals_.people[size_t(person)].days) {
        days_->addItem(shell::date_to_text(d.date) + QStringLiteral("  ") + QChar(uchar(d.letter)) +
                       QStringLiteral("  ") + totals_.reason_of(d));
    }
}

namespace {
void run_form(AttendanceReports& reports, QWidget* parent) {
    reports.form_load();
    reports.show_leave_totals = [parent](AttendanceReports& r) {
        LeaveTotalsForm form(r, parent);
        form.exec();
    };
    AttendanceReportsForm form(reports, parent);
    form.exec();
}
}  // namespace

void show_attendance_reports(shell::Session& session, QWidget* parent) {
    reports::QtReportJob print(session, parent);
    AttendanceReports reports(session, print.job, &print.host);
    run_form(reports, parent);
}

void register_attendance_reports_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk423_prg"), [](ui::ChildForm& f, QWidget* p) {
        auto& request = static_cast<reports::ReportFormRequest&>(f);
        AttendanceReports reports(request.session, request.job, request.host);
        run_form(reports, p);
    });
    register_mark_sheet_forms(dialogs);
}

}  // namespace korvel::attendance
