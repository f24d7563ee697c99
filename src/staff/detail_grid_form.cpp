#include "staff/detail_grid_form.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QSignalBlocker>

namespace korvel::staff {

GridView::GridView(const DetailGrid& grid, const QString& name, std::function<void(int row)> on_row,
                   QWidget* parent)
    : QTableWidget(parent), grid_(grid), on_row_(std::move(on_row)) {
    setObjectName(name);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    verticalHeader()->setVisible(false);
    horizontalHeader()->setStretchLastSection(true);
    connect(this, &QTableWidget::cellClicked, this, [this](int row, int) { on_row_(row + 1); });
}

void GridView::show_values() {
    const int rows = std::max(grid_.rows() - 1, 0);
    if (rowCount() != rows || columnCount() != grid_.columns) {
        setRowCount(rows);
        setColumnCount(grid_.columns);
        setHorizontalHeaderLabels(grid_.headings);
        // A heading is never cut: each column at least as wide as its heading.
        for (int c = 0; c + 1 < columnCount(); ++c) {
            setColumnWidth(c, std::max(columnWidth(c), horizontalHeader()->sectionSizeHint(c)));
        }
    }
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < grid_.columns; ++c) {
            const QString& text = grid_.cell(r + 1, c);
            QTableWidgetItem* it = item(r, c);
            if (it == nullptr) {
                it = new QTableWidgetItem;
                it->setTextAlignment(Qt::AlignVCenter |
                                     (grid_.right_aligned[static_cast<std::size_t>(c)]
                                          ? Qt::AlignRight
                                          : Qt::AlignLeft));
                setItem(r, c, it);
            }
            if (it->text() != text) {
                it->setText(text);
            }
        }
    }
    setEnabled(grid_.enabled);
}

void GridView::keyPressEvent(QKeyEvent* event) {
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentRow() >= 0) {
        on_row_(currentRow() + 1);
        return;
    }
    QTableWidget::keyPressEvent(event);
}

ListView::ListView(const PopupList& list, const QString& name, bool double_click,
                   std::function<void(int row)> on_row, QWidget* parent)
    : QListWidget(parent), list_(list) {
    setObjectName(name);
    auto report = [this, on_row = std::move(on_row)](QListWidgetItem* item) { on_row(row(item)); };
    if (double_click) {
        connect(this, &QListWidget::itemDoubleClicked, this, report);
    } else {
        connect(this, &QListWidget::itemClicked, this, report);
    }
}

void ListView::show_values() {
    const QSignalBlocker quiet(this);
    QStringList shown;
    for (int i = 0; i < count(); ++i) {
        shown << item(i)->text();
    }
    if (shown != list_.rows) {
        clear();
        addItems(list_.rows);
    }
    if (list_.list_index >= 0 && list_.list_index < count()) {
        setCurrentRow(list_.list_index);
        scrollToItem(item(list_.list_index));
    }
    setVisible(list_.visible);
}

}  // namespace korvel::staff
