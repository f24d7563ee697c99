#pragma once
// A grid of the attendance forms as its behaviour keeps it: rows and columns of cells, each with
// its text, back colour and fore colour, and the column widths in twips. The Qt form shows it;
// nothing here knows a widget.

#include <QString>
#include <vector>

namespace korvel::attendance {

// Colours are the platform's BGR values.
inline constexpr int kWhite = 0xFFFFFF;
inline constexpr int kBlack = 0x000000;
inline constexpr int kRed = 0x0000FF;
inline constexpr int kBlue = 0xFF0000;
inline constexpr int kHoverColour = 0x80FFFF;
inline constexpr int kNonSchoolColour = 0xC0C0FF;
// The colour a day cell takes when it is clicked: the program's plain cell colour.
inline constexpr int kCellColour = kWhite;

struct Cell {
    QString text;
    int back = kWhite;
    int fore = kBlack;
};

class CellGrid {
  public:
    // Empties the grid and gives it the size; every cell blank, white, black text.
    void reset(int rows, int cols);
    int rows() const { return rows_; }
    int cols() const { return cols_; }
    bool contains(int row, int col) const {
        return row >= 0 && col >= 0 && row < rows_ && col < cols_;
    }

    // Out-of-range cells read as a blank cell and take no writes.
    const Cell& at(int row, int col) const;
    Cell& at(int row, int col);
    QString text(int row, int col) const { return at(row, col).text; }
    void set_text(int row, int col, const QString& text) { at(row, col).text = text; }

    // Appends a row of blank cells; its index.
    int add_row();
    void remove_row(int row);

    // The whole grid as a clipboard block: cells joined by tabs, rows by carriage returns.
    QString clip() const;
    // A clipboard block pasted over the grid from its top left cell; what falls outside is
    // dropped and cells it does not reach keep their text.
    void set_clip(const QString& block);

    // Sorts rows first_row to the end ascending on the text of column: numbers first, by
    // value, then text without regard to case. Rows that compare equal keep their order.
    void sort_rows(int first_row, int column);

    std::vector<int> col_widths;  // twips; 0 hides a column, -1 the control's default

  private:
    int rows_ = 0;
    int cols_ = 0;
    std::vector<Cell> cells_;
    Cell scratch_;
};

}  // namespace korvel::attendance
