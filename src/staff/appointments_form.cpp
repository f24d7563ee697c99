#include "staff/appointments_form.h"

#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <functional>

#include "staff/appointments.h"
#include "staff/detail_grid_form.h"
#include "staff/form_boxes.h"
#include "ui/form_window.h"

namespace korvel::staff {

namespace {

constexpr int kWidths[] = {0, 50, 30, 1, 10};  // boxes 1 to 4

void show_appointments(Appointments& form, QWidget* parent) {
    form.form_load();
    QDialog dialog(parent);
    dialog.setObjectName(form.form_name());
    dialog.setWindowTitle(form.caption);
    std::function<void()> refresh;
    const auto key = [&form](int box, int k) { return form.prs_data_key_press(box, k); };

    // The two dates: a click opens the calendar.
    Boxes dates(dialog, form.dtm_data, key, {}, [&](int index, bool) {
        form.dtm_data_click(index);
        refresh();
    });
    auto* top = new QGridLayout;
    for (int i = 1; i <= 2; ++i) {
        QLineEdit* edit = dates.make(i, 10, &dialog);
        edit->setObjectName(QStringLiteral("dtm_data_%1").arg(i));
        edit->setToolTip(form.dtm_tip[static_cast<std::size_t>(i)]);
        top->addWidget(new QLabel(form.dtm_teks[static_cast<std::size_t>(i)], &dialog), i, 0);
        top->addWidget(edit, i, 1);
    }

    GridView grid(
        form.aan_grid, QStringLiteral("aan_grid"),
        [&](int row) {
            form.aan_grid_click(row);
            refresh();
        },
        &dialog);

    // The edit frame of one row.
    auto* frame = new QGroupBox(&dialog);
    frame->setObjectName(QStringLiteral("data_raam"));
    auto* frame_layout = new QGridLayout(frame);
    Boxes boxes(dialog, form.prs_data, key, {}, [&](int box, bool) {
        form.prs_data_click(box);
        refresh();
    });
    for (int box = 1; box <= 4; ++box) {
        frame_layout->addWidget(label(box, form.data_teks[static_cast<std::size_t>(box)], frame),
                                box, 0);
        frame_layout->addWidget(boxes.make(box, kWidths[box], frame), box, 1);
    }
    ListView tp_lys(
        form.tp_lys, QStringLiteral("tp_lys"), false,
        [&](int row) {
            form.tp_lys_click(row);
            refresh();
        },
        frame);
    frame_layout->addWidget(&tp_lys, 3, 2, 2, 1);
    QPushButton* data_ok = button(QStringLiteral("data_ok"), QStringLiteral("OK"), dialog);
    frame_layout->addWidget(data_ok, 5, 1);

    QPushButton* grid_ok = button(QStringLiteral("grid_ok"), QStringLiteral("OK"), dialog);
    QPushButton* exit = button(QStringLiteral("staff_exit"), QStringLiteral("X"), dialog);
    refresh = [&] {
        dates.show_values();
        boxes.show_values();
        grid.show_values();
        tp_lys.show_values();
        frame->setVisible(form.data_raam_visible);
        grid_ok->setVisible(form.grid_ok_visible);
        if (form.focus_box != 0) {
            if (QLineEdit* e = boxes.at(form.focus_box)) {
                e->setFocus();
            }
            form.focus_box = 0;
        }
        if (form.closed) {
            dialog.accept();
        }
    };
    on_click(
        data_ok, [&] { form.data_ok_click(); }, refresh);
    on_click(
        grid_ok, [&] { form.grid_ok_click(); }, refresh);
    on_click(
        exit, [&] { form.staff_exit_click(); }, refresh);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(grid_ok);
    buttons->addWidget(exit);
    const ui::ScrollingBody body = ui::scrolling_body(dialog);
    auto* layout = new QVBoxLayout(body.fields);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(heading(form.caption, dialog));
    layout->addLayout(top);
    layout->addWidget(&grid);
    layout->addWidget(frame);
    body.below->addLayout(buttons);
    dialog.resize(720, 520);
    refresh();
    dialog.exec();
}

}  // namespace

void register_appointments_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk415_prg"), [](ui::ChildForm& f, QWidget* p) {
        show_appointments(static_cast<Appointments&>(f), p);
    });
}

}  // namespace korvel::staff
