#include "reports/blank_forms_cli.h"

#include "reports/blank_forms.h"
#include "reports/cli_print.h"

namespace korvel::reports {

const char* const kBlankFormsUsage =
    "  print blank-forms --forms LIST [options] (--pdf FILE | --xlsx FILE)\n"
    "      --forms LIST      of 1 personal, 2 family, 3 bank, 4 qualifications,\n"
    "                        5 appointments, 6 experience, 7 attendance sheet (as 1,7)\n"
    "      --form-lang af|en the language of the printed forms (default: the program's)\n"
    "      --post POST       filled for this post number (repeatable; default: blank forms)\n"
    "      --month M         the month of the attendance sheet, 1 to 12 (default: this month)\n"
    "      --lang af|en   --drive X:=DIR   as for the staff lists\n";

namespace {

struct Options {
    std::array<bool, kBlankFormCount + 1> forms{};
    std::optional<bool> form_afrikaans;
    QStringList posts;
    int month = 0;
    CliOutputOptions output;
};

bool parse(const QStringList& args, Options& o, QString* why) {
    for (qsizetype i = 2; i < args.size() && why->isEmpty(); i += 2) {
        const QString name = args.at(i);
        const QString value = args.value(i + 1);
        if (i + 1 >= args.size()) {
            *why = QStringLiteral("no value for ") + name;
        } else if (name == u"--forms") {
            for (const QString& part : value.split(u',', Qt::SkipEmptyParts)) {
                bool ok = false;
                const int n = part.trimmed().toInt(&ok);
                if (!ok || n < 1 || n > kBlankFormCount)
                    *why = QStringLiteral("--forms takes numbers 1 to 7, not ") + part;
                else
                    o.forms[size_t(n)] = true;
            }
        } else if (name == u"--form-lang") {
            if (value == u"af" || value == u"en")
                o.form_afrikaans = value == u"af";
            else
                *why = QStringLiteral("--form-lang is af or en, not ") + value;
        } else if (name == u"--post") {
            o.posts << value;
        } else if (name == u"--month") {
            bool ok = false;
            o.month = value.toInt(&ok);
            if (!ok || o.month < 1 || o.month > 12)
                *why = QStringLiteral("--month is 1 to 12, not ") + value;
        } else if (!o.output.read(name, value, why)) {
            *why = QStringLiteral("unknown option ") + name;
        }
    }
    if (!why->isEmpty())
        return false;
    if (std::none_of(o.forms.begin(), o.forms.end(), [](bool on) { return on; }))
        *why = QStringLiteral("print blank-forms needs --forms LIST");
    else
        o.output.one_target(why);
    return why->isEmpty();
}

int run(const Options& o, QTextStream& out, QTextStream& err) {
    CliPrintRun cli;
    if (const int code = cli.open(o.output, err); code != 0)
        return code;
    BlankForms form(cli.session(), cli.job());
    form.form_load();
    form.druk_opsie = o.forms;
    if (o.form_afrikaans)
        form.taal_afrikaans = *o.form_afrikaans;
    if (o.month > 0)
        form.maand_lys = o.month;
    for (const QString& post : o.posts) {
        bool found = false;
        for (size_t i = 0; i < form.prs_lys.size(); ++i) {
            if (form.prs_lys[i].post.compare(post.trimmed(), Qt::CaseInsensitive) == 0) {
                form.prs_lys_selected[i] = true;
                found = true;
            }
        }
        if (!found) {
            err << "korvel-cli: no staff member has the post number " << post << "\n";
            return 1;
        }
    }
    form.choose_target = [&cli](PrintJob& j) { return cli.choose_target(j); };
    const bool printed = form.opsies_ok_click();
    form.exit_click();
    return cli.finish(printed, out, err);
}

}  // namespace

bool is_blank_forms_report(const QString& report) {
    return report == u"blank-forms";
}

int print_blank_forms(const QStringList& args, QTextStream& out, QTextStream& err) {
    Options o;
    QString why;
    parse(args, o, &why);
    return run_print_command(why, kBlankFormsUsage, err, [&] { return run(o, out, err); });
}

}  // namespace korvel::reports
