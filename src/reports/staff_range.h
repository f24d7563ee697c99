#pragma once
// A range of staff picked on a form's staff grid: a click or Enter on a row puts the row's number
// and name in the From or To box, the marker moving on between the two; typing in a box searches
// the grid for a post number that holds the text typed. The reports then take the grid rows
// from From to To.

#include <QString>
#include <vector>

#include "platform/dialogs.h"

namespace korvel::reports {

struct StaffRangeRow {
    QString post;    // trimmed
    QString name;    // as the box shows it beside the row number
    int record = 0;  // record number in the master file
};

class StaffRange {
  public:
    enum End { From = 0, To = 1 };

    StaffRange(ui::Dialogs& dialogs, bool afrikaans);

    // The grid's rows; the range becomes the whole grid, the marker stands at From.
    void set_rows(std::vector<StaffRangeRow> rows);
    const std::vector<StaffRangeRow>& rows() const { return rows_; }

    // The boxes' texts: the row number (from 1) and the name; blank when not set.
    QString box_text(End end) const;
    int row_of(End end) const { return end == From ? from_ : to_; }  // from 1; 0: none
    End marker() const { return marker_; }
    void set_marker(End end) { marker_ = end; }

    // A click or Enter on a grid row (from 0): the row goes into the box at the marker.
    void grid_click(int row);
    // A key typed in a box: the search box asks for a post number, with the key as its start,
    // and the first row from the top whose post number holds the answer goes into that box.
    // The row found (from 0), or -1.
    int search(End end, const QString& typed);
    // The first row (from 0) whose post number holds the text, without regard to case; -1.
    int find_post(const QString& part) const;

    // The grid rows from From to To, both included, as indices from 0; none when From lies
    // past To or either end is not set.
    std::vector<int> selected_rows() const;

  private:
    ui::Dialogs& dialogs_;
    bool afrikaans_;
    std::vector<StaffRangeRow> rows_;
    int from_ = 0;
    int to_ = 0;
    End marker_ = From;
};

}  // namespace korvel::reports
