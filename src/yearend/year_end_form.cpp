#include "yearend/year_end_form.h"

#include <QDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "yearend/year_choice.h"
#include "yearend/year_end.h"

namespace korvel::yearend {

namespace {

class YearEndForm : public QWidget {
  public:
    YearEndForm(shell::Session& session, QWidget* parent,
                std::function<void(const QString&)> menu_year_change)
        : QWidget(parent), form_(session) {
        setObjectName(QStringLiteral("evj_personeel"));
        form_.menu_year_change = std::move(menu_year_change);
        form_.form_load();
        old_dta_ = new QLabel(this);
        old_dta_->setObjectName(QStringLiteral("old_dta"));
        new_dta_ = new QLabel(form_.new_dta_caption, this);
        new_dta_->setObjectName(QStringLiteral("new_dta"));
        nuwe_jaar_ = new QLineEdit(this);
        nuwe_jaar_->setObjectName(QStringLiteral("nuwe_jaar"));
        nuwe_jaar_->setMaxLength(4);
        folder_ = new QLabel(this);
        auto* rekords_jaar = new QPushButton(form_.rekords_jaar_caption, this);
        rekords_jaar->setObjectName(QStringLiteral("rekords_jaar"));
        auto* evj_ok = new QPushButton(QStringLiteral("OK"), this);
        evj_ok->setObjectName(QStringLiteral("evj_ok"));
        auto* staff_exit = new QPushButton(QStringLiteral("EXIT"), this);
        staff_exit->setObjectName(QStringLiteral("staff_exit"));

        frame_ = new QGroupBox(this);
        frame_->setObjectName(QStringLiteral("byvoeg_oorskryf"));
        bo_teks_ = new QLabel(frame_);
        bo_teks_->setObjectName(QStringLiteral("bo_teks"));
        options_[0] = new QRadioButton(form_.bo_opsie_captions.value(0), frame_);
        options_[1] = new QRadioButton(form_.bo_opsie_captions.value(1), frame_);
        auto* bo_ok = new QPushButton(QStringLiteral("OK"), frame_);
        bo_ok->setObjectName(QStringLiteral("bo_ok"));
        auto* frame_layout = new QVBoxLayout(frame_);
        frame_layout->addWidget(bo_teks_);
        frame_layout->addWidget(options_[0]);
        frame_layout->addWidget(options_[1]);
        frame_layout->addWidget(bo_ok);

        connect(rekords_jaar, &QPushButton::clicked, this, [this] {
            form_.rekords_jaar_click();
            refresh();
        });
        connect(evj_ok, &QPushButton::clicked, this, [this] {
            form_.nuwe_jaar = nuwe_jaar_->text();
            form_.evj_ok_click();
            refresh();
        });
        connect(bo_ok, &QPushButton::clicked, this, [this] {
            form_.bo_opsie = options_[1]->isChecked() ? 1 : 0;
            form_.bo_ok_click();
            refresh();
        });
        connect(staff_exit, &QPushButton::clicked, this, [this] {
            form_.staff_exit_click();
            refresh();
        });

        auto* years = new QHBoxLayout;
        years->addWidget(old_dta_);
        years->addWidget(new_dta_);
        years->addWidget(nuwe_jaar_);
        years->addWidget(rekords_jaar);
        auto* buttons = new QHBoxLayout;
        buttons->addStretch();
        buttons->addWidget(evj_ok);
        buttons->addWidget(staff_exit);
        auto* layout = new QVBoxLayout(this);
        layout->addLayout(years);
        layout->addWidget(folder_);
        layout->addWidget(frame_);
        layout->addLayout(buttons);
        setWindowModality(Qt::ApplicationModal);
        refresh();
    }

  private:
    void refresh() {
        if (form_.unloaded) {
            close();
            return;
        }
        setWindowTitle(form_.caption);
        old_dta_->setText(form_.old_dta_caption + QStringLiteral("  ") + form_.old_dta);
        nuwe_jaar_->setText(form_.nuwe_jaar);
        folder_->setText(form_.folder_display);
        frame_->setVisible(form_.byvoeg_oorskryf_visible);
        bo_teks_->setText(form_.bo_teks);
        options_[form_.bo_opsie == 1 ? 1 : 0]->setChecked(true);
        if (form_.byvoeg_oorskryf_visible) {
            options_[0]->setFocus();
        }
    }

    YearEnd form_;
    QLabel *old_dta_, *new_dta_, *folder_, *bo_teks_;
    QLineEdit* nuwe_jaar_;
    QGroupBox* frame_;
    QRadioButton* options_[2];
};

void show_year_choice(YearChoice& choice, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(choice.form_name());
    dialog.setWindowTitle(choice.caption);
    auto* list = new QListWidget(&dialog);
    list->setObjectName(QStringLiteral("rekords_jaar_lys"));
    list->addItems(choice.rekords_jaar_lys);
    list->setCurrentRow(choice.selected);
    // Enter on a year chooses it as a double click does.
    QObject::connect(list, &QListWidget::itemActivated, &dialog, [&](QListWidgetItem* item) {
        choice.rekords_jaar_lys_dbl_click(list->row(item));
        dialog.accept();
    });
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(list);
    // Wide enough for the caption in the title bar, with room for its buttons.
    dialog.resize(std::max(240, dialog.fontMetrics().horizontalAdvance(choice.caption) + 140), 320);
    dialog.exec();
    // Leaving the form with a year selected chooses it too.
    choice.selected = list->currentRow();
    choice.form_unload();
}

}  // namespace

QWidget* open_year_end(shell::Session& session, QWidget* parent,
                       std::function<void(const QString&)> menu_year_change) {
    return new YearEndForm(session, parent, std::move(menu_year_change));
}

void register_year_choice_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("rekords_van_jaar"), [](ui::ChildForm& f, QWidget* p) {
        show_year_choice(static_cast<YearChoice&>(f), p);
    });
}

}  // namespace korvel::yearend
