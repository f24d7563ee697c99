#pragma once
// The Qt side of what the qualification, appointment and experience forms share: a table that
// shows a DetailGrid (row 0 as its header) and reports a click or Enter on a data row, and a
// list that shows a PopupList.

#include <QListWidget>
#include <QTableWidget>
#include <functional>

#include "staff/detail_common.h"
#include "staff/detail_grid.h"

namespace korvel::staff {

class GridView : public QTableWidget {
  public:
    // row: the data row, from 1.
    GridView(const DetailGrid& grid, const QString& name, std::function<void(int row)> on_row,
             QWidget* parent);
    void show_values();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    const DetailGrid& grid_;
    std::function<void(int)> on_row_;
};

class ListView : public QListWidget {
  public:
    // A click or a double click on a row, as the form wants it.
    ListView(const PopupList& list, const QString& name, bool double_click,
             std::function<void(int row)> on_row, QWidget* parent);
    void show_values();

  private:
    const PopupList& list_;
};

}  // namespace korvel::staff
