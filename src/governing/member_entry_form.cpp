// sk411_bl_inlees, the Qt form of a governing body member's entry.

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QListWidget>
#include <QRadioButton>
#include <QVBoxLayout>
#include <type_traits>

#include "governing/member_entry.h"
#include "governing/member_register_form.h"
#include "staff/form_boxes.h"
#include "store/record_layouts.h"
#include "ui/form_window.h"

namespace korvel::governing {

namespace {

using staff::button;
using staff::on_click;

// Where each box stands: its row, and the second box of a telephone number beside the first.
constexpr int kBoxOrder[] = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12,
                             13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24};

void show_entry(MemberEntry& entry, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(entry.form_name());
    bool refreshing = false;
    std::function<void()> refresh;
    staff::Boxes boxes(
        dialog, entry.prs_data,
        [&](int box, int key) {
            staff::TypedKey typed = entry.prs_data_key_press(box, key);
            typed.next_box = false;  // the behaviour names the next box
            refresh();
            return typed;
        },
        [&](int box, bool got) {
            if (refreshing || entry.closed) {
                return;
            }
            if (got) {
                entry.prs_data_got_focus(box);
            } else {
                entry.prs_data_lost_focus(box);
            }
            refresh();
        },
        [&](int box, bool double_click) {
            if (double_click) {
                entry.prs_data_dbl_click(box);
                refresh();
            }
        });
    for (const int b : kBoxOrder) {
        boxes.make(b, member_box_width(b), &dialog);
    }
    std::array<QLabel*, kMemberLabels> labels{};
    for (int i = 0; i < kMemberLabels; ++i) {
        labels[static_cast<std::size_t>(i)] = staff::label(i, QString(), &dialog);
    }
    std::array<QListWidget*, staff::kEntryLists> lists{};
    for (int i = 0; i < staff::kEntryLists; ++i) {
        auto* l = new QListWidget(&dialog);
        l->setFocusPolicy(Qt::NoFocus);
        l->setMaximumHeight(l->fontMetrics().height() * 8 + 8);
        l->hide();
        lists[static_cast<std::size_t>(i)] = l;
        QObject::connect(l, &QListWidget::itemClicked, &dialog, [&, l, i](QListWidgetItem* it) {
            entry.list_click(static_cast<EntryList>(i), l->row(it));
            refresh();
        });
    }
    static const char* const kChoiceNames[] = {"tipe_kieslys", "onderrig_kieslys",
                                               "hoedanigheid_kieslys"};
    std::array<QComboBox*, 3> choices{};
    for (int i = 0; i < 3; ++i) {
        auto* c = new QComboBox(&dialog);
        c->setObjectName(QString::fromLatin1(kChoiceNames[i]));
        c->addItems(entry.choices[static_cast<std::size_t>(i)].rows);
        choices[static_cast<std::size_t>(i)] = c;
        QObject::connect(c, &QComboBox::activated, &dialog, [&entry, i](int row) {
            entry.choice_click(static_cast<MemberChoice>(i), row);
        });
    }
    std::array<QRadioButton*, 2> gender{};
    auto* gender_group = new QButtonGroup(&dialog);
    for (int i = 0; i < 2; ++i) {
        gender[static_cast<std::size_t>(i)] = new QRadioButton(&dialog);
        gender[static_cast<std::size_t>(i)]->setObjectName(
            QStringLiteral("bl_geslag_%1").arg(i + 1));
        gender_group->addButton(gender[static_cast<std::size_t>(i)], i);
    }
    QObject::connect(gender_group, &QButtonGroup::idClicked, &dialog, [&entry](int id) {
        entry.bl_geslag = {id == 0, id == 1};
    });
    auto* sa_burger = new QCheckBox(&dialog);
    sa_burger->setObjectName(QStringLiteral("sa_burger"));
    QObject::connect(sa_burger, &QCheckBox::toggled, &dialog,
                     [&entry](bool on) { entry.sa_burger = on; });
    auto* bl_aktief = new QCheckBox(&dialog);
    bl_aktief->setObjectName(QStringLiteral("bl_aktief"));
    QObject::connect(bl_aktief, &QCheckBox::toggled, &dialog,
                     [&entry](bool on) { entry.bl_aktief = on; });

    auto* data_ok = button(QStringLiteral("data_ok"), QStringLiteral("OK"), dialog);
    auto* data_del = button(QStringLiteral("data_del"), entry.tr("VEE UIT", "DELETE"), dialog);
    auto* data_aktiveer =
        button(QStringLiteral("data_aktiveer"), entry.tr("HERAKTIVEER", "RE-ACTIVATE"), dialog);
    // A left click opens the public remarks, a right click the private ones.
    auto* opmerkings =
        button(QStringLiteral("opmerkings"), entry.tr("OPMERKINGS", "REMARKS"), dialog);
    opmerkings->setContextMenuPolicy(Qt::CustomContextMenu);
    auto* staff_exit = button(QStringLiteral("staff_exit"), QStringLiteral("EXIT"), dialog);

    refresh = [&] {
        refreshing = true;
        dialog.setWindowTitle(entry.caption);
        boxes.show_values();
        for (int i = 0; i < kMemberLabels; ++i) {
            const auto n = static_cast<std::size_t>(i);
            labels[n]->setText(entry.data_teks[n]);
            labels[n]->setStyleSheet(entry.data_teks_colour[n] == staff::kColourRed
                                         ? QStringLiteral("color: red")
                                         : QString());
        }
        for (int i = 0; i < staff::kEntryLists; ++i) {
            const PopupList& model = entry.lists[static_cast<std::size_t>(i)];
            QListWidget* l = lists[static_cast<std::size_t>(i)];
            if (l->count() != model.rows.size()) {
                l->clear();
                l->addItems(model.rows);
            }
            l->setVisible(model.visible);
        }
        for (int i = 0; i < 3; ++i) {
            choices[static_cast<std::size_t>(i)]->setCurrentIndex(
                entry.choices[static_cast<std::size_t>(i)].list_index);
        }
        gender_group->setExclusive(false);
        for (int i = 0; i < 2; ++i) {
            gender[static_cast<std::size_t>(i)]->setText(
                entry.bl_geslag_caption[static_cast<std::size_t>(i)]);
            gender[static_cast<std::size_t>(i)]->setChecked(
                entry.bl_geslag[static_cast<std::size_t>(i)]);
        }
        gender_group->setExclusive(true);
        sa_burger->setText(entry.data_teks[kLabelCitizen]);
        sa_burger->setChecked(entry.sa_burger);
        bl_aktief->setText(entry.data_teks[kLabelActive]);
        bl_aktief->setChecked(entry.bl_aktief);
        data_del->setEnabled(entry.data_del_enabled);
        refreshing = false;
        if (entry.closed) {
            dialog.accept();
            return;
        }
        if (entry.focus_box > 0 && entry.focus_box < kMemberBoxes) {
            const int b = entry.focus_box;
            entry.focus_box = -1;
            boxes.at(b)->setFocus();
        }
    };
    on_click(
        data_ok, [&] { entry.data_ok_click(); }, refresh);
    on_click(
        data_del, [&] { entry.data_del_click(); }, refresh);
    on_click(
        data_aktiveer, [&] { entry.data_aktiveer_click(); }, refresh);
    on_click(
        opmerkings, [&] { entry.opmerkings_click(false); }, refresh);
    QObject::connect(opmerkings, &QWidget::customContextMenuRequested, &dialog, [&] {
        entry.opmerkings_click(true);
        refresh();
    });
    on_click(
        staff_exit, [&] { entry.staff_exit_click(); }, refresh);

    // Two columns of fields, so that the whole record shows at once on a 1366x768 screen; Tab
    // still runs down the first column, then the second.
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    grid->setColumnMinimumWidth(2, 24);
    constexpr int kRowsPerColumn = 14;
    int slot = 0;
    const auto place = [&](QWidget* label, auto* item) {
        const int r = slot % kRowsPerColumn;
        const int c = (slot / kRowsPerColumn) * 3;
        ++slot;
        if (label != nullptr) {
            grid->addWidget(label, r, c);
        }
        if constexpr (std::is_base_of_v<QLayout, std::remove_pointer_t<decltype(item)>>) {
            grid->addLayout(item, r, c + 1);
        } else {
            grid->addWidget(item, r, c + 1);
        }
    };
    place(labels[kLabelType], choices[0]);
    for (const int b : kBoxOrder) {
        if (b == 18 || b == 20 || b == 22) {
            continue;  // beside its code
        }
        auto* line = new QHBoxLayout;
        line->addWidget(boxes.at(b));
        if (b == 17 || b == 19 || b == 21) {
            line->addWidget(boxes.at(b + 1));
        }
        if (const std::optional<EntryList> which = MemberEntry::list_of_box(b)) {
            line->addWidget(lists[static_cast<std::size_t>(*which)]);
        }
        place(labels[static_cast<std::size_t>(member_label_of_box(b))], line);
        if (b == 3) {
            auto* g = new QHBoxLayout;
            g->addWidget(gender[0]);
            g->addWidget(gender[1]);
            g->addWidget(sa_burger);
            place(labels[kLabelGender], g);
        }
    }
    place(labels[kLabelEducation], choices[1]);
    place(nullptr, bl_aktief);
    place(labels[kLabelCapacity], choices[2]);
    labels[kLabelCitizen]->hide();
    labels[kLabelActive]->hide();
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {data_ok, data_del, data_aktiveer, opmerkings}) {
        buttons->addWidget(b);
    }
    buttons->addStretch();
    buttons->addWidget(staff_exit);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addLayout(grid);
    layout->addLayout(buttons);
    QList<QWidget*> tab_order{choices[0]};
    for (const int b : kBoxOrder) {
        tab_order << boxes.at(b);
        if (b == 3) {
            tab_order << gender[0] << gender[1] << sa_burger;
        }
    }
    tab_order << choices[1] << bl_aktief << choices[2] << data_ok << data_del << data_aktiveer
              << opmerkings << staff_exit;
    ui::tab_in_order(tab_order);

    entry.form_activate();
    refresh();
    boxes.at(1)->setFocus();
    dialog.exec();
}

}  // namespace

void register_member_entry_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk411_bl_inlees"), [](ui::ChildForm& f, QWidget* p) {
        show_entry(static_cast<MemberEntry&>(f), p);
    });
}

}  // namespace korvel::governing
