#pragma once
// The first columns of a table that stay where they are while the others scroll sideways: a
// second view over the same model and selection, laid over the table's left edge, that scrolls
// up and down with it. Clicks, double clicks and the mouse passing over a cell of the frozen
// part reach the table's own signals, so its form sees one grid.

#include <QObject>
#include <QTableView>

namespace korvel::ui {

class FrozenColumns : public QObject {
  public:
    FrozenColumns(QTableView& table, int count);

    // The view over the frozen columns (for a form's context menu on it).
    QTableView& view() { return *frozen_; }
    // Again after the table's rows, columns, hidden rows or widths changed.
    void update();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void place();

    QTableView& table_;
    QTableView* frozen_;
    int count_;
};

}  // namespace korvel::ui
