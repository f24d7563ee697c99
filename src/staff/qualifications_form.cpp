#include "staff/qualifications_form.h"

#include <QButtonGroup>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <array>
#include <functional>
#include <memory>

#include "staff/detail_grid_form.h"
#include "staff/form_boxes.h"
#include "staff/qualifications.h"
#include "ui/form_window.h"

namespace korvel::staff {

namespace {

void show_qualifications(Qualifications& form, QWidget* parent) {
    form.form_load();
    QDialog dialog(parent);
    dialog.setObjectName(form.form_name());
    dialog.setWindowTitle(form.caption);
    std::function<void()> refresh;
    const auto key = [](int, int k) { return typed_key(k, false); };

    GridView qualifications(
        form.kwl_grid[0], QStringLiteral("kwl_grid_0"),
        [&](int row) {
            form.kwl_grid_click(0, row);
            refresh();
        },
        &dialog);

    // data_raam: one qualification.
    auto* data_raam = new QGroupBox(&dialog);
    data_raam->setObjectName(QStringLiteral("data_raam"));
    auto* d = new QGridLayout(data_raam);
    Boxes boxes(dialog, form.prs_data, key, {}, [&](int box, bool twice) {
        if (twice) {
            form.prs_data_dbl_click(box);
            refresh();
        }
    });
    QLineEdit* type_box = boxes.make(0, 20, data_raam);
    type_box->setReadOnly(true);
    d->addWidget(type_box, 0, 1);
    auto* options = new QHBoxLayout;
    std::array<QRadioButton*, 4> kw_opsie{};
    for (int i = 1; i <= 3; ++i) {
        auto* r = new QRadioButton(form.kw_opsie[static_cast<std::size_t>(i)], data_raam);
        r->setObjectName(QStringLiteral("kw_opsie_%1").arg(i));
        r->setAutoExclusive(false);  // the type in box 0 says which one shows chosen
        QObject::connect(r, &QRadioButton::clicked, &dialog, [&, i] {
            form.kw_opsie_click(i);
            refresh();
        });
        options->addWidget(r);
        kw_opsie[static_cast<std::size_t>(i)] = r;
    }
    d->addLayout(options, 0, 2);
    const int rows_of_labels[] = {1, 2, 3};
    for (int box : rows_of_labels) {
        d->addWidget(label(box, form.data_teks[static_cast<std::size_t>(box - 1)], data_raam), box,
                     0);
        d->addWidget(boxes.make(box, box == 3 ? 6 : 120, data_raam), box, 1, 1, 2);
    }
    d->addWidget(boxes.make(4, 30, data_raam), 4, 1, 1, 2);
    QLineEdit* subjects_box = boxes.make(5, 60, data_raam);
    subjects_box->setReadOnly(true);
    d->addWidget(subjects_box, 5, 1, 1, 2);
    std::array<std::unique_ptr<ListView>, 3> lists;
    const char* const list_names[] = {"kwalifikasie_lys_prof", "kwalifikasie_lys_akad",
                                      "kwalifikasie_lys_detail"};
    for (int l = 0; l < 3; ++l) {
        const auto which = static_cast<QualificationList>(l);
        lists[static_cast<std::size_t>(l)] = std::make_unique<ListView>(
            form.list(which), QString::fromLatin1(list_names[l]), true,
            [&, which](int row) {
                form.kwalifikasie_lys_dbl_click(which, row);
                refresh();
            },
            data_raam);
        d->addWidget(lists[static_cast<std::size_t>(l)].get(), 6, 1, 1, 2);
    }
    ListView jaar_lys(
        form.jaar_lys, QStringLiteral("jaar_lys"), false,
        [&](int row) {
            form.jaar_lys_click(row);
            refresh();
        },
        data_raam);
    d->addWidget(&jaar_lys, 3, 3, 3, 1);
    QPushButton* data_ok = button(QStringLiteral("data_ok"), QStringLiteral("OK"), dialog);
    d->addWidget(data_ok, 7, 1);

    GridView subjects(
        form.kwl_grid[1], QStringLiteral("kwl_grid_1"),
        [&](int row) {
            form.kwl_grid_click(1, row);
            refresh();
        },
        &dialog);

    // vak_raam: one subject.
    auto* vak_raam = new QGroupBox(&dialog);
    vak_raam->setObjectName(QStringLiteral("vak_raam"));
    auto* v = new QGridLayout(vak_raam);
    Boxes vak(
        dialog, form.vak_dta, [](int, int k) { return typed_key(k, true); }, {},
        [&](int box, bool twice) {
            if (twice) {
                form.vak_dta_dbl_click(box);
                refresh();
            }
        });
    const QString vak_labels[] = {QString(), form.data_teks[3], QStringLiteral("GRD"),
                                  form.data_teks[4], form.data_teks[5]};
    for (int box = 1; box <= 4; ++box) {
        QLineEdit* e = vak.make(box, box == 1 ? 60 : 8, vak_raam);
        e->setObjectName(QStringLiteral("vak_dta_%1").arg(box));
        v->addWidget(new QLabel(vak_labels[box], vak_raam), box, 0);
        v->addWidget(e, box, 1);
    }
    std::array<QRadioButton*, 4> vak_soort{};
    auto* kinds = new QButtonGroup(vak_raam);
    for (int i = 1; i <= 3; ++i) {
        auto* r = new QRadioButton(form.vak_soort[static_cast<std::size_t>(i)], vak_raam);
        r->setObjectName(QStringLiteral("vak_soort_%1").arg(i));
        kinds->addButton(r, i);
        QObject::connect(r, &QRadioButton::clicked, &dialog, [&, i] {
            form.vak_soort_click(i);
            refresh();
        });
        v->addWidget(r, i, 2);
        vak_soort[static_cast<std::size_t>(i)] = r;
    }
    QPushButton* vak_ok = button(QStringLiteral("vak_ok"), QStringLiteral("OK"), dialog);
    v->addWidget(vak_ok, 5, 1);

    QPushButton* grid_ok = button(QStringLiteral("grid_ok"), QStringLiteral("OK"), dialog);
    QPushButton* exit = button(QStringLiteral("staff_exit"), QStringLiteral("X"), dialog);
    refresh = [&] {
        qualifications.show_values();
        subjects.show_values();
        boxes.show_values();
        vak.show_values();
        for (auto& l : lists) {
            l->show_values();
        }
        jaar_lys.show_values();
        data_raam->setVisible(form.data_raam_visible);
        vak_raam->setVisible(form.vak_raam_visible);
        subjects.setVisible(form.subjects_visible);
        boxes.at(4)->setVisible(form.box4_visible);
        boxes.at(5)->setVisible(form.box5_visible);
        for (int i = 1; i <= 3; ++i) {
            const QSignalBlocker quiet(kw_opsie[static_cast<std::size_t>(i)]);
            kw_opsie[static_cast<std::size_t>(i)]->setChecked(
                form.prs_data[0].startsWith(QStringLiteral("PAD").at(i - 1)));
        }
        kinds->setExclusive(false);
        for (int i = 1; i <= 3; ++i) {
            vak_soort[static_cast<std::size_t>(i)]->setChecked(form.vak_soort_chosen == i);
        }
        kinds->setExclusive(true);
        if (form.closed) {
            dialog.accept();
        }
    };
    on_click(
        data_ok, [&] { form.data_ok_click(); }, refresh);
    on_click(
        vak_ok, [&] { form.vak_ok_click(); }, refresh);
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
    layout->addWidget(&qualifications);
    layout->addWidget(data_raam);
    layout->addWidget(&subjects);
    layout->addWidget(vak_raam);
    body.below->addLayout(buttons);
    dialog.resize(820, 640);
    refresh();
    dialog.exec();
}

}  // namespace

void register_qualifications_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk414_prg"), [](ui::ChildForm& f, QWidget* p) {
        show_qualifications(static_cast<Qualifications&>(f), p);
    });
}

}  // namespace korvel::staff
