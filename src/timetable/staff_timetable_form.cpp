// sk622_prg: the staff timetable on the screen.
#include "timetable/staff_timetable_form.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "reports/print_target_host.h"
#include "reports/school_report.h"
#include "shell/session.h"
#include "timetable/staff_timetable.h"

namespace korvel::timetable {

namespace {

void show_timetable(StaffTimetable& form, QWidget* parent) {
    shell::Session& session = form.session();
    QDialog dialog(parent);
    dialog.setObjectName(form.form_name());
    dialog.setWindowTitle(form.caption);

    reports::QtPrintTargetHost host(&dialog);
    reports::PrintJob job(host.job_device(), session.dialogs(), reports::report_school(session),
                          session.afrikaans);
    job.general_year_folder = session.fs().native(session.folders.general_year);
    form.job = &job;
    const QString workstation = session.fs().native(session.folders.workstation);
    form.choose_target = [&](reports::PrintJob& j) {
        return reports::ask_print_target(j, host, workstation);
    };

    auto* layout = new QHBoxLayout(&dialog);
    auto* list = new QListWidget(&dialog);
    list->setObjectName(QStringLiteral("pos_lys"));
    for (const RosterPerson& p : form.pos_lys)
        list->addItem(p.text);
    layout->addWidget(list);
    auto* side = new QVBoxLayout;
    layout->addLayout(side, 1);
    auto* heading = new QLabel(&dialog);
    side->addWidget(heading);
    auto* grid = new QTableWidget(form.days, form.periods, &dialog);
    grid->setObjectName(QStringLiteral("rstr_grid"));
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    // Tab leaves the grid for the buttons; the arrows walk its cells.
    grid->setTabKeyNavigation(false);
    grid->setHorizontalHeaderLabels(form.column_heads);
    grid->setVerticalHeaderLabels(form.row_heads);
    side->addWidget(grid, 1);
    side->addWidget(new QLabel(form.skl_rstr, &dialog));

    const auto refresh = [&] {
        heading->setText(form.heading);
        for (int d = 0; d < form.days; ++d) {
            for (int p = 0; p < form.periods; ++p) {
                const size_t at = size_t(d * form.periods + p);
                auto* item = new QTableWidgetItem(form.cells[at]);
                item->setBackground(reports::colour_from_bgr(form.cell_colours[at]));
                grid->setItem(d, p, item);
            }
        }
        grid->resizeColumnsToContents();
    };
    QObject::connect(list, &QListWidget::currentRowChanged, &dialog, [&](int row) {
        form.pos_lys_click(row);
        refresh();
    });
    QObject::connect(grid, &QTableWidget::cellClicked, &dialog,
                     [&](int d, int p) { form.rstr_grid_click(d + 1, p + 1); });
    QObject::connect(grid, &QTableWidget::cellDoubleClicked, &dialog, [&](int d, int p) {
        form.rstr_grid_dbl_click(d + 1, p + 1);
        refresh();
    });

    auto* buttons = new QHBoxLayout;
    for (int action : {kDeleteTimetable, kPrintTimetable, kSwapPeriods}) {
        auto* b = new QPushButton(form.rostr_ops[size_t(action)], &dialog);
        b->setObjectName(QStringLiteral("rostr_ops_%1").arg(action));
        // Enter in the list or the grid presses no button: the first one clears the timetable.
        b->setAutoDefault(false);
        QObject::connect(b, &QPushButton::clicked, &dialog, [&, action] {
            form.rostr_ops_click(action);
            refresh();
        });
        buttons->addWidget(b);
    }
    auto* exit = new QPushButton(QStringLiteral("X"), &dialog);
    exit->setObjectName(QStringLiteral("exit"));
    exit->setAutoDefault(false);
    QObject::connect(exit, &QPushButton::clicked, &dialog, &QDialog::accept);
    buttons->addWidget(exit);
    side->addLayout(buttons);

    if (form.selected >= 0)
        list->setCurrentRow(form.selected);
    refresh();
    dialog.resize(1100, 520);
    dialog.exec();
    form.job = nullptr;
    form.choose_target = nullptr;
}

}  // namespace

void register_staff_timetable_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk622_prg"), [](ui::ChildForm& f, QWidget* p) {
        show_timetable(static_cast<StaffTimetable&>(f), p);
    });
}

}  // namespace korvel::timetable
