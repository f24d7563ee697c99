#include "app/cli_yearend.h"

#include <memory>
#include <optional>

#include "platform/executable.h"
#include "shell/folders.h"
#include "shell/main_menu.h"
#include "shell/startup.h"
#include "ui/scripted_dialogs.h"
#include "yearend/year_choice.h"
#include "yearend/year_end.h"

namespace korvel::app {

namespace {

// The options the year commands share, and their own ("--from" takes a value, "--append"
// none).
struct YearOptions {
    platform::DriveMap drives = platform::DriveMap::from_environment();
    std::optional<bool> afrikaans;
    QMap<QString, QString> values;
    QStringList flags;
    QStringList words;  // what stands without an option
};

std::optional<YearOptions> read_options(const QStringList& args, const QStringList& with_value,
                                        const QStringList& flags, QTextStream& err) {
    YearOptions o;
    for (qsizetype i = 1; i < args.size(); ++i) {
        const QString& a = args.at(i);
        const bool has_value = i + 1 < args.size();
        if (a == u"--drive" && has_value) {
            const QStringList bad = o.drives.read_config(args.at(++i));
            if (!bad.isEmpty()) {
                err << "korvel-cli: not a drive: " << bad.join(u' ') << "\n";
                return std::nullopt;
            }
        } else if (a == u"--lang" && has_value &&
                   (args.at(i + 1) == u"af" || args.at(i + 1) == u"en")) {
            o.afrikaans = args.at(++i) == u"af";
        } else if (with_value.contains(a) && has_value) {
            o.values[a] = args.at(++i);
        } else if (flags.contains(a)) {
            o.flags << a;
        } else if (!a.startsWith(QStringLiteral("--"))) {
            o.words << a;
        } else {
            err << "usage: korvel-cli\n" << kYearEndUsage;
            return std::nullopt;
        }
    }
    return o;
}

// The start-up without a window, in the language asked for.
struct Unattended {
    explicit Unattended(const YearOptions& o) : session(dialogs, o.drives), startup(session) {
        session.executable_path = platform::executable_windows_path(o.drives);
        session.afrikaans = false;
    }
    bool start(const YearOptions& o) {
        if (!startup.run_unattended()) {
            return false;
        }
        if (o.afrikaans) {
            session.afrikaans = *o.afrikaans;
        }
        return true;
    }
    ui::UnattendedDialogs dialogs;
    shell::Session session;
    shell::Startup startup;
};

}  // namespace

int year_end_command(const QStringList& args, QTextStream& out, QTextStream& err) {
    const auto o = read_options(args, {QStringLiteral("--from"), QStringLiteral("--to")},
                                {QStringLiteral("--overwrite"), QStringLiteral("--append")}, err);
    if (!o) {
        return 2;
    }
    const QString from = o->values.value(QStringLiteral("--from"));
    if (!shell::is_year_text(from) || !o->values.contains(QStringLiteral("--to")) ||
        o->flags.size() > 1 || !o->words.isEmpty()) {
        err << "usage: korvel-cli\n" << kYearEndUsage;
        return 2;
    }
    Unattended run(*o);
    if (!run.start(*o)) {
        return 1;
    }
    shell::Session& s = run.session;
    // The closing works from the from year; the year remembered for the program stays.
    s.ledger_year = from;
    s.folders.staff = s.folders.staff.left(s.folders.staff.size() - 4) + from;
    if (!s.fs().folder_exists(s.folders.staff)) {
        err << "korvel-cli: no staff folder for " << from << ": " << s.folders.staff << "\n";
        return 1;
    }
    yearend::YearEnd form(s);
    form.form_load();
    form.nuwe_jaar = o->values.value(QStringLiteral("--to"));
    form.evj_ok_click();
    if (form.byvoeg_oorskryf_visible) {
        if (o->flags.isEmpty()) {
            err << form.bo_teks << "\n(--overwrite or --append)\n";
            return 1;
        }
        form.bo_opsie = o->flags.first() == u"--append" ? 1 : 0;
        form.bo_ok_click();
    }
    if (!form.completed) {
        return 1;
    }
    out << "year-end: " << from << " -> " << form.nuwe_jaar << "\n"
        << "target folder: " << form.target() << "\n";
    return 0;
}

int use_year_command(const QStringList& args, QTextStream& out, QTextStream& err) {
    const auto o = read_options(args, {}, {}, err);
    if (!o) {
        return 2;
    }
    if (o->words.size() != 1 ||
        (!shell::is_year_text(o->words.first()) && o->words.first() != u"0")) {
        err << "usage: korvel-cli\n" << kYearEndUsage;
        return 2;
    }
    Unattended run(*o);
    if (!run.start(*o)) {
        return 1;
    }
    shell::MainMenu menu(run.session, run.startup);
    yearend::YearChoice choice(run.session,
                               [&](const QString& year) { menu.rekords_jaar_lys_click(year); });
    choice.form_load();
    choice.choose(o->words.first());
    out << "ledger year: " << run.session.ledger_year << "\n"
        << "staff folder: " << run.session.folders.staff << "\n";
    return 0;
}

}  // namespace korvel::app
