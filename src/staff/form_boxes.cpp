#include "staff/form_boxes.h"

#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <algorithm>

#include "staff/staff_register.h"

namespace korvel::staff {

QLineEdit* Boxes::make(int box, int width, QWidget* parent) {
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(QStringLiteral("prs_data_%1").arg(box));
    edit->setMaxLength(width);
    edit->installEventFilter(this);
    connect(edit, &QLineEdit::textChanged, this,
            [this, box](const QString& text) { values_[static_cast<std::size_t>(box)] = text; });
    edits_.push_back({box, edit});
    return edit;
}

QLineEdit* Boxes::at(int box) const {
    const auto it =
        std::find_if(edits_.begin(), edits_.end(), [box](const auto& e) { return e.first == box; });
    return it == edits_.end() ? nullptr : it->second;
}

void Boxes::show_values() {
    for (const auto& [box, edit] : edits_) {
        const QString& value = values_[static_cast<std::size_t>(box)];
        if (edit->text() != value) {
            const QSignalBlocker quiet(edit);
            edit->setText(value);
        }
    }
}

bool Boxes::eventFilter(QObject* watched, QEvent* event) {
    const auto at = std::find_if(edits_.begin(), edits_.end(),
                                 [watched](const auto& e) { return e.second == watched; });
    if (at == edits_.end()) {
        return false;
    }
    switch (event->type()) {
        case QEvent::FocusIn:
        case QEvent::FocusOut: {
            // A message box or another window coming in front, and going again, is no leaving
            // of the field: the field keeps its focus in its form.
            const Qt::FocusReason why = static_cast<QFocusEvent*>(event)->reason();
            const bool window_change =
                why == Qt::ActiveWindowFocusReason || why == Qt::PopupFocusReason;
            if (window_change && event->type() == QEvent::FocusOut) {
                window_away_ = true;
                return false;
            }
            if (window_change && window_away_) {
                window_away_ = false;
                return false;
            }
            if (focus_) {
                focus_(at->first, event->type() == QEvent::FocusIn);
            }
            return false;
        }
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            if (click_) {
                click_(at->first, event->type() == QEvent::MouseButtonDblClick);
            }
            return false;
        case QEvent::KeyPress:
            return key_press(at, static_cast<QKeyEvent*>(event));
        default:
            return false;
    }
}

bool Boxes::key_press(Edits::iterator at, QKeyEvent* k) {
    if (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) {
        if (key_(at->first, kEnterKey).next_box) {
            focus_next(at);
        }
        return true;
    }
    // Only plain characters; shortcuts such as the paste key go on as they are.
    const QString text = k->text();
    if (text.size() != 1 || text.at(0).unicode() < 32 ||
        (k->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))) {
        return false;
    }
    const int typed = text.at(0).unicode();
    const TypedKey result = key_(at->first, typed);
    if (result.key_ascii == typed) {
        return false;
    }
    if (result.key_ascii != 0) {
        at->second->insert(QString(QChar(result.key_ascii)));
    }
    return true;
}

void Boxes::focus_next(Edits::iterator at) {
    const std::size_t from = static_cast<std::size_t>(at - edits_.begin());
    for (std::size_t step = 1; step < edits_.size(); ++step) {
        QLineEdit* edit = edits_[(from + step) % edits_.size()].second;
        if (edit->isVisible() && edit->isEnabled() && edit->focusPolicy() != Qt::NoFocus) {
            edit->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

QPushButton* button(const QString& name, const QString& text, QDialog& dialog) {
    auto* b = new QPushButton(text, &dialog);
    b->setObjectName(name);
    b->setAutoDefault(false);
    return b;
}

void on_click(QPushButton* b, std::function<void()> event, std::function<void()>& refresh) {
    QObject::connect(b, &QPushButton::clicked, b, [event = std::move(event), &refresh] {
        event();
        refresh();
    });
}

QLabel* label(int box, const QString& text, QWidget* parent) {
    auto* l = new QLabel(text, parent);
    l->setObjectName(QStringLiteral("data_teks_%1").arg(box));
    return l;
}

QLabel* heading(const QString& text, QDialog& dialog) {
    auto* h = new QLabel(text, &dialog);
    h->setObjectName(QStringLiteral("heading"));
    QFont bold = h->font();
    bold.setBold(true);
    h->setFont(bold);
    return h;
}

void show_register_grid(QTreeWidget* view, const RegisterGrid& grid, int columns,
                        bool sort_indicator) {
    QStringList headings;
    for (int c = 0; c < columns; ++c) {
        headings << grid.columns[static_cast<std::size_t>(c)].heading;
    }
    view->setColumnCount(columns);
    view->setHeaderLabels(headings);
    view->clear();
    QList<QTreeWidgetItem*> items;
    for (const GridRow& row : grid.rows) {
        auto* item = new QTreeWidgetItem;
        for (int c = 0; c < columns; ++c) {
            item->setText(c, row.cells[static_cast<std::size_t>(c)]);
            if (row.red[static_cast<std::size_t>(c)]) {
                item->setForeground(c, QColor(Qt::red));
            }
        }
        items << item;
    }
    view->addTopLevelItems(items);
    if (sort_indicator) {
        view->header()->setSortIndicatorShown(true);
        view->header()->setSortIndicator(grid.sort_column,
                                         grid.ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    }
    if (grid.selected >= 0 && grid.selected < items.size()) {
        view->setCurrentItem(items.at(grid.selected));
    }
    for (int c = 0; c < columns; ++c) {
        view->resizeColumnToContents(c);
    }
}

}  // namespace korvel::staff
