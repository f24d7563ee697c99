#include "ui/frozen_columns.h"

#include <QEvent>
#include <QHeaderView>
#include <QScrollBar>

namespace korvel::ui {

FrozenColumns::FrozenColumns(QTableView& table, int count)
    : QObject(&table), table_(table), frozen_(new QTableView(&table)), count_(count) {
    frozen_->setObjectName(table.objectName() + QStringLiteral("_frozen"));
    frozen_->setModel(table.model());
    frozen_->setSelectionModel(table.selectionModel());
    frozen_->setFocusPolicy(Qt::NoFocus);
    frozen_->verticalHeader()->hide();
    frozen_->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    frozen_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    frozen_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    frozen_->setVerticalScrollMode(table.verticalScrollMode());
    frozen_->setSelectionMode(table.selectionMode());
    frozen_->setSelectionBehavior(table.selectionBehavior());
    frozen_->setEditTriggers(table.editTriggers());
    frozen_->setTextElideMode(table.textElideMode());
    frozen_->setWordWrap(table.wordWrap());
    frozen_->setShowGrid(table.showGrid());
    frozen_->setMouseTracking(table.hasMouseTracking());
    frozen_->viewport()->setMouseTracking(table.viewport()->hasMouseTracking());
    frozen_->setFrameShape(QFrame::NoFrame);
    frozen_->setFont(table.font());
    table.viewport()->stackUnder(frozen_);

    // One grid to the form: what happens in the frozen part is the table's.
    connect(frozen_, &QAbstractItemView::clicked, &table, &QAbstractItemView::clicked);
    connect(frozen_, &QAbstractItemView::pressed, &table, &QAbstractItemView::pressed);
    connect(frozen_, &QAbstractItemView::doubleClicked, &table, &QAbstractItemView::doubleClicked);
    connect(frozen_, &QAbstractItemView::entered, &table, &QAbstractItemView::entered);
    connect(frozen_->verticalScrollBar(), &QScrollBar::valueChanged, table.verticalScrollBar(),
            &QScrollBar::setValue);
    connect(table.verticalScrollBar(), &QScrollBar::valueChanged, frozen_->verticalScrollBar(),
            &QScrollBar::setValue);
    connect(table.horizontalHeader(), &QHeaderView::sectionResized, this, [this] { update(); });
    connect(table.verticalHeader(), &QHeaderView::sectionResized, this,
            [this](int row, int, int size) { frozen_->setRowHeight(row, size); });
    // A click on the frozen part gives the table the keyboard, as a click on a day does.
    connect(frozen_, &QAbstractItemView::pressed, &table, [&table] { table.setFocus(); });
    table.installEventFilter(this);
    update();
}

void FrozenColumns::update() {
    const QAbstractItemModel* model = table_.model();
    const int columns = model != nullptr ? model->columnCount() : 0;
    const int rows = model != nullptr ? model->rowCount() : 0;
    for (int c = 0; c < columns; ++c) {
        const bool shown = c < count_ && !table_.isColumnHidden(c);
        frozen_->setColumnHidden(c, !shown);
        if (shown) {
            frozen_->setColumnWidth(c, table_.columnWidth(c));
        }
    }
    for (int r = 0; r < rows; ++r) {
        frozen_->setRowHidden(r, table_.isRowHidden(r));
        frozen_->setRowHeight(r, table_.rowHeight(r));
    }
    frozen_->horizontalHeader()->setVisible(table_.horizontalHeader()->isVisible());
    frozen_->horizontalHeader()->setFixedHeight(table_.horizontalHeader()->height());
    frozen_->verticalScrollBar()->setValue(table_.verticalScrollBar()->value());
    place();
}

void FrozenColumns::place() {
    int width = 0;
    for (int c = 0; c < count_ && c < frozen_->horizontalHeader()->count(); ++c) {
        if (!table_.isColumnHidden(c)) {
            width += table_.columnWidth(c);
        }
    }
    frozen_->setVisible(table_.isVisible() && width > 0);
    const int header =
        table_.horizontalHeader()->isVisible() ? table_.horizontalHeader()->height() : 0;
    frozen_->setGeometry(table_.verticalHeader()->isVisible()
                             ? table_.verticalHeader()->width() + table_.frameWidth()
                             : table_.frameWidth(),
                         table_.frameWidth(), width, table_.viewport()->height() + header);
}

bool FrozenColumns::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &table_ && (event->type() == QEvent::Resize || event->type() == QEvent::Show ||
                               event->type() == QEvent::LayoutRequest)) {
        place();
    }
    return false;
}

}  // namespace korvel::ui
