// sk461_prg, lone_kies_druk, sk4611_prg, sk1_kies_briefhoofde, sk1_briefhoof: the Qt side.
#include "payroll/salary_capture_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QTableWidget>
#include <QVBoxLayout>
#include <functional>

#include "payroll/pay_slips.h"
#include "payroll/salary_capture.h"
#include "reports/letterhead_forms.h"
#include "reports/print_target.h"
#include "reports/print_target_host.h"
#include "reports/school_report.h"
#include "store/record_layouts.h"
#include "ui/form_window.h"
#include "ui/qt_dialogs.h"

namespace korvel::payroll {

namespace {

QTableWidget* staff_table(QWidget* parent, const QString& format,
                          const std::vector<PayrollPerson>& people, bool id_column) {
    QStringList heads = format.split(u'|');
    for (QString& h : heads)
        h.remove(u'<');
    auto* t = new QTableWidget(int(people.size()), int(heads.size()), parent);
    t->setHorizontalHeaderLabels(heads);
    t->setSelectionBehavior(QAbstractItemView::SelectRows);
    t->setEditTriggers(QAbstractItemView::NoEditTriggers);
    t->verticalHeader()->hide();
    for (int r = 0; r < int(people.size()); ++r) {
        const PayrollPerson& p = people[size_t(r)];
        const QStringList cells = id_column ? QStringList{QString::number(r + 1),
                                                          p.post,
                                                          p.surname,
                                                          p.names,
                                                          p.title,
                                                          p.id_number}
                                            : QStringList{QString::number(r + 1),
                                                          p.post,
                                                          QString(),
                                                          p.surname,
                                                          p.names,
                                                          p.title,
                                                          p.appointed};
        for (int c = 0; c < std::min(int(cells.size()), t->columnCount()); ++c)
            t->setItem(r, c, new QTableWidgetItem(cells[c]));
    }
    if (!id_column)
        t->setColumnHidden(2, true);
    t->resizeColumnsToContents();
    // The list shows its columns whole; the form grows rather than hide the dates.
    t->setMinimumWidth(t->horizontalHeader()->length() + t->verticalHeader()->width() +
                       2 * t->frameWidth() + t->style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    return t;
}

// Enter on a list does what a double click on its current row does.
class EnterOpens : public QObject {
  public:
    EnterOpens(QAbstractItemView& view, std::function<void()> open)
        : view_(view), open_(std::move(open)) {
        view_.installEventFilter(this);
    }
    ~EnterOpens() override { view_.removeEventFilter(this); }

  protected:
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() != QEvent::KeyPress) {
            return false;
        }
        const int key = static_cast<QKeyEvent*>(e)->key();
        if ((key != Qt::Key_Return && key != Qt::Key_Enter) || !view_.currentIndex().isValid()) {
            return false;
        }
        open_();
        return true;
    }

  private:
    QAbstractItemView& view_;
    std::function<void()> open_;
};

void show_salary_capture(SalaryCapture& f, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(f.form_name());
    dialog.setWindowTitle(f.caption);
    auto* layout = new QHBoxLayout(&dialog);
    auto* grid = staff_table(&dialog, f.grid_format, f.prs_grid, false);
    grid->setObjectName(QStringLiteral("prs_grid"));
    layout->addWidget(grid, 1);

    auto* frame = new QGroupBox(&dialog);
    frame->setObjectName(QStringLiteral("data_raam"));
    auto* form = new QGridLayout(frame);
    std::array<QLineEdit*, 5> prs{};
    for (int i : {1, 2, 3, 0, 4}) {
        prs[size_t(i)] = new QLineEdit(frame);
        prs[size_t(i)]->setReadOnly(i != 0);
        const int row = form->rowCount();
        form->addWidget(new QLabel(f.data_teks[size_t(i)], frame), row, 0);
        form->addWidget(prs[size_t(i)], row, 1, 1, 3);
    }
    auto* months = new QListWidget(frame);
    months->setObjectName(QStringLiteral("maand_lys"));
    months->addItems(f.maand_lys);
    months->setMinimumWidth(months->sizeHintForColumn(0) + 2 * months->frameWidth() + 8);
    form->addWidget(months, 0, 4, 5, 1);
    std::array<QLineEdit*, 7> ink{}, uit{};
    std::array<QLineEdit*, 4> ink_var{}, uit_var{};
    const int first = form->rowCount();
    for (int i = 1; i <= 6; ++i) {
        for (int side = 1; side <= 2; ++side) {
            QWidget* label = nullptr;
            if (i <= 3) {
                label =
                    new QLabel(side == 1 ? f.ink_teks[size_t(i)] : f.uit_teks[size_t(i)], frame);
            } else {
                auto* var = new QLineEdit(frame);
                (side == 1 ? ink_var : uit_var)[size_t(i - 3)] = var;
                label = var;
            }
            auto* box = new QLineEdit(frame);
            box->setAlignment(Qt::AlignRight);
            box->setMinimumWidth(
                box->fontMetrics().horizontalAdvance(QStringLiteral("9999999.99")) +
                16);  // a month's amount shows whole
            (side == 1 ? ink : uit)[size_t(i)] = box;
            form->addWidget(label, first + i, side == 1 ? 0 : 2);
            form->addWidget(box, first + i, side == 1 ? 1 : 3);
        }
    }
    form->setColumnStretch(1, 1);  // the earnings as wide as the deductions
    form->setColumnStretch(3, 1);
    auto* ink_total = new QLabel(frame);
    auto* uit_total = new QLabel(frame);
    auto* nett = new QLabel(frame);
    form->addWidget(ink_total, first + 7, 1);
    form->addWidget(uit_total, first + 7, 3);
    form->addWidget(nett, first + 8, 3);
    auto* ok = new QPushButton(f.data_ok_caption, frame);
    ok->setObjectName(QStringLiteral("data_ok"));
    form->addWidget(ok, first + 9, 3);
    layout->addWidget(frame, 1);

    // The boxes take what their fields hold; Enter and Tab go down the earnings, then down
    // the deductions, then to the confirm button.
    prs[0]->setObjectName(QStringLiteral("prs_data_0"));
    ui::limit_box(*prs[0], store::PRSLNE["POS_BSK"].width, true);
    QList<QWidget*> order{prs[0]};
    for (int side = 1; side <= 2; ++side) {
        const auto& boxes = side == 1 ? ink : uit;
        const auto& texts = side == 1 ? ink_var : uit_var;
        const QString name = side == 1 ? QStringLiteral("ink") : QStringLiteral("uit");
        const int text_width =
            side == 1 ? store::PRSLNE["pl_i_teks"].width : store::PRSLNE["pl_u_teks"].width;
        for (int i = 1; i <= 6; ++i) {
            boxes[size_t(i)]->setObjectName(name + QStringLiteral("_data_%1").arg(i));
            if (i > 3) {
                texts[size_t(i - 3)]->setObjectName(name +
                                                    QStringLiteral("_var_teks_%1").arg(i - 3));
                ui::limit_box(*texts[size_t(i - 3)], text_width, true);
                order << texts[size_t(i - 3)];
            }
            order << boxes[size_t(i)];
        }
    }
    order << ok;
    ui::tab_in_order(order);

    auto* side_buttons = new QVBoxLayout;
    auto* print = new QPushButton(f.print_caption, &dialog);
    print->setObjectName(QStringLiteral("task_options"));
    auto* exit = new QPushButton(QStringLiteral("X"), &dialog);
    exit->setObjectName(QStringLiteral("staff_exit"));
    side_buttons->addWidget(print);
    side_buttons->addStretch();
    side_buttons->addWidget(exit);
    layout->addLayout(side_buttons);

    bool syncing = false;
    const auto show = [&] {
        syncing = true;
        frame->setVisible(f.data_raam_visible);
        months->setVisible(f.maand_lys_visible);
        for (int i = 0; i < 5; ++i)
            prs[size_t(i)]->setText(f.prs_data[size_t(i)]);
        for (int i = 1; i <= 6; ++i) {
            ink[size_t(i)]->setText(f.ink_data[size_t(i)]);
            uit[size_t(i)]->setText(f.uit_data[size_t(i)]);
        }
        for (int i = 1; i <= 3; ++i) {
            ink_var[size_t(i)]->setText(f.ink_var_teks[size_t(i)]);
            uit_var[size_t(i)]->setText(f.uit_var_teks[size_t(i)]);
        }
        ink_total->setText(f.ink_totaal);
        uit_total->setText(f.uit_totaal);
        nett->setText(f.salaris_totaal);
        if (f.current_row >= 0)
            grid->selectRow(f.current_row);
        syncing = false;
    };
    // What is typed goes to the values as typed; letters become capitals.
    const auto bind = [&](QLineEdit* e, QString* value, bool amount) {
        QObject::connect(e, &QLineEdit::textEdited, &dialog, [=, &syncing](const QString& t) {
            if (syncing)
                return;
            *value = amount ? t : t.toUpper();
            if (!amount && e->text() != *value)
                e->setText(*value);
        });
    };
    bind(prs[0], &f.prs_data[0], false);
    for (int i = 1; i <= 6; ++i) {
        bind(ink[size_t(i)], &f.ink_data[size_t(i)], true);
        bind(uit[size_t(i)], &f.uit_data[size_t(i)], true);
        for (int side = 1; side <= 2; ++side) {
            QObject::connect((side == 1 ? ink : uit)[size_t(i)], &QLineEdit::editingFinished,
                             &dialog, [&, side, i] {
                                 if (syncing)
                                     return;
                                 f.amount_changed(side, i);
                                 show();
                             });
        }
    }
    for (int i = 1; i <= 3; ++i) {
        bind(ink_var[size_t(i)], &f.ink_var_teks[size_t(i)], false);
        bind(uit_var[size_t(i)], &f.uit_var_teks[size_t(i)], false);
    }
    // A double click or Enter on a row opens the person; on a month, chooses it.
    const auto open_person = [&](int row) {
        f.prs_grid_dbl_click(row);
        show();
    };
    const auto choose_month = [&](int row) {
        f.maand_lys_dbl_click(row);
        show();
    };
    QObject::connect(grid, &QTableWidget::cellDoubleClicked, &dialog,
                     [&](int row, int) { open_person(row); });
    QObject::connect(months, &QListWidget::itemDoubleClicked, &dialog,
                     [&](QListWidgetItem* item) { choose_month(months->row(item)); });
    EnterOpens grid_enter(*grid, [&] { open_person(grid->currentRow()); });
    EnterOpens month_enter(*months, [&] { choose_month(months->currentRow()); });
    QObject::connect(ok, &QPushButton::clicked, &dialog, [&] {
        f.data_ok_click();
        show();
    });
    QObject::connect(print, &QPushButton::clicked, &dialog, [&] { f.print_click(); });
    QObject::connect(exit, &QPushButton::clicked, &dialog, [&] {
        f.staff_exit_click();
        dialog.accept();
    });
    show();
    dialog.resize(1100, 560);
    dialog.exec();
    if (!f.closed)
        f.staff_exit_click();
}

void show_chooser(PayrollPrintChooser& f, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(f.form_name());
    dialog.setWindowTitle(f.heading);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(new QLabel(f.heading, &dialog), 0, Qt::AlignHCenter);
    for (int i = 1; i <= 2; ++i) {
        auto* b = new QPushButton(f.pr_option[size_t(i)], &dialog);
        b->setObjectName(QStringLiteral("pr_option_%1").arg(i));
        layout->addWidget(b);
        QObject::connect(b, &QPushButton::clicked, &dialog, [&, i] { f.pr_option_click(i); });
    }
    auto* exit = new QPushButton(QStringLiteral("X"), &dialog);
    exit->setObjectName(QStringLiteral("exit"));
    QObject::connect(exit, &QPushButton::clicked, &dialog, [&] {
        f.exit_click();
        dialog.accept();
    });
    layout->addWidget(exit, 0, Qt::AlignRight);
    dialog.exec();
}

void show_pay_slips(PaySlips& f, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(f.form_name());
    dialog.setWindowTitle(f.caption);
    auto* layout = new QHBoxLayout(&dialog);
    auto* grid = staff_table(&dialog, f.grid_format, f.prs_grid, true);
    layout->addWidget(grid, 1);
    auto* choice = new QGroupBox(&dialog);
    choice->setObjectName(QStringLiteral("keuse_raam"));
    auto* form = new QFormLayout(choice);
    std::array<QLineEdit*, 5> pos{};
    for (int i : {3, 4}) {
        pos[size_t(i)] = new QLineEdit(choice);
        form->addRow(f.pos_teks[size_t(i)], pos[size_t(i)]);
    }
    std::array<QPushButton*, 4> or_buttons{};
    for (int i = 1; i <= 3; ++i) {
        or_buttons[size_t(i)] = new QPushButton(choice);
        or_buttons[size_t(i)]->setObjectName(QStringLiteral("or_data_%1").arg(i));
        form->addRow(f.or_teks[size_t(i)], or_buttons[size_t(i)]);
    }
    auto* months = new QListWidget(choice);
    months->addItems(f.maand_lys);
    form->addRow(months);
    QCheckBox* to_month = nullptr;
    if (f.option == kSummaryOption) {
        to_month = new QCheckBox(f.to_month_caption, choice);
        form->addRow(to_month);
        QObject::connect(to_month, &QCheckBox::toggled, &dialog, [&](bool on) { f.to_month = on; });
    }
    auto* ok = new QPushButton(f.kr_ok_caption, choice);
    ok->setObjectName(QStringLiteral("kr_ok"));
    auto* exit = new QPushButton(QStringLiteral("X"), choice);
    exit->setObjectName(QStringLiteral("sk421_exit"));
    form->addRow(ok, exit);
    layout->addWidget(choice);

    const auto show = [&] {
        for (int i : {3, 4}) {
            const auto end = i == 3 ? reports::StaffRange::From : reports::StaffRange::To;
            pos[size_t(i)]->setText(f.range.box_text(end));
            pos[size_t(i)]->setStyleSheet(
                f.range.marker() == end ? QStringLiteral("border: 2px solid red") : QString());
        }
        for (int i = 1; i <= 3; ++i)
            or_buttons[size_t(i)]->setText(f.or_data[size_t(i)]);
        months->setVisible(f.maand_lys_visible);
    };
    QObject::connect(grid, &QTableWidget::cellClicked, &dialog, [&](int row, int) {
        f.prs_grid_click(row);
        show();
    });
    for (int i : {3, 4}) {
        QObject::connect(pos[size_t(i)], &QLineEdit::textEdited, &dialog, [&, i](const QString& t) {
            f.pos_data_key_press(i, t.right(1));
            show();
        });
    }
    for (int i = 1; i <= 3; ++i) {
        QObject::connect(or_buttons[size_t(i)], &QPushButton::clicked, &dialog, [&, i] {
            f.or_data_click(i);
            show();
        });
    }
    QObject::connect(months, &QListWidget::itemDoubleClicked, &dialog, [&](QListWidgetItem* it) {
        f.maand_lys_dbl_click(months->row(it));
        show();
    });
    QObject::connect(ok, &QPushButton::clicked, &dialog, [&] {
        f.kr_ok_click();
        show();
    });
    QObject::connect(exit, &QPushButton::clicked, &dialog, [&] {
        f.exit_click();
        dialog.accept();
    });
    show();
    dialog.resize(1000, 520);
    dialog.exec();
}

void show_letterhead_chooser(reports::LetterheadChooser& f, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(f.form_name());
    dialog.setWindowTitle(f.heading);
    auto* layout = new QVBoxLayout(&dialog);
    auto* list = new QListWidget(&dialog);
    layout->addWidget(list);
    const bool af = f.session().afrikaans;
    auto* ok =
        new QPushButton(af ? QStringLiteral("Gaan voort") : QStringLiteral("Continue"), &dialog);
    ok->setObjectName(QStringLiteral("merk_ok"));
    auto* change =
        new QPushButton(af ? QStringLiteral("VERANDER") : QStringLiteral("CHANGE"), &dialog);
    change->setObjectName(QStringLiteral("briefhoof_tabulering"));
    auto* row = new QHBoxLayout;
    row->addWidget(change);
    row->addWidget(ok);
    layout->addLayout(row);
    ui::tab_in_order({list, change, ok});
    const auto show = [&] {
        list->clear();
        list->addItems(f.briefhoof_lys);
        list->setCurrentRow(f.selected);
    };
    QObject::connect(list, &QListWidget::currentRowChanged, &dialog,
                     [&](int r) { f.selected = r; });
    QObject::connect(ok, &QPushButton::clicked, &dialog, [&] {
        f.merk_ok_click();
        dialog.accept();
    });
    QObject::connect(change, &QPushButton::clicked, &dialog, [&] {
        f.briefhoof_tabulering_click();
        show();
    });
    show();
    dialog.exec();
}

void show_letterhead_layouts(reports::LetterheadLayouts& f, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(f.form_name());
    dialog.setWindowTitle(f.heading);
    auto* layout = new QHBoxLayout(&dialog);
    auto* list = new QListWidget(&dialog);
    list->setObjectName(QStringLiteral("bh_lys"));
    layout->addWidget(list);
    auto* form = new QFormLayout;
    const bool af = f.session().afrikaans;
    const auto say = [af](const char* a, const char* e) { return QString::fromUtf8(af ? a : e); };
    std::array<QLineEdit*, 8> data{};
    const std::array<QString, 8> labels = {QString(),
                                           say("IDENTIFIKASIE", "IDENTIFICATION"),
                                           QString(),
                                           QString(),
                                           say("BO (mm)", "TOP (mm)"),
                                           say("ONDER (mm)", "BOTTOM (mm)"),
                                           say("LINKS (mm)", "LEFT (mm)"),
                                           say("REGS (mm)", "RIGHT (mm)")};
    for (int i : {1, 4, 5, 6, 7}) {
        data[size_t(i)] = new QLineEdit(&dialog);
        data[size_t(i)]->setObjectName(QStringLiteral("bh_data_%1").arg(i));
        form->addRow(labels[size_t(i)], data[size_t(i)]);
    }
    // The measuring page goes through the print target like every report.
    reports::QtPrintTargetHost host(&dialog);
    reports::PrintJob job(host.job_device(), f.session().dialogs(),
                          reports::report_school(f.session()), af);
    job.general_year_folder = f.session().fs().native(f.session().folders.general_year);
    if (f.job == nullptr) {
        f.job = &job;
        f.choose_target = [&](reports::PrintJob& j) {
            return reports::ask_print_target(
                j, host, f.session().fs().native(f.session().folders.workstation));
        };
    }
    auto tick = [&](const char* a, const char* e) {
        auto* c = new QCheckBox(say(a, e), &dialog);
        form->addRow(c);
        return c;
    };
    QCheckBox* name = tick("DRUK SKOOLNAAM", "PRINT SCHOOL NAME");
    QCheckBox* address = tick("DRUK SKOOLADRES", "PRINT SCHOOL ADDRESS");
    QCheckBox* badge = tick("DRUK SKOOLWAPEN", "PRINT SCHOOL LOGO");
    QCheckBox* frame = tick("DRUK RAAM OM ADRES", "PRINT FRAME AROUND ADDRESS");
    frame->setObjectName(QStringLiteral("bh_opsie"));
    QCheckBox* picture = tick("GEBRUIK '.JPG' BRIEFHOOF", "USE '.JPG' LETTER HEAD");
    picture->setEnabled(false);
    auto* position = new QComboBox(&dialog);
    position->addItems({af ? "LINKS" : "LEFT", af ? "MIDDEL" : "MIDDLE", af ? "REGS" : "RIGHT"});
    form->addRow(position);
    auto* size = new QComboBox(&dialog);
    size->addItems({af ? "KLEIN" : "SMALL", "MEDIUM", af ? "GROOT" : "LARGE"});
    form->addRow(size);
    auto* buttons = new QHBoxLayout;
    const auto button = [&](const char* name, const char* a, const char* e) {
        auto* b = new QPushButton(say(a, e), &dialog);
        b->setObjectName(QString::fromLatin1(name));
        buttons->addWidget(b);
        return b;
    };
    QPushButton* font1 = button("bh_font_1", "LETTERTIPE NAAM", "FONT OF NAME");
    QPushButton* font2 = button("bh_font_2", "LETTERTIPE ADRES", "FONT OF ADDRESS");
    QPushButton* import = button("bh_import", "VOER .JPG IN", "IMPORT .JPG");
    QPushButton* print = button("bh_druk", "DRUK RAAM", "PRINT FRAME");
    QPushButton* erase = button("bh_uitvee", "UITVEE", "DELETE");
    QPushButton* ok = button("bh_ok", "Bevestig veranderings", "Confirm changes");
    form->addRow(buttons);
    layout->addLayout(form);

    const QString positions = QStringLiteral("LMR");
    const QString sizes = QStringLiteral("KMG");
    const auto show = [&] {
        list->clear();
        list->addItems(f.bh_lys);
        for (int i : {1, 4, 5, 6, 7})
            data[size_t(i)]->setText(f.bh_data[size_t(i)]);
        name->setChecked(f.print_name);
        address->setChecked(f.print_address);
        badge->setChecked(f.print_badge);
        frame->setChecked(f.bh_opsie);
        picture->setChecked(f.use_picture);
        position->setCurrentIndex(std::max(0, int(positions.indexOf(f.position))));
        size->setCurrentIndex(std::max(0, int(sizes.indexOf(f.size))));
        for (QWidget* w : std::initializer_list<QWidget*>{name, address, badge, frame, position,
                                                          size, font1, font2, data[6], data[7]})
            w->setEnabled(f.fields_enabled);
    };
    // The form's values from the controls before a button acts on them.
    const auto take = [&] {
        for (int i : {1, 4, 5, 6, 7})
            f.bh_data[size_t(i)] = data[size_t(i)]->text();
        f.print_name = name->isChecked();
        f.print_address = address->isChecked();
        f.print_badge = badge->isChecked();
        f.bh_opsie = frame->isChecked();
        f.position = positions.mid(position->currentIndex(), 1);
        f.size = sizes.mid(size->currentIndex(), 1);
    };
    QObject::connect(list, &QListWidget::itemDoubleClicked, &dialog, [&](QListWidgetItem* it) {
        f.bh_lys_dbl_click(list->row(it));
        show();
    });
    const auto act = [&](QPushButton* b, std::function<void()> what) {
        QObject::connect(b, &QPushButton::clicked, &dialog, [&, what] {
            take();
            what();
            show();
        });
    };
    act(font1, [&] { f.bh_font_click(1); });
    act(font2, [&] { f.bh_font_click(2); });
    act(import, [&] { f.bh_import_click(); });
    act(print, [&] { f.bh_druk_click(); });
    act(erase, [&] { f.bh_uitvee_click(); });
    act(ok, [&] { f.bh_ok_click(); });
    show();
    dialog.exec();
    if (f.job == &job) {
        f.job = nullptr;
        f.choose_target = nullptr;
    }
}

}  // namespace

void register_payroll_forms(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk461_prg"), [](ui::ChildForm& f, QWidget* p) {
        show_salary_capture(static_cast<SalaryCapture&>(f), p);
    });
    dialogs.register_form(QStringLiteral("lone_kies_druk"), [](ui::ChildForm& f, QWidget* p) {
        show_chooser(static_cast<PayrollPrintChooser&>(f), p);
    });
    dialogs.register_form(QStringLiteral("sk4611_prg"), [](ui::ChildForm& f, QWidget* p) {
        show_pay_slips(static_cast<PaySlips&>(f), p);
    });
    dialogs.register_form(QStringLiteral("sk1_kies_briefhoofde"), [](ui::ChildForm& f, QWidget* p) {
        show_letterhead_chooser(static_cast<reports::LetterheadChooser&>(f), p);
    });
    dialogs.register_form(QStringLiteral("sk1_briefhoof"), [](ui::ChildForm& f, QWidget* p) {
        show_letterhead_layouts(static_cast<reports::LetterheadLayouts&>(f), p);
    });
}

QWidget* open_salary_capture(shell::Session& session, QWidget* parent) {
    if (auto* qt = dynamic_cast<ui::QtDialogs*>(&session.dialogs()))
        register_payroll_forms(*qt);
    reports::QtPrintTargetHost host(parent);
    reports::PrintJob job(host.job_device(), session.dialogs(), reports::report_school(session),
                          session.afrikaans);
    job.general_year_folder = session.fs().native(session.folders.general_year);
    SalaryCapture capture(session);
    capture.form_load();
    capture.open_print_chooser = [&] {
        PayrollPrintChooser chooser(session.afrikaans, [&](int option, const QString&) {
            PaySlips slips(session, job, option, &host);
            slips.form_load();
            session.dialogs().show_modal(slips);
        });
        session.dialogs().show_modal(chooser);
    };
    session.dialogs().show_modal(capture);
    return nullptr;
}

}  // namespace korvel::payroll
