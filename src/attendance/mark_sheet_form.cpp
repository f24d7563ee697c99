// sk425_prg, sk425_opsies
#include "attendance/mark_sheet_form.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

#include "reports/print_menu.h"
#include "shell/session.h"

namespace korvel::attendance {

MarkSheetForm::MarkSheetForm(MarkSheet& sheet, QWidget* parent) : QDialog(parent), sheet_(sheet) {
    setObjectName(sheet.form_name());
    setWindowTitle(sheet.caption);
    auto* layout = new QVBoxLayout(this);
    const auto& rows = sheet_.range.rows();
    prs_grid_ = new QTableWidget(int(rows.size()), 2, this);
    prs_grid_->setObjectName(QStringLiteral("prs_grid"));
    prs_grid_->setHorizontalHeaderLabels(
        sheet_.grid_format.split(u'|').mid(1).replaceInStrings(QStringLiteral("<"), QString()));
    prs_grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    prs_grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    for (int r = 0; r < int(rows.size()); ++r) {
        prs_grid_->setItem(r, 0, new QTableWidgetItem(rows[size_t(r)].post));
        prs_grid_->setItem(r, 1, new QTableWidgetItem(rows[size_t(r)].name));
    }
    prs_grid_->resizeColumnsToContents();
    prs_grid_->horizontalHeader()->setStretchLastSection(true);
    connect(prs_grid_, &QTableWidget::cellClicked, this, [this](int row, int) {
        sheet_.prs_grid_click(row);
        refresh();
    });
    layout->addWidget(prs_grid_, 1);
    auto* boxes = new QFormLayout;
    for (int i : {1, 2}) {
        pos_data_[size_t(i)] = new QLabel(this);
        pos_data_[size_t(i)]->setFrameShape(QFrame::Panel);
        boxes->addRow(sheet_.pos_teks[size_t(i)], pos_data_[size_t(i)]);
    }
    layout->addLayout(boxes);
    auto* buttons = new QHBoxLayout;
    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("data_ok"));
    connect(ok, &QPushButton::clicked, this, [this] { sheet_.data_ok_click(); });
    auto* exit = new QPushButton(QStringLiteral("X"), this);
    exit->setObjectName(QStringLiteral("data_exit"));
    connect(exit, &QPushButton::clicked, this, [this] {
        sheet_.exit_click();
        accept();
    });
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(exit);
    layout->addLayout(buttons);
    refresh();
    resize(600, 600);
}

void MarkSheetForm::refresh() {
    pos_data_[1]->setText(sheet_.range.box_text(reports::StaffRange::From));
    pos_data_[2]->setText(sheet_.range.box_text(reports::StaffRange::To));
}

namespace {

void show_options(MarkSheetOptions& o, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(o.form_name());
    dialog.setWindowTitle(o.caption);
    auto* layout = new QVBoxLayout(&dialog);
    auto* types = new QGroupBox(o.tipe_caption, &dialog);
    auto* type_list = new QListWidget(types);
    type_list->addItems(o.tipe_lys);
    type_list->setSelectionMode(QAbstractItemView::MultiSelection);
    (new QVBoxLayout(types))->addWidget(type_list);
    layout->addWidget(types);

    auto* form = new QFormLayout;
    std::array<QLineEdit*, 12> edits{};
    const auto edit = [&](int i) {
        edits[size_t(i)] = new QLineEdit(o.ps_data[size_t(i)], &dialog);
        edits[size_t(i)]->setObjectName(QStringLiteral("ps_data_%1").arg(i));
        edits[size_t(i)]->setToolTip(o.ps_tooltip[size_t(i)]);
        edits[size_t(i)]->setMaxLength(kOptionTextLimit);
        return edits[size_t(i)];
    };
    // The letterhead and the dates are chosen, not typed.
    auto* letterhead = new QPushButton(o.ps_data[kLetterheadBox], &dialog);
    letterhead->setObjectName(QStringLiteral("ps_data_%1").arg(kLetterheadBox));
    QObject::connect(letterhead, &QPushButton::clicked, &dialog, [&] {
        o.ps_data_click(kLetterheadBox);
        letterhead->setText(o.ps_data[kLetterheadBox]);
    });
    form->addRow(o.briefhoof_caption, letterhead);
    auto* dates = new QHBoxLayout;
    for (int i : {kFromDateBox, kToDateBox}) {
        auto* b = new QPushButton(o.ps_data[size_t(i)], &dialog);
        b->setObjectName(QStringLiteral("ps_data_%1").arg(i));
        b->setToolTip(o.ps_tooltip[size_t(i)]);
        QObject::connect(b, &QPushButton::clicked, &dialog, [&o, b, i] {
            o.ps_data_click(i);
            b->setText(o.ps_data[size_t(i)]);
        });
        dates->addWidget(b);
    }
    form->addRow(o.datums_caption, dates);
    auto* days = new QHBoxLayout;
    for (int i : {6, 7}) {
        days->addWidget(edit(i));
    }
    form->addRow(o.dae_caption, days);
    form->addRow(o.kontak_caption, edit(kFirstContactBox));
    form->addRow(QString(), edit(kFirstContactBox + 1));
    form->addRow(o.kommentaar_caption, edit(kFirstCommentBox));
    form->addRow(QString(), edit(kFirstCommentBox + 1));
    layout->addLayout(form);
    auto* male = new QCheckBox(o.manlik_caption, &dialog);
    auto* female = new QCheckBox(o.vroulik_caption, &dialog);
    male->setObjectName(QStringLiteral("manlik"));
    female->setObjectName(QStringLiteral("vroulik"));
    male->setChecked(o.manlik);
    female->setChecked(o.vroulik);
    layout->addWidget(male);
    layout->addWidget(female);
    auto* buttons = new QHBoxLayout;
    auto* ok = new QPushButton(QStringLiteral("OK"), &dialog);
    ok->setObjectName(QStringLiteral("data_ok"));
    QObject::connect(ok, &QPushButton::clicked, &dialog, [&] {
        for (int i : {6, 7, kFirstContactBox, kFirstContactBox + 1, kFirstCommentBox,
                      kFirstCommentBox + 1}) {
            o.ps_data[size_t(i)] = edits[size_t(i)]->text();
        }
        o.manlik = male->isChecked();
        o.vroulik = female->isChecked();
        o.data_ok_click();
        dialog.accept();
    });
    auto* exit = new QPushButton(QStringLiteral("X"), &dialog);
    exit->setObjectName(QStringLiteral("data_exit"));
    QObject::connect(exit, &QPushButton::clicked, &dialog, [&] {
        o.exit_click();
        dialog.reject();
    });
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(exit);
    layout->addLayout(buttons);
    dialog.exec();
}

}  // namespace

void register_mark_sheet_forms(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk425_prg"), [](ui::ChildForm& f, QWidget* p) {
        auto& request = static_cast<reports::ReportFormRequest&>(f);
        MarkSheet sheet(request.session, request.job, request.host);
        sheet.form_load();
        MarkSheetForm form(sheet, p);
        form.exec();
    });
    dialogs.register_form(QStringLiteral("sk425_opsies"), [](ui::ChildForm& f, QWidget* p) {
        show_options(static_cast<MarkSheetOptions&>(f), p);
    });
}

}  // namespace korvel::attendance
