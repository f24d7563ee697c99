#include "reports/cli_print_lists.h"

#include "reports/cli_print.h"
#include "reports/qualification_list.h"
#include "reports/tuition_list.h"
#include "shell/session.h"
#include "timetable/staff_timetable.h"

namespace korvel::reports {

const char* const kFormListsPrintUsage =
    "  print timetable --post POST [options] (--pdf FILE | --xlsx FILE)\n"
    "      the timetable of a post from the timetable system's files in the roster folder\n"
    "  print tuition-list|qualification-list [options] (--pdf FILE | --xlsx FILE)\n"
    "      subjects and grades taught, or qualifications, of every active staff member\n"
    "      --lang af|en   --drive X:=DIR   as for the staff lists\n";

namespace {

const QStringList kReports = {QStringLiteral("timetable"), QStringLiteral("tuition-list"),
                              QStringLiteral("qualification-list")};

struct Options {
    QString report, post;
    CliOutputOptions output;
};

bool parse(const QStringList& args, Options& o, QString* why) {
    o.report = args.value(1);
    for (qsizetype i = 2; i < args.size(); i += 2) {
        const QString name = args.at(i);
        const QString value = args.value(i + 1);
        if (i + 1 >= args.size())
            *why = QStringLiteral("no value for ") + name;
        else if (name == u"--post")
            o.post = value;
        else if (!o.output.read(name, value, why))
            *why = QStringLiteral("unknown option ") + name + u' ' + value;
        if (!why->isEmpty())
            return false;
    }
    if (o.output.one_target(why) && o.report == u"timetable" && o.post.isEmpty())
        *why = QStringLiteral("print timetable needs --post POST");
    return why->isEmpty();
}

int run(const Options& o, QTextStream& out, QTextStream& err) {
    CliPrintRun cli;
    if (const int code = cli.open(o.output, err); code != 0)
        return code;
    shell::Session& session = cli.session();
    PrintJob& job = cli.job();
    const auto choose_target = [&cli](PrintJob& j) { return cli.choose_target(j); };

    if (o.report == u"timetable") {
        timetable::StaffTimetable form(session);
        form.form_load();
        int row = -1;
        for (size_t i = 0; i < form.pos_lys.size(); ++i)
            if (form.pos_lys[i].post.compare(o.post.trimmed(), Qt::CaseInsensitive) == 0)
                row = int(i);
        if (row < 0 || cli.dialogs.failed || cli.dialogs.warned) {
            err << "korvel-cli: no timetable has the post number " << o.post << "\n";
            return 1;
        }
        form.pos_lys_click(row);
        form.job = &job;
        form.choose_target = choose_target;
        form.print_timetable();
    } else if (o.report == u"tuition-list") {
        TuitionList form(session, job);
        form.form_load();
        form.choose_target = choose_target;
        form.kr_ok_click();
    } else {
        StaffQualificationList form(session, job);
        form.form_load();
        form.choose_target = choose_target;
        form.kr_ok_click();
    }
    // A warning on the way (nothing to print) means no file, as a failure does.
    return cli.finish(!cli.dialogs.warned, out, err);
}

}  // namespace

bool is_form_list_report(const QString& report) {
    return kReports.contains(report);
}

int print_form_list_report(const QStringList& args, QTextStream& out, QTextStream& err) {
    Options o;
    QString why;
    parse(args, o, &why);
    return run_print_command(why, kFormListsPrintUsage, err, [&] { return run(o, out, err); });
}

}  // namespace korvel::reports
