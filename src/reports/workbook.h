#pragma once
// A workbook held in memory, sheet by sheet and cell by cell, and written whole as .xlsx at the
// end. Keeping it in memory lets the grid writer set borders and fills over a range after the
// cells are in, which a streaming writer cannot.

#include <QByteArray>
#include <QImage>
#include <QString>
#include <map>
#include <utility>
#include <vector>

namespace korvel::reports {

enum class CellAlign { General, Left, Centre, Right };

struct SheetCell {
    QString text;
    bool is_number = false;
    double number = 0;
    QString font_name = QStringLiteral("Arial");
    double font_size = 10;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikethrough = false;
    int colour = 0;  // 0x00BBGGRR
    CellAlign align = CellAlign::General;
    int rotation = 0;  // 90: reading bottom to top
    QString number_format;
    int fill = -1;  // 0x00BBGGRR, -1 none
    bool border_top = false;
    bool border_bottom = false;
    bool border_left = false;
    bool border_right = false;
};

struct SheetMerge {
    int first_row, first_col, last_row, last_col;
};

struct SheetImage {
    int row, col;
    QByteArray png;
};

struct Sheet {
    QString name;
    QString font_name = QStringLiteral("Arial");
    std::map<std::pair<int, int>, SheetCell> cells;  // (row, col) from 0: A1 is (0, 0)
    std::map<int, double> column_widths;             // characters
    std::map<int, double> row_heights;               // points
    std::vector<SheetMerge> merges;
    std::vector<SheetImage> images;

    SheetCell& at(int row, int col) { return cells[{row, col}]; }
    const SheetCell* find(int row, int col) const;
    // Text in a cell in the sheet's font.
    SheetCell& put(int row, int col, const QString& text);
    // A picture placed over the cell.
    void add_image(int row, int col, const QImage& image);
};

class Workbook {
  public:
    int sheet_count() const { return int(sheets_.size()); }
    // Sheets are numbered from 1.
    Sheet& sheet(int number) { return sheets_[size_t(number - 1)]; }
    const Sheet& sheet(int number) const { return sheets_[size_t(number - 1)]; }
    // A sheet behind the last, named "Sheet<n>".
    Sheet& add_sheet();

    // Writes the workbook whole: to a temporary file beside the target, which then replaces
    // any file of that name. False, with the reason, when it cannot be written; nothing is
    // left behind then.
    bool save(const QString& native_path, QString* error = nullptr) const;

  private:
    std::vector<Sheet> sheets_;
};

}  // namespace korvel::reports
