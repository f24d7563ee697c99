#include "attendance/cli_attendance.h"

#include <optional>

#include "attendance/attendance_reports.h"
#include "reports/cli_print.h"
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
    "      --lang af|en --drive X:=DIR  as for the staff lists\n";

namespace {

const QStringList kReports = {QStringLiteral("monthly-summary"), QStringLiteral("reason-list"),
                              QStringLiteral("attendance-register"),
                              QStringLiteral("leave-totals")};

struct Options {
    int button = 0;
    int month = 0;
    QDate from_date, to_date;
    std::optional<AdminChoice> admin;
    reports::CliOutputOptions output;
};

std::optional<Options> parse(const QStringList& args, QString* why) {
    Options o;
    o.button = int(kReports.indexOf(args.value(1))) + 1;
    for (qsizetype i = 2; i < args.size() && why->isEmpty(); i += 2) {
        const QString name = args.at(i);
        const QString value = args.value(i + 1);
        if (i + 1 >= args.size()) {
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
        } else if (!o.output.read(name, value, why)) {
            *why = QStringLiteral("unknown option ") + name;
        }
    }
    if (why->isEmpty() && o.output.pdf.isEmpty() == o.output.xlsx.isEmpty())
        *why = QStringLiteral("give one of --pdf FILE and --xlsx FILE");
    if (why->isEmpty() && o.button == kMonthlySummary && o.month == 0)
        *why = QStringLiteral("monthly-summary needs --month N");
    if (!why->isEmpty())
        return std::nullopt;
    return o;
}

int run(const Options& o, QTextStream& out, QTextStream& err) {
    reports::CliPrintRun cli;
    if (const int code = cli.open(o.output, err); code != 0)
        return code;
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
