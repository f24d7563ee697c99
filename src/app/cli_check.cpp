#include "app/cli_check.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "check/data_check.h"
#include "check/data_repair.h"
#include "reports/command_line.h"
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
    const auto o =
        reports::CommandLine::read(args, 1, {QStringLiteral("--year"), QStringLiteral("--format")},
                                   {QStringLiteral("--repair")}, kCheckUsage, err);
    if (!o) {
        return 2;
    }
    const QString year = o->values.value(QStringLiteral("--year"));
    const QString format = o->values.value(QStringLiteral("--format"), QStringLiteral("text"));
    const bool repair = !o->flags.isEmpty();
    const bool afrikaans = o->afrikaans.value_or(false);
    const platform::DriveMap& drives = o->drives;
    if ((format != u"text" && format != u"json") || !o->words.isEmpty()) {
        return reports::usage_fault(kCheckUsage, err);
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
