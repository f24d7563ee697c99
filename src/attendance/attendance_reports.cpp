// sk423_prg
#include "attendance/attendance_reports.h"

#include <QHash>
#include <QVarLengthArray>
#include <algorithm>
#include <array>
#include <mutex>

#include "attendance/leave_totals.h"
#include "platform/codepage.h"
#include "reports/grid_output.h"
#include "reports/print_target.h"
#include "shell/helpers.h"
#include "shell/session.h"
#include "shell/staff_person.h"
#include "store/field_bytes.h"

namespace korvel::attendance {

using reports::PrintGrid;
using store::Code;

namespace {
constexpr const store::Field& kMarks = store::PRSAFW["PF_DAG"];
constexpr const store::Field& kReasons = store::PRSAFW["PF_REDE"];
const auto& A = store::PRSALG;
constexpr int kPostWidth = A["PA_POS_NR"].width;

constexpr double kDayColumnWidth = 330;  // twips: three characters of the grid's font

// The letters the summary counts: absent and on leave in either language.
const QString kCountedLetters = QStringLiteral("avo");

// The text of a day in the grid, which follows from its mark and reason bytes alone (the key).
// Every month holds the same few, so each is made once for the life of the program and handed
// out as raw data: the thirty thousand cells of a year copy it without counting references,
// an atomic operation each.
QString day_text(quint32 key, const store::Record& r, int day) {
    static std::mutex guard;
    static auto* const made = new QHash<quint32, QString>;  // never freed: cells point into it
    const std::lock_guard lock(guard);
    auto found = made->constFind(key);
    if (found == made->constEnd()) {
        QString mark = r.text(kMarks, day);
        if (mark == QStringLiteral(".") || mark.trimmed().isEmpty()) {
            mark.clear();
        }
        QString reason = r.text(kReasons, day);
        if (reason == QStringLiteral("..")) {
            reason = QStringLiteral("  ");
        }
        found = made->insert(key, mark + reason.remove(u'.'));
    }
    return found->isEmpty() ? QString() : QString::fromRawData(found->constData(), found->size());
}

QString weekday_letter(const QDate& date, bool afrikaans) {
    return shell::day_name(date.dayOfWeek() % 7 + 1, afrikaans).left(1);
}
}  // namespace

std::vector<StaffMember> selected_staff(shell::Session& session, AdminChoice choice,
                                        unsigned texts) {
    // The order's key is the post number right aligned in its field, so numbers sort in order
    // as strings. It is taken from the bytes, each ranked as its character sorts, five to a
    // number: comparing two numbers orders them as their texts would.
    static_assert(kPostWidth <= 7);
    std::vector<std::pair<quint64, int>> order;
    std::vector<StaffMember> staff;
    staff.reserve(size_t(std::max(0, session.count(Code::PRSALG))));
    session.scan_bytes(Code::PRSALG, [&](int number, const char* r) {
        const std::string_view post = store::trimmed_bytes(r, A["PA_POS_NR"]);
        if (post.empty() || !store::trimmed_bytes(r, A["PA_AKTIEF"]).empty()) {
            return;
        }
        const bool admin = !shell::is_educator(r);
        if ((choice == AdminChoice::Only && !admin) || (choice == AdminChoice::Excluded && admin)) {
            return;
        }
        quint64 key = 0;
        for (size_t i = post.size(); i < size_t(kPostWidth); ++i) {
            key = key << 8 | cp1252::sort_rank(' ');
        }
        for (const char c : post) {
            key = key << 8 | cp1252::sort_rank(uchar(c));
        }
        order.emplace_back(key, int(staff.size()));
        StaffMember& m = staff.emplace_back();
        m.record = number;
        m.post_key = AttendanceBook::post_key(post);
        m.admin = admin;
        if (texts & kStaffPost) {
            m.post = cp1252::decode(post.data(), qsizetype(post.size()));
        }
        if (!(texts & (kStaffName | kStaffParts))) {
            return;
        }
        QVarLengthArray<QChar, 64> initials;
        shell::record_initials_into(r, initials);
        const std::string_view surname = store::trimmed_bytes(r, A["PA_VAN"]);
        if (texts & kStaffParts) {
            m.surname = cp1252::decode(surname.data(), qsizetype(surname.size()));
            m.initials = QString(initials.constData(), initials.size());
            m.persal = store::trimmed_text(r, A["PA_PERSAL"]);
        }
        if (texts & kStaffName) {
            // Title, initials and surname, simplified as text is: runs of white space inside
            // made one blank, none at the ends.
            QVarLengthArray<QChar, 128> name;
            bool blank = false;
            const auto put = [&](QChar c) {
                if (c.isSpace()) {
                    blank = !name.isEmpty();
                    return;
                }
                if (blank) {
                    name.append(u' ');
                    blank = false;
                }
                name.append(c);
            };
            for (const char b : store::trimmed_bytes(r, A["PA_TITEL"])) {
                put(QChar(cp1252::to_char(uchar(b))));
            }
            put(u' ');
            for (const QChar c : initials) {
                put(c);
            }
            put(u' ');
            for (const char b : surname) {
                put(QChar(cp1252::to_char(uchar(b))));
            }
            m.name = QString(name.constData(), name.size());
        }
    });
    // The file's order among equal numbers: the keys carry it as their second half.
    std::sort(order.begin(), order.end());
    std::vector<StaffMember> sorted;
    sorted.reserve(staff.size());
    for (const auto& [key, at] : order) {
        sorted.push_back(std::move(staff[size_t(at)]));
    }
    return sorted;
}

DayRange day_range(const QDate& from, const QDate& to, int year) {
    const QDate jan1(year, 1, 1);
    const QDate dec31(year, 12, 31);
    if (!from.isValid() || !to.isValid()) {
        return {};
    }
    const QDate a = std::max(from, jan1);
    const QDate b = std::min(to, dec31);
    if (b < a) {
        return {};
    }
    return {a.dayOfYear(), std::min(b.dayOfYear(), kLastSlot)};
}

DayGrid build_day_grid(const std::vector<StaffMember>& staff, const AttendanceBook& book, int year,
                       int first, int last, bool afrikaans) {
    DayGrid g;
    g.first = first;
    g.last = last;
    const int days = std::max(0, last - first + 1);
    const int cols = days + 3 + 1;
    // Sized once: rows added one at a time would move the whole grid each time.
    const int rows = kDayGridFirstRow + int(staff.size());
    g.afw_grid.resize(rows, cols);
    g.afw_grid.set_text(0, 1, afrikaans ? QStringLiteral("POS") : QStringLiteral("PST"));
    g.afw_grid.set_text(
        0, 2, afrikaans ? QStringLiteral("PERSONEELLID") : QStringLiteral("STAFF MEMBER"));
    const QDate jan1(year, 1, 1);
    std::vector<bool> weekend(size_t(days), false);
    for (int day = first; day <= last; ++day) {
        const QDate date = jan1.addDays(day - 1);
        const int col = g.day_col(day);
        g.afw_grid.set_text(0, col, QStringLiteral("%1").arg(date.day(), 2, 10, QLatin1Char('0')));
        g.afw_grid.set_text(1, col, weekday_letter(date, afrikaans));
        weekend[size_t(day - first)] = g.afw_grid.text(1, col) == QStringLiteral("S");
    }
    // The days seen last, by a few bits of their key, found without the table's hashing.
    std::array<std::pair<quint32, QString>, 64> recent;
    recent.fill({~quint32(0), QString()});  // no day's three bytes make that key
    for (int row = kDayGridFirstRow; row < rows; ++row) {
        const StaffMember& m = staff[size_t(row - kDayGridFirstRow)];
        g.staff.push_back(m.record);
        g.afw_grid.set_text(row, 0, shell::number_text(row - 1));
        g.afw_grid.set_text(row, 1, m.post.rightJustified(kPostWidth));
        g.afw_grid.set_text(row, 2, m.name);
        for (int day = first; day <= last; ++day) {
            if (weekend[size_t(day - first)]) {
                g.afw_grid.cell(row, g.day_col(day)).back_colour = kButtonFace;
            }
        }
        const int number = book.find_key(m.post_key);
        if (number == 0) {
            continue;
        }
        const store::Record& r = book.record(number);
        for (int day = first; day <= last; ++day) {
            const int col = g.day_col(day);
            // A cell's text follows from its three bytes alone, so each distinct day is made
            // once: a month of a thousand people holds few, and the cells share the text.
            const auto* mark_byte =
                reinterpret_cast<const uchar*>(r.data() + kMarks.element_offset(day));
            const auto* reason_bytes =
                reinterpret_cast<const uchar*>(r.data() + kReasons.element_offset(day));
            const quint32 key = quint32(*mark_byte) << 16 | quint32(reason_bytes[0]) << 8 |
                                quint32(reason_bytes[1]);
            auto& seen = recent[(key * 2654435761U) >> 26];
            if (seen.first != key) {
                seen = {key, day_text(key, r, day)};
            }
            g.afw_grid.cell(row, col).share_text(seen.second);
        }
    }
    return g;
}

AttendanceReports::AttendanceReports(shell::Session& session, reports::PrintJob& job,
                                     reports::PrintTargetHost* host)
    : s_(session), job_(job), host_(host) {}

int AttendanceReports::year() const {
    return ledger_year_number(s_);
}

void AttendanceReports::form_load() {
    caption = s_.tr("SKOOLBYWONING", "ATTENDANCE");
    dr_ok_captions = {QString(), s_.tr("MAANDOPSOMMIMG", "MONTHLY SUMMARY"),
                      s_.tr("REDELYS", "REASON LIST"),
                      s_.tr("TEENWOORDIGHEIDSREGISTER", "ATTENDANCE REGISTER"),
                      s_.tr("VERLOFTOTALE", "LEAVE TOTALS")};
    jr_teks = {QString(), s_.tr("VANAF DATUM", "FROM DATE"), s_.tr("TOT DATUM", "TO DATE")};
    administratief_caption = s_.tr("ADMINISTRATIEWE PERSONEEL", "ADMINISTRATIVE STAFF");
    administratief_captions = {s_.tr("SLEGS", "ONLY"), s_.tr("INGESLUIT", "INCLUDED"),
                               s_.tr("UITGESLUIT", "EXCLUDED")};
    for (const char* code : {"PRSALG", "PRSAFW", "PRSSBI"}) {
        s_.open_staff_file(QString::fromLatin1(code));
    }
    maand_lys.items.clear();
    for (int m = 1; m <= 12; ++m) {
        maand_lys.items.push_back({shell::pad_right(shell::month_name(m, s_.afrikaans), 15), m});
    }
    maand_lys.list_index = -1;
    month_ = 0;
    ListBox options;
    fill_reason_lists(s_, kode_lys, options);
    jr_data[1] = s_.today();
    jr_data[2] = s_.today().addMonths(1);
    use_date_boxes();
    maand_lys_visible = true;
    datum_raam_visible = true;
}

void AttendanceReports::use_date_boxes() {
    range = day_range(jr_data[1], jr_data[2], year());
}

void AttendanceReports::maand_lys_click(int index) {
    if (index < 0 || index >= 12) {
        return;
    }
    maand_lys.list_index = index;
    month_ = index + 1;
    const MonthLimits m = month_limits(month_, year());
    jr_data[1] = QDate(year(), month_, 1);
    jr_data[2] = jr_data[1].addDays(m.days - 1);
    range = {m.first, m.last};
}

void AttendanceReports::jr_data_click(int index) {
    if (index != 1 && index != 2) {
        return;
    }
    const QDate start = jr_data[size_t(index)].isValid() ? jr_data[size_t(index)] : s_.today();
    if (const auto picked = s_.dialogs().pick_date(jr_teks[size_t(index)], start)) {
        jr_data[size_t(index)] = *picked;
        use_date_boxes();
        verlof_hele_jaar = false;
    }
}

void AttendanceReports::dr_ok_click(int index) {
    switch (index) {
        case kMonthlySummary:
            print_monthly_summary();
            break;
        case kReasonList:
            maand_lys_visible = datum_raam_visible = true;
            print_reason_list();
            break;
        case kRegisterReport:
            maand_lys_visible = datum_raam_visible = true;
            print_register();
            break;
        case kLeaveTotals:
            if (!leave_range_ok()) {
                break;
            }
            if (show_leave_totals) {
                show_leave_totals(*this);
            } else {
                print_leave_totals();
            }
            break;
        default:
            break;
    }
}

bool AttendanceReports::start(const QString& name) {
    job_.afrikaans = s_.afrikaans;
    job_.state.report_name = name;
    if (choose_target) {
        return choose_target(job_);
    }
    return host_ != nullptr &&
           reports::ask_print_target(job_, *host_, s_.fs().native(s_.folders.workstation));
}

void AttendanceReports::load_book(AttendanceBook& book) {
    // Opened once for the form: opening it again for every report resolves its path again.
    if (!s_.is_open(Code::PRSAFW)) {
        s_.open_staff_file(QStringLiteral("PRSAFW"));
    }
    book.load();
}

DayGrid AttendanceReports::day_grid(const DayRange& days) {
    AttendanceBook book(s_);
    load_book(book);
    return build_day_grid(selected_staff(s_, kies_administratief, kStaffPost | kStaffName), book,
                          year(), days.first, days.last, s_.afrikaans);
}

QString AttendanceReports::month_title() const {
    return s_.tr("MAANDOPSOMMING : ", "MONTHLY SUMMARY : ") +
           shell::month_name(month_, s_.afrikaans) + u' ' + QString::number(year());
}

PrintGrid AttendanceReports::summary_grid(DayGrid days, std::vector<int>* reason_counts) const {
    // The day grid is made for the summary: its cells are taken over, and its last column,
    // at the right, takes the total.
    PrintGrid grid = std::move(days.afw_grid);
    const int cols = grid.cols();
    grid.fixed_rows = 2;
    for (int c = 3; c < cols; ++c) {
        grid.column(c).alignment = reports::kAlignCentre;
    }
    grid.column(0).alignment = reports::kAlignRight;
    grid.set_text(0, cols - 1, s_.tr("TOT", "TOT"));
    reason_counts->assign(kode_lys.items.size(), 0);
    // What a cell counts for: whether it counts, and its reason (0 for none).
    const auto read_cell = [](const QString& text) -> std::pair<bool, int> {
        const QStringView cell = QStringView(text).trimmed();
        if (cell.isEmpty() || !kCountedLetters.contains(cell.at(0))) {
            return {false, 0};
        }
        return {true, cell.size() > 1 ? shell::number_value(cell.mid(1)) : 0};
    };
    // The day grid's cells of one day's bytes share their text, so each text is read once.
    reports::TextMemo<std::pair<bool, int>> read;
    for (int r = kDayGridFirstRow; r < grid.rows(); ++r) {
        int total = 0;
        for (int c = 3; c < cols - 1; ++c) {
            const auto [counted, reason] = read.value(grid.cell(r, c).text, read_cell);
            if (!counted) {
                continue;
            }
            ++total;
            // A reason counts at its place in kode_lys; one past the list is ignored.
            if (reason >= 1 && reason <= int(reason_counts->size())) {
                ++(*reason_counts)[size_t(reason - 1)];
            }
        }
        grid.set_text(r, cols - 1, shell::number_text(total));
    }
    return grid;
}

bool AttendanceReports::print_monthly_summary() {
    if (month_ == 0) {
        s_.dialogs().message(
            s_.tr("Kies eers 'n Maand hierbo ...", "Please first select a Month above ..."),
            ui::Icon::Exclamation);
        return false;
    }
    if (s_.count(Code::PRSALG) < 1) {
        return false;
    }
    const QString title = month_title();
    if (!start(title)) {
        return false;
    }
    std::vector<int> counts;
    PrintGrid grid = summary_grid(day_grid(range), &counts);
    // The names fitted to their texts; a day column holds a letter and a reason ("a12"), and
    // the total column is as wide as the day column before it.
    reports::fit_grid_columns(job_, grid, 0, 40, false, 3);
    for (int c = 3; c < grid.cols(); ++c) {
        grid.column(c).width = kDayColumnWidth;
    }
    reports::GridPageOptions options;
    options.header_rows = 2;
    options.tight_columns = true;
    reports::print_grid_report(job_, grid, title, {}, reports::kLandscapeText, options);

    // The count of each reason below the grid.
    for (size_t i = 0; i < counts.size(); ++i) {
        const QString head = QString::number(i + 1).rightJustified(2) + u' ' +
                             kode_lys.items[i].text + QStringLiteral(" = ");
        if (job_.state.to_spreadsheet) {
            reports::Sheet& sheet = job_.workbook()->sheet(job_.state.spreadsheet_sheet);
            sheet.put(job_.state.spreadsheet_row, 1, head);
            sheet.put(job_.state.spreadsheet_row, 3, QString::number(counts[i]));
            ++job_.state.spreadsheet_row;
            continue;
        }
        job_.print_page_header(title, {}, reports::kLandscapeText);
        reports::PrintDevice& d = job_.device();
        d.set_current_x(2);
        d.print(head, true);
        d.set_current_x(80);
        d.print(QString::number(counts[i]));
    }
    job_.finish_report();
    return true;
}

PrintGrid AttendanceReports::reason_list_grid(const DayRange& days) {
    AttendanceBook book(s_);
    load_book(book);
    const int reasons = int(kode_lys.items.size());
    const std::vector<StaffMember> staff = selected_staff(s_, kies_administratief, kStaffParts);
    PrintGrid grid(1 + int(staff.size()), 3 + reasons + 1);
    grid.fixed_rows = 1;
    const auto turned = [](const QString& text) { return reports::kTurnMark + text; };
    grid.set_text(0, 0, turned(s_.tr("PERSAL NR", "PERSAL NO")));
    grid.set_text(0, 1, turned(s_.tr("VAN", "SURNAME")));
    grid.set_text(0, 2, turned(s_.tr("VOORLETTERS", "INITIALS")));
    for (int i = 0; i < reasons; ++i) {
        grid.set_text(0, 3 + i, turned(kode_lys.items[size_t(i)].text));
        grid.column(3 + i).alignment = reports::kAlignCentre;
    }
    grid.set_text(0, 3 + reasons, turned(s_.tr("TOTAAL", "TOTAL")));
    grid.column(3 + reasons).alignment = reports::kAlignCentre;

    for (int row = 1; row < grid.rows(); ++row) {
        const StaffMember& m = staff[size_t(row - 1)];
        std::vector<int> counts(size_t(reasons), 0);
        // Only the reason's number counts here: the letter plays no part, and a stored
        // weekend counts like any other day.
        if (const int number = book.find_key(m.post_key); number != 0) {
            const store::Record& r = book.record(number);
            // Four days at a time: four without a digit are passed over whole, four with one
            // have each day looked at.
            for (int day = days.first; day <= days.last;) {
                const int last = std::min(day + 3, days.last);
                if (last == day + 3 && no_reason_in_four(r, day)) {
                    day += 4;
                    continue;
                }
                for (; day <= last; ++day) {
                    const int reason = stored_reason(r, day);
                    if (reason >= 1 && reason <= reasons) {
                        ++counts[size_t(reason - 1)];
                    }
                }
            }
        }
        grid.set_text(row, 0, m.persal);
        grid.set_text(row, 1, m.surname);
        grid.set_text(row, 2, m.initials);
        int total = 0;
        for (int i = 0; i < reasons; ++i) {
            if (counts[size_t(i)] > 0) {
                grid.set_text(row, 3 + i, shell::number_text(counts[size_t(i)]));
                total += counts[size_t(i)];
            }
        }
        grid.set_text(row, 3 + reasons, shell::number_text(total));
    }
    return grid;
}

bool AttendanceReports::print_reason_list() {
    if (s_.count(Code::PRSALG) < 1) {
        return false;
    }
    PrintGrid grid = reason_list_grid(range);
    if (grid.rows() <= 1) {
        return false;
    }
    const QString title = s_.tr("REDE UITSOEKLYS : ", "REASON SELECTION LIST : ") +
                          shell::date_to_text(jr_data[1]) + QStringLiteral(" - ") +
                          shell::date_to_text(jr_data[2]);
    if (!start(title)) {
        return false;
    }
    reports::fit_grid_columns(job_, grid, 0, 60);
    reports::print_grid_report(job_, grid, title);
    job_.finish_report();
    return true;
}

PrintGrid AttendanceReports::register_grid() {
    PrintGrid grid;
    grid.set_format_string(s_.tr("|HANDTEKENING|^TYD IN |^TYD UIT|<OPMERKING",
                                 "|SIGNATURE|^TIME IN |^TIME OUT|<REMARK"));
    for (const StaffMember& m : selected_staff(s_, kies_administratief, kStaffPost | kStaffName)) {
        grid.add_item(m.post + QStringLiteral("  ") + m.name);
    }
    return grid;
}

bool AttendanceReports::print_register() {
    if (s_.count(Code::PRSALG) < 1) {
        return false;
    }
    if (!start(s_.tr("TEENWOORDIGHEIDSREGISTER : ", "ATTENDANCE REGISTER : "))) {
        return false;
    }
    PrintGrid people = register_grid();
    // Thirteen units of the printable width: the name five, the others two each.
    job_.print_setup();
    reports::PrintDevice& d = job_.device();
    const reports::ScaleMode mode = d.scale_mode();
    d.set_scale_mode(reports::ScaleMode::Twips);
    const double unit = d.scale_width() / 13;
    d.set_scale_mode(mode);
    for (int c = 0; c < people.cols(); ++c) {
        people.column(c).width = unit * (c == 0 ? 5 : 2);
    }
    people.tag = QStringLiteral("autofit");
    for (QDate date = jr_data[1]; date.isValid() && date <= jr_data[2]; date = date.addDays(1)) {
        // Saturdays and Sundays go by the weekday's first letter; holidays are kept.
        if (weekday_letter(date, s_.afrikaans) == QStringLiteral("S")) {
            continue;
        }
        PrintGrid grid = people;
        reports::print_grid_report(job_, grid, job_.state.report_name + shell::date_to_text(date));
    }
    job_.finish_report();
    return true;
}

LeaveTotals AttendanceReports::leave_totals() {
    const DayRange days = verlof_hele_jaar ? DayRange{1, month_limits(12, year()).last}
                                           : day_range(jr_data[1], jr_data[2], year());
    if (!s_.is_open(Code::PRSSBI)) {
        s_.open_staff_file(QStringLiteral("PRSSBI"));
    }
    AttendanceBook book(s_);
    load_book(book);
    return count_leave(s_, selected_staff(s_, kies_administratief, kStaffPost | kStaffName), book,
                       days);
}

QString AttendanceReports::leave_totals_title() const {
    QString title = s_.tr("VERLOFTOTALE : ", "LEAVE TOTALS : ");
    if (verlof_hele_jaar) {
        return title + QString::number(year());
    }
    return title + shell::date_to_text(jr_data[1]) + QStringLiteral(" - ") +
           shell::date_to_text(jr_data[2]);
}

bool AttendanceReports::leave_range_ok() {
    if (verlof_hele_jaar) {
        return true;
    }
    // Totals over no days would print as zeros and read as a year without leave.
    if (jr_data[2] < jr_data[1]) {
        s_.dialogs().message(s_.tr("Die TOT DATUM is voor die VANAF DATUM ...",
                                   "The TO DATE is before the FROM DATE ..."),
                             ui::Icon::Exclamation);
        return false;
    }
    if (jr_data[1].year() != year() || jr_data[2].year() != year()) {
        s_.dialogs().message(s_.tr("Kies datums in ", "Please select dates in ") +
                                 QString::number(year()) + QStringLiteral(" ..."),
                             ui::Icon::Exclamation);
        return false;
    }
    return true;
}

bool AttendanceReports::print_leave_totals() {
    if (s_.count(Code::PRSALG) < 1 || !leave_range_ok()) {
        return false;
    }
    const QString title = leave_totals_title();
    if (!start(title)) {
        return false;
    }
    PrintGrid grid = leave_totals_grid(leave_totals(), s_.afrikaans);
    reports::fit_grid_columns(job_, grid, 0, 60);
    reports::print_grid_report(job_, grid, title, {}, reports::kLandscapeText);
    job_.finish_report();
    return true;
}

}  // namespace korvel::attendance
