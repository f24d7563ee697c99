#pragma once
// What the grids of the qualification, appointment and experience forms share: a grid of text
// cells whose row 0 holds the headings of its format string, the edit frame a clicked row
// opens, and the reading of the dates and numbers typed in their boxes.

#include <QDate>
#include <QString>
#include <QStringList>
#include <array>
#include <vector>

#include "shell/session.h"
#include "store/record.h"
#include "store/store.h"

namespace korvel::staff {

inline constexpr int kMaxGridColumns = 5;

struct DetailGrid {
    // A format string such as "<INSTANSIE|<DATUM|>JARE": "<" aligns a column left, ">" right.
    void set_format(const QString& format);
    void resize(int rows);  // rows including the heading row 0; every cell blank

    int columns = 0;
    QStringList headings;
    std::array<bool, kMaxGridColumns> right_aligned{};
    std::vector<std::array<QString, kMaxGridColumns>> cells;  // [row][column]
    bool enabled = true;
    int current_row = 0;  // the row being edited, 0 for none

    int rows() const { return static_cast<int>(cells.size()); }
    QString& cell(int row, int column) {
        return cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
    }
    const QString& cell(int row, int column) const {
        return cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
    }
};

// The date a box holds, as the forms store it: blank, or a text that is no real date
// ("2016.13.01", "MAANDAG"), gives the null date, which is stored as 0.
QDate typed_date(const QString& text);

// A date shown in a box or a cell: "YYYY.MM.DD", blank for none.
QString shown_date(const std::optional<QDate>& date);

// The number a box stores in a 16-bit field: the number its text starts with ("19A5" gives 19),
// 0 for none. False when it does not fit; the caller then tells the user.
bool typed_int16(const QString& text, long long& value);

// The message for a number that does not fit its field, naming the field's label.
void tell_number_too_large(shell::Session& session, const QString& label);

}  // namespace korvel::staff
