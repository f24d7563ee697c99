// sk426_prg and sk427_prg on the screen.
#include "reports/selection_lists_form.h"

#include <QCheckBox>
#include <QDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "reports/blank_forms_form.h"
#include "reports/qualification_list.h"
#include "reports/tuition_list.h"

namespace korvel::reports {

namespace {

// Tick boxes bound to flags, in a group box.
template <size_t N>
QGroupBox* ticks(QWidget* parent, const QString& title, const QStringList& captions,
                 std::array<bool, N>& flags) {
    auto* box = new QGroupBox(title, parent);
    auto* layout = new QVBoxLayout(box);
    for (qsizetype i = 0; i < captions.size() && size_t(i) < N; ++i) {
        auto* c = new QCheckBox(captions.at(i), box);
        c->setChecked(flags[size_t(i)]);
        QObject::connect(c, &QCheckBox::toggled, box,
                         [&flags, i](bool on) { flags[size_t(i)] = on; });
        layout->addWidget(c);
    }
    return box;
}

// One choice of several, bound to an enum.
template <class E>
QGroupBox* choice(QWidget* parent, const QString& title, const QStringList& captions, E& value) {
    auto* box = new QGroupBox(title, parent);
    auto* layout = new QVBoxLayout(box);
    for (qsizetype i = 0; i < captions.size(); ++i) {
        auto* r = new QRadioButton(captions.at(i), box);
        r->setChecked(int(value) == int(i));
        QObject::connect(r, &QRadioButton::toggled, box, [&value, i](bool on) {
            if (on)
                value = E(i);
        });
        layout->addWidget(r);
    }
    return box;
}

void show_selection(StaffSelection& form, const ui::ChildForm& child, const QString& caption,
                    QWidget* extra, const std::function<void()>& ok_click, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(child.form_name());
    dialog.setWindowTitle(caption);
    auto* layout = new QHBoxLayout(&dialog);
    auto* list = new QListWidget(&dialog);
    for (const StaffListEntry& e : form.prs_lys)
        list->addItem(e.text);
    layout->addWidget(list, 1);
    auto* side = new QVBoxLayout;
    layout->addLayout(side);
    std::array<QLineEdit*, 3> range{};
    for (int i = 1; i <= 2; ++i) {
        range[size_t(i)] = new QLineEdit(form.pos_data[size_t(i)], &dialog);
        side->addWidget(new QLabel(form.pos_teks[size_t(i)], &dialog));
        side->addWidget(range[size_t(i)]);
        QObject::connect(range[size_t(i)], &QLineEdit::selectionChanged, &dialog,
                         [&form, i] { form.pos_data_got_focus(i); });
    }
    QObject::connect(list, &QListWidget::currentRowChanged, &dialog, [&](int row) {
        form.prs_lys_click(row);
        for (int i = 1; i <= 2; ++i)
            range[size_t(i)]->setText(form.pos_data[size_t(i)]);
    });
    side->addWidget(choice(&dialog, QString(), form.volgorde_captions, form.kies_volgorde));
    side->addWidget(ticks(&dialog, QString(), form.aanstelling_captions, form.kies_aanstelling));
    side->addWidget(choice(&dialog, form.administratief_caption, form.administratief_captions,
                           form.kies_administratief));
    if (extra) {
        extra->setParent(&dialog);
        side->addWidget(extra);
    }
    side->addStretch();
    side->addLayout(ok_and_exit(dialog, QStringLiteral("kr_ok"), ok_click));
    dialog.resize(900, 560);
    dialog.exec();
}

}  // namespace

QHBoxLayout* ok_and_exit(QDialog& dialog, const QString& ok_name,
                         const std::function<void()>& ok_click, const QString& ok_tip) {
    auto* ok = new QPushButton(QStringLiteral("OK"), &dialog);
    ok->setObjectName(ok_name);
    ok->setToolTip(ok_tip);
    QObject::connect(ok, &QPushButton::clicked, &dialog, ok_click);
    auto* exit = new QPushButton(QStringLiteral("X"), &dialog);
    exit->setObjectName(QStringLiteral("exit"));
    QObject::connect(exit, &QPushButton::clicked, &dialog, &QDialog::accept);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(ok);
    buttons->addWidget(exit);
    return buttons;
}

void register_selection_lists_forms(ui::QtDialogs& dialogs) {
    register_blank_forms_form(dialogs);
    dialogs.register_form(QStringLiteral("sk426_prg"), [](ui::ChildForm& f, QWidget* p) {
        auto& form = static_cast<TuitionList&>(f);
        show_selection(
            form, form, form.caption, nullptr, [&form] { form.kr_ok_click(); }, p);
    });
    dialogs.register_form(QStringLiteral("sk427_prg"), [](ui::ChildForm& f, QWidget* p) {
        auto& form = static_cast<StaffQualificationList&>(f);
        const QStringList captions(form.kwalifikasie_lys_captions.begin(),
                                   form.kwalifikasie_lys_captions.end());
        show_selection(
            form, form, form.caption, ticks(nullptr, QString(), captions, form.kwalifikasie_lys),
            [&form] { form.kr_ok_click(); }, p);
    });
}

}  // namespace korvel::reports
