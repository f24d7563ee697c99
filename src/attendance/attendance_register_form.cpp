#include "attendance/attendance_register_form.h"

#include "attendance/attendance_reports_form.h"
#include "ui/form_window.h"

#include <QContextMenuEvent>
#include <QCursor>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QVBoxLayout>

namespace korvel::attendance {

namespace {

QColor colour_of(int bgr) {
    return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF);
}

void fill_list(QListWidget* widget, const ListBox& list) {
    widget->clear();
    for (const ListEntry& e : list.items) {
        widget->addItem(e.text);
    }
    if (list.list_index >= 0 && list.list_index < widget->count()) {
        widget->setCurrentRow(list.list_index);
    }
    widget->setVisible(list.visible);
}

}  // namespace

AttendanceRegisterForm::AttendanceRegisterForm(shell::Session& session, bool educators,
                                               QWidget* parent)
    : QDialog(parent), register_(session, educators) {
    setObjectName(QStringLiteral("sk417_prg"));
    resize(1360, 700);  // a whole month beside the reasons; cut to the screen as it opens
    maand_lys_ = new QListWidget(this);
    maand_lys_->setObjectName(QStringLiteral("maand_lys"));
    maand_lys_->setMaximumWidth(180);
    afw_grid_ = new QTableWidget(this);
    afw_grid_->setObjectName(QStringLiteral("afw_grid"));
    afw_grid_->horizontalHeader()->hide();
    afw_grid_->verticalHeader()->hide();
    afw_grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    afw_grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    afw_grid_->setTextElideMode(Qt::ElideNone);  // a post number is never cut to "1..."
    afw_grid_->setWordWrap(false);
    // One line of text a row, so that as many people as can show do.
    afw_grid_->verticalHeader()->setDefaultSectionSize(afw_grid_->fontMetrics().height() + 6);
    afw_grid_->setMouseTracking(true);
    afw_grid_->viewport()->setMouseTracking(true);
    afw_grid_->viewport()->installEventFilter(this);
    afw_grid_->installEventFilter(this);
    afw_frozen_ = new ui::FrozenColumns(*afw_grid_, kFirstDayCol);
    afw_frozen_->view().viewport()->installEventFilter(this);
    kode_lys_ = new QListWidget(this);
    kode_lys_->setObjectName(QStringLiteral("kode_lys"));
    kode_lys_->setMaximumWidth(220);
    calendar_ = new QPushButton(this);
    kodes_ = new QPushButton(this);
    grid_sort_ = new QPushButton(this);
    staff_exit_ = new QPushButton(QStringLiteral("X"), this);
    staff_exit_->setObjectName(QStringLiteral("staff_exit"));

    // The month calendar's frame: the days of the month, an option list on a click, save and
    // undo.
    maand_kalender_raam_ = new QWidget(this);
    maand_kalender_raam_->setObjectName(QStringLiteral("maand_kalender_raam"));
    maand_kalender_ = new QTableWidget(maand_kalender_raam_);
    maand_kalender_->setObjectName(QStringLiteral("maand_kalender"));
    maand_kalender_->horizontalHeader()->hide();
    maand_kalender_->verticalHeader()->hide();
    maand_kalender_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    auto* mk_save = new QPushButton(QStringLiteral("OK"), maand_kalender_raam_);
    auto* mk_undo = new QPushButton(QStringLiteral("↺"), maand_kalender_raam_);
    mk_save->setObjectName(QStringLiteral("mk_save"));
    mk_undo->setObjectName(QStringLiteral("mk_undo"));
    auto* raam = new QVBoxLayout(maand_kalender_raam_);
    raam->addWidget(maand_kalender_);
    auto* raam_buttons = new QHBoxLayout;
    raam_buttons->addWidget(mk_undo);
    raam_buttons->addStretch();
    raam_buttons->addWidget(mk_save);
    raam->addLayout(raam_buttons);
    connect(maand_kalender_, &QTableWidget::cellClicked, this, [this](int row, int col) {
        register_.calendar.maand_kalender_click(row, col);
        refresh();
        show_calendar_options(QCursor::pos());
    });
    connect(mk_save, &QPushButton::clicked, this, [this] {
        register_.calendar.mk_save_click();
        refresh();
    });
    connect(mk_undo, &QPushButton::clicked, this, [this] {
        register_.calendar.mk_undo_click();
        refresh();
    });

    // A double click or Enter opens the month's grid; a right click its calendar.
    connect(maand_lys_, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* item) {
        register_.maand_lys.list_index = maand_lys_->row(item);
        register_.maand_lys_dbl_click();
        refresh();
    });
    maand_lys_->installEventFilter(this);
    maand_lys_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(maand_lys_, &QListWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        if (QListWidgetItem* item = maand_lys_->itemAt(at)) {
            maand_lys_->setCurrentItem(item);
        }
        register_.maand_lys.list_index = maand_lys_->currentRow();
        register_.maand_lys_right_click();
        refresh();
    });
    connect(afw_grid_, &QTableWidget::cellClicked, this, [this](int row, int col) {
        register_.current_row = row;
        register_.current_col = col;
        register_.afw_grid_click(row, col);
        refresh();
    });
    connect(afw_grid_, &QTableWidget::cellEntered, this, [this](int row, int col) {
        register_.afw_grid_mouse_move(row, col);
        paint_grid();
    });
    connect(kode_lys_, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* item) {
        register_.kode_lys_dbl_click(kode_lys_->row(item));
        refresh();
    });
    connect(calendar_, &QPushButton::clicked, this, [this] {
        register_.task_options_click(1);
        refresh();
    });
    calendar_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(calendar_, &QPushButton::customContextMenuRequested, this, [this] {
        register_.task_options_right_click(1);
        refresh();
    });
    connect(kodes_, &QPushButton::clicked, this, [this] {
        register_.kodes_click();
        refresh();
    });
    connect(grid_sort_, &QPushButton::clicked, this, [this] {
        register_.grid_sort_click();
        refresh();
    });
    connect(staff_exit_, &QPushButton::clicked, this, [this] { leave(); });

    auto* body = new QHBoxLayout;
    body->addWidget(maand_lys_);
    body->addWidget(afw_grid_, 1);
    body->addWidget(maand_kalender_raam_);
    body->addWidget(kode_lys_);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {calendar_, kodes_, grid_sort_}) {
        buttons->addWidget(b);
    }
    // The print button opens the attendance reports.
    auto* druk = new QPushButton(session.tr("DRUK", "PRINT"), this);
    druk->setObjectName(QStringLiteral("druk"));
    register_.open_reports = [this, &session] { show_attendance_reports(session, this); };
    connect(druk, &QPushButton::clicked, this, [this] { register_.task_options_click(5); });
    buttons->addWidget(druk);
    buttons->addStretch();
    buttons->addWidget(staff_exit_);
    ui::tab_in_order({calendar_, kodes_, grid_sort_, druk, staff_exit_});
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(body, 1);
    layout->addLayout(buttons);

    register_.form_load();
    const bool af = session.afrikaans;
    calendar_->setText(af ? QStringLiteral("KALENDER") : QStringLiteral("CALENDAR"));
    kodes_->setText(af ? QStringLiteral("REDES") : QStringLiteral("REASONS"));
    grid_sort_->setText(af ? QStringLiteral("SORTEER") : QStringLiteral("SORT"));
    const AttendanceRegister::ToolTips tips = register_.tool_tips();
    afw_grid_->setToolTip(tips.afw_grid);
    calendar_->setToolTip(tips.calendar_button);
    kodes_->setToolTip(tips.kodes);
    maand_lys_->setToolTip(tips.maand_lys);
    grid_sort_->setToolTip(tips.grid_sort);
    refresh();
}

void AttendanceRegisterForm::refresh() {
    // The month shown stands in the title.
    const auto& months = register_.maand_lys.items;
    const int m = register_.month - 1;
    setWindowTitle(register_.grid_shown && m >= 0 && m < static_cast<int>(months.size())
                       ? register_.caption + QStringLiteral(" - ") +
                             months[static_cast<std::size_t>(m)].text.trimmed()
                       : register_.caption);
    fill_list(maand_lys_, register_.maand_lys);
    fill_list(kode_lys_, register_.kode_lys);
    const CellGrid& k = register_.calendar.maand_kalender;
    maand_kalender_raam_->setVisible(register_.calendar.raam_visible);
    maand_kalender_->setRowCount(k.rows());
    maand_kalender_->setColumnCount(k.cols());
    for (int r = 0; r < k.rows(); ++r) {
        for (int c = 0; c < k.cols(); ++c) {
            auto* item = new QTableWidgetItem(k.text(r, c));
            item->setBackground(colour_of(k.at(r, c).back));
            item->setForeground(colour_of(k.at(r, c).fore));
            maand_kalender_->setItem(r, c, item);
        }
    }
    maand_kalender_->resizeColumnsToContents();
    const CellGrid& g = register_.afw_grid;
    afw_grid_->setVisible(register_.grid_shown);
    afw_grid_->setRowCount(g.rows());
    afw_grid_->setColumnCount(g.cols());
    paint_grid();
    // The two heading rows stand in the grid's header, so they stay put when the grid scrolls.
    for (int r = 0; r < g.rows(); ++r) {
        afw_grid_->setRowHidden(r, r < kFirstStaffRow);
    }
    for (int c = 0; c < g.cols(); ++c) {
        auto* heading = new QTableWidgetItem(g.text(0, c) + u'\n' + g.text(1, c));
        heading->setTextAlignment(c >= kFirstDayCol ? Qt::AlignCenter
                                                    : Qt::AlignLeft | Qt::AlignVCenter);
        afw_grid_->setHorizontalHeaderItem(c, heading);
    }
    afw_grid_->horizontalHeader()->setVisible(g.rows() > kFirstStaffRow);
    if (register_.current_row >= kFirstStaffRow && register_.current_col >= 0) {
        afw_grid_->setCurrentCell(register_.current_row, register_.current_col);
    }
    size_columns();
    afw_frozen_->update();
}

void AttendanceRegisterForm::size_columns() {
    // The whole month shows at once: a day is two characters wide, the post number and the
    // name as wide as the widest of them, so the two left columns never scroll away.
    const CellGrid& g = register_.afw_grid;
    const int day_width = afw_grid_->fontMetrics().horizontalAdvance(QStringLiteral("00")) + 8;
    for (int c = 0; c < g.cols(); ++c) {
        const int width = c < static_cast<int>(g.col_widths.size())
                              ? g.col_widths[static_cast<std::size_t>(c)]
                              : -1;
        afw_grid_->setColumnHidden(c, width == 0);
        if (width == 0) {
            continue;
        }
        if (c >= kFirstDayCol) {
            afw_grid_->setColumnWidth(c, day_width);
        } else {
            afw_grid_->resizeColumnToContents(c);
        }
    }
}

void AttendanceRegisterForm::paint_grid() {
    const CellGrid& g = register_.afw_grid;
    for (int r = 0; r < g.rows() && r < afw_grid_->rowCount(); ++r) {
        for (int c = 0; c < g.cols() && c < afw_grid_->columnCount(); ++c) {
            const Cell& cell = g.at(r, c);
            QTableWidgetItem* item = afw_grid_->item(r, c);
            if (item == nullptr) {
                item = new QTableWidgetItem;
                item->setTextAlignment(c >= kFirstDayCol ? Qt::AlignCenter
                                                         : Qt::AlignLeft | Qt::AlignVCenter);
                afw_grid_->setItem(r, c, item);
            }
            // Only what changed, so the hover cross repaints as the mouse moves.
            if (item->text() != cell.text) {
                item->setText(cell.text);
            }
            if (item->background().color() != colour_of(cell.back)) {
                item->setBackground(colour_of(cell.back));
            }
            if (item->foreground().color() != colour_of(cell.fore)) {
                item->setForeground(colour_of(cell.fore));
            }
        }
    }
}

void AttendanceRegisterForm::show_calendar_options(const QPoint& global) {
    const ListBox& options = register_.calendar.mk_opsies;
    if (!options.visible || options.items.empty()) {
        return;
    }
    QMenu menu(this);
    for (int i = 0; i < static_cast<int>(options.items.size()); ++i) {
        QAction* a = menu.addAction(options.items[static_cast<std::size_t>(i)].text);
        connect(a, &QAction::triggered, this, [this, i] {
            register_.calendar.mk_opsies_click(i);
            refresh();
        });
    }
    menu.exec(global);
}

void AttendanceRegisterForm::choose_option(int index) {
    register_.ag_opsies_click(index);
    refresh();
}

void AttendanceRegisterForm::show_options(const QPoint& global) {
    if (!register_.ag_opsies.visible || register_.ag_opsies.items.empty()) {
        return;
    }
    QMenu menu(this);
    for (int i = 0; i < static_cast<int>(register_.ag_opsies.items.size()); ++i) {
        const QString text = register_.ag_opsies.items[static_cast<std::size_t>(i)].text;
        QAction* a = menu.addAction(text);
        connect(a, &QAction::triggered, this, [this, i] { choose_option(i); });
    }
    menu.exec(global);
}

bool AttendanceRegisterForm::eventFilter(QObject* watched, QEvent* event) {
    QTableView* under = nullptr;
    if (watched == afw_grid_->viewport()) {
        under = afw_grid_;
    } else if (afw_frozen_ != nullptr && watched == afw_frozen_->view().viewport()) {
        under = &afw_frozen_->view();
    }
    if (under != nullptr && event->type() == QEvent::ContextMenu) {
        auto* e = static_cast<QContextMenuEvent*>(event);
        const QModelIndex at = under->indexAt(e->pos());
        if (at.isValid()) {
            register_.current_row = at.row();
            register_.current_col = at.column();
            register_.afw_grid_right_click(at.row(), at.column());
            refresh();
            show_options(e->globalPos());
        }
        return true;
    }
    if (watched == maand_lys_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            register_.maand_lys.list_index = maand_lys_->currentRow();
            register_.maand_lys_dbl_click();
            refresh();
            return true;
        }
    }
    if (watched == afw_grid_ && event->type() == QEvent::KeyPress) {
        const auto* k = static_cast<QKeyEvent*>(event);
        register_.current_row = afw_grid_->currentRow();
        register_.current_col = afw_grid_->currentColumn();
        if (k->key() == Qt::Key_Delete) {
            register_.afw_grid_key_down(kDeleteKey);
            refresh();
            return true;
        }
        if (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) {
            register_.afw_grid_key_down(kEnterKey);
            refresh();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void AttendanceRegisterForm::leave() {
    register_.staff_exit_click();  // a grid is saved and the month list shows again
    if (register_.closed) {
        accept();
        return;
    }
    refresh();
}

void AttendanceRegisterForm::reject() {
    // The exit saves; from the month list it closes the form.
    if (register_.grid_shown) {
        register_.staff_exit_click();
    }
    register_.staff_exit_click();
    QDialog::reject();
}

void register_attendance_register_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk417_prg"), [](ui::ChildForm& f, QWidget* p) {
        auto& request = static_cast<AttendanceRequest&>(f);
        AttendanceRegisterForm form(request.session, request.educators, p);
        form.exec();
    });
}

}  // namespace korvel::attendance
