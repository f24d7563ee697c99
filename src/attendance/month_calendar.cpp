#include "attendance/month_calendar.h"

#include <QDate>

#include "shell/helpers.h"
#include "store/quoted_text.h"

namespace korvel::attendance {

namespace {
constexpr int kCalendarSize = 7;
constexpr int kCalendarColWidth = 600;
}  // namespace

MonthCalendar::MonthCalendar(shell::Session& session) : session_(session) {
    maand_kalender.reset(kCalendarSize, kCalendarSize);
    mk_opsies.visible = false;
    mk_opsies.items = {{session.tr("VAKANSIE", "HOLIDAY")},
                       {session.tr("OPENBARE VAKANSIEDAG", "PUBLIC HOLIDAY")},
                       {session.tr("SPESIALE VAKANSIEDAG", "SPECIAL SCHOOL HOLIDAY")}};
}

QString MonthCalendar::file_path(int month_number, bool afrikaans) const {
    // The calendars live in the workstation's program folder: it stays the same for a ledger
    // year on this workstation, so a month's file is found again wherever the program runs from.
    QString folder = session_.folders.workstation_program;
    if (folder.isEmpty()) {
        folder = session_.folders.workstation;
    }
    if (folder.isEmpty()) {
        folder = session_.folders.staff;
    }
    return folder + QStringLiteral("\\maand_kalender_") +
           shell::month_name(month_number, afrikaans).trimmed() + u'.' +
           session_.ledger_year.trimmed();
}

std::array<std::pair<int, int>, 32> MonthCalendar::layout(int year) const {
    std::array<std::pair<int, int>, 32> at{};
    const MonthLimits limits = month_limits(month, year);
    int row = 1;
    for (int day = 1; day <= limits.days && day <= 31; ++day) {
        const QDate date(year, month, day);
        const int col = date.dayOfWeek() % 7;  // Sunday 0
        at[day] = {row, col};
        if (col == 6) {
            ++row;
        }
    }
    return at;
}

void MonthCalendar::plain_layout(int year) {
    for (int col = 0; col < kCalendarSize; ++col) {
        Cell& c = maand_kalender.at(0, col);
        c.text = shell::day_name(col + 1, session_.afrikaans).left(1);
        c.fore = kRed;
        c.back = kWhite;
    }
    const auto at = layout(year);
    const MonthLimits limits = month_limits(month, year);
    for (int day = 1; day <= limits.days && day <= 31; ++day) {
        maand_kalender.set_text(at[day].first, at[day].second, QString::number(day));
    }
}

void MonthCalendar::load(int month_number) {
    if (month_number < 1 || month_number > 12) {
        return;
    }
    month = month_number;
    const int year = ledger_year_number(session_);

    // 1. The language in use first, then the other.
    std::optional<QByteArray> bytes;
    for (bool afrikaans : {session_.afrikaans, !session_.afrikaans}) {
        const QString path = file_path(month, afrikaans);
        if (session_.fs().file_exists(path)) {
            bytes = session_.fs().read_all(path);
            if (!bytes) {
                bytes = QByteArray();
            }
            break;
        }
    }

    // 2.
    maand_kalender.reset(kCalendarSize, kCalendarSize);
    maand_kalender.col_widths.assign(kCalendarSize, kCalendarColWidth);

    if (bytes) {
        // 3. The quoted string pasted over the whole grid. A file cut short in its string still
        // gives what it holds.
        quoted::Reader reader(*bytes);
        QString block;
        if (const auto value = reader.next()) {
            if (value->kind != quoted::Value::Kind::Empty &&
                value->kind != quoted::Value::Kind::Null) {
                block = value->text;
            }
        }
        maand_kalender.set_clip(block);
        for (int col = 0; col < kCalendarSize; ++col) {
            maand_kalender.at(0, col).fore = kRed;
            maand_kalender.at(0, col).back = kWhite;
        }
    } else {
        // 4.
        plain_layout(year);
    }

    // 5. The holiday letters, read from the cells where the days fall.
    const auto at = layout(year);
    const MonthLimits limits = month_limits(month, year);
    for (int day = 1; day <= limits.days && day <= 31; ++day) {
        const QString cell = maand_kalender.text(at[day].first, at[day].second);
        const qsizetype open = cell.indexOf(u'(');
        if (open >= 0) {
            holiday[day] = cell.mid(open + 1, 1);
        }
    }
}

void MonthCalendar::maand_kalender_click(int row, int col) {
    if (row < 1 || !maand_kalender.contains(row, col) ||
        maand_kalender.text(row, col).trimmed().isEmpty()) {
        return;
    }
    option_row = row;
    option_col = col;
    mk_opsies.visible = true;
}

void MonthCalendar::mk_opsies_click(int index) {
    mk_opsies.visible = false;
    if (index < 0 || index >= static_cast<int>(mk_opsies.items.size()) ||
        !maand_kalender.contains(option_row, option_col)) {
        return;
    }
    Cell& cell = maand_kalender.at(option_row, option_col);
    cell.text = cell.text.trimmed() + u'(' + mk_opsies.items[index].text.left(1) + u')';
    cell.fore = kBlue;
}

void MonthCalendar::mk_save_click() {
    raam_visible = false;
    if (session_.browse_mode || month == 0) {
        return;
    }
    quoted::Writer writer;
    writer.text(maand_kalender.clip()).end_line();
    const QString path = file_path(month, session_.afrikaans);
    const QString folder = path.left(path.lastIndexOf(u'\\'));
    session_.fs().create_folder(folder);
    if (!session_.fs().write_all(path, writer.bytes())) {
        session_.dialogs().message(
            session_.tr("KAN NIE  ", "CANNOT WRITE  ") + path + session_.tr("  SKRYF NIE!", "  !"),
            ui::Icon::Critical);
    }
}

void MonthCalendar::mk_undo_click() {
    if (session_.browse_mode || month == 0) {
        return;
    }
    const QString path = file_path(month, session_.afrikaans);
    if (session_.fs().file_exists(path)) {
        session_.fs().delete_file(path);
    }
    load(month);
}

}  // namespace korvel::attendance
