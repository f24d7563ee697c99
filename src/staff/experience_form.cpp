#include "staff/experience_form.h"

#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <functional>
#include <memory>
#include <vector>

#include "staff/detail_grid_form.h"
#include "staff/experience.h"
#include "staff/form_boxes.h"

namespace korvel::staff {

namespace {

const char* const kGridNames[kExperienceGrids] = {"skl_grid", "vak_grid", "b_m_grid", "b_o_grid"};
const char* const kBoxNames[kExperienceGrids] = {"skole_data", "vak_data", "b_m_data", "b_o_data"};
const char* const kOkNames[kExperienceGrids] = {"skole_data_ok", "vakke_data_ok", "b_m_data_ok",
                                                "b_o_data_ok"};

// The widgets of one grid and its edit frame.
struct FrameWidgets {
    std::unique_ptr<GridView> grid;
    std::unique_ptr<Boxes> boxes;
    QGroupBox* frame = nullptr;
};

void show_experience(Experience& form, QWidget* parent) {
    form.form_load();
    QDialog dialog(parent);
    dialog.setObjectName(form.form_name());
    dialog.setWindowTitle(form.caption);
    std::function<void()> refresh;
    const auto key = [&form](int, int k) { return form.data_key_press(k); };

    auto* page = new QWidget;
    auto* page_layout = new QVBoxLayout(page);
    page_layout->addWidget(heading(form.caption, dialog));

    // The post level and the years.
    auto* years = new QGridLayout;
    Boxes jre(dialog, form.jre_data, key, {}, [&](int index, bool twice) {
        if (twice) {
            form.jre_data_dbl_click(index);
            refresh();
        }
    });
    for (int i = 0; i < kYearBoxes; ++i) {
        QLineEdit* e = jre.make(i, 6, page);
        e->setObjectName(QStringLiteral("jre_data_%1").arg(i));
        auto* l = new QLabel(form.jare_teks[static_cast<std::size_t>(i)], page);
        l->setObjectName(QStringLiteral("jare_teks_%1").arg(i));
        years->addWidget(l, i, 0);
        years->addWidget(e, i, 1);
    }
    ListView posvlak(
        form.posvlak_lys, QStringLiteral("posvlak_lys"), false,
        [&](int row) {
            form.posvlak_lys_click(row);
            refresh();
        },
        page);
    years->addWidget(&posvlak, 0, 2, 4, 1);
    page_layout->addLayout(years);

    std::vector<FrameWidgets> frames(kExperienceGrids);
    for (int g = 0; g < kExperienceGrids; ++g) {
        const auto which = static_cast<ExperienceGrid>(g);
        ExperienceFrame& f = form.frame(which);
        FrameWidgets& w = frames[static_cast<std::size_t>(g)];
        auto* group = new QGroupBox(f.caption, page);
        auto* group_layout = new QVBoxLayout(group);
        w.grid = std::make_unique<GridView>(
            f.grid, QString::fromLatin1(kGridNames[g]),
            [&, which](int row) {
                form.grid_click(which, row);
                refresh();
            },
            group);
        w.grid->setMinimumHeight(g == kSubjectsGrid ? 260 : 150);
        group_layout->addWidget(w.grid.get());
        if (which == kSubjectsGrid) {
            QPushButton* erase = button(QStringLiteral("kwl_vakke"), QStringLiteral("X"), dialog);
            erase->setToolTip(f.tool_tip);
            on_click(
                erase, [&] { form.kwl_vakke_mouse_down(); }, refresh);
            group_layout->addWidget(erase, 0, Qt::AlignLeft);
        }
        w.frame = new QGroupBox(f.caption, group);
        w.frame->setObjectName(QString::fromLatin1(kBoxNames[g]) + QStringLiteral("_raam"));
        auto* frame_layout = new QGridLayout(w.frame);
        w.boxes = std::make_unique<Boxes>(dialog, f.data, key, Boxes::Focus{},
                                          [&, which](int box, bool twice) {
                                              if (which == kSubjectsGrid && twice) {
                                                  form.vak_data_dbl_click(box);
                                              } else if (!twice) {
                                                  form.frame_data_click(which, box);
                                              }
                                              refresh();
                                          });
        for (int box = 1; box <= f.grid.columns; ++box) {
            QLineEdit* e = w.boxes->make(box, 50, w.frame);
            e->setObjectName(
                QStringLiteral("%1_%2").arg(QString::fromLatin1(kBoxNames[g])).arg(box));
            frame_layout->addWidget(new QLabel(f.labels[static_cast<std::size_t>(box)], w.frame),
                                    box, 0);
            frame_layout->addWidget(e, box, 1);
        }
        QPushButton* ok = button(QString::fromLatin1(kOkNames[g]), QStringLiteral("OK"), dialog);
        on_click(
            ok, [&, which] { form.frame_ok_click(which); }, refresh);
        frame_layout->addWidget(ok, f.grid.columns + 1, 1);
        group_layout->addWidget(w.frame);
        page_layout->addWidget(group);
    }

    auto* scroll = new QScrollArea(&dialog);
    scroll->setWidget(page);
    scroll->setWidgetResizable(true);
    QPushButton* jre_ok = button(QStringLiteral("jre_ok"), QStringLiteral("OK"), dialog);
    QPushButton* exit = button(QStringLiteral("staff_exit"), QStringLiteral("X"), dialog);
    refresh = [&] {
        jre.show_values();
        posvlak.show_values();
        for (int i = 0; i < kYearBoxes; ++i) {
            if (QLineEdit* e = jre.at(i)) {
                e->setFocusPolicy(form.jre_tab_stops ? Qt::StrongFocus : Qt::ClickFocus);
            }
        }
        for (int g = 0; g < kExperienceGrids; ++g) {
            FrameWidgets& w = frames[static_cast<std::size_t>(g)];
            const ExperienceFrame& f = form.frames[static_cast<std::size_t>(g)];
            w.grid->show_values();
            w.boxes->show_values();
            w.frame->setVisible(f.visible);
            if (f.visible && form.focus_box != 0) {
                if (QLineEdit* e = w.boxes->at(form.focus_box)) {
                    e->setFocus();
                }
                form.focus_box = 0;
            }
        }
        if (form.closed) {
            dialog.accept();
        }
    };
    on_click(
        jre_ok, [&] { form.jre_ok_click(); }, refresh);
    on_click(
        exit, [&] { form.staff_exit_click(); }, refresh);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(jre_ok);
    buttons->addWidget(exit);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(scroll);
    layout->addLayout(buttons);
    dialog.resize(760, 640);
    refresh();
    dialog.exec();
}

}  // namespace

void register_experience_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk416_prg"), [](ui::ChildForm& f, QWidget* p) {
        show_experience(static_cast<Experience&>(f), p);
    });
}

}  // namespace korvel::staff
