#include "reports/cli_print.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <memory>
#include <optional>

#include "payroll/payroll_cli.h"
#include "platform/process_end.h"
#include "reports/blank_forms_cli.h"
#include "reports/cli_print_lists.h"
#include "reports/command_line.h"
#include "reports/painter_device.h"
#include "reports/recording_device.h"
#include "reports/school_report.h"
#include "reports/staff_lists.h"
#include "shell/session.h"
#include "ui/scripted_dialogs.h"

namespace korvel::reports {

const char* const kPrintUsage =
    "  print REPORT [options] (--pdf FILE | --xlsx FILE)\n"
    "      REPORT: staff-list, address-list, birthday-list, age-list, staff-details\n"
    "      --from POST --to POST        the range of post numbers (default: all)\n"
    "      --order alphabetic|numeric   (default: alphabetic)\n"
    "      --appointments LETTERS       of O (education department), B (governing body),\n"
    "                                   P (PYEI); default OBP\n"
    "      --admin only|included|excluded   administrative staff (default: included)\n"
    "      --from-date DATE --to-date DATE  the birthday period, YYYY.MM.DD (default: this "
    "month)\n"
    "      --sections LIST              staff details: alg,adr,bnk,kwl,aan,ond,kls (default: all)\n"
    "      --lang af|en                 the language of the report (default: the program's)\n"
    "      --drive X:=DIR               a drive of the suite mapped to a folder (repeatable)\n";

namespace {

struct PrintOptions {
    int option = 0;
    bool age_list = false;
    QString from_post, to_post;
    std::optional<StaffOrder> order;
    std::optional<std::array<bool, 3>> appointments;
    std::optional<AdminChoice> admin;
    QDate from_date, to_date;
    std::optional<std::array<bool, kSectionCount>> sections;
    CliOutputOptions output;
};

QDate read_date(const QString& text) {
    QString t = text.trimmed();
    t.replace(u'-', u'.').replace(u'/', u'.');
    return QDate::fromString(t, QStringLiteral("yyyy.MM.dd"));
}

// Reads the arguments; a message in `why` when they are wrong.
std::optional<PrintOptions> parse(const QStringList& args, QString* why) {
    PrintOptions o;
    if (args.size() < 2) {
        *why = QStringLiteral("no report named");
        return std::nullopt;
    }
    const QString report = args.at(1);
    if (report == u"staff-list") {
        o.option = kStaffListOption;
    } else if (report == u"address-list") {
        o.option = kAddressListOption;
    } else if (report == u"birthday-list") {
        o.option = kBirthdayListOption;
    } else if (report == u"age-list") {
        o.option = kBirthdayListOption;
        o.age_list = true;
    } else if (report == u"staff-details") {
        o.option = kStaffDetailsOption;
    } else {
        *why = QStringLiteral("unknown report ") + report;
        return std::nullopt;
    }
    for (qsizetype i = 2; i < args.size(); ++i) {
        const QString name = args.at(i);
        if (i + 1 >= args.size()) {
            *why = QStringLiteral("no value for ") + name;
            return std::nullopt;
        }
        const QString value = args.at(++i);
        if (name == u"--from") {
            o.from_post = value;
        } else if (name == u"--to") {
            o.to_post = value;
        } else if (name == u"--order") {
            if (value == u"alphabetic")
                o.order = StaffOrder::Alphabetic;
            else if (value == u"numeric")
                o.order = StaffOrder::Numeric;
            else
                *why = QStringLiteral("--order is alphabetic or numeric, not ") + value;
        } else if (name == u"--appointments") {
            std::array<bool, 3> kinds{false, false, false};
            for (QChar c : value.toUpper()) {
                if (c == u'O')
                    kinds[0] = true;
                else if (c == u'B')
                    kinds[1] = true;
                else if (c == u'P')
                    kinds[2] = true;
                else if (c != u',')
                    *why =
                        QStringLiteral("--appointments takes the letters O, B and P, not ") + value;
            }
            o.appointments = kinds;
        } else if (name == u"--admin") {
            if (value == u"only")
                o.admin = AdminChoice::Only;
            else if (value == u"included")
                o.admin = AdminChoice::Included;
            else if (value == u"excluded")
                o.admin = AdminChoice::Excluded;
            else
                *why = QStringLiteral("--admin is only, included or excluded, not ") + value;
        } else if (name == u"--from-date" || name == u"--to-date") {
            const QDate d = read_date(value);
            if (!d.isValid())
                *why = name + QStringLiteral(": not a date: ") + value;
            (name == u"--from-date" ? o.from_date : o.to_date) = d;
        } else if (name == u"--sections") {
            static const char* const kNames[kSectionCount] = {"alg", "adr", "bnk", "kwl",
                                                              "aan", "ond", "kls"};
            std::array<bool, kSectionCount> on{};
            for (const QString& part : value.split(u',', Qt::SkipEmptyParts)) {
                bool known = false;
                for (int s = 0; s < kSectionCount; ++s) {
                    if (part.trimmed().compare(QLatin1String(kNames[s]), Qt::CaseInsensitive) ==
                        0) {
                        on[size_t(s)] = true;
                        known = true;
                    }
                }
                if (!known)
                    *why = QStringLiteral("unknown section ") + part;
            }
            o.sections = on;
        } else if (!o.output.read(name, value, why)) {
            *why = QStringLiteral("unknown option ") + name;
        }
        if (!why->isEmpty())
            return std::nullopt;
    }
    if (!o.output.one_target(why))
        return std::nullopt;
    return o;
}

// The entry of the list with the post number; -1 when there is none.
int entry_of(const StaffLists& form, const QString& post) {
    for (size_t i = 0; i < form.prs_lys.size(); ++i)
        if (form.prs_lys[i].post.compare(post.trimmed(), Qt::CaseInsensitive) == 0)
            return int(i);
    return -1;
}

int run(const PrintOptions& o, QTextStream& out, QTextStream& err) {
    CliPrintRun cli;
    if (const int code = cli.open(o.output, err); code != 0)
        return code;
    shell::Session& session = cli.session();
    PrintJob& job = cli.job();

    StaffLists form(session, job, o.option);
    form.form_load();
    if (!o.from_post.isEmpty() || !o.to_post.isEmpty()) {
        for (int end : {1, 2}) {
            const QString post = end == 1 ? o.from_post : o.to_post;
            if (post.isEmpty())
                continue;
            const int at = entry_of(form, post);
            if (at < 0) {
                err << "korvel-cli: no staff member has the post number " << post << "\n";
                return 1;
            }
            form.pos_data_got_focus(end);
            form.prs_lys_click(at);
        }
    }
    if (o.order)
        form.kies_volgorde = *o.order;
    if (o.appointments)
        form.kies_aanstelling = *o.appointments;
    if (o.admin)
        form.kies_administratief = *o.admin;
    if (o.from_date.isValid())
        form.jr_data[1] = o.from_date;
    if (o.to_date.isValid())
        form.jr_data[2] = o.to_date;
    if (o.sections)
        form.sections = *o.sections;

    form.choose_target = [&cli](PrintJob& j) { return cli.choose_target(j); };
    if (o.age_list)
        form.slegs_ouderdomslys_click();
    else
        form.kr_ok_click();
    form.exit_click();
    return cli.finish(true, out, err);
}

}  // namespace

void CliDialogs::message(const QString& text, ui::Icon icon, const QString& title) {
    failed = failed || icon == ui::Icon::Critical;
    warned = warned || icon == ui::Icon::Exclamation;
    UnattendedDialogs::message(text, icon, title);
}

CliPrintRun::CliPrintRun() = default;
CliPrintRun::~CliPrintRun() = default;

bool CliOutputOptions::read(const QString& name, const QString& value, QString* why) {
    if (name == u"--lang") {
        if (value == u"af" || value == u"en")
            afrikaans = value == u"af";
        else
            *why = QStringLiteral("--lang is af or en, not ") + value;
    } else if (name == u"--drive") {
        drives << value;
    } else if (name == u"--pdf") {
        pdf = value;
    } else if (name == u"--xlsx") {
        xlsx = value;
    } else {
        return false;
    }
    return true;
}

bool CliOutputOptions::one_target(QString* why) const {
    if (pdf.isEmpty() != xlsx.isEmpty())
        return true;
    *why = QStringLiteral("give one of --pdf FILE and --xlsx FILE");
    return false;
}

int CliPrintRun::open(const CliOutputOptions& options, QTextStream& err) {
    const QString& pdf = options.pdf;
    const QString& xlsx = options.xlsx;
    const std::optional<bool>& afrikaans = options.afrikaans;
    CommandLine line;
    for (const QString& d : options.drives) {
        if (!line.add_drive(d, err)) {
            return 2;
        }
    }
    if (!pdf.isEmpty() && qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) {
        err << "korvel-cli: PDF output needs the GUI application (fonts)\n";
        return 1;
    }
    run_ = std::make_unique<UnattendedRun>(dialogs, line.drives);
    if (!run_->start(afrikaans)) {
        return 1;
    }
    shell::Session& session = run_->session;

    to_workbook_ = !xlsx.isEmpty();
    target_ = QFileInfo(to_workbook_ ? xlsx : pdf).absoluteFilePath();
    if (!QFileInfo(QFileInfo(target_).absolutePath()).isDir()) {
        err << "korvel-cli: " << QFileInfo(target_).absolutePath() << ": no such folder\n";
        return 1;
    }
    if (to_workbook_)
        device_ = std::make_unique<RecordingDevice>();
    else
        device_ = std::make_unique<PdfDevice>(target_);
    job_ = std::make_unique<PrintJob>(*device_, dialogs, report_school(session), session.afrikaans);
    return 0;
}

bool CliPrintRun::choose_target(PrintJob& j) const {
    if (to_workbook_) {
        QString name = QFileInfo(target_).fileName();
        if (name.endsWith(QStringLiteral(".xlsx"), Qt::CaseInsensitive))
            name.chop(5);
        j.begin_spreadsheet(QFileInfo(target_).absolutePath(), name);
    } else {
        j.print_setup();
        j.state.page_pending = true;
    }
    return true;
}

int CliPrintRun::finish(bool printed, QTextStream& out, QTextStream& err) const {
    QString written = target_;
    if (to_workbook_ && !written.endsWith(QStringLiteral(".xlsx"), Qt::CaseInsensitive))
        written += QStringLiteral(".xlsx");
    if (!printed || dialogs.failed || !QFileInfo(written).isFile()) {
        err << "korvel-cli: nothing was written to " << written << "\n";
        return 1;
    }
    out << "report: " << job_->state.report_name << "\n"
        << "written: " << written << "\n";
    return 0;
}

int run_print_command(const QString& why, const char* usage, QTextStream& err,
                      const std::function<int()>& run) {
    if (!why.isEmpty()) {
        err << "korvel-cli: " << why << "\n"
            << "usage:\n"
            << usage;
        return 2;
    }
    try {
        return run();
    } catch (const ProcessEnd& end) {
        return end.exit_code() == 0 ? 1 : end.exit_code();
    }
}

int print_report(const QStringList& args, QTextStream& out, QTextStream& err) {
    if (is_blank_forms_report(args.value(1)))
        return print_blank_forms(args, out, err);
    if (is_form_list_report(args.value(1)))
        return print_form_list_report(args, out, err);
    if (payroll::is_payroll_report(args.value(1)))
        return payroll::print_payroll_report(args, out, err);
    QString why;
    const std::optional<PrintOptions> options = parse(args, &why);
    return run_print_command(why, kPrintUsage, err, [&] { return run(*options, out, err); });
}

}  // namespace korvel::reports
