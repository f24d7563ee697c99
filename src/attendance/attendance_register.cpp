#include "attendance/attendance_register.h"

#include <QDate>
#include <algorithm>

#include "attendance/reason_codes.h"
#include "shell/helpers.h"

namespace korvel::attendance {

using store::Code;

namespace {
constexpr const store::Field& kMarks = store::PRSAFW["PF_DAG"];
constexpr const store::Field& kReasons = store::PRSAFW["PF_REDE"];
constexpr int kPostWidth = 500;
constexpr int kNameWidth = 2500;
constexpr int kOptionRowHeight = 225;
constexpr int kOptionRowsShown = 5;

bool blank(const QString& text) {
    return text.trimmed().isEmpty();
}
}  // namespace

AttendanceRegister::AttendanceRegister(shell::Session& session, bool educators_in_use)
    : calendar(session), educators(educators_in_use), session_(session) {}

AttendanceRegister::ToolTips AttendanceRegister::tool_tips() const {
    const auto& s = session_;
    return {
        s.tr("Klik om 'AFWESIG' in te lees, 'DEL' om te verwyder",
             "Click to enter 'ABSENT', 'DEL' to remove"),
        s.tr(" LINKSKLIK = VERTOON/WYSIG MAANDKALENDER, REGSKLIK = INISIALISEER BYWONING TOT "
             "JAAR-EINDE ",
             " LEFT CLICK = DISPLAY/MODIFY CALENDER, RIGHT CLICK = INITIALISE ATTENDANCE TO "
             "YEAR-END "),
        s.tr(" Rede/Beskrywing kode-onderhoud ", " Reason/Description code maintenance "),
        s.tr(" Linksklik om maand te kies; Regsklik om maandkalender (nie-skooldae) op te stel ",
             " Left click to select a month; Right click to setup month calendar (non-school "
             "days) "),
        s.tr(" Klik om sorteer-orde tussen Posnommers en Vanne te wissel ",
             " Click to alternate the grid sort sequence between Post numbers and Surnames "),
    };
}

void AttendanceRegister::fill_lists() {
    fill_reason_lists(session_, kode_lys, ag_opsies);
}

void AttendanceRegister::form_load() {
    caption = session_.tr("SKOOLBYWONING", "ATTENDANCE");
    for (const char* code : {"PRSALG", "PRSAFW", "PRSSBI"}) {
        session_.open_staff_file(QString::fromLatin1(code));
    }
    maand_lys.items.clear();
    for (int m = 1; m <= 12; ++m) {
        maand_lys.items.push_back(
            {shell::pad_right(shell::month_name(m, session_.afrikaans), 15), m});
    }
    maand_lys.list_index = session_.today().month() - 1;
    maand_lys.visible = true;
    kode_lys = ListBox{};
    ag_opsies = ListBox{};
    ag_opsies.visible = false;
    fill_lists();

    afw_grid.reset(0, 0);
    rde_grid.reset(0, 0);
    grid_shown = false;
    month = 0;
    limits = {};
    sort_column = kColPost;
    click_row = click_col = current_row = current_col = -1;
    hover_row_ = hover_col_ = -1;
    weekday.fill(true);
    calendar.clear_letters();
    calendar.raam_visible = false;
    ignore_next_click = true;
    redraw = true;
    closed = false;
}

void AttendanceRegister::maand_lys_dbl_click() {
    if (maand_lys.list_index >= 0 && maand_lys.list_index < 12) {
        build_grid(maand_lys.list_index + 1);
    }
}

void AttendanceRegister::maand_lys_right_click() {
    if (maand_lys.list_index >= 0 && maand_lys.list_index < 12) {
        calendar.load(maand_lys.list_index + 1);
        calendar.raam_visible = true;
    }
}

bool AttendanceRegister::is_day_cell(int row, int col) const {
    return grid_shown && row >= kFirstStaffRow && row < afw_grid.rows() && col >= kFirstDayCol &&
           col < kFirstDayCol + limits.days && day_of(col) <= 31;
}

void AttendanceRegister::build_grid(int month_number) {
    if (month_number < 1 || month_number > 12) {
        return;
    }
    const int year = ledger_year_number(session_);
    month = month_number;
    limits = month_limits(month, year);
    grid_shown = true;
    maand_lys.visible = false;

    // 1.
    calendar.load(month);
    session_.open_staff_file(QStringLiteral("PRSALG"));
    session_.open_staff_file(QStringLiteral("PRSAFW"));
    if (session_.count(Code::PRSALG) < 1) {
        return;
    }
    redraw = false;

    // 2.
    const int cols = limits.days + 4;
    afw_grid.reset(2, cols);
    rde_grid.reset(2, cols);
    afw_grid.col_widths[kColPost] = kPostWidth;
    afw_grid.col_widths[kColName] = kNameWidth;
    afw_grid.col_widths[cols - 1] = 0;
    rde_grid.col_widths = afw_grid.col_widths;

    // 3. The attendance file is read once; each row finds its record in it.
    AttendanceBook book(session_);
    book.load();
    const auto& A = store::PRSALG;
    session_.scan_records(Code::PRSALG, [&](int, store::Record& r) {
        const QString post = r.text(A["PA_POS_NR"]).trimmed();
        if (!r.text(A["PA_AKTIEF"]).trimmed().isEmpty() || post.isEmpty() ||
            is_educator(r) != educators) {
            return;
        }
        const QString surname = r.text(A["PA_VAN"]).trimmed();
        const QString name = (r.text(A["PA_TITEL"]).trimmed() + u' ' +
                              shell::initials(r.text(A["PA_NAME"]).trimmed()) + u' ' + surname)
                                 .trimmed();
        for (CellGrid* g : {&afw_grid, &rde_grid}) {
            const int row = g->add_row();
            g->set_text(row, kColPost, post);
            g->set_text(row, kColName, name);
            g->set_text(row, cols - 1, surname);
        }
        if (!session_.browse_mode) {
            book.ensure(post);
        }
    });

    // 4.
    afw_grid.sort_rows(kFirstStaffRow, kColPost);
    if (afw_grid.rows() <= kFirstStaffRow) {
        redraw = true;
        return;
    }

    // 5. Headings and the weekday letters.
    afw_grid.set_text(0, kColPost, session_.tr("POS", "PST"));
    afw_grid.set_text(0, kColName, session_.tr("PERSONEELLID", "STAFF MEMBER"));
    for (int day = 1; day <= limits.days; ++day) {
        const int col = day + 2;
        afw_grid.set_text(0, col, QStringLiteral("%1").arg(day, 2, 10, QLatin1Char('0')));
        const QDate date(year, month, day);
        afw_grid.set_text(1, col,
                          shell::day_name(date.dayOfWeek() % 7 + 1, session_.afrikaans).left(1));
    }

    // 6. Weekends and holidays close their columns.
    for (int day = 1; day <= limits.days && day <= 31; ++day) {
        const int col = day + 2;
        weekday[day] = afw_grid.text(1, col) != QStringLiteral("S");
        if (!weekday[day] || !calendar.holiday[day].isEmpty()) {
            for (int row = kFirstStaffRow; row < afw_grid.rows(); ++row) {
                afw_grid.at(row, col).back = kNonSchoolColour;
            }
        }
    }

    // 7. The marks of the month.
    for (int row = kFirstStaffRow; row < afw_grid.rows(); ++row) {
        const int number = book.find(afw_grid.text(row, kColPost));
        if (number == 0) {
            continue;
        }
        store::Record& r = book.record(number);
        bool erased = false;
        for (int day = 1; day <= limits.days; ++day) {
            const int slot = limits.first + day - 1;
            if (slot > limits.last) {
                break;
            }
            const int col = day + 2;
            Cell& cell = afw_grid.at(row, col);
            if (afw_grid.text(1, col) == QStringLiteral("S") || cell.back == kNonSchoolColour) {
                // Viewing a month erases the marks on its weekends and holidays, on disk.
                if (!session_.browse_mode) {
                    r.set_text(kMarks, QStringLiteral("."), slot);
                    r.set_text(kReasons, QStringLiteral(" "), slot);
                    erased = true;
                }
                continue;
            }
            const QString mark = r.text(kMarks, slot);
            if (blank(mark) || mark == QStringLiteral(".")) {
                cell.text.clear();
            } else {
                cell.text = mark == QStringLiteral("*") ? QStringLiteral("a") : mark;
            }
            const QString reason = r.text(kReasons, slot);
            if (reason == QStringLiteral("..")) {
                rde_grid.set_text(row, col, QStringLiteral("  "));
            } else {
                rde_grid.set_text(row, col, reason);
                if (cell.text.isEmpty()) {
                    cell.text = QStringLiteral("a");
                }
                cell.text += u'*';
            }
        }
        if (erased) {
            book.write(number);
        }
    }

    // 8.
    for (int row = 1; row < afw_grid.rows(); ++row) {
        afw_grid.set_text(row, kColIndex, QString::number(row));
    }
    current_row = kFirstStaffRow;
    current_col = kFirstDayCol;
    if (!calendar.holiday[1].isEmpty()) {
        current_col = 4;
    }
    if (!calendar.holiday[2].isEmpty()) {
        current_col = 5;
    }
    redraw = true;
    selection_colour = kNonSchoolColour;
}

void AttendanceRegister::afw_grid_click(int row, int col) {
    if (!redraw) {
        return;
    }
    click_row = current_row = row;
    click_col = current_col = col;
    if (!is_day_cell(row, col)) {
        return;
    }
    const int day = day_of(col);
    if (!weekday[day] || !calendar.holiday[day].isEmpty()) {
        return;
    }
    Cell& cell = afw_grid.at(row, col);
    cell.back = kCellColour;
    if (ignore_next_click) {
        ignore_next_click = false;
    } else if (blank(cell.text)) {
        cell.text = QStringLiteral("a");
        rde_grid.set_text(row, col, QString());
    }
    if (cell.text.mid(1, 1) == QStringLiteral("*") && !blank(rde_grid.text(row, col))) {
        const int index = number_value(rde_grid.text(row, col)) - 1;
        if (index >= 0 && index < static_cast<int>(kode_lys.items.size())) {
            kode_lys.list_index = index;
            kode_lys.top_index = index;
        }
    }
    grid_has_focus = true;
}

void AttendanceRegister::afw_grid_key_down(int key_code) {
    if (key_code == kEnterKey) {
        afw_grid_click(current_row, current_col);
    } else if (key_code == kDeleteKey && is_day_cell(current_row, current_col)) {
        // The reason stays in rde_grid until the save, where a blank cell clears it.
        Cell& cell = afw_grid.at(current_row, current_col);
        cell.text.clear();
        cell.back = kWhite;
    }
}

void AttendanceRegister::afw_grid_right_click(int row, int col) {
    if (!grid_shown || row < kFirstStaffRow || row >= afw_grid.rows()) {
        return;
    }
    if (col >= kFirstDayCol) {
        if (!is_day_cell(row, col)) {
            return;
        }
        ag_opsies_row = current_row = row;
        ag_opsies_col = current_col = col;
        ag_opsies_height =
            kOptionRowHeight * std::min(static_cast<int>(ag_opsies.items.size()), kOptionRowsShown);
        ag_opsies.visible = true;
        return;
    }
    const QString name = afw_grid.text(row, kColName);
    const QString month_text = shell::month_name(month, session_.afrikaans).trimmed();
    const ui::Answer answer = session_.dialogs().ask(
        session_.tr("WIL U ALLE BYWONING VIR ", "DO YOU WISH TO ERASE ALL ENTRIES FOR ") + name +
            session_.tr(" VIR ", " FOR ") + month_text + session_.tr(" VERWYDER ?", " ?"),
        ui::Buttons::YesNo, ui::Icon::Question, ui::Answer::No);
    if (answer != ui::Answer::Yes) {
        return;
    }
    // Every cell from the first day to the end of the row; the save then clears the reasons.
    for (int c = kFirstDayCol; c < afw_grid.cols(); ++c) {
        afw_grid.set_text(row, c, QString());
    }
}

void AttendanceRegister::ag_opsies_click(int index) {
    ag_opsies.visible = false;
    if (index < 0 || index >= static_cast<int>(ag_opsies.items.size()) ||
        !is_day_cell(ag_opsies_row, ag_opsies_col)) {
        return;
    }
    Cell& cell = afw_grid.at(ag_opsies_row, ag_opsies_col);
    if (index < kFixedOptions) {
        cell.text = ag_opsies.items[index].text.left(1).toLower();
        return;
    }
    // The position less the fixed entries plus one: the separator itself gives reason 1 and
    // the first description reason 2, one above its record number.
    cell.text = QStringLiteral("a*");
    rde_grid.set_text(ag_opsies_row, ag_opsies_col, QString::number(index - kFixedOptions + 1));
}

void AttendanceRegister::kode_lys_dbl_click(int index) {
    if (index < 0 || index >= static_cast<int>(kode_lys.items.size())) {
        return;
    }
    kode_lys.list_index = index;
    if (!is_day_cell(click_row, click_col)) {
        return;
    }
    Cell& cell = afw_grid.at(click_row, click_col);
    if (blank(cell.text)) {
        return;
    }
    if (!cell.text.endsWith(u'*')) {
        cell.text += u'*';
    }
    rde_grid.set_text(click_row, click_col, QString::number(kode_lys.items[index].item_data));
    grid_has_focus = true;
}

void AttendanceRegister::afw_grid_mouse_move(int row, int col) {
    if (!grid_shown || col < kFirstDayCol || row < kFirstStaffRow || row >= afw_grid.rows() ||
        col >= afw_grid.cols()) {
        return;
    }
    redraw = false;
    auto restore = [&](int r, int c) {
        Cell& cell = afw_grid.at(r, c);
        if (cell.back == kHoverColour) {
            cell.back = kWhite;
        }
    };
    auto paint = [&](int r, int c) {
        Cell& cell = afw_grid.at(r, c);
        if (cell.back != kNonSchoolColour) {
            cell.back = kHoverColour;
        }
    };
    if (hover_row_ >= 0) {
        for (int r = kFirstStaffRow; r <= hover_row_; ++r) {
            restore(r, hover_col_);
        }
        for (int c = kFirstDayCol; c <= hover_col_; ++c) {
            restore(hover_row_, c);
        }
    }
    for (int r = kFirstStaffRow; r <= row; ++r) {
        paint(r, col);
    }
    for (int c = kFirstDayCol; c <= col; ++c) {
        paint(row, c);
    }
    hover_row_ = current_row = row;
    hover_col_ = current_col = col;
    redraw = true;
}

void AttendanceRegister::grid_sort_click() {
    if (afw_grid.cols() == 0) {
        return;
    }
    sort_column = sort_column == kColPost ? afw_grid.cols() - 1 : kColPost;
    // rde_grid keeps its order: reasons are saved against the row now at the same index.
    afw_grid.sort_rows(kFirstStaffRow, sort_column);
}

void AttendanceRegister::kodes_click() {
    if (session_.browse_mode) {
        return;
    }
    ReasonCodes form(session_);
    form.form_load();
    session_.dialogs().show_modal(form);
    fill_lists();
}

void AttendanceRegister::task_options_click(int index) {
    if (index == 1) {
        const int m = grid_shown ? month : maand_lys.list_index + 1;
        if (m >= 1 && m <= 12) {
            calendar.load(m);
            calendar.raam_visible = true;
        }
    } else if (index == 5 && open_reports) {
        open_reports();
    }
}

void AttendanceRegister::task_options_right_click(int index) {
    if (index != 1 || session_.browse_mode) {
        return;
    }
    const std::optional<QDate> from = session_.dialogs().pick_date(caption, session_.today());
    if (!from || !from->isValid()) {
        return;
    }
    const QString group =
        educators ? session_.tr("ONDERWYSERS", "STAFF") : session_.tr("WERKNEMERS", "EMPLOYEES");
    const QString date = shell::date_to_text(*from);
    const QString year = session_.ledger_year.trimmed();
    const ui::Answer answer = session_.dialogs().ask(
        session_.afrikaans
            ? QStringLiteral("Wil u defnitief ALLE ") + group + QStringLiteral(" bywoning vanaf ") +
                  date + QStringLiteral(" tot einde Desember ") + year + QStringLiteral(" uitvee?")
            : QStringLiteral("Do you really wish to erase ALL ") + group +
                  QStringLiteral(" attendance from ") + date + QStringLiteral(" to end December ") +
                  year + u'?',
        ui::Buttons::YesNo, ui::Icon::Question, ui::Answer::No);
    if (answer == ui::Answer::Yes) {
        initialise_to_year_end(*from);
    }
}

void AttendanceRegister::initialise_to_year_end(const QDate& from) {
    if (session_.browse_mode || !from.isValid()) {
        return;
    }
    // 1. Every post number gets its attendance record; the first staff record of a post
    // number tells its group.
    session_.open_staff_file(QStringLiteral("PRSALG"));
    QStringList posts;
    QHash<QString, bool> educator_of;
    session_.scan_records(Code::PRSALG, [&](int, store::Record& r) {
        const QString post = r.text(store::PRSALG["PA_POS_NR"]).trimmed();
        if (post.isEmpty() || educator_of.contains(post)) {
            return;
        }
        posts << post;
        educator_of.insert(post, is_educator(r));
    });
    session_.open_staff_file(QStringLiteral("PRSAFW"));
    {
        AttendanceBook book(session_);
        book.load();
        for (const QString& post : posts) {
            book.ensure(post);
        }
    }
    session_.open_staff_file(QStringLiteral("PRSAFW"));

    // 2.
    AttendanceBook book(session_);
    book.load();
    const int first = from.dayOfYear();
    for (int number = 1; number <= book.count(); ++number) {
        store::Record& r = book.record(number);
        const QString post = r.text(store::PRSAFW["PF_POS_NR"]).trimmed();
        const auto it = educator_of.constFind(post);
        if (it == educator_of.constEnd() || *it != educators) {
            continue;
        }
        for (int slot = first; slot <= kLastSlot; ++slot) {
            r.set_text(kMarks, QStringLiteral("."), slot);
            r.set_text(kReasons, QStringLiteral(".."), slot);
        }
        book.write(number);
    }

    // 3.
    session_.open_staff_file(QStringLiteral("PRSAFW"));
    if (grid_shown) {
        build_grid(month);
    }
}

void AttendanceRegister::save_grid() {
    if (!grid_shown || month == 0 || session_.browse_mode) {
        return;
    }
    if (!session_.is_open(Code::PRSAFW)) {
        session_.open_staff_file(QStringLiteral("PRSAFW"));
    }
    AttendanceBook book(session_);
    if (!book.load()) {
        return;
    }
    const int total = std::max(afw_grid.rows() - kFirstStaffRow, 0);
    // Where each row's record stands decides how far the file's scan goes, and a scan blanks
    // the post number of every stale ".." record it passes.
    int reach = 0;
    for (int row = kFirstStaffRow; row < afw_grid.rows(); ++row) {
        const int number = book.find_live(afw_grid.text(row, kColPost));
        reach = std::max(reach, number == 0 ? book.count() + 1 : number);
    }
    book.clear_stale(reach);

    // One record written per row: on a shared drive a large staff takes a while. A month half
    // saved would be worse than waiting, so the bar has no cancel.
    const std::unique_ptr<ui::Progress> bar = session_.dialogs().progress(
        session_.tr("Bywoning word gestoor ...", "Saving the attendance ..."), total, false);
    for (int row = kFirstStaffRow; row < afw_grid.rows(); ++row) {
        bar->step(row - kFirstStaffRow);
        const int number = book.find_live(afw_grid.text(row, kColPost));
        if (number == 0) {
            continue;
        }
        store::Record& r = book.record(number);
        for (int day = 1; day <= limits.days; ++day) {
            const int slot = limits.first + day - 1;
            if (slot > limits.last) {
                break;
            }
            const int col = day + 2;
            const QString cell = afw_grid.text(row, col).trimmed();
            QString mark;
            if (cell.isEmpty()) {
                mark = QStringLiteral(".");
                rde_grid.set_text(row, col, QString());
            } else {
                mark = cell.left(1);
            }
            const QString reason_cell = rde_grid.text(row, col);
            const QString reason =
                blank(reason_cell) ? QStringLiteral("..") : reason_text(number_value(reason_cell));
            r.set_text(kMarks, mark, slot);
            r.set_text(kReasons, reason, slot);
        }
        book.write(number);
    }
    bar->step(total);
}

void AttendanceRegister::staff_exit_click() {
    if (!grid_shown) {
        session_.close_file(Code::PRSAFW);
        closed = true;
        return;
    }
    save_grid();
    session_.close_file(Code::PRSAFW);
    // The form unloads and shows anew: the month list again.
    form_load();
}

}  // namespace korvel::attendance
