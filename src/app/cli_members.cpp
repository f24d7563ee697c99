#include "app/cli_members.h"

#include <QDir>
#include <QFileInfo>

#include "app/cli_subjects.h"
#include "governing/member_register.h"
#include "reports/command_line.h"
#include "staff/lurits_import.h"
#include "ui/scripted_dialogs.h"

namespace korvel::app {

int members_command(const QStringList& args, QTextStream& out, QTextStream& err) {
    const QString job = args.value(1);
    const auto o = reports::CommandLine::read(args, 2, {}, {}, kMembersUsage, err);
    if (!o) {
        return 2;
    }
    QStringList posts;
    for (const QString& w : o->words) {
        posts << w.trimmed();
    }
    if ((job != u"list" && job != u"from-staff" && job != u"close") ||
        (job == u"from-staff") == posts.isEmpty()) {
        return reports::usage_fault(kMembersUsage, err);
    }
    reports::UnattendedRun run(o->drives);
    if (!run.start(o->afrikaans)) {
        return 1;
    }
    shell::Session& session = run.session;
    governing::MemberRegister reg(session);
    if (job == u"close") {
        QString why;
        const store::Compaction done = governing::close_members(session, &why);
        if (done == store::Compaction::Skipped) {
            out << "compaction skipped: " << why << "\n";
        }
        return done == store::Compaction::Stopped ? 1 : 0;
    }
    if (job == u"from-staff") {
        reg.create_from_staff();
        int ticked = 0;
        for (std::size_t i = 0; i < reg.prs_grid.rows.size(); ++i) {
            if (posts.contains(reg.prs_grid.rows[i].cells[governing::kPickPost],
                               Qt::CaseInsensitive)) {
                reg.prs_grid_check(static_cast<int>(i), true);
                ++ticked;
            }
        }
        if (ticked != posts.size()) {
            err << "korvel-cli: no staff record for some of: " << posts.join(u' ') << "\n";
            return 1;
        }
        reg.data_ok_click();
        out << "members added: " << ticked << "\n";
        return 0;
    }
    reg.form_load();
    for (const governing::GridRow& row : reg.sgb_grid.rows) {
        QStringList cells;
        for (int c = 0; c < governing::kMemberColumns; ++c) {
            cells << csv_field(row.cells[static_cast<std::size_t>(c)]);
        }
        out << cells.join(u',') << "\n";
    }
    return 0;
}

}  // namespace korvel::app

namespace korvel::app {

namespace {

// The command line's part in the import: the question answered as --yes says, the file the one
// named.
class ImportAnswers : public ui::UnattendedDialogs {
  public:
    ImportAnswers(bool yes, QString file) : yes_(yes), file_(std::move(file)) {}
    ui::Answer ask(const QString& text, ui::Buttons buttons, ui::Icon icon,
                   ui::Answer default_answer, const QString& title) override {
        const ui::Answer a = UnattendedDialogs::ask(text, buttons, icon, default_answer, title);
        return yes_ ? ui::Answer::Yes : a;
    }
    QString choose_file(const QString&, const QString&, const QString&, bool) override {
        return file_;
    }

  private:
    bool yes_;
    QString file_;
};

}  // namespace

int import_lurits_command(const QStringList& args, QTextStream& out, QTextStream& err) {
    const auto o =
        reports::CommandLine::read(args, 1, {}, {QStringLiteral("--yes")}, kImportLuritsUsage, err);
    if (!o) {
        return 2;
    }
    if (o->words.size() != 1) {
        return reports::usage_fault(kImportLuritsUsage, err);
    }
    const bool yes = !o->flags.isEmpty();
    const QString file = QFileInfo(o->words.first()).absoluteFilePath();
    reports::UnattendedRun run(o->drives);
    if (!run.start(o->afrikaans)) {
        return 1;
    }
    shell::Session& session = run.session;
    ImportAnswers answers(yes, QDir::toNativeSeparators(file));
    session.set_dialogs(answers);
    const int added = staff::import_lurits_staff(session);
    out << "records added: " << added << "\n";
    return added > 0 ? 0 : 1;
}

}  // namespace korvel::app
