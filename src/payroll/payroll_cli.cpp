#include "payroll/payroll_cli.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <memory>
#include <optional>

#include "payroll/pay_slips.h"
#include "platform/drive_map.h"
#include "platform/executable.h"
#include "platform/process_end.h"
#include "reports/letterhead.h"
#include "reports/painter_device.h"
#include "reports/recording_device.h"
#include "reports/school_report.h"
#include "shell/helpers.h"
#include "shell/session.h"
#include "shell/startup.h"
#include "ui/scripted_dialogs.h"

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

class CliDialogs : public ui::UnattendedDialogs {
  public:
    void message(const QString& text, ui::Icon icon, const QString& title) override {
        failed = failed || icon == ui::Icon::Critical;
        UnattendedDialogs::message(text, icon, title);
    }
    bool failed = false;
};

struct Options {
    QString report;
    int month = 0;
    QString from_post, to_post;
    bool to_month = false;
    QString letterhead;
    QString date;
    std::optional<bool> afrikaans;
    QStringList drives;
    QString pdf, xlsx;
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
        } else if (name == u"--lang") {
            if (value != u"af" && value != u"en")
                *why = QStringLiteral("--lang is af or en, not ") + value;
            o.afrikaans = value == u"af";
        } else if (name == u"--drive") {
            o.drives << value;
        } else if (name == u"--pdf") {
            o.pdf = value;
        } else if (name == u"--xlsx") {
            o.xlsx = value;
        } else {
            *why = QStringLiteral("unknown option ") + name;
        }
        if (!why->isEmpty())
            return std::nullopt;
    }
    if (o.pdf.isEmpty() == o.xlsx.isEmpty())
        *why = QStringLiteral("give one of --pdf FILE and --xlsx FILE");
    else if (o.report == u"letterhead-frame" && (o.letterhead.isEmpty() || o.pdf.isEmpty()))
        *why = QStringLiteral("letterhead-frame needs --letterhead ID and --pdf FILE");
    else if (o.report != u"letterhead-frame" && o.month == 0)
        *why = QStringLiteral("give the month with --month N");
    if (!why->isEmpty())
        return std::nullopt;
    return o;
}

int run(const Options& o, QTextStream& out, QTextStream& err) {
    platform::DriveMap drives = platform::DriveMap::from_environment();
    for (const QString& d : o.drives) {
        const QStringList bad = drives.read_config(d);
        if (!bad.isEmpty()) {
            err << "korvel-cli: not a drive: " << bad.join(u' ') << "\n";
            return 2;
        }
    }
    if (!o.pdf.isEmpty() &&
        qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) {
        err << "korvel-cli: PDF output needs the GUI application (fonts)\n";
        return 1;
    }
    CliDialogs dialogs;
    shell::Session session(dialogs, drives);
    session.executable_path = platform::executable_windows_path(drives);
    session.afrikaans = false;
    shell::Startup startup(session);
    if (!startup.run_unattended())
        return 1;
    if (o.afrikaans)
        session.afrikaans = *o.afrikaans;

    const QString target = QFileInfo(o.pdf.isEmpty() ? o.xlsx : o.pdf).absoluteFilePath();
    if (!QFileInfo(QFileInfo(target).absolutePath()).isDir()) {
        err << "korvel-cli: " << QFileInfo(target).absolutePath() << ": no such folder\n";
        return 1;
    }
    std::unique_ptr<reports::PrintDevice> device;
    if (!o.pdf.isEmpty())
        device = std::make_unique<reports::PdfDevice>(target);
    else
        device = std::make_unique<reports::RecordingDevice>();
    reports::PrintJob job(*device, dialogs, reports::report_school(session), session.afrikaans);
    job.general_year_folder = session.fs().native(session.folders.general_year);

    const bool to_workbook = !o.xlsx.isEmpty();
    const auto choose = [&](reports::PrintJob& j) {
        if (to_workbook) {
            QString name = QFileInfo(target).fileName();
            if (name.endsWith(QStringLiteral(".xlsx"), Qt::CaseInsensitive))
                name.chop(5);
            j.begin_spreadsheet(QFileInfo(target).absolutePath(), name);
        } else {
            j.print_setup();
            j.state.page_pending = true;
        }
        return true;
    };

    if (o.report == u"letterhead-frame") {
        for (const reports::LetterheadLayout& l :
             reports::read_letterhead_table(job.general_year_folder)) {
            if (l.name.compare(o.letterhead, Qt::CaseInsensitive) == 0) {
                job.state.report_name = o.letterhead;
                choose(job);
                reports::print_measuring_frame(job, l.top, l.bottom, l.left, l.right);
                out << "written: " << target << "\n";
                return 0;
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
    form.choose_target = choose;
    form.kr_ok_click();

    QString written = target;
    if (to_workbook && !written.endsWith(QStringLiteral(".xlsx"), Qt::CaseInsensitive))
        written += QStringLiteral(".xlsx");
    if (dialogs.failed || !QFileInfo(written).isFile()) {
        err << "korvel-cli: nothing was written to " << written << "\n";
        return 1;
    }
    out << "report: " << job.state.report_name << "\n"
        << "written: " << written << "\n";
    return 0;
}

}  // namespace

bool is_payroll_report(const QString& name) {
    return name == u"payslips" || name == u"salary-summary" || name == u"letterhead-frame";
}

int print_payroll_report(const QStringList& args, QTextStream& out, QTextStream& err) {
    QString why;
    const std::optional<Options> options = parse(args, &why);
    if (!options) {
        err << "korvel-cli: " << why << "\n"
            << "usage:\n"
            << kPayrollPrintUsage;
        return 2;
    }
    try {
        return run(*options, out, err);
    } catch (const ProcessEnd& end) {
        return end.exit_code() == 0 ? 1 : end.exit_code();
    }
}

}  // namespace korvel::payroll
