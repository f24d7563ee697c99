#include "yearend/staff_export_form.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "yearend/staff_export.h"

namespace korvel::yearend {

namespace {

class StaffExportForm : public QWidget {
  public:
    StaffExportForm(shell::Session& session, QWidget* parent) : QWidget(parent), form_(session) {
        setObjectName(QStringLiteral("sk4_export"));
        years_ = new QListWidget(this);
        years_->setObjectName(QStringLiteral("rekords_jaar_lys"));
        staff_ = new QTreeWidget(this);
        staff_->setObjectName(QStringLiteral("personeel_lys"));
        staff_->setRootIsDecorated(false);
        fields_ = new QListWidget(this);
        fields_->setObjectName(QStringLiteral("uitvoer_velde"));
        fields_->installEventFilter(this);
        ok_ = new QPushButton(QStringLiteral("OK"), this);
        ok_->setObjectName(QStringLiteral("uitvoer_velde_ok"));
        admin_titel_ = new QLabel(this);
        admin_titel_->setObjectName(QStringLiteral("admin_titel"));

        connect(years_, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* item) {
            form_.rekords_jaar_lys_dbl_click(years_->row(item));
            refresh();
        });
        connect(fields_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
            form_.uitvoer_velde_click(fields_->row(item));
            refresh_fields();
        });
        connect(ok_, &QPushButton::clicked, this, [this] {
            form_.uitvoer_velde_ok_click();
            refresh();
        });

        // The years take what four digits need; the names get the room.
        years_->setMaximumWidth(years_->fontMetrics().horizontalAdvance(QStringLiteral("00000")) +
                                40);
        staff_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        auto* lists = new QHBoxLayout;
        lists->addWidget(years_);
        lists->addWidget(staff_, 3);
        lists->addWidget(fields_, 2);
        auto* layout = new QVBoxLayout(this);
        layout->addLayout(lists);
        layout->addWidget(admin_titel_);
        layout->addWidget(ok_);
        resize(1100, 600);
    }

    bool load() {
        form_.form_load();
        if (form_.unloaded) {
            return false;
        }
        setWindowTitle(form_.caption + QStringLiteral(" - ") + form_.heading);
        years_->setToolTip(form_.rekords_jaar_tooltip);
        fields_->setToolTip(form_.uitvoer_velde_tooltip);
        staff_->setHeaderLabels(form_.personeel_lys_columns);
        years_->addItems(form_.rekords_jaar_lys);
        fields_->addItems(form_.uitvoer_velde);
        refresh();
        return true;
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == fields_ && event->type() == QEvent::KeyPress) {
            const auto* key = static_cast<QKeyEvent*>(event);
            if (key->key() == Qt::Key_Down && (key->modifiers() & Qt::AltModifier)) {
                form_.uitvoer_velde_alt_down(fields_->currentRow());
                refresh_fields();
                return true;
            }
        }
        return QWidget::eventFilter(watched, event);
    }

  private:
    void refresh() {
        if (form_.unloaded) {
            close();
            return;
        }
        years_->setCurrentRow(form_.rekords_jaar_index);
        staff_->clear();
        for (const ExportRow& row : form_.personeel_lys) {
            staff_->addTopLevelItem(
                new QTreeWidgetItem({QString::number(row.record), row.post, row.names}));
        }
        fields_->setVisible(form_.uitvoer_velde_visible);
        ok_->setVisible(form_.uitvoer_velde_visible);
        admin_titel_->setText(form_.admin_titel);
        refresh_fields();
    }
    void refresh_fields() {
        for (int i = 0; i < fields_->count(); ++i) {
            fields_->item(i)->setSelected(form_.uitvoer_velde_selected[size_t(i)]);
        }
    }

    StaffExport form_;
    QListWidget *years_, *fields_;
    QTreeWidget* staff_;
    QPushButton* ok_;
    QLabel* admin_titel_;
};

}  // namespace

QWidget* open_staff_export(shell::Session& session, QWidget* parent) {
    auto* form = new StaffExportForm(session, parent);
    if (!form->load()) {
        delete form;
        return nullptr;
    }
    return form;
}

}  // namespace korvel::yearend
