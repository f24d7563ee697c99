#include "app/cli_subjects.h"

#include "reports/command_line.h"
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
    const auto o = reports::CommandLine::read(args, 2, {}, {}, kSubjectsListUsage, err);
    if (!o || !o->words.isEmpty()) {
        return o ? reports::usage_fault(kSubjectsListUsage, err) : 2;
    }
    reports::UnattendedRun run(o->drives);
    if (!run.start(o->afrikaans)) {
        return 1;
    }
    shell::Session& session = run.session;
    const bool af = session.afrikaans;
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
    const auto line = reports::CommandLine::read(args, 2, {}, {QStringLiteral("--recreate")},
                                                 kSubjectsRebuildUsage, err);
    if (!line || !line->words.isEmpty()) {
        return line ? reports::usage_fault(kSubjectsRebuildUsage, err) : 2;
    }
    const bool recreate = !line->flags.isEmpty();
    reports::UnattendedRun run(line->drives);
    if (!run.start(line->afrikaans)) {
        return 1;
    }
    shell::Session& session = run.session;
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
