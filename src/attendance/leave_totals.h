#pragma once
// The yearly leave totals: each staff member's days of leave per reason over the ledger year or
// a part of it. A day counts when it is a school day: leave capture writes weekends and holidays
// too, and they stay stored until their month is next opened in the register, so counting them
// would inflate the totals.

#include <QDate>
#include <QString>
#include <QStringList>
#include <string_view>
#include <vector>

#include "attendance/attendance_reports.h"

namespace korvel::attendance {

// The letters that are leave: absent, absent all day, on leave in either language, and the old
// form of absent. Late and signed out are not leave.
inline constexpr std::string_view kLeaveBytes = "a2vo*";
inline const QString kLeaveLetters = QString::fromLatin1(kLeaveBytes.data(), kLeaveBytes.size());

struct LeaveDay {
    QDate date;
    char letter = 0;  // as stored
    int column = -1;  // the reason's column; -1 when none
};

struct LeavePerson {
    QString post;
    QString name;
    std::vector<int> counts;  // a count per reason column
    int no_reason = 0;
    int total = 0;
    std::vector<LeaveDay> days;
};

struct LeaveTotals {
    std::vector<int> reasons;  // record numbers of the reason columns
    QStringList reason_names;
    std::vector<LeavePerson> people;
    std::vector<int> column_totals;
    int no_reason = 0;
    int total = 0;

    // A counted day's reason: the description of its column, blank when none.
    QString reason_of(const LeaveDay& day) const {
        return day.column < 0 ? QString() : reason_names.at(day.column);
    }
};

// Counts the days of the range for the staff. PRSSBI must be open; the month calendars are read
// for the holidays of each month the range touches.
LeaveTotals count_leave(shell::Session& session, const std::vector<StaffMember>& staff,
                        const AttendanceBook& book, const DayRange& range);

// The grid: a row a person and the totals row; turned heads for the reason columns.
reports::PrintGrid leave_totals_grid(const LeaveTotals& totals, bool afrikaans);

}  // namespace korvel::attendance
