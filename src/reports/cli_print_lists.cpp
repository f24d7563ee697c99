#include "reports/cli_print_lists.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <memory>

#include "platform/drive_map.h"
#include "platform/executable.h"
#include "platform/process_end.h"
#include "reports/painter_device.h"
#include "reports/qualification_list.h"
#include "reports/recording_device.h"
#include "reports/school_report.h"
#include "reports/tuition_list.h"
#include "shell/session.h"
#include "shell/startup.h"
#include "timetable/staff_timetable.h"
#include "ui/scripted_dialogs.h"

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

// The command line's dialogs, which also note whether a failure was reported.
class FailureNotingDialogs : public ui::UnattendedDialogs {
  public:
    void message(const QString& text, ui::Icon icon, const QString& title) override {
        failed = failed || icon == ui::Icon::Critical || icon == ui::Icon::Exclamation;
        UnattendedDialogs::message(text, icon, title);
    }
    bool failed = false;
};

struct Options {
    QString report, post, lang, pdf, xlsx;
    QStringList drives;
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
        else if (name == u"--lang" && (value == u"af" || value == u"en"))
            o.lang = value;
        else if (name == u"--drive")
            o.drives << value;
        else if (name == u"--pdf")
            o.pdf = value;
        else if (name == u"--xlsx")
            o.xlsx = value;
        else
            *why = QStringLiteral("unknown option ") + name + u' ' + value;
        if (!why->isEmpty())
            return false;
    }
    if (o.pdf.isEmpty() == o.xlsx.isEmpty())
        *why = QStringLiteral("give one of --pdf FILE and --xlsx FILE");
    else if (o.report == u"timetable" && o.post.isEmpty())
        *why = QStringLiteral("print timetable needs --post POST");
    return why->isEmpty();
}

int run(const Options& o, QTextStream& out, QTextStream& err) {
    platform::DriveMap drives = platform::DriveMap::from_environment();
    for (const QString& d : o.drives) {
        if (!drives.read_config(d).isEmpty()) {
            err << "korvel-cli: not a drive: " << d << "\n";
            return 2;
        }
    }
    if (!o.pdf.isEmpty() && !qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        err << "korvel-cli: PDF output needs the GUI application (fonts)\n";
        return 1;
    }
    FailureNotingDialogs dialogs;
    shell::Session session(dialogs, drives);
    session.executable_path = platform::executable_windows_path(drives);
    session.afrikaans = false;
    shell::Startup startup(session);
    if (!startup.run_unattended())
        return 1;
    if (!o.lang.isEmpty())
        session.afrikaans = o.lang == u"af";

    const QString target = QFileInfo(o.pdf.isEmpty() ? o.xlsx : o.pdf).absoluteFilePath();
    std::unique_ptr<PrintDevice> device;
    if (!o.pdf.isEmpty())
        device = std::make_unique<PdfDevice>(target);
    else
        device = std::make_unique<RecordingDevice>();
    PrintJob job(*device, dialogs, report_school(session), session.afrikaans);
    QString written = target;
    if (!o.xlsx.isEmpty() && !written.endsWith(QStringLiteral(".xlsx"), Qt::CaseInsensitive))
        written += QStringLiteral(".xlsx");
    const auto choose_target = [&](PrintJob& j) {
        if (!o.xlsx.isEmpty()) {
            QString name = QFileInfo(written).fileName();
            name.chop(5);
            j.begin_spreadsheet(QFileInfo(written).absolutePath(), name);
        } else {
            j.print_setup();
            j.state.page_pending = true;
        }
        return true;
    };

    if (o.report == u"timetable") {
        timetable::StaffTimetable form(session);
        form.form_load();
        int row = -1;
        for (size_t i = 0; i < form.pos_lys.size(); ++i)
            if (form.pos_lys[i].post.compare(o.post.trimmed(), Qt::CaseInsensitive) == 0)
                row = int(i);
        if (row < 0 || dialogs.failed) {
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
    if (dialogs.failed || !QFileInfo(written).isFile()) {
        err << "korvel-cli: nothing was written to " << written << "\n";
        return 1;
    }
    out << "report: " << job.state.report_name << "\n"
        << "written: " << written << "\n";
    return 0;
}

}  // namespace

bool is_form_list_report(const QString& report) {
    return kReports.contains(report);
}

int print_form_list_report(const QStringList& args, QTextStream& out, QTextStream& err) {
    Options o;
    QString why;
    if (!parse(args, o, &why)) {
        err << "korvel-cli: " << why << "\nusage:\n" << kFormListsPrintUsage;
        return 2;
    }
    try {
        return run(o, out, err);
    } catch (const ProcessEnd& end) {
        return end.exit_code() == 0 ? 1 : end.exit_code();
    }
}

}  // namespace korvel::reports
