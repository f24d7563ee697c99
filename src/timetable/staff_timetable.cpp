#include "timetable/staff_timetable.h"

#include <QRegularExpression>

#include "reports/grid_output.h"
#include "reports/report_engine.h"
#include "shell/session.h"
#include "store/record_layouts.h"

namespace korvel::timetable {

using store::Record;
using store::RSTR_POS;
using store::RSTR_PRS;
using store::RSTR_SKL;
using store::RSTR_VAK;

namespace {

// How an entry of a cell reads. No file of the timetable system has been seen with its entries
// explained, so this is the one place to change when one is.
struct EntryPart {
    int offset;
    int width;
};
constexpr EntryPart kSubject{0, 5};
constexpr EntryPart kGrade{5, 3};
constexpr EntryPart kClass{8, 3};
[[maybe_unused]] constexpr EntryPart kMarks{11, 4};

QString part_of(const QString& entry, EntryPart part) {
    return entry.mid(part.offset, part.width).trimmed();
}

const char* const kCycleDays[] = {"(A)", "(B)", "(C)", "(D)", "(E)", "(F)"};

// Days and periods are two characters of text; anything but a number above 0 is none.
int figure_of(const QString& text) {
    bool ok = false;
    const int n = text.trimmed().toInt(&ok);
    return ok && n > 0 ? n : 0;
}

}  // namespace

int cell_index(int day, int period, int periods) {
    if (day < 1 || period < 1 || periods < 1 || period > periods)
        return -1;
    const long long index = (long long)(day - 1) * periods + (period - 1);
    return index < store::kRosterCells ? int(index) : -1;
}

bool is_subject_period(const QString& cell, const QSet<QString>& subject_keys) {
    const QString key = cell.left(5).trimmed().toUpper();
    return !key.isEmpty() && subject_keys.contains(key);
}

QString printed_entry(const QString& entry, bool afrikaans) {
    static const QRegularExpression grade_pattern(QStringLiteral("^(R|[0-9]{1,2})$"));
    const QString subject = part_of(entry, kSubject);
    const QString grade = part_of(entry, kGrade);
    const QString group = part_of(entry, kClass);
    const bool splits = entry.size() <= store::kRosterCellWidth && !subject.isEmpty() &&
                        grade_pattern.match(grade).hasMatch() && !group.isEmpty();
    if (!splits)
        return entry;
    return reports::pad_centre(subject, store::kRosterCellWidth) + QStringLiteral("\r\nGR. ") +
           grade + QStringLiteral("\r\n") +
           (afrikaans ? QStringLiteral("KL. ") : QStringLiteral("CL. ")) + group;
}

StaffTimetable::StaffTimetable(shell::Session& session) : s_(session), files_(session) {}

QString StaffTimetable::tr(const char* af, const char* en) const {
    return s_.tr(af, en);
}

void StaffTimetable::form_load() {
    caption = tr("PERSONEEL ROOSTER", "STAFF TIME TABLE");
    rostr_ops = {QString(),
                 tr(" UITVEE : Begin 'n nuwe rooster ", " DELETE : Start a new time-table "),
                 tr(" DRUK : Druk 'n Rooster ", " PRINT : Print a Time-table "),
                 tr(" SKUIF PERIODES : Ruil periodes in 'n personeelrooster om ",
                    " MOVE PERIODS : Swap periods in a staff time table ")};
    files_.open_roster_file();
    load_set_up();
    load_subject_keys();

    pos_lys.clear();
    files_.scan(RosterCode::PRS, [&](int, const Record& r) {
        const QString post = r.text(RSTR_PRS["RP_POS_NR"]).trimmed();
        if (!post.isEmpty())
            pos_lys.push_back({post.leftJustified(6) + r.text(RSTR_PRS["RP_VAN"]).trimmed() +
                                   QStringLiteral(", ") + r.text(RSTR_PRS["RP_VRLTR"]).trimmed(),
                               post});
        return true;
    });
    visible = true;

    // The person the chooser was opened for.
    const QString post =
        s_.working(store::Code::PRSALG).text(store::PRSALG["PA_POS_NR"]).trimmed().toUpper();
    for (int row = 0; row < int(pos_lys.size()); ++row) {
        if (pos_lys[size_t(row)].post.toUpper() == post) {
            pos_lys_click(row);
            break;
        }
    }
}

void StaffTimetable::load_set_up() {
    Record school(RSTR_SKL);
    const bool found = files_.read(RosterCode::SKL, 1, school);
    days = found ? figure_of(school.text(RSTR_SKL["RS_DAE"])) : 0;
    periods = found ? figure_of(school.text(RSTR_SKL["RS_PERIODES"])) : 0;
    has_periods = days > 0 && periods > 0;
    if (!has_periods) {
        days = periods = 0;
        s_.dialogs().message(
            tr("GEEN DAGROOSTERS OPGESTEL NIE !!", "NO PERIOD INFORMATION FOUND !!") +
                QStringLiteral("\n\n") +
                tr("SIEN SKOOLBESONDERHEDE - DAE/PERIODES ...",
                   "SEE SCHOOL DETAILS - DAYS/PERIODS ..."),
            ui::Icon::Exclamation);
    }
    period_times_.clear();
    for (int i = 0; i < store::kRosterPeriodTimes; ++i)
        period_times_ << school.text(RSTR_SKL["RS_TYE"], i).trimmed();
    skl_rstr = tr("DAE : ", "DAYS : ") + QString::number(days) +
               tr("   PERIODES : ", "   PERIODS : ") + QString::number(periods);
    column_heads.clear();
    for (int p = 1; p <= periods; ++p)
        column_heads << tr("Periode ", "Period ") + QString::number(p);
    row_heads.clear();
    for (int d = 1; d <= days; ++d) {
        QString head = tr("DAG ", "DAY ") + QString::number(d);
        if (d <= int(std::size(kCycleDays)))
            head += u' ' + QString::fromLatin1(kCycleDays[d - 1]);
        row_heads << head;
    }
    cells.assign(size_t(days * periods), QString());
    cell_colours.assign(cells.size(), kDefaultCellColour);
}

void StaffTimetable::load_subject_keys() {
    subject_keys_.clear();
    files_.scan(RosterCode::VAK, [&](int, const Record& r) {
        const QString key = r.text(RSTR_VAK["RV_SLEUTEL"]).trimmed().toUpper();
        if (!key.isEmpty())
            subject_keys_.insert(key);
        return true;
    });
}

void StaffTimetable::pos_lys_click(int row) {
    if (row < 0 || row >= int(pos_lys.size()))
        return;
    selected = row;
    show_record();
}

void StaffTimetable::show_record() {
    if (selected < 0)
        return;
    const RosterPerson& person = pos_lys[size_t(selected)];
    Record r(RSTR_POS);
    files_.read(RosterCode::POS, files_.find(RosterCode::POS, person.post), r);
    name_ = r.text(RSTR_POS["RT_NAAM"]).trimmed();
    if (name_.isEmpty())
        name_ = person.text.mid(6);
    heading = person.post + QStringLiteral(" : ") + name_;
    for (int d = 1; d <= days; ++d) {
        for (int p = 1; p <= periods; ++p) {
            const size_t at = size_t((d - 1) * periods + p - 1);
            const int index = cell_index(d, p, periods);
            cells[at] =
                index < 0 ? QString() : r.text(RSTR_POS["RT_SEL"], index).replace(QChar(0), u' ');
            const int colour =
                index >= 0 && index < int(klr_lys.size()) ? klr_lys[size_t(index)] : 0;
            cell_colours[at] = colour == 0 ? kDefaultCellColour : colour;
        }
    }
}

QString StaffTimetable::cell(int day, int period) const {
    if (day < 1 || day > days || period < 1 || period > periods)
        return {};
    return cells[size_t((day - 1) * periods + period - 1)];
}

void StaffTimetable::rstr_grid_click(int day, int period) {
    if (day < 1 || day > days || period < 1 || period > periods)
        return;
    s_.dialogs().message(cell(day, period), ui::Icon::Information,
                         tr("PERIODE INLIGTING", "PERIODE INFORMATION"));
}

void StaffTimetable::rstr_grid_dbl_click(int day, int period) {
    const int index = cell_index(day, period, periods);
    if (s_.browse_mode || selected < 0 || day > days || index < 0 ||
        cell(day, period).trimmed().isEmpty())
        return;
    const QString d = QString::number(day), p = QString::number(period);
    const QString question =
        s_.afrikaans ? QStringLiteral("WIL U DEFNITIEF DAG ") + d + QStringLiteral(", PERIODE ") +
                           p + QStringLiteral(" VRYSTEL ?")
                     : QStringLiteral("DO YOU REALLY WISH TO FREE DAY ") + d +
                           QStringLiteral(", PERIOD ") + p + QStringLiteral(" VRYSTEL ?");
    if (s_.dialogs().ask(question, ui::Buttons::YesNo, ui::Icon::Question, ui::Answer::No) !=
        ui::Answer::Yes)
        return;
    rewrite_cells([&](Record& r) { r.set_text(RSTR_POS["RT_SEL"], QString(), index); });
}

void StaffTimetable::rostr_ops_click(int action) {
    if (action == kPrintTimetable) {
        print_timetable();
        return;
    }
    if (action == kSwapPeriods) {
        swap_periods();
        return;
    }
    if (action != kDeleteTimetable || s_.browse_mode || selected < 0)
        return;
    const bool all =
        s_.dialogs().ask(tr("VAKPERIODES OOK ?", "SUBJECT PERIODS ALSO ?"), ui::Buttons::YesNo,
                         ui::Icon::Question, ui::Answer::No) == ui::Answer::Yes;
    rewrite_cells([&](Record& r) {
        for (int d = 1; d <= days; ++d) {
            for (int p = 1; p <= periods; ++p) {
                const int index = cell_index(d, p, periods);
                if (index < 0)
                    continue;
                if (all || !is_subject_period(r.text(RSTR_POS["RT_SEL"], index), subject_keys_))
                    r.set_text(RSTR_POS["RT_SEL"], QString(), index);
            }
        }
    });
}

void StaffTimetable::rewrite_cells(const std::function<void(Record&)>& change) {
    const int number = files_.find(RosterCode::POS, pos_lys[size_t(selected)].post);
    Record r(RSTR_POS);
    if (number == 0 || !files_.read(RosterCode::POS, number, r))
        return;
    change(r);
    files_.write(RosterCode::POS, number, r);
    show_record();
}

void StaffTimetable::exit_click() {
    for (int c = 0; c < kRosterCodes; ++c) {
        int h = files_.handle(RosterCode(c));
        files_.close_roster_file(h);
    }
    visible = false;
}

reports::PrintGrid StaffTimetable::print_grid() const {
    reports::PrintGrid grid;
    // The entries centre their subject themselves (pad_centre) and break into lines for the
    // grade and class: the day columns are left-aligned, so the lines print one below another.
    QString format = QStringLiteral("<");
    for (int d = 1; d <= days; ++d)
        format += QStringLiteral("|<") + tr("DAG ", "DAY ") + QString::number(d);
    grid.set_format_string(format);
    grid.set_rows(periods + 1);
    for (int p = 1; p <= periods; ++p) {
        const QString time = p <= period_times_.size() ? period_times_.at(p - 1) : QString();
        grid.set_text(p, 0,
                      QStringLiteral("PER ") + QString::number(p) +
                          (time.isEmpty() ? QString() : QStringLiteral(": ") + time));
        int lines = 1;
        for (int d = 1; d <= days; ++d) {
            const QString text = printed_entry(cell(d, p), s_.afrikaans);
            grid.set_text(p, d, text);
            lines = std::max(lines, int(reports::cell_lines(text).size()));
        }
        grid.row(p).height = 240.0 * lines + 40;
    }
    return grid;
}

bool StaffTimetable::print_timetable() {
    if (!job || selected < 0)
        return false;
    job->afrikaans = s_.afrikaans;
    job->state.report_name = tr("ROOSTER ", "TIME TABLE ") + name_;
    if (!choose_target || !choose_target(*job))
        return false;
    reports::PrintGrid grid = print_grid();
    reports::fit_grid_columns(*job, grid, 0, 120);
    reports::print_grid_report(*job, grid, job->state.report_name, {}, QStringLiteral("A3"));
    job->finish_report();
    return true;
}

}  // namespace korvel::timetable
