#include "reports/print_grid.h"

#include <algorithm>

namespace korvel::reports {

void PrintGrid::resize(int rows, int cols) {
    rows = std::max(0, rows);
    cols = std::max(0, cols);
    if (cols == this->cols()) {
        // Rows only: the cells of the rows kept stay where they are.
        cells_.resize(size_t(rows) * size_t(cols));
        rows_.resize(size_t(rows));
        fixed_rows = std::min(fixed_rows, rows);
        return;
    }
    std::vector<GridCell> cells(size_t(rows) * size_t(cols));
    for (int r = 0; r < std::min(rows, this->rows()); ++r)
        for (int c = 0; c < std::min(cols, this->cols()); ++c)
            cells[size_t(r) * size_t(cols) + size_t(c)] = std::move(cell(r, c));
    cells_ = std::move(cells);
    columns_.resize(size_t(cols));
    rows_.resize(size_t(rows));
    fixed_rows = std::min(fixed_rows, rows);
    fixed_cols = std::min(fixed_cols, cols);
}

void PrintGrid::set_format_string(const QString& format) {
    const QStringList heads = format.split(u'|');
    resize(std::max(rows(), 1), int(heads.size()));
    for (int c = 0; c < cols(); ++c) {
        QString head = heads[c];
        int align = kAlignLeft;
        if (head.startsWith(u'<')) {
            head.remove(0, 1);
        } else if (head.startsWith(u'^')) {
            align = kAlignCentre;
            head.remove(0, 1);
        } else if (head.startsWith(u'>')) {
            align = kAlignRight;
            head.remove(0, 1);
        }
        column(c).alignment = align;
        set_text(0, c, head);
    }
    if (fixed_rows == 0)
        fixed_rows = 1;
}

int PrintGrid::add_item(const QString& tabbed, int at) {
    if (at < 0 || at > rows())
        at = rows();
    const int old_rows = rows();
    resize(old_rows + 1, cols());
    // Shift the rows below down by one.
    for (int r = old_rows; r > at; --r) {
        for (int c = 0; c < cols(); ++c)
            cell(r, c) = std::move(cell(r - 1, c));
        rows_[size_t(r)] = rows_[size_t(r - 1)];
    }
    rows_[size_t(at)] = GridRow{};
    const QStringList parts = tabbed.split(u'\t');
    for (int c = 0; c < cols(); ++c)
        cell(at, c) = GridCell{};
    for (int c = 0; c < cols() && c < parts.size(); ++c)
        set_text(at, c, parts[c]);
    return at;
}

void PrintGrid::remove_rows(int first, int last) {
    first = std::max(0, first);
    last = std::min(rows() - 1, last);
    if (first > last)
        return;
    const auto cols_n = ptrdiff_t(cols());
    cells_.erase(cells_.begin() + first * cols_n, cells_.begin() + (last + 1) * cols_n);
    rows_.erase(rows_.begin() + first, rows_.begin() + last + 1);
    if (fixed_rows > rows())
        fixed_rows = rows();
}

int PrintGrid::alignment(int row, int col) const {
    const int own = cell(row, col).alignment;
    return own != kAlignNone ? own : column(col).alignment;
}

QString PrintGrid::font_name(int, int) const {
    return font;
}

double PrintGrid::font_size(int row, int col) const {
    const double own = cell(row, col).font_size;
    return own > 0 ? own : font_size_points;
}

bool is_turned(const QString& text) {
    return text.startsWith(kTurnMark);
}

QString without_turn_mark(const QString& text) {
    QString out = text;
    out.remove(kTurnMark);
    return out;
}

QStringList cell_lines(const QString& text) {
    QStringList out;
    for (const QString& part : text.split(kLineMark)) {
        QString p = part;
        p.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
        p.replace(u'\r', u'\n');
        out += p.split(u'\n');
    }
    return out;
}

bool holds_line_marks(QStringView text) {
    const auto marks = [](const char16_t* from, const char16_t* to) {
        return std::any_of(from, to,
                           [](char16_t c) { return c == u'\n' || c == u'\r' || c == u'~'; });
    };
    // Four characters at a time: only a word with one below the blank or from "~" on is looked
    // at closely. Each test sets the top bit of a character that passes it (and perhaps of one
    // above it in the word), never of a word that holds none.
    constexpr quint64 kOnes = 0x0001000100010001ULL;
    constexpr quint64 kTops = 0x8000800080008000ULL;
    const char16_t* p = text.utf16();
    const qsizetype n = text.size();
    qsizetype i = 0;
    for (; i + 4 <= n; i += 4) {
        quint64 w = 0;
        std::memcpy(&w, p + i, sizeof w);
        const quint64 below_blank = (w - kOnes * 0x20) & ~w & kTops;
        const quint64 from_tilde = ((w + kOnes * (0x7FFF - 0x7D)) | w) & kTops;
        if ((below_blank | from_tilde) != 0 && marks(p + i, p + i + 4))
            return true;
    }
    return marks(p + i, p + n);
}

}  // namespace korvel::reports
