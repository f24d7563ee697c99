// sk424_prg on the screen.
#include "reports/blank_forms_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QHBoxLayout>
#include <QListWidget>
#include <QVBoxLayout>

#include "reports/blank_forms.h"
#include "reports/selection_lists_form.h"

namespace korvel::reports {

namespace {

void show_blank_forms(BlankForms& form, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(form.form_name());
    dialog.setWindowTitle(form.caption);
    auto* layout = new QHBoxLayout(&dialog);

    auto* list = new QListWidget(&dialog);
    list->setObjectName(QStringLiteral("prs_lys"));
    list->setSelectionMode(QAbstractItemView::MultiSelection);
    for (const StaffListEntry& e : form.prs_lys)
        list->addItem(e.text);
    QObject::connect(list, &QListWidget::itemClicked, &dialog,
                     [&form, list](QListWidgetItem* item) { form.prs_lys_click(list->row(item)); });
    layout->addWidget(list, 1);

    auto* side = new QVBoxLayout;
    layout->addLayout(side);
    for (int i = 1; i <= kBlankFormCount; ++i) {
        auto* tick = new QCheckBox(form.druk_opsie_captions[size_t(i)], &dialog);
        tick->setObjectName(QStringLiteral("druk_opsie_%1").arg(i));
        tick->setChecked(form.druk_opsie[size_t(i)]);
        QObject::connect(tick, &QCheckBox::toggled, &dialog,
                         [&form, i](bool on) { form.druk_opsie[size_t(i)] = on; });
        side->addWidget(tick);
    }
    auto* language = new QComboBox(&dialog);
    language->setObjectName(QStringLiteral("taal_keuse"));
    language->addItems(form.taal_keuse);
    language->setCurrentIndex(form.taal_afrikaans ? 0 : 1);
    QObject::connect(language, &QComboBox::currentIndexChanged, &dialog,
                     [&form](int item) { form.taal_keuse_click(item); });
    side->addWidget(language);
    auto* month = new QComboBox(&dialog);
    month->setObjectName(QStringLiteral("maand_lys"));
    month->addItems(form.maand_lys_items);
    month->setCurrentIndex(form.maand_lys - 1);
    QObject::connect(month, &QComboBox::currentIndexChanged, &dialog,
                     [&form](int item) { form.maand_lys = item + 1; });
    side->addWidget(month);
    side->addStretch();

    side->addLayout(ok_and_exit(
        dialog, QStringLiteral("opsies_ok"), [&form] { form.opsies_ok_click(); },
        form.opsies_ok_tip));
    dialog.resize(760, 520);
    dialog.exec();
}

}  // namespace

void register_blank_forms_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk424_prg"), [](ui::ChildForm& f, QWidget* p) {
        show_blank_forms(static_cast<BlankForms&>(f), p);
    });
}

}  // namespace korvel::reports
