#include "app/cli.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>

#include "app/cli_check.h"
#include "app/cli_dump.h"
#include "app/cli_members.h"
#include "app/cli_subjects.h"
#include "app/cli_yearend.h"
#include "attendance/cli_attendance.h"
#include "payroll/payroll_cli.h"
#include "platform/executable.h"
#include "platform/process_end.h"
#include "reports/blank_forms_cli.h"
#include "reports/cli_print.h"
#include "reports/cli_print_lists.h"
#include "reports/command_line.h"
#include "shell/demo_tree.h"
#include "shell/session.h"
#include "shell/startup.h"
#include "staff/demo_learners.h"
#include "store/record_layouts.h"
#include "ui/scripted_dialogs.h"

namespace korvel::app {

namespace {

#define KORVEL_INFO_USAGE                                                                   \
    "  info [--drive X:=DIR ...] [--lang af|en]\n"                                          \
    "      runs the start-up unattended and prints the folders, ledger year, language and " \
    "school\n"

const char* const kUsage =
    "usage: korvel-cli COMMAND [ARGS]\n"
    "\n"
    "  dump CODE --folder DIR [--format csv|json]\n"
    "      every record of the file of CODE in DIR, every field by name (read only)\n"
    "  demo DIR\n"
    "      writes the demo data tree below DIR (drive C: of the suite)\n"
    "  compact --folder DIR\n"
    "      compacts the staff files of DIR, as closing the register does; while another\n"
    "      process compacts them it says \"compaction skipped: ...\" and changes "
    "nothing\n" KORVEL_INFO_USAGE KORVEL_CHECK_USAGE KORVEL_YEAREND_USAGE;

// The value after an option ("--folder DIR"); blank when the option is absent.
QString option(const QStringList& args, const QString& name) {
    const qsizetype at = args.indexOf(name);
    return (at >= 0 && at + 1 < args.size()) ? args.at(at + 1) : QString();
}

// The file of a layout in a folder, whatever the case of its name on disk.
QString find_file(const QString& folder, const store::Layout& layout) {
    const QString wanted = QString::fromLatin1(layout.file_name.data(), layout.file_name.size());
    const QStringList names = QDir(folder).entryList(QDir::Files);
    for (const QString& n : names) {
        if (n.compare(wanted, Qt::CaseInsensitive) == 0) {
            return folder + u'/' + n;
        }
    }
    return folder + u'/' + wanted;
}

int dump(const QStringList& args, QTextStream& out, QTextStream& err) {
    if (args.size() < 2) {
        err << kUsage << reports::kPrintUsage;
        return 2;
    }
    const store::Layout* layout = store::layout_by_code(args.at(1).toUpper().toStdString());
    const QString folder = option(args, QStringLiteral("--folder"));
    const QString format = option(args, QStringLiteral("--format"));
    if (layout == nullptr) {
        err << "korvel-cli: no file has the code " << args.at(1) << "\n";
        return 2;
    }
    if (folder.isEmpty() || (!format.isEmpty() && format != u"csv" && format != u"json")) {
        err << kUsage << reports::kPrintUsage;
        return 2;
    }
    if (!QFileInfo(folder).isDir()) {
        err << "korvel-cli: " << folder << ": no such folder\n";
        return 1;
    }
    QString error;
    auto file = store::RecordFile::open(find_file(folder, *layout), layout->record_length,
                                        store::RecordFile::Access::ReadOnly, &error);
    if (!file) {
        err << "korvel-cli: " << error << "\n";
        return 1;
    }
    dump_records(*file, *layout, format == u"json" ? DumpFormat::Json : DumpFormat::Csv, out);
    return 0;
}

int demo(const QStringList& args, QTextStream& out, QTextStream& err) {
    if (args.size() != 2) {
        err << kUsage << reports::kPrintUsage;
        return 2;
    }
    const QString root = QFileInfo(args.at(1)).absoluteFilePath();
    if (!QDir().mkpath(root)) {
        err << "korvel-cli: cannot make " << root << "\n";
        return 1;
    }
    ui::UnattendedDialogs demo_answers;
    const shell::DemoSummary s =
        shell::write_demo_tree(root, QDate::currentDate().year(), demo_answers);
    const int learner_grades = staff::write_demo_learner_tables(
        root + QStringLiteral("/VESPARINE/ADMIN"), QDate::currentDate().year());
    out << "demo data tree: " << root << "\n"
        << "drive: " << s.drive << " = " << root << "\n"
        << "ledger year: " << s.year << "\n"
        << "staff folder: " << s.staff_folder_native << "\n"
        << "general folder: " << s.general_folder_native << "\n"
        << "staff: " << s.staff << " (" << s.inactive << " inactive, " << s.deleted << " deleted)\n"
        << "governing body members: " << s.members << "\n"
        << "learner grades: " << learner_grades << "\n"
        << "files written: " << s.files.size() << "\n";
    return 0;
}

int compact(const QStringList& args, QTextStream& out, QTextStream& err) {
    const QString folder = option(args, QStringLiteral("--folder"));
    if (folder.isEmpty()) {
        err << kUsage << reports::kPrintUsage;
        return 2;
    }
    if (!QFileInfo(folder).isDir()) {
        err << "korvel-cli: " << folder << ": no such folder\n";
        return 1;
    }
    ui::UnattendedDialogs dialogs;
    // The folder is the root of a drive of its own for this run.
    shell::Session session(dialogs,
                           platform::DriveMap::explicit_map(
                               {{QStringLiteral("K:"), QFileInfo(folder).absoluteFilePath()}}));
    session.folders.staff = QStringLiteral("K:");
    if (!session.open_staff_file(QStringLiteral("PRSALG"))) {
        return 1;
    }
    const int before = session.count(store::Code::PRSALG);
    QString why;
    const store::Compaction done = session.compact_staff_files(&why);
    if (done == store::Compaction::Stopped) {
        return 1;  // the message went to standard error
    }
    if (done == store::Compaction::Skipped) {
        // Not a failure: the files stay valid, only uncompacted.
        out << "compaction skipped: " << why << "\n";
        return 0;
    }
    out << "staff records before: " << before << "\n"
        << "staff records after: " << session.count(store::Code::PRSALG) << "\n";
    return 0;
}

int info(const QStringList& args, QTextStream& out, QTextStream& err) {
    const auto o = reports::CommandLine::read(args, 1, {}, {}, KORVEL_INFO_USAGE, err);
    if (!o || !o->words.isEmpty()) {
        return o ? reports::usage_fault(KORVEL_INFO_USAGE, err) : 2;
    }
    reports::UnattendedRun run(o->drives);
    if (!run.start(o->afrikaans)) {
        return 1;
    }
    const shell::Session& session = run.session;
    const store::Folders& f = session.folders;
    const std::pair<const char*, QString> rows[] = {
        {"executable", session.executable_path},
        {"suite home", f.suite_home},
        {"program folder", f.program},
        {"workstation folder", f.workstation},
        {"workstation program folder", f.workstation_program},
        {"program drive", f.program_drive},
        {"admin folder", f.admin},
        {"funds folder", f.funds},
        {"stock folder", f.stock},
        {"staff folder", f.staff},
        {"hbooks folder", f.hbooks},
        {"roster folder", f.roster},
        {"media folder", f.media},
        {"budget folder", f.budget},
        {"general year folder", f.general_year},
        {"school folder", f.school},
        {"ledger year", session.ledger_year},
        {"language", session.afrikaans ? QStringLiteral("Afrikaans") : QStringLiteral("English")},
        {"school", session.school.name},
        {"initials", session.school.initials},
        {"province", session.school.province_code + u' ' + session.school.province_name},
        {"staff records", QString::number(session.count(store::Code::PRSALG))},
    };
    for (const auto& [name, value] : rows) {
        out << name << ": " << value << "\n";
    }
    return 0;
}

}  // namespace

int run_cli(const QStringList& args, QTextStream& out, QTextStream& err) {
    if (args.isEmpty() || args.first() == u"--help" || args.first() == u"help") {
        (args.isEmpty() ? err : out)
            << kUsage << kSubjectsListUsage << kSubjectsRebuildUsage << kMembersUsage
            << kImportLuritsUsage << reports::kPrintUsage << reports::kFormListsPrintUsage
            << reports::kBlankFormsUsage << payroll::kPayrollPrintUsage
            << attendance::kAttendancePrintUsage;
        return args.isEmpty() ? 2 : 0;
    }
    try {
        const QString command = args.first();
        if (command == u"dump") {
            return dump(args, out, err);
        }
        if (command == u"demo") {
            return demo(args, out, err);
        }
        if (command == u"compact") {
            return compact(args, out, err);
        }
        if (command == u"info") {
            return info(args, out, err);
        }
        if (command == u"check") {
            return check_command(args, out, err);
        }
        if (command == u"subjects" && args.value(1) == u"list") {
            return subjects_list(args, out, err);
        }
        if (command == u"print" && attendance::is_attendance_report(args.value(1))) {
            return attendance::print_attendance_report(args, out, err);
        }
        if (command == u"print") {
            return reports::print_report(args, out, err);
        }
        if (command == u"year-end") {
            return year_end_command(args, out, err);
        }
        if (command == u"export") {
            return export_command(args, out, err);
        }
        if (command == u"upgrade") {
            return upgrade_command(args, out, err);
        }
        if (command == u"use-year") {
            return use_year_command(args, out, err);
        }
        if (command == u"subjects" && args.value(1) == u"rebuild") {
            return subjects_rebuild(args, out, err);
        }
        if (command == u"import-lurits") {
            return import_lurits_command(args, out, err);
        }
        if (command == u"members") {
            return members_command(args, out, err);
        }
        err << "korvel-cli: unknown command " << command << "\n" << kUsage;
        return 2;
    } catch (const ProcessEnd& end) {
        return end.exit_code() == 0 ? 1 : end.exit_code();
    }
}

}  // namespace korvel::app
