#include "attendance/leave_capture_form.h"

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

#include "attendance/attendance_register_form.h"
#include "attendance/leave_capture.h"
#include "attendance/reason_codes.h"

namespace korvel::attendance {

namespace {

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
    // Escape leaves through the exit; Enter in the list takes the reason and presses no button.
    exit->setObjectName(QStringLiteral("staff_exit"));
    reasons->setObjectName(QStringLiteral("kode_lys"));
    for (QPushButton* b : {dates[1], dates[2], kodes, ok, exit}) {
        b->setAutoDefault(false);
    }

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
    QObject::connect(reasons, &QListWidget::itemActivated, &dialog, [&](QListWidgetItem* item) {
        leave.kode_lys_dbl_click(reasons->row(item));
        refresh();
    });
    QObject::connect(kodes, &QPushButton::clicked, &dialog, [&] {
        leave.kodes_click();
        refresh();
    });
    // After "...CAPTURED..." the form unloads, so a second OK cannot write the stretch again.
    QObject::connect(ok, &QPushButton::clicked, &dialog, [&] {
        leave.data_ok_click();
        if (leave.closed) {
            dialog.accept();
            return;
        }
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

void register_leave_capture_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk417_verlof_prg"), [](ui::ChildForm& f, QWidget* p) {
        show_leave_capture(static_cast<LeaveCapture&>(f), p);
    });
}
}  // namespace korvel::attendance
