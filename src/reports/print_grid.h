#pragma once
// The print grid: the hidden table a report fills and the engine prints or writes to a
// workbook. Every cell has its text, colours, font, alignment and picture; every column a width
// in twips, an alignment and a flag for vertical rules; every row a height in twips and a merge
// flag. The first `fixed_rows` rows are the header rows, the first `fixed_cols` columns the
// fixed columns.
//
// Mark-up in cell texts: "~~R~~" at the start turns the text, CR LF or "~NL~" break the line,
// "<PAGE>" breaks the page in block grids, "a¦a" prints two small letters in the corners.

#include <QExplicitlySharedDataPointer>
#include <QImage>
#include <QSharedData>
#include <QString>
#include <QStringList>
#include <array>
#include <cstddef>
#include <vector>

namespace korvel::reports {

// Alignment codes of the grid: 1 left, 2 left at the bottom, 4 centred, 7 right; -1 means a
// cell takes its column's.
inline constexpr int kAlignNone = -1;
inline constexpr int kAlignLeft = 1;
inline constexpr int kAlignLeftBottom = 2;
inline constexpr int kAlignCentre = 4;
inline constexpr int kAlignRight = 7;

inline const QString kTurnMark = QStringLiteral("~~R~~");
inline const QString kLineMark = QStringLiteral("~NL~");
inline const QString kPageMark = QStringLiteral("<PAGE>");
inline const QString kCornerMark = QStringLiteral("a\u00a6a");

// A cell's picture. Almost no cell has one, and a grid holds tens of thousands of cells: the
// image is kept aside, so an empty picture costs a null pointer and nothing to make or free.
class CellPicture {
  public:
    CellPicture() = default;
    CellPicture(const QImage& image) : image_(image.isNull() ? nullptr : new Shared(image)) {}
    bool isNull() const { return !image_; }
    operator const QImage&() const { return image_ ? image_->image : null_image(); }

  private:
    struct Shared : QSharedData {
        explicit Shared(const QImage& i) : image(i) {}
        QImage image;
    };
    static const QImage& null_image() {
        static const QImage none;
        return none;
    }
    QExplicitlySharedDataPointer<Shared> image_;  // one pointer, its count in what it points to
};

// A cell. The flags are bits, so that a cell takes forty-eight bytes: a month's summary holds
// thirty-six thousand.
struct GridCell {
    QString text;
    CellPicture picture;
    int fore_colour = 0;  // 0x00BBGGRR
    int back_colour = 0;  // 0: none
    float font_size = 0;  // 0: the grid's
    signed char alignment = kAlignNone;
    bool bold : 1 = false;
    bool italic : 1 = false;
    bool underline : 1 = false;
    bool strikethrough : 1 = false;

    // Takes a text that other cells show too. The same as text = shared, but QString's copy
    // assignment is a library call where its copy and move are inline, and a month's grid
    // gives out 31,000 such texts.
    void share_text(const QString& shared) { text = QString(shared); }
};
static_assert(sizeof(void*) != 8 || sizeof(GridCell) == 48);

struct GridColumn {
    double width = 960;  // twips; 0 hides the column
    int alignment = kAlignLeft;
    bool flagged = false;  // vertical rules on both sides
};

struct GridRow {
    double height = 240;  // twips; 0 hides the row
    bool merge = false;
};

class PrintGrid {
  public:
    PrintGrid() = default;
    PrintGrid(int rows, int cols) { resize(rows, cols); }

    int rows() const { return int(rows_.size()); }
    int cols() const { return int(columns_.size()); }
    void resize(int rows, int cols);
    void set_cols(int cols) { resize(rows(), cols); }
    void set_rows(int rows) { resize(rows, cols()); }

    // "^DATUM|<POSNR|<NAAM|>BEDRAG": as many columns as heads, the heads in row 0, each column
    // aligned by the sign before its head ("<" left, "^" centred, ">" right). Makes row 0 fixed
    // when the grid has no fixed row yet.
    void set_format_string(const QString& format);

    // A row at the end (or before `at`), its cells from a text split at tabs.
    int add_item(const QString& tabbed, int at = -1);
    void remove_rows(int first, int last);  // both included
    void remove_row(int row) { remove_rows(row, row); }

    GridCell& cell(int row, int col) { return cells_[index(row, col)]; }
    const GridCell& cell(int row, int col) const { return cells_[index(row, col)]; }
    QString text(int row, int col) const { return cell(row, col).text; }
    void set_text(int row, int col, const QString& text) { cell(row, col).text = text; }
    GridColumn& column(int col) { return columns_[size_t(col)]; }
    const GridColumn& column(int col) const { return columns_[size_t(col)]; }
    GridRow& row(int r) { return rows_[size_t(r)]; }
    const GridRow& row(int r) const { return rows_[size_t(r)]; }

    // The cell's alignment, or its column's when it has none.
    int alignment(int row, int col) const;
    // The cell's font name (the grid's) and size, or the grid's.
    QString font_name(int row, int col) const;
    double font_size(int row, int col) const;

    int fixed_rows = 0;
    int fixed_cols = 0;
    QString font = QStringLiteral("Lucida Console");
    double font_size_points = 8;
    bool font_bold = false;
    // "autofit" once the columns have been fitted.
    QString tag;
    // The grid is written to a workbook file of its own (a form's one-off Excel button).
    bool own_spreadsheet_file = false;
    QString proposed_file_name;
    // Screen painting of the grid on a form; the engine turns it off while it works.
    bool redraw = true;

  private:
    size_t index(int row, int col) const { return size_t(row) * columns_.size() + size_t(col); }

    std::vector<GridCell> cells_;
    std::vector<GridColumn> columns_;
    std::vector<GridRow> rows_;
};

// True when the cell text starts with the turn mark; the text without every mark.
bool is_turned(const QString& text);
QString without_turn_mark(const QString& text);
// The lines of a cell: "~NL~" first, then CR LF (or a lone LF).
QStringList cell_lines(const QString& text);
// What a cell's text comes to, remembered by where its characters are, for a walk over a grid
// that makes and frees no text, so that the same place is the same text: cells sharing a text
// (a day's mark, a subject, a qualification's name) work it out once.
template <class Value, std::size_t N = 64>
class TextMemo {
  public:
    template <class Work>
    const Value& value(const QString& text, Work work) {
        Slot& slot = slots_[(quintptr(text.constData()) >> 4) % N];
        if (slot.text != text.constData() || slot.size != text.size())
            slot = {text.constData(), text.size(), work(text)};
        return slot.value;
    }

  private:
    struct Slot {
        const QChar* text = nullptr;
        qsizetype size = -1;
        Value value{};
    };
    std::array<Slot, N> slots_{};
};

// Whether the text holds a "~", a CR or a LF; without one it is surely one line. Most cells of
// a list are one line, and this is asked of every one.
bool holds_line_marks(QStringView text);

}  // namespace korvel::reports
