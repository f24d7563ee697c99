#include "reports/command_line.h"

#include "platform/executable.h"

namespace korvel::reports {

std::optional<CommandLine> CommandLine::read(const QStringList& args, qsizetype first,
                                             const QStringList& with_value,
                                             const QStringList& flags, const char* usage,
                                             QTextStream& err) {
    CommandLine c;
    for (qsizetype i = first; i < args.size(); ++i) {
        const QString& a = args.at(i);
        const bool has_value = i + 1 < args.size();
        if (a == u"--drive" && has_value) {
            if (!c.add_drive(args.at(++i), err)) {
                return std::nullopt;
            }
        } else if (a == u"--lang" && has_value) {
            const QString& lang = args.at(++i);
            if (lang != u"af" && lang != u"en") {
                err << "korvel-cli: --lang is af or en, not " << lang << "\n";
                usage_fault(usage, err);
                return std::nullopt;
            }
            c.afrikaans = lang == u"af";
        } else if (with_value.contains(a) && has_value) {
            c.values[a] = args.at(++i);
        } else if (flags.contains(a)) {
            c.flags << a;
        } else if (!a.startsWith(QStringLiteral("--"))) {
            c.words << a;
        } else {
            usage_fault(usage, err);
            return std::nullopt;
        }
    }
    return c;
}

bool CommandLine::add_drive(const QString& config, QTextStream& err) {
    const QStringList bad = drives.read_config(config);
    if (!bad.isEmpty()) {
        err << "korvel-cli: not a drive: " << bad.join(u' ') << "\n";
        return false;
    }
    return true;
}

int usage_fault(const char* usage, QTextStream& err) {
    err << "usage: korvel-cli COMMAND [ARGS]\n\n" << usage;
    return 2;
}

UnattendedRun::UnattendedRun(const platform::DriveMap& drives)
    : UnattendedRun(own_dialogs_, drives) {}

UnattendedRun::UnattendedRun(ui::Dialogs& dialogs, const platform::DriveMap& drives)
    : session(dialogs, drives), startup(session) {
    session.executable_path = platform::executable_windows_path(drives);
    session.afrikaans = false;
}

bool UnattendedRun::start(std::optional<bool> afrikaans) {
    if (!startup.run_unattended()) {
        return false;
    }
    if (afrikaans) {
        session.afrikaans = *afrikaans;
    }
    return true;
}

}  // namespace korvel::reports
