#include "attendance/cell_grid.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

namespace korvel::attendance {

void CellGrid::reset(int rows, int cols) {
    rows_ = std::max(rows, 0);
    cols_ = std::max(cols, 0);
    cells_.assign(static_cast<std::size_t>(rows_) * cols_, Cell{});
    col_widths.assign(cols_, -1);
}

const Cell& CellGrid::at(int row, int col) const {
    static const Cell kBlank;
    return contains(row, col) ? cells_[static_cast<std::size_t>(row) * cols_ + col] : kBlank;
}

Cell& CellGrid::at(int row, int col) {
    if (!contains(row, col)) {
        scratch_ = Cell{};
        return scratch_;
    }
    return cells_[static_cast<std::size_t>(row) * cols_ + col];
}

int CellGrid::add_row() {
    cells_.resize(cells_.size() + cols_);
    return rows_++;
}

void CellGrid::remove_row(int row) {
    if (row < 0 || row >= rows_) {
        return;
    }
    const auto first = cells_.begin() + static_cast<std::ptrdiff_t>(row) * cols_;
    cells_.erase(first, first + cols_);
    --rows_;
}

QString CellGrid::clip() const {
    QStringList lines;
    for (int r = 0; r < rows_; ++r) {
        QStringList cells;
        for (int c = 0; c < cols_; ++c) {
            cells << text(r, c);
        }
        lines << cells.join(u'\t');
    }
    return lines.join(u'\r');
}

void CellGrid::set_clip(const QString& block) {
    const QStringList lines = block.split(u'\r');
    for (int r = 0; r < rows_ && r < lines.size(); ++r) {
        QString line = lines[r];
        if (line.startsWith(u'\n')) {  // a CR LF between rows
            line.remove(0, 1);
        }
        const QStringList cells = line.split(u'\t');
        for (int c = 0; c < cols_ && c < cells.size(); ++c) {
            at(r, c).text = cells[c];
        }
    }
}

namespace {

// Numbers ahead of text, numbers by value, text without regard to case: a strict order
// whatever the cells hold, so the sort stays sound over any data.
bool generic_less(const QString& a, const QString& b) {
    bool a_number = false;
    bool b_number = false;
    const double x = a.trimmed().toDouble(&a_number);
    const double y = b.trimmed().toDouble(&b_number);
    a_number = a_number && std::isfinite(x);
    b_number = b_number && std::isfinite(y);
    if (a_number != b_number) {
        return a_number;
    }
    if (a_number && x != y) {
        return x < y;
    }
    return QString::compare(a, b, Qt::CaseInsensitive) < 0;
}

}  // namespace

void CellGrid::sort_rows(int first_row, int column) {
    if (first_row < 0 || first_row >= rows_ || column < 0 || column >= cols_) {
        return;
    }
    std::vector<std::vector<Cell>> rows;
    for (int r = first_row; r < rows_; ++r) {
        const auto begin = cells_.begin() + static_cast<std::ptrdiff_t>(r) * cols_;
        rows.emplace_back(begin, begin + cols_);
    }
    std::stable_sort(rows.begin(), rows.end(), [column](const auto& a, const auto& b) {
        return generic_less(a[column].text, b[column].text);
    });
    for (std::size_t i = 0; i < rows.size(); ++i) {
        std::copy(rows[i].begin(), rows[i].end(),
                  cells_.begin() + static_cast<std::ptrdiff_t>(first_row + i) * cols_);
    }
}

}  // namespace korvel::attendance
