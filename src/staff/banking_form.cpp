#include "staff/banking_form.h"

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

void show_banking_details(BankingDetails& form, QWidget* parent) {
    form.form_load();
    QDialog dialog(parent);
    dialog.setObjectName(form.form_name());
    dialog.setWindowTitle(form.caption);
    std::function<void()> refresh;
    Boxes boxes(
        dialog, form.prs_data,
        [&form](int box, int key) { return form.prs_data_key_press(box, key); },
        [&](int box, bool got) {
            if (form.closed) {
                return;  // the boxes lose the focus as the form goes
            }
            got ? form.prs_data_got_focus(box) : form.prs_data_lost_focus(box);
            refresh();
        });

    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    for (const BankBox& b : bank_boxes()) {
        grid->addWidget(label(b.box, form.data_teks[static_cast<std::size_t>(b.box)], &dialog),
                        b.box, 0);
        grid->addWidget(boxes.make(b.box, b.width(), &dialog), b.box, 1);
    }
    std::array<QListWidget*, 3> lists{};
    for (int n = 1; n <= 2; ++n) {
        auto* list = new QListWidget(&dialog);
        list->setObjectName(QStringLiteral("ja_nee_lys_%1").arg(n));
        list->setFocusPolicy(Qt::NoFocus);  // the box keeps the focus while a row is clicked
        list->addItems(form.ja_nee_lys[static_cast<std::size_t>(n)].rows);
        list->setMaximumHeight(list->sizeHintForRow(0) * (list->count() + 1));
        QObject::connect(list, &QListWidget::itemClicked, &dialog,
                         [&, n, list](QListWidgetItem* item) {
                             form.ja_nee_lys_click(n, list->row(item));
                             refresh();
                         });
        list->hide();  // it pops up at its box
        lists[static_cast<std::size_t>(n)] = list;
    }

    QPushButton* ok = button(QStringLiteral("data_ok"), QStringLiteral("OK"), dialog);
    QPushButton* exit = button(QStringLiteral("staff_exit"), QStringLiteral("X"), dialog);
    refresh = [&] {
        boxes.show_values();
        for (int n = 1; n <= 2; ++n) {
            QListWidget* list = lists[static_cast<std::size_t>(n)];
            const bool visible = form.ja_nee_lys[static_cast<std::size_t>(n)].visible;
            if (visible) {
                ui::pop_up_at(*list, *boxes.at(n == 1 ? 9 : 11));
            }
            list->setVisible(visible);
        }
        if (form.closed) {
            dialog.accept();
        }
    };
    on_click(
        ok, [&] { form.data_ok_click(); }, refresh);
    on_click(
        exit, [&] { form.staff_exit_click(); }, refresh);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(exit);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(heading(form.caption, dialog));
    layout->addLayout(grid);
    layout->addStretch();
    layout->addLayout(buttons);
    refresh();
    dialog.exec();
}

}  // namespace

void register_banking_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk413_prg"), [](ui::ChildForm& f, QWidget* p) {
        show_banking_details(static_cast<BankingDetails&>(f), p);
    });
}
}  // namespace korvel::staff
