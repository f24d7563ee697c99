#pragma once
// What the Qt forms of a staff member share: the text boxes bound to the behaviour's prs_data
// (each key goes through the behaviour first, for capitals and Enter; focus and clicks are
// reported), and the buttons, labels and heading they are laid out with.

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <functional>
#include <span>
#include <utility>
#include <vector>

#include "staff/detail_common.h"

class QKeyEvent;

namespace korvel::staff {

class Boxes : public QObject {
  public:
    using KeyPress = std::function<TypedKey(int box, int key_ascii)>;
    using Focus = std::function<void(int box, bool got)>;
    using Click = std::function<void(int box, bool double_click)>;

    Boxes(QDialog& dialog, std::span<QString> values, KeyPress key, Focus focus = {},
          Click click = {})
        : QObject(&dialog),
          values_(values),
          key_(std::move(key)),
          focus_(std::move(focus)),
          click_(std::move(click)) {}

    // A new box named "prs_data_<box>"; Enter moves through the boxes in the order they were
    // made, passing over those that take no focus.
    QLineEdit* make(int box, int width, QWidget* parent);
    QLineEdit* at(int box) const;

    // Each box shows the behaviour's value.
    void show_values();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    using Edits = std::vector<std::pair<int, QLineEdit*>>;
    bool key_press(Edits::iterator at, QKeyEvent* k);
    void focus_next(Edits::iterator at);

    std::span<QString> values_;
    KeyPress key_;
    Focus focus_;
    Click click_;
    Edits edits_;
    bool window_away_ = false;  // the focus left with the window, not with the user
};

// A button named as the form names it, which Enter does not press: Enter belongs to the boxes.
QPushButton* button(const QString& name, const QString& text, QDialog& dialog);
// A click runs the behaviour's event, then the form shows the behaviour again. refresh is a
// named function of the form (a temporary cannot bind here: the connection outlives it).
void on_click(QPushButton* b, std::function<void()> event, std::function<void()>& refresh);
// The label "data_teks_<box>".
QLabel* label(int box, const QString& text, QWidget* parent);
// The bold heading that names the person.
QLabel* heading(const QString& text, QDialog& dialog);

struct RegisterGrid;
// A list view shows a register's grid: the first `columns` headings, the rows with their red
// cells, the selected row, columns fitted to their text; the sort indicator where headings sort.
void show_register_grid(QTreeWidget* view, const RegisterGrid& grid, int columns,
                        bool sort_indicator);

}  // namespace korvel::staff
