#include "attendance/reason_codes_form.h"

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

}  // namespace

void register_reason_codes_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk417_kodes_prg"), [](ui::ChildForm& f, QWidget* p) {
        show_reason_codes(static_cast<ReasonCodes&>(f), p);
    });
}
}  // namespace korvel::attendance
