#include "attendance/cli_attendance.h"

#include <optional>

#include "attendance/attendance_reports.h"
#include "attendance/mark_sheet.h"
#include "reports/cli_print.h"
#include "reports/letterhead.h"
#include "shell/helpers.h"
#include "shell/session.h"

namespace korvel::attendance {

const char* const kAttendancePrintUsage =
    "  print monthly-summary|reason-list|attendance-register|leave-totals [options]\n"
    "        (--pdf FILE | --xlsx FILE)\n"
    "      --month N                    the summary's month, 1 to 12\n"
    "      --from-date DATE --to-date DATE  the period, YYYY.MM.DD (leave totals: the whole\n"
    "                                   year without them)\n"
    "      --admin only|included|excluded   administrative staff (default: included)\n"
    "      --lang af|en --drive X:=DIR  as for the staff lists\n"
    "  print mark-sheet [--from-date DATE --to-date DATE] [--from POST] [--to POST]\n"
    "        [--male] [--female] [--letterhead ID] (--pdf FILE | --xlsx FILE)\n"
    "      a statement a person of the range; without --male or --female both\n";

namespace {

const QStringList kReports = {QStringLiteral("monthly-summary"), QStringLiteral("reason-list"),
                              QStringLiteral("attendance-register"), QStringLiteral("leave-totals"),
                              QStringLiteral("mark-sheet")};
constexpr int kMarkSheet = 5;

struct Options {
    int button = 0;
    int month = 0;
    QDate from_date, to_date;
    std::optional<AdminChoice> admin;
    QString from_post, to_post, letterhead;
    bool male = false, female = false;
    reports::CliOutputOptions output;
};

std::optional<Options> parse(const QStringList& args, QString* why) {
    Options o;
    o.button = int(kReports.indexOf(args.value(1))) + 1;
    for (qsizetype i = 2; i < args.size() && why->isEmpty(); i += 2) {
        const QString name = args.at(i);
        const QString value = args.value(i + 1);
        if (o.button == kMarkSheet && (name == u"--male" || name == u"--female")) {
            (name == u"--male" ? o.male : o.female) = true;
            --i;  // a switch without a value
        } else if (i + 1 >= args.size()) {
            *why = QStringLiteral("no value for ") + name;
        } else if (name == u"--month") {
            o.month = value.toInt();
            if (o.month < 1 || o.month > 12)
                *why = QStringLiteral("--month is 1 to 12, not ") + value;
        } else if (name == u"--from-date" || name == u"--to-date") {
            const QDate d = shell::text_to_date(value);
            if (!d.isValid())
                *why = name + QStringLiteral(": not a date: ") + value;
            (name == u"--from-date" ? o.from_date : o.to_date) = d;
        } else if (name == u"--admin") {
            const int at = int(QStringList{"only", "included", "excluded"}.indexOf(value));
            if (at < 0)
                *why = QStringLiteral("--admin is only, included or excluded, not ") + value;
            o.admin = AdminChoice(at);
        } else if (o.button == kMarkSheet &&
                   (name == u"--from" || name == u"--to" || name == u"--letterhead")) {
            (name == u"--from" ? o.from_post : name == u"--to" ? o.to_post : o.letterhead) = value;
        } else if (!o.output.read(name, value, why)) {
            *why = QStringLiteral("unknown option ") + name;
        }
    }
    if (why->isEmpty())
        o.output.one_target(why);
    if (why->isEmpty() && o.button == kMonthlySummary && o.month == 0)
        *why = QStringLiteral("monthly-summary needs --month N");
    if (!why->isEmpty())
        return std::nullopt;
    return o;
}

int run_mark_sheet(const Options& o, reports::CliPrintRun& cli, QTextStream& out,
                   QTextStream& err) {
    shell::Session& s = cli.session();
    const QString letterhead = o.letterhead.trimmed().toUpper();
    if (!letterhead.isEmpty() &&
        !reports::fill_letterhead_list(s.fs().native(s.folders.general_year))
             .contains(letterhead)) {
        err << "korvel-cli: no letterhead layout " << o.letterhead << "\n";
        return 1;
    }
    s.letterhead = letterhead;
    MarkSheet form(s, cli.job());
    form.choose_target = [&cli](reports::PrintJob& j) { return cli.choose_target(j); };
    form.form_load();
    for (const auto& [post, end] : {std::pair{o.from_post, reports::StaffRange::From},
                                    std::pair{o.to_post, reports::StaffRange::To}}) {
        if (post.isEmpty())
            continue;
        const int row = form.range.find_post(post);
        if (row < 0 ||
            form.range.rows()[size_t(row)].post.compare(post.trimmed(), Qt::CaseInsensitive) != 0) {
            err << "korvel-cli: no active staff member has the post number " << post << "\n";
            return 1;
        }
        form.range.set_marker(end);
        form.prs_grid_click(row);
    }
    form.opsies.form_load();
    if (o.from_date.isValid())
        form.opsies.ps_data[kFromDateBox] = shell::date_to_text(o.from_date);
    if (o.to_date.isValid())
        form.opsies.ps_data[kToDateBox] = shell::date_to_text(o.to_date);
    if (o.male || o.female) {
        form.opsies.manlik = o.male;
        form.opsies.vroulik = o.female;
    }
    return cli.finish(form.print_mark_sheets(), out, err);
}

int run(const Options& o, QTextStream& out, QTextStream& err) {
    reports::CliPrintRun cli;
    if (const int code = cli.open(o.output, err); code != 0)
        return code;
    if (o.button == kMarkSheet)
        return run_mark_sheet(o, cli, out, err);
    AttendanceReports form(cli.session(), cli.job());
    form.choose_target = [&cli](reports::PrintJob& j) { return cli.choose_target(j); };
    form.form_load();
    if (o.admin)
        form.kies_administratief = *o.admin;
    if (o.month > 0)
        form.maand_lys_click(o.month - 1);
    if (o.from_date.isValid() || o.to_date.isValid()) {
        form.jr_data[1] = o.from_date.isValid() ? o.from_date : form.jr_data[1];
        form.jr_data[2] = o.to_date.isValid() ? o.to_date : form.jr_data[2];
        form.range = day_range(form.jr_data[1], form.jr_data[2], ledger_year_number(cli.session()));
        form.verlof_hele_jaar = false;
    }
    const bool printed = o.button == kMonthlySummary   ? form.print_monthly_summary()
                         : o.button == kReasonList     ? form.print_reason_list()
                         : o.button == kRegisterReport ? form.print_register()
                                                       : form.print_leave_totals();
    return cli.finish(printed, out, err);
}

}  // namespace

bool is_attendance_report(const QString& name) {
    return kReports.contains(name);
}

int print_attendance_report(const QStringList& args, QTextStream& out, QTextStream& err) {
    QString why;
    const std::optional<Options> options = parse(args, &why);
    return reports::run_print_command(why, kAttendancePrintUsage, err,
                                      [&] { return run(*options, out, err); });
}

}  // namespace korvel::attendance
