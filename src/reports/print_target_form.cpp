#include "reports/print_target_form.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace korvel::reports {

namespace {

void paint_selected(QPushButton* button, bool red) {
    button->setStyleSheet(red ? QStringLiteral("color: rgb(255, 0, 0); font-weight: bold;")
                              : QString());
}

}  // namespace

PrintTargetForm::PrintTargetForm(PrintTarget& behaviour, QWidget* parent)
    : QDialog(parent), behaviour_(behaviour) {
    setObjectName(QStringLiteral("kies_drukker"));
    setModal(true);
    auto* layout = new QGridLayout(this);
    drukwerk_naam = new QLabel(this);
    drukwerk_naam->setObjectName(QStringLiteral("drukwerk_naam"));
    QFont bold = drukwerk_naam->font();
    bold.setBold(true);
    drukwerk_naam->setFont(bold);
    drukker_naam = new QLabel(this);
    drukker_naam->setObjectName(QStringLiteral("drukker_naam"));
    layout->addWidget(drukwerk_naam, 0, 0, 1, 4);
    layout->addWidget(drukker_naam, 1, 0, 1, 4);

    auto make = [this](const char* name) {
        auto* b = new QPushButton(this);
        b->setObjectName(QString::fromLatin1(name));
        b->setAutoDefault(false);
        return b;
    };
    // Made in the order they stand, which is the order Tab takes.
    druk_ok = make("druk_ok");
    druk_wysig = make("druk_wysig");
    druk_stop = make("druk_stop");
    kies_kleur = make("kies_kleur");
    kies_mono = make("kies_mono");
    kies_excel = make("kies_excel");
    kies_html = make("kies_html");
    druk_ok->setDefault(true);
    layout->addWidget(druk_ok, 2, 0);
    layout->addWidget(druk_wysig, 2, 1);
    layout->addWidget(druk_stop, 2, 2);
    layout->addWidget(kies_kleur, 3, 0);
    layout->addWidget(kies_mono, 3, 1);
    layout->addWidget(kies_excel, 3, 2);
    layout->addWidget(kies_html, 3, 3);

    bind(druk_ok, [this] { behaviour_.druk_ok_click(); });
    bind(druk_stop, [this] { behaviour_.druk_stop_click(); });
    bind(druk_wysig, [this] { behaviour_.druk_wysig_click(); });
    bind(kies_kleur, [this] { behaviour_.kies_kleur_click(); });
    bind(kies_mono, [this] { behaviour_.kies_mono_click(); });
    bind(kies_excel, [this] { behaviour_.kies_excel_click(); });
    bind(kies_html, [this] { behaviour_.kies_html_click(); });
    kies_excel->setText(QStringLiteral("EXCEL"));
    kies_html->setText(QStringLiteral("HTML"));
    refresh();
}

void PrintTargetForm::bind(QPushButton* button, std::function<void()> event) {
    connect(button, &QPushButton::clicked, this, [this, event = std::move(event)] {
        event();
        refresh();
    });
}

void PrintTargetForm::refresh() {
    setWindowTitle(behaviour_.drukwerk_naam);
    drukwerk_naam->setText(behaviour_.drukwerk_naam);
    drukker_naam->setText(behaviour_.drukker_naam);
    druk_ok->setText(behaviour_.druk_ok_caption);
    druk_ok->setToolTip(behaviour_.druk_ok_tip);
    druk_stop->setText(behaviour_.druk_stop_caption);
    druk_stop->setToolTip(behaviour_.druk_stop_tip);
    druk_wysig->setText(behaviour_.druk_wysig_caption);
    druk_wysig->setToolTip(behaviour_.druk_wysig_tip);
    kies_kleur->setText(behaviour_.kies_kleur_caption);
    kies_kleur->setToolTip(behaviour_.kies_kleur_tip);
    kies_mono->setText(behaviour_.kies_mono_caption);
    kies_mono->setToolTip(behaviour_.kies_mono_tip);
    paint_selected(kies_kleur, behaviour_.kies_kleur_red);
    paint_selected(kies_mono, behaviour_.kies_mono_red);
    if (!behaviour_.visible && isVisible())
        accept();
}

void PrintTargetForm::reject() {
    behaviour_.form_close();
    QDialog::reject();
}

}  // namespace korvel::reports
