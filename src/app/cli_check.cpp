#include "app/cli_check.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "check/data_check.h"
#include "check/data_repair.h"
#include "ui/scripted_dialogs.h"

namespace korvel::app {

namespace {

void print_findings(const std::vector<check::Finding>& findings, bool json, QTextStream& out) {
    if (json) {
        QJsonArray list;
        for (const check::Finding& f : findings) {
            list.append(QJsonObject{{QStringLiteral("file"), f.file},
                                    {QStringLiteral("record"), f.record},
                                    {QStringLiteral("field"), f.field},
                                    {QStringLiteral("problem"), f.problem}});
        }
        out << QJsonDocument(list).toJson(QJsonDocument::Indented);
        return;
    }
    for (const check::Finding& f : findings) {
        out << f.file;
        if (f.record > 0) {
            out << " record " << f.record;
        }
        if (!f.field.isEmpty()) {
            out << " " << f.field;
        }
        out << ": " << f.problem << "\n";
    }
}

}  // namespace

int check_command(const QStringList& args, QTextStream& out, QTextStream& err) {
    platform::DriveMap drives = platform::DriveMap::from_environment();
    QString year;
    QString format = QStringLiteral("text");
    bool repair = false;
    bool afrikaans = false;
    for (qsizetype i = 1; i < args.size(); ++i) {
        const QString& a = args.at(i);
        const bool has_value = i + 1 < args.size();
        if (a == u"--drive" && has_value) {
            const QStringList bad = drives.read_config(args.at(++i));
            if (!bad.isEmpty()) {
                err << "korvel-cli: not a drive: " << bad.join(u' ') << "\n";
                return 2;
            }
        } else if (a == u"--year" && has_value) {
            year = args.at(++i);
        } else if (a == u"--format" && has_value &&
                   (args.at(i + 1) == u"text" || args.at(i + 1) == u"json")) {
            format = args.at(++i);
        } else if (a == u"--lang" && has_value &&
                   (args.at(i + 1) == u"af" || args.at(i + 1) == u"en")) {
            afrikaans = args.at(++i) == u"af";
        } else if (a == u"--repair") {
            repair = true;
        } else {
            err << "usage: korvel-cli\n" << kCheckUsage;
            return 2;
        }
    }
    QString error;
    std::optional<check::CheckTree> tree = check::locate_tree(drives, year, &error);
    if (!tree) {
        err << "korvel-cli: " << error << "\n";
        return 2;
    }
    tree->afrikaans = afrikaans;
    if (repair) {
        ui::UnattendedDialogs dialogs;
        const check::RepairResult r = check::repair_tree(*tree, dialogs);
        if (!r.done) {
            err << "korvel-cli: " << r.error << "\n";
            return 2;
        }
        // What changed goes to standard error, so that standard output holds only findings.
        for (const QString& b : r.backups) {
            err << "backup: " << b << "\n";
        }
        for (const QString& c : r.changes) {
            err << "repaired: " << c << "\n";
        }
    }
    ui::UnattendedDialogs terminal;
    const std::vector<check::Finding> findings = [&] {
        const std::unique_ptr<ui::Progress> bar =
            terminal.progress(check::check_title(afrikaans), check::kCheckStages, false);
        return check::check_tree(*tree, bar.get());
    }();
    print_findings(findings, format == u"json", out);
    return findings.empty() ? 0 : 1;
}

}  // namespace korvel::app
