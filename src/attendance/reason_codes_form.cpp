#include "attendance/reason_codes_form.h"

#include <QDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "attendance/code_list_print.h"
#include "attendance/reason_codes.h"
#include "reports/print_target.h"
#include "reports/print_target_host.h"
#include "reports/school_report.h"

namespace korvel::attendance {

namespace {

// Hands the keys of a widget to a handler; true from it takes the key.
class KeyFilter : public QObject {
  public:
    KeyFilter(QObject* parent, std::function<bool(int key)> on_key)
        : QObject(parent), on_key_(std::move(on_key)) {}
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyPress && on_key_(static_cast<QKeyEvent*>(event)->key())) {
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    std::function<bool(int key)> on_key_;
};

// The reason list printed to the target the print target form chooses.
void print_to_chosen_target(shell::Session& session, const CodeListPrint& list, QWidget* parent) {
    reports::QtPrintTargetHost host(parent);
    reports::PrintJob job(host.job_device(), session.dialogs(), reports::report_school(session),
                          session.afrikaans);
    job.general_year_folder = session.fs().native(session.folders.general_year);
    if (reports::ask_print_target(job, host, session.fs().native(session.folders.workstation))) {
        print_code_list(job, list);
    }
}

void show_reason_codes(ReasonCodes& codes, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(codes.form_name());
    auto* grid = new QTableWidget(&dialog);
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->verticalHeader()->hide();
    grid->horizontalHeader()->hide();
    auto* box1 = new QLineEdit(&dialog);
    auto* box2 = new QLineEdit(&dialog);
    box1->setMaxLength(25);
    box2->setMaxLength(25);
    auto* ok = new QPushButton(QStringLiteral("OK"), &dialog);
    auto* add = new QPushButton(&dialog);
    auto* remove = new QPushButton(&dialog);
    auto* print = new QPushButton(&dialog);
    auto* save = new QPushButton(&dialog);
    auto* exit = new QPushButton(QStringLiteral("X"), &dialog);
    if (!codes.print_code_list) {
        codes.print_code_list = [&](const CodeListPrint& list) {
            print_to_chosen_target(codes.session(), list, &dialog);
        };
    }

    const auto refresh = [&] {
        dialog.setWindowTitle(codes.caption);
        add->setText(codes.task_new_caption);
        remove->setText(codes.task_delete_caption);
        print->setText(codes.session().tr("DRUK", "PRINT"));
        save->setText(QStringLiteral("OK"));
        const CellGrid& g = codes.rde_grid;
        grid->setRowCount(g.rows());
        grid->setColumnCount(g.cols());
        for (int r = 0; r < g.rows(); ++r) {
            for (int c = 0; c < g.cols(); ++c) {
                grid->setItem(r, c, new QTableWidgetItem(g.text(r, c)));
            }
        }
        grid->resizeColumnsToContents();
        if (codes.current_row >= 1 && codes.current_row < g.rows()) {
            grid->setCurrentCell(codes.current_row, kCodeColFirst);
        }
        box1->setText(codes.sbi_kde2[1]);
        box2->setText(codes.sbi_kde2[2]);
        for (QWidget* w : {static_cast<QWidget*>(box1), static_cast<QWidget*>(box2),
                           static_cast<QWidget*>(ok)}) {
            w->setVisible(codes.kde_frme_visible);
        }
        if (codes.closed) {
            dialog.accept();
        }
    };
    QObject::connect(grid, &QTableWidget::cellClicked, &dialog, [&](int row, int) {
        codes.rde_grid_click(row);
        refresh();
    });
    // A right click adds a line; Enter opens the current line, Delete removes it.
    grid->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(grid, &QTableWidget::customContextMenuRequested, &dialog, [&] {
        codes.rde_grid_right_click();
        refresh();
    });
    grid->installEventFilter(new KeyFilter(grid, [&](int key) {
        const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
        if (!enter && key != Qt::Key_Delete) {
            return false;
        }
        if (grid->currentRow() >= 1) {
            codes.current_row = grid->currentRow();
        }
        codes.rde_grid_key_down(enter ? kEnterKey : kDeleteKey);
        refresh();
        return true;
    }));
    QObject::connect(box1, &QLineEdit::textEdited, &dialog, [&](const QString& t) {
        codes.sbi_kde2_change(1, t);
        box1->setText(codes.sbi_kde2[1]);
    });
    QObject::connect(box2, &QLineEdit::textEdited, &dialog, [&](const QString& t) {
        codes.sbi_kde2_change(2, t);
        box2->setText(codes.sbi_kde2[2]);
    });
    QObject::connect(ok, &QPushButton::clicked, &dialog, [&] {
        codes.data_ok_click();
        refresh();
    });
    QObject::connect(add, &QPushButton::clicked, &dialog, [&] {
        codes.task_options_click(1);
        refresh();
    });
    QObject::connect(remove, &QPushButton::clicked, &dialog, [&] {
        codes.task_options_click(4);
        refresh();
    });
    QObject::connect(print, &QPushButton::clicked, &dialog, [&] { codes.task_options_click(5); });
    QObject::connect(save, &QPushButton::clicked, &dialog, [&] {
        codes.kodes_ok_click();
        refresh();
    });
    QObject::connect(exit, &QPushButton::clicked, &dialog, [&] {
        codes.admin_exit_click();
        dialog.accept();
    });

    auto* boxes = new QHBoxLayout;
    boxes->addWidget(box1);
    boxes->addWidget(box2);
    boxes->addWidget(ok);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {add, remove, print, save}) {
        buttons->addWidget(b);
    }
    buttons->addStretch();
    buttons->addWidget(exit);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(grid, 1);
    layout->addLayout(boxes);
    layout->addLayout(buttons);
    dialog.resize(620, 480);
    codes.form_load();
    refresh();
    dialog.exec();
}

}  // namespace

void register_reason_codes_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk417_kodes_prg"), [](ui::ChildForm& f, QWidget* p) {
        show_reason_codes(static_cast<ReasonCodes&>(f), p);
    });
}
}  // namespace korvel::attendance
