#include "app/cli_yearend.h"

#include <QFileInfo>
#include <memory>
#include <optional>

#include "reports/command_line.h"
#include "shell/folders.h"
#include "shell/main_menu.h"
#include "yearend/staff_export.h"
#include "yearend/year_choice.h"
#include "yearend/year_end.h"

namespace korvel::app {

int year_end_command(const QStringList& args, QTextStream& out, QTextStream& err) {
    const auto o = reports::CommandLine::read(
        args, 1, {QStringLiteral("--from"), QStringLiteral("--to")},
        {QStringLiteral("--overwrite"), QStringLiteral("--append")}, kYearEndUsage, err);
    if (!o) {
        return 2;
    }
    const QString from = o->values.value(QStringLiteral("--from"));
    if (!shell::is_year_text(from) || !o->values.contains(QStringLiteral("--to")) ||
        o->flags.size() > 1 || !o->words.isEmpty()) {
        return reports::usage_fault(kYearEndUsage, err);
    }
    reports::UnattendedRun run(o->drives);
    if (!run.start(o->afrikaans)) {
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
    const auto o = reports::CommandLine::read(args, 1, {}, {}, kYearEndUsage, err);
    if (!o) {
        return 2;
    }
    if (o->words.size() != 1 ||
        (!shell::is_year_text(o->words.first()) && o->words.first() != u"0")) {
        return reports::usage_fault(kYearEndUsage, err);
    }
    reports::UnattendedRun run(o->drives);
    if (!run.start(o->afrikaans)) {
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

int export_command(const QStringList& args, QTextStream& out, QTextStream& err) {
    const auto o = reports::CommandLine::read(
        args, 1, {QStringLiteral("--year"), QStringLiteral("--fields"), QStringLiteral("--xlsx")},
        {}, kYearEndUsage, err);
    if (!o) {
        return 2;
    }
    const QString year = o->values.value(QStringLiteral("--year"));
    const QString file = o->values.value(QStringLiteral("--xlsx"));
    const QStringList wanted = o->values.value(QStringLiteral("--fields")).split(u',');
    if (!shell::is_year_text(year) || file.isEmpty() || wanted.join(QString()).isEmpty() ||
        !o->words.isEmpty()) {
        return reports::usage_fault(kYearEndUsage, err);
    }
    reports::UnattendedRun run(o->drives);
    if (!run.start(o->afrikaans)) {
        return 1;
    }
    yearend::StaffExport form(run.session);
    form.load();
    const int at = int(form.rekords_jaar_lys.indexOf(year));
    if (at < 0) {
        err << "korvel-cli: no staff folder for " << year << "\n";
        return 1;
    }
    form.rekords_jaar_lys_dbl_click(at);
    // A field by its record field's name or its heading in the workbook.
    for (const QString& name : wanted) {
        const QString w = name.trimmed();
        bool known = false;
        for (int i = 0; i < yearend::kExportFieldCount; ++i) {
            const bool all = w.compare(QStringLiteral("all"), Qt::CaseInsensitive) == 0;
            if (all ||
                w.compare(QLatin1String(yearend::kExportFields[size_t(i)].name),
                          Qt::CaseInsensitive) == 0 ||
                w.compare(form.heading_of(i), Qt::CaseInsensitive) == 0) {
                form.uitvoer_velde_selected[size_t(i)] = true;
                known = true;
            }
        }
        if (!known) {
            err << "korvel-cli: no export field is named " << w << "\n";
            return 2;
        }
    }
    QString error;
    if (!form.write_workbook(QFileInfo(file).absoluteFilePath(), &error)) {
        err << "korvel-cli: cannot write " << error << "\n";
        return 1;
    }
    out << "exported: " << form.personeel_lys.size() << " staff of " << year << " to "
        << QFileInfo(file).absoluteFilePath() << "\n";
    return 0;
}

int upgrade_command(const QStringList& args, QTextStream& out, QTextStream& err) {
    const auto o = reports::CommandLine::read(args, 1, {}, {}, kYearEndUsage, err);
    if (!o || !o->words.isEmpty()) {
        return o ? reports::usage_fault(kYearEndUsage, err) : 2;
    }
    reports::UnattendedRun run(o->drives);
    if (!run.start(o->afrikaans)) {
        return 1;
    }
    // Each year is opened as its own ledger year, as choosing it in the program would.
    for (const QString& year : shell::ledger_years(run.session)) {
        out << run.session.upgrade_year(year);
    }
    return 0;
}

}  // namespace korvel::app
