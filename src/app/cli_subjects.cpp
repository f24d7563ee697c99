#include "app/cli_subjects.h"

#include "platform/drive_map.h"
#include "platform/executable.h"
#include "shell/session.h"
#include "shell/startup.h"
#include "staff/staff_subjects.h"
#include "staff/subject_codes.h"
#include "ui/scripted_dialogs.h"

namespace korvel::app {

const char* const kSubjectsListUsage =
    "  subjects list [--lang af|en] [--drive X:=DIR ...]\n"
    "      the staff subject codes of the suite home: code, grade, name\n";

QString csv_field(const QString& value) {
    if (!value.contains(u',') && !value.contains(u'"')) {
        return value;
    }
    return u'"' + QString(value).replace(QStringLiteral("\""), QStringLiteral("\"\"")) + u'"';
}

int subjects_list(const QStringList& args, QTextStream& out, QTextStream& err) {
    platform::DriveMap drives = platform::DriveMap::from_environment();
    std::optional<bool> afrikaans;
    for (qsizetype i = 2; i < args.size(); ++i) {
        const QString& a = args.at(i);
        if (a == u"--drive" && i + 1 < args.size()) {
            const QStringList bad = drives.read_config(args.at(++i));
            if (!bad.isEmpty()) {
                err << "korvel-cli: not a drive: " << bad.join(u' ') << "\n";
                return 2;
            }
        } else if (a == u"--lang" && i + 1 < args.size() &&
                   (args.at(i + 1) == u"af" || args.at(i + 1) == u"en")) {
            afrikaans = args.at(++i) == u"af";
        } else {
            err << "usage: korvel-cli\n" << kSubjectsListUsage;
            return 2;
        }
    }
    ui::UnattendedDialogs dialogs;
    shell::Session session(dialogs, drives);
    session.executable_path = platform::executable_windows_path(drives);
    session.afrikaans = false;
    shell::Startup startup(session);
    if (!startup.run_unattended()) {
        return 1;
    }
    const bool af = afrikaans.value_or(session.afrikaans);
    const staff::SubjectCodes codes = staff::SubjectCodes::load(session);
    for (const staff::SubjectCode& c : codes.rows()) {
        out << csv_field(c.code) << ',' << csv_field(c.grade) << ',' << csv_field(c.name(af))
            << "\n";
    }
    return 0;
}

namespace {

// The command line's answer to the rebuild's question: Yes when --recreate was given, the
// question's own default (No, merge) otherwise.
class RebuildAnswers : public ui::UnattendedDialogs {
  public:
    explicit RebuildAnswers(bool recreate) : recreate_(recreate) {}
    ui::Answer ask(const QString& text, ui::Buttons buttons, ui::Icon icon,
                   ui::Answer default_answer, const QString& title) override {
        const ui::Answer a = UnattendedDialogs::ask(text, buttons, icon, default_answer, title);
        return recreate_ ? ui::Answer::Yes : a;
    }

  private:
    bool recreate_;
};

}  // namespace

int subjects_rebuild(const QStringList& args, QTextStream& out, QTextStream& err) {
    platform::DriveMap drives = platform::DriveMap::from_environment();
    bool recreate = false;
    for (qsizetype i = 2; i < args.size(); ++i) {
        if (args.at(i) == u"--recreate") {
            recreate = true;
        } else if (args.at(i) == u"--drive" && i + 1 < args.size()) {
            const QStringList bad = drives.read_config(args.at(++i));
            if (!bad.isEmpty()) {
                err << "korvel-cli: not a drive: " << bad.join(u' ') << "\n";
                return 2;
            }
        } else {
            err << "usage: korvel-cli COMMAND [ARGS]\n\n" << kSubjectsRebuildUsage;
            return 2;
        }
    }
    ui::UnattendedDialogs start_answers;
    shell::Session session(start_answers, drives);
    session.executable_path = platform::executable_windows_path(drives);
    session.afrikaans = false;
    shell::Startup startup(session);
    if (!startup.run_unattended()) {
        return 1;
    }
    RebuildAnswers answers(recreate);
    session.set_dialogs(answers);
    staff::DbfLearnerSubjects learners(session);
    staff::StaffSubjects rebuild(session, learners);
    rebuild.recreate_staff_subjects();
    const staff::StaffSubjects::Outcome& o = rebuild.outcome;
    out << "subject file: "
        << session.fs().native(session.folders.staff + QStringLiteral("\\prs_vak_random.txt"))
        << "\n"
        << "mode: " << (o.recreated ? "recreate" : "merge") << "\n"
        << "grades: " << o.grades_read.join(u' ') << "\n"
        << "learners: " << o.learners << "\n"
        << "subjects added: " << o.subjects_added << "\n"
        << "records added: " << o.records_added << "\n"
        << "records written: " << o.records_written << "\n"
        << "subject records: " << session.count(store::Code::PRSVAK) << "\n";
    return 0;
}

}  // namespace korvel::app
