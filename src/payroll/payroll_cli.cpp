#include "payroll/payroll_cli.h"

#include <optional>

#include "payroll/pay_slips.h"
#include "reports/cli_print.h"
#include "reports/letterhead.h"
#include "shell/session.h"

namespace korvel::payroll {

const char* const kPayrollPrintUsage =
    "  print payslips|salary-summary [options] (--pdf FILE | --xlsx FILE)\n"
    "      --month N                    the month, 1 to 12 (required)\n"
    "      --from POST --to POST        the range of post numbers (default: all)\n"
    "      --to-date                    salary-summary: January to the month\n"
    "      --letterhead ID              payslips: the letterhead layout (default: none)\n"
    "      --date DATE                  payslips: the print date, YYYY.MM.DD (default: today)\n"
    "  print letterhead-frame --letterhead ID --pdf FILE   the measuring page of a layout\n";

namespace {

struct Options {
    QString report;
    int month = 0;
    QString from_post, to_post;
    bool to_month = false;
    QString letterhead;
    QString date;
    reports::CliOutputOptions output;
};

std::optional<Options> parse(const QStringList& args, QString* why) {
    Options o;
    o.report = args.value(1);
    for (qsizetype i = 2; i < args.size(); ++i) {
        const QString name = args.at(i);
        if (name == u"--to-date") {
            o.to_month = true;
            continue;
        }
        if (i + 1 >= args.size()) {
            *why = QStringLiteral("no value for ") + name;
            return std::nullopt;
        }
        const QString value = args.at(++i);
        if (name == u"--month") {
            bool ok = false;
            o.month = value.toInt(&ok);
            if (!ok || o.month < 1 || o.month > 12)
                *why = QStringLiteral("--month is 1 to 12, not ") + value;
        } else if (name == u"--from") {
            o.from_post = value;
        } else if (name == u"--to") {
            o.to_post = value;
        } else if (name == u"--letterhead") {
            o.letterhead = value.trimmed();
        } else if (name == u"--date") {
            QString t = value.trimmed();
            t.replace(u'-', u'.').replace(u'/', u'.');
            if (!QDate::fromString(t, QStringLiteral("yyyy.MM.dd")).isValid())
                *why = QStringLiteral("--date: not a date: ") + value;
            o.date = t;
        } else if (!o.output.read(name, value, why)) {
            *why = QStringLiteral("unknown option ") + name;
        }
        if (!why->isEmpty())
            return std::nullopt;
    }
    if (!o.output.one_target(why))
        return std::nullopt;
    if (o.report == u"letterhead-frame" && (o.letterhead.isEmpty() || o.output.pdf.isEmpty()))
        *why = QStringLiteral("letterhead-frame needs --letterhead ID and --pdf FILE");
    else if (o.report != u"letterhead-frame" && o.month == 0)
        *why = QStringLiteral("give the month with --month N");
    if (!why->isEmpty())
        return std::nullopt;
    return o;
}

int run(const Options& o, QTextStream& out, QTextStream& err) {
    reports::CliPrintRun cli;
    if (const int code = cli.open(o.output, err); code != 0)
        return code;
    shell::Session& session = cli.session();
    reports::PrintJob& job = cli.job();
    job.general_year_folder = session.fs().native(session.folders.general_year);

    if (o.report == u"letterhead-frame") {
        for (const reports::LetterheadLayout& l :
             reports::read_letterhead_table(job.general_year_folder)) {
            if (l.name.compare(o.letterhead, Qt::CaseInsensitive) == 0) {
                job.state.report_name = o.letterhead;
                cli.choose_target(job);
                reports::print_measuring_frame(job, l.top, l.bottom, l.left, l.right);
                return cli.finish(true, out, err);
            }
        }
        err << "korvel-cli: no letterhead layout " << o.letterhead << "\n";
        return 1;
    }

    if (!o.letterhead.isEmpty() &&
        !reports::fill_letterhead_list(job.general_year_folder).contains(o.letterhead.toUpper())) {
        err << "korvel-cli: no letterhead layout " << o.letterhead << "\n";
        return 1;
    }
    session.letterhead = o.letterhead.toUpper();
    PaySlips form(session, job, o.report == u"payslips" ? kPaySlipOption : kSummaryOption);
    form.form_load();
    for (const auto& [post, end] : {std::pair{o.from_post, reports::StaffRange::From},
                                    std::pair{o.to_post, reports::StaffRange::To}}) {
        if (post.isEmpty())
            continue;
        const int row = form.range.find_post(post);
        if (row < 0 ||
            form.prs_grid[size_t(row)].post.compare(post.trimmed(), Qt::CaseInsensitive) != 0) {
            err << "korvel-cli: no staff member on the payroll has the post number " << post
                << "\n";
            return 1;
        }
        form.range.set_marker(end);
        form.prs_grid_click(row);
    }
    form.maand_lys_dbl_click(o.month - 1);
    form.to_month = o.to_month;
    if (!o.date.isEmpty())
        form.or_data[3] = o.date;
    form.choose_target = [&cli](reports::PrintJob& j) { return cli.choose_target(j); };
    form.kr_ok_click();
    return cli.finish(true, out, err);
}

}  // namespace

bool is_payroll_report(const QString& name) {
    return name == u"payslips" || name == u"salary-summary" || name == u"letterhead-frame";
}

int print_payroll_report(const QStringList& args, QTextStream& out, QTextStream& err) {
    QString why;
    const std::optional<Options> options = parse(args, &why);
    return reports::run_print_command(why, kPayrollPrintUsage, err,
                                      [&] { return run(*options, out, err); });
}

}  // namespace korvel::payroll
