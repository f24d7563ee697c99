// lone_kies_druk and sk4611_prg: pay slips and the salary summary.
#include "payroll/pay_slips.h"

#include <QLocale>
#include <QRegularExpression>

#include "reports/grid_output.h"
#include "reports/letterhead.h"
#include "reports/letterhead_forms.h"
#include "reports/print_target.h"
#include "shell/helpers.h"
#include "shell/session.h"

namespace korvel::payroll {

using reports::GridPageOptions;
using reports::PrintGrid;

namespace {

QString joined(const QStringList& parts) {
    QStringList kept;
    for (const QString& p : parts)
        if (!p.trimmed().isEmpty())
            kept << p.trimmed();
    return kept.join(u' ');
}

QString plain_amount(long long rands) {
    return QString::number(rands) + QStringLiteral(".00");
}

}  // namespace

// ---- lone_kies_druk ----

PayrollPrintChooser::PayrollPrintChooser(bool afrikaans, Opener opener)
    : opener_(std::move(opener)) {
    heading =
        afrikaans ? QStringLiteral("DRUK LONE/SALARISSE") : QStringLiteral("PRINT WAGES/SALARIES");
    pr_option[1] = afrikaans ? QStringLiteral(" BETAALSTROKIE ") : QStringLiteral(" PAYSLIP ");
    pr_option[2] = afrikaans ? QStringLiteral(" OPSOMMING ") : QStringLiteral(" SUMMARY ");
}

void PayrollPrintChooser::pr_option_click(int index) {
    if (index < 1 || index > 2)
        return;
    option = index;
    if (opener_)
        opener_(index, pr_option[size_t(index)].trimmed());
}

// ---- sk4611_prg ----

PaySlips::PaySlips(shell::Session& session, reports::PrintJob& job, int option_,
                   reports::PrintTargetHost* host)
    : option(option_),
      range(session.dialogs(), session.afrikaans),
      s_(session),
      job_(job),
      host_(host) {}

QString PaySlips::rand_text(long long rands) {
    QLocale grouped = QLocale::c();
    grouped.setNumberOptions(QLocale::DefaultNumberOptions);
    return QStringLiteral("R ") + grouped.toString(double(rands), 'f', 2);
}

void PaySlips::form_load() {
    caption = option == kSummaryOption ? s_.tr("SALARISOPSOMMING", "SALARY SUMMARY")
                                       : s_.tr("PERSONEEL BETAALSTROKIES", "STAFF PAY SLIPS");
    grid_format = s_.tr("|<VERW|<VAN|<VOLLE NAME|<TITEL|<ID-NOMMER",
                        "|<REF.|<SURNAME|<FULL NAMES|<TITLE|<ID-NUMBER");
    pos_teks[3] = s_.tr("Van POS/NAAM", "From POST/NAME");
    pos_teks[4] = s_.tr("Tot POS/NAAM", "To   POST/NAME");
    or_teks[1] = s_.tr("BRIEFHOOF", "LETTER HEAD");
    or_teks[2] = s_.tr("TOT MAAND", "TO MONTH");
    or_teks[3] = s_.tr("DRUKDATUM", "PRINT DATE");
    to_month_caption = s_.tr("JANUARIE TOT MAAND", "JANUARY TO MONTH");
    kr_ok_caption = s_.tr("Begin met drukwerk", "Start printing");
    maand_lys.clear();
    for (int m = 1; m <= 12; ++m)
        maand_lys << shell::month_name(m, s_.afrikaans);
    prs_grid = payroll_staff(s_);
    std::vector<reports::StaffRangeRow> rows;
    for (const PayrollPerson& p : prs_grid)
        rows.push_back({p.post, joined({p.surname, p.names}), p.record});
    range.set_rows(std::move(rows));
    or_data[1] = s_.letterhead;
    or_data[3] = shell::date_to_text(s_.today());
    closed = false;
}

void PaySlips::pos_data_key_press(int index, const QString& typed) {
    range.search(index == 4 ? reports::StaffRange::To : reports::StaffRange::From, typed);
}

void PaySlips::or_data_click(int index) {
    if (index == 1) {
        reports::LetterheadChooser chooser(s_);
        chooser.form_load();
        if (!chooser.closed)
            s_.dialogs().show_modal(chooser);
        or_data[1] = s_.letterhead;
    } else if (index == 2) {
        maand_lys_visible = true;
    } else if (index == 3) {
        const QDate start = or_data[3].trimmed().isEmpty()
                                ? s_.today()
                                : shell::text_to_date(or_data[3], s_.today());
        if (const auto picked = s_.dialogs().pick_date(or_teks[3], start))
            or_data[3] = shell::date_to_text(*picked);
    }
}

void PaySlips::maand_lys_dbl_click(int index) {
    if (index < 0 || index >= 12)
        return;
    or_data[2] = maand_lys.at(index);
    maand_lys_visible = false;
}

int PaySlips::chosen_month() const {
    const qsizetype at = maand_lys.indexOf(or_data[2].trimmed().toUpper());
    return at < 0 ? 0 : int(at) + 1;
}

void PaySlips::kr_ok_click() {
    if (option == kSummaryOption)
        print_salary_summary();
    else
        print_pay_slips();
}

bool PaySlips::start(const QString& name) {
    job_.afrikaans = s_.afrikaans;
    job_.general_year_folder = s_.fs().native(s_.folders.general_year);
    job_.state.report_name = s_.ledger_year + name;
    if (choose_target)
        return choose_target(job_);
    return host_ && reports::ask_print_target(job_, *host_, s_.fs().native(s_.folders.workstation));
}

PrintGrid PaySlips::slip_grid(const PayrollPerson& person, const PayMonth& pay) {
    PrintGrid g(0, 5);
    g.font = QStringLiteral("Lucida Console");
    g.font_size_points = 10;
    // Column widths a third of the printable width, scaled per column.
    const double width = job_.device().scale_x(
        job_.device().scale_width(), job_.device().scale_mode(), reports::ScaleMode::Twips);
    const double third = (width - 600) / 3;
    const double widths[] = {240, third * 1.2, third * 0.8, third * 0.8, third * 0.2};
    for (int c = 0; c < 5; ++c) {
        g.column(c).width = widths[c];
        g.column(c).alignment = c <= 1 ? reports::kAlignLeft : reports::kAlignRight;
    }
    auto row = [&](const QString& label, const QString& earnings = {},
                   const QString& deductions = {}, bool bold = false) {
        const int r = g.add_item(QString());
        g.set_text(r, 1, label);
        g.set_text(r, 2, earnings);
        g.set_text(r, 3, deductions);
        for (int c = 0; c < 5; ++c)
            g.cell(r, c).bold = bold;
        return r;
    };
    const int title = row(s_.tr("BETAALSTROKIE", "PAY SLIP"));
    g.set_text(title, 2, g.text(title, 1));
    g.row(title).merge = true;
    g.row(title).height = 600;
    for (int c = 1; c <= 2; ++c) {
        g.cell(title, c).font_size = 20;
        g.cell(title, c).alignment = reports::kAlignCentre;
    }
    row(QString());
    auto detail = [&](const QString& label, const QString& value) {
        const int r = row(label);
        // The value spans the amount columns.
        for (int c = 2; c <= 4; ++c) {
            g.set_text(r, c, value);
            g.cell(r, c).alignment = reports::kAlignLeft;
        }
        g.row(r).merge = true;
    };
    detail(s_.tr("PERSONEELLID", "STAFF MEMBER"),
           joined({person.title, person.names, person.surname}));
    detail(s_.tr("WERKGEWER", "EMPLOYER"), job_.school.name);
    detail(s_.tr("BEROEP", "OCCUPATION"), pay.occupation);
    detail(s_.tr("DATUM", "DATE"), or_data[3]);
    row(QString());
    row(s_.tr("SALARIS/LOON", "SALARY/WAGE"), rand_text(pay.salary));
    row(s_.tr("OORTYD", "OVERTIME"), rand_text(pay.overtime));
    row(QStringLiteral("BONUS"), rand_text(pay.bonus));
    for (const PayLine& l : pay.earnings_free)
        if (l.amount != 0)
            row(l.text, rand_text(l.amount));
    row(s_.tr("VERDIENSTES", "EARNINGS"), rand_text(pay.earnings()), {}, true);
    row(s_.tr("PENSIOEN", "PENSION"), {}, rand_text(pay.pension));
    row(s_.tr("WVF", "UIF"), {}, rand_text(pay.uif));
    row(s_.tr("BELASTING", "TAX"), {}, rand_text(pay.tax));
    for (const PayLine& l : pay.deductions_free)
        if (l.amount != 0)
            row(l.text, {}, rand_text(l.amount));
    row(s_.tr("AFTREKKINGS", "DEDUCTIONS"), {}, rand_text(pay.deductions()), true);
    row(s_.tr("NETTO SALARIS", "NETT SALARY"), {}, rand_text(pay.nett()), true);
    return g;
}

bool PaySlips::print_pay_slips() {
    const int month = chosen_month();
    if (!start(s_.tr("PERSONEEL BETAALSTROKIES : ", "STAFF PAY SLIPS : ")))
        return false;
    if (month == 0) {
        job_.end_spreadsheet();
        return false;
    }
    // A slip prints on the letterhead chosen here, or with the standard header when none is.
    job_.state.letterhead = {};
    job_.state.letterhead.selected = s_.letterhead;
    const PayBook book = read_pay_book(s_);
    for (int row : range.selected_rows()) {
        const PayrollPerson& person = prs_grid[size_t(row)];
        const std::optional<PayMonth> pay = book.find(person.post, month);
        if (!pay)
            continue;
        PrintGrid grid = slip_grid(person, *pay);
        reports::PrintDevice& d = job_.device();
        if (!s_.letterhead.isEmpty()) {
            // The body starts a line below the letterhead.
            reports::print_letterhead(job_);
            d.set_current_y(d.current_y() + 1);
        } else {
            job_.state.page_pending = true;
            job_.print_page_header(job_.state.report_name + shell::month_name(month, s_.afrikaans));
            if (!job_.state.to_spreadsheet) {
                d.set_scale_mode(reports::ScaleMode::Characters);
                d.set_current_y(6);
            }
        }
        GridPageOptions options;
        options.no_page_break = true;
        options.autofit = false;
        reports::print_grid_blocks(job_, grid, options);
    }
    job_.finish_report();
    maand_lys_visible = false;
    return true;
}

PrintGrid PaySlips::summary_grid(const PayBook& book, int first_month, int last_month) {
    PrintGrid g;
    g.set_format_string(s_.tr(
        "<POSNR|<NAAM|>SALARIS/LOON|>OORTYD|>BONUS|>ANDER VERDIENSTES|>VERDIENSTES|>PENSIOEN|>WVF|"
        ">BELASTING|>ANDER AFTREKKINGS|>AFTREKKINGS|>NETTO",
        "<POST NO|<NAME|>SALARY/WAGE|>OVERTIME|>BONUS|>OTHER EARNINGS|>EARNINGS|>PENSION|>UIF|"
        ">TAX|>OTHER DEDUCTIONS|>DEDUCTIONS|>NETT"));
    g.font_size_points = 8;
    std::array<long long, 11> total{};
    for (int row : range.selected_rows()) {
        const PayrollPerson& person = prs_grid[size_t(row)];
        std::array<long long, 11> sum{};
        bool any = false;
        for (int m = first_month; m <= last_month; ++m) {
            const std::optional<PayMonth> pay = book.find(person.post, m);
            if (!pay)
                continue;
            any = true;
            long long other_in = 0, other_out = 0;
            for (int i = 0; i < 3; ++i) {
                other_in += pay->earnings_free[size_t(i)].amount;
                other_out += pay->deductions_free[size_t(i)].amount;
            }
            const std::array<long long, 11> v{pay->salary,       pay->overtime,   pay->bonus,
                                              other_in,          pay->earnings(), pay->pension,
                                              pay->uif,          pay->tax,        other_out,
                                              pay->deductions(), pay->nett()};
            for (size_t i = 0; i < v.size(); ++i)
                sum[i] += v[i];
        }
        if (!any)
            continue;
        QStringList cells{person.post,
                          joined({person.surname, person.title, shell::initials(person.names)})};
        for (size_t i = 0; i < sum.size(); ++i) {
            cells << plain_amount(sum[i]);
            total[i] += sum[i];
        }
        g.add_item(cells.join(u'\t'));
    }
    QStringList cells{QString(), s_.tr("TOTAAL", "TOTAL")};
    for (long long t : total)
        cells << plain_amount(t);
    const int r = g.add_item(cells.join(u'\t'));
    for (int c = 0; c < g.cols(); ++c)
        g.cell(r, c).bold = true;
    return g;
}

bool PaySlips::print_salary_summary() {
    const int month = chosen_month();
    if (!start(s_.tr("SALARISOPSOMMING : ", "SALARY SUMMARY : ")))
        return false;
    if (month == 0) {
        job_.end_spreadsheet();
        return false;
    }
    // The summary has the standard header: a letterhead loaded for slips is put aside.
    job_.state.letterhead = {};
    const PayBook book = read_pay_book(s_);
    PrintGrid grid = summary_grid(book, to_month ? 1 : month, month);
    const QString period = to_month ? shell::month_name(1, s_.afrikaans) + s_.tr(" TOT ", " TO ") +
                                          shell::month_name(month, s_.afrikaans)
                                    : shell::month_name(month, s_.afrikaans);
    reports::fit_grid_columns(job_, grid, 0, 120, true);
    GridPageOptions options;
    options.centre_table = true;
    reports::print_grid_report(job_, grid, job_.state.report_name + period, {},
                               reports::kLandscapeText, options);
    job_.finish_report();
    return true;
}

}  // namespace korvel::payroll
