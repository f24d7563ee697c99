#include "app/cli_members.h"

#include <QDir>
#include <QFileInfo>

#include "app/cli_subjects.h"
#include "governing/member_register.h"
#include "platform/drive_map.h"
#include "platform/executable.h"
#include "shell/session.h"
#include "shell/startup.h"
#include "staff/lurits_import.h"
#include "ui/scripted_dialogs.h"

namespace korvel::app {

int members_command(const QStringList& args, QTextStream& out, QTextStream& err) {
    const QString job = args.value(1);
    platform::DriveMap drives = platform::DriveMap::from_environment();
    std::optional<bool> afrikaans;
    QStringList posts;
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
        } else if (job == u"from-staff" && !a.startsWith(u"--")) {
            posts << a.trimmed();
        } else {
            err << "usage: korvel-cli COMMAND [ARGS]\n\n" << kMembersUsage;
            return 2;
        }
    }
    if ((job != u"list" && job != u"from-staff" && job != u"close") ||
        (job == u"from-staff" && posts.isEmpty())) {
        err << "usage: korvel-cli COMMAND [ARGS]\n\n" << kMembersUsage;
        return 2;
    }
    ui::UnattendedDialogs dialogs;
    shell::Session session(dialogs, drives);
    session.executable_path = platform::executable_windows_path(drives);
    session.afrikaans = false;
    shell::Startup startup(session);
    if (!startup.run_unattended()) {
        return 1;
    }
    if (afrikaans) {
        session.afrikaans = *afrikaans;
    }
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
    platform::DriveMap drives = platform::DriveMap::from_environment();
    bool yes = false;
    QString file;
    for (qsizetype i = 1; i < args.size(); ++i) {
        const QString& a = args.at(i);
        if (a == u"--yes") {
            yes = true;
        } else if (a == u"--drive" && i + 1 < args.size()) {
            const QStringList bad = drives.read_config(args.at(++i));
            if (!bad.isEmpty()) {
                err << "korvel-cli: not a drive: " << bad.join(u' ') << "\n";
                return 2;
            }
        } else if (file.isEmpty() && !a.startsWith(u"--")) {
            file = QFileInfo(a).absoluteFilePath();
        } else {
            err << "usage: korvel-cli COMMAND [ARGS]\n\n" << kImportLuritsUsage;
            return 2;
        }
    }
    if (file.isEmpty()) {
        err << "usage: korvel-cli COMMAND [ARGS]\n\n" << kImportLuritsUsage;
        return 2;
    }
    ui::UnattendedDialogs start_answers;
    shell::Session session(start_answers, drives);
    session.executable_path = platform::executable_windows_path(drives);
    session.afrikaans = false;
    shell::Startup startup(session);
    if (!startup.run_unattended()) {
        return 1;
    }
    ImportAnswers answers(yes, QDir::toNativeSeparators(file));
    session.set_dialogs(answers);
    const int added = staff::import_lurits_staff(session);
    out << "records added: " << added << "\n";
    return added > 0 ? 0 : 1;
}

}  // namespace korvel::app
