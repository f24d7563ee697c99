#include "attendance/leave_totals.h"

#include <QSet>
#include <algorithm>
#include <array>
#include <cstring>

#include "attendance/month_calendar.h"
#include "shell/session.h"

namespace korvel::attendance {

namespace {
// The school days of the range: no Saturday or Sunday and no holiday in its month's calendar.
std::vector<int> school_days(shell::Session& session, int year, const DayRange& range) {
    std::vector<int> school;
    school.reserve(size_t(std::max(0, range.last - range.first + 1)));
    const QDate jan1(year, 1, 1);
    MonthCalendar calendar(session);
    // The calendar folder is listed once: a month without a file in either language has no
    // holidays, and looking each month's files up one by one costs more than the count.
    QSet<QString> present;
    const QString sample = calendar.file_path(1, true);
    const QString folder = sample.left(sample.lastIndexOf(u'\\'));
    for (const QString& name : session.fs().file_names(folder)) {
        present.insert(name.toLower());
    }
    const auto has_file = [&](int month) {
        for (bool afrikaans : {true, false}) {
            const QString path = calendar.file_path(month, afrikaans);
            if (present.contains(path.mid(path.lastIndexOf(u'\\') + 1).toLower())) {
                return true;
            }
        }
        return false;
    };
    int loaded = 0;
    bool holidays = false;
    for (int day = range.first; day <= range.last; ++day) {
        const QDate date = jan1.addDays(day - 1);
        if (date.month() != loaded) {
            loaded = date.month();
            holidays = has_file(loaded);
            if (holidays) {
                // A month's letters are its own: the calendar keeps the last month's otherwise.
                calendar.clear_letters();
                calendar.load(loaded);
            }
        }
        const bool weekend =
            shell::day_name(date.dayOfWeek() % 7 + 1, session.afrikaans).startsWith(u'S');
        if (!weekend && !(holidays && !calendar.holiday[size_t(date.day())].isEmpty())) {
            school.push_back(day);
        }
    }
    return school;
}
}  // namespace

LeaveTotals count_leave(shell::Session& session, const std::vector<StaffMember>& staff,
                        const AttendanceBook& book, const DayRange& range) {
    LeaveTotals t;
    // A column per reason line with a first description, keyed by its record number; a stored
    // reason has two digits, so no number past 99 is ever looked up.
    static_assert(store::PRSAFW["PF_REDE"].width == 2);
    std::array<int, 100> column_of;
    column_of.fill(-1);
    session.scan_records(store::Code::PRSSBI, [&](int number, store::Record& r) {
        const QString name = r.text(store::PRSSBI["SBI_TIPE"]).trimmed();
        if (!name.isEmpty()) {
            if (number < int(column_of.size())) {
                column_of[size_t(number)] = int(t.reasons.size());
            }
            t.reasons.push_back(number);
            t.reason_names << name;
        }
    });
    t.column_totals.assign(t.reasons.size(), 0);
    if (range.empty()) {
        return t;
    }
    const int year = ledger_year_number(session);
    std::vector<bool> school(size_t(range.last) + 1, false);
    for (const int day : school_days(session, year, range)) {
        school[size_t(day)] = true;
    }
    const QDate jan1(year, 1, 1);
    // The letters by byte, and each repeated over a word: most days of a year hold no leave,
    // and are passed over eight at a time.
    constexpr quint64 kOnes = ~quint64(0) / 255;
    constexpr quint64 kNothing = kOnes * uchar('.');  // eight days without a mark
    static constexpr auto kLetterWords = [] {
        std::array<quint64, kLeaveBytes.size()> words{};
        for (size_t i = 0; i < kLeaveBytes.size(); ++i) {
            words[i] = kOnes * uchar(kLeaveBytes[i]);
        }
        return words;
    }();
    std::array<bool, 256> is_leave{};
    for (const char letter : kLeaveBytes) {
        is_leave[uchar(letter)] = true;
    }
    // Whether eight marks hold a leave letter: a byte equal to one leaves a zero byte in the
    // mark word xor the letter's.
    const auto any_leave = [](quint64 marks) {
        quint64 found = 0;
        for (const quint64 letter : kLetterWords) {
            const quint64 x = marks ^ letter;
            found |= (x - kOnes) & ~x & kOnes * 128;
        }
        return found != 0;
    };
    static_assert(store::PRSAFW["PF_DAG"].width == 1);
    const int marks_offset = store::PRSAFW["PF_DAG"].element_offset(0);
    t.people.reserve(staff.size());
    // A person's days are gathered here first, then kept in one piece of their own.
    std::vector<LeaveDay> days;
    const qint64 jan1_day = jan1.toJulianDay();
    for (const StaffMember& m : staff) {
        LeavePerson p;
        p.post = m.post;
        p.name = m.name;
        p.counts.assign(t.reasons.size(), 0);
        days.clear();
        if (const int number = book.find_key(m.post_key); number != 0) {
            const store::Record& r = book.record(number);
            // Eight days at a time: a word without a leave letter is passed over whole, one
            // with a letter has each of its days looked at.
            for (int day = range.first; day <= range.last;) {
                const int last = std::min(day + 7, range.last);
                if (last == day + 7) {
                    quint64 marks = 0;
                    std::memcpy(&marks, r.data() + marks_offset + day, 8);
                    if (marks == kNothing || !any_leave(marks)) {
                        day += 8;
                        continue;
                    }
                }
                for (; day <= last; ++day) {
                    const char letter = stored_mark(r, day);
                    if (!is_leave[uchar(letter)] || !school[size_t(day)]) {
                        continue;
                    }
                    const int col = column_of[size_t(stored_reason(r, day))];
                    if (col < 0) {
                        ++p.no_reason;
                    } else {
                        ++p.counts[size_t(col)];
                        ++t.column_totals[size_t(col)];
                    }
                    ++p.total;
                    days.push_back({QDate::fromJulianDay(jan1_day + day - 1), letter, col});
                }
            }
        }
        p.days.assign(days.begin(), days.end());
        t.no_reason += p.no_reason;
        t.total += p.total;
        t.people.push_back(std::move(p));
    }
    return t;
}

reports::PrintGrid leave_totals_grid(const LeaveTotals& t, bool afrikaans) {
    const auto tr = [afrikaans](const char* af, const char* en) {
        return QString::fromUtf8(afrikaans ? af : en);
    };
    const int reasons = int(t.reasons.size());
    const int cols = 2 + reasons + 2;
    reports::PrintGrid grid(1, cols);
    grid.fixed_rows = 1;
    grid.set_text(0, 0, tr("POS", "PST"));
    grid.set_text(0, 1, tr("PERSONEELLID", "STAFF MEMBER"));
    for (int i = 0; i < reasons; ++i) {
        grid.set_text(0, 2 + i, reports::kTurnMark + t.reason_names.at(i));
    }
    grid.set_text(0, cols - 2, reports::kTurnMark + tr("SONDER REDE", "NO REASON"));
    grid.set_text(0, cols - 1, reports::kTurnMark + tr("TOTAAL", "TOTAL"));
    for (int c = 2; c < cols; ++c) {
        grid.column(c).alignment = reports::kAlignRight;
    }
    const auto add_row = [&](const QString& post, const QString& name,
                             const std::vector<int>& counts, int no_reason, int total) {
        const int row = grid.add_item(post + u'\t' + name);
        for (int i = 0; i < reasons; ++i) {
            if (counts[size_t(i)] > 0) {
                grid.set_text(row, 2 + i, QString::number(counts[size_t(i)]));
            }
        }
        grid.set_text(row, cols - 2, no_reason > 0 ? QString::number(no_reason) : QString());
        grid.set_text(row, cols - 1, QString::number(total));
    };
    for (const LeavePerson& p : t.people) {
        add_row(p.post, p.name, p.counts, p.no_reason, p.total);
    }
    add_row(QString(), tr("TOTAAL", "TOTAL"), t.column_totals, t.no_reason, t.total);
    return grid;
}

}  // namespace korvel::attendance
