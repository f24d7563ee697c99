#include "staff/address_family_form.h"

#include <QDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <functional>
#include <span>
#include <vector>

#include "staff/address_family.h"
#include "staff/banking.h"
#include "staff/form_boxes.h"
#include "staff/staff_register.h"
#include "ui/form_window.h"

namespace korvel::staff {

namespace {

void show_address_family(AddressFamily& form, QWidget* parent) {
    form.form_load();
    QDialog dialog(parent);
    dialog.setObjectName(form.form_name());
    dialog.setWindowTitle(form.caption);
    Boxes boxes(dialog, form.prs_data,
                [&form](int box, int key) { return form.prs_data_key_press(box, key); });

    auto* data_raam = new QStackedWidget(&dialog);
    data_raam->setObjectName(QStringLiteral("data_raam"));
    // Each screen is two columns of rows: the label, then the code and number boxes of a
    // telephone or a single box across both.
    std::array<std::array<QGridLayout*, 2>, AddressFamily::kScreens> columns{};
    for (int s = 0; s < AddressFamily::kScreens; ++s) {
        auto* page = new QWidget(data_raam);
        page->setObjectName(QStringLiteral("data_raam_%1").arg(s));
        auto* row = new QHBoxLayout(page);
        for (QGridLayout*& column : columns[static_cast<std::size_t>(s)]) {
            column = new QGridLayout;
            column->setColumnStretch(2, 1);
            row->addLayout(column);
        }
        data_raam->addWidget(page);
    }
    for (const AddressBox& b : address_boxes()) {
        QWidget* page = data_raam->widget(b.screen);
        QGridLayout* grid =
            columns[static_cast<std::size_t>(b.screen)][static_cast<std::size_t>(b.column)];
        const int r = grid->rowCount();
        grid->addWidget(label(b.box, form.data_teks[static_cast<std::size_t>(b.box)], page), r, 0);
        if (b.code_box != 0) {
            QLineEdit* code = boxes.make(b.code_box, b.width(), page);
            code->setMaximumWidth(code->fontMetrics().horizontalAdvance(u'0') * 8);
            grid->addWidget(code, r, 1);
            grid->addWidget(boxes.make(b.box, b.width(), page), r, 2);
        } else {
            grid->addWidget(boxes.make(b.box, b.width(), page), r, 1, 1, 2);
        }
    }
    for (auto& screen : columns) {
        for (QGridLayout* grid : screen) {
            grid->setRowStretch(grid->rowCount(), 1);
        }
    }

    QPushButton* prev = button(QStringLiteral("screen_prev"), QStringLiteral("<<"), dialog);
    QPushButton* next = button(QStringLiteral("screen_next"), QStringLiteral(">>"), dialog);
    QPushButton* ok = button(QStringLiteral("data_ok"), QStringLiteral("OK"), dialog);
    QPushButton* exit = button(QStringLiteral("staff_exit"), QStringLiteral("X"), dialog);

    std::function<void()> refresh = [&] {
        data_raam->setCurrentIndex(form.data_raam[1] ? 1 : 0);
        boxes.show_values();
        if (form.closed) {
            dialog.accept();
        }
    };
    on_click(
        prev, [&] { form.screen_prev_click(); }, refresh);
    on_click(
        next, [&] { form.screen_next_click(); }, refresh);
    on_click(
        ok, [&] { form.data_ok_click(); }, refresh);
    on_click(
        exit, [&] { form.staff_exit_click(); }, refresh);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(prev);
    buttons->addWidget(next);
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(exit);
    const ui::ScrollingBody body = ui::scrolling_body(dialog);
    auto* layout = new QVBoxLayout(body.fields);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(heading(form.caption, dialog));
    layout->addWidget(data_raam, 1);
    body.below->addLayout(buttons);
    refresh();
    dialog.exec();
}

}  // namespace

void register_address_family_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk412_prg"), [](ui::ChildForm& f, QWidget* p) {
        show_address_family(static_cast<AddressFamily&>(f), p);
    });
}
}  // namespace korvel::staff
