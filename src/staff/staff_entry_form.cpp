#include "staff/staff_entry_form.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "staff/form_boxes.h"
#include "staff/staff_entry.h"
#include "staff/staff_register.h"
#include "store/record_layouts.h"
#include "ui/form_window.h"

namespace korvel::staff {

namespace {

QColor colour_of(int bgr) {
    return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF);
}

// The width of each field's box: the width of the field it is stored in, so a box never takes
// more than the record keeps.
int field_width(int field, bool western_cape) {
    using store::PRSADD;
    using store::PRSALG;
    switch (field) {
        case 0:
            return PRSALG["PA_AKTIEF"].width;
        case 1:
            return PRSALG["PA_POS_NR"].width;
        case 2:
            return PRSALG["PA_VAN"].width;
        case 3:
            return PRSALG["PA_NAME"].width;
        case 4:
            return PRSALG["PA_TITEL"].width;
        case 5:
            return PRSALG["PA_N_VAN"].width;
        case 6:
            return PRSALG["PA_PERSAL"].width;
        case 8:
            return PRSALG["PA_ID_NR"].width;
        case 7:
            return PRSALG["PA_GESLAG"].width;
        case 9:
            return 10;
        case 10:
            return PRSALG["PA_HWLK_ST"].width;
        case 11:
            return 9;
        case 12:
            return PRSALG["PA_UN_NAAM"].width;
        case 13:
            return PRSALG["PA_RAS"].width;
        case 14:
            return PRSALG["PA_TAAL"].width;
        case 15:
            return western_cape ? PRSADD["PD_CEMIS"].width : PRSALG["PA_GEBREK"].width;
        case 16:
            return PRSALG["PA_DPT_NR"].width;
        case 17:
            return 1;  // PA_ICT_LV holds 0 to 5
        case 18:
            return PRSALG["PK_KLAS_NR"].width;
        case 19:
            return PRSALG["PK_REG_KLS"].width;
        case 20:
            return PRSALG["PA_TAALSMB"].width;
        case 21:
            return 2;
        case 22:
            return PRSADD["PD_NOEMNAAM"].width;
        case 23:
            return PRSADD["PD_PASPOORT"].width;
        case 24:
            return PRSADD["PD_WERKPERMIT"].width;
        case 26:
            return PRSADD["PD_UNIE_NR"].width;
        default:
            return 60;  // the highest qualification, read only, shows its list's whole row
    }
}

// The fields in the order the form lays them out, in two columns.
constexpr int kLeftColumn[] = {1, 2, 3, 22, 4, 5, 6, 7, 8, 9, 10, 11, 12};
constexpr int kRightColumn[] = {13, 14, 15, 16, 17, 18, 19, 20, 21, 23, 24, 25};

const char* list_name(EntryList list) {
    switch (list) {
        case EntryList::titel_lys:
            return "titel_lys";
        case EntryList::geslag_lys:
            return "geslag_lys";
        case EntryList::hs_lys:
            return "hs_lys";
        case EntryList::ras_lys:
            return "ras_lys";
        case EntryList::taal_lys:
            return "taal_lys";
        case EntryList::gebrek_lys:
            return "gebrek_lys";
        case EntryList::ict_lys:
            return "ict_lys";
        case EntryList::reqv_lys:
            return "reqv_lys";
        case EntryList::hk_lys:
            return "hk_lys";
        case EntryList::Tipe_aanstelling:
            return "Tipe_aanstelling";
    }
    return "";
}

// The remarks button opens the public remarks on a click (or Space) and the private ones on a
// right click.
class RemarksButton : public QPushButton {
  public:
    RemarksButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {
        setAutoDefault(false);  // Enter on a list or an option opens nothing
        connect(this, &QAbstractButton::clicked, this, [this] {
            if (pressed_with) {
                pressed_with(false);
            }
        });
    }
    std::function<void(bool right_button)> pressed_with;

  protected:
    void mouseReleaseEvent(QMouseEvent* e) override {
        if (e->button() != Qt::RightButton) {
            QPushButton::mouseReleaseEvent(e);
            return;
        }
        setDown(false);
        if (pressed_with && rect().contains(e->position().toPoint())) {
            pressed_with(true);
        }
    }
    void mousePressEvent(QMouseEvent* e) override {
        if (e->button() == Qt::RightButton) {
            setDown(true);
            return;
        }
        QPushButton::mousePressEvent(e);
    }
};

void show_entry(StaffEntry& entry, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(entry.form_name());
    QLabel* person = heading(QString(), dialog);

    // The boxes are made in the order Enter walks them; the display-only ones take no focus.
    bool refreshing = false;
    std::function<void()> refresh;
    Boxes boxes(
        dialog, entry.prs_data,
        [&](int box, int key) {
            TypedKey typed = entry.prs_data_key_press(box, key);
            if (typed.next_box) {
                typed.next_box = false;  // the behaviour names the next field
            }
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
            } else {
                entry.prs_data_click(box);
            }
            refresh();
        });
    for (const int f : entry_tab_order()) {
        boxes.make(f, field_width(f, entry.western_cape), &dialog);
    }
    std::array<QLabel*, kEntryFields> labels{};
    for (int i = 0; i < kEntryFields; ++i) {
        labels[static_cast<std::size_t>(i)] = label(i, QString(), &dialog);
    }
    for (const int f : {0, 11}) {
        boxes.make(f, field_width(f, entry.western_cape), &dialog)->setFocusPolicy(Qt::NoFocus);
    }
    const auto box = [&boxes](int f) { return boxes.at(f); };
    box(0)->setReadOnly(true);
    box(11)->setReadOnly(true);
    box(25)->setReadOnly(true);  // a click opens its list

    std::array<QListWidget*, kEntryLists> lists{};
    std::array<int, kEntryLists> field_of_list{};  // the field a list opens at
    for (int i = 0; i < kEntryLists; ++i) {
        auto* l = new QListWidget(&dialog);
        l->setObjectName(QString::fromLatin1(list_name(static_cast<EntryList>(i))));
        l->setFocusPolicy(Qt::NoFocus);  // a click on a row leaves the focus in the field
        l->setMaximumHeight(l->fontMetrics().height() * 8 + 8);
        lists[static_cast<std::size_t>(i)] = l;
        QObject::connect(l, &QListWidget::itemClicked, &dialog,
                         [&entry, l, i](QListWidgetItem* it) {
                             entry.list_click(static_cast<EntryList>(i), l->row(it));
                         });
    }
    auto* broodwinner = new QCheckBox(&dialog);
    broodwinner->setObjectName(QStringLiteral("broodwinner"));
    QObject::connect(broodwinner, &QCheckBox::toggled, &dialog,
                     [&entry](bool on) { entry.broodwinner = on; });
    std::array<QRadioButton*, 2> p_t{};
    auto* p_t_group = new QButtonGroup(&dialog);
    for (int i = 0; i < 2; ++i) {
        p_t[static_cast<std::size_t>(i)] = new QRadioButton(&dialog);
        p_t[static_cast<std::size_t>(i)]->setObjectName(QStringLiteral("kies_p_t_%1").arg(i));
        p_t_group->addButton(p_t[static_cast<std::size_t>(i)], i);
    }
    QObject::connect(p_t_group, &QButtonGroup::idClicked, &dialog, [&entry](int id) {
        entry.kies_p_t = {id == 0, id == 1};
    });
    std::array<QRadioButton*, 6> levels{};
    auto* level_group = new QButtonGroup(&dialog);
    auto* level_box = new QGroupBox(&dialog);
    level_box->setObjectName(QStringLiteral("tipe_onderwys_raam"));
    auto* level_layout = new QHBoxLayout(level_box);
    for (int i = 0; i < 6; ++i) {
        levels[static_cast<std::size_t>(i)] = new QRadioButton(level_box);
        levels[static_cast<std::size_t>(i)]->setObjectName(
            QStringLiteral("kies_tipe_onderwys_%1").arg(i));
        level_group->addButton(levels[static_cast<std::size_t>(i)], i);
        level_layout->addWidget(levels[static_cast<std::size_t>(i)]);
    }
    QObject::connect(level_group, &QButtonGroup::idClicked, &dialog, [&entry](int id) {
        entry.kies_tipe_onderwys.fill(false);
        entry.kies_tipe_onderwys[static_cast<std::size_t>(id)] = true;
    });

    auto* data_ok = button(QStringLiteral("data_ok"), QStringLiteral("OK"), dialog);
    auto* data_del = button(QStringLiteral("data_del"), QStringLiteral("DEL"), dialog);
    auto* data_aktiveer = button(QStringLiteral("data_aktiveer"), QStringLiteral("AKT"), dialog);
    auto* opmerkings = new RemarksButton(QStringLiteral("..."), &dialog);
    opmerkings->setObjectName(QStringLiteral("opmerkings"));
    auto* alg_opsies = button(QStringLiteral("alg_opsies_1"), QStringLiteral(">>"), dialog);
    auto* kopieer = button(QStringLiteral("Kopieer_na_bl"), entry.kopieer_na_bl_caption, dialog);
    auto* staff_exit = button(QStringLiteral("staff_exit"), QStringLiteral("X"), dialog);

    refresh = [&] {
        refreshing = true;
        dialog.setWindowTitle(entry.caption);
        person->setText(entry.heading);
        boxes.show_values();
        for (int i = 0; i < kEntryFields; ++i) {
            const auto n = static_cast<std::size_t>(i);
            labels[n]->setText(entry.data_teks[n]);
            QPalette lp = labels[n]->palette();
            lp.setColor(QPalette::WindowText, colour_of(entry.data_teks_colour[n]));
            labels[n]->setPalette(lp);
        }
        QPalette bp = box(9)->palette();
        bp.setColor(QPalette::Text, entry.placeholder_shown
                                        ? QColor(Qt::gray)
                                        : dialog.palette().color(QPalette::Text));
        box(9)->setPalette(bp);
        for (int i = 0; i < kEntryLists; ++i) {
            const PopupList& model = entry.lists[static_cast<std::size_t>(i)];
            QListWidget* l = lists[static_cast<std::size_t>(i)];
            if (l->count() != model.rows.size()) {
                l->clear();
                l->addItems(model.rows);
            }
            l->setCurrentRow(model.list_index);
            if (static_cast<EntryList>(i) == EntryList::Tipe_aanstelling) {
                continue;  // a list of its own on the form
            }
            if (model.visible) {
                ui::pop_up_at(*l, *box(field_of_list[static_cast<std::size_t>(i)]));
            }
            l->setVisible(model.visible);
        }
        broodwinner->setText(entry.broodwinner_caption);
        broodwinner->setChecked(entry.broodwinner);
        for (int i = 0; i < 2; ++i) {
            p_t[static_cast<std::size_t>(i)]->setText(
                entry.kies_p_t_caption[static_cast<std::size_t>(i)]);
        }
        p_t_group->setExclusive(false);
        for (int i = 0; i < 2; ++i) {
            p_t[static_cast<std::size_t>(i)]->setChecked(
                entry.kies_p_t[static_cast<std::size_t>(i)]);
        }
        p_t_group->setExclusive(true);
        // The teaching level's caption is its frame's title, red as a label turns red; the
        // options in the frame keep the form's colours.
        level_box->setTitle(entry.data_teks[26]);
        QPalette frame = level_box->palette();
        QPalette option = frame;
        for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text}) {
            frame.setColor(role, entry.data_teks_colour[26] == kColourBlack
                                     ? dialog.palette().color(role)
                                     : colour_of(entry.data_teks_colour[26]));
            option.setColor(role, dialog.palette().color(role));
        }
        level_box->setPalette(frame);
        level_group->setExclusive(false);
        for (int i = 0; i < 6; ++i) {
            const auto n = static_cast<std::size_t>(i);
            levels[n]->setPalette(option);
            levels[n]->setText(entry.kies_tipe_onderwys_caption[n]);
            levels[n]->setChecked(entry.kies_tipe_onderwys[n]);
        }
        level_group->setExclusive(true);
        data_del->setText(entry.data_del_caption);
        data_aktiveer->setText(entry.data_aktiveer_caption);
        opmerkings->setText(entry.opmerkings_caption);
        alg_opsies->setText(entry.alg_opsies_caption);
        kopieer->setText(entry.kopieer_na_bl_caption);
        data_ok->setToolTip(entry.tool_tips.data_ok);
        data_del->setToolTip(entry.tool_tips.data_del);
        data_del->setEnabled(entry.data_del_enabled);
        opmerkings->setToolTip(entry.tool_tips.opmerkings);
        kopieer->setToolTip(entry.tool_tips.kopieer_na_bl);
        kopieer->setEnabled(entry.kopieer_na_bl_enabled);
        refreshing = false;
        if (entry.closed) {
            dialog.accept();
            return;
        }
        if (entry.focus_field >= 0 && entry.focus_field < kEntryFields) {
            const int f = entry.focus_field;
            entry.focus_field = -1;
            box(f)->setFocus();
        }
    };

    for (QListWidget* l : lists) {
        QObject::connect(l, &QListWidget::itemClicked, &dialog, [&] { refresh(); });
    }
    on_click(
        data_ok, [&] { entry.data_ok_click(); }, refresh);
    on_click(
        data_del, [&] { entry.data_del_click(); }, refresh);
    on_click(
        data_aktiveer, [&] { entry.data_aktiveer_click(); }, refresh);
    on_click(
        alg_opsies, [&] { entry.alg_opsies_click(1); }, refresh);
    on_click(
        staff_exit, [&] { entry.staff_exit_click(); }, refresh);
    on_click(
        kopieer, [&] { entry.kopieer_na_bl_click(); }, refresh);
    opmerkings->pressed_with = [&](bool right) {
        entry.opmerkings_click(right);
        refresh();
    };

    // Each field with its label; a field's list stands beside it.
    const auto column = [&](const int* fields, std::size_t count) {
        auto* grid = new QGridLayout;
        int row = 0;
        for (std::size_t k = 0; k < count; ++k) {
            const int f = fields[k];
            const int teks = entry_label_of_field(f);
            if (teks >= 0) {
                grid->addWidget(labels[static_cast<std::size_t>(teks)], row, 0);
            }
            auto* line = new QHBoxLayout;
            line->addWidget(box(f));
            if (f == 12) {
                line->addWidget(box(26));
            }
            if (const std::optional<EntryList> which =
                    StaffEntry::list_of_field(f, entry.western_cape)) {
                field_of_list[static_cast<std::size_t>(*which)] = f;
            }
            grid->addLayout(line, row, 1);
            ++row;
        }
        return grid;
    };
    auto* columns = new QHBoxLayout;
    columns->addLayout(column(kLeftColumn, std::size(kLeftColumn)));
    columns->addLayout(column(kRightColumn, std::size(kRightColumn)));
    for (int i = 0; i < kEntryLists; ++i) {
        if (static_cast<EntryList>(i) != EntryList::Tipe_aanstelling) {
            lists[static_cast<std::size_t>(i)]->hide();  // each pops up at its field
        }
    }
    // Tab goes down the left column, then the right one, then the options and buttons, as
    // they stand; Enter keeps the order the fields are filled in.
    QList<QWidget*> tab_order;
    for (const int f : kLeftColumn) {
        tab_order << box(f);
        if (f == 12) {
            tab_order << box(26);
        }
    }
    for (const int f : kRightColumn) {
        tab_order << box(f);
    }
    auto* appointment = new QVBoxLayout;
    labels[26]->hide();  // the teaching level's caption is its frame's title
    QListWidget* appointments = lists[static_cast<std::size_t>(EntryList::Tipe_aanstelling)];
    appointments->setMaximumHeight(appointments->fontMetrics().height() * 4 + 8);
    // The type of appointment stands on the form: Tab reaches it and the arrows choose.
    appointments->setFocusPolicy(Qt::StrongFocus);
    QObject::connect(appointments, &QListWidget::currentRowChanged, &dialog,
                     [&entry](int row) { entry.list_click(EntryList::Tipe_aanstelling, row); });
    box(0)->setMaximumWidth(box(0)->fontMetrics().horizontalAdvance(u'W') * 3);
    appointment->addWidget(labels[17]);
    appointment->addWidget(lists[static_cast<std::size_t>(EntryList::Tipe_aanstelling)]);
    auto* options = new QHBoxLayout;
    options->addLayout(appointment);
    options->addWidget(p_t[0]);
    options->addWidget(p_t[1]);
    options->addWidget(broodwinner);
    options->addWidget(level_box);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {data_ok, data_del, data_aktiveer, static_cast<QPushButton*>(opmerkings),
                           alg_opsies, kopieer}) {
        buttons->addWidget(b);
    }
    buttons->addStretch();
    buttons->addWidget(staff_exit);
    tab_order << lists[static_cast<std::size_t>(EntryList::Tipe_aanstelling)] << p_t[0] << p_t[1]
              << broodwinner;
    for (QRadioButton* level : levels) {
        tab_order << level;
    }
    for (QPushButton* b : {data_ok, data_del, data_aktiveer, static_cast<QPushButton*>(opmerkings),
                           alg_opsies, kopieer, staff_exit}) {
        tab_order << b;
    }
    ui::tab_in_order(tab_order);
    const ui::ScrollingBody body = ui::scrolling_body(dialog);
    auto* layout = new QVBoxLayout(body.fields);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(person);
    layout->addWidget(box(0));
    layout->addLayout(columns);
    layout->addLayout(options);
    layout->addStretch();
    body.below->addLayout(buttons);

    entry.form_activate();
    refresh();
    box(1)->setFocus();
    dialog.exec();
}

}  // namespace

void register_staff_entry_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk411_inlees"), [](ui::ChildForm& f, QWidget* p) {
        show_entry(static_cast<StaffEntry&>(f), p);
    });
}

}  // namespace korvel::staff
