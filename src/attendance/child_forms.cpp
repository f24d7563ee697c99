#include "attendance/child_forms.h"

#include <QDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "attendance/attendance_form.h"
#include "attendance/leave_capture.h"
#include "attendance/reason_codes.h"

namespace korvel::attendance {

namespace {

void show_reason_codes(ReasonCodes& codes, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(codes.form_name());
    auto* grid = new QTableWidget(&dialog);
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->verticalHeader()->hide();
    grid->horizontalHeader()->hide();
    auto* box1 = new QLineEdit(&dialog);
    auto* box2 = new QLineEdit(&dialog);
    box1->setMaxLength(25);
    box2->setMaxLength(25);
    auto* ok = new QPushButton(QStringLiteral("OK"), &dialog);
    auto* add = new QPushButton(&dialog);
    auto* remove = new QPushButton(&dialog);
    auto* print = new QPushButton(&dialog);
    auto* save = new QPushButton(&dialog);
    auto* exit = new QPushButton(QStringLiteral("X"), &dialog);
    print->setEnabled(bool(codes.print_code_list));

    const auto refresh = [&] {
        dialog.setWindowTitle(codes.caption);
        add->setText(codes.task_new_caption);
        remove->setText(codes.task_delete_caption);
        print->setText(QStringLiteral("DRUK / PRINT"));
        save->setText(QStringLiteral("OK"));
        const CellGrid& g = codes.rde_grid;
        grid->setRowCount(g.rows());
        grid->setColumnCount(g.cols());
        for (int r = 0; r < g.rows(); ++r) {
            for (int c = 0; c < g.cols(); ++c) {
                grid->setItem(r, c, new QTableWidgetItem(g.text(r, c)));
            }
        }
        grid->resizeColumnsToContents();
        box1->setText(codes.sbi_kde2[1]);
        box2->setText(codes.sbi_kde2[2]);
        for (QWidget* w : {static_cast<QWidget*>(box1), static_cast<QWidget*>(box2),
                           static_cast<QWidget*>(ok)}) {
            w->setVisible(codes.kde_frme_visible);
        }
        if (codes.closed) {
            dialog.accept();
        }
    };
    QObject::connect(grid, &QTableWidget::cellClicked, &dialog, [&](int row, int) {
        codes.rde_grid_click(row);
        refresh();
    });
    QObject::connect(box1, &QLineEdit::textEdited, &dialog, [&](const QString& t) {
        codes.sbi_kde2_change(1, t);
        box1->setText(codes.sbi_kde2[1]);
    });
    QObject::connect(box2, &QLineEdit::textEdited, &dialog, [&](const QString& t) {
        codes.sbi_kde2_change(2, t);
        box2->setText(codes.sbi_kde2[2]);
    });
    QObject::connect(ok, &QPushButton::clicked, &dialog, [&] {
        codes.data_ok_click();
        refresh();
    });
    QObject::connect(add, &QPushButton::clicked, &dialog, [&] {
        codes.task_options_click(1);
        refresh();
    });
    QObject::connect(remove, &QPushButton::clicked, &dialog, [&] {
        codes.task_options_click(4);
        refresh();
    });
    QObject::connect(print, &QPushButton::clicked, &dialog, [&] { codes.task_options_click(5); });
    QObject::connect(save, &QPushButton::clicked, &dialog, [&] {
        codes.kodes_ok_click();
        refresh();
    });
    QObject::connect(exit, &QPushButton::clicked, &dialog, [&] {
        codes.admin_exit_click();
        dialog.accept();
    });

    auto* boxes = new QHBoxLayout;
    boxes->addWidget(box1);
    boxes->addWidget(box2);
    boxes->addWidget(ok);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {add, remove, print, save}) {
        buttons->addWidget(b);
    }
    buttons->addStretch();
    buttons->addWidget(exit);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(grid, 1);
    layout->addLayout(boxes);
    layout->addLayout(buttons);
    dialog.resize(620, 480);
    codes.form_load();
    refresh();
    dialog.exec();
}

void show_leave_capture(LeaveCapture& leave, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(leave.form_name());
    auto* info = new QLabel(&dialog);
    QLabel* labels[3] = {nullptr, new QLabel(&dialog), new QLabel(&dialog)};
    QPushButton* dates[3] = {nullptr, new QPushButton(&dialog), new QPushButton(&dialog)};
    auto* heading = new QLabel(&dialog);
    auto* reasons = new QListWidget(&dialog);
    auto* kodes = new QPushButton(QStringLiteral("..."), &dialog);
    auto* ok = new QPushButton(QStringLiteral("OK"), &dialog);
    auto* exit = new QPushButton(QStringLiteral("X"), &dialog);

    const auto refresh = [&] {
        dialog.setWindowTitle(leave.caption);
        info->setText(leave.info);
        heading->setText(leave.kode_lys_heading);
        for (int i = 1; i <= 2; ++i) {
            labels[i]->setText(leave.data_teks[static_cast<std::size_t>(i)]);
            dates[i]->setText(leave.prs_data[static_cast<std::size_t>(i)]);
        }
        reasons->clear();
        for (const ListEntry& e : leave.kode_lys.items) {
            reasons->addItem(e.text);
        }
        if (leave.kode_lys.list_index >= 0 && leave.kode_lys.list_index < reasons->count()) {
            reasons->setCurrentRow(leave.kode_lys.list_index);
        }
    };
    for (int i = 1; i <= 2; ++i) {
        QObject::connect(dates[i], &QPushButton::clicked, &dialog, [&, i] {
            leave.prs_data_click(i);
            refresh();
        });
    }
    QObject::connect(reasons, &QListWidget::itemDoubleClicked, &dialog, [&](QListWidgetItem* item) {
        leave.kode_lys_dbl_click(reasons->row(item));
        refresh();
    });
    QObject::connect(kodes, &QPushButton::clicked, &dialog, [&] {
        leave.kodes_click();
        refresh();
    });
    QObject::connect(ok, &QPushButton::clicked, &dialog, [&] {
        leave.data_ok_click();
        refresh();
    });
    QObject::connect(exit, &QPushButton::clicked, &dialog, [&] {
        leave.staff_exit_click();
        dialog.accept();
    });

    auto* form = new QGridLayout;
    for (int i = 1; i <= 2; ++i) {
        form->addWidget(labels[i], i, 0);
        form->addWidget(dates[i], i, 1);
    }
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(kodes);
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(exit);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(info);
    layout->addLayout(form);
    layout->addWidget(heading);
    layout->addWidget(reasons, 1);
    layout->addLayout(buttons);
    dialog.resize(420, 460);
    leave.form_load();
    refresh();
    dialog.exec();
}

}  // namespace

void register_child_forms(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk417_prg"), [](ui::ChildForm& f, QWidget* p) {
        auto& request = static_cast<AttendanceRequest&>(f);
        AttendanceForm form(request.session, request.educators, p);
        form.exec();
    });
    dialogs.register_form(QStringLiteral("sk417_kodes_prg"), [](ui::ChildForm& f, QWidget* p) {
        show_reason_codes(static_cast<ReasonCodes&>(f), p);
    });
    dialogs.register_form(QStringLiteral("sk417_verlof_prg"), [](ui::ChildForm& f, QWidget* p) {
        show_leave_capture(static_cast<LeaveCapture&>(f), p);
    });
}

}  // namespace korvel::attendance
