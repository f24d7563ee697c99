#pragma once
// What the attendance forms share: the reason lists, the population test, month limits, the
// number reading of stored reasons, and the attendance file held in memory for the grid.

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <cstring>
#include <string_view>
#include <vector>

#include "shell/helpers.h"
#include "shell/session.h"
#include "shell/staff_person.h"

namespace korvel::attendance {

inline constexpr int kEnterKey = 13;
inline constexpr int kDeleteKey = 46;
inline constexpr int kLastSlot = 370;  // day slots of an attendance record run 0 to 370
// The fixed entries of ag_opsies ahead of the separator.
inline constexpr int kFixedOptions = 4;
inline const QString kSeparator = QStringLiteral("-------");

// A list control: entries with their item data, the selection and the first row shown.
struct ListEntry {
    QString text;
    int item_data = 0;
};
struct ListBox {
    std::vector<ListEntry> items;
    int list_index = -1;
    int top_index = 0;
    bool visible = true;
};

using shell::is_educator;

using shell::number_value;

// The reason number as the register stores it: right aligned in two characters.
QString reason_text(int number);

// The mark of a day of an attendance record as stored, its first byte ('.' for none), and the
// number of its reason (0 for ".." and for anything that reads as no number: " 3" and "3 " are
// both 3). Read from the bytes, so a year of days costs no text conversion.
// Inline: the reports call them for every day of every record.
inline char stored_mark(const store::Record& attendance, int day) {
    return attendance.data()[store::PRSAFW["PF_DAG"].element_offset(day)];
}
inline int stored_reason(const store::Record& attendance, int day) {
    // Leading blanks, then digits; what follows the digits ends the number.
    constexpr const store::Field& reasons = store::PRSAFW["PF_REDE"];
    const char* p = attendance.data() + reasons.element_offset(day);
    const char* end = p + reasons.width;
    while (p < end && *p == ' ') {
        ++p;
    }
    int value = 0;
    for (; p < end && *p >= '0' && *p <= '9'; ++p) {
        value = value * 10 + (*p - '0');
    }
    return value;
}

// Whether no reason of the four days from `day` holds a digit: such days have no reason
// number, and a year of mostly empty days is passed over four at a time. The four days must
// lie within the record's slots.
inline bool no_reason_in_four(const store::Record& attendance, int day) {
    quint64 x = 0;
    std::memcpy(&x, attendance.data() + store::PRSAFW["PF_REDE"].element_offset(day), 8);
    constexpr quint64 ones = ~quint64(0) / 255;
    if (x == ones * uchar('.')) {
        return true;  // four days as a new record holds them, the most common by far
    }
    // A byte between '0' and '9' sets its top bit here; bytes of 128 and over never do.
    const quint64 low = x & ones * 127;
    const quint64 digits =
        (ones * (127 + '9' + 1) - low) & ~x & (low + ones * (127 - ('0' - 1))) & ones * 128;
    return digits == 0;
}

// Day-of-year limits of a month of a year.
struct MonthLimits {
    int first = 0;  // day of year of the first of the month
    int last = 0;   // day of year of the last day, at most 370
    int days = 0;   // days in the month
};
MonthLimits month_limits(int month, int year);

// The ledger year as a number; this year when the text holds none.
int ledger_year_number(const shell::Session& session);

// kode_lys gets every reason whose first description is not blank, item data its record
// number. ag_opsies gets the separator and the same descriptions behind what it holds; when
// it is empty, the four fixed entries come first.
void fill_reason_lists(shell::Session& session, ListBox& kode_lys, ListBox& ag_opsies);

// The attendance file read once in blocks: every record's bytes and where each post number
// first stands. Rows of a grid are matched against it instead of scanning the file per row;
// each changed record goes back by a positioned write. PRSAFW must be open.
class AttendanceBook {
  public:
    explicit AttendanceBook(shell::Session& session);

    // Reads every record of the open file. False when the file is not open.
    bool load();
    int count() const { return static_cast<int>(records_.size()); }

    // The first record whose trimmed post number equals post; 0 when none.
    int find(const QString& post) const;
    // The same by the post's key.
    int find_key(quint64 key) const { return first_.value(key, 0); }
    // The same, for a save: a record whose post number starts with ".." is stale and never a
    // match. reach() tells how far the file's scan for this post would have gone.
    int find_live(const QString& post) const;
    // The record a post number finds; a new record of "." and ".." is appended when none.
    int ensure(const QString& post);

    store::Record& record(int number);
    const store::Record& record(int number) const;
    // The record written back at its number (and left in the working record).
    bool write(int number);

    // Blanks and writes back every stale record ahead of record `reach` (count + 1: all).
    void clear_stale(int reach);

    // A trimmed post number as the tables key it: its bytes and their count in one number, so
    // a file's posts are never decoded to look them up. kNoPost for a text no record can hold.
    static constexpr quint64 kNoPost = ~quint64(0);
    static quint64 post_key(std::string_view bytes);
    static quint64 post_key(const QString& post);

  private:
    // The first records of the live posts: made when first asked for, since only a save asks.
    const QHash<quint64, int>& live() const;

    shell::Session& session_;
    std::vector<store::Record> records_;
    QHash<quint64, int> first_;               // trimmed post -> first record
    mutable QHash<quint64, int> first_live_;  // the same, stale records left out
    mutable bool live_made_ = false;
};

}  // namespace korvel::attendance
