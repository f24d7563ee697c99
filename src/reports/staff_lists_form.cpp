#include "reports/staff_lists_form.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDateEdit>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "platform/winpath.h"
#include "reports/print_menu.h"
#include "reports/print_target_host.h"
#include "reports/school_report.h"
#include "reports/staff_lists.h"

namespace korvel::reports {

namespace {

void show_staff_list_form(StaffLists& form, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(form.form_name());
    dialog.setWindowTitle(form.caption);
    auto* layout = new QHBoxLayout(&dialog);
    auto* list = new QListWidget(&dialog);
    for (const StaffListEntry& e : form.prs_lys) {
        list->addItem(e.text);
    }
    layout->addWidget(list, 1);
    auto* side = new QVBoxLayout;
    layout->addLayout(side);

    // The range: a click in the list fills the box that last had the focus.
    std::array<QLineEdit*, 3> range{};
    for (int i = 1; i <= 2; ++i) {
        range[static_cast<std::size_t>(i)] = new QLineEdit(&dialog);
        side->addWidget(new QLabel(form.pos_teks[static_cast<std::size_t>(i)], &dialog));
        side->addWidget(range[static_cast<std::size_t>(i)]);
    }
    const auto show_range = [&] {
        for (int i = 1; i <= 2; ++i) {
            range[static_cast<std::size_t>(i)]->setText(form.pos_data[static_cast<std::size_t>(i)]);
        }
    };
    for (int i = 1; i <= 2; ++i) {
        QLineEdit* box = range[static_cast<std::size_t>(i)];
        QObject::connect(box, &QLineEdit::selectionChanged, &dialog,
                         [&, i] { form.pos_data_got_focus(i); });
        QObject::connect(box, &QLineEdit::textEdited, &dialog, [&, i](const QString& t) {
            form.pos_data_got_focus(i);
            form.pos_data[static_cast<std::size_t>(i)] = t;
        });
    }
    QObject::connect(list, &QListWidget::currentRowChanged, &dialog, [&](int row) {
        form.prs_lys_click(row);
        show_range();
    });

    auto* order = new QGroupBox(&dialog);
    auto* order_layout = new QVBoxLayout(order);
    for (int i = 0; i < form.volgorde_captions.size(); ++i) {
        auto* r = new QRadioButton(form.volgorde_captions.at(i), order);
        r->setChecked(static_cast<int>(form.kies_volgorde) == i);
        QObject::connect(r, &QRadioButton::toggled, &dialog, [&, i](bool on) {
            if (on) {
                form.kies_volgorde = static_cast<StaffOrder>(i);
            }
        });
        order_layout->addWidget(r);
    }
    side->addWidget(order);

    auto* kinds = new QGroupBox(&dialog);
    auto* kinds_layout = new QVBoxLayout(kinds);
    for (int i = 0; i < form.aanstelling_captions.size() && i < 3; ++i) {
        auto* c = new QCheckBox(form.aanstelling_captions.at(i), kinds);
        c->setChecked(form.kies_aanstelling[static_cast<std::size_t>(i)]);
        QObject::connect(c, &QCheckBox::toggled, &dialog, [&, i](bool on) {
            form.kies_aanstelling[static_cast<std::size_t>(i)] = on;
        });
        kinds_layout->addWidget(c);
    }
    side->addWidget(kinds);

    auto* admin = new QGroupBox(form.administratief_caption, &dialog);
    auto* admin_layout = new QVBoxLayout(admin);
    for (int i = 0; i < form.administratief_captions.size(); ++i) {
        auto* r = new QRadioButton(form.administratief_captions.at(i), admin);
        r->setChecked(static_cast<int>(form.kies_administratief) == i);
        QObject::connect(r, &QRadioButton::toggled, &dialog, [&, i](bool on) {
            if (on) {
                form.kies_administratief = static_cast<AdminChoice>(i);
            }
        });
        admin_layout->addWidget(r);
    }
    side->addWidget(admin);

    if (form.option == reports::kBirthdayListOption) {
        for (int i = 1; i <= 2; ++i) {
            side->addWidget(new QLabel(form.jr_teks[static_cast<std::size_t>(i)], &dialog));
            auto* d = new QDateEdit(form.jr_data[static_cast<std::size_t>(i)], &dialog);
            d->setDisplayFormat(QStringLiteral("yyyy.MM.dd"));
            d->setCalendarPopup(true);
            QObject::connect(d, &QDateEdit::dateChanged, &dialog, [&, i](const QDate& v) {
                form.jr_data[static_cast<std::size_t>(i)] = v;
            });
            side->addWidget(d);
        }
        auto* ages = new QPushButton(form.slegs_ouderdomslys_caption, &dialog);
        QObject::connect(ages, &QPushButton::clicked, &dialog,
                         [&] { form.slegs_ouderdomslys_click(); });
        side->addWidget(ages);
    }
    if (form.option == reports::kStaffDetailsOption) {
        static const char* const kSections[] = {"ALG", "ADR", "BNK", "KWL", "AAN", "OND", "KLS"};
        auto* ticks = new QGroupBox(&dialog);
        auto* ticks_layout = new QHBoxLayout(ticks);
        for (int i = 0; i < reports::kSectionCount; ++i) {
            auto* c = new QCheckBox(QString::fromLatin1(kSections[i]), ticks);
            c->setChecked(form.sections[static_cast<std::size_t>(i)]);
            QObject::connect(c, &QCheckBox::toggled, &dialog,
                             [&, i](bool on) { form.sections[static_cast<std::size_t>(i)] = on; });
            ticks_layout->addWidget(c);
        }
        side->addWidget(ticks);
    }
    side->addStretch();
    auto* ok = new QPushButton(QStringLiteral("OK"), &dialog);
    ok->setObjectName(QStringLiteral("kr_ok"));
    auto* exit = new QPushButton(QStringLiteral("X"), &dialog);
    QObject::connect(ok, &QPushButton::clicked, &dialog, [&] {
        if (form.option == reports::kBirthdayListOption) {
            form.vj_ok_click();
        } else {
            form.kr_ok_click();
        }
    });
    QObject::connect(exit, &QPushButton::clicked, &dialog, &QDialog::accept);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(ok);
    buttons->addWidget(exit);
    side->addLayout(buttons);
    show_range();
    dialog.resize(900, 560);
    dialog.exec();
}

}  // namespace

void register_staff_lists_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk421_prg"), [](ui::ChildForm& f, QWidget* p) {
        show_staff_list_form(static_cast<StaffLists&>(f), p);
    });
}
}  // namespace korvel::reports
