#include "staff/subject_codes_form.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <functional>

#include "shell/form_header.h"
#include "staff/form_boxes.h"
#include "staff/subject_codes.h"

namespace korvel::staff {

namespace {

void show_subject_codes(SubjectChooser& form, QWidget* parent) {
    form.form_load();
    QDialog dialog(parent);
    dialog.setObjectName(form.form_name());
    dialog.setWindowTitle(form.caption);
    auto* table = new QTableWidget(&dialog);
    table->setObjectName(QStringLiteral("lurits_vaklys"));
    table->setFont(QFont(QStringLiteral("Arial"), 8));
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->verticalHeader()->setVisible(false);
    table->horizontalHeader()->setStretchLastSection(true);
    table->setColumnCount(kSubjectColumns);
    QStringList headings;
    for (int c = 0; c < kSubjectColumns; ++c) {
        headings << form.lurits_vaklys.columns[static_cast<std::size_t>(c)].heading;
    }
    table->setHorizontalHeaderLabels(headings);

    const auto show_rows = [&] {
        const auto& rows = form.lurits_vaklys.rows;
        table->setRowCount(static_cast<int>(rows.size()));
        for (int r = 0; r < static_cast<int>(rows.size()); ++r) {
            for (int c = 0; c < kSubjectColumns; ++c) {
                table->setItem(
                    r, c,
                    new QTableWidgetItem(
                        rows[static_cast<std::size_t>(r)].cells[static_cast<std::size_t>(c)]));
            }
        }
        const int selected = form.lurits_vaklys.selected;
        if (selected >= 0) {
            table->selectRow(selected);
            table->scrollToItem(table->item(selected, 0), QAbstractItemView::PositionAtCenter);
        } else {
            table->clearSelection();
        }
    };
    QObject::connect(table->horizontalHeader(), &QHeaderView::sectionClicked, &dialog,
                     [&](int column) {
                         form.lurits_vaklys_column_click(column);
                         show_rows();
                     });
    // A click on a row chooses it; so does Enter on the current row.
    const auto choose = [&](int row) {
        form.lurits_vaklys_click(row);
        if (form.closed) {
            dialog.accept();
        }
    };
    QObject::connect(table, &QTableWidget::cellClicked, &dialog,
                     [choose](int row, int) { choose(row); });
    QObject::connect(table, &QTableWidget::activated, &dialog,
                     [choose](const QModelIndex& at) { choose(at.row()); });
    QPushButton* ok = button(QStringLiteral("vakke_ok"), QStringLiteral("OK"), dialog);
    QObject::connect(ok, &QPushButton::clicked, &dialog, [&] {
        form.vakke_ok_click();
        dialog.accept();
    });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(table);
    layout->addLayout(buttons);
    dialog.resize(520, 420);
    show_rows();
    dialog.exec();
}

}  // namespace

void register_subject_codes_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("Personeel_vakke"), [](ui::ChildForm& f, QWidget* p) {
        show_subject_codes(static_cast<SubjectChooser&>(f), p);
    });
}

}  // namespace korvel::staff
